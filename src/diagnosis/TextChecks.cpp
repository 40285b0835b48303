#include "diagnosis/TextChecks.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnosis/Text.h"
#include "diagnosis/Words.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using source::SourceTree;

// --- repeated keys ----------------------------------------------------------------------------

/// A key and its bytes, which are in a buffer if the key has escapes.
struct Key {
  std::string_view bytes;
  std::size_t node;
  std::size_t behindPrevious;  ///< offset after the member before it
};

bool isBefore(const Key& left, const Key& right) {
  const int order = left.bytes.compare(right.bytes);
  return order < 0 || (order == 0 && left.node < right.node);
}

class RepeatedKeys {
 public:
  /// \param findings  null if nothing is to be reported
  RepeatedKeys(SourceDocument& document, FindingList* findings)
      : document_(document), tree_(document.tree()), findings_(findings) {}

  void checkAll() {
    for (std::size_t node = 0; node < tree_.nodes().size(); ++node) {
      if (tree_[node].kind == source::SourceKind::kObject) {
        check(node);
      }
    }
  }

 private:
  void check(std::size_t object) {
    gather(object);
    if (keys_.size() < 2) {
      return;
    }
    // The text reader orders members by their keys and keeps the first of equal ones.
    if (!std::is_sorted(keys_.begin(), keys_.end(), isBefore)) {
      std::sort(keys_.begin(), keys_.end(), isBefore);
    }
    std::size_t first = 0;
    for (std::size_t index = 1; index < keys_.size(); ++index) {
      if (keys_[index].bytes == keys_[first].bytes) {
        document_.ignore(keys_[index].node);
        if (findings_ != nullptr) {
          report(keys_[first], keys_[index]);
        }
      } else {
        first = index;
      }
    }
  }

  void gather(std::size_t object) {
    keys_.clear();
    decoded_.clear();
    const std::size_t end = tree_[object].next;
    std::size_t behindPrevious = tree_[object].begin;
    for (std::size_t key = object + 1; key < end; key = tree_[key + 1].next) {
      if (tree_[key].hasEscapes) {
        keys_.push_back({decoded_.emplace_back(tree_.decoded(key)), key, behindPrevious});
      } else {
        keys_.push_back({tree_.decodedInto(key, unused_), key, behindPrevious});
      }
      behindPrevious = tree_[key + 1].end;
    }
  }

  void report(const Key& first, const Key& later) {
    const source::SourceNode& value = tree_[later.node + 1];
    std::optional<Fix> fix;
    std::string message = "duplicate key " + quote(later.bytes) + ": ";
    if (later.bytes == "qzdata") {
      message +=
          "the first value is used, unless a later \"qztype\" makes the library read this one";
    } else if (later.bytes == "qztype") {
      message += "the first value is used, but this one also determines what \"qzdata\" must be";
    } else {
      message += "the first value is used, this one is ignored";
      if (value.isClosed) {
        fix = Fix{later.behindPrevious, value.end - later.behindPrevious, "", true};
      }
    }
    findings_->add(Rule::kRepeatedKey, tree_, later.node,
                   {std::move(message),
                    "remove or rename one of the two",
                    "",
                    {{tree_[first.node].begin, "the value that is used"}},
                    std::move(fix)});
  }

  SourceDocument& document_;
  const SourceTree& tree_;
  FindingList* findings_;
  std::vector<Key> keys_;
  std::deque<std::string> decoded_;
  std::string unused_;
};

// --- encoding ---------------------------------------------------------------------------------

constexpr const char* kReplacementRead =
    " and is read as U+FFFD, so different names can become equal";

void checkBytes(const SourceTree& tree, std::size_t node, FindingList& findings) {
  const std::string_view bytes = tree.written(node);
  if (isUtf8(bytes)) {
    return;
  }
  const std::size_t offset = lengthOfUtf8(bytes);
  findings.addInside(Rule::kIllFormedUtf8, tree, node, offset, 1,
                     {std::string("this byte is not UTF-8") + kReplacementRead,
                      "save the document as UTF-8, or write the character as an escape (\\u00e9)"});
}

enum class Surrogate { kNone, kHigh, kLow };

// The kind of UTF-16 unit that four hexadecimal digits represent.
Surrogate classify(std::string_view digits) {
  unsigned unit = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), unit, 16);
  if (unit < 0xD800 || unit > 0xDFFF) {
    return Surrogate::kNone;
  }
  return unit < 0xDC00 ? Surrogate::kHigh : Surrogate::kLow;
}

void reportSurrogate(const SourceTree& tree, std::size_t node, std::size_t offset,
                     FindingList& findings) {
  constexpr std::size_t kEscapeLength = 6;
  findings.addInside(Rule::kUnpairedSurrogate, tree, node, offset, kEscapeLength,
                     {std::string("this escape is half of a character") + kReplacementRead,
                      "write both halves, the high one (\\ud800 to \\udbff) first, or the "
                      "character itself"});
}

// The text reader requires an escape after a high surrogate, but accepts any.
void checkEscapes(const SourceTree& tree, std::size_t node, FindingList& findings) {
  constexpr std::size_t kDigits = 4;
  constexpr std::size_t kEscape = 2 + kDigits;
  const std::string_view text = tree.written(node);
  for (std::size_t at = text.find('\\'); at != std::string_view::npos; at = text.find('\\', at)) {
    if (text[at + 1] != 'u') {
      at += 2;
      continue;
    }
    const Surrogate first = classify(text.substr(at + 2, kDigits));
    if (first == Surrogate::kHigh) {
      if (classify(text.substr(at + kEscape + 2, kDigits)) != Surrogate::kLow) {
        reportSurrogate(tree, node, at, findings);
        if (classify(text.substr(at + kEscape + 2, kDigits)) == Surrogate::kHigh) {
          reportSurrogate(tree, node, at + kEscape, findings);
        }
      }
      at += 2 * kEscape;
      continue;
    }
    if (first == Surrogate::kLow) {
      reportSurrogate(tree, node, at, findings);
    }
    at += kEscape;
  }
}

}  // namespace

void checkRepeatedKeys(SourceDocument& document, FindingList& findings) {
  RepeatedKeys(document, &findings).checkAll();
}

void ignoreRepeatedKeys(SourceDocument& document) {
  RepeatedKeys(document, nullptr).checkAll();
}

void checkEncoding(const SourceTree& tree, FindingList& findings) {
  // Nearly always the whole text is UTF-8, which one check finds out.
  const bool isText = isUtf8(tree.text());
  for (std::size_t node = 0; node < tree.nodes().size(); ++node) {
    const source::SourceNode& place = tree[node];
    if (place.kind != source::SourceKind::kString && place.kind != source::SourceKind::kKey) {
      continue;
    }
    if (!isText) {
      checkBytes(tree, node, findings);
    }
    if (place.hasEscapes) {
      checkEscapes(tree, node, findings);
    }
  }
}

}  // namespace install::update_metadata_parser::diagnosis
