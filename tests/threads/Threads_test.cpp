// What several threads may do at once: copy and destroy facades of one handler, and load documents
// independently. The thread sanitizer finds data that they share without synchronization.
//
// UMP_THREADS_FULL in the environment runs many more rounds (see scripts/check/threads).

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "faults/Documents.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "support/ModelDump.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using test_support::dump;
using test_support::failingDocuments;
using test_support::kParseFailure;
using test_support::richDocument;
using test_support::TemporaryFolder;

constexpr std::size_t kThreads = 8;

bool isFullRun() {
  return std::getenv("UMP_THREADS_FULL") != nullptr;
}

/// Runs `work` in 8 threads that start together; each receives its number.
void inThreads(const std::function<void(std::size_t)>& work) {
  std::atomic<bool> begun = false;
  std::vector<std::thread> threads;
  for (std::size_t number = 0; number < kThreads; ++number) {
    threads.emplace_back([&, number] {
      while (!begun) {
        std::this_thread::yield();
      }
      work(number);
    });
  }
  begun = true;
  for (std::thread& thread : threads) {
    thread.join();
  }
}

std::shared_ptr<UpdateMetaData> load(const std::u16string& path) {
  return UpdateMetaDataJsonParser(path).parseUpdateMetaDataJson();
}

TEST(Facades, AreCopiedAndDestroyedInSeveralThreads) {
  const std::size_t copies = (isFullRun() ? 1'200'000 : 40'000) / kThreads;
  const TemporaryFolder folder;
  const std::shared_ptr<UpdateMetaData> facade =
      load(folder.writeFile("document.json", richDocument()));
  const UpdateMetaData other(std::make_shared<UpdateMetaDataHandler>());
  inThreads([&](std::size_t) {
    UpdateMetaData last = *facade;
    for (std::size_t round = 0; round < copies; ++round) {
      UpdateMetaData copy = last;
      if (round % 2 == 0) {
        last = *facade;
      } else {
        last = std::move(copy);
      }
    }
  });
  EXPECT_EQ(facade->getTargetUpdateLevelForQorv(), 7);
}

TEST(Facades, ReleaseTheHandlerInTheThreadThatDestroysTheLastOne) {
  const std::size_t rounds = isFullRun() ? 500 : 20;
  const TemporaryFolder folder;
  folder.writeFile("catalogue/products.tsv", "header\na base code\ta product\t1\tcontrolling\n");
  const std::u16string catalogue = folder.path("catalogue");
  const std::u16string path = folder.writeFile("document.json", richDocument());
  for (std::size_t round = 0; round < rounds; ++round) {
    std::shared_ptr<UpdateMetaData> facade = load(path);
    EXPECT_FALSE(facade->getComponentsToDelete(catalogue).empty());
    std::vector<UpdateMetaData> facades(kThreads, *facade);
    std::weak_ptr<UpdateMetaData> gone = facade;
    facade.reset();
    EXPECT_TRUE(gone.expired());
    std::vector<std::unique_ptr<UpdateMetaData>> owned;
    for (const UpdateMetaData& each : facades) {
      owned.push_back(std::make_unique<UpdateMetaData>(each));
    }
    facades.clear();
    inThreads([&](std::size_t number) { owned[number].reset(); });
  }
}

TEST(Facades, AnswerInAThreadOtherThanTheLoadingOne) {
  const TemporaryFolder folder;
  std::shared_ptr<UpdateMetaData> facade;
  std::thread([&] { facade = load(folder.writeFile("document.json", richDocument())); }).join();
  std::thread([&] {
    EXPECT_FALSE(facade->getUpdateSizeForComponentsToExtract().empty());
    facade.reset();
  }).join();
}

TEST(Loads, DoNotInterfereWithEachOther) {
  const std::size_t loads = (isFullRun() ? 10'400 : 240) / kThreads;
  const TemporaryFolder folder;
  const std::u16string rich = folder.writeFile("rich.json", richDocument());
  const std::u16string malformed = folder.writeFile("malformed.json", richDocument() + "\n");
  folder.writeFile("catalogue/products.tsv", "header\na base code\ta product\t1\tcontrolling\n");
  const std::u16string catalogue = folder.path("catalogue");
  const std::shared_ptr<UpdateMetaData> expected = load(rich);
  const auto files = expected->getComponentsWithFilesToDelete();
  const auto sizes = expected->getUpdateSizeForComponentsToExtract();
  const auto components = expected->getComponentsToDelete(catalogue);
  std::atomic<std::size_t> wrong = 0;
  inThreads([&](std::size_t) {
    for (std::size_t count = 0; count < loads; ++count) {
      const std::shared_ptr<UpdateMetaData> facade = load(rich);
      wrong += facade->getComponentsWithFilesToDelete() == files &&
                       facade->getUpdateSizeForComponentsToExtract() == sizes &&
                       facade->getComponentsToDelete(catalogue) == components
                   ? 0U
                   : 1U;
      try {
        load(malformed);
        ++wrong;
      } catch (const std::runtime_error&) {
      }
    }
  });
  EXPECT_EQ(wrong, 0U);
}

}  // namespace
}  // namespace install::update_metadata_parser
