#include "viewers/rich_lines_export.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "platform/code_page.h"
#include "platform/hex.h"

namespace zorvel {
namespace {

std::string Html(RichTextColour colour) {
    std::string html = "#";
    for (const auto component : {colour.red, colour.green, colour.blue})
        AppendHex(html, component);
    return html;
}

std::string Style(const LineFormat& format) {
    std::string style;
    if (format.colour) style += "color:" + Html(*format.colour) + ';';
    if (format.background) style += "background-color:" + Html(*format.background) + ';';
    if (format.bold) style += "font-weight:bold;";
    if (format.italic) style += "font-style:italic;";
    if (format.underline) style += "text-decoration:underline;";
    return style;
}

void AppendHtml(std::string& html, std::string_view text) {
    for (const char character : text) {
        switch (character) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            default:
                AppendUtf8(html, std::string_view(&character, 1));
        }
    }
}

void AppendRtf(std::string& rtf, std::string_view text) {
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '\n') {
            rtf += "\\par\r\n";
        } else if (character == '\t') {
            rtf += "\\tab ";
        } else if (character == '\\' || character == '{' || character == '}') {
            rtf += '\\';
            rtf += character;
        } else if (byte >= 0x80) {
            rtf += "\\'";
            AppendHex(rtf, byte);
        } else {
            rtf += character;
        }
    }
}

// The colours of a document, numbered from 1 in the order in which they are asked for.
class ColourTable {
  public:
    std::string Number(RichTextColour colour) {
        const unsigned key = (unsigned{colour.red} << 16) | (unsigned{colour.green} << 8) | colour.blue;
        const auto [place, is_new] = numbers_.try_emplace(key, numbers_.size() + 1);
        if (is_new)
            table_ += "\\red" + std::to_string(colour.red) + "\\green" + std::to_string(colour.green) +
                      "\\blue" + std::to_string(colour.blue) + ';';
        return std::to_string(place->second);
    }
    const std::string& table() const { return table_; }

  private:
    std::unordered_map<unsigned, std::size_t> numbers_;
    std::string table_;
};

std::string_view TextOf(const RichLines& lines, const LineRun& run) {
    return std::string_view(lines.text()).substr(run.begin, run.end - run.begin);
}

}  // namespace

std::string LinesAsText(const RichLines& lines, std::size_t begin, std::size_t end) {
    return ToUtf8(std::string_view(lines.text()).substr(begin, end - begin));
}

std::string LinesAsHtml(const RichLines& lines, std::size_t begin, std::size_t end) {
    std::string html = "<meta charset=\"utf-8\"><pre>";
    for (const LineRun& run : lines.Runs(begin, end)) {
        const std::string style = Style(run.format);
        if (!style.empty()) html += "<span style=\"" + style + "\">";
        AppendHtml(html, TextOf(lines, run));
        if (!style.empty()) html += "</span>";
    }
    return html + "</pre>";
}

std::string LinesAsRtf(const RichLines& lines, std::size_t begin, std::size_t end) {
    ColourTable colours;
    std::string body;
    for (const LineRun& run : lines.Runs(begin, end)) {
        body += "\\plain\\f0\\fs20";
        if (run.format.background) body += "\\highlight" + colours.Number(*run.format.background);
        if (run.format.colour) body += "\\cf" + colours.Number(*run.format.colour);
        if (run.format.bold) body += "\\b";
        if (run.format.italic) body += "\\i";
        if (run.format.underline) body += "\\ul";
        body += ' ';
        AppendRtf(body, TextOf(lines, run));
    }
    return "{\\rtf1\\ansi\\ansicpg1252\\deff0\r\n{\\fonttbl{\\f0\\fmodern\\fprq1 Courier;}}\r\n{\\colortbl;" +
           colours.table() + "}\r\n\\pard\r\n" + body + "}\r\n";
}

}  // namespace zorvel
