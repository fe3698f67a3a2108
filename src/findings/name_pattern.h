// Patterns of names, in which "*" stands for any text and "?" for any one character.
#pragma once

#include <string>
#include <string_view>

namespace zorvel {

class NamePattern {
  public:
    explicit NamePattern(std::string_view pattern);

    // True when the whole of `name` is as the pattern says, without regard to case.
    bool Matches(std::string_view name) const;

    // A pattern of registry keys whose hive is written short ("HKLM\..."), with the hive's whole name, as
    // entries have it; any other as it stands.
    static std::string WithWholeHive(std::string_view pattern);

  private:
    std::string pattern_;  // in upper case
};

}  // namespace zorvel
