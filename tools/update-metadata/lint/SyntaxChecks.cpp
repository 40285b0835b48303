#include "lint/SyntaxChecks.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "lint/Words.h"

namespace update_metadata_tool {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Each time the text is read anew.
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
  return fault.isTypeNoString || fault.isInPayload || fault.isInEscape || fault.isInNumber;
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
        report(fault, tree);
        return {std::move(tree), isInsideValue(fault)};
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
                    {"a comment stands here, which JSON does not have",
                     "take this comment and any further one out"});
  }

  std::size_t skipWhatStandsBefore() {
    std::size_t offset = 0;
    if (startsWith(text_, kByteOrderMark)) {
      offset = kByteOrderMark.size();
      findings_.addAt(Rule::kTextAroundValue, 0, offset,
                      {"a byte-order mark stands before the document",
                       "save the file as UTF-8 without a byte-order mark, or run "
                       "'update-metadata fmt'"});
    }
    const std::size_t behindSpace = skipSpace(text_, offset);
    if (behindSpace == text_.size()) {
      return offset;  // no document at all, which is another fault
    }
    if (behindSpace != offset) {
      findings_.addAt(Rule::kTextAroundValue, offset, 1,
                      {"white space stands before the document",
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
                      {describeSpace(rest) + " stands behind the document",
                       "end the file with the document's last '}' (many editors add a line feed by "
                       "themselves), or run 'update-metadata fmt'"});
      return;
    }
    const std::size_t place = skipSpace(text_, offset);
    findings_.addAt(Rule::kTextAroundValue, place, 1,
                    {"the document is complete before this, and nothing may stand behind it",
                     "take out what follows, or the bracket that closes the document too early"});
  }

  // Mends a fault that has one obvious remedy. False if it is none.
  bool mend(const SyntaxFault& fault) {
    const std::size_t offset = fault.offset;
    if (fault.isTypeNoString || fault.isInPayload) {
      return false;
    }
    if (isCommentAt(offset) && !allowComments_) {
      reportComment(offset);
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
                    {std::string("a comma stands before the closing '") + closing + '\'',
                     "take the comma out, or add what is missing behind it"});
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
                    {"a comma is missing before this", "put a comma behind the value before it"});
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

  // Reports a fault that ends the reading.
  void report(const SyntaxFault& fault, const SourceTree& tree) {
    if (fault.isTypeNoString) {
      findings_.addAt(Rule::kTypeNameNotAString, fault.offset, 1,
                      {"the value of \"qztype\" is not a string",
                       "write the name of an integer type, such as \"int64\", or give the member "
                       "another name; what follows has not been checked"});
      return;
    }
    if (fault.isInPayload) {
      findings_.addAt(
          Rule::kTypedPayload, fault.offset, 1,
          {"\"qzdata\" is not an array of integers, as its \"qztype\" says: " + lowered(fault.why),
           "write integers only, or take \"qztype\" out; what follows has not been "
           "checked"});
      return;
    }
    if (const std::optional<std::size_t> string = findOverrunning(tree)) {
      findings_.addAt(
          Rule::kMalformedText, fault.offset, 1,
          {lowered(fault.why),
           "close the string before this on its line, with a quotation mark; nothing "
           "else has been checked",
           "",
           {{*string, "the string that goes on over the end of its line begins here"}}});
      return;
    }
    std::vector<RelatedPlace> related;
    if (!isInsideValue(fault)) {
      related = findOpen(tree);
    }
    const char* const rest = isInsideValue(fault) ? "; what follows has not been checked"
                                                  : "; nothing else has been checked";
    findings_.addAt(Rule::kMalformedText, fault.offset, 1,
                    {lowered(fault.why), advise(fault) + rest, "", std::move(related)});
  }

  // Where the string begins that was read last, if it goes on over the end of its line: most often
  // its own quotation mark is missing, and the next one has been taken for it.
  std::optional<std::size_t> findOverrunning(const SourceTree& tree) const {
    if (tree.nodes().empty() || tree.nodes().back().kind != SourceKind::kString ||
        tree.written(tree.nodes().size() - 1).find('\n') == std::string_view::npos) {
      return std::nullopt;
    }
    return tree.nodes().back().begin;
  }

  // The innermost bracket that is not closed.
  std::vector<RelatedPlace> findOpen(const SourceTree& tree) const {
    const auto& nodes = tree.nodes();
    const auto open = std::find_if(nodes.rbegin(), nodes.rend(),
                                   [](const SourceNode& node) { return !node.isClosed; });
    if (open == nodes.rend()) {
      return {};
    }
    return {{open->begin, std::string("the innermost '") + text_[open->begin] +
                              "' that is not closed stands here"}};
  }

  std::string advise(const SyntaxFault& fault) const {
    const std::string_view rest = text_.substr(fault.offset);
    if (text_.empty()) {
      return "write the document into the file, which is empty";
    }
    if (skipSpace(text_, begin_) == text_.size()) {
      return "write the document into the file, which holds none";
    }
    if (rest.empty()) {
      return "add what is missing: the text ends within a string, an array or an object";
    }
    if (fault.isInEscape) {
      return "write a backslash as \\\\; only \" \\ / b f n r t stand behind one, and u with four "
             "hexadecimal digits, in pairs for characters beyond \\uffff";
    }
    if (rest[0] == '\'') {
      return "write strings between double quotation marks";
    }
    if (rest[0] == '+' || rest[0] == '.') {
      return "begin a number with a digit or a minus sign";
    }
    for (const std::string_view word : {"NaN", "Infinity", "undefined"}) {
      if (startsWith(rest, word)) {
        return "write a number: JSON has no " + std::string(word);
      }
    }
    for (const auto& [word, meant] :
         {std::pair("True", "true"), std::pair("TRUE", "true"), std::pair("False", "false"),
          std::pair("FALSE", "false"), std::pair("None", "null"), std::pair("NULL", "null")}) {
      if (startsWith(rest, word)) {
        return std::string("write ") + meant;
      }
    }
    if (std::isalpha(static_cast<unsigned char>(rest[0])) != 0 &&
        fault.why.find("string") != std::string_view::npos) {
      return "put names and texts between double quotation marks";
    }
    return "correct the text here or right before";
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

}  // namespace update_metadata_tool
