#include "summary/Document.h"

#include <chrono>
#include <sstream>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "support/PlainDocument.h"
#include "support/TemporaryFolder.h"

namespace update_metadata_tool::summary {
namespace {

using terminal::ProgressLine;
using test_support::PlainDocument;
using test_support::TemporaryFolder;

TEST(ProductNameOfABaseCode, ComesFromTheProductData) {
  const TemporaryFolder folder;
  const Document document({folder.writeFile("update.json", PlainDocument().json()),
                           folder.writeFile("products.tsv", "\nED\tEditor\t1\t\n")});
  EXPECT_EQ(document.findProductName(u"ED"), u"Editor");
  EXPECT_EQ(document.findProductName(u"VI"), u"");
}

// --- progress -------------------------------------------------------------------------------

// A document with two products and one package with files.
PlainDocument makeDocumentInParts() {
  PlainDocument document;
  document.products["p"] = {{}, {"c"}};
  document.products["q"] = {{}, {"c"}};
  document.componentsWithFiles["c"]["k"] = {5, {"f"}};
  return document;
}

TEST(ProgressOfADocument, ShowsEachStep) {
  const TemporaryFolder folder;
  std::ostringstream err;
  ProgressLine::Clock::time_point time;
  // One second passes between two calls of the clock.
  ProgressLine progress(err, 80, [&time] { return time += std::chrono::seconds(1); });
  Document({folder.writeFile("update.json", makeDocumentInParts().json()), std::nullopt}, progress)
      .gatherContents();
  EXPECT_EQ(err.str(),
            "\r\x1B[Kreading the document, 1 s"
            "\r\x1B[Kstoring product 1, 2 s"
            "\r\x1B[Kstoring product 2, 3 s"
            "\r\x1B[Kstoring files to delete, 4 s"
            "\r\x1B[Kgathering the contents, 5 s"
            "\r\x1B[Kgathering the contents, 6 s"
            "\r\x1B[Kgathering the contents, 7 s"
            "\r\x1B[Kgathering the contents, 8 s");
}

TEST(ProgressOfADocument, AnnouncesALongTextBeforeItIsParsed) {
  std::string text = makeDocumentInParts().json();
  text.insert(text.size() - 1, ",\"unlisted\":\"" + std::string(std::size_t{32} << 20U, 'x') + '"');
  std::ostringstream err;
  ProgressLine progress(err, 80, [] { return ProgressLine::Clock::time_point(); });
  Document({u"update.json", std::nullopt, {}, false, text}, progress).gatherContents();
  EXPECT_EQ(err.str(), "\r\x1B[Kparsing 32.0 MiB");
}

TEST(ProgressOfADocument, IsRemovedBeforeAMessage) {
  std::ostringstream err;
  ProgressLine::Clock::time_point time;
  ProgressLine progress(err, 80, [&time] { return time += std::chrono::seconds(1); });
  EXPECT_EQ(readContents({u"no-such-file", std::nullopt}, err, progress), std::nullopt);
  EXPECT_EQ(err.str(),
            "\r\x1B[Kreading the document, 1 s\r\x1B[K"
            "Update MetaData Json file does not exist \n"
            "update-metadata: 'no-such-file' could not be loaded; check the path\n");
}

// --- failures -------------------------------------------------------------------------------

TEST(ReadingContents, ReportsTheLibrarysExceptionWithAdvice) {
  std::ostringstream err;
  EXPECT_EQ(readContents({u"no-such-file", std::nullopt}, err), std::nullopt);
  EXPECT_EQ(err.str(),
            "Update MetaData Json file does not exist \n"
            "update-metadata: 'no-such-file' could not be loaded; check the path\n");
}

TEST(ReadingContents, ReportsThatTheProductDataCannotBeRead) {
  const TemporaryFolder folder;
  PlainDocument document;
  document.products["p"] = {{}, {"c"}};
  const DocumentSource source = {folder.writeFile("update.json", document.json()),
                                 folder.writeFile("products.tsv", "\nx\n")};
  std::ostringstream err;
  EXPECT_EQ(readContents(source, err), std::nullopt);
  const std::string products = folder.nativePath("products.tsv");
  EXPECT_EQ(err.str(), products +
                           ":2: expected 4 tab-separated fields, found 1\nupdate-metadata: '" +
                           folder.nativePath("update.json") +
                           "' was loaded but could not be queried; check the product data at '" +
                           products + "'\n");
}

TEST(QueryingADocument, ReportsWhatTheQueryThrows) {
  const TemporaryFolder folder;
  const DocumentSource source = {folder.writeFile("update.json", PlainDocument().json()),
                                 std::nullopt};
  std::ostringstream err;
  EXPECT_FALSE(queryDocument(
      source, [](const Document&) { throw std::runtime_error("no answer"); }, err));
  EXPECT_EQ(err.str(), "no answer\nupdate-metadata: '" + folder.nativePath("update.json") +
                           "' was loaded but could not be queried; see the reason above\n");
}

}  // namespace
}  // namespace update_metadata_tool::summary
