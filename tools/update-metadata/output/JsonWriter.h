#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace update_metadata_tool::output {

/// Writes JSON as one line of UTF-8, piece by piece, so that memory does not grow with its size.
///
/// The caller must make valid JSON: a member's name before its value, an end for each beginning.
/// Characters that toVisible() escapes are written as \uXXXX. Malformed UTF-8 or UTF-16 becomes
/// U+FFFD.
///
/// Holds no memory between calls. Exceptions of the stream, and std::bad_alloc, pass through.
class JsonWriter {
 public:
  /// \param out  must outlive the writer
  explicit JsonWriter(std::ostream& out) : out_(out) {}

  JsonWriter& beginObject() { return begin('{'); }
  JsonWriter& endObject() { return end('}'); }
  JsonWriter& beginArray() { return begin('['); }
  JsonWriter& endArray() { return end(']'); }

  /// Begins a member; its value must follow.
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

  /// The value, or null if there is none.
  template <class Value>
  JsonWriter& value(const std::optional<Value>& value) {
    return value ? this->value(*value) : this->value(nullptr);
  }

  /// A member with its value.
  template <class Name, class Value>
  JsonWriter& member(const Name& name, const Value& value) {
    return this->name(name).value(value);
  }

  /// An array of `items`, each written by `writeItem(item, *this)`.
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
  bool isFirst_ = true;  ///< the next value or name needs no comma before it
};

/// Writes a text as in JSON, with the same escapes, but without quotation marks around it, and with
/// those inside it as they are.
void writeUnquoted(std::string_view text, std::ostream& out);
void writeUnquoted(std::u16string_view text, std::ostream& out);

}  // namespace update_metadata_tool::output
