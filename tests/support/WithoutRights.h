#pragma once

#include <sys/fsuid.h>
#include <sys/types.h>

namespace test_support {

/// Lets the calling thread use the file system as a user without rights, even as an administrator.
class WithoutRights {
 public:
  WithoutRights() : before_(::setfsuid(kNobody)) {}
  WithoutRights(const WithoutRights&) = delete;
  WithoutRights& operator=(const WithoutRights&) = delete;
  ~WithoutRights() { ::setfsuid(static_cast<uid_t>(before_)); }

 private:
  static constexpr uid_t kNobody = 65534;

  int before_;
};

}  // namespace test_support
