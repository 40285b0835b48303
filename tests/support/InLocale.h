#pragma once

#include <optional>
#include <stdexcept>

#include <gtest/gtest.h>

#include "support/Locales.h"

namespace test_support {

/// A test that runs under the locale that is its parameter. Skipped where the locale is missing.
class InLocale : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    try {
      locale_.emplace(GetParam());
    } catch (const std::runtime_error& failure) {
      GTEST_SKIP() << failure.what();
    }
  }

 private:
  std::optional<LocaleScope> locale_;
};

}  // namespace test_support
