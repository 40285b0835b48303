#include "diagnosis/Notation.h"

#include <algorithm>
#include <string>
#include <utility>

#include "diagnosis/Text.h"
#include "diagnosis/source/SourceTree.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

constexpr std::size_t kMostBytesToRewrite = 1'000'000;

struct ForeignWord {
  std::string_view word;  ///< in lower case
  const char* meant;
};

constexpr ForeignWord kForeignWords[] = {
    {"true", "true"}, {"yes", "true"},       {"on", "true"},   {"false", "false"},
    {"no", "false"},  {"off", "false"},      {"null", "null"}, {"none", "null"},
    {"nil", "null"},  {"nullptr", "null"},   {"nul", "null"},  {"fals", "false"},
    {"tru", "true"},  {"undefined", "null"},
};

std::string_view curlyQuoteAt(std::string_view text) {
  for (const std::string_view quote : kCurlyQuotes) {
    if (startsWith(text, quote)) {
      return quote;
    }
  }
  return {};
}

/// Copies text to JSON piece by piece.
class Rewriting {
 public:
  Rewriting(std::string_view text, std::size_t offset)
      : text_(text.substr(0, offset + kMostBytesToRewrite)), begin_(offset), at_(offset) {}

  std::optional<Fix> run() {
    while (at_ < text_.size() && takePiece()) {
    }
    json_.resize(changedJson_);
    if (changed_ == begin_ || !isUtf8(json_)) {
      return std::nullopt;
    }
    return Fix{begin_, changed_ - begin_, std::move(json_), false};
  }

 private:
  // Returns whether the next piece is understood.
  bool takePiece() {
    const char byte = text_[at_];
    if (byte == '"') {
      return takeString();
    }
    if (byte == '\'' || byte == '`') {
      return rewriteString(text_.substr(at_, 1));
    }
    if (const std::string_view quote = curlyQuoteAt(text_.substr(at_)); !quote.empty()) {
      return rewriteString(quote);
    }
    if (const char small = toLowerCase(byte); (small >= 'a' && small <= 'z') || byte == '_') {
      return takeWord();
    }
    constexpr std::string_view kNumbersAndPunctuation = "0123456789+-.{}[]:, \t\r\n";
    if (kNumbersAndPunctuation.find(byte) == std::string_view::npos) {
      return false;
    }
    json_ += byte;
    ++at_;
    return true;
  }

  void change(std::size_t end) {
    at_ = end;
    changed_ = end;
    changedJson_ = json_.size();
  }

  bool takeString() {
    std::size_t end = at_ + 1;
    while (end < text_.size() && text_[end] != '"' && text_[end] != '\n') {
      end += text_[end] == '\\' ? 2U : 1U;
    }
    if (end >= text_.size() || text_[end] != '"') {
      return false;
    }
    json_ += text_.substr(at_, end + 1 - at_);
    at_ = end + 1;
    return true;
  }

  // A string on one line between quotation marks that JSON does not have.
  bool rewriteString(std::string_view opening) {
    const bool isCurly = opening.size() > 1;
    std::string string = "\"";
    for (std::size_t end = at_ + opening.size(); end < text_.size();) {
      const std::string_view rest = text_.substr(end);
      const std::size_t closing =
          isCurly ? curlyQuoteAt(rest).size() : static_cast<std::size_t>(rest[0] == opening[0]);
      if (closing != 0) {
        json_ += string + '"';
        change(end + closing);
        return true;
      }
      if (rest[0] == '\n') {
        return false;
      }
      if (rest[0] == '\\' && rest.size() > 1) {
        string += rest[1] == opening[0] ? rest.substr(1, 1) : rest.substr(0, 2);
        end += 2;
        continue;
      }
      string += rest[0] == '"' ? "\\\"" : std::string(1, rest[0]);
      ++end;
    }
    return false;
  }

  // A name without quotation marks, or a word of JSON or of another language.
  bool takeWord() {
    std::size_t end = at_;
    while (end < text_.size() && isOfWord(text_[end])) {
      ++end;
    }
    const std::string_view word = text_.substr(at_, end - at_);
    const bool isAfterNumber = !json_.empty() && json_.back() >= '0' && json_.back() <= '9';
    if (isAfterNumber || end == text_.size()) {
      return false;
    }
    const std::size_t next = source::skipSpace(text_, end);
    if (next < text_.size() && text_[next] == ':') {
      json_ += '"' + std::string(word) + '"';
      change(end);
      return true;
    }
    std::string small(word);
    std::transform(small.begin(), small.end(), small.begin(), toLowerCase);
    const char* const meant = findMeantWord(small);
    if (meant == nullptr) {
      return false;
    }
    json_ += meant;
    if (word == meant) {
      at_ = end;
    } else {
      change(end);
    }
    return true;
  }

  std::string_view text_;
  std::size_t begin_;
  std::size_t at_;
  std::string json_;
  std::size_t changed_ = begin_;  // the end of the last change
  std::size_t changedJson_ = 0;   // the size of json_ there
};

}  // namespace

const char* findMeantWord(std::string_view word) {
  for (const ForeignWord& foreign : kForeignWords) {
    if (foreign.word == word) {
      return foreign.meant;
    }
  }
  return nullptr;
}

std::optional<Fix> rewriteNotation(std::string_view text, std::size_t offset) {
  return Rewriting(text, offset).run();
}

}  // namespace install::update_metadata_parser::diagnosis
