// Regular expressions over text of the code page, one byte a character: those of ECMAScript, without regard
// to the case of the code page's letters. ASCII letters, digits and "_" alone are the word characters of \w
// and \b.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace zorvel {

class Regex {
  public:
    // Compiles `expression` (TranslateExpression says how it is read). Raises error 5 with the fault and its
    // place as the description when it is not a valid expression, and error 430 when the engine cannot be
    // used.
    explicit Regex(std::string_view expression);
    ~Regex();
    Regex(Regex&&) noexcept;
    Regex& operator=(Regex&&) noexcept;

    // True when the expression matches anywhere in `text`. Raises error 5 when the search takes more steps,
    // memory or time (some seconds) than any sensible one needs.
    bool Matches(std::string_view text) const;

  private:
    class Engine;
    std::unique_ptr<Engine> engine_;
};

}  // namespace zorvel
