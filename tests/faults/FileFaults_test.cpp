// Each system call that reads a file fails, alone or with every later one; calls are interrupted;
// reads return single bytes.

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <iostream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "faults/Documents.h"
#include "faults/Outcome.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "support/FailingFiles.h"
#include "support/ModelDump.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using test_support::dump;
using test_support::FileCall;
using test_support::Outcome;
using test_support::outcomeOf;
using test_support::richDocument;
using test_support::TemporaryFolder;
using test_support::WatchedFiles;

const std::string kWell = "nothing";
const std::string kMissing = "std::runtime_error: Update MetaData Json file does not exist ";
const std::string kUnopened = "std::runtime_error: Error opening Update MetaData Json File";

constexpr std::size_t kAllLater = std::numeric_limits<std::size_t>::max();

// An endless EINTR would be retried forever, so only this many come in a row.
constexpr std::size_t kManyInterruptions = 50;

constexpr int kErrors[] = {EIO, EINTR, EMFILE, ENOMEM, EACCES, ESTALE};

/// A run of consecutive failing calls.
struct Failures {
  std::size_t nth;
  std::size_t count;
  int error;
};

/// All ways in which `calls` calls can fail: each alone, and each with all later ones.
std::vector<Failures> everyFailureOf(std::size_t calls) {
  std::vector<Failures> all;
  for (std::size_t nth = 0; nth < calls; ++nth) {
    for (const int error : kErrors) {
      all.push_back({nth, 1, error});
      all.push_back({nth, error == EINTR ? kManyInterruptions : kAllLater, error});
    }
  }
  return all;
}

/// A parser that exposes its handler.
class OpenParser : public UpdateMetaDataJsonParser {
 public:
  using UpdateMetaDataJsonParser::handler;
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;
};

/// A document that takes more than one read.
std::string longDocument() {
  constexpr std::size_t kBytes = 300'000;
  return R"({"unread": ")" + std::string(kBytes, 'x') + "\"," + richDocument().substr(1);
}

/// A file and the calls that reading it takes.
class FileOfADocument : public ::testing::Test {
 protected:
  FileOfADocument() : text_(longDocument()), path_(folder_.writeFile("document.json", text_)) {
    const WatchedFiles watch;
    UpdateMetaDataJsonParser(path_).readFile(path_);
    calls_ = watch.calls();
  }

  /// The promised outcome when `failures.count` calls fail, starting with number `failures.nth`.
  std::string promised(const Failures& failures) const {
    const bool retried = failures.error == EINTR;
    bool opened = false;
    for (std::size_t place = 0; place < calls_.size(); ++place) {
      const bool failing = place >= failures.nth && place - failures.nth < failures.count;
      switch (calls_[place]) {
        case FileCall::kStat:
          if (failing && !opened) {
            return kMissing;
          }
          break;  // after opening, it only distinguishes a folder from a file
        case FileCall::kOpen:
          if (failing) {
            return kUnopened;
          }
          opened = true;
          break;
        case FileCall::kSeek:
          break;  // never called
        case FileCall::kRead:
          if (failing && !retried) {
            return "std::ios_base::failure";
          }
          break;
        case FileCall::kClose:
          break;  // the whole text has been read
      }
    }
    return kWell;
  }

  const TemporaryFolder folder_;
  const std::string text_;
  const std::u16string path_;
  std::vector<FileCall> calls_;
};

TEST_F(FileOfADocument, IsReadWithoutASeek) {
  EXPECT_EQ(std::count(calls_.begin(), calls_.end(), FileCall::kSeek), 0);
}

TEST_F(FileOfADocument, IsReadWholeOrNotWhicheverCallFails) {
  ASSERT_GT(calls_.size(), 8U);
  std::size_t points = 0;
  for (const Failures& failures : everyFailureOf(calls_.size())) {
    UpdateMetaDataJsonParser parser(path_);
    std::string text;
    Outcome outcome;
    int openFiles = 0;
    {
      const WatchedFiles watch(failures.nth, failures.count, failures.error);
      outcome = outcomeOf([&] { text = parser.readFile(path_); });
      openFiles = watch.openFiles();
    }
    const std::string trace = "call " + std::to_string(failures.nth) + ", " +
                              (failures.count == 1 ? "once" : "this and all later ones") +
                              ", error " + std::to_string(failures.error);
    const std::string failure = outcome.text();
    ASSERT_EQ(failure.substr(0, promised(failures).size()), promised(failures)) << trace;
    if (outcome.isWell()) {
      ASSERT_TRUE(text == text_) << trace;
    } else {
      ASSERT_TRUE(text.empty()) << trace;
    }
    ASSERT_EQ(openFiles, 0) << trace;
    ASSERT_TRUE(parser.readFile(path_) == text_) << trace;
    ++points;
  }
  std::cout << "failures of calls that read a document: " << points << '\n';
}

TEST_F(FileOfADocument, EndsALoadAsItEndsTheReading) {
  OpenParser whole(path_);
  whole.parseUpdateMetaDataJson();
  const std::string expected = dump(whole.handler->getProductUpdateMetaDataModel());
  for (const Failures& failures : everyFailureOf(calls_.size())) {
    OpenParser parser(path_);
    Outcome outcome;
    {
      const WatchedFiles watch(failures.nth, failures.count, failures.error);
      outcome = outcomeOf([&] { parser.parseUpdateMetaDataJson(); });
      ASSERT_EQ(watch.openFiles(), 0);
    }
    const std::string failure = outcome.text();
    ASSERT_EQ(failure.substr(0, promised(failures).size()), promised(failures));
    ASSERT_TRUE(outcomeOf([&] { parser.parseUpdateMetaDataJson(); }).isWell());
    ASSERT_EQ(dump(parser.handler->getProductUpdateMetaDataModel()), expected);
  }
}

