#include "database/application_keys.h"

#include <optional>

#include "database/application_name.h"
#include "database/sql_text.h"
#include "shell/text_records.h"

namespace zorvel {
namespace {

constexpr std::size_t kNameLength = 100;

}  // namespace

std::array<std::string, 2> ApplicationRow(const std::string& full_name) {
    const ApplicationName name = SplitApp(OneFieldLine(full_name));
    return {std::string(CutEscaped(name.application, kNameLength)),
            std::string(CutEscaped(name.container, kNameLength))};
}

ApplicationKeys::ApplicationKeys(const Database& dataset)
    : find_(dataset.Prepare("SELECT AppUniqueRef FROM Zorvel_Apps WHERE AppName=?1 AND AppOU=?2")) {}

const std::string* ApplicationKeys::Find(const std::string& full_name) {
    if (!key_.empty() && full_name == full_name_) return &key_;
    std::optional<std::string> key = find_.FirstField(ApplicationRow(full_name));
    if (!key) return nullptr;
    key_ = std::move(*key);
    full_name_ = full_name;
    return &key_;
}

}  // namespace zorvel
