// Whole reports on documents, compared with the expected reports beside them.

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fl/i18n.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "support/Failure.h"
#include "support/ModelDump.h"
#include "support/RecordingParser.h"
#include "support/StoredText.h"
#include "support/VisibleText.h"

namespace {

namespace fs = std::filesystem;
using install::update_metadata_parser::UpdateMetaData;
using test_support::TextParser;
using test_support::visible;

std::string readWhole(const fs::path& path) {
  std::ifstream stream(path, std::ios_base::binary);
  return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

/// The base codes of a catalogue, each once, in the order of the table.
std::vector<std::u16string> baseCodesIn(const fs::path& catalogue) {
  std::vector<std::u16string> codes;
  std::ifstream table(catalogue / "products.tsv");
  std::string line;
  std::getline(table, line);
  while (std::getline(table, line)) {
    std::u16string code = fl::i18n::utf8_to_ustring(line.substr(0, line.find('\t')));
    if (std::find(codes.begin(), codes.end(), code) == codes.end()) {
      codes.push_back(std::move(code));
    }
  }
  return codes;
}

/// Writes a report line by line, indented by two blanks per level and wrapped.
class Report {
 public:
  void line(int level, const std::string& content) {
    constexpr std::size_t kWidth = 100;
    const std::string indentation(static_cast<std::size_t>(level) * 2, ' ');
    std::string rest = indentation + content;
    while (rest.size() > kWidth) {
      // A long line breaks after a comma and continues two levels deeper.
      std::size_t end = rest.rfind(", ", kWidth - 1);
      if (end == std::string::npos || end <= indentation.size() + 4) {
        end = rest.find(", ", kWidth);
      }
      if (end == std::string::npos) {
        break;
      }
      text_ += rest.substr(0, end + 1) + '\n';
      rest = indentation + "    " + rest.substr(end + 2);
    }
    text_ += rest + '\n';
  }

  /// Adds a text, indented by one level.
  void block(const std::string& lines) {
    std::istringstream in(lines);
    for (std::string content; std::getline(in, content);) {
      text_ += "  " + content + '\n';
    }
  }

  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

std::string listed(const std::set<std::u16string>& texts) {
  std::string result;
  for (const std::u16string& text : texts) {
    result += (result.empty() ? "" : ", ") + visible(text);
  }
  return result.empty() ? "none" : result;
}

void reportByBaseCode(Report& report, const std::string& title,
                      const std::map<std::u16string, std::set<std::u16string>>& answer) {
  report.line(1, title + (answer.empty() ? ": none" : ""));
  for (const auto& [baseCode, keys] : answer) {
    report.line(2, visible(baseCode) + ": " + listed(keys));
  }
}

void reportAnswers(Report& report, const UpdateMetaData& facade, const fs::path& catalogue) {
  const std::u16string location = catalogue.u16string();
  report.line(0, "answers");
  report.line(1, "base: family " + visible(facade.getBaseReleaseFamily()) + ", version " +
                     visible(facade.getBaseReleaseVersion()));
  report.line(1, "target: family " + visible(facade.getTargetReleaseFamily()) + ", version " +
                     visible(facade.getTargetReleaseVersion()) + ", level " +
                     std::to_string(facade.getTargetUpdateLevelForQorv()));

  reportByBaseCode(report, "to delete", facade.getComponentsToDelete(location));
  reportByBaseCode(report, "to extract", facade.getComponentsToExtract(location));
  for (const std::u16string& code : baseCodesIn(catalogue)) {
    report.line(1, "of " + visible(code));
    report.line(2, "to delete: " + listed(facade.getComponentsToDelete(code, location)));
    report.line(2, "to extract: " + listed(facade.getComponentsToExtract(code, location)));
  }

  const auto sizes = facade.getUpdateSizeForComponentsToExtract();
  report.line(1, sizes.empty() ? "sizes: none" : "sizes");
  for (const auto& [key, bytes] : sizes) {
    report.line(2, visible(key) + ": " + std::to_string(bytes.first) + ", unpacked " +
                       std::to_string(bytes.second));
  }

  const auto packages = facade.getComponentsWithFilesToDelete();
  report.line(1, packages.empty() ? "files to delete: none" : "files to delete");
  for (const auto& [key, pkg] : packages) {
    report.line(2,
                visible(key) + ", size " + std::to_string(pkg.second) + ": " + listed(pkg.first));
  }
}

/// Everything that can be observed of one document.
std::string reportOn(const fs::path& folder) {
  TextParser parser(readWhole(folder / "document.json"));
  std::shared_ptr<UpdateMetaData> facade;
  const std::string failure =
      test_support::failureOf([&] { facade = parser.parseUpdateMetaDataJson(); });
  Report report;
  report.line(0, "calls");
  for (const std::string& call : parser.takeCalls()) {
    report.line(1, call);
  }
  report.line(0, "failure");
  report.line(1, failure);
  report.line(0, "model");
  report.block(test_support::dump(parser.handler->getProductUpdateMetaDataModel()));
  if (facade) {
    reportAnswers(report, *facade, folder / "catalogue");
  }
  return report.text();
}

std::vector<std::string> caseNames() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(UMP_SOURCE_DIR "/tests/golden/cases")) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

class GoldenDocument : public ::testing::TestWithParam<std::string> {};

TEST_P(GoldenDocument, IsReportedAsItsExpectationSays) {
  const fs::path folder = fs::path(UMP_SOURCE_DIR) / "tests" / "golden" / "cases" / GetParam();
  ASSERT_TRUE(fs::exists(folder / "document.json"));
  const std::string report = reportOn(folder);
  EXPECT_EQ(report, test_support::storedText(folder / "expected.txt", report));
}

INSTANTIATE_TEST_SUITE_P(Cases, GoldenDocument, ::testing::ValuesIn(caseNames()),
                         [](const auto& row) { return row.param; });

}  // namespace
