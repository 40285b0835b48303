#include "install/update_metadata_parser/Limits.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "support/Failure.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using test_support::failureOf;
using test_support::TemporaryFolder;

constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();

// The first product names 8 packages, one of its components twice; the second names 3. 5 files.
const std::string kDocument =
    R"({"metadata":{"arch":"x","target":null,"base":null},)"
    R"("components":{"a":{"delete":{"p":{"size":1},"q":{"size":2}},)"
    R"("extract":{"p":{"size":3,"uncompressedBytes":4}}},"b":{"delete":{},)"
    R"("extract":{"r":{"size":5,"uncompressedBytes":6},"s":{"size":7,"uncompressedBytes":8}}}},)"
    R"("products":{"1":{"delete":["a","a","none"],"extract":["a","a","b"]},)"
    R"("2":{"delete":["b"],"extract":["a","b"]}},)"
    R"("componentsWithFilesDeleted":{"a":{"p":{"size":1,"files":["/x","/y","/x"]},)"
    R"("q":{"size":1,"files":["/z","/x"]},"t":{"size":1,"files":[]}}}})";

struct Case {
  const char* name;
  std::uint64_t bytes;
  std::uint64_t packages;
  std::uint64_t files;
  std::uint64_t keyUnits;
  std::string failure;
};

void PrintTo(const Case& row, std::ostream* stream) {
  *stream << row.name;
}

class LimitsOfADocument : public ::testing::TestWithParam<Case> {
 protected:
  static Limits limits() {
    return {GetParam().bytes, GetParam().packages, GetParam().files, GetParam().keyUnits};
  }

  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", kDocument);
};

TEST_P(LimitsOfADocument, RejectWhatExceedsThem) {
  EXPECT_EQ(failureOf([&] { LimitedParser(path, limits()).parseUpdateMetaDataJson(); }),
            GetParam().failure);
}

const std::uint64_t kBytes = kDocument.size();
const std::string kTooLong = "std::runtime_error: Update MetaData Json file has more than ";
const std::string kTooManyPackages =
    "std::runtime_error: Update MetaData Json file names more than ";
const std::string kTooManyFiles = "std::runtime_error: Update MetaData Json file lists more than ";

// Each of the 11 packages and of the 3 with files has a key of three units.
const Case kCases[] = {
    {"Enough", kMost, kMost, kMost, kMost, "nothing"},
    {"ExactlyEnough", kBytes, 11, 5, 42, "nothing"},
    {"OneByteTooFew", kBytes - 1, 11, 5, 42, kTooLong + std::to_string(kBytes - 1) + " bytes"},
    {"NoByte", 0, 11, 5, 42, kTooLong + "0 bytes"},
    {"OnePackageTooFew", kBytes, 10, 5, 42, kTooManyPackages + "10 packages"},
    {"TheFirstProductTooLarge", kBytes, 7, 5, 42, kTooManyPackages + "7 packages"},
    {"NoPackage", kBytes, 0, 5, 42, kTooManyPackages + "0 packages"},
    {"OneFileTooFew", kBytes, 11, 4, 42, kTooManyFiles + "4 files to delete"},
    {"NoFile", kBytes, 11, 0, 42, kTooManyFiles + "0 files to delete"},
    {"OneUnitOfAKeyTooFew", kBytes, 11, 5, 41, kTooLong + "41 characters in keys"},
    {"KeysOfTheProductsTooLong", kBytes, 11, 5, 32, kTooLong + "32 characters in keys"},
    {"NoUnitOfAKey", kBytes, 11, 5, 0, kTooLong + "0 characters in keys"},
};

INSTANTIATE_TEST_SUITE_P(Document, LimitsOfADocument, ::testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.name; });

TEST(LimitedParser, GivesTheAnswersOfAnUnlimitedOne) {
  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", kDocument);
  const auto limited = LimitedParser(path).parseUpdateMetaDataJson();
  const auto unlimited = UpdateMetaDataJsonParser(path).parseUpdateMetaDataJson();
  EXPECT_EQ(limited->getUpdateSizeForComponentsToExtract(),
            unlimited->getUpdateSizeForComponentsToExtract());
  EXPECT_EQ(limited->getComponentsWithFilesToDelete(), unlimited->getComponentsWithFilesToDelete());
}

TEST(LimitedParser, FailsAsAnUnlimitedOneWhereThereIsNoFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(failureOf([&] { LimitedParser(folder.path("none")).parseUpdateMetaDataJson(); }),
            "std::runtime_error: Update MetaData Json file does not exist ");
}

TEST(LimitedParser, CountsEachLoadByItself) {
  const TemporaryFolder folder;
  LimitedParser parser(folder.writeFile("document.json", kDocument), {kBytes, 11, 5, 42});
  parser.parseUpdateMetaDataJson();
  EXPECT_EQ(failureOf([&] { parser.parseUpdateMetaDataJson(); }), "nothing");
}

TEST(LimitedHandler, AddsNothingOfAProductThatItRejects) {
  const LimitedHandler handler({kMost, 2, kMost, 6});
  const UpdateMetaDataHandler::PkgsToDelete pkgs = {{u"a", {{u"p", 1}, {u"q", 2}}}};
  EXPECT_THROW(handler.setProductDeltaData(u"1", {u"a", u"a"}, {}, pkgs, {}), std::runtime_error);
  EXPECT_TRUE(handler.getProductUpdateMetaDataModel()->getProductsDeltaData().empty());
  handler.setProductDeltaData(u"1", {u"a"}, {}, pkgs, {});
  EXPECT_EQ(handler.getProductUpdateMetaDataModel()->getProductsDeltaData().size(), 1u);
}

}  // namespace
}  // namespace install::update_metadata_parser
