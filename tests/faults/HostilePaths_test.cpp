// Paths that lead to no document and files that are not documents, for an administrator and for
// ordinary users, in several locales.

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "faults/Documents.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "support/Effort.h"
#include "support/Failure.h"
#include "support/Locales.h"
#include "support/OwnProcess.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using namespace std::string_literals;
using test_support::failureOf;
using test_support::inProcessOf;
using test_support::kFullEffort;
using test_support::LocaleScope;
using test_support::require;
using test_support::richDocument;
using test_support::TemporaryFolder;

const std::string kWell = "nothing";
const std::string kMissing = "std::runtime_error: Update MetaData Json file does not exist ";
const std::string kUnopened = "std::runtime_error: Error opening Update MetaData Json File";
const std::string kUnusable = "std::runtime_error: Error while parsing ";
const std::string kExhaustion = "std::bad_alloc: std::bad_alloc";

constexpr uid_t kNobody = 65534;

/// A path and the outcome of loading it.
struct HostilePath {
  const char* name;

  /// Creates what the path leads to and returns the path.
  std::function<std::u16string(const TemporaryFolder&)> make;

  std::string outcome;         ///< the failure; for an unusable document, without its path
  std::string outcomeAsOther;  ///< if it differs for ordinary users
  std::function<void()> prepare = nullptr;  ///< runs before the load, in its own process
};

void limit(__rlimit_resource resource, rlim_t value) {
  const struct rlimit limits = {value, value};
  require(::setrlimit(resource, &limits) == 0);
}

void limitMemory() {
  constexpr rlim_t kBytes = rlim_t{256} << 20;
  limit(RLIMIT_AS, kBytes);
}

void useUpDescriptors() {
  constexpr rlim_t kDescriptors = 32;
  limit(RLIMIT_NOFILE, kDescriptors);
  while (::dup(STDERR_FILENO) >= 0) {
  }
}

std::u16string writeDocument(const TemporaryFolder& folder, const char* name) {
  return folder.writeFile(name, richDocument());
}

std::vector<HostilePath> hostilePaths() {
  const auto plain = [](const TemporaryFolder& folder) {
    return writeDocument(folder, "document.json");
  };
  std::vector<HostilePath> paths = {
      {"a document", plain, kWell, kWell},
      {"empty", [](const auto&) { return std::u16string(); }, kMissing, kMissing},
      {"missing", [](const auto& folder) { return folder.path("missing"); }, kMissing, kMissing},
      {"missing parent", [](const auto& folder) { return folder.path("missing/document.json"); },
       kMissing, kMissing},
      {"slash after a file", [=](const auto& folder) { return plain(folder) + u"/"; }, kMissing,
       kMissing},
      {"dangling link", [](const auto& folder) { return folder.makeLink("link", "missing"); },
       kMissing, kMissing},
      {"links in a circle",
       [](const auto& folder) {
         folder.makeLink("first", "second");
         return folder.makeLink("second", "first");
       },
       kMissing, kMissing},
      {"component of 300 bytes",
       [](const auto& folder) { return folder.path(std::string(300, 'x')); }, kMissing, kMissing},
      {"path of 6,000 bytes",
       [=](const auto& folder) {
         plain(folder);
         std::u16string path = folder.path() + u"/";
         while (path.size() < 6000) {
           path += u"./";
         }
         return path + u"document.json";
       },
       kMissing, kMissing},
      {"parent that may not be searched",
       [](const auto& folder) {
         std::u16string path = writeDocument(folder, "closed/document.json");
         require(::chmod(folder.nativePath("closed").c_str(), 0) == 0);
         return path;
       },
       kWell, kMissing},
      {"unpaired high surrogate",
       [=](const auto& folder) { return plain(folder) + char16_t{0xD83D}; }, kMissing, kMissing},
      {"unpaired low surrogate",
       [=](const auto& folder) { return plain(folder) + char16_t{0xDE00}; }, kMissing, kMissing},
      {"NUL after a good name", [=](const auto& folder) { return plain(folder) + u"\0.bak"s; },
       kMissing, kMissing},
      {"name beyond the basic plane",
       [](const auto& folder) {
         writeDocument(folder, "\xF0\x9F\x98\x80.json");
         return folder.path() + u"/\U0001F600.json";
       },
       kWell, kWell},
      {"mode 000",
       [=](const auto& folder) {
         std::u16string path = plain(folder);
         require(::chmod(folder.nativePath("document.json").c_str(), 0) == 0);
         return path;
       },
       kWell, kUnopened},
      {"folder", [](const auto& folder) { return folder.makeFolder("document.json"); }, kUnopened,
       kUnopened},
      {"null device", [](const auto&) { return u"/dev/null"s; }, kUnusable, kUnusable},
      {"empty file", [](const auto& folder) { return folder.writeFile("document.json", ""); },
       kUnusable, kUnusable},
      {"system file that reports no size", [](const auto&) { return u"/proc/self/status"s; },
       kUnusable, kUnusable},
      {"socket", [](const auto& folder) { return folder.makeSocket("document.json"); }, kUnopened,
       kUnopened},
  };
  // A sanitizer needs descriptors itself, and more memory than the limits allow here.
  if (kFullEffort) {
    paths.push_back({"descriptors used up", plain, kUnopened, kUnopened, useUpDescriptors});
    paths.push_back({"device that never ends", [](const auto&) { return u"/dev/zero"s; },
                     kExhaustion, kExhaustion, limitMemory});
    paths.push_back({"file of more than 2 GiB",
                     [](const auto& folder) {
                       std::u16string path = folder.writeFile("document.json", "{");
                       constexpr off_t kBytes = (off_t{2} << 30) + 1;
                       require(::truncate(folder.nativePath("document.json").c_str(), kBytes) == 0);
                       return path;
                     },
                     kExhaustion, kExhaustion, limitMemory});
  }
  return paths;
}

