#include "platform/regex.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
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
constexpr std::uint32_t kHeapKilobytes = 16 * 1024;
// Machine code does not count how often it shortens a repetition of single characters: above so many ways to
// match the interpreter, which does, takes over.
constexpr double kMostWays = 2 * kRepeatedGroup;
constexpr std::size_t kFirstStack = std::size_t{32} * 1024;
constexpr std::size_t kLargestStack = std::size_t{16} * 1024 * 1024;

// A search tries a window of places after the other, and looks at the clock between two: an expression whose
// every attempt runs to the end of a long text would else take hours. Windows shrink and grow with the time
// that they take. All places of a window have so many steps together: when one needs more than its share, a
// smaller window begins there.
constexpr std::size_t kFirstWindow = 1024;
constexpr std::size_t kLargestWindow = std::size_t{8} * 1024;
constexpr std::size_t kReferringWindow = 64;  // references compare long texts, uncounted
constexpr std::size_t kWindowSteps = 8'000'000;
constexpr std::size_t kShrink = 8;
constexpr std::chrono::milliseconds kWindowTime{10};
constexpr std::chrono::seconds kPatience{5};

// The interpreter's steps, and references, can each run through the text: over a longer one than this the
// interpreter looks at the clock itself, after so many items of the expression.
constexpr std::size_t kLongText = 65'536;
constexpr std::uint32_t kItemsBetweenLooks = 64;

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
constexpr char kTooLong[] = "it takes too long";

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

using Code = std::unique_ptr<pcre2_code, Freer<pcre2_code_free>>;
using MatchContext = std::unique_ptr<pcre2_match_context, Freer<pcre2_match_context_free>>;

MatchContext MakeMatchContext() {
    return MatchContext(Made(pcre2_match_context_create(nullptr)));
}

[[noreturn]] void GiveUp(const std::string& reason) {
    throw Error(errors::kInvalidCall, "The search was given up: " + reason);
}

// The time that a search has left.
class Deadline {
  public:
    void Start(steady_clock::time_point now) { end_ = now + kPatience; }
    bool IsBefore(steady_clock::time_point now) const { return end_ < now; }
    // For the engine's interpreter, ahead of each item of the expression.
    static int Look(pcre2_callout_block* /*item*/, void* deadline) {
        auto& self = *static_cast<Deadline*>(deadline);
        if (++self.items_ % kItemsBetweenLooks != 0) return 0;
        return self.IsBefore(steady_clock::now()) ? PCRE2_ERROR_CALLOUT : 0;
    }

  private:
    steady_clock::time_point end_;
    std::uint32_t items_ = 0;
};

}  // namespace

class Regex::Engine {
  public:
    explicit Engine(std::string_view expression) : translated_(TranslateExpression(expression)) {
        translated_.text += kEveryPlace;
        Compile(expression);
        LimitWindows();
    }

    bool Matches(std::string_view text) {
        const bool counted = machine_code_ && !translated_.references;
        return counted || text.size() <= kLongText ? TryWindows(text) : Watch(text);
    }

  private:
    void Compile(std::string_view expression);
    Code CompiledWith(std::uint32_t options, int& error, PCRE2_SIZE& offset) const;
    void LimitWindows();
    std::size_t LargestWindow(std::size_t text_size) const;
    bool TryWindows(std::string_view text);
    int MatchAt(std::string_view text, std::size_t first, std::size_t window);
    bool Watch(std::string_view text);

    std::vector<std::uint8_t> tables_ = MakeTables();  // the code refers to them
    EngineExpression translated_;
    Code code_;
    Code watched_;  // the same, made when it is first needed, for an interpreter that looks at the clock
    bool machine_code_ = false;
    bool by_lines_ = false;  // a match can only begin where a line does
    MatchContext context_ = MakeMatchContext();
    std::unique_ptr<pcre2_match_data, Freer<pcre2_match_data_free>> match_{
        Made(pcre2_match_data_create(1, nullptr))};
    std::unique_ptr<pcre2_jit_stack, Freer<pcre2_jit_stack_free>> stack_;
    Deadline deadline_;
};

void Regex::Engine::Compile(std::string_view expression) {
    int error = 0;
    PCRE2_SIZE offset = 0;
    code_ = CompiledWith(0, error, offset);
    if (!code_) {
        const std::vector<std::size_t>& places = translated_.places;
        throw ExpressionFault(offset < places.size() ? places[offset] : expression.size(), MessageOf(error));
    }
    pcre2_set_depth_limit(context_.get(), kDepthLimit);
    pcre2_set_heap_limit(context_.get(), kHeapKilobytes);
    pcre2_set_callout(context_.get(), Deadline::Look, &deadline_);
    machine_code_ = translated_.ways < kMostWays && pcre2_jit_compile(code_.get(), PCRE2_JIT_COMPLETE) == 0;
    if (!machine_code_) return;
    stack_.reset(Made(pcre2_jit_stack_create(kFirstStack, kLargestStack, nullptr)));
    pcre2_jit_stack_assign(context_.get(), nullptr, stack_.get());
}

