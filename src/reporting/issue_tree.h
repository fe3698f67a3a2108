// The issues below their six categories, from which the report options take what a report leaves out.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zorvel {

// A row of the issue catalogue.
struct Resolution {
    std::string IssueCode;
    std::string IssueShortDesc;
};

struct IssueNode {
    std::string key;  // of the category, or the issue's code
    std::string text;
    std::size_t category = 0;  // number of the category that the node stands below; its own when it is one
    bool checked = true;
    bool bold = false;  // all issues of the category are checked; issues never are
};

class IssueTree {
  public:
    // The six categories with the issues below them, all checked.
    void Fill(const std::vector<Resolution>& resolutions);

    // The nodes in tree order: each category is followed by its issues, sorted by text without regard to
    // case. Their places are the numbers that the other functions take. None before Fill.
    const std::vector<IssueNode>& nodes() const { return nodes_; }
    bool IsCategory(std::size_t number) const { return nodes_.at(number).category == number; }

    // The user checks or unchecks a node: a category takes its issues along, an issue sets its category.
    void Check(std::size_t number, bool checked);
    // "Select ALL issues", "Unselect ALL issues", "Invert current issue selections".
    void SelectAll() { SetAll(true); }
    void UnselectAll() { SetAll(false); }
    void Invert();
    // Sets the category of an issue by what is checked below it: nothing, something (checked), all (checked
    // and bold). Does nothing for a category with issues; one without any is a leaf and shows itself.
    void SetNodeState(std::size_t number);

    bool AnyChecked() const;
    // The keys of the unchecked nodes that have no nodes below them, in tree order, each in apostrophes,
    // joined by commas: 'FILEOLD','FILEBAK'.
    std::string UncheckedKeys() const;

  private:
    bool HasChildren(std::size_t number) const;
    void SetAll(bool checked);
    void SetNodeStates();

    std::vector<IssueNode> nodes_;
};

}  // namespace zorvel
