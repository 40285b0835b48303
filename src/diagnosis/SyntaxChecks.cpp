#include "diagnosis/SyntaxChecks.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "diagnosis/Comments.h"
#include "diagnosis/Indentation.h"
#include "diagnosis/SyntaxAdvice.h"
#include "diagnosis/Text.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using source::skipSpace;
using source::SourceTree;
using source::SyntaxFault;

// The text is read again after each.
constexpr int kMostRepairs = 20;

bool isWhiteSpace(std::string_view text) {
  return skipSpace(text, 0) == text.size();
}

std::string withSmallInitial(std::string_view why) {
  std::string words(why);
  words[0] = toLowerCase(words[0]);
  return words;
}

std::string describeSpace(std::string_view space) {
  if (space == "\n" || space == "\r\n") {
    return "line feed";
  }
  return "white space";
}

// Whether a byte can follow a value inside an object or array, which means that the document was
// closed too early.
bool isOfObject(char byte) {
  return std::string_view(",}]:\"").find(byte) != std::string_view::npos;
}

// Whether a fault is inside a single value, so that no bracket can be its cause.
bool isInsideValue(const SyntaxFault& fault) {
  return fault.isTypeNotString || fault.isInPayload || fault.isInEscape || fault.isInNumber;
}

/// Reads one text and repairs it.
class Repair {
 public:
  Repair(std::string_view text, std::string& repaired, FindingList& findings)
      : text_(text), repaired_(repaired), findings_(findings) {}

