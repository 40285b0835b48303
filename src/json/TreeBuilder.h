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
/// order, into memory of the tree that the result keeps. So there is no half-built container, no
/// recursion and no allocation for a single value. Strings without escapes refer into the text,
/// which the tree takes over.
class TreeBuilder {
 public:
  /// A finished value that has been taken off the stack.
  using Kept = detail::Rep;

  /// Takes the text over: what is read must be read from text().
  explicit TreeBuilder(std::string text);
  TreeBuilder(const TreeBuilder&) = delete;
  TreeBuilder& operator=(const TreeBuilder&) = delete;
  ~TreeBuilder();

  /// The text, which stays where it is as long as the tree.
  std::string_view text() const noexcept;

  /// Is told where a key begins in the text, which is of no use here.
  void beginKey(const char* /*position*/) const noexcept {}

  /// Is told where a value begins in the text, which is of no use here.
  void beginValue(const char* /*position*/) const noexcept {}

  /// Is told where a key or a value ends in the text, which is of no use here.
  void end(const char* /*position*/) const noexcept {}

  /// Adds the value null. This and every addition: amortised constant time.
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

  /// Adds a string, or the key of the next member, whose bytes lie in text() or in the tree.
  void addStringOfText(std::string_view string) {
    detail::Rep::Content content{};
    content.characters = string.data();
    push(traits<std::string>::index, string.size(), content);
  }

  /// Adds a string, or the key of the next member, whose bytes do not lie in text(): as a copy, or,
  /// if it is long, as it is.
  void addString(std::string&& string);

  /// Opens an array or object; what is added next goes into it. An object takes keys and values in
  /// turn. `note` is kept with it for whoever opened it.
  void open(std::uint8_t note = 0) {
    const std::size_t mark = stack_.size();
    detail::Rep::Content outer{};
    outer.unsignedInteger = open_;
    push(traits<Undefined>::index, note, outer);
    open_ = mark;
  }

  /// The note of the innermost open container. \pre One is open.
  std::uint8_t noteOfInnermost() const noexcept {
    return static_cast<std::uint8_t>(stack_[open_].size());
  }

  /// Closes the innermost container, which open() opened as an array.
  void closeArray();

  /// Closes the innermost container, which open() opened as an object: orders the members by the
  /// bytes of their keys and keeps the first of equal keys. n log n comparisons at most; linear for
  /// members that come in order.
  void closeObject();

  /// The place of the value added last, for replace(). It stays valid until its container is
  /// closed.
  std::size_t lastPlace() const noexcept { return stack_.size() - 1; }

  /// The value added last.
  Kept last() const noexcept { return stack_.back(); }

  /// The name of the alternative of the value added last.
  const char* lastTypeName() const noexcept { return detail::typeNameOf(stack_.back().index()); }

  /// Tells whether the value added last is a string.
  bool lastIsString() const noexcept { return stack_.back().index() == traits<std::string>::index; }

  /// The bytes of the value added last. \pre It is a string.
  std::string_view lastString() const noexcept {
    return {stack_.back().content.characters, stack_.back().size()};
  }

  /// Takes the value added last off the stack again.
  Kept takeLast() noexcept {
    const Kept kept = stack_.back();
    stack_.truncate(stack_.size() - 1);
    return kept;
  }

  /// Puts a value of this builder in the place of another.
  void replace(std::size_t place, const Kept& kept) noexcept { stack_[place] = kept; }

  /// Returns the one value that was added at the top. Ends the builder's use.
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
