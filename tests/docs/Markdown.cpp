#include "docs/Markdown.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace test_support {
namespace {

constexpr std::string_view kFence = "```";

std::vector<std::string> splitLines(std::string_view page) {
  std::istringstream text{std::string(page)};
  std::vector<std::string> lines;
  for (std::string line; std::getline(text, line);) {
    lines.push_back(line);
  }
  return lines;
}

bool beginsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

std::string trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) {
    return "";
  }
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

// The target of the first link in a line.
std::string linkIn(std::string_view line) {
  const std::size_t begin = line.find("](");
  const std::size_t end = line.find(')', begin);
  return begin == std::string_view::npos || end == std::string_view::npos
             ? ""
             : std::string(line.substr(begin + 2, end - begin - 2));
}

// Splits a row at its bars. The row starts and ends with one.
std::vector<std::string> splitCells(std::string_view row) {
  std::vector<std::string> cells;
  row.remove_prefix(1);
  while (!row.empty()) {
    const std::size_t bar = std::min(row.find('|'), row.size());
    cells.push_back(trim(row.substr(0, bar)));
    row.remove_prefix(std::min(bar + 1, row.size()));
  }
  return cells;
}

}  // namespace

std::vector<CodeBlock> findCodeBlocks(std::string_view page) {
  std::vector<CodeBlock> blocks;
  std::string lastText;
  bool isInside = false;
  for (const std::string& line : splitLines(page)) {
    if (beginsWith(line, kFence)) {
      isInside = !isInside;
      if (isInside) {
        blocks.push_back({line.substr(kFence.size()), linkIn(lastText), ""});
      }
      lastText.clear();
    } else if (isInside) {
      blocks.back().text += line + '\n';
    } else if (!line.empty()) {
      lastText = line;
    }
  }
  return blocks;
}

std::vector<std::vector<std::string>> findTableRows(std::string_view page) {
  std::vector<std::vector<std::string>> rows;
  bool isBody = false;
  for (const std::string& line : splitLines(page)) {
    if (!beginsWith(line, "|")) {
      isBody = false;
    } else if (beginsWith(line, "|-")) {
      isBody = true;
    } else if (isBody) {
      rows.push_back(splitCells(line));
    }
  }
  return rows;
}

std::string codeIn(std::string_view cell) {
  const std::size_t begin = cell.find('`');
  const std::size_t end = cell.find('`', begin + 1);
  return begin == std::string_view::npos || end == std::string_view::npos
             ? ""
             : std::string(cell.substr(begin + 1, end - begin - 1));
}

std::string readProjectFile(const std::string& path) {
  std::ifstream file(std::string(UMP_SOURCE_DIR "/") + path, std::ios_base::binary);
  if (!file.is_open()) {
    throw std::runtime_error(path + " cannot be read");
  }
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

}  // namespace test_support
