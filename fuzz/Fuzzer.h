#pragma once

#include <cstddef>
#include <cstdint>

// The interface between a fuzzer and the engine that drives it: the compiler's engine or
// Replay.cpp.

/// Tries one input. Returns 0, or -1 for an input that is not worth keeping; ends the program if
/// anything is wrong.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Mutates the input in `data`, of at most `maxSize` bytes, in a way that suits the fuzzer, and
/// returns its new size. Deterministic for a given seed. Only some fuzzers define it.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed);

/// Combines two inputs into a third and returns its size, at most `maxSize`. Otherwise as above.
extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                                 const std::uint8_t* second, std::size_t secondSize,
                                                 std::uint8_t* out, std::size_t maxSize,
                                                 unsigned seed);

/// The engine's own mutation of single bytes.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);