// The code of the expression; none, with the engine's number and place of the fault, when it is faulty.
Code Regex::Engine::CompiledWith(std::uint32_t options, int& error, PCRE2_SIZE& offset) const {
    const std::unique_ptr<pcre2_compile_context, Freer<pcre2_compile_context_free>> settings(
        Made(pcre2_compile_context_create(nullptr)));
    pcre2_set_newline(settings.get(), kNewline);
    pcre2_set_character_tables(settings.get(), tables_.data());
    const std::string& text = translated_.text;
    return Code(pcre2_compile(Units(text), text.size(), kOptions | options, &error, &offset, settings.get()));
}

// From within a line the engine would look for the next one at every window.
void Regex::Engine::LimitWindows() {
    std::uint32_t first_code_type = 0;
    pcre2_pattern_info(code_.get(), PCRE2_INFO_FIRSTCODETYPE, &first_code_type);
    by_lines_ = first_code_type == kLineBeginning;
}

// The most places for a window: for machine code so many that what it does not count takes some hundredths of
// a second.
std::size_t Regex::Engine::LargestWindow(std::size_t text_size) const {
    if (!machine_code_) return kLargestWindow;
    if (translated_.references) return kReferringWindow;
    const double ways = translated_.ways * std::max(1.0, static_cast<double>(text_size) / kEndless);
    return static_cast<std::size_t>(std::clamp(kMostWays / ways, 1.0, static_cast<double>(kLargestWindow)));
}

bool Regex::Engine::TryWindows(std::string_view text) {
    const std::size_t largest = LargestWindow(text.size());
    std::size_t window = by_lines_ ? text.size() + 1 : std::min(kFirstWindow, largest);
    std::optional<steady_clock::time_point> last;
    for (std::size_t first = 0; first <= text.size();) {
        const int result = MatchAt(text, first, window);
        if (result >= 0) return true;
        const bool too_many_steps = result == PCRE2_ERROR_MATCHLIMIT && window > 1;
        if (result != PCRE2_ERROR_NOMATCH && !too_many_steps) GiveUp(MessageOf(result));
        if (!too_many_steps) first += window;
        if (first > text.size()) break;
        const steady_clock::time_point now = steady_clock::now();
        if (!last) deadline_.Start(now);
        if (deadline_.IsBefore(now)) GiveUp(kTooLong);
        const bool slow = last && now - *last > kWindowTime;
        window = too_many_steps ? std::min(window / kShrink, kFirstWindow)
                 : slow         ? window / 2
                                : std::min(window * 2, largest);
        window = std::max<std::size_t>(window, 1);
        last = now;
    }
    return false;
}

// Attempts to match from `first` and the `window` - 1 places behind it; the engine's result.
int Regex::Engine::MatchAt(std::string_view text, std::size_t first, std::size_t window) {
    const std::size_t steps = kWindowSteps / std::min(window, kLargestWindow);
    pcre2_set_match_limit(context_.get(), std::min(kMatchLimit, static_cast<std::uint32_t>(steps)));
    pcre2_set_offset_limit(context_.get(), first + window - 1);
    const auto search = machine_code_ ? pcre2_jit_match : pcre2_match;
    return search(code_.get(), Units(text), text.size(), first, 0, match_.get(), context_.get());
}

// Matches by the interpreter, which looks at the clock by itself.
bool Regex::Engine::Watch(std::string_view text) {
    int result = 0;
    PCRE2_SIZE offset = 0;
    if (!watched_) watched_ = CompiledWith(PCRE2_AUTO_CALLOUT, result, offset);
    if (!watched_) GiveUp(MessageOf(result));
    pcre2_set_match_limit(context_.get(), kMatchLimit);
    pcre2_set_offset_limit(context_.get(), PCRE2_UNSET);
    deadline_.Start(steady_clock::now());
    result = pcre2_match(watched_.get(), Units(text), text.size(), 0, 0, match_.get(), context_.get());
    if (result == PCRE2_ERROR_NOMATCH) return false;
    if (result == PCRE2_ERROR_CALLOUT) GiveUp(kTooLong);
    if (result < 0) GiveUp(MessageOf(result));
    return true;
}

Regex::Regex(std::string_view expression) : engine_(std::make_unique<Engine>(expression)) {}

Regex::~Regex() = default;
Regex::Regex(Regex&&) noexcept = default;
Regex& Regex::operator=(Regex&&) noexcept = default;

bool Regex::Matches(std::string_view text) const {
    return engine_->Matches(text);
}

}  // namespace zorvel
