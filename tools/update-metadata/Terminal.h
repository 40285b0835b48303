#pragma once

#include <cstddef>

namespace update_metadata_tool {

/// Tells whether standard output is a terminal that shows colours, and the user has not declined
/// them by setting NO_COLOR to anything but the empty text.
bool isOutputColoured();

/// Tells whether standard output is a terminal.
bool isOutputTerminal();

/// Tells whether standard error is a terminal, on which a line can be written anew.
bool isErrorTerminal();

/// The number of columns that lines on standard output should keep to.
///
/// It is that of the environment variable COLUMNS, if it is a number; else that of the terminal
/// that standard output leads to; else 80. Never below 20.
std::size_t outputColumns();

}  // namespace update_metadata_tool
