#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <exception>
#include <ios>
#include <new>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "support/FailingAllocation.h"

namespace test_support {

/// The outcome of an action. Storing it allocates nothing, because there may be no memory left.
class Outcome {
 public:
  /// The action succeeded.
  Outcome() noexcept = default;

  explicit Outcome(const std::exception& failure) noexcept
      : type_(&typeid(failure)),
        isStreamFailure_(dynamic_cast<const std::ios_base::failure*>(&failure) != nullptr) {
    std::strncpy(text_.data(), failure.what(), text_.size() - 1);
  }

  bool isWell() const noexcept { return type_ == nullptr; }
  bool isExhaustion() const noexcept {
    return type_ != nullptr && *type_ == typeid(std::bad_alloc);
  }
  bool isStreamFailure() const noexcept { return isStreamFailure_; }

  /// The exact type, ": " and the text, as failureOf() returns them; "nothing" if the action
  /// succeeded.
  std::string text() const {
    if (isWell()) {
      return "nothing";
    }
    return typeName() + ": " + text_.data();
  }

 private:
  std::string typeName() const {
    if (*type_ == typeid(std::bad_alloc)) {
      return "std::bad_alloc";
    }
    if (*type_ == typeid(std::runtime_error)) {
      return "std::runtime_error";
    }
    if (*type_ == typeid(std::out_of_range)) {
      return "std::out_of_range";
    }
    return isStreamFailure_ ? "std::ios_base::failure" : type_->name();
  }

  const std::type_info* type_ = nullptr;
  bool isStreamFailure_ = false;
  std::array<char, 256> text_{};
};

/// Runs an action that throws, if anything, a std::exception.
template <class Action>
Outcome outcomeOf(Action&& action) {
  try {
    action();
  } catch (const std::exception& failure) {
    return Outcome(failure);
  }
  return {};
}

/// How memory runs out.
enum class Shortage {
  kOnce,        ///< one allocation fails, later ones succeed
  kFromThenOn,  ///< an allocation fails, and so does every later one
};

constexpr Shortage kShortages[] = {Shortage::kOnce, Shortage::kFromThenOn};

struct Trial {
  Outcome outcome;
  bool reached;     ///< whether the failing allocation was attempted
  std::size_t nth;  ///< the number of that allocation, from 0
};

/// Runs an action during which allocation number `nth`, from 0, fails.
template <class Action>
Trial failAt(std::size_t nth, Shortage shortage, Action&& action) {
  Trial trial{{}, false, nth};
  if (shortage == Shortage::kOnce) {
    const FailingAllocation failing(nth);
    trial.outcome = outcomeOf(action);
    trial.reached = failing.reached();
  } else {
    const MemoryLimit limit(nth);
    trial.outcome = outcomeOf(action);
    trial.reached = limit.reached();
  }
  return trial;
}

/// Runs an action with its first allocation failing, then with its second, and so on, first alone
/// and then with every later one, until it makes no allocation that is to fail. Calls `check` after
/// each run; stops if that fails fatally. Returns how many allocations have failed.
template <class Action, class Check>
std::size_t tryWithoutMemory(const Action& action, const Check& check) {
  std::size_t failed = 0;
  for (const Shortage shortage : kShortages) {
    for (std::size_t nth = 0;; ++nth) {
      const Trial trial = failAt(nth, shortage, action);
      check(trial);
      if (!trial.reached || ::testing::Test::HasFatalFailure()) {
        break;
      }
      ++failed;
    }
  }
  return failed;
}

}  // namespace test_support
