#pragma once

#include <cstddef>
#include <cstdint>

//! What a target with a mutator of its own defines: changes an input in place and returns its new size.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maximumSize,
                                               unsigned int seed);

//! A change of some bytes, which knows nothing of the input; for such a mutator to call.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maximumSize);
