#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace bench::generate {

/// Receives the pieces of a text, in order.
using TextSink = std::function<void(std::string_view)>;

/// Writes the punctuation of JSON, compact or indented, and passes the text on in large pieces.
class JsonWriter {
 public:
  /// \param indent  blanks per level; 0 writes the compact form
  JsonWriter(TextSink sink, std::size_t indent);

  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;

  void beginObject() { open('{'); }
  void endObject() { close('}'); }
  void beginArray() { open('['); }
  void endArray() { close(']'); }

  /// Writes the key of the next value. `key` is written between the quotes verbatim; so is
  /// string()'s text.
  void key(std::string_view key);
  void string(std::string_view text);
  void number(std::uint64_t number);
  void boolean(bool truth);

  /// Writes a member whose value is a string.
  void member(std::string_view name, std::string_view text) {
    key(name);
    string(text);
  }

  /// Writes a member whose value is a number.
  void member(std::string_view name, std::uint64_t value) {
    key(name);
    number(value);
  }

  /// Passes on the rest. The text ends with its last bracket; no line feed follows.
  void finish();

 private:
  void open(char bracket);
  void close(char bracket);
  void separate();
  void newLine();

  TextSink sink_;
  std::size_t indent_;
  std::size_t depth_ = 0;
  bool first_ = true;      // the innermost container is still empty
  bool afterKey_ = false;  // a key was written, its value is next
  std::string text_;
};

}  // namespace bench::generate
