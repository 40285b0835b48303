#include "fmt/Formatting.h"

#include <cstddef>
#include <new>
#include <string_view>

#include "command/Advice.h"
#include "diagnosis/source/LineIndex.h"
#include "diagnosis/source/SourceTree.h"
#include "input/LoadRecord.h"
#include "output/Text.h"

namespace update_metadata_tool::fmt {
namespace {

namespace source = install::update_metadata_parser::diagnosis::source;
using source::SourceTree;

// The beginning of a text after its byte-order mark and leading white space.
std::size_t findBeginning(std::string_view text) {
  const bool hasMark = output::startsWith(text, source::kByteOrderMark);
  return source::skipSpace(text, hasMark ? source::kByteOrderMark.size() : 0);
}

// The end of a text without the white space after its value; the whole text's end if other text
// follows, or if there is no value.
std::size_t findEnd(const SourceTree& tree) {
  const std::size_t size = tree.text().size();
  const bool isAlone =
      tree.isWhole() && source::skipSpace(tree.text(), tree[SourceTree::kRoot].end) == size;
  return isAlone ? tree[SourceTree::kRoot].end : size;
}

std::string describePlace(std::string_view text, std::size_t offset) {
  const source::Position position = source::LineIndex(text).positionOf(offset);
  return "line " + std::to_string(position.line) + ", column " + std::to_string(position.column);
}

// What is wrong with the text itself; empty if it is one object.
std::string describeFault(const SourceTree& tree) {
  const std::string_view text = tree.text();
  if (!tree.isWhole()) {
    const source::SyntaxFault& fault = *tree.fault();
    return "correct the text at " + describePlace(text, fault.offset) + ": " +
           std::string(fault.why);
  }
  const source::SourceNode& root = tree[SourceTree::kRoot];
  if (const std::size_t more = source::skipSpace(text, root.end); more != text.size()) {
    return "a document is one value; remove the text after it at " + describePlace(text, more);
  }
  return root.kind == source::SourceKind::kObject ? "" : "a document must be an object";
}

std::string adviseOn(const SourceTree& tree, const std::u16string& path,
                     const std::exception& failure) {
  const std::string fault = describeFault(tree);
  return fault.empty() ? command::adviseOnLoading(failure, path, &tree)
                       : fault + "; " + command::pointToLint(path, "more");
}

}  // namespace

std::string format(const std::u16string& path, const std::string& text, const Layout& layout) {
  const std::size_t begin = findBeginning(text);
  const SourceTree tree(text, begin);
  std::u16string record;
  try {
    record = input::recordLoad(path, text.substr(begin, findEnd(tree) - begin));
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& failure) {
    throw RejectedText(failure.what(), adviseOn(tree, path, failure));
  }
  std::string formatted = layOut(tree, layout);
  if (input::recordLoad(path, formatted) != record) {
    throw std::logic_error("the library would read something else from the reformatted text");
  }
  return formatted;
}

}  // namespace update_metadata_tool::fmt
