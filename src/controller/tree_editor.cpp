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

}  // namespace

std::string ShownPath(const Files& files, const std::string& path) {
    const std::string folder = files.Path({});
    std::string text = path.starts_with(folder) ? path.substr(folder.size()) : path;
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

std::string PathOfShown(const Files& files, std::string text) {
    if (text.empty()) return text;
    if (const std::string folder = files.ProgramFolder() + '/'; text.starts_with(folder))
        text.erase(0, folder.size());
    std::replace(text.begin(), text.end(), '/', '\\');
    return text.starts_with('\\') ? text : files.Path(text);
}

TreeEditor::TreeEditor(MainController& controller)
    : controller_(controller), config_(ReadDirectoryConfig(controller.services().files)) {}

std::string TreeEditor::SourceOf(const DirectoryConfig::Tree& tree) const {
    if (!tree.ldap) return "LDIF export " + ShownPath(files(), tree.ldif);
    std::string text;
    for (const std::string& url : tree.ldap->urls)
        text += (text.empty() ? "" : ", ") + url;
    return text + (tree.ldap->bind_dn.empty() ? ", anonymous" : ", as " + FromUtf8(tree.ldap->bind_dn));
}

std::string TreeEditor::NameForExport(std::string_view path) const {
    std::string stem(path.substr(path.find_last_of("\\/") + 1));
    stem.resize(std::min(stem.rfind('.'), stem.size()));
    const auto taken = [this](const std::string& name) {
        return std::any_of(
            config_.trees.begin(), config_.trees.end(),
            [&](const DirectoryConfig::Tree& tree) { return EqualIgnoringCase(tree.name, name); });
    };
    std::string name = stem;
    for (int number = 2; taken(name); ++number)
        name = stem + " " + std::to_string(number);
    return name;
}

std::string TreeEditor::Obstacle(const DirectoryConfig::Tree& tree) const {
    if (tree.ldap || tree.ldif.empty()) return {};
    try {
        if (files().Exists(tree.ldif)) return {};
    } catch (const Error& error) {
        return error.Reason();
    }
    return "There is no file '" + ShownPath(files(), tree.ldif) + "'";
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

bool TreeEditor::Put(const std::string& name, const DirectoryConfig::Tree& tree) {
    failure_ = Obstacle(tree);
    if (!failure_.empty()) return false;
    const std::string& current = reopen_ ? *reopen_ : controller_.session().current_tree;
    const bool opens = name == current;  // also the first tree of all
    const bool done = Change([&](DirectoryText& text) {
        if (name.empty()) {
            text.Add(tree);
        } else {
            text.Replace(name, tree);
        }
    });
    if (done && opens) reopen_ = tree.name;
    return done;
}

bool TreeEditor::Remove(const std::string& name) {
    failure_.clear();
    if (!controller_.services().ui.Ask(
            "Do you want to take the tree '" + name +
                "' off the list?\r\rIts selections and datasets stay where they are.",
            MessageIcon::kQuestion, Answer::kNo))
        return false;
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

void TreeEditor::EndTest() {
    if (!controller_.session().activity.UserInterrupt) controller_.PressEscape();
}

void TreeEditor::Finish() {
    if (reopen_) controller_.OpenListedTree(*reopen_);
    reopen_.reset();
}

}  // namespace zorvel