TEST_F(FileOfADocument, IsReadWholeByteByByte) {
  for (const bool interrupted : {false, true}) {
    WatchedFiles watch;
    watch.limitReads(1);
    if (interrupted) {
      watch.interruptReads();
    }
    EXPECT_TRUE(UpdateMetaDataJsonParser(path_).readFile(path_) == text_);
    EXPECT_GT(watch.calls().size(), text_.size());
    EXPECT_EQ(watch.openFiles(), 0);
  }
}

TEST_F(FileOfADocument, IsReportedAsUnopenedWhenItIsDeletedAfterTheCheck) {
  WatchedFiles watch;
  watch.runBefore(FileCall::kOpen, 0,
                  [&] { ::unlink(folder_.nativePath("document.json").c_str()); });
  UpdateMetaDataJsonParser parser(path_);
  EXPECT_EQ(outcomeOf([&] { parser.readFile(path_); }).text(), kUnopened);
  EXPECT_EQ(outcomeOf([&] { parser.readFile(path_); }).text(), kMissing);
  EXPECT_EQ(watch.openFiles(), 0);
}

TEST_F(FileOfADocument, IsReadAsItIsAtEachMomentWhenItIsRewritten) {
  for (const std::size_t size :
       {std::size_t{0}, text_.size() / 2, text_.size(), 2 * text_.size()}) {
    folder_.writeFile("document.json", text_);
    std::string text;
    {
      WatchedFiles watch;
      watch.runBefore(FileCall::kRead, 1,
                      [&] { folder_.writeFile("document.json", std::string(size, 'y')); });
      text = UpdateMetaDataJsonParser(path_).readFile(path_);
    }
    // Earlier reads keep what they returned; later reads return what the file contains by then.
    const std::size_t old = std::min(text.find('y'), text.size());
    EXPECT_GT(old, 0U);
    EXPECT_TRUE(text == text_.substr(0, old) + std::string(std::max(old, size) - old, 'y')) << size;
  }
}

/// A handler whose catalogue is a file.
class Catalogue : public ::testing::Test {
 protected:
  using Answer = std::u16string;

  Catalogue() {
    std::string table = "header\n";
    for (int product = 0; product < 2'000; ++product) {
      table += "code " + std::to_string(product) + "\tname " + std::to_string(product) + '\t' +
               std::to_string(product) + "\tcontrolling\n";
    }
    folder_.writeFile("catalogue/products.tsv", table);
    location_ = folder_.path("catalogue");
  }

  const TemporaryFolder folder_;
  std::u16string location_;
};

TEST_F(Catalogue, IsReadWholeOrNotWhicheverCallFails) {
  std::vector<FileCall> calls;
  {
    const WatchedFiles watch;
    UpdateMetaDataHandler().initializeProductDataProvider(location_);
    calls = watch.calls();
  }
  ASSERT_GT(calls.size(), 6U);
  const std::string table = "std::runtime_error: " + folder_.nativePath("catalogue/products.tsv");
  std::size_t points = 0;
  for (const Failures& failures : everyFailureOf(calls.size())) {
    UpdateMetaDataHandler handler;
    Answer name;
    Outcome outcome;
    {
      const WatchedFiles watch(failures.nth, failures.count, failures.error);
      outcome = outcomeOf([&] { name = handler.getProductName(u"code 1999", location_); });
      ASSERT_EQ(watch.openFiles(), 0);
    }
    const std::string failure = outcome.text();
    const FileCall first = calls[failures.nth];
    const bool retried = first == FileCall::kRead && failures.error == EINTR;
    if (outcome.isWell()) {
      // A file that cannot be found counts as absent: the catalogue is then empty.
      const bool lost = first == FileCall::kStat && name.empty();
      EXPECT_TRUE(name == u"name 1999" || lost) << failures.nth;
      EXPECT_TRUE(first != FileCall::kOpen && (first != FileCall::kRead || retried));
      points += 1;
      continue;
    }
    const bool opening = first == FileCall::kOpen || first == FileCall::kStat;
    EXPECT_TRUE(opening ? failure.find(": cannot be opened") != std::string::npos ||
                              failure.find(": cannot be read: ") != std::string::npos
                        : failure.rfind(table + ": cannot be read: ", 0) == 0)
        << failures.nth << ": " << failure;
    EXPECT_EQ(handler.getProductName(u"code 1999", location_), u"name 1999")
        << "a catalogue that could not be read is tried again";
    ++points;
  }
  std::cout << "failures of calls that read a catalogue: " << points << '\n';
}

TEST_F(Catalogue, IsReadWholeByteByByte) {
  WatchedFiles watch;
  watch.limitReads(1);
  watch.interruptReads();
  UpdateMetaDataHandler handler;
  EXPECT_EQ(handler.getProductName(u"code 1999", location_), u"name 1999");
  EXPECT_EQ(watch.openFiles(), 0);
}

}  // namespace
}  // namespace install::update_metadata_parser
