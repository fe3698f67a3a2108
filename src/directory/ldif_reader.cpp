#include "directory/ldif_reader.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "directory/base64.h"
#include "platform/code_page.h"
#include "platform/error.h"
#include "platform/hex.h"

namespace zorvel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

constexpr bool IsLetterOrDigit(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9');
}

// Names and numeric OIDs of attributes, with options; "_" stands in names that some servers export.
constexpr bool IsNameCharacter(char character) {
    return IsLetterOrDigit(character) || character == '-' || character == '.' || character == ';' ||
           character == '_';
}

std::string_view Trimmed(std::string_view text) {
    while (text.starts_with(' '))
        text.remove_prefix(1);
    while (text.ends_with(' '))
        text.remove_suffix(1);
    return text;
}

// The same for a DN, whose last blank can be escaped and then belongs to it.
std::string_view TrimmedDN(std::string_view text) {
    const std::string_view trimmed = Trimmed(text);
    const std::size_t last = trimmed.find_last_not_of('\\');
    const std::size_t backslashes = trimmed.size() - (last == std::string_view::npos ? 0 : last + 1);
    const bool escaped = backslashes % 2 == 1 && trimmed.data() + trimmed.size() < text.data() + text.size();
    return escaped ? std::string_view(trimmed.data(), trimmed.size() + 1) : trimmed;
}

// The local path that a "file://" URL names; nothing when it is of another form or names another host.
std::optional<std::string> PathOfUrl(std::string_view url) {
    constexpr std::string_view kScheme = "file://";
    constexpr std::string_view kThisHost = "localhost";
    if (!BeginsIgnoringCase(url, kScheme)) return std::nullopt;
    url.remove_prefix(kScheme.size());
    if (BeginsIgnoringCase(url, kThisHost)) url.remove_prefix(kThisHost.size());
    if (!url.starts_with('/')) return std::nullopt;
    std::string path;
    for (std::size_t at = 0; at < url.size(); ++at) {
        char character = url[at];
        if (character == '%') {
            const std::optional<unsigned char> byte = HexByte(url.substr(at + 1));
            if (!byte) return std::nullopt;
            character = static_cast<char>(*byte);
            at += 2;
        }
        if (character == '\0') return std::nullopt;
        path += character;
    }
    return path;
}

// Whether a file lies in a folder or below it; both are free of links and "..".
bool LiesBelow(const fs::path& path, const fs::path& folder) {
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

}  // namespace

LdifReader::LdifReader(InputFile file, fs::path path) : file_(std::move(file)), path_(std::move(path)) {
    if (file_.Available().starts_with(kByteOrderMark)) file_.Skip(kByteOrderMark.size());
}

void LdifReader::Fail(std::int64_t line, std::string_view reason) const {
    throw Error(errors::kDirectoryUnreadable)
        .With(name() + ", line " + std::to_string(line) + ": " + std::string(reason));
}

// Reads a line with its continuations into `line_`, passing over comments.
LdifReader::Line LdifReader::ReadLine() {
    for (;;) {
        const int first = file_.Peek();
        if (first < 0) return Line::kEnd;
        if (first == ' ') Fail(next_line_, "A continuation line that continues nothing");
        const bool keep = first != '#';
        line_.Clear();
        folds_.Clear();
        std::size_t last_fold = 0;
        first_line_ = next_line_;
        TakePhysicalLine(keep);
        if (keep && line_.empty()) return Line::kBlank;
        while (file_.Peek() == ' ') {
            file_.Skip(1);
            if (keep) AppendNumber(folds_, line_.size() - std::exchange(last_fold, line_.size()));
            TakePhysicalLine(keep);
        }
        if (keep) return Line::kText;
    }
}

// Takes the rest of a physical line and appends it, without its end, to `line_` when it is to be kept.
void LdifReader::TakePhysicalLine(bool keep) {
    const std::size_t before = line_.size();
    for (;;) {
        const std::string_view bytes = file_.Available();
        if (bytes.empty()) break;
        const std::size_t end = bytes.find('\n');
        if (keep) line_.Append(bytes.substr(0, end));
        if (end == std::string_view::npos) {
            file_.Skip(bytes.size());
            continue;
        }
        file_.Skip(end + 1);
        break;
    }
    if (line_.size() > before && line_.view().back() == '\r') line_.RemoveLast();
    ++next_line_;
}

// The physical line of the character at `offset` of the unfolded line.
std::int64_t LdifReader::LineAt(std::size_t offset) const {
    std::int64_t line = first_line_;
    const char* at = folds_.data();
    const char* const end = at + folds_.size();
    for (std::size_t fold = 0; at != end; ++line) {
        fold += TakeNumber(at);
        if (fold > offset) break;
    }
    return line;
}

