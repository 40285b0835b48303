#include "lint/SyntaxChecks.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "lint/Indentation.h"
#include "lint/SyntaxAdvice.h"

namespace update_metadata_tool::lint {
namespace {

using source::skipSpace;
using source::SourceTree;
using source::SyntaxFault;

// The text is read again after each.
constexpr int kMostMendings = 20;

bool startsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

bool isWhiteSpace(std::string_view text) {
  return skipSpace(text, 0) == text.size();
}

std::string lowered(std::string_view why) {
  std::string words(why);
  words[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(words[0])));
  return words;
}

std::string describeSpace(std::string_view space) {
  if (space == "\n" || space == "\r\n") {
    return "a line feed";
  }
  return "white space";
}

// What stands behind a value inside an object or array: the document has been closed too early.
bool isOfObject(char byte) {
  return std::string_view(",}]:\"").find(byte) != std::string_view::npos;
}

// Tells whether a fault lies in a single value, so that no bracket can be its reason.
bool isInsideValue(const SyntaxFault& fault) {
  return fault.isTypeNotString || fault.isInPayload || fault.isInEscape || fault.isInNumber;
}

/// Reads one text, mending it.
class Mending {
 public:
  Mending(std::string_view text, std::string& mended, FindingList& findings)
      : text_(text), mended_(mended), findings_(findings) {}

  MendedText read(std::string& readerMessage) {
    if (SourceTree untouched(text_); !untouched.fault()) {
      return {std::move(untouched), true};
    } else {
      readerMessage = untouched.fault()->message;
    }
    begin_ = skipWhatStandsBefore();
    for (int round = 0;; ++round) {
      SourceTree tree(text_, begin_, allowComments_);
      if (!tree.fault()) {
        return {std::move(tree), true};
      }
      const SyntaxFault fault = *tree.fault();
      if (tree.isWhole()) {
        checkWhatStandsBehind(fault.offset);
        const std::size_t next = skipSpace(text_, fault.offset);
        return {std::move(tree), next == text_.size() || !isOfObject(text_[next])};
      }
      if (round == kMostMendings || !mend(fault)) {
        const bool isNestingSure = report(fault, tree);
        return {std::move(tree), isNestingSure};
      }
    }
  }

 private:
  char byteAt(std::size_t offset) const { return offset < text_.size() ? text_[offset] : '\0'; }

  bool isCommentAt(std::size_t offset) const {
    return byteAt(offset) == '/' && (byteAt(offset + 1) == '/' || byteAt(offset + 1) == '*');
  }

  void reportComment(std::size_t offset) {
    allowComments_ = true;
    findings_.addAt(Rule::kMalformedText, offset, 2,
                    {"JSON has no comments", "remove this comment and any other"});
  }

  // Replaces a comment that goes on to the end of its line with blanks.
  void blankComment(std::size_t offset) {
    findings_.addAt(Rule::kMalformedText, offset, 1,
                    {"JSON has no comments", "remove this comment"});
    const std::size_t end = std::min(text_.find('\n', offset), text_.size());
    for (std::size_t at = offset; at < end; ++at) {
      replace(at, ' ');
    }
    if (offset == begin_) {
      begin_ = skipSpace(text_, begin_);
    }
  }

  std::size_t skipWhatStandsBefore() {
    std::size_t offset = 0;
    if (startsWith(text_, source::kByteOrderMark)) {
      offset = source::kByteOrderMark.size();
      findings_.addAt(Rule::kTextAroundValue, 0, offset,
                      {"a byte-order mark comes before the document",
                       "save the file as UTF-8 without a byte-order mark, or run "
                       "'update-metadata fmt'"});
    }
    const std::size_t behindSpace = skipSpace(text_, offset);
    if (behindSpace == text_.size()) {
      return offset;  // no document at all, which is another fault
    }
    if (behindSpace != offset) {
      findings_.addAt(Rule::kTextAroundValue, offset, 1,
                      {"white space comes before the document",
                       "begin the file with '{', or run 'update-metadata fmt'"});
    }
    if (isCommentAt(behindSpace)) {
      reportComment(behindSpace);
      return skipSpace(text_, behindSpace, true);
    }
    return behindSpace;
  }

  void checkWhatStandsBehind(std::size_t offset) {
    const std::string_view rest = text_.substr(offset);
    if (isWhiteSpace(rest)) {
      findings_.addAt(Rule::kTextAroundValue, offset, 1,
                      {describeSpace(rest) + " follows the document",
                       "end the file with the document's last '}' (many editors add a line feed by "
                       "themselves), or run 'update-metadata fmt'"});
      return;
    }
    const std::size_t place = skipSpace(text_, offset);
    findings_.addAt(Rule::kTextAroundValue, place, 1,
                    {"the document is complete before this, and nothing may follow it",
                     "remove what follows, or the bracket that closes the document too early"});
  }

  // Mends a fault that has one obvious remedy. False if it is none.
  bool mend(const SyntaxFault& fault) {
    const std::size_t offset = fault.offset;
    if (fault.isTypeNotString || fault.isInPayload) {
      return false;
    }
    if (isCommentAt(offset) && !allowComments_) {
      reportComment(offset);
      return true;
    }
    if (byteAt(offset) == '#' && !fault.isInEscape && !fault.isInNumber) {
      blankComment(offset);
      return true;
    }
    return mendTrailingComma(offset) || mendMissingComma(fault);
  }

