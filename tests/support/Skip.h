#pragma once

namespace test_support {

/// Ends the test, even from a function that it calls, as skipped.
[[noreturn]] void skip(const char* reason);

}  // namespace test_support
