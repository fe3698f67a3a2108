#include "directory/tree_export.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "directory/class_filter.h"
#include "directory/directory.h"
#include "directory/ldap_paths.h"
#include "directory/ldif_reader.h"
#include "directory/ldif_tree.h"
#include "directory/ldif_writer.h"
#include "directory/names.h"
#include "directory/object_class.h"
#include "directory/value_texts.h"
#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

constexpr std::string_view kAclAttribute = "ACL";
constexpr std::string_view kMemberAttribute = "Member";
// What servers say of whether objects lie below one: the first by RFC draft, the second in eDirectory.
constexpr std::string_view kHasSubordinates = "hasSubordinates";
constexpr std::string_view kSubordinateCount = "subordinateCount";
constexpr std::array<std::string_view, 9> kNamingAttributes = {"objectClass", "cn", "ou",  "o", "c",
                                                               "l",           "dc", "uid", "st"};

class ServerExport {
  public:
    ServerExport(LdapHost& host, const DirectoryConfig::Tree& tree, OutputFile& file)
        : host_(host),
          session_(host, tree.name, *tree.ldap),
          writer_(file),
          schema_(session_.schema()),
          classes_(schema_),
          acl_names_(schema_.LdapNamesOfAttribute(kAclAttribute)),
          member_names_(schema_.LdapNamesOfAttribute(kMemberAttribute)),
          asked_(kNamingAttributes.begin(), kNamingAttributes.end()) {
        asked_.insert(asked_.end(), member_names_.begin(), member_names_.end());
        asked_.emplace_back(kHasSubordinates);
        asked_.emplace_back(kSubordinateCount);
    }

    ExportSummary Write() {
        writer_.Comment("Read from " + ToUtf8(session_.Server().url) + " as " +
                        ToUtf8(session_.Server().identity));
        WriteSchema();
        for (const std::string& base : session_.settings().bases)
            bases_.push_back(PathOfDN(ComponentsOfDN(base)));
        for (const std::string& base : session_.settings().bases)
            WriteBase(ComponentsOfDN(base));
        while (!outside_.empty())
            WriteOutside();
        return std::move(summary_);
    }

  private:
    void WriteSchema() {
        const SchemaDefinitions definitions = session_.ReadDefinitions();
        if (definitions.attribute_types.empty() && definitions.object_classes.empty()) return;
        const Schema bundled = LoadBundledSchema(host_.files);
        writer_.BeginRecord("cn=schema");
        writer_.Value("objectClass", "subschema");
        for (const std::string& definition : definitions.attribute_types)
            WriteDefinition("attributeTypes", AttributeTypeWithNdsName(definition, bundled));
        for (const std::string& definition : definitions.object_classes)
            WriteDefinition("objectClasses", ObjectClassWithNdsName(definition, bundled));
    }
    // Definitions that are none were not used either.
    void WriteDefinition(std::string_view attribute, const std::optional<std::string>& definition) {
        if (definition) writer_.Value(attribute, *definition);
    }

    // A base with what lies below it, behind the containers above it.
    void WriteBase(const std::vector<NamingComponent>& base) {
        const std::string path = PathOfDN(base);
        const bool inner = std::any_of(bases_.begin(), bases_.end(), [&](const std::string& other) {
            return !EqualIgnoringCase(other, path) && LiesAtOrBelow(path, other);
        });
        if (inner) return;
        for (std::size_t depth = 1; depth <= base.size(); ++depth) {
            const std::string dn = DNOfFirst(base, depth);
            if (!containers_above_.insert(UpperCase(dn)).second) continue;
            const std::optional<LdapEntry> container = session_.Read(dn, asked_);
            if (!container && depth == base.size())
                throw Error(errors::kDirectoryUnreadable)
                    .With("There is no search base '" + FromUtf8(dn) + "' in '" + session_.Server().url +
                          "'");
            if (container) WriteObject(*container);
        }
        WriteBelow(DNOfFirst(base, base.size()));
    }

    void WriteBelow(const std::string& base) {
        std::vector<std::string> containers{base};
        while (!containers.empty()) {
            const std::string container = std::move(containers.back());
            containers.pop_back();
            const std::vector<LdapEntry> children =
                session_.List(container, "(objectClass=*)", asked_).value_or(std::vector<LdapEntry>());
            WriteObjects(children);
            for (auto child = children.rbegin(); child != children.rend(); ++child) {
                if (MayHaveChildren(*child)) containers.push_back(child->dn);
            }
        }
    }

    bool MayHaveChildren(const LdapEntry& entry) {
        const std::string name = ClassOf(entry);
        if (name == kAliasClass) return false;
        for (const LdapAttribute& attribute : entry.attributes) {
            if (attribute.values.empty()) continue;
            if (EqualIgnoringCase(attribute.name, kHasSubordinates))
                return EqualIgnoringCase(attribute.values.front(), "TRUE");
            if (EqualIgnoringCase(attribute.name, kSubordinateCount)) return attribute.values.front() != "0";
        }
        return name != kApplicationClass;
    }

