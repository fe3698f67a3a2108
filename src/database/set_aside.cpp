#include "database/set_aside.h"

#include "database/import_record.h"
#include "platform/store_files.h"

namespace zorvel {

std::string SetAsidePath(std::string_view path) {
    return std::string(path) += kSetAsideEnd;
}

void SetAside(const Files& files, std::string_view path) {
    const std::string aside = SetAsidePath(path);
    if (files.Exists(aside) && ImportStateOf(files, path) != ImportState::kCompleted) {
        RemoveDatabase(files, path);
        return;
    }
    RequireUnused(files, path);
    ReplaceDatabase(files, path, aside);
}

void PutBack(const Files& files, std::string_view path) {
    if (files.Exists(path)) RequireUnused(files, path);
    RequireUnused(files, SetAsidePath(path));
    ReplaceDatabase(files, SetAsidePath(path), path);
}

void RemoveSetAside(const Files& files, std::string_view path) {
    RemoveUnfinished(files, SetAsidePath(path));
}

}  // namespace zorvel
