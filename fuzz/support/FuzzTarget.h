#pragma once

#include <cstddef>
#include <cstdint>

//! What a fuzz target is: one run over one input. Always 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

//! Ends the program as a finding, and says which requirement failed.
[[noreturn]] void fail(const char* requirement, const char* file, int line);

#define FUZZ_REQUIRE(condition)                                                                              \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            fail(#condition, __FILE__, __LINE__);                                                            \
    } while (false)
