#pragma once

namespace update_metadata_tool::program {

/// Runs the program with these arguments on the standard streams, and returns its exit status.
/// Every failure is reported on standard error.
int run(int argc, const char* const* argv);

}  // namespace update_metadata_tool::program