  bool mendTrailingComma(std::size_t offset) {
    const char closing = byteAt(offset);
    if ((closing != '}' && closing != ']') || offset == begin_ || allowComments_) {
      return false;
    }
    std::size_t comma = offset - 1;
    while (comma > begin_ && isWhiteSpace(text_.substr(comma, 1))) {
      --comma;
    }
    if (text_[comma] != ',') {
      return false;
    }
    findings_.addAt(Rule::kMalformedText, comma, 1,
                    {std::string("a comma comes before the closing '") + closing + '\'',
                     "remove the comma, or add what is missing after it"});
    replace(comma, ' ');
    return true;
  }

  bool mendMissingComma(const SyntaxFault& fault) {
    const bool isExpected = fault.why.find("','") != std::string_view::npos;
    const bool isSpaceBefore =
        fault.offset > begin_ && isWhiteSpace(text_.substr(fault.offset - 1, 1));
    if (!isExpected || !isSpaceBefore || byteAt(fault.offset) != '"') {
      return false;
    }
    findings_.addAt(Rule::kMalformedText, fault.offset, 1,
                    {"a comma is missing before this", "put a comma after the value before it"});
    replace(fault.offset - 1, ',');
    return true;
  }

  void replace(std::size_t offset, char byte) {
    if (mended_.empty()) {
      mended_ = text_;
      text_ = mended_;
    }
    mended_[offset] = byte;
  }

  // Reports a fault that ends the reading. Tells whether what comes before it is nested as it is
  // meant to be.
  bool report(const SyntaxFault& fault, const SourceTree& tree) {
    constexpr const char* kNotChecked = "; what follows has not been checked";
    if (fault.isTypeNotString) {
      findings_.addAt(Rule::kTypeNameNotAString, fault.offset, 1,
                      {"the value of \"qztype\" is not a string",
                       std::string("write the name of an integer type, such as \"int64\", or give "
                                   "the member another name") +
                           kNotChecked});
      return true;
    }
    if (fault.isInPayload) {
      findings_.addAt(
          Rule::kTypedPayload, fault.offset, 1,
          {"\"qzdata\" is not an array of integers, as its \"qztype\" says: " + lowered(fault.why),
           std::string("write integers only, or remove \"qztype\"") + kNotChecked});
      return true;
    }
    if (const std::optional<std::size_t> string = findOverrunning(tree)) {
      reportOverrunning(fault, tree, *string);
      return false;
    }
    if (const std::optional<KnownMistake> mistake = findKnownMistake(text_, fault)) {
      findings_.addAt(Rule::kMalformedText, mistake->offset, mistake->length,
                      {mistake->message, mistake->advice + kNotChecked});
      return true;
    }
    const std::string advice = adviseOnSyntax(text_, begin_, fault);
    if (isInsideValue(fault)) {
      findings_.addAt(Rule::kMalformedText, fault.offset, 1,
                      {lowered(fault.why), advice + kNotChecked});
      return true;
    }
    reportBracket(fault, tree, advice);
    return false;
  }

  void reportOverrunning(const SyntaxFault& fault, const SourceTree& tree, std::size_t string) {
    const char* const mark = hasCurlyQuote(tree.written(tree.nodes().size() - 1))
                                 ? "with a straight quotation mark, not a curly one"
                                 : "with a quotation mark";
    findings_.addAt(Rule::kMalformedText, fault.offset, 1,
                    {lowered(fault.why),
                     std::string("close the string before this on its line, ") + mark +
                         "; nothing else has been checked",
                     "",
                     {{string, "the string that continues past the end of its line begins here"}}});
  }

  // Reports a fault whose reason may be a bracket that is not closed.
  void reportBracket(const SyntaxFault& fault, const SourceTree& tree, std::string advice) {
    std::vector<RelatedPlace> related;
    if (const auto unclosed = findUnclosedByIndentation(tree)) {
      const std::string closing = text_[unclosed->offset] == '{' ? "'}'" : "']'";
      advice = "add the missing " + closing;
      related = {{unclosed->offset, std::string("judging by the indentation, this '") +
                                        text_[unclosed->offset] + "' is not closed"},
                 {unclosed->before, "the missing " + closing + " belongs before this line"}};
    } else {
      related = findOpen(tree);
    }
    findings_.addAt(
        Rule::kMalformedText, fault.offset, 1,
        {lowered(fault.why), advice + "; nothing else has been checked", "", std::move(related)});
  }

  // Where the string begins that was read last, if it goes on over the end of its line: most often
  // its own quotation mark is missing, and the next one has been taken for it.
  std::optional<std::size_t> findOverrunning(const SourceTree& tree) const {
    if (tree.nodes().empty() || tree.nodes().back().kind != source::SourceKind::kString ||
        tree.written(tree.nodes().size() - 1).find('\n') == std::string_view::npos) {
      return std::nullopt;
    }
    return tree.nodes().back().begin;
  }

  // The innermost bracket that is not closed.
  std::vector<RelatedPlace> findOpen(const SourceTree& tree) const {
    const auto& nodes = tree.nodes();
    const auto open = std::find_if(nodes.rbegin(), nodes.rend(),
                                   [](const source::SourceNode& node) { return !node.isClosed; });
    if (open == nodes.rend()) {
      return {};
    }
    return {{open->begin,
             std::string("the innermost '") + text_[open->begin] + "' that is not closed"}};
  }

  std::string_view text_;
  std::string& mended_;
  FindingList& findings_;
  std::size_t begin_ = 0;
  bool allowComments_ = false;
};

}  // namespace

MendedText readMending(std::string_view text, std::string& mended, std::string& readerMessage,
                       FindingList& findings) {
  return Mending(text, mended, findings).read(readerMessage);
}

}  // namespace update_metadata_tool::lint
