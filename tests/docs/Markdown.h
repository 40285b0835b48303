#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace test_support {

/// A block of code between two fences.
struct CodeBlock {
  std::string language;    ///< what stands behind the first fence
  std::string sourceFile;  ///< the target of the link in the last line of text above; may be empty
  std::string text;        ///< with its final line feed
};

/// The fenced blocks of a page, in their order.
std::vector<CodeBlock> findCodeBlocks(std::string_view page);

/// The rows of all tables of a page, each with its trimmed cells. Heads are left out.
std::vector<std::vector<std::string>> findTableRows(std::string_view page);

/// What a cell holds between its first pair of backticks; empty if it has none.
std::string codeIn(std::string_view cell);

/// The whole content of a file of this project, named from its root.
///
/// Throws std::runtime_error if it cannot be read.
std::string readProjectFile(const std::string& path);

}  // namespace test_support
