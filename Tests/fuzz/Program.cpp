#include "fuzz/Targets.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

// One program of this file is built for each function of Targets.h, named by the build.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input{reinterpret_cast<const char*>(data), size};
    const std::string broken = orvu::fuzz::ORVU_FUZZ_TARGET(input);
    if (broken.empty()) return 0;
    std::fprintf(stderr, "Broken rule: %s\n", broken.c_str());
    std::abort();
}
