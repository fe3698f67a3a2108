#include "platform/regex.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <vector>

#include "platform/error.h"
#include "platform/regex_syntax.h"
#include "platform/regex_tables.h"

namespace zorvel {
namespace {

using std::chrono::steady_clock;

// For the attempts to match from one place: enough for every sane expression over megabytes, and spent within
// milliseconds by one that backtracks for ever. The depth counts in the interpreter only.
constexpr std::uint32_t kMatchLimit = 1'000'000;
constexpr std::uint32_t kDepthLimit = 100'000;
// Machine code does not count how often it shortens a repetition of single characters: above so many ways to
// match the interpreter, which does, takes over.
constexpr double kMostWays = 2 * kRepeatedGroup;
constexpr std::size_t kFirstStack = std::size_t{32} * 1024;
constexpr std::size_t kLargestStack = std::size_t{16} * 1024 * 1024;

// A search tries a window of places after the other, and looks at the clock between two: an expression whose
// every attempt runs to the end of a long text would else take hours. Windows shrink and grow with the time
// that they take.
constexpr std::size_t kFirstWindow = 1024;
constexpr std::size_t kLargestWindow = std::size_t{8} * 1024;
constexpr std::chrono::milliseconds kWindowTime{10};
constexpr std::chrono::seconds kPatience{5};

// "." stops at CR and LF, "$" matches at the very end only, "[]" matches nothing, and a reference to a group
// that has not matched matches the empty text.
constexpr std::uint32_t kOptions = PCRE2_CASELESS | PCRE2_DOLLAR_ENDONLY | PCRE2_ALLOW_EMPTY_CLASS |
                                   PCRE2_MATCH_UNSET_BACKREF | PCRE2_NEVER_UTF | PCRE2_NEVER_UCP |
                                   PCRE2_USE_OFFSET_LIMIT;
constexpr std::uint32_t kNewline = PCRE2_NEWLINE_ANYCRLF;
// Behind every expression, without effect on what it matches: the engine takes CR LF for one character when
// it moves on to the next place, unless the expression names one of the two.
constexpr std::string_view kEveryPlace = "\\x0A{0}";
// What the engine says of an expression that can match only at the beginning of a line.
constexpr std::uint32_t kLineBeginning = 2;

std::string MessageOf(int code) {
    std::array<PCRE2_UCHAR, 256> buffer{};
    pcre2_get_error_message(code, buffer.data(), buffer.size());
    return reinterpret_cast<const char*>(buffer.data());
}

PCRE2_SPTR Units(std::string_view text) {
    return reinterpret_cast<PCRE2_SPTR>(text.empty() ? "" : text.data());
}

template <auto Free>
struct Freer {
    template <typename T>
    void operator()(T* object) const {
        Free(object);
    }
};

// An object of the engine; without it there is no search.
template <typename T>
T* Made(T* object) {
    if (object == nullptr) throw Error(errors::kNoAutomation);
    return object;
}

std::vector<std::uint8_t> MakeTables() {
    constexpr auto free_tables = [](const std::uint8_t* tables) { pcre2_maketables_free(nullptr, tables); };
    std::uint32_t size = 0;
    pcre2_config(PCRE2_CONFIG_TABLES_LENGTH, &size);
    const std::unique_ptr<const std::uint8_t, Freer<free_tables>> made(Made(pcre2_maketables(nullptr)));
    return CharacterTables({made.get(), size});
}

}  // namespace

struct Regex::Engine {
    std::vector<std::uint8_t> tables = MakeTables();  // the code refers to them
    std::unique_ptr<pcre2_code, Freer<pcre2_code_free>> code;
    std::unique_ptr<pcre2_match_context, Freer<pcre2_match_context_free>> context{
        Made(pcre2_match_context_create(nullptr))};
    std::unique_ptr<pcre2_match_data, Freer<pcre2_match_data_free>> match{
        Made(pcre2_match_data_create(1, nullptr))};
    std::unique_ptr<pcre2_jit_stack, Freer<pcre2_jit_stack_free>> stack;
    bool compiled = false;  // to machine code
    std::size_t first_window = kFirstWindow;
    std::size_t largest_window = kLargestWindow;

    void Compile(std::string_view expression);
    // Attempts to match from `first` and the `window` - 1 places behind it.
    bool MatchesAt(std::string_view text, std::size_t first, std::size_t window) const;
};

void Regex::Engine::Compile(std::string_view expression) {
    EngineExpression translated = TranslateExpression(expression);
    const std::unique_ptr<pcre2_compile_context, Freer<pcre2_compile_context_free>> settings(
        Made(pcre2_compile_context_create(nullptr)));
    pcre2_set_newline(settings.get(), kNewline);
    pcre2_set_character_tables(settings.get(), tables.data());
    translated.text += kEveryPlace;
    int error = 0;
    PCRE2_SIZE offset = 0;
    code.reset(pcre2_compile(Units(translated.text), translated.text.size(), kOptions, &error, &offset,
                             settings.get()));
    if (!code) {
        const std::vector<std::size_t>& places = translated.places;
        throw ExpressionFault(offset < places.size() ? places[offset] : expression.size(), MessageOf(error));
    }
    pcre2_set_match_limit(context.get(), kMatchLimit);
    pcre2_set_depth_limit(context.get(), kDepthLimit);
    compiled = translated.ways < kMostWays && pcre2_jit_compile(code.get(), PCRE2_JIT_COMPLETE) == 0;
    if (compiled) {
        stack.reset(Made(pcre2_jit_stack_create(kFirstStack, kLargestStack, nullptr)));
        pcre2_jit_stack_assign(context.get(), nullptr, stack.get());
    }
    // From within a line the engine would look for the next one at every window.
    std::uint32_t first_code_type = 0;
    pcre2_pattern_info(code.get(), PCRE2_INFO_FIRSTCODETYPE, &first_code_type);
    if (first_code_type == kLineBeginning) first_window = largest_window = PCRE2_UNSET;
}

bool Regex::Engine::MatchesAt(std::string_view text, std::size_t first, std::size_t window) const {
    pcre2_set_offset_limit(context.get(), window == PCRE2_UNSET ? window : first + window - 1);
    const auto search = compiled ? pcre2_jit_match : pcre2_match;
    const int result = search(code.get(), Units(text), text.size(), first, 0, match.get(), context.get());
    if (result == PCRE2_ERROR_NOMATCH) return false;
    if (result < 0) throw Error(errors::kInvalidCall, "The search was given up: " + MessageOf(result));
    return true;
}

Regex::Regex(std::string_view expression) : engine_(std::make_unique<Engine>()) {
    engine_->Compile(expression);
}

Regex::~Regex() = default;
Regex::Regex(Regex&&) noexcept = default;
Regex& Regex::operator=(Regex&&) noexcept = default;

bool Regex::Matches(std::string_view text) const {
    std::size_t window = engine_->first_window;
    if (engine_->MatchesAt(text, 0, window)) return true;
    if (window > text.size()) return false;
    const steady_clock::time_point start = steady_clock::now();
    steady_clock::time_point last = start;
    for (std::size_t first = window; first <= text.size();) {
        if (engine_->MatchesAt(text, first, window)) return true;
        first += window;
        const steady_clock::time_point now = steady_clock::now();
        if (now - start > kPatience)
            throw Error(errors::kInvalidCall, "The search was given up: it takes too long");
        const bool slow = now - last > kWindowTime;
        window = slow ? std::max<std::size_t>(window / 2, 1) : std::min(window * 2, engine_->largest_window);
        last = now;
    }
    return false;
}

}  // namespace zorvel
