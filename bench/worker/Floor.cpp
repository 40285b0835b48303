#include "worker/Floor.h"

#include <malloc.h>

#include <algorithm>
#include <memory_resource>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "answers/Answers.h"
#include "answers/FlatDocument.h"
#include "answers/TunedAnswers.h"
#include "answers/Utf16.h"
#include "fl/i18n.h"
#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "json/JsonText.h"
#include "peers/IdentityParser.h"
#include "peers/ThisLibrary.h"
#include "worker/StepList.h"

namespace bench::worker {
namespace {

using answers::Answers;
using answers::FlatDocument;
using answers::KeySet;
using answers::Range;
using fl::i18n::to_ustring;
using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdatePkgData;

// Packages by component, as the reader passes them to the handler.
struct Tables {
  UpdateMetaDataHandler::PkgsToDelete toDelete;
  UpdateMetaDataHandler::PkgsToExtract toExtract;
};

Tables tablesOf(const FlatDocument& document) {
  Tables tables;
  for (const FlatDocument::Component& component : document.components) {
    auto& sizes =
        tables.toDelete.try_emplace(tables.toDelete.end(), to_ustring(component.name))->second;
    for (std::uint32_t i = component.toDelete.first; i != component.toDelete.last; ++i) {
      const FlatDocument::Package& package = document.packages[i];
      sizes.emplace_hint(sizes.end(), to_ustring(package.name), package.size);
    }
    auto& pkgs =
        tables.toExtract.try_emplace(tables.toExtract.end(), to_ustring(component.name))->second;
    pkgs.reserve(component.toExtract.last - component.toExtract.first);
    for (std::uint32_t i = component.toExtract.first; i != component.toExtract.last; ++i) {
      const FlatDocument::Package& package = document.packages[i];
      pkgs.push_back({to_ustring(package.name), package.size, package.uncompressedBytes});
    }
  }
  return tables;
}

// Converts the files of each package into one list, which keeps the memory of its texts, and
// returns how many units they have.
std::size_t convertFiles(const FlatDocument& document) {
  std::vector<std::u16string> list;
  std::size_t units = 0;
  for (const FlatDocument::PackageWithFiles& package : document.packagesWithFiles) {
    const std::size_t count = package.files.last - package.files.first;
    list.resize(std::max(list.size(), count));
    for (std::size_t i = 0; i < count; ++i) {
      answers::assignUtf16(list[i], document.files[package.files.first + i]);
      units += list[i].size();
    }
  }
  return units;
}

// The answers as flat lists in order, with their texts close together.
class ReadyAnswers {
 public:
  explicit ReadyAnswers(const Answers& answers)
      : toDelete_(flat(answers.toDelete)), toExtract_(flat(answers.toExtract)) {
    for (const auto& [key, sizes] : answers.sizes) {
      sizes_.emplace_back(stored(key), sizes);
    }
    for (const auto& [key, package] : answers.files) {
      files_.push_back({stored(key), flat(package.first), package.second});
    }
  }

  Answers build() const {
    Answers answers;
    answers.toDelete = built(toDelete_);
    answers.toExtract = built(toExtract_);
    for (const auto& [key, sizes] : sizes_) {
      answers.sizes.emplace_hint(answers.sizes.end(), key, sizes);
    }
    for (const Files& package : files_) {
      answers.files.emplace_hint(answers.files.end(), package.key,
                                 std::make_pair(setOf(package.files), package.size));
    }
    return answers;
  }

 private:
  using Texts = std::vector<std::u16string_view>;
  using KeysByCode = std::vector<std::pair<std::u16string_view, Texts>>;
  struct Files {
    std::u16string_view key;
    Texts files;
    std::int64_t size;
  };

  std::u16string_view stored(const std::u16string& text) {
    auto* const units =
        static_cast<char16_t*>(texts_.allocate(text.size() * sizeof(char16_t), alignof(char16_t)));
    std::copy(text.begin(), text.end(), units);
    return {units, text.size()};
  }

  Texts flat(const KeySet& set) {
    Texts texts;
    texts.reserve(set.size());
    for (const std::u16string& text : set) {
      texts.push_back(stored(text));
    }
    return texts;
  }

  KeysByCode flat(const std::map<std::u16string, KeySet>& keysByCode) {
    KeysByCode list;
    for (const auto& [code, keys] : keysByCode) {
      list.emplace_back(stored(code), flat(keys));
    }
    return list;
  }

  static KeySet setOf(const Texts& texts) {
    KeySet set;
    for (const std::u16string_view text : texts) {
      set.emplace_hint(set.end(), text);
    }
    return set;
  }

  static std::map<std::u16string, KeySet> built(const KeysByCode& list) {
    std::map<std::u16string, KeySet> keysByCode;
    for (const auto& [code, keys] : list) {
      keysByCode.emplace_hint(keysByCode.end(), code, setOf(keys));
    }
    return keysByCode;
  }

  std::pmr::monotonic_buffer_resource texts_;
  KeysByCode toDelete_;
  KeysByCode toExtract_;
  std::vector<std::pair<std::u16string_view, std::pair<std::int64_t, std::int64_t>>> sizes_;
  std::vector<Files> files_;
};

// Returns free memory to the system, so that each step begins in new memory.
void forgetFreeMemory() {
  malloc_trim(0);
}

}  // namespace

void printFloor(const std::string& path, std::ostream& out) {
  const std::u16string location = to_ustring(path);
  peers::IdentityParser parser(location);
  std::string text;
  foundation::json::Value tree;
  std::optional<Tables> tables;
  std::size_t units = 0;
  Answers answers;

  StepList steps(out);
  steps.add("read the file", [&] { text = parser.readFile(location); });
  steps.add("parse the text", [&] { tree = foundation::json::parseJsonText(std::move(text)); });
  FlatDocument document = peers::flatDocumentOf(tree);
  document.sortByName();
  steps.add("the handler's two tables", [&] { tables = tablesOf(document); });
  steps.add("destroy the two tables", [&] { tables.reset(); });
  forgetFreeMemory();
  steps.add("names of files for the handler", [&] { units = convertFiles(document); });
  const ReadyAnswers ready(answers::tunedAnswers(document));
  forgetFreeMemory();
  steps.add("containers of the answers from ready keys", [&] { answers = ready.build(); });
  if (units == 0 && !document.files.empty()) {
    throw std::logic_error("the names of files are empty");  // uses the result
  }
}

}  // namespace bench::worker
