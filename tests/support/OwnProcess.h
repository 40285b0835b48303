#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace test_support {

/// Throws unless `success`, so that no test passes because its setup failed.
void require(bool success);

/// Runs `action` in its own process, with the rights of `user`, or with unchanged rights for 0.
/// Returns the text that `action` returns.
std::string inProcessOf(uid_t user, const std::function<std::string()>& action);

}  // namespace test_support
