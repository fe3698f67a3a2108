#include "platform/regex.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <array>

#include "platform/error.h"

namespace zorvel {
namespace {

// Enough for every sane expression over a stream of megabytes, and spent within a second by one that
// backtracks for ever.
constexpr std::uint32_t kMatchLimit = 10'000'000;
constexpr std::uint32_t kDepthLimit = 100'000;

std::string MessageOf(int code) {
    std::array<PCRE2_UCHAR, 256> buffer{};
    pcre2_get_error_message(code, buffer.data(), buffer.size());
    return reinterpret_cast<const char*>(buffer.data());
}

template <auto Free>
struct Freer {
    template <typename T>
    void operator()(T* object) const {
        Free(object);
    }
};

}  // namespace

struct Regex::Engine {
    std::unique_ptr<pcre2_code, Freer<pcre2_code_free>> code;
    std::unique_ptr<pcre2_match_context, Freer<pcre2_match_context_free>> limits;
    std::unique_ptr<pcre2_match_data, Freer<pcre2_match_data_free>> match;
};

Regex::Regex(std::string_view pattern) : engine_(std::make_unique<Engine>()) {
    int error = 0;
    PCRE2_SIZE offset = 0;
    engine_->code.reset(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(pattern.data()), pattern.size(),
                                      PCRE2_CASELESS | PCRE2_NEVER_UTF, &error, &offset, nullptr));
    if (!engine_->code) {
        throw Error(errors::kInvalidCall)
            .With("character " + std::to_string(offset + 1) + " of the expression: " + MessageOf(error));
    }
    pcre2_jit_compile(engine_->code.get(), PCRE2_JIT_COMPLETE);  // without it the interpreter does the work
    engine_->limits.reset(pcre2_match_context_create(nullptr));
    engine_->match.reset(pcre2_match_data_create(1, nullptr));
    if (!engine_->limits || !engine_->match) throw Error(errors::kOutOfMemory);
    pcre2_set_match_limit(engine_->limits.get(), kMatchLimit);
    pcre2_set_depth_limit(engine_->limits.get(), kDepthLimit);
}

Regex::~Regex() = default;
Regex::Regex(Regex&&) noexcept = default;
Regex& Regex::operator=(Regex&&) noexcept = default;

bool Regex::Matches(std::string_view text) const {
    const int result = pcre2_match(engine_->code.get(), reinterpret_cast<PCRE2_SPTR>(text.data()),
                                   text.size(), 0, 0, engine_->match.get(), engine_->limits.get());
    if (result == PCRE2_ERROR_NOMATCH) return false;
    if (result < 0) throw Error(errors::kInvalidCall).With(MessageOf(result));
    return true;
}

}  // namespace zorvel
