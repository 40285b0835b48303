#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "mf/zero/ElementClass.h"

namespace mf::zero {

/// An ordered list of plain values in an element. Nothing is ever removed or reordered.
template <class T>
class PrimitiveSequence {
 public:
  explicit PrimitiveSequence(Duplicates duplicates) noexcept : duplicates_(duplicates) {}

  PrimitiveSequence(const PrimitiveSequence&) = delete;
  PrimitiveSequence& operator=(const PrimitiveSequence&) = delete;

  /// Puts a copy of `value` at the end; nothing happens if the sequence refuses duplicates and
  /// already holds an equal value, for which it is searched.
  ///
  /// If it throws, nothing has changed. Constant time, amortised, where duplicates are admitted.
  void push_back(const T& value) {
    if (duplicates_ == Duplicates::kRefused &&
        std::find(values_.begin(), values_.end(), value) != values_.end()) {
      return;
    }
    values_.push_back(value);
  }

  /// Makes room for `count` values in all. Whoever asks for a little more each time still pays
  /// constant time, amortised, for a value.
  void reserve(std::size_t count) {
    if (count > values_.capacity()) {
      values_.reserve(std::max(count, values_.capacity() * 2));
    }
  }

  std::size_t size() const noexcept { return values_.size(); }
  bool empty() const noexcept { return values_.empty(); }

  /// The value at `index`, from 0. \pre `index` is less than size().
  const T& operator[](std::size_t index) const { return values_[index]; }

  auto begin() const noexcept { return values_.begin(); }
  auto end() const noexcept { return values_.end(); }

 private:
  std::vector<T> values_;
  Duplicates duplicates_;
};

}  // namespace mf::zero
