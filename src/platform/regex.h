// Regular expressions over single-byte text, without regard to (ASCII) case.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace zorvel {

class Regex {
  public:
    // Compiles `pattern`. Raises error 5 with the fault and its place in the detail when it is not a valid
    // expression.
    explicit Regex(std::string_view pattern);
    ~Regex();
    Regex(Regex&&) noexcept;
    Regex& operator=(Regex&&) noexcept;

    // True when the expression matches anywhere in `text`. Raises error 5 when the search exceeds the
    // engine's limits.
    bool Matches(std::string_view text) const;

  private:
    struct Engine;
    std::unique_ptr<Engine> engine_;
};

}  // namespace zorvel
