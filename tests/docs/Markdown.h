#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace test_support {

/// A block of code between two fences.
struct CodeBlock {
  std::string language;    ///< the word after the opening fence
  std::string sourceFile;  ///< the link in the line of text above; may be empty
  std::string text;        ///< with its final line feed
};

/// Returns the fenced code blocks of a page in order.
std::vector<CodeBlock> findCodeBlocks(std::string_view page);

/// Returns the rows of all tables of a page, each as trimmed cells, without the header rows.
std::vector<std::vector<std::string>> findTableRows(std::string_view page);

/// Returns the text between the first pair of backticks in a cell; empty if there is none.
std::string codeIn(std::string_view cell);

/// Returns the whole content of a project file, named relative to the project root.
///
/// Throws std::runtime_error if it cannot be read.
std::string readProjectFile(const std::string& path);

}  // namespace test_support