/// The form in which a message names a path.
std::string nativePathOf(const std::u16string& path) {
  return std::filesystem::path(path).string();
}

/// The user who asks and the locale in effect.
struct Surroundings {
  const char* name;
  uid_t user;
  const char* locale;
};

class HostilePaths : public ::testing::TestWithParam<Surroundings> {
 protected:
  void SetUp() override {
    if (GetParam().user != 0 && ::getuid() != 0) {
      GTEST_SKIP() << "only an administrator can become another user";
    }
    try {
      locale_.emplace(GetParam().locale);
    } catch (const std::runtime_error& failure) {
      GTEST_SKIP() << failure.what();
    }
  }

  static std::string load(const std::u16string& path) {
    UpdateMetaDataJsonParser parser(path);
    return failureOf([&] { parser.parseUpdateMetaDataJson(); });
  }

  /// Whether an ordinary user runs the load.
  static bool isOther() { return GetParam().user != 0 || ::getuid() != 0; }

 private:
  std::optional<LocaleScope> locale_;
};

TEST_P(HostilePaths, FailEachInItsOwnWay) {
  for (const HostilePath& row : hostilePaths()) {
    SCOPED_TRACE(row.name);
    const TemporaryFolder folder;
    ASSERT_EQ(::chmod(folder.nativePath().c_str(), 0755), 0);
    const std::u16string path = row.make(folder);
    const std::string failure = inProcessOf(GetParam().user, [&] {
      if (row.prepare) {
        row.prepare();
      }
      return load(path);
    });
    const std::string& expected = isOther() ? row.outcomeAsOther : row.outcome;
    EXPECT_EQ(failure, expected == kUnusable ? expected + nativePathOf(path) : expected);
  }
}

TEST_P(HostilePaths, LeadThroughAPipeWhoseWriterIsSlow) {
  const TemporaryFolder folder;
  ASSERT_EQ(::chmod(folder.nativePath().c_str(), 0755), 0);
  const std::u16string path = folder.makeFifo("document.json");
  ASSERT_EQ(::chmod(folder.nativePath("document.json").c_str(), 0644), 0);
  const std::string text = richDocument();
  std::thread writer([&] {
    std::ofstream out(folder.nativePath("document.json"));
    for (std::size_t place = 0; place < text.size(); place += 7) {
      out << text.substr(place, 7) << std::flush;
      std::this_thread::yield();
    }
  });
  EXPECT_EQ(inProcessOf(GetParam().user, [&] { return load(path); }), kWell);
  writer.join();
}

// A parser that notes how long its document is.
class MeasuringParser : public UpdateMetaDataJsonParser {
 public:
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;

  std::string readFile(const std::u16string& path) override {
    std::string text = UpdateMetaDataJsonParser::readFile(path);
    bytesRead = text.size();
    return text;
  }

  std::size_t bytesRead = 0;
};

TEST(FileOfMoreThan2GiB, IsReadWholeWhereThereIsMemory) {
  if (!kFullEffort) {
    GTEST_SKIP() << "takes minutes in this build";
  }
  constexpr std::size_t kBytes = (std::size_t{2} << 30) + 1;
  const auto available = static_cast<std::size_t>(::sysconf(_SC_AVPHYS_PAGES)) *
                         static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  if (available < 3 * kBytes) {
    GTEST_SKIP() << "takes more memory than the " << available << " bytes that are free";
  }
  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", "{");
  require(::truncate(folder.nativePath("document.json").c_str(), static_cast<off_t>(kBytes)) == 0);
  MeasuringParser parser(path);
  EXPECT_EQ(failureOf([&] { parser.parseUpdateMetaDataJson(); }),
            kUnusable + folder.nativePath("document.json"));
  EXPECT_EQ(parser.bytesRead, kBytes);
}

INSTANTIATE_TEST_SUITE_P(Everywhere, HostilePaths,
                         ::testing::ValuesIn(std::vector<Surroundings>{
                             {"SameUserInC", 0, "C"},
                             {"SameUserInCUtf8", 0, "C.UTF-8"},
                             {"SameUserInGerman", 0, "de_DE.UTF-8"},
                             {"SameUserInTurkish", 0, "tr_TR.UTF-8"},
                             {"OrdinaryUserInC", kNobody, "C"},
                             {"OrdinaryUserInCUtf8", kNobody, "C.UTF-8"},
                             {"OrdinaryUserInGerman", kNobody, "de_DE.UTF-8"},
                             {"OrdinaryUserInTurkish", kNobody, "tr_TR.UTF-8"},
                         }),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace install::update_metadata_parser
