#include "controller/tree_editor.h"

#include <algorithm>

#include "platform/code_page.h"
#include "shell/report_error.h"

namespace zorvel {
namespace {

// What stands before a finding in a report.
std::string_view Heading(TreeFinding::State state) {
    switch (state) {
        case TreeFinding::State::kFine:
            return "";
        case TreeFinding::State::kMissing:
            return "MISSING - ";
        case TreeFinding::State::kFailed:
            break;
    }
    return "FAILED - ";
}

std::string ReportOf(const std::string& tree, const std::vector<TreeFinding>& findings) {
    const bool whole = std::all_of(findings.begin(), findings.end(), [](const TreeFinding& finding) {
        return finding.state == TreeFinding::State::kFine;
    });
    std::string report = "The tree '" + tree + "' ";
    report += !Passed(findings) ? "cannot be read:"
              : whole           ? "can be read."
                                : "can be read, but not all is well:";
    for (const TreeFinding& finding : findings) {
        std::string subject = finding.subject;
        subject.front() = UpperChar(subject.front());
        report.append("\n").append(Heading(finding.state)).append(subject).append(": ").append(finding.text);
    }
    return report;
}

// A path as the file writes it.
std::string PathFor(const std::string& path, const Files& files) {
    const std::string folder = files.Path({});
    std::string text = path.starts_with(folder) ? path.substr(folder.size()) : path;
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

}  // namespace

TreeEditor::TreeEditor(MainController& controller)
    : controller_(controller), config_(ReadDirectoryConfig(controller.services().files)) {}

std::string TreeEditor::SourceOf(const DirectoryConfig::Tree& tree, const Files& files) {
    if (!tree.ldap) return "LDIF export " + PathFor(tree.ldif, files);
    std::string text;
    for (const std::string& url : tree.ldap->urls)
        text += (text.empty() ? "" : ", ") + url;
    return text + (tree.ldap->bind_dn.empty() ? ", anonymous" : ", as " + FromUtf8(tree.ldap->bind_dn));
}

DirectoryConfig::Tree TreeEditor::TreeOfExport(std::string path) const {
    std::string stem = path.substr(path.find_last_of("\\/") + 1);
    stem.resize(std::min(stem.rfind('.'), stem.size()));
    const auto taken = [this](const std::string& name) {
        return std::any_of(
            config_.trees.begin(), config_.trees.end(),
            [&](const DirectoryConfig::Tree& tree) { return EqualIgnoringCase(tree.name, name); });
    };
    std::string name = stem;
    for (int number = 2; taken(name); ++number)
        name = stem + " " + std::to_string(number);
    return {std::move(name), std::move(path), {}};
}

bool TreeEditor::Change(const std::function<void(DirectoryText&)>& change) {
    failure_.clear();
    Services& services = controller_.services();
    const auto hold = services.writers.Acquire();
    if (!hold) return false;
    try {
        config_ = ChangeDirectoryFile(services.files, change);
        controller_.ListTreesAgain();
        return true;
    } catch (const Error& error) {
        LogDetail(services.log, error);
        failure_ = error.Reason();
        return false;
    }
}

bool TreeEditor::Add(const DirectoryConfig::Tree& tree) {
    const bool done = Change([&](DirectoryText& text) { text.Add(tree); });
    if (done && controller_.session().current_tree.empty() && !reopen_) reopen_ = tree.name;
    return done;
}

bool TreeEditor::Replace(const std::string& name, const DirectoryConfig::Tree& tree) {
    const bool current = reopen_ ? *reopen_ == name : controller_.session().current_tree == name;
    const bool done = Change([&](DirectoryText& text) { text.Replace(name, tree); });
    if (done && current) reopen_ = tree.name;
    return done;
}

bool TreeEditor::Remove(const std::string& name) {
    const bool done = Change([&](DirectoryText& text) { text.Remove(name); });
    if (done && controller_.session().current_tree == name) reopen_ = name;
    return done;
}

bool TreeEditor::Prefer(const std::string& name) {
    return Change([&](DirectoryText& text) { text.Prefer(name); });
}

std::string TreeEditor::Test(const DirectoryConfig::Tree& tree) {
    const auto findings = controller_.TestTree(tree);
    controller_.services().status.SetIdle();
    return findings ? ReportOf(tree.name, *findings) : "The test was ended.";
}

void TreeEditor::Finish() {
    if (reopen_) controller_.OpenListedTree(*reopen_);
    reopen_.reset();
}

}  // namespace zorvel
