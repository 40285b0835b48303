#include "generate/JsonWriter.h"

#include <utility>

namespace bench::generate {
namespace {

constexpr std::size_t kPieceBytes = std::size_t{1} << 20;

}  // namespace

JsonWriter::JsonWriter(TextSink sink, std::size_t indent)
    : sink_(std::move(sink)), indent_(indent) {}

void JsonWriter::key(std::string_view key) {
  separate();
  text_.append(1, '"').append(key).append(indent_ != 0 ? "\": " : "\":");
  afterKey_ = true;
}

void JsonWriter::string(std::string_view text) {
  separate();
  text_.append(1, '"').append(text).append(1, '"');
}

void JsonWriter::number(std::uint64_t number) {
  separate();
  text_.append(std::to_string(number));
}

void JsonWriter::boolean(bool truth) {
  separate();
  text_.append(truth ? "true" : "false");
}

void JsonWriter::finish() {
  sink_(text_);
  text_.clear();
}

void JsonWriter::open(char bracket) {
  separate();
  text_.append(1, bracket);
  ++depth_;
  first_ = true;
}

void JsonWriter::close(char bracket) {
  --depth_;
  if (!first_) {
    newLine();
  }
  text_.append(1, bracket);
  first_ = false;
}

void JsonWriter::separate() {
  if (text_.size() > kPieceBytes) {
    finish();
  }
  if (std::exchange(afterKey_, false)) {
    return;
  }
  if (!first_) {
    text_.append(1, ',');
  }
  first_ = false;
  if (depth_ != 0) {
    newLine();
  }
}

void JsonWriter::newLine() {
  if (indent_ != 0) {
    text_.append(1, '\n').append(indent_ * depth_, ' ');
  }
}

}  // namespace bench::generate
