// Makes each allocation fail in turn, first alone and then with every later one. Each load and each
// query must throw the promised exception, release all memory, leave earlier results as they were
// and succeed when it is tried again.
//
// One source for three programs: with operator new failing, with malloc() failing, and with
// malloc() failing beneath the shared library.

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "faults/Documents.h"
#include "faults/Outcome.h"
#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "mf/zero/elements/Messages.h"
#include "support/FailingAllocation.h"
#include "support/ModelDump.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::ProductUpdateMetaData;
using test_support::allocations;
using test_support::dump;
using test_support::failAt;
using test_support::FailingDocument;
using test_support::failingDocuments;
using test_support::kParseFailure;
using test_support::kShortages;
using test_support::liveBlocks;
using test_support::MemoryLimit;
using test_support::Outcome;
using test_support::outcomeOf;
using test_support::richDocument;
using test_support::Shortage;
using test_support::TemporaryFolder;
using test_support::Trial;

const std::string kWell = "nothing";
const std::string kExhaustion = "std::bad_alloc: std::bad_alloc";
const std::string kUnopened = "std::runtime_error: Error opening Update MetaData Json File";

constexpr std::size_t kFewestPoints = 10'000;

// How many allocations have failed in this program.
std::size_t points = 0;

// Prints their number when all tests have run, and checks that it is as large as required.
class PointCount : public ::testing::Environment {
 public:
  void TearDown() override {
    std::cout << "allocations that have failed: " << points << '\n';
    if (GTEST_FLAG_GET(filter) == "*") {
      EXPECT_GE(points, kFewestPoints);
    }
  }
};

const auto* const pointCount = ::testing::AddGlobalTestEnvironment(new PointCount);

/// The elements that a load has put below the root.
struct Tree {
  std::vector<std::string> products;
  std::vector<std::string> components;
};

Tree treeOf(const UpdateMetaDataHandler& handler) {
  const ProductUpdateMetaData root = handler.getProductUpdateMetaDataModel();
  Tree tree;
  const auto& products = root->getProductsDeltaData();
  for (std::size_t place = 0; place < products.size(); ++place) {
    tree.products.push_back(dump(products[place]));
  }
  const auto& components = root->getCompsWithFilesToDelete();
  for (std::size_t place = 0; place < components.size(); ++place) {
    tree.components.push_back(dump(components[place]));
  }
  return tree;
}

bool isPrefixOf(const std::vector<std::string>& part, const std::vector<std::string>& whole) {
  return part.size() <= whole.size() && std::equal(part.begin(), part.end(), whole.begin());
}

/// Tells whether `part` is what an interrupted load leaves of `whole`: each element is complete,
/// and elements are made in order.
bool isPrefixOf(const Tree& part, const Tree& whole) {
  return isPrefixOf(part.products, whole.products) &&
         isPrefixOf(part.components, whole.components) &&
         (part.components.empty() || part.products.size() == whole.products.size());
}

std::string dumpOf(const UpdateMetaDataHandler& handler) {
  return dump(handler.getProductUpdateMetaDataModel());
}

/// A handler whose catalogue can be closed.
class ReopeningHandler : public UpdateMetaDataHandler {
 public:
  void closeCatalogue() { productDataProvider.reset(); }
};

/// A parser that reports how far it has come.
class WatchedParser : public UpdateMetaDataJsonParser {
 public:
  enum class Stage { kSettingUp, kReading, kTaking };

  using UpdateMetaDataJsonParser::handler;
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;

  Stage stage() const { return stage_; }

  std::string readFile(const std::u16string& path) override {
    stage_ = Stage::kReading;
    std::string text = UpdateMetaDataJsonParser::readFile(path);
    stage_ = Stage::kTaking;
    return text;
  }

  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    return std::make_shared<ReopeningHandler>();
  }

 private:
  Stage stage_ = Stage::kSettingUp;
};

/// A document, and the outcome of loading it when there is enough memory.
class Document {
 public:
  Document(std::u16string path, std::string failure)
      : path_(std::move(path)), failure_(std::move(failure)) {
    const std::size_t before = allocations();
    WatchedParser stepwise(path_);
    beforeSetUp_ = allocations() - before;
    stepwise.setupUpdateMetaDataHandler();
    const std::shared_ptr<UpdateMetaData> facade = stepwise.setupUpdateMetaData();
    outcomeOf([&] { stepwise.getJsonObjFromFile(path_); });
    beforeSections_ = allocations() - before - beforeSetUp_;

    WatchedParser parser(path_);
    outcome_ = outcomeOf([&] { parser.parseUpdateMetaDataJson(); });
    if (parser.handler) {
      tree_ = treeOf(*parser.handler);
      dump_ = dumpOf(*parser.handler);
    }
  }

