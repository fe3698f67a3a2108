#include "database/key_allocator.h"

#include <array>
#include <cstdint>
#include <optional>

#include "platform/error.h"
#include "shell/formats.h"

namespace zorvel {

KeyAllocator::KeyAllocator(const Database& dataset)
    : read_(dataset.Prepare("SELECT [Value] FROM Zorvel_Settings WHERE Setting='NextAppUniqueRef'")),
      write_(dataset.Prepare("UPDATE Zorvel_Settings SET [Value]=?1 WHERE Setting='NextAppUniqueRef'")) {}

std::string KeyAllocator::Next() {
    const std::optional<std::string> last = read_.FirstField({});
    if (!last) throw Error(errors::kStore, "Zorvel_Settings has no row 'NextAppUniqueRef'");
    const std::array<std::string, 1> key{std::to_string(std::int64_t{WholeValue(*last)} + 1)};
    write_.Execute(key);
    return key[0];
}

}  // namespace zorvel
