#include "ldif_writer.h"

#include <algorithm>
#include <cstddef>

#include "platform/code_page.h"

namespace zorvel::tools {
namespace {

constexpr std::size_t kLineWidth = 76;  // columns, the blank of a continued line included

// RFC 4648, section 4.
constexpr std::string_view kBase64Digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

void EncodeBase64(std::string_view bytes, std::string& text) {
    text.resize((bytes.size() + 2) / 3 * 4);
    std::size_t to = 0;
    for (std::size_t from = 0; from < bytes.size(); from += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - from);
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i) {
            group = group << 8U | (i < count ? static_cast<unsigned char>(bytes[from + i]) : 0U);
        }
        for (std::size_t digit = 0; digit < 4; ++digit) {
            text[to++] = digit <= count ? kBase64Digits[group >> (18U - 6U * digit) & 63U] : '=';
        }
    }
}

// RFC 2849's SAFE-STRING, and no blank at the end, which it advises against.
bool IsSafe(std::string_view text) {
    if (text.empty()) return true;
    if (text.front() == ' ' || text.front() == ':' || text.front() == '<' || text.back() == ' ') return false;
    return std::all_of(text.begin(), text.end(), [](char character) {
        const auto code = static_cast<unsigned char>(character);
        return code < 0x80 && code != '\0' && code != '\n' && code != '\r';
    });
}

}  // namespace

LdifWriter::LdifWriter(OutputFile& file, std::string_view comment) : file_(file) {
    for (std::size_t at = 0; at < comment.size();) {
        const std::size_t end = std::min(comment.find('\n', at), comment.size());
        file_.Write("# ");
        file_.Write(comment.substr(at, end - at));
        file_.Write('\n');
        at = end + 1;
    }
    file_.Write("version: 1\n");
}

void LdifWriter::Record(std::string_view dn) {
    file_.Write('\n');
    Text("dn", dn);
}

void LdifWriter::Text(std::string_view attribute, std::string_view text) {
    if (IsSafe(text)) {
        Line(attribute, text.empty() ? ":" : ": ", text);
    } else {
        Bytes(attribute, ToUtf8(text));
    }
}

void LdifWriter::Long(std::string_view attribute, std::int64_t value) {
    Line(attribute, ": ", std::to_string(value));
}

void LdifWriter::Bytes(std::string_view attribute, std::string_view bytes) {
    EncodeBase64(bytes, base64_);
    Line(attribute, ":: ", base64_);
}

void LdifWriter::Line(std::string_view attribute, std::string_view separator, std::string_view value) {
    const std::size_t first = std::min(value.size(), kLineWidth - attribute.size() - separator.size());
    line_.assign(attribute);
    line_ += separator;
    line_ += value.substr(0, first);
    for (std::size_t at = first; at < value.size(); at += kLineWidth - 1) {
        line_ += "\n ";
        line_ += value.substr(at, kLineWidth - 1);
    }
    line_ += '\n';
    file_.Write(line_);
}

std::string RelativeDN(std::string_view type, std::string_view name) {
    constexpr std::string_view kSpecial = R"(,+"\<>;=)";
    std::string dn(type);
    dn += '=';
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool edge =
            (i == 0 && (name[i] == ' ' || name[i] == '#')) || (i + 1 == name.size() && name[i] == ' ');
        if (edge || kSpecial.find(name[i]) != std::string_view::npos) dn += '\\';
        dn += name[i];
    }
    return dn;
}

}  // namespace zorvel::tools
