// Makes each allocation of a query fail in turn, first alone and then with every later one. The
// query must throw the promised exception, release all memory, leave earlier results as they were
// and succeed when it is tried again.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "faults/AllocationFaults.h"
#include "faults/Documents.h"
#include "faults/Outcome.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "support/FailingAllocation.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using test_support::liveBlocks;
using test_support::richDocument;
using test_support::TemporaryFolder;
using test_support::Trial;
using test_support::tryWithoutMemory;

constexpr const char* kCatalogue =
    "code\tname\tnumber\tcontrolling product\n"
    "a base code that is long\tproduct 0-0 verbatim\t1\ta controlling product\n"
    "another long base code\tproduct 3-2 \xC3\xA4 \xF0\x9F\x98\x80 beyond ASCII\t2\t\n";

/// A loaded document whose catalogue is opened again for each query.
class LoadedDocument : public ::testing::Test {
 protected:
  LoadedDocument()
      : location_(folder_.path("catalogue")),
        parser_(folder_.writeFile("document.json", richDocument())) {
    folder_.writeFile("catalogue/products.tsv", kCatalogue);
    facade_ = parser_.parseUpdateMetaDataJson();
    handler_ = std::dynamic_pointer_cast<ReopeningHandler>(parser_.handler);
    dump_ = dumpOf(*handler_);
  }

  /// Makes each allocation of a query fail in turn; repeated, the query is answered in full.
  template <class Question>
  void failEach(Question question) {
    const auto answer = question();
    handler_->closeCatalogue();
    const std::size_t before = liveBlocks();
    std::optional<std::decay_t<decltype(answer)>> given;
    const auto ask = [&] { given.emplace(question()); };
    points += tryWithoutMemory(ask, [&](const Trial& trial) {
      if (trial.outcome.isWell()) {
        ASSERT_TRUE(given == answer) << trial.nth;
      } else {
        ASSERT_TRUE(trial.reached);
        ASSERT_TRUE(isPromised(trial.outcome.text())) << trial.nth << ": " << trial.outcome.text();
        handler_->closeCatalogue();
        ASSERT_EQ(liveBlocks(), before) << "memory is lost at " << trial.nth;
      }
      ASSERT_EQ(dumpOf(*handler_), dump_) << trial.nth;
      ASSERT_TRUE(question() == answer) << trial.nth;
      given.reset();
      handler_->closeCatalogue();
    });
  }

  const TemporaryFolder folder_;
  const std::u16string location_;
  WatchedParser parser_;
  std::shared_ptr<UpdateMetaData> facade_;
  std::shared_ptr<ReopeningHandler> handler_;

 private:
  bool isPromised(const std::string& failure) const {
    return failure == kExhaustion ||
           failure == "std::runtime_error: " + folder_.nativePath("catalogue/products.tsv") +
                          ": cannot be opened";
  }

  std::string dump_;
};

TEST_F(LoadedDocument, AnswersOrThrowsWhenAskedForThePackagesToExtract) {
  failEach([&] { return facade_->getComponentsToExtract(location_); });
  failEach([&] { return facade_->getComponentsToExtract(u"another long base code", location_); });
}

TEST_F(LoadedDocument, AnswersOrThrowsWhenAskedForThePackagesToDelete) {
  failEach([&] { return facade_->getComponentsToDelete(location_); });
  failEach([&] { return facade_->getComponentsToDelete(u"another long base code", location_); });
}

TEST_F(LoadedDocument, AnswersOrThrowsWhenAskedForTheFilesToDelete) {
  failEach([&] { return facade_->getComponentsWithFilesToDelete(); });
}

TEST_F(LoadedDocument, AnswersOrThrowsWhenAskedForThePackageSizes) {
  failEach([&] { return facade_->getUpdateSizeForComponentsToExtract(); });
}

TEST_F(LoadedDocument, AnswersOrThrowsWhenAskedForTheReleases) {
  failEach([&] { return facade_->getBaseReleaseFamily(); });
  failEach([&] { return facade_->getBaseReleaseVersion(); });
  failEach([&] { return facade_->getTargetReleaseFamily(); });
  failEach([&] { return facade_->getTargetReleaseVersion(); });
  failEach([&] { return facade_->getTargetUpdateLevelForQorv(); });
}

TEST_F(LoadedDocument, ReturnsFacadesOrThrows) {
  const std::size_t before = liveBlocks();
  std::shared_ptr<UpdateMetaData> copy;
  const auto copyFacade = [&] { copy = std::make_shared<UpdateMetaData>(*facade_); };
  points += tryWithoutMemory(copyFacade, [&](const Trial& trial) {
    copy.reset();
    EXPECT_EQ(trial.outcome.text(), trial.reached ? kExhaustion : kWell);
    EXPECT_EQ(liveBlocks(), before);
  });
}

TEST_F(LoadedDocument, ReportsAnUnusableCatalogueOrThrows) {
  const struct {
    const char* table;
    const char* reason;
  } rows[] = {
      {"header\n\ncode\tname\t1\t\n", ":2: empty line"},
      {"header\na long base code\n", ":2: expected 4 tab-separated fields, found 1"},
      {"header\na long base code\ta long name\t1x\t\n",
       ":2: '1x' is not an unsigned 32-bit number"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.reason);
    folder_.writeFile("catalogue/products.tsv", row.table);
    const std::string table = "std::runtime_error: " + folder_.nativePath("catalogue/products.tsv");
    const std::size_t before = liveBlocks();
    const auto ask = [&] { facade_->getComponentsToDelete(location_); };
    points += tryWithoutMemory(ask, [&](const Trial& trial) {
      ASSERT_EQ(liveBlocks(), before) << trial.nth;
      const std::string failure = trial.outcome.text();
      ASSERT_TRUE(
          failure == table + row.reason ||
          (trial.reached && (failure == kExhaustion || failure == table + ": cannot be opened")))
          << trial.nth << ": " << failure;
    });
  }
}

}  // namespace
}  // namespace install::update_metadata_parser
