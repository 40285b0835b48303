#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace update_metadata_tool::output {

/// Writes JSON in one line, in UTF-8, piece by piece, so that memory does not grow with its size.
///
/// The caller writes what JSON allows: a member's name before its value, an end for each beginning.
/// A character that a terminal must not be sent, as toVisible() has it, is written as \uXXXX, which
/// means the same. What is not UTF-8 or UTF-16 becomes U+FFFD.
///
/// Holds no memory between calls. What the stream throws, and std::bad_alloc, pass through.
class JsonWriter {
 public:
  /// \param out  has to outlive this
  explicit JsonWriter(std::ostream& out) : out_(out) {}

  JsonWriter& beginObject() { return begin('{'); }
  JsonWriter& endObject() { return end('}'); }
  JsonWriter& beginArray() { return begin('['); }
  JsonWriter& endArray() { return end(']'); }

  /// Begins a member; its value comes next.
  JsonWriter& name(std::string_view name);
  JsonWriter& name(std::u16string_view name);

  JsonWriter& value(std::string_view text);
  JsonWriter& value(std::u16string_view text);
  JsonWriter& value(std::nullptr_t) { return plain("null"); }

  /// A number, true or false.
  template <class Number, std::enable_if_t<std::is_integral_v<Number>, int> = 0>
  JsonWriter& value(Number number) {
    if constexpr (std::is_same_v<Number, bool>) {
      return plain(number ? "true" : "false");
    } else {
      return plain(std::to_string(number));
    }
  }

  /// The value, null without one.
  template <class Value>
  JsonWriter& value(const std::optional<Value>& value) {
    return value ? this->value(*value) : this->value(nullptr);
  }

  /// A member with its value.
  template <class Name, class Value>
  JsonWriter& member(const Name& name, const Value& value) {
    return this->name(name).value(value);
  }

  /// An array with one value for each of `items`, which `writeItem(item, *this)` writes.
  template <class Items, class WriteItem>
  JsonWriter& array(const Items& items, WriteItem writeItem) {
    beginArray();
    for (const auto& item : items) {
      writeItem(item, *this);
    }
    return endArray();
  }

  /// An array of values.
  template <class Items>
  JsonWriter& array(const Items& items) {
    return array(items, [](const auto& item, JsonWriter& json) { json.value(item); });
  }

 private:
  JsonWriter& begin(char bracket);
  JsonWriter& end(char bracket);
  JsonWriter& plain(std::string_view json);
  void separate();
  void writeString(std::string_view text);

  std::ostream& out_;
  bool isFirst_ = true;  ///< whether the next value or name needs no comma before it
};

}  // namespace update_metadata_tool::output
