#pragma once

namespace test_support {

inline int signOf(int number) {
  return (number > 0) - (number < 0);
}

}  // namespace test_support
