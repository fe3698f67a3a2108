// One tree of the directory, wherever it comes from.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/directory.h"

namespace zorvel {

// The bytes of a stream, and what keeps them.
struct StreamBytes {
    std::shared_ptr<const void> owner;
    std::string_view bytes;
};

// Paths are whole ones ("NDS:\\TREE\..."); a name is a full name. Every operation can raise error 600, whose
// detail says why the tree cannot be read. Entries are those that the source itself gave.
class TreeSource {
  public:
    virtual ~TreeSource() = default;

    // How it is connected now.
    virtual TreeConnection Connection() const = 0;
    // The user turns to the tree: to its root, for which what has changed is read anew, or to another object.
    virtual void MakeCurrent(bool root) = 0;
    // Between these all of the tree is listed, container for container, each before what lies below it.
    virtual void BeginWalk() {}
    virtual void EndWalk() {}
    // The object of a path or a full name; nothing when there is none.
    virtual std::optional<Entry> Find(std::string_view path_or_name) = 0;
    // Full names that Find will be asked for next, in this order.
    virtual void ExpectLookUps(const std::vector<std::string_view>& /*full_names*/) {}
    // The full name of a path, or of a full name, in the object's own spelling; nothing without an object.
    virtual std::optional<std::string> FindFullName(std::string_view path_or_name) = 0;
    // The children of an object that are of one of `classes`, as ClassFilter takes them. Raises error 601.
    virtual std::vector<Entry> Entries(std::string_view path, std::string_view classes) = 0;
    virtual std::string FullNameOf(const Entry& entry) = 0;

    // As Directory says; an attribute that the tree does not know is a "String".
    virtual std::vector<std::string> AttributeNames(const Entry& entry) = 0;
    virtual std::string_view AttributeSyntax(const Entry& entry, std::string_view attribute) = 0;
    virtual std::vector<std::string> AttributeValues(const Entry& entry, std::string_view attribute) = 0;
    virtual std::vector<std::string> ReferencedNames(const Entry& entry, std::string_view attribute) = 0;
    // The stream that an attribute of an object holds; nothing without object, value, or stream.
    virtual std::optional<StreamBytes> Stream(std::string_view path_or_name, std::string_view attribute) = 0;
};

}  // namespace zorvel
