#pragma once

#include <cstddef>
#include <cstdint>

// What a fuzzer offers to the engine that drives it, and what the engine offers to the fuzzer. The
// engine is that of the compiler, or Replay.cpp.

/// Tries one input. Returns 0, or -1 for an input that is not worth keeping; ends the program if
/// anything is wrong.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Changes the input in `data`, of at most `maxSize` bytes, in a way that suits the fuzzer, and
/// returns its new size. The same for the same seed. Only some fuzzers have it.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed);

/// Makes a third input out of two and returns its size, at most `maxSize`. As above.
extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                                 const std::uint8_t* second, std::size_t secondSize,
                                                 std::uint8_t* out, std::size_t maxSize,
                                                 unsigned seed);

/// The engine's own change of single bytes.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);
