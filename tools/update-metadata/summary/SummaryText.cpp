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

constexpr std::size_t kIndentOfReleases = 2;

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

std::string describeProduct(const std::u16string& name,
                            const std::optional<std::u16string>& baseCode) {
  const std::string code = baseCode ? " (" + toVisibleName(*baseCode) + ')' : "";
  return toVisibleName(name) + code;
}

std::string toMarkedSize(std::int64_t bytes) {
  return (isDoubtful(bytes) ? kDoubtMark : "") + output::toShortSize(bytes);
}

void writeReleases(const Release& base, const Release& target, int updateLevel, std::size_t width,
                   std::ostream& out) {
  FlowingLine from(width, kIndentOfReleases);
  addRelease(base, from.words("Base release:   "));
  FlowingLine to(width, kIndentOfReleases);
  addRelease(target, to.words("Target release: "));
  to.words(", update level " + std::to_string(updateLevel));
  out << from << '\n' << to << '\n';
}

void writeReleases(const Contents& contents, std::size_t width, std::ostream& out) {
  writeReleases(contents.base, contents.target, contents.targetUpdateLevel, width, out);
  FlowingLine architecture(width, kIndentOfReleases);
  architecture.words("Architecture:   ").name(output::toVisibleName(contents.architecture));
  out << architecture << '\n';
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
