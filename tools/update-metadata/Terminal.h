#pragma once

namespace update_metadata_tool {

/// Tells whether standard output is a terminal that shows colours, and the user has not declined
/// them by setting NO_COLOR to anything but the empty text.
bool isOutputColoured();

/// Tells whether standard error is a terminal, on which a line can be written anew.
bool isErrorTerminal();

}  // namespace update_metadata_tool
