#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/json/Value.h"
#include "json/MemberOrder.h"
#include "json/SlotStack.h"

namespace foundation::json {

namespace detail {

class Tree;

}  // namespace detail

/// Builds the value of a text, bottom-up, while the text is read.
///
/// Finished values wait on a stack until the container around them is closed; then they move, in
/// order, into memory of the tree that the result keeps. So there are no half-built containers, no
/// recursion and no allocation for a single value. Strings without escapes refer to the text, which
/// the tree owns.
class TreeBuilder {
 public:
  /// A finished value that was taken off the stack.
  using Kept = detail::Rep;

  /// Takes ownership of the text; the text to read is then text().
  explicit TreeBuilder(std::string text);
  TreeBuilder(const TreeBuilder&) = delete;
  TreeBuilder& operator=(const TreeBuilder&) = delete;
  ~TreeBuilder();

  /// The text, which stays at its address as long as the tree lives.
  std::string_view text() const noexcept;

  /// The position of a key, which this sink does not need.
  void beginKey(const char* /*position*/) const noexcept {}

  /// The position of a value, which this sink does not need.
  void beginValue(const char* /*position*/) const noexcept {}

  /// The end of a key or a value, which this sink does not need.
  void end(const char* /*position*/) const noexcept {}

  /// Adds the value null. This and every addition: amortized constant time.
  /// \throws std::bad_alloc
  void addNull() { push(traits<std::nullptr_t>::index, 0, {}); }

  /// Adds a boolean.
  void addBoolean(bool boolean) {
    detail::Rep::Content content{};
    content.boolean = boolean;
    push(traits<bool>::index, 0, content);
  }

  /// Adds a plain number.
  void addNumber(double number) {
    detail::Rep::Content content{};
    content.number = number;
    push(traits<double>::index, 0, content);
  }

  /// Adds an element of a typed array of signed integers.
  void addInteger(std::int64_t integer) {
    detail::Rep::Content content{};
    content.signedInteger = integer;
    push(traits<std::int64_t>::index, 0, content);
  }

  /// Adds an element of a typed array of unsigned integers.
  void addInteger(std::uint64_t integer) {
    detail::Rep::Content content{};
    content.unsignedInteger = integer;
    push(traits<std::uint64_t>::index, 0, content);
  }

  /// Adds a string, or the key of the next member, whose bytes are in text() or in the tree.
  void addStringOfText(std::string_view string) {
    detail::Rep::Content content{};
    content.characters = string.data();
    push(traits<std::string>::index, string.size(), content);
  }

  /// Adds a string, or the key of the next member, whose bytes are not in text(). A short string is
  /// copied; a long one is moved.
  void addString(std::string&& string);

  /// Opens an array or object; the next values become its parts. An object receives keys and values
  /// alternately. `note` is stored with the container for the caller.
  void open(std::uint8_t note = 0) {
    const std::size_t mark = stack_.size();
    detail::Rep::Content outer{};
    outer.unsignedInteger = open_;
    push(traits<Undefined>::index, note, outer);
    open_ = mark;
  }

  /// The note of the innermost open container. \pre one is open
  std::uint8_t noteOfInnermost() const noexcept {
    return static_cast<std::uint8_t>(stack_[open_].size());
  }

  /// Closes the innermost container, which open() opened as an array.
  void closeArray();

  /// Closes the innermost container, which open() opened as an object: sorts the members by the
  /// bytes of their keys and keeps the first of equal keys. At most n log n comparisons; linear for
  /// members that are already in order.
  void closeObject();

  /// The place of the value added last, for replace(). It is valid until its container is closed.
  std::size_t lastPlace() const noexcept { return stack_.size() - 1; }

  /// The value added last.
  Kept last() const noexcept { return stack_.back(); }

  /// The name of the alternative of the value added last.
  const char* lastTypeName() const noexcept { return detail::typeNameOf(stack_.back().index()); }

  /// Whether the value added last is a string.
  bool lastIsString() const noexcept { return stack_.back().index() == traits<std::string>::index; }

  /// The bytes of the value added last. \pre it is a string
  std::string_view lastString() const noexcept {
    return {stack_.back().content.characters, stack_.back().size()};
  }

  /// Takes the value added last off the stack.
  Kept takeLast() noexcept {
    const Kept kept = stack_.back();
    stack_.truncate(stack_.size() - 1);
    return kept;
  }

  /// Replaces the value at `place` by a value of this builder.
  void replace(std::size_t place, const Kept& kept) noexcept { stack_[place] = kept; }

  /// Returns the one value that was added at the top. The builder must not be used afterwards.
  Value finish();

 private:
  void push(std::size_t index, std::size_t size, detail::Rep::Content content) {
    stack_.push({content, detail::Rep::tagOf(index, size, false)});
  }
  void closeWith(std::size_t index, std::size_t size, detail::Rep::Content content) noexcept;

  detail::Tree* tree_;
  detail::SlotStack stack_;
  detail::MemberOrder order_;
  std::size_t open_ =
      0;  // place of the innermost open container's mark, which holds the next outer
};

}  // namespace foundation::json
