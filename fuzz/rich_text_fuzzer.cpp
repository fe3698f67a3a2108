// Reads arbitrary bytes as rich text, and as lines of a log: what is read can be put into a document, and a
// log line reads as it stands in the log.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "fuzz_input.h"
#include "platform/code_page.h"
#include "viewers/log_rtf.h"
#include "viewers/rich_text.h"

namespace zorvel::fuzz {
namespace {

bool IsControl(char character) {
    return (static_cast<unsigned char>(character) < 0x20 && character != '\t') || character == 0x7F;
}

class Sink final : public RichTextSink {
  public:
    std::string text;
    std::size_t paragraphs = 0;

    void Text(std::string_view utf8, const CharacterFormat& format) override {
        Require(!utf8.empty() && format.font != nullptr);
        Require(format.half_points >= 2 && format.half_points <= 3276);
        Require(std::none_of(utf8.begin(), utf8.end(), IsControl));
        // Well-formed text loses nothing but what the code page has no code for.
        const std::string back = FromUtf8(utf8);
        const auto characters = std::count_if(utf8.begin(), utf8.end(), [](char byte) {
            return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
        });
        Require(back.size() == static_cast<std::size_t>(characters));
        text += utf8;
    }
    void EndParagraph(const ParagraphFormat& format) override {
        Require(format.tab_width > 0 && format.space_before >= 0 && format.space_after >= 0);
        ++paragraphs;
    }
};

void ReadAsDocument(std::string_view rtf) {
    Sink sink;
    ReadRichText(rtf, sink);
    Require(sink.text.size() <= 3 * rtf.size());
    Require(sink.paragraphs <= rtf.size());
}

void ReadAsLog(std::string_view bytes) {
    std::string rtf = "{\\rtf1\\ansi\r\n";
    std::string expected;
    std::size_t lines = 0;
    while (!bytes.empty()) {
        const std::string_view line = bytes.substr(0, bytes.find_first_of("\r\n"));
        bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
        AppendLogLine(rtf, line);
        ++lines;
        std::string shown(line);
        std::erase_if(shown, IsControl);
        expected += ToUtf8(shown);
    }
    rtf += "}\r\n";
    Sink sink;
    ReadRichText(rtf, sink);
    Require(sink.text == expected);
    Require(sink.paragraphs == lines);
}

}  // namespace

void TestOneInput(std::string_view input) {
    ReadAsDocument(input);
    ReadAsLog(input);
}

}  // namespace zorvel::fuzz
