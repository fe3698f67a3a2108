// Readers of the files that reports are written to, strict where the formats are.
#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/code_page.h"

namespace zorvel::test {

// The records of an RFC 4180 text behind its byte order mark. Every record must end with CR LF.
inline std::vector<std::vector<std::string>> ReadCsv(std::string_view text) {
    if (!text.starts_with("\xEF\xBB\xBF")) throw std::runtime_error("no byte order mark");
    text.remove_prefix(3);
    std::vector<std::vector<std::string>> records;
    while (!text.empty()) {
        auto& record = records.emplace_back();
        while (true) {
            std::string& field = record.emplace_back();
            if (text.starts_with('"')) {
                for (text.remove_prefix(1); !text.starts_with('"') || text.starts_with("\"\"");) {
                    text.remove_prefix(text.starts_with('"') ? 1 : 0);
                    field += text.at(0);
                    text.remove_prefix(1);
                }
                text.remove_prefix(1);
            } else {
                field = text.substr(0, text.find_first_of(",\"\r\n"));
                text.remove_prefix(field.size());
            }
            if (!text.starts_with(',')) break;
            text.remove_prefix(1);
        }
        if (!text.starts_with("\r\n")) throw std::runtime_error("no CR LF behind a record");
        text.remove_prefix(2);
    }
    return records;
}

// A JSON value: its members by their name, its elements, or its text ("12", "true", or a string's content
// behind an apostrophe, as UTF-8).
struct Json {
    std::vector<std::string> keys;
    std::map<std::string, Json> members;
    std::vector<Json> elements;
    std::string text;

    const Json& operator[](const std::string& key) const { return members.at(key); }
};

class JsonReader {
  public:
    static Json Read(std::string_view text) {
        JsonReader reader(text);
        Json value = reader.Value();
        reader.PassBlanks();
        if (!reader.rest_.empty()) throw std::runtime_error("text behind the value");
        return value;
    }

  private:
    explicit JsonReader(std::string_view text) : rest_(text) {}

    void PassBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size())); }
    bool Take(char character) {
        PassBlanks();
        if (!rest_.starts_with(character)) return false;
        rest_.remove_prefix(1);
        return true;
    }
    void Need(char character) {
        if (!Take(character)) throw std::runtime_error(std::string("expected ") + character);
    }
    Json Value() {
        Json value;
        if (Take('{')) {
            if (Take('}')) return value;
            do {
                Need('"');
                const std::string key = String();
                Need(':');
                value.keys.push_back(key);
                if (!value.members.emplace(key, Value()).second)
                    throw std::runtime_error("a key comes again: " + key);
            } while (Take(','));
            Need('}');
        } else if (Take('[')) {
            if (Take(']')) return value;
            do {
                value.elements.push_back(Value());
            } while (Take(','));
            Need(']');
        } else if (Take('"')) {
            value.text = '\'' + String();
        } else {
            const std::size_t end = std::min(rest_.find_first_of(",]} \t\r\n"), rest_.size());
            value.text = rest_.substr(0, end);
            rest_.remove_prefix(end);
            if (value.text != "true" && value.text != "false") RequireNumber(value.text);
        }
        return value;
    }
    // A whole number without leading zeros.
    static void RequireNumber(std::string_view text) {
        if (text.starts_with('-')) text.remove_prefix(1);
        const bool digits = !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
        if (!digits || (text.size() > 1 && text.front() == '0')) throw std::runtime_error("no number");
    }
    std::string String() {
        std::string text;
        while (true) {
            const char character = rest_.at(0);
            rest_.remove_prefix(1);
            if (character == '"') return text;
            if (static_cast<unsigned char>(character) < 0x20) throw std::runtime_error("control character");
            if (character == '\\') {
                TakeEscape(text);
            } else {
                text += character;
            }
        }
    }
    void TakeEscape(std::string& text) {
        constexpr std::string_view kLetters = "\"\\/bfnrt";
        constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
        const char letter = rest_.at(0);
        rest_.remove_prefix(1);
        if (letter == 'u') {
            AppendUtf8(text, static_cast<char32_t>(std::stoul(std::string(rest_.substr(0, 4)), nullptr, 16)));
            rest_.remove_prefix(4);
        } else {
            text += kMeanings.at(kLetters.find(letter));
        }
    }

    std::string_view rest_;
};

// What is wrong with the nesting of a page's elements; empty when all are closed in order.
inline std::string NestingFault(std::string_view page) {
    std::vector<std::string> open;
    for (std::size_t at = page.find('<'); at != std::string_view::npos; at = page.find('<', at)) {
        const std::size_t end = page.find('>', at);
        if (end == std::string_view::npos) return "a tag without an end";
        std::string name(page.substr(at + 1, end - at - 1));
        at = end;
        name = name.substr(0, name.find(' '));
        if (name == "!DOCTYPE" || name == "meta" || name == "input") continue;
        if (!name.starts_with('/')) {
            open.push_back(name);
            // Their content is no markup.
            if (name == "style" || name == "script") at = page.find("</" + name, at);
        } else if (open.empty() || '/' + open.back() != name) {
            return '<' + name + "> where </" + (open.empty() ? "" : open.back()) + "> was expected";
        } else {
            open.pop_back();
        }
    }
    return open.empty() ? "" : open.back() + " stays open";
}

}  // namespace zorvel::test
