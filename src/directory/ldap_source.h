// A tree that directory servers hold, read while it is looked at.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "directory/directory.h"
#include "directory/ldap_paths.h"
#include "directory/ldap_session.h"
#include "directory/schema.h"
#include "directory/text_map.h"
#include "directory/tree_source.h"
#include "directory/value_texts.h"

namespace zorvel {

// What is asked of the servers: of a container its containers and applications, in one search; of an
// application all its attributes in one, which serves its name, its values and its streams; of a trustee its
// class and members. Between such questions only the DNs of containers are remembered, and those that values
// named.
class LdapSource final : public TreeSource {
  public:
    LdapSource(LdapHost& host, std::string tree, LdapSettings settings);

    LdapSession& session() { return session_; }

    TreeConnection Connection() const override;
    void MakeCurrent(bool root) override;
    void BeginWalk() override { walks_ = true; }
    void EndWalk() override;
    std::optional<Entry> Find(std::string_view path_or_name) override;
    void ExpectLookUps(const std::vector<std::string_view>& full_names) override;
    std::optional<std::string> FindFullName(std::string_view path_or_name) override;
    std::vector<Entry> Entries(std::string_view path, std::string_view classes) override;
    std::string FullNameOf(const Entry& entry) override;
    std::vector<std::string> AttributeNames(const Entry& entry) override;
    std::string_view AttributeSyntax(const Entry& entry, std::string_view attribute) override;
    std::vector<std::string> AttributeValues(const Entry& entry, std::string_view attribute) override;
    std::vector<std::string> ReferencedNames(const Entry& entry, std::string_view attribute) override;
    std::optional<StreamBytes> Stream(std::string_view path_or_name, std::string_view attribute) override;

  private:
    // An attribute of an object under its NDS name.
    struct Attribute {
        std::string name;
        Syntax syntax = Syntax::kString;
        std::vector<std::string> values;
    };
    // An object that was read with all its attributes, or with some.
    struct Object {
        Entry entry;
        std::string full_name;
        std::vector<Attribute> attributes;
        bool whole = false;
        bool fresh = false;  // it was read to learn its name, and was not looked up since
    };
    struct Listing {
        std::string path;
        std::string parent;  // what the children's paths begin with
        std::vector<LdapPaths::Child> children;
        std::vector<std::string> served;  // the classes for which it was used
    };
    using ObjectPtr = std::shared_ptr<Object>;

    std::string NameOfDN(std::string_view dn);
    void Rename(Object& object, std::string_view components) const;

    ObjectPtr LookUp(std::string_view path_or_name);
    ObjectPtr Read(const std::string& dn, const std::vector<std::string>& ldap_names);
    // The object of some components, with the attributes of those LDAP names; null when there is none.
    ObjectPtr ReadComponents(std::string_view components, const std::vector<std::string>& ldap_names);
    ObjectPtr ReadKnown(std::string_view components, const std::vector<std::string>& ldap_names);
    ObjectPtr ReadByCn(std::string_view components, const std::vector<std::string>& ldap_names);
    ObjectPtr MakeObject(const LdapEntry& entry, bool whole);
    ObjectPtr MakeRoot() const;
    std::vector<std::string> TrusteeAttributes();
    // A trustee that was expected, read together with some of those behind it; null when it has to be asked
    // for alone.
    ObjectPtr TakeExpected(std::string_view full_name);
    void ReadExpected();
    const Object* AtHand(const Entry& entry) const;
    const Object& WithAttribute(const Entry& entry, std::string_view attribute);
    const Attribute& HeldAttribute(const Entry& entry, std::string_view name);
    static const Attribute* FindAttribute(const Object& object, std::string_view name);
    static bool Names(const Object& object, std::string_view path_or_name);

    Listing ListChildren(std::string_view path, std::string_view classes);

    LdapSession session_;
    LdapPaths paths_;
    std::string tree_;
    DnNames names_;
    Listing listing_;
    bool walks_ = false;
    ObjectPtr in_hand_;                    // that was last looked up by its path
    ObjectPtr trustee_;                    // that was last looked up by its full name
    std::deque<std::string> expected_;     // full names of trustees
    AnyCaseMap<ObjectPtr> expected_read_;  // those that were read before they were looked up
};

}  // namespace zorvel
