#include "summary/SummaryText.h"

#include <algorithm>
#include <ostream>

#include "output/ReadableSize.h"
#include "output/Text.h"
#include "summary/DoubtfulSizes.h"
#include "terminal/FlowingLine.h"

namespace update_metadata_tool::summary {
namespace {

using output::toVisibleName;
using terminal::FlowingLine;

void addRelease(const Release& release, FlowingLine& line) {
  if (release.family.empty() && release.version.empty()) {
    line.words("none");
  } else {
    line.name(toVisibleName(release.family))
        .words(", version ")
        .name(toVisibleName(release.version));
  }
}

}  // namespace

std::string count(std::size_t number, const std::string& thing) {
  return std::to_string(number) + ' ' + thing + (number == 1 ? "" : "s");
}

std::string describeProduct(const std::u16string& name,
                            const std::optional<std::u16string>& baseCode) {
  const std::string code = baseCode ? " (" + toVisibleName(*baseCode) + ')' : "";
  return toVisibleName(name) + code;
}

std::string toMarkedSize(std::int64_t bytes) {
  return (isDoubtful(bytes) ? kDoubtMark : "") + output::toShortSize(bytes);
}

void writeReleases(const Contents& contents, std::size_t width, std::ostream& out) {
  constexpr std::size_t kIndent = 2;
  FlowingLine base(width, kIndent);
  base.words("Base release:   ");
  addRelease(contents.base, base);
  FlowingLine target(width, kIndent);
  target.words("Target release: ");
  addRelease(contents.target, target);
  target.words(", update level " + std::to_string(contents.targetUpdateLevel));
  FlowingLine architecture(width, kIndent);
  architecture.words("Architecture:   ").name(toVisibleName(contents.architecture));
  out << base << '\n' << target << '\n' << architecture << '\n';
}

FlowingLine beginLine(const std::string& words, std::size_t width) {
  constexpr std::size_t kIndent = 4;
  const std::size_t blanks = std::min(words.find_first_not_of(' '), words.size());
  return FlowingLine(width, blanks + kIndent).words(words);
}

FlowingLine beginNote(const std::string& words, std::size_t width) {
  return FlowingLine(width, 0).words("Note: " + words);
}

void writeLine(const std::string& words, std::size_t width, std::ostream& out) {
  out << beginLine(words, width) << '\n';
}

void writeNote(const std::string& words, std::size_t width, std::ostream& out) {
  out << '\n' << beginNote(words, width) << '\n';
}

}  // namespace update_metadata_tool::summary
