#include "browser/cache_marks.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "browser/tree_cache.h"
#include "platform/error.h"
#include "platform/hex.h"
#include "shell/text_records.h"

namespace zorvel {
namespace {

constexpr std::string_view kHeading = "Zorvel Cache Mark - Do not modify!";
constexpr int kHeadLines = 2;

struct StateWord {
    CacheState state;
    std::string_view word;
};
constexpr std::array<StateWord, 3> kStateWords = {{{CacheState::kWhole, "whole"},
                                                   {CacheState::kInterrupted, "interrupted"},
                                                   {CacheState::kUnreadable, "unreadable"}}};

std::string MarkPath(const Files& files, std::string_view tree) {
    return files.Path("TempData\\" + std::string(tree) + ".CacheMark");
}

// A mark is a line: both digests, the state's word, and the object, with TABs between them.
std::optional<CacheMark> MarkOf(std::string_view line) {
    std::array<std::string, 4> fields;
    for (std::string& field : fields) {
        const std::size_t end = line.find('\t');
        field = line.substr(0, end);
        line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
    }
    for (const StateWord& known : kStateWords) {
        if (known.word == fields[2]) return CacheMark{{fields[0], fields[1]}, known.state, fields[3]};
    }
    return std::nullopt;
}

std::string DigestOf(const Files& files, const std::string& path) {
    CacheDigest digest;
    InputFile file = files.Open(path);
    for (std::string_view bytes = file.Available(); !bytes.empty(); bytes = file.Available()) {
        digest.Add(bytes);
        file.Skip(bytes.size());
    }
    return digest.Text();
}

}  // namespace

struct CacheDigest::State {
    XXH3_state_t hash;
};

CacheDigest::CacheDigest() : state_(std::make_unique<State>()), head_lines_(kHeadLines) {
    XXH3_64bits_reset(&state_->hash);
}

CacheDigest::~CacheDigest() = default;

void CacheDigest::Add(std::string_view bytes) {
    for (; head_lines_ > 0 && !bytes.empty(); --head_lines_) {
        const std::size_t end = bytes.find('\n');
        if (end == std::string_view::npos) return;
        bytes.remove_prefix(end + 1);
    }
    XXH3_64bits_update(&state_->hash, bytes.data(), bytes.size());
}

std::string CacheDigest::Text() const {
    constexpr int kBytes = 8;
    const std::uint64_t hash = XXH3_64bits_digest(&state_->hash);
    std::string text;
    for (int byte = kBytes; byte-- > 0;)
        AppendHex(text, static_cast<unsigned char>(hash >> (8 * byte)));
    return text;
}

std::vector<CacheMark> ReadCacheMarks(InputFile file) {
    std::vector<CacheMark> marks;
    LineReader reader(std::move(file), LineEnd::kAny);
    for (std::string line; reader.Next(line);) {
        if (std::optional<CacheMark> mark = MarkOf(line)) marks.push_back(*std::move(mark));
    }
    return marks;
}

std::string CacheMarkLine(const CacheMark& mark) {
    const auto* const word = std::find_if(kStateWords.begin(), kStateWords.end(),
                                          [&](const StateWord& known) { return known.state == mark.state; });
    return mark.digests.tree + '\t' + mark.digests.applications + '\t' + std::string(word->word) + '\t' +
           mark.object + "\r\n";
}

CacheMarks::CacheMarks(const Files& files, std::string_view tree) : files_(files), tree_(tree) {
    const std::string path = MarkPath(files, tree);
    if (files.Exists(path)) marks_ = ReadCacheMarks(files.Open(path));
}

CacheState CacheMarks::StateOf(const CacheDigests& digests) const {
    bool known = false;
    for (const CacheMark& mark : marks_) {
        if (mark.digests == digests) return mark.state;
        known =
            known || mark.digests.tree == digests.tree || mark.digests.applications == digests.applications;
    }
    return known ? CacheState::kMixed : CacheState::kUnknown;
}

std::string CacheMarks::UnreadableObject() const {
    const auto unreadable = [](const CacheMark& mark) { return mark.state == CacheState::kUnreadable; };
    if (std::none_of(marks_.begin(), marks_.end(), unreadable)) return {};
    const std::string tree_path = TreeCachePath(files_, tree_);
    const std::string app_path = AppCachePath(files_, tree_);
    if (!files_.Exists(tree_path) || !files_.Exists(app_path)) return {};
    const CacheDigests digests{DigestOf(files_, tree_path), DigestOf(files_, app_path)};
    for (const CacheMark& mark : marks_) {
        if (unreadable(mark) && mark.digests == digests) return mark.object;
    }
    return {};
}

void CacheMarks::Announce(const CacheMark& next) {
    std::erase_if(marks_, [&](const CacheMark& mark) { return mark.digests == next.digests; });
    marks_.push_back(next);
    Write();
}

void CacheMarks::Settle() {
    marks_.erase(marks_.begin(), marks_.end() - 1);
    Write();
}

void CacheMarks::Write() const {
    files_.WriteInPlace(MarkPath(files_, tree_), [this](OutputFile& file) {
        file.Write(std::string(kHeading) + "\r\n");
        for (const CacheMark& mark : marks_)
            file.Write(CacheMarkLine(mark));
    });
}

}  // namespace zorvel
