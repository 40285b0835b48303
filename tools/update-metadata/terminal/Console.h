#pragma once

#include <cstddef>
#include <optional>

namespace update_metadata_tool::terminal {

/// The standard streams of the process.
enum class Stream { kInput, kOutput, kError };

/// Returns whether a stream is a terminal.
bool isTerminal(Stream stream);

/// Returns whether an output stream is a terminal that can obey escape sequences, after asking it
/// to do so where terminals must be asked.
bool canObeyEscapes(Stream stream);

/// Returns the columns of the terminal that a stream leads to; nothing if they are unknown.
std::optional<std::size_t> columnsOf(Stream stream);

/// The keys that end the input from a terminal.
extern const char* const kEndOfInputKeys;

}  // namespace update_metadata_tool::terminal
