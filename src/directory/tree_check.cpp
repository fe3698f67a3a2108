#include "directory/tree_check.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include "directory/class_filter.h"
#include "directory/directory.h"
#include "directory/ldif_tree.h"
#include "platform/code_page.h"
#include "platform/error.h"

namespace zorvel {
namespace {

using State = TreeFinding::State;

class Findings {
  public:
    void Add(State state, std::string subject, std::string text) {
        findings_.push_back({state, std::move(subject), std::move(text)});
    }
    // Does `operation`; an error of it is a failure of `subject`.
    template <typename Operation>
    bool Try(const std::string& subject, Operation operation) {
        try {
            operation();
            return true;
        } catch (const Error& error) {
            Add(State::kFailed, subject, error.Reason());
            return false;
        }
    }
    // Takes a number of applications.
    void AddCount(std::size_t count, const std::string& place) {
        if (count > 0) return Add(State::kFine, "applications", std::to_string(count) + place);
        Add(State::kMissing, "applications",
            "none" + place + " - is this the right place, and may it be read?");
    }
    std::vector<TreeFinding> Take() { return std::move(findings_); }

  private:
    std::vector<TreeFinding> findings_;
};

struct Census {
    std::size_t containers = 0;
    std::size_t applications = 0;
};

Census CountObjects(const MemoryTree& tree) {
    const ClassFilter is_container(kContainerClasses);
    Census census;
    std::vector<EntryIndex> parents = {kRootEntry};
    while (!parents.empty()) {
        const EntryIndex parent = parents.back();
        parents.pop_back();
        for (EntryIndex child = tree.FirstChild(parent); child != kNoEntry; child = tree.NextSibling(child)) {
            const std::string& class_name = tree.ClassName(child);
            if (class_name == kApplicationClass) ++census.applications;
            if (is_container.Passes(class_name)) ++census.containers;
            if (tree.FirstChild(child) != kNoEntry) parents.push_back(child);
        }
    }
    return census;
}

void CheckExport(const Files& files, const std::string& path, Findings& findings) {
    findings.Try("file", [&] {
        const std::unique_ptr<MemoryTree> tree = LoadLdifTree(files, path);
        findings.Add(State::kFine, "file", path);
        const Census census = CountObjects(*tree);
        findings.Add(State::kFine, "containers", std::to_string(census.containers));
        findings.AddCount(census.applications, {});
    });
}

// The attributes of an object but its classes and its name, which servers show to those who may read nothing.
std::size_t CountAttributes(const LdapEntry& entry) {
    return static_cast<std::size_t>(
        std::count_if(entry.attributes.begin(), entry.attributes.end(), [](const LdapAttribute& attribute) {
            return !EqualIgnoringCase(attribute.name, "objectClass") &&
                   !EqualIgnoringCase(attribute.name, "cn");
        }));
}

class ServerCheck {
  public:
    ServerCheck(LdapHost& host, const DirectoryConfig::Tree& tree, Findings& findings)
        : session_(host, tree.name, *tree.ldap), findings_(findings) {}

    void Run() {
        if (!findings_.Try("server", [this] { CheckServer(); })) return;
        if (!findings_.Try("schema", [this] { CheckSchema(); })) return;
        for (const std::string& base : session_.settings().bases)
            findings_.Try("applications", [&] { CheckBase(base); });
        for (const std::string& host : session_.referrals())
            findings_.Add(State::kMissing, "referral",
                          "A part of the tree is on the server '" + host +
                              "', which is not asked - name one that holds the whole tree");
    }

  private:
    void CheckServer() {
        const LdapServer server = session_.Server();
        const LdapSession::Features& features = session_.features();
        findings_.Add(State::kFine, "server",
                      server.url + (features.vendor.empty() ? "" : " (" + Trimmed(features.vendor) + ")"));
        if (server.encryption == "none") {
            findings_.Add(
                State::kMissing, "encryption",
                "none - what is read crosses the network for all to see; use ldaps:// or start_tls");
        } else {
            findings_.Add(State::kFine, "encryption", server.encryption);
        }
        findings_.Add(State::kFine, "identity", server.identity);
        if (features.paged) {
            findings_.Add(State::kFine, "paging", std::to_string(session_.settings().page_size));
        } else {
            findings_.Add(
                State::kMissing, "paging",
                "the server does not send long lists in pages - containers with more objects than its "
                "limit cannot be read");
        }
    }

    static std::string Trimmed(std::string text) {
        text.erase(text.find_last_not_of(' ') + 1);
        return text;
    }

    void CheckSchema() {
        const Schema& schema = session_.schema();
        if (session_.features().subschema.empty()) {
            findings_.Add(State::kMissing, "schema",
                          "the server does not show its schema - the one of this program is used");
        } else if (schema.nds_names() == 0) {
            findings_.Add(State::kMissing, "schema",
                          "no definition has an X-NDS_NAME - the names of this program's schema are used");
        } else {
            findings_.Add(State::kFine, "schema",
                          std::to_string(schema.nds_names()) + " definitions with X-NDS_NAME");
        }
        for (const std::string& name : schema.LdapNamesOfClass(kApplicationClass))
            filter_ += "(objectClass=" + name + ")";
        if (filter_.empty()) {
            throw Error(errors::kDirectoryUnreadable)
                .With("there is no class " + std::string(kApplicationClass) +
                      " - this is no tree that applications are delivered from");
        }
        filter_ = "(|" + filter_ + ")";
    }

    void CheckBase(const std::string& base) {
        const std::string place = base.empty() ? " in the whole tree" : " below '" + FromUtf8(base) + "'";
        const auto applications = session_.ListSubtree(base, filter_);
        if (!applications) {
            findings_.Add(State::kFailed, "applications",
                          "there is no '" + FromUtf8(base) + "', or it may not be seen - check base");
            return;
        }
        findings_.AddCount(applications->size(), place);
        if (!applications->empty()) findings_.Try("rights", [&] { CheckRights(applications->front().dn); });
    }

    void CheckRights(const std::string& dn) {
        const std::optional<LdapEntry> application = session_.Read(dn, {"*"});
        const std::size_t count = application ? CountAttributes(*application) : 0;
        if (count > 0) {
            findings_.Add(State::kFine, "rights",
                          std::to_string(count) + " attribute(s) of '" + FromUtf8(dn) + "' can be read");
        } else {
            findings_.Add(
                State::kFailed, "rights",
                "of '" + FromUtf8(dn) +
                    "' nothing can be read but its name - ask the directory's administrator for the "
                    "right to read all attributes");
        }
    }

    LdapSession session_;
    Findings& findings_;
    std::string filter_;
};

}  // namespace

std::vector<TreeFinding> CheckTree(LdapHost& host, const DirectoryConfig::Tree& tree) {
    Findings findings;
    if (tree.ldap) {
        ServerCheck(host, tree, findings).Run();
    } else {
        CheckExport(host.files, tree.ldif, findings);
    }
    return findings.Take();
}

bool Passed(const std::vector<TreeFinding>& findings) {
    return std::none_of(findings.begin(), findings.end(),
                        [](const TreeFinding& finding) { return finding.state == State::kFailed; });
}

std::string_view StateName(State state) {
    switch (state) {
        case State::kFine:
            return "ok";
        case State::kMissing:
            return "missing";
        case State::kFailed:
            break;
    }
    return "failed";
}

}  // namespace zorvel
