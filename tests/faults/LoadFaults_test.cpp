// Makes each allocation of a load fail in turn, first alone and then with every later one. The load
// must throw the promised exception, release all memory and succeed when it is tried again.

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "faults/AllocationFaults.h"
#include "faults/Documents.h"
#include "faults/Outcome.h"
#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "support/Effort.h"
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

  /// Makes each allocation of a load fail in turn, or each `step`-th from `first` on.
  void failEach(Shortage shortage, std::size_t first = 0, std::size_t step = 1) const {
    ASSERT_EQ(outcome_.text().substr(0, failure_.size()), failure_);
    for (std::size_t nth = first;; nth += step) {
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

TEST(Load, OfARichDocumentFailsAsPromisedWhicheverAllocationFails) {
  const TemporaryFolder folder;
  const Document document(folder.writeFile("document.json", richDocument()), kWell);
  for (const Shortage shortage : kShortages) {
    document.failEach(shortage);
  }
}

TEST(Load, OfEachFailingDocumentFailsAsPromisedWhicheverAllocationFails) {
  constexpr std::size_t kFewestDocuments = 60;
  constexpr std::size_t kStep = test_support::kFullEffort ? 1 : 3;
  const std::vector<FailingDocument> documents = failingDocuments();
  EXPECT_GE(documents.size(), kFewestDocuments);
  std::cout << "documents that cannot be loaded: " << documents.size() << '\n';
  std::size_t first = 0;  // another in each document
  for (const FailingDocument& failing : documents) {
    SCOPED_TRACE(failing.name);
    const TemporaryFolder folder;
    const std::string suffix =
        failing.failure == kParseFailure ? folder.nativePath("document.json") : "";
    const Document document(folder.writeFile("document.json", failing.text),
                            failing.failure + suffix);
    for (const Shortage shortage : kShortages) {
      document.failEach(shortage, first++ % kStep, kStep);
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

}  // namespace
}  // namespace install::update_metadata_parser