  RepairedText read(std::string& readerMessage) {
    if (SourceTree untouched(text_); !untouched.fault()) {
      return {std::move(untouched), true};
    } else {
      readerMessage = untouched.fault()->message;
    }
    begin_ = skipTextBefore();
    for (int round = 0;; ++round) {
      SourceTree tree(text_, begin_, allowComments_);
      if (!tree.fault()) {
        return {std::move(tree), true};
      }
      const SyntaxFault fault = *tree.fault();
      if (tree.isWhole()) {
        checkTextAfter(fault.offset);
        const std::size_t next = skipSpace(text_, fault.offset);
        return {std::move(tree), next == text_.size() || !isOfObject(text_[next])};
      }
      if (round == kMostRepairs || !repair(fault, tree)) {
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
                    {"JSON has no comments",
                     "remove this and all other comments",
                     "",
                     {},
                     removeComments(text_, begin_, offset)});
  }

  // Replaces a comment up to the end of its line with blanks.
  void blankComment(std::size_t offset) {
    findings_.addAt(
        Rule::kMalformedText, offset, 1,
        {"JSON has no comments", "remove this comment", "", {}, removeHashComment(text_, offset)});
    const std::size_t end = std::min(text_.find('\n', offset), text_.size());
    for (std::size_t at = offset; at < end; ++at) {
      replace(at, ' ');
    }
    if (offset == begin_) {
      begin_ = skipSpace(text_, begin_);
    }
  }

  std::size_t skipTextBefore() {
    std::size_t offset = 0;
    if (startsWith(text_, source::kByteOrderMark)) {
      offset = source::kByteOrderMark.size();
      findings_.addAt(Rule::kTextAroundValue, 0, offset,
                      {"byte-order mark before the document",
                       "save the file as UTF-8 without a byte-order mark, or run "
                       "'update-metadata fmt'",
                       "",
                       {},
                       Fix{0, offset, "", true}});
    }
    const std::size_t behindSpace = skipSpace(text_, offset);
    if (behindSpace == text_.size()) {
      return offset;  // there is no document, which is another fault
    }
    if (behindSpace != offset) {
      findings_.addAt(Rule::kTextAroundValue, offset, 1,
                      {"white space before the document",
                       "start the file with '{', or run 'update-metadata fmt'",
                       "",
                       {},
                       Fix{offset, behindSpace - offset, "", true}});
    }
    if (isCommentAt(behindSpace)) {
      begin_ = behindSpace;
      reportComment(behindSpace);
      return skipSpace(text_, behindSpace, true);
    }
    return behindSpace;
  }

  void checkTextAfter(std::size_t offset) {
    const std::string_view rest = text_.substr(offset);
    if (isWhiteSpace(rest)) {
      findings_.addAt(Rule::kTextAroundValue, offset, 1,
                      {describeSpace(rest) + " after the document",
                       "end the file with the last '}' of the document (many editors add a line "
                       "feed), or run 'update-metadata fmt'",
                       "",
                       {},
                       Fix{offset, rest.size(), "", true}});
      return;
    }
    const std::size_t place = skipSpace(text_, offset);
    std::optional<Fix> fix;
    if (isEmptyRest(rest)) {
      fix = Fix{offset, rest.size(), "", true};
    } else if (!isOfObject(text_[place])) {
      fix = Fix{offset, rest.size(), "", false};
    }
    findings_.addAt(Rule::kTextAroundValue, place, 1,
                    {"text after the end of the document",
                     "remove it, or the bracket that closes the document too early",
                     "",
                     {},
                     std::move(fix)});
  }

  // Repairs a fault that has one obvious remedy; returns whether it has one.
  bool repair(const SyntaxFault& fault, const SourceTree& tree) {
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
    return repairTrailingComma(offset, tree) || repairMissingComma(fault, tree);
  }

  bool repairTrailingComma(std::size_t offset, const SourceTree& tree) {
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
    const char opening = openBracket(tree);
    findings_.addAt(
        Rule::kMalformedText, comma, 1,
        {std::string("trailing comma before '") + closing + '\'',
         std::string("remove it, or add the missing ") + (closing == '}' ? "member" : "element") +
             " after it",
         "",
         {},
         opening == (closing == '}' ? '{' : '[') ? std::optional(Fix{comma, 1, "", true})
                                                 : std::nullopt});
    replace(comma, ' ');
    return true;
  }

  bool repairMissingComma(const SyntaxFault& fault, const SourceTree& tree) {
    const bool isExpected = fault.why.find("','") != std::string_view::npos;
    const bool isSpaceBefore =
        fault.offset > begin_ && isWhiteSpace(text_.substr(fault.offset - 1, 1));
    if (!isExpected || !isSpaceBefore || byteAt(fault.offset) != '"') {
      return false;
    }
    findings_.addAt(Rule::kMalformedText, fault.offset, 1,
                    {"missing comma before this",
                     "add a comma after the previous value",
                     "",
                     {},
                     insertComma(tree, fault.offset)});
    replace(fault.offset - 1, ',');
    return true;
  }

  // Inserts the comma before a string after the value that precedes it. Nothing if the string is
  // where a name should be, but is none: then the quotation mark may be the mistake.
  std::optional<Fix> insertComma(const SourceTree& tree, std::size_t string) const {
    std::size_t behind = 0;
    for (const source::SourceNode& node : tree.nodes()) {
      if (node.isClosed) {
        behind = std::max(behind, node.end);
      }
    }
    if (openBracket(tree) == '{') {
      const SourceTree name(text_, string);
      const std::size_t next = name.nodes().empty() ? text_.size() : name.nodes().front().end;
      if (byteAt(skipSpace(text_, next, true)) != ':') {
        return std::nullopt;
      }
    }
    return Fix{behind, 0, ",", true};
  }

  void replace(std::size_t offset, char byte) {
    if (repaired_.empty()) {
      repaired_ = text_;
      text_ = repaired_;
    }
    repaired_[offset] = byte;
  }

  // Reports a fault at which reading stops. Returns whether the nesting of what comes before it is
  // sure.
  bool report(const SyntaxFault& fault, const SourceTree& tree) {
    constexpr const char* kNotChecked = "; the rest was not checked";
    if (fault.isTypeNotString) {
      findings_.addAt(
          Rule::kTypeNameNotAString, fault.offset, 1,
          {"the value of \"qztype\" is not a string",
           std::string("write the name of an integer type, such as \"int64\", or rename "
                       "the member") +
               kNotChecked});
      return true;
    }
    if (fault.isInPayload) {
      findings_.addAt(Rule::kTypedPayload, fault.offset, 1,
                      {"\"qzdata\" must be an array of integers because of \"qztype\": " +
                           withSmallInitial(fault.why),
                       std::string("write only integers, or remove \"qztype\"") + kNotChecked});
      return true;
    }
    if (const std::optional<std::size_t> string = findMultilineString(tree)) {
      reportMultilineString(fault, tree, *string);
      return false;
    }
    if (const std::optional<KnownMistake> mistake = findKnownMistake(text_, fault)) {
      findings_.addAt(Rule::kMalformedText, mistake->offset, mistake->length,
                      {mistake->message, mistake->advice + kNotChecked, "", {}, mistake->fix});
      return true;
    }
    const std::string advice = adviseOnSyntax(text_, begin_, fault);
    if (isInsideValue(fault)) {
      findings_.addAt(Rule::kMalformedText, fault.offset, 1,
                      {withSmallInitial(fault.why), advice + kNotChecked});
      return true;
    }
    reportBracket(fault, tree, advice);
    return false;
  }

  void reportMultilineString(const SyntaxFault& fault, const SourceTree& tree, std::size_t string) {
    const char* const mark = hasCurlyQuote(tree.written(tree.nodes().size() - 1))
                                 ? "with a straight quotation mark, not a curly one"
                                 : "with a quotation mark";
    findings_.addAt(Rule::kMalformedText, fault.offset, 1,
                    {withSmallInitial(fault.why),
                     std::string("close the previous string on its line ") + mark +
                         "; nothing else was checked",
                     "",
                     {{string, "this string continues past the end of its line"}}});
  }

  // Reports a fault whose cause may be an unclosed bracket.
  void reportBracket(const SyntaxFault& fault, const SourceTree& tree, std::string advice) {
    std::vector<Mention> related;
    if (const auto unclosed = findUnclosedByIndentation(tree)) {
      const std::string closing = text_[unclosed->offset] == '{' ? "'}'" : "']'";
      advice = "add the missing " + closing;
      related = {{unclosed->offset, std::string("judging by the indentation, this '") +
                                        text_[unclosed->offset] + "' is not closed"},
                 {unclosed->before, "the missing " + closing + " belongs before this line"}};
    } else {
      related = findOpen(tree);
    }
    findings_.addAt(Rule::kMalformedText, fault.offset, 1,
                    {withSmallInitial(fault.why), advice + "; nothing else was checked", "",
                     std::move(related)});
  }

  // The beginning of the last string if it continues on another line: usually its closing quotation
  // mark is missing, and the next one was read instead.
  std::optional<std::size_t> findMultilineString(const SourceTree& tree) const {
    if (tree.nodes().empty() || tree.nodes().back().kind != source::SourceKind::kString ||
        tree.written(tree.nodes().size() - 1).find('\n') == std::string_view::npos) {
      return std::nullopt;
    }
    return tree.nodes().back().begin;
  }

  // The offset of the innermost unclosed bracket, if any.
  static std::optional<std::size_t> offsetOfOpen(const SourceTree& tree) {
    const auto& nodes = tree.nodes();
    const auto open = std::find_if(nodes.rbegin(), nodes.rend(),
                                   [](const source::SourceNode& node) { return !node.isClosed; });
    return open == nodes.rend() ? std::nullopt : std::optional(open->begin);
  }

  // That bracket; 0 if there is none.
  char openBracket(const SourceTree& tree) const {
    const std::optional<std::size_t> open = offsetOfOpen(tree);
    return open ? text_[*open] : '\0';
  }

  std::vector<Mention> findOpen(const SourceTree& tree) const {
    const std::optional<std::size_t> open = offsetOfOpen(tree);
    if (!open) {
      return {};
    }
    return {{*open, std::string("the innermost unclosed '") + text_[*open] + '\''}};
  }

  std::string_view text_;
  std::string& repaired_;
  FindingList& findings_;
  std::size_t begin_ = 0;
  bool allowComments_ = false;
};

}  // namespace

RepairedText readRepairing(std::string_view text, std::string& repaired, std::string& readerMessage,
                           FindingList& findings) {
  return Repair(text, repaired, findings).read(readerMessage);
}

}  // namespace install::update_metadata_parser::diagnosis
