// The entry that libFuzzer calls.
#include <cstddef>
#include <cstdint>

#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zorvel::fuzz::TestOneInput({reinterpret_cast<const char*>(data), size});
    return 0;
}
