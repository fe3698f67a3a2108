// Changes of Directory.toml that leave what they do not concern as its author wrote it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "directory/directory_config.h"
#include "platform/files.h"

namespace zorvel {

// The text of a Directory.toml. A change writes the lines that it concerns and keeps all others with their
// comments, their order and their line ends. It is read again before it counts: each change raises error 5
// when a value cannot stand (the detail is the reason), or when the text's form allows no such change (it
// names file and line); the text is as before then.
class DirectoryText {
  public:
    // Raises what ParseDirectoryConfig raises.
    DirectoryText(const Files& files, std::string text);

    const std::string& text() const { return text_; }
    const DirectoryConfig& config() const { return config_; }

    // Adds a tree behind the others.
    void Add(const DirectoryConfig::Tree& tree);
    // Gives the tree `name` other settings. A tree that is preferred stays so under another name. Raises
    // error 5 when there is none of that name, as Remove does.
    void Replace(std::string_view name, const DirectoryConfig::Tree& tree);
    // Removes a tree with the comment that stands right above it, unless that begins the file.
    void Remove(std::string_view name);
    // Says which tree is opened first; nothing: the first one.
    void Prefer(const std::optional<std::string>& name);

  private:
    std::size_t IndexOf(std::string_view name) const;
    void Take(std::string text, const DirectoryConfig& expected);

    const Files& files_;
    std::string text_;
    DirectoryConfig config_;
};

// Does `change` to Directory.toml of the program folder, which is read for it and replaced as a whole;
// returns what it lists then. The caller has the right to write. Raises what reading, changing and writing
// raise, and then the file is as it was.
DirectoryConfig ChangeDirectoryFile(const Files& files, const std::function<void(DirectoryText&)>& change);

}  // namespace zorvel