// Splits the current line into its name and the place and form of its value.
void LdifReader::ParseLine() {
    const std::string_view line = line_.view();
    const std::size_t colon = line.find(':');
    const std::string_view description = line.substr(0, colon);
    const auto* bad = std::find_if_not(description.begin(), description.end(), IsNameCharacter);
    if (bad != description.end() || description.empty() || !IsLetterOrDigit(description.front())) {
        Fail(LineAt(static_cast<std::size_t>(bad == description.end() ? 0 : bad - description.begin())),
             "Not the name of an attribute");
    }
    if (colon == std::string_view::npos) Fail(first_line_, "A line without a colon");
    field_ = description.substr(0, description.find(';'));
    value_at_ = colon + 1;
    form_ = ValueForm::kPlain;
    if (value_at_ < line.size() && (line[value_at_] == ':' || line[value_at_] == '<')) {
        form_ = line[value_at_] == ':' ? ValueForm::kBase64 : ValueForm::kUrl;
        ++value_at_;
    }
    value_at_ = std::min(line.find_first_not_of(' ', value_at_), line.size());
}

// The value of the current line; base64 is decoded where it stands.
std::string_view LdifReader::Value() {
    switch (form_) {
        case ValueForm::kBase64: {
            std::size_t fault = 0;
            const auto size = DecodeBase64({line_.data() + value_at_, line_.size() - value_at_}, fault);
            if (!size) Fail(LineAt(value_at_ + fault), "Not base64");
            return line_.view().substr(value_at_, *size);
        }
        case ValueForm::kUrl:
            return UrlValue(value_at_);
        case ValueForm::kPlain:
            break;
    }
    return line_.view().substr(value_at_);
}

// The file that a URL of the current line names. An export can come from anywhere: what it names must lie
// beside it, lest it takes the user's other files along.
fs::path LdifReader::FileOfUrl(std::string_view url) const {
    const std::optional<std::string> named = PathOfUrl(url);
    if (!named) Fail(first_line_, "Not a URL of a local file");
    std::error_code error;
    fs::path path = fs::canonical(*named, error);
    // Anything but a plain file could block or never end.
    if (error || !fs::is_regular_file(path, error)) Fail(first_line_, "The URL names no file");
    const fs::path folder = fs::canonical(path_, error).parent_path();
    if (error || !LiesBelow(path, folder))
        Fail(first_line_, "The file of the URL lies outside of the folder of the LDIF file");
    if (LiesBelow(path, "/proc") || LiesBelow(path, "/sys"))
        Fail(first_line_, "The URL names a file of the system");
    return path;
}

// The bytes of the file that the URL at `at` of the current line names.
std::string_view LdifReader::UrlValue(std::size_t at) {
    const fs::path path = FileOfUrl(Trimmed(line_.view().substr(at)));
    url_value_.Clear();
    try {
        InputFile file(path, path.string());
        for (std::string_view bytes = file.Available(); !bytes.empty(); bytes = file.Available()) {
            url_value_.Append(bytes);
            file.Skip(bytes.size());
        }
    } catch (const Error& failure) {
        Fail(first_line_, "The file of the URL cannot be read: " + failure.description());
    }
    return url_value_.view();
}

bool LdifReader::NextRecord() {
    LdifAttribute skipped;
    while (NextAttribute(skipped)) {
    }
    for (;;) {
        const Line line = ReadLine();
        if (line == Line::kEnd) return false;
        if (line == Line::kBlank) continue;
        ParseLine();
        if (EqualIgnoringCase(field_, "version")) {
            if (Trimmed(Value()) != "1") Fail(first_line_, "Not version 1 of LDIF");
            continue;
        }
        if (!EqualIgnoringCase(field_, "dn")) Fail(first_line_, "A record that does not begin with its DN");
        if (form_ == ValueForm::kUrl) Fail(first_line_, "A DN cannot be a URL");
        dn_ = TrimmedDN(Value());
        dn_line_ = first_line_;
        in_record_ = true;
        has_attributes_ = false;
        return true;
    }
}

bool LdifReader::NextAttribute(LdifAttribute& attribute) {
    while (in_record_) {
        if (ReadLine() != Line::kText) {
            in_record_ = false;
            break;
        }
        ParseLine();
        if (EqualIgnoringCase(field_, "dn")) Fail(first_line_, "A second DN within a record");
        if (EqualIgnoringCase(field_, "changetype")) {
            if (!EqualIgnoringCase(Trimmed(Value()), "add"))
                Fail(first_line_, "A change type other than add");
            continue;
        }
        // Controls stand between the DN and the change type; an export has no use for them.
        if (!has_attributes_ && EqualIgnoringCase(field_, "control")) continue;
        has_attributes_ = true;
        attribute = {field_, Value(), first_line_};
        return true;
    }
    return false;
}

ByteBuffer LdifReader::TakeValue(const LdifAttribute& attribute) {
    ByteBuffer& buffer = form_ == ValueForm::kUrl ? url_value_ : line_;
    buffer.CutTo(static_cast<std::size_t>(attribute.value.data() - buffer.data()), attribute.value.size());
    return std::move(buffer);
}

}  // namespace zorvel
