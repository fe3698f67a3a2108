#include "directory/directory_text.h"

#include <toml++/toml.h>

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

#include "directory/toml_layout.h"
#include "platform/code_page.h"
#include "platform/error.h"
#include "platform/hex.h"

namespace zorvel {
namespace {

// A text in UTF-8 as a string of TOML: as it stands between apostrophes where that spares escapes.
std::string Quoted(std::string_view utf8) {
    const auto is_control = [](char character) {
        const auto code = static_cast<unsigned char>(character);
        return code < 0x20 || code == 0x7F;
    };
    const bool controls = std::any_of(utf8.begin(), utf8.end(), is_control);
    if (!controls && utf8.find('\'') == std::string_view::npos &&
        utf8.find_first_of("\\\"") != std::string_view::npos)
        return "'" + std::string(utf8) + "'";
    std::string text = "\"";
    for (const char character : utf8) {
        if (is_control(character)) {
            text += "\\u00";
            AppendHex(text, static_cast<unsigned char>(character));
            continue;
        }
        if (character == '"' || character == '\\') text += '\\';
        text += character;
    }
    return text + '"';
}

std::string QuotedList(const std::vector<std::string>& utf8_texts) {
    std::string list;
    for (const std::string& text : utf8_texts)
        list += (list.empty() ? "" : ", ") + Quoted(text);
    return "[" + list + "]";
}

std::string QuotedTexts(std::vector<std::string> texts) {
    for (std::string& text : texts)
        text = ToUtf8(text);
    return QuotedList(texts);
}

// A path of the configuration as the file writes it: relative to the program folder where it lies there.
std::string QuotedPath(const Files& files, std::string_view path) {
    if (const std::string folder = files.Path({}); path.starts_with(folder))
        path.remove_prefix(folder.size());
    std::string text = ToUtf8(path);
    std::replace(text.begin(), text.end(), '\\', '/');
    return Quoted(text);
}

// What a key of a tree is to say.
struct Setting {
    std::string_view key;
    std::string value;        // as TOML; empty: the tree does not have the key
    bool by_default = false;  // what is meant without the key
};

// The keys of a tree, in the order in which they are written.
std::vector<Setting> SettingsOf(const Files& files, const DirectoryConfig::Tree& tree) {
    static const LdapSettings usual;
    const LdapSettings& ldap = tree.ldap ? *tree.ldap : usual;
    const auto text = [](const std::string& value, auto quoted) {
        return value.empty() ? std::string() : quoted();
    };
    const auto path = [&](const std::string& value) {
        return text(value, [&] { return QuotedPath(files, value); });
    };
    const auto number = [&](std::string_view key, auto value, auto usual_value) -> Setting {
        return {key, tree.ldap ? std::to_string(value) : std::string(), value == usual_value};
    };
    return {
        {"name", Quoted(ToUtf8(tree.name))},
        {"ldif", path(tree.ldif)},
        {"ldap", tree.ldap ? QuotedTexts(ldap.urls) : ""},
        {"start_tls", tree.ldap ? (ldap.start_tls ? "true" : "false") : "", !ldap.start_tls},
        {"base", tree.ldap ? QuotedList(ldap.bases) : "", ldap.bases == usual.bases},
        {"bind_dn", text(ldap.bind_dn, [&] { return Quoted(ldap.bind_dn); })},
        {"password_file", path(ldap.password_file)},
        {"password_command", ldap.password_command.empty() ? "" : QuotedTexts(ldap.password_command)},
        {"ca_file", path(ldap.ca_file)},
        number("connect_timeout", ldap.connect_timeout.count(), usual.connect_timeout.count()),
        number("answer_timeout", ldap.answer_timeout.count(), usual.answer_timeout.count()),
        number("page_size", ldap.page_size, usual.page_size),
        number("read_ahead", ldap.read_ahead, usual.read_ahead),
    };
}

// Changes a text back to front, so that the places of what comes before stay.
class Patches {
  public:
    void Put(TomlLayout::Range range, std::string text) { patches_.push_back({range, std::move(text)}); }

    std::string Apply(std::string text) {
        // What is put in comes before what is taken away at the same place.
        std::stable_sort(patches_.begin(), patches_.end(), [](const Patch& left, const Patch& right) {
            return std::tie(left.range.begin, left.range.end) < std::tie(right.range.begin, right.range.end);
        });
        for (auto patch = patches_.rbegin(); patch != patches_.rend(); ++patch)
            text.replace(patch->range.begin, patch->range.end - patch->range.begin, patch->text);
        return text;
    }

  private:
    struct Patch {
        TomlLayout::Range range;
        std::string text;
    };
    std::vector<Patch> patches_;
};

// A text that was found to be right, and where its parts stand.
struct Document {
    std::string_view text;
    toml::table root;
    TomlLayout layout;

    explicit Document(std::string_view source)
        : text(source), root(toml::parse(source)), layout(source, root) {}

    // Tree `index`, which must have a header of its own: lines cannot be put into braces.
    const toml::table& Tree(const std::string& path, std::size_t index) const {
        const toml::table& tree = *root.get("tree")->as_array()->get(index)->as_table();
        if (!tree.is_inline()) return tree;
        throw Error(errors::kInvalidCall)
            .With(path + ", line " + std::to_string(tree.source().begin.line) +
                  ": A tree in braces can only be changed in a text editor");
    }