    // Objects of a listing; the applications among them are read as a whole.
    void WriteObjects(const std::vector<LdapEntry>& listed) {
        const auto most = static_cast<std::size_t>(session_.settings().read_ahead);
        for (std::size_t begin = 0; begin < listed.size(); begin += most) {
            const std::size_t end = std::min(begin + most, listed.size());
            std::vector<std::string> dns;
            for (std::size_t i = begin; i < end; ++i) {
                if (ClassOf(listed[i]) == kApplicationClass) dns.push_back(listed[i].dn);
            }
            const std::vector<std::optional<LdapEntry>> applications = session_.ReadAll(dns, {"*"});
            auto application = applications.begin();
            for (std::size_t i = begin; i < end; ++i) {
                if (ClassOf(listed[i]) != kApplicationClass) {
                    WriteObject(listed[i]);
                } else {
                    WriteApplication(listed[i], *application++);
                }
            }
        }
    }

    void WriteApplication(const LdapEntry& listed, const std::optional<LdapEntry>& application) {
        if (!application) {
            summary_.unreadable.push_back(FromUtf8(listed.dn));
            return;
        }
        WriteObject(*application);
    }

    void WriteObject(const LdapEntry& entry) {
        ++summary_.objects;
        writer_.BeginRecord(entry.dn);
        for (const LdapAttribute& attribute : entry.attributes) {
            if (EqualIgnoringCase(attribute.name, kHasSubordinates) ||
                EqualIgnoringCase(attribute.name, kSubordinateCount))
                continue;
            for (const std::string& value : attribute.values) {
                writer_.Value(attribute.name, value);
                if (Is(attribute.name, member_names_)) Expect(value);
                if (!Is(attribute.name, acl_names_)) continue;
                if (const std::optional<AclParts> parts = SplitAcl(value)) Expect(parts->trustee);
            }
        }
    }

    static bool Is(std::string_view name, const std::vector<std::string>& names) {
        return std::any_of(names.begin(), names.end(),
                           [name](const std::string& other) { return EqualIgnoringCase(other, name); });
    }

    // Notes an object that is named and lies outside of the bases.
    void Expect(std::string_view dn) {
        const std::string path = PathOfDN(ComponentsOfDN(dn));
        const auto holds = [&](const std::string& base) { return LiesAtOrBelow(path, base); };
        if (path.empty() || std::any_of(bases_.begin(), bases_.end(), holds)) return;
        if (expected_.insert(UpperCase(path)).second) outside_.emplace_back(dn);
    }

    void WriteOutside() {
        const std::vector<std::string> dns = std::exchange(outside_, {});
        for (const std::optional<LdapEntry>& object : session_.ReadAll(dns, asked_)) {
            const bool written =
                object && containers_above_.find(UpperCase(object->dn)) != containers_above_.end();
            if (object && !written) WriteObject(*object);
        }
    }

    std::string ClassOf(const LdapEntry& entry) {
        classes_.Start();
        for (const LdapAttribute& attribute : entry.attributes) {
            if (!EqualIgnoringCase(attribute.name, "objectClass")) continue;
            for (const std::string& value : attribute.values)
                classes_.Take(value);
        }
        return classes_.Class();
    }

    LdapHost& host_;
    LdapSession session_;
    LdifWriter writer_;
    const Schema& schema_;
    ObjectClassChoice classes_;
    std::vector<std::string> acl_names_;  // LDAP names
    std::vector<std::string> member_names_;
    std::vector<std::string> asked_;                    // what is asked of objects that are no applications
    std::vector<std::string> bases_;                    // their paths
    std::unordered_set<std::string> containers_above_;  // DNs in upper case that were looked for
    std::unordered_set<std::string> expected_;          // paths in upper case
    std::vector<std::string> outside_;
    ExportSummary summary_;
};

ExportSummary CopyExport(LdapHost& host, const std::string& ldif, OutputFile& file) {
    ExportSummary summary;
    LdifWriter writer(file);
    LdifReader reader(host.files.Open(ldif), host.files.Resolve(ldif));
    while (reader.NextRecord()) {
        ++summary.objects;
        writer.BeginRecord(reader.dn());
        LdifAttribute attribute;
        while (reader.NextAttribute(attribute))
            writer.Value(attribute.name, attribute.value);
        if (host.ports.wait) host.ports.wait();
    }
    return summary;
}

}  // namespace

ExportSummary ExportTree(LdapHost& host, const DirectoryConfig::Tree& tree, OutputFile& file) {
    if (!tree.ldap) return CopyExport(host, tree.ldif, file);
    return ServerExport(host, tree, file).Write();
}

}  // namespace zorvel