  /// Makes each allocation of a load fail in turn.
  void failEach(Shortage shortage) const {
    ASSERT_EQ(outcome_.text().substr(0, failure_.size()), failure_);
    for (std::size_t nth = 0;; ++nth) {
      SCOPED_TRACE(nth);
      const std::size_t before = liveBlocks();
      const bool reached = failAllocation(nth, shortage);
      ASSERT_FALSE(::testing::Test::HasFailure());
      ASSERT_EQ(liveBlocks(), before) << "memory is lost";
      if (!reached) {
        return;
      }
      ++points;
    }
  }

 private:
  bool failAllocation(std::size_t nth, Shortage shortage) const {
    std::optional<WatchedParser> parser;
    std::shared_ptr<UpdateMetaData> facade;
    parser.emplace(path_);
    const Trial trial = failAt(nth, shortage, [&] { facade = parser->parseUpdateMetaDataJson(); });
    if (trial.reached) {
      expectFailure(trial.outcome, parser->stage(), nth, shortage);
      if (parser->handler) {
        EXPECT_TRUE(isPrefixOf(treeOf(*parser->handler), tree_));
      }
    }
    if (!trial.reached || trial.outcome.isWell()) {
      EXPECT_EQ(trial.outcome.text(), outcome_.text());
      EXPECT_EQ(dumpOf(*parser->handler), dump_);
    }

    const Outcome again = outcomeOf([&] { facade = parser->parseUpdateMetaDataJson(); });
    EXPECT_EQ(again.text(), outcome_.text());
    if (parser->handler) {
      EXPECT_EQ(dumpOf(*parser->handler), dump_);
    }

    const std::size_t before = allocations();
    {
      const MemoryLimit none(0);
      facade.reset();
      parser.reset();
    }
    EXPECT_EQ(allocations(), before) << "destruction asks for memory";
    return trial.reached;
  }

  void expectFailure(const Outcome& outcome, WatchedParser::Stage stage, std::size_t nth,
                     Shortage shortage) const {
    const std::string text = outcome.text();
    if (text == outcome_.text()) {
      return;  // the load manages without this allocation
    }
    switch (stage) {
      case WatchedParser::Stage::kSettingUp:
        EXPECT_EQ(text, kExhaustion);
        break;
      case WatchedParser::Stage::kReading:
        // When the system itself opens a file, lack of memory is a failure like any other.
        EXPECT_TRUE(text == kExhaustion || text == kUnopened) << text;
        break;
      case WatchedParser::Stage::kTaking: {
        const bool isParsing = nth < beforeSections_;
        const bool canTell = shortage == Shortage::kOnce && outcome_.isWell();
        const bool isParseFailure = text.rfind(kParseFailure, 0) == 0;
        EXPECT_TRUE((isParsing && isParseFailure) ||
                    (!(isParsing && canTell) && text == kExhaustion))
            << text << (isParsing ? " while parsing" : " while taking sections");
        break;
      }
    }
  }

  std::u16string path_;
  std::string failure_;
  std::size_t beforeSetUp_ = 0;
  std::size_t beforeSections_ = 0;
  Outcome outcome_;
  Tree tree_;
  std::string dump_;
};

TEST(ParserConstructor, ThrowsWhenMemoryRunsOut) {
  const std::u16string path = u"a path that does not fit into the string object itself";
  const std::size_t before = liveBlocks();
  for (const Shortage shortage : kShortages) {
    std::size_t nth = 0;
    for (;; ++nth) {
      const Trial trial =
          failAt(nth, shortage, [&] { const UpdateMetaDataJsonParser parser(path); });
      if (!trial.reached) {
        break;
      }
      ++points;
      EXPECT_EQ(trial.outcome.text(), kExhaustion);
      EXPECT_EQ(liveBlocks(), before);
    }
    EXPECT_EQ(nth, 1U);
  }
}

TEST(Load, OfARichDocumentFailsAsPromisedWhicheverAllocationFails) {
  const TemporaryFolder folder;
  const Document document(folder.writeFile("document.json", richDocument()), kWell);
  for (const Shortage shortage : kShortages) {
    document.failEach(shortage);
  }
}

