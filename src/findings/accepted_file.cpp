#include "findings/accepted_file.h"

#include <algorithm>
#include <string>

#include "platform/error.h"
#include "platform/output_file.h"

namespace zorvel {
namespace {

std::string PathOf(const Files& files) {
    return files.Path(kAcceptedFile);
}

std::string TextOf(const Files& files) {
    const std::string path = PathOf(files);
    return files.Exists(path) ? files.Read(path) : std::string();
}

void Write(const Files& files, const std::string& text) {
    files.WriteInPlace(PathOf(files), [&text](OutputFile& file) { file.Write(text); });
}

}  // namespace

AcceptedFindings ReadAccepted(const Files& files) {
    return ParseAccepted(TextOf(files), PathOf(files));
}

void AddAccepted(const Files& files, const AcceptedFinding& accepted, const Date& today) {
    const std::string text = TextOf(files);
    for (const AcceptedFinding& other : ParseAccepted(text, PathOf(files))) {
        if (!other.IsLike(accepted) || other.IsExpired(today)) continue;
        throw Error(errors::kFileExists, "It is accepted already")
            .With(PathOf(files) + ", line " + std::to_string(other.line) + ": it is accepted already");
    }
    Write(files, WithAccepted(text, accepted, PathOf(files)));
}

void WithdrawAccepted(const Files& files, const AcceptedFinding& accepted) {
    const std::string text = TextOf(files);
    const AcceptedFindings all = ParseAccepted(text, PathOf(files));
    const auto found = std::find_if(all.begin(), all.end(), [&](const AcceptedFinding& other) {
        return other.IsLike(accepted) && other.until == accepted.until && other.reason == accepted.reason;
    });
    if (found == all.end())
        throw Error(errors::kFileNotFound, "It is no longer in the list")
            .With(PathOf(files) + ": there is no such entry any more");
    Write(files, WithoutAccepted(text, found->line, PathOf(files)));
}

}  // namespace zorvel
