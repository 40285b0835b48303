#pragma once

#include <cstddef>
#include <limits>
#include <optional>

namespace update_metadata_tool::terminal {

/// Returns whether standard output is a terminal that shows colors and the environment variable
/// NO_COLOR is unset or empty.
bool isOutputColored();

/// Returns whether standard output is a terminal.
bool isOutputTerminal();

/// Returns whether standard input is a terminal, where the user has to type.
bool isInputTerminal();

/// A width that no line exceeds.
constexpr std::size_t kUnlimitedColumns = std::numeric_limits<std::size_t>::max();

/// The number of columns that lines on standard output must fit into, at least 20.
///
/// It is the environment variable COLUMNS, if that is a number; otherwise the width of the terminal
/// that standard output leads to, or 80 if that is unknown. Without a terminal there is no limit,
/// so that a file or another program gets whole lines.
std::size_t outputColumns();

/// The columns of the terminal that standard error leads to, 80 if unknown. Nothing if standard
/// error does not lead to a terminal that can rewrite a line.
///
/// Ignores COLUMNS: a line wider than the terminal would wrap and could not be removed.
std::optional<std::size_t> errorTerminalColumns();

}  // namespace update_metadata_tool::terminal
