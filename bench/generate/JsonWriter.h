#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace bench::generate {

/// Takes the pieces of a text, in order.
using TextSink = std::function<void(std::string_view)>;

/// Writes the punctuation of JSON, compact or indented, and hands the text on in large pieces.
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

  /// The key of the next value. `key` stands between the quotes as it is; so does string()'s text.
  void key(std::string_view key);
  void string(std::string_view text);
  void number(std::uint64_t number);
  void boolean(bool truth);

  /// A member whose value is a string.
  void member(std::string_view name, std::string_view text) {
    key(name);
    string(text);
  }

  /// A member whose value is a number.
  void member(std::string_view name, std::uint64_t value) {
    key(name);
    number(value);
  }

  /// Hands on what is left. The text ends with its last bracket: no line feed follows.
  void finish();

 private:
  void open(char bracket);
  void close(char bracket);
  void separate();
  void newLine();

  TextSink sink_;
  std::size_t indent_;
  std::size_t depth_ = 0;
  bool first_ = true;      // nothing stands before this in the innermost container
  bool afterKey_ = false;  // the next value follows its colon
  std::string text_;
};

}  // namespace bench::generate