    // A line of a key, ended as the line before it that ends at `place` asks for.
    std::string Line(std::size_t place, std::string_view key, const std::string& value) const {
        const std::string end(layout.line_end());
        const bool open = place > 0 && text[place - 1] != '\n';
        return (open ? end : "") + std::string(key) + " = " + value + (open ? "" : end);
    }
};

// Puts `after` in the place of `before`, of which only what differs is touched.
void PatchTree(const Document& document, const toml::table& table, const std::vector<Setting>& before,
               const std::vector<Setting>& after, Patches& patches) {
    const TomlLayout& layout = document.layout;
    std::size_t behind = layout.BehindLine(layout.ValueOf(*table.get("name")).begin);
    for (std::size_t i = 0; i < after.size(); ++i) {
        const auto found = table.find(after[i].key);
        const bool there = found != table.end();
        const bool stays = there && !after[i].value.empty();
        if (after[i].value != before[i].value) {
            if (stays) {
                patches.Put(layout.ValueOf(found->second), after[i].value);
            } else if (there) {
                patches.Put(layout.LinesOf(found->first, found->second), {});
            } else if (!after[i].value.empty() && !after[i].by_default) {
                patches.Put({behind, behind}, document.Line(behind, after[i].key, after[i].value));
            }
        }
        if (stays) behind = layout.LinesOf(found->first, found->second).end;
    }
}

// Puts `name` in the place of the preferred tree; nothing removes it.
void PatchPreferred(const Document& document, const std::optional<std::string>& name, Patches& patches) {
    const auto found = document.root.find("preferred");
    const bool there = found != document.root.end();
    if (there && name) {
        patches.Put(document.layout.ValueOf(found->second), Quoted(ToUtf8(*name)));
    } else if (there) {
        patches.Put(document.layout.LinesOf(found->first, found->second), {});
    } else if (name) {
        const std::size_t begin = document.layout.FirstLine();
        const std::string end(document.layout.line_end());
        patches.Put({begin, begin},
                    "preferred = " + Quoted(ToUtf8(*name)) + end + (begin < document.text.size() ? end : ""));
    }
}

}  // namespace

DirectoryText::DirectoryText(const Files& files, std::string text)
    : files_(files), text_(std::move(text)), config_(ParseDirectoryConfig(files, text_)) {}

std::size_t DirectoryText::IndexOf(std::string_view name) const {
    const auto found = std::find_if(config_.trees.begin(), config_.trees.end(),
                                    [name](const DirectoryConfig::Tree& tree) { return tree.name == name; });
    if (found == config_.trees.end()) {
        throw Error(errors::kInvalidCall)
            .With(files_.Path(kDirectoryConfigFile) + ": There is no tree '" + std::string(name) +
                  "' any more");
    }
    return static_cast<std::size_t>(found - config_.trees.begin());
}

// Makes `text` the text if it says what it is to say.
void DirectoryText::Take(std::string text, const DirectoryConfig& expected) {
    DirectoryConfig config;
    try {
        config = ParseDirectoryConfig(files_, text);
    } catch (const DirectoryConfigFault& fault) {
        // Its line is none that anybody has seen.
        throw Error(errors::kInvalidCall).With(fault.reason());
    }
    if (config != expected) {
        throw Error(errors::kInvalidCall)
            .With(files_.Path(kDirectoryConfigFile) +
                  ": The change cannot be written into the file as it stands - change it in a text editor");
    }
    text_ = std::move(text);
    config_ = std::move(config);
}

void DirectoryText::Add(const DirectoryConfig::Tree& tree) {
    const std::string end(Document(text_).layout.line_end());
    std::string text = text_;
    if (!text.empty() && text.back() != '\n') text += end;
    if (!text.empty() && !text.ends_with(end + end)) text += end;
    text += "[[tree]]" + end;
    for (const Setting& setting : SettingsOf(files_, tree)) {
        if (setting.value.empty() || setting.by_default) continue;
        text.append(setting.key).append(" = ").append(setting.value).append(end);
    }
    DirectoryConfig expected = config_;
    expected.trees.push_back(tree);
    Take(std::move(text), expected);
}

void DirectoryText::Replace(std::string_view name, const DirectoryConfig::Tree& tree) {
    const std::size_t index = IndexOf(name);
    const Document document(text_);
    Patches patches;
    PatchTree(document, document.Tree(files_.Path(kDirectoryConfigFile), index),
              SettingsOf(files_, config_.trees[index]), SettingsOf(files_, tree), patches);
    DirectoryConfig expected = config_;
    expected.trees[index] = tree;
    if (config_.preferred == name && tree.name != name) {
        expected.preferred = tree.name;
        PatchPreferred(document, tree.name, patches);
    }
    Take(patches.Apply(text_), expected);
}

void DirectoryText::Remove(std::string_view name) {
    const std::size_t index = IndexOf(name);
    const Document document(text_);
    Patches patches;
    patches.Put(document.layout.SectionOf(document.Tree(files_.Path(kDirectoryConfigFile), index)), {});
    DirectoryConfig expected = config_;
    expected.trees.erase(expected.trees.begin() + static_cast<std::ptrdiff_t>(index));
    if (config_.preferred == name) {
        expected.preferred.reset();
        PatchPreferred(document, std::nullopt, patches);
    }
    Take(patches.Apply(text_), expected);
}

void DirectoryText::Prefer(const std::optional<std::string>& name) {
    if (name) IndexOf(*name);
    DirectoryConfig expected = config_;
    expected.preferred = name;
    Patches patches;
    PatchPreferred(Document(text_), name, patches);
    Take(patches.Apply(text_), expected);
}

DirectoryConfig ChangeDirectoryFile(const Files& files, const std::function<void(DirectoryText&)>& change) {
    const std::string path = files.Path(kDirectoryConfigFile);
    DirectoryText text(files, files.Read(path));
    change(text);
    files.WriteInPlace(path, [&](OutputFile& file) { file.Write(text.text()); });
    return text.config();
}

}  // namespace zorvel
