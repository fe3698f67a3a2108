// What the program asks of the directory service: the client's initialisation, the trees, a browser over
// containers and applications, and the streams. Sources of directory data implement it; the rest of the
// program knows nothing else.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zorvel {

// The classes of whose objects the program asks for lists.
inline constexpr std::string_view kContainerClasses = "Organizational Unit,Organization,Country,Locality";
inline constexpr std::string_view kApplicationClass = "App:Application";

// Other classes that the program treats in a way of their own.
inline constexpr std::string_view kAliasClass = "Alias";
inline constexpr std::string_view kWorkstationGroupClass = "zenWorkstationGroup";
// The kind of objects whose class has none of its own.
inline constexpr std::string_view kGenericKind = "Generic NDS Object (default)";

// The names of the syntaxes that attributes have.
inline constexpr std::string_view kLongSyntax = "Long";
inline constexpr std::string_view kStringSyntax = "String";
inline constexpr std::string_view kPathSyntax = "NWPath";
inline constexpr std::string_view kOctetStringSyntax = "NWOctetString";
inline constexpr std::string_view kAclSyntax = "NWACL";
inline constexpr std::string_view kStreamSyntax = "NWStream";
inline constexpr std::string_view kOtherSyntax = "Other";

// What the tree's root is called, as short name, full name and class.
inline constexpr std::string_view kRootName = "[Root]";

// One object of a directory. `id` means something to the directory that made it, and stays valid while its
// tree is open.
struct Entry {
    std::uint64_t id = 0;
    std::string short_name;  // the last naming component of the path
    std::string path;
    std::string class_name;
};

// How the objects of a tree come here, as the user is told.
struct TreeConnection {
    enum class State {
        kNone,       // there is no such tree
        kFile,       // from an export
        kClosed,     // from a server to which there is no connection
        kInTheOpen,  // over a network, for all to read
        kPrivate,    // encrypted, or without leaving the machine
    };

    State state = State::kNone;
    std::string text;
};

// The two names under which a directory describes the class of an object.
struct ObjectDescription {
    std::string kind_name;
    std::string schema_class_name;
};

// The path of a tree's root: "NDS:\\" + tree + "\[Root]".
std::string RootPath(std::string_view tree);

// Paths are "NDS:\\" + tree + "\" + naming components, root first; full names are dotted, leaf first.
// Every operation can raise error 600 (the directory cannot be read); its detail says why.
class Directory {
  public:
    virtual ~Directory() = default;

    // Called when an operation raises error 600.
    std::function<void()> on_unreadable;

    // Client initialisation, in this order; each returns 0 on success. The first lists the trees; called
    // again it lists them anew, and those that are described as before stay open.
    virtual int NWCallsInit() = 0;
    // Why NWCallsInit failed: where the trouble lies and what it is; empty when there is no more to say.
    virtual std::string InitialisationFailure() const = 0;
    virtual int NWNetInit() = 0;
    virtual int NWDSCreateContextHandle(std::uint32_t& context_handle) = 0;
    // The connection name that the client prefers; 0 on success.
    virtual int NWGetPreferredConnName(std::string& name) = 0;

    // The trees the session can see, in the session's order; `index` runs from 0 to TreeCount() - 1.
    virtual int TreeCount() = 0;
    virtual std::string TreeName(int index) = 0;

    // How a tree is connected now.
    virtual TreeConnection ConnectionOf(std::string_view /*tree*/) { return {}; }

    // The current object (a path): its tree is the one whose full names are looked up. Made of a tree's root,
    // it also takes notice of what has changed in the tree.
    virtual void SetCurrentObject(std::string_view path) = 0;
    // Between these all of the current object's tree is listed, container for container, each before what
    // lies below it. They may begin to read what will be listed next.
    virtual void BeginWalk() {}
    virtual void EndWalk() {}
    // The current object itself. Raises error 601 when it does not exist.
    virtual Entry CurrentEntry() = 0;
    // The children of an object that are of one of `classes` (names separated by commas; empty: of any), in
    // the directory's order. Raises error 601.
    virtual std::vector<Entry> Entries(std::string_view path, std::string_view classes) = 0;
    // The object with that path. Raises error 601.
    virtual Entry FindEntry(std::string_view path) = 0;

    // The full name of a path, also of one that does not exist; existing objects give their own spelling.
    virtual std::string FullName(std::string_view path) = 0;
    // The full name of an object that the directory gave, without a look-up by its path.
    virtual std::string FullNameOf(const Entry& entry) = 0;
    // The tree a path belongs to.
    virtual std::string TreeNameOf(std::string_view path) = 0;
    // The object that a path, or a full name of the current object's tree, names. Raises error 601.
    virtual Entry LookUp(std::string_view path_or_name) = 0;
    // Full names of the current object's tree that will be looked up next, in this order; those of before are
    // forgotten. The directory may read some of them together when the first of them is looked up.
    virtual void ExpectLookUps(const std::vector<std::string_view>& /*full_names*/) {}
    // The names of an object's class.
    virtual ObjectDescription Describe(const Entry& entry) = 0;

    // The names of the attributes the object holds, in directory order.
    virtual std::vector<std::string> AttributeNames(const Entry& entry) = 0;
    // The name of an attribute's syntax, one of those above.
    virtual std::string_view AttributeSyntax(const Entry& entry, std::string_view attribute) = 0;
    // The values of an attribute as texts, in directory order. Raises error 603 when there is none.
    virtual std::vector<std::string> AttributeValues(const Entry& entry, std::string_view attribute) = 0;
    // The full names of the objects that the values of an attribute name, in directory order; objects that do
    // not exist are left out. Raises error 603 when the attribute has no value.
    virtual std::vector<std::string> ReferencedNames(const Entry& entry, std::string_view attribute) = 0;

    // Streams are read whole: open (`name` is "." + full name), size, read, close. Opening returns 0 on
    // success.
    virtual int NWDSOpenStream(std::uint32_t context_handle, std::string_view name,
                               std::string_view attribute, int flags, int& file_handle) = 0;
    virtual std::size_t GetFileSize(int file_handle) = 0;
    // Reads up to `size` bytes into `buffer`, which is resized to the bytes read.
    virtual void ReadFile(int file_handle, std::size_t size, std::string& buffer) = 0;
    virtual void CloseHandle(int file_handle) = 0;
};

}  // namespace zorvel
