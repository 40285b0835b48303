#include "diagnosis/Comments.h"

#include <algorithm>
#include <string>
#include <utility>

#include "diagnosis/Text.h"
#include "diagnosis/source/SourceTree.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

constexpr std::size_t kMostBytesToCopy = 1'000'000;
constexpr std::size_t kNoEnd = std::string_view::npos;

bool isComment(std::string_view rest) {
  return startsWith(rest, "//") || startsWith(rest, "/*");
}

// The offset after a comment, without the end of its line; kNoEnd if it has none.
std::size_t endOfComment(std::string_view text, std::size_t offset) {
  if (text[offset + 1] == '*') {
    const std::size_t end = text.find("*/", offset + 2);
    return end == kNoEnd ? kNoEnd : end + 2;
  }
  const std::size_t end = text.find('\n', offset);
  return end == kNoEnd || text[end - 1] != '\r' ? end : end - 1;
}

// The offset after a string that begins at `offset`, or the end of the text.
std::size_t endOfString(std::string_view text, std::size_t offset) {
  std::size_t end = offset + 1;
  while (end < text.size() && text[end] != '"') {
    end += text[end] == '\\' ? 2U : 1U;
  }
  return std::min(end + 1, text.size());
}

// The number of bytes that end a line at the beginning of `rest`.
std::size_t lengthOfLineEnd(std::string_view rest) {
  return startsWith(rest, "\r\n") ? 2 : static_cast<std::size_t>(startsWith(rest, "\n"));
}

bool isOfWordOrNumber(char byte) {
  return isLetterOrDigit(byte) || std::string_view("+-._").find(byte) != std::string_view::npos;
}

std::size_t skipBlanksBackwards(std::string_view text, std::size_t offset) {
  while (offset > 0 && (text[offset - 1] == ' ' || text[offset - 1] == '\t')) {
    --offset;
  }
  return offset;
}

}  // namespace

std::optional<Fix> removeComments(std::string_view text, std::size_t begin, std::size_t offset) {
  // Where the text is no JSON, what looks like a comment may be something else.
  const source::SourceTree tree(text, source::skipSpace(text, begin, true), true);
  const std::size_t known = tree.fault() ? tree.fault()->offset : text.size();
  const std::size_t stop = std::min(known, offset + kMostBytesToCopy);
  const std::size_t first = skipBlanksBackwards(text, offset);
  std::string kept;
  std::size_t removed = first;  // the end of the last comment that is removed
  std::size_t keptThere = 0;    // the size of `kept` there
  for (std::size_t at = offset; at < stop;) {
    if (!isComment(text.substr(at))) {
      const std::size_t end = text[at] == '"' ? endOfString(text, at) : at + 1;
      kept += text.substr(at, end - at);
      at = end;
      continue;
    }
    const std::size_t end = endOfComment(text, at);
    if (end == kNoEnd) {
      break;
    }
    kept.resize(skipBlanksBackwards(kept, kept.size()));
    const char before = !kept.empty() ? kept.back() : first > 0 ? text[first - 1] : '\n';
    const std::string_view rest = text.substr(end);
    if (before == '\n') {
      at = end + lengthOfLineEnd(rest);
    } else {
      at = end;
      if (isOfWordOrNumber(before) && !rest.empty() && isOfWordOrNumber(rest[0])) {
        kept += ' ';
      }
    }
    removed = at;
    keptThere = kept.size();
  }
  kept.resize(keptThere);
  if (removed == first || !isUtf8(kept)) {
    return std::nullopt;
  }
  return Fix{first, removed - first, std::move(kept), true};
}

std::optional<Fix> removeHashComment(std::string_view text, std::size_t offset) {
  const std::size_t line = text.find('\n', offset);
  if (line == kNoEnd) {
    return std::nullopt;
  }
  const std::size_t end = text[line - 1] == '\r' ? line - 1 : line;
  const std::string_view note = text.substr(offset + 1, end - offset - 1);
  const std::size_t before = skipBlanksBackwards(text, offset);
  if (before > 0 && text[before - 1] == ':') {
    return std::nullopt;  // a value is missing
  }
  const bool isNote = note.find_first_of("\"{}[]") == kNoEnd;
  const bool isWholeLine = before == 0 || text[before - 1] == '\n';
  return Fix{before, (isWholeLine ? line + 1 : end) - before, "", isNote};
}

bool isEmptyRest(std::string_view text) {
  constexpr std::string_view kSuperfluous("}],;\0\x1A", 6);
  for (std::size_t at = 0;; ++at) {
    at = source::skipSpace(text, at, true);
    if (at >= text.size()) {
      return true;
    }
    if (kSuperfluous.find(text[at]) == std::string_view::npos) {
      return false;
    }
  }
}

}  // namespace install::update_metadata_parser::diagnosis