TEST(Load, OfEachFailingDocumentFailsAsPromisedWhicheverAllocationFails) {
  constexpr std::size_t kFewestDocuments = 60;
  const std::vector<FailingDocument> documents = failingDocuments();
  EXPECT_GE(documents.size(), kFewestDocuments);
  std::cout << "documents that cannot be loaded: " << documents.size() << '\n';
  for (const FailingDocument& failing : documents) {
    SCOPED_TRACE(failing.name);
    const TemporaryFolder folder;
    const std::string suffix =
        failing.failure == kParseFailure ? folder.nativePath("document.json") : "";
    const Document document(folder.writeFile("document.json", failing.text),
                            failing.failure + suffix);
    for (const Shortage shortage : kShortages) {
      document.failEach(shortage);
    }
    if (HasFailure()) {
      return;
    }
  }
}

TEST(Load, OfAFileThatCannotBeReadFailsAsPromisedWhicheverAllocationFails) {
  const TemporaryFolder folder;
  const Document documents[] = {
      {folder.path("a document that is missing.json"),
       "std::runtime_error: Update MetaData Json file does not exist "},
      {folder.makeFolder("a folder.json"), kUnopened},
      // The file begins at address 0, where nothing is mapped.
      {u"/proc/self/mem", "std::ios_base::failure: "},
  };
  for (const Document& document : documents) {
    for (const Shortage shortage : kShortages) {
      document.failEach(shortage);
    }
  }
}

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
    handler_->closeCatalogue();
    const auto answer = question();
    for (const Shortage shortage : kShortages) {
      for (std::size_t nth = 0;; ++nth) {
        handler_->closeCatalogue();
        const std::size_t before = liveBlocks();
        std::optional<std::decay_t<decltype(answer)>> given;
        const Trial trial = failAt(nth, shortage, [&] { given.emplace(question()); });
        if (trial.outcome.isWell()) {
          ASSERT_TRUE(given == answer) << nth;
        } else {
          ASSERT_TRUE(trial.reached);
          ASSERT_TRUE(isPromised(trial.outcome.text())) << nth << ": " << trial.outcome.text();
          handler_->closeCatalogue();
          ASSERT_EQ(liveBlocks(), before) << "memory is lost at " << nth;
        }
        ASSERT_EQ(dumpOf(*handler_), dump_) << nth;
        ASSERT_TRUE(question() == answer) << nth;
        if (!trial.reached) {
          break;
        }
        ++points;
      }
    }
    handler_->closeCatalogue();
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
  for (const Shortage shortage : kShortages) {
    for (std::size_t nth = 0;; ++nth) {
      std::shared_ptr<UpdateMetaData> copy;
      const Trial trial =
          failAt(nth, shortage, [&] { copy = std::make_shared<UpdateMetaData>(*facade_); });
      if (!trial.reached) {
        break;
      }
      ++points;
      EXPECT_EQ(trial.outcome.text(), kExhaustion);
      EXPECT_EQ(liveBlocks(), before);
    }
  }
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
    for (const Shortage shortage : kShortages) {
      for (std::size_t nth = 0;; ++nth) {
        const std::size_t before = liveBlocks();
        const Trial trial =
            failAt(nth, shortage, [&] { facade_->getComponentsToDelete(location_); });
        ASSERT_EQ(liveBlocks(), before) << nth;
        const std::string failure = trial.outcome.text();
        if (!trial.reached) {
          EXPECT_EQ(failure, table + row.reason);
          break;
        }
        ++points;
        ASSERT_TRUE(failure == kExhaustion || failure == table + row.reason ||
                    failure == table + ": cannot be opened")
            << nth << ": " << failure;
      }
    }
  }
}

TEST(FrameworkMessage, IsReportedUnlessMemoryRunsOut) {
  const std::function<void()> reports[] = {
      [] { mf::zero::reportException(mf::zero::IncompatibleModels{u"a class with a long name"}); },
      [] {
        mf::zero::reportException(
            mf::zero::CannotCastIncompatibleTypes{u"a class with a long name"});
      },
  };
  for (const auto& report : reports) {
    const std::string expected = outcomeOf(report).text();
    for (const Shortage shortage : kShortages) {
      for (std::size_t nth = 0;; ++nth) {
        const std::size_t before = liveBlocks();
        const Trial trial = failAt(nth, shortage, report);
        ASSERT_EQ(liveBlocks(), before);
        const std::string failure = trial.outcome.text();
        ASSERT_TRUE(failure == expected || (trial.reached && failure == kExhaustion)) << failure;
        if (!trial.reached) {
          break;
        }
        ++points;
      }
    }
  }
}

}  // namespace
}  // namespace install::update_metadata_parser
