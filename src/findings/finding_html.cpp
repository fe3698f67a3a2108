// Findings as one page for a browser.
#include "findings/finding_list.h"
#include "shell/character_table.h"

namespace zorvel {
namespace {

constexpr std::string_view kHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Findings</title>
<style>
:root { color-scheme: light dark; --paper: #fff; --text: #1c2530; --faint: #56616e; --title: #123e6b; --rule: #d5dce4;
  --critical: #a4001d; --high: #a34700; --medium: #6b5a00; --low: #3d5a73; }
@media (prefers-color-scheme: dark) {
  :root { --paper: #16191d; --text: #e3e6ea; --faint: #a0a9b4; --title: #9cc7f2; --rule: #343d47;
    --critical: #ff8a96; --high: #ffb27a; --medium: #e8d27a; --low: #a9c4dc; }
}
body { margin: 1rem 1.5rem; background: var(--paper); color: var(--text);
  font: 0.875rem/1.4 system-ui, "DejaVu Sans", sans-serif; font-variant-numeric: tabular-nums; }
h1 { font-size: 1.6rem; color: var(--title); }
p, li { white-space: pre-line; overflow-wrap: anywhere; }
table { width: 100%; border-collapse: collapse; }
th { position: sticky; top: 0; background: var(--paper); color: var(--title); text-align: left; }
th, td { padding: 0.2rem 0.4rem; vertical-align: top; border-bottom: 1px solid var(--rule); }
td { overflow-wrap: anywhere; white-space: pre-wrap; }
td:first-child { font-weight: 600; }
.critical { color: var(--critical); } .high { color: var(--high); }
.medium { color: var(--medium); } .low { color: var(--low); }
tr.accepted td { color: var(--faint); }
footer { color: var(--faint); }
@media print { th { position: static; } tr { break-inside: avoid; } }
</style>
</head>
<body>
)";

class FindingPage {
  public:
    FindingPage(const FindingList& list, OutputFile& file)
        : list_(list), findings_(list.findings), table_(list.findings.table()), file_(file) {
        // Pictures stand for control characters, which have no place in a page.
        markup_.SpellControls([](std::size_t) { return std::string("\xC2\xB7"); });
        markup_.Keep('\n');
        markup_.Keep('\t');
        markup_.Spell('&', "&amp;");
        markup_.Spell('<', "&lt;");
        markup_.Spell('>', "&gt;");
        markup_.Spell('"', "&quot;");
        markup_.Spell('\'', "&#39;");
    }

    void Write(const AskInterrupted& ask) {
        file_.Write(kHead);
        Element("h1", "Findings");
        const FindingFacts& facts = findings_.facts();
        Element("p", facts.tree + ", " + facts.captured + ", " + facts.dataset +
                         (facts.incomplete ? ": import not completed" : ""));
        Element("p", CountsText(CountsOf(findings_, list_.rows)));
        WriteNotes();
        WriteTable(ask);
        Element("footer", "Generated " + list_.generated);
        file_.Write("</body>\n</html>\n");
    }

  private:
    void Element(std::string_view name, std::string_view text) {
        file_.Write('<');
        file_.Write(name);
        file_.Write('>');
        markup_.Write(text, file_);
        file_.Write("</");
        file_.Write(name);
        file_.Write(">\n");
    }

    void WriteNotes() {
        const std::vector<std::string> notes = findings_.Notes();
        if (notes.empty()) return;
        file_.Write("<ul>\n");
        for (const std::string& note : notes)
            Element("li", note);
        file_.Write("</ul>\n");
    }

    void WriteTable(const AskInterrupted& ask) {
        file_.Write("<table>\n<thead><tr>");
        for (const std::string_view column : kFindingColumns) {
            file_.Write("<th scope=\"col\">");
            markup_.Write(column, file_);
            file_.Write("</th>");
        }
        file_.Write("<th scope=\"col\">Reason</th></tr></thead>\n<tbody>\n");
        InterruptionPoint point(ask);
        for (const std::uint32_t row : list_.rows) {
            point.Pass();
            WriteRow(row);
        }
        file_.Write("</tbody>\n</table>\n");
    }
    void WriteRow(std::size_t row) {
        file_.Write("<tr class=\"");
        file_.Write(StateText(findings_.states()[row]));
        file_.Write("\"><td class=\"");
        file_.Write(SeverityText(table_.RuleOf(row).severity));
        file_.Write("\">");
        file_.Write(SeverityText(table_.RuleOf(row).severity));
        file_.Write("</td>");
        for (std::size_t column = 1; column < kFindingColumns.size(); ++column)
            Cell(FindingField(table_, findings_.states(), row, static_cast<FindingColumn>(column)));
        const std::optional<std::size_t> entry = findings_.states().EntryOf(row);
        Cell(entry ? findings_.accepted()[*entry].reason : std::string());
        file_.Write("</tr>\n");
    }
    void Cell(std::string_view text) {
        file_.Write("<td>");
        markup_.Write(text, file_);
        file_.Write("</td>");
    }

    const FindingList& list_;
    const Findings& findings_;
    const FindingTable& table_;
    OutputFile& file_;
    CharacterTable markup_;
};

}  // namespace

void WriteFindingsHtml(const FindingList& list, OutputFile& file, const AskInterrupted& ask) {
    FindingPage(list, file).Write(ask);
}

}  // namespace zorvel
