#pragma once

#include <cstddef>
#include <limits>
#include <optional>

namespace update_metadata_tool::terminal {

/// Tells whether standard output is a terminal that shows colours, and the user has not declined
/// them by setting NO_COLOR to anything but the empty text.
bool isOutputColoured();

/// Tells whether standard output is a terminal.
bool isOutputTerminal();

/// Tells whether standard input is a terminal, at which somebody has to type.
bool isInputTerminal();

/// More columns than any line has.
constexpr std::size_t kUnlimitedColumns = std::numeric_limits<std::size_t>::max();

/// The number of columns that lines on standard output should keep to. Never below 20.
///
/// It is that of the environment variable COLUMNS, if it is a number; else that of the terminal
/// that standard output leads to, or 80 if that does not tell. Without a terminal there is no
/// limit, so that a file or another program gets whole lines.
std::size_t outputColumns();

/// The columns of the terminal that standard error leads to, 80 if it does not tell; nothing if
/// standard error leads to no terminal on which a line can be written anew.
///
/// COLUMNS is not asked: a line that is wider than the terminal goes on in rows that stay.
std::optional<std::size_t> errorTerminalColumns();

}  // namespace update_metadata_tool::terminal
