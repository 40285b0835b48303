#include "summary/SummaryText.h"

#include <algorithm>
#include <ostream>

#include "DisplayWidth.h"
#include "ReadableSize.h"
#include "Text.h"
#include "summary/DoubtfulSizes.h"

namespace update_metadata_tool {

std::string count(std::size_t number, const std::string& thing) {
  return std::to_string(number) + ' ' + thing + (number == 1 ? "" : "s");
}

std::string toMarkedSize(std::int64_t bytes) {
  return (isDoubtful(bytes) ? kDoubtMark : "") + toShortSize(bytes);
}

void writeReleases(const Contents& contents, std::size_t width, std::ostream& out) {
  constexpr std::size_t kIndent = 2;
  const std::string target = describeRelease(contents.target) + ", update level " +
                             std::to_string(contents.targetUpdateLevel);
  out << wrap("Base release:   " + describeRelease(contents.base), width, kIndent) << '\n'
      << wrap("Target release: " + target, width, kIndent) << '\n'
      << wrap("Architecture:   " + toVisible(contents.architecture), width, kIndent) << '\n';
}

void writeLine(const std::string& line, std::size_t width, std::ostream& out) {
  constexpr std::size_t kIndent = 4;
  const std::size_t blanks = std::min(line.find_first_not_of(' '), line.size());
  out << wrap(line, width, blanks + kIndent) << '\n';
}

void writeNote(const std::string& note, std::size_t width, std::ostream& out) {
  out << '\n' << wrap("Note: " + note, width, 0) << '\n';
}

}  // namespace update_metadata_tool
