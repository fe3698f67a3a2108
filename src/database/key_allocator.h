// Hands out the keys of a dataset's applications. The dataset keeps the last one in its settings.
#pragma once

#include <string>

#include "platform/store.h"

namespace zorvel {

class KeyAllocator {
  public:
    explicit KeyAllocator(const Database& dataset);

    // The next key, as decimal text; the settings hold it from then on. Raises 0x80004005 when there is no
    // setting or it cannot be written, error 6 when its text is outside 32 bits.
    std::string Next();

  private:
    Command read_;
    Command write_;
};

}  // namespace zorvel
