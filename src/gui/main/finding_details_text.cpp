#include "gui/main/finding_details_text.h"

#include "gui/widgets/qt_text.h"
#include "reporting/report_values.h"

namespace zorvel {
namespace {

QString Plain(const std::string& text) {
    return ToQString(DisplayText(text)).toHtmlEscaped().replace('\n', "<br>");
}

QString Paragraph(const char* heading, const std::string& text) {
    if (text.empty()) return {};
    return QString("<p><b>%1:</b> ").arg(heading) + Plain(text) + "</p>";
}

QString EntryTable(const FindingDetails& details) {
    if (details.columns.empty()) return {};
    if (details.entries.empty()) return "<p>The dataset does not hold the entry.</p>";
    QString html = "<table border=\"1\" cellspacing=\"0\" cellpadding=\"3\"><tr><th></th>";
    for (const std::string& column : details.columns)
        html += "<th align=\"left\">" + Plain(column) + "</th>";
    html += "</tr>";
    for (const FindingDetails::Entry& entry : details.entries) {
        const QString begin = entry.is_own ? "<td><b>" : "<td>";
        const QString end = entry.is_own ? "</b></td>" : "</td>";
        html += "<tr>" + begin + (entry.is_own ? "&#9654;" : "") + end;
        for (const std::string& field : entry.fields)
            html += begin + Plain(field) + end;
        html += "</tr>";
    }
    return html + "</table>";
}

}  // namespace

QString FindingDetailsHtml(const FindingDetails& details) {
    QString html = "<h3>" + Plain(details.rule) + "</h3>";
    html += Paragraph("Severity", details.severity);
    html += Paragraph("What to do", details.remedy);
    html += Paragraph("Remark", details.remark);
    html += Paragraph("State", details.acceptance);
    html += Paragraph("Application", details.application);
    html += EntryTable(details);
    html += Paragraph("Reaches", details.reach);
    if (details.associations.empty()) return html;
    html += "<p>Associated with:</p><ul>";
    for (const std::string& association : details.associations)
        html += "<li>" + Plain(association) + "</li>";
    return html + "</ul>";
}

}  // namespace zorvel
