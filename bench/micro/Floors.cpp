// FLOORS: the cost of the unavoidable work alone.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <utility>

#include <benchmark/benchmark.h>

#include "answers/Answers.h"
#include "generate/Document.h"
#include "generate/Presets.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "micro/Corpus.h"
#include "micro/Once.h"
#include "peers/Peer.h"

namespace bench::micro {
namespace {

using answers::Answers;
using answers::KeySet;
using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataHandler;

// A document in a temporary file, removed at the end.
class DocumentFile {
 public:
  explicit DocumentFile(const char* preset)
      : path_((std::filesystem::temp_directory_path() /
               ("bench-micro-" + std::to_string(std::hash<std::string>()(preset)) + ".json"))
                  .string()) {
    std::ofstream file(path_, std::ios_base::binary);
    generate::writeDocument(generate::findPreset(preset)->shape, [&](std::string_view piece) {
      file.write(piece.data(), static_cast<std::streamsize>(piece.size()));
    });
  }
  DocumentFile(const DocumentFile&) = delete;
  DocumentFile& operator=(const DocumentFile&) = delete;
  ~DocumentFile() { std::remove(path_.c_str()); }

  const std::string& path() const noexcept { return path_; }

 private:
  std::string path_;
};

void readFile(benchmark::State& state, const char* preset) {
  const DocumentFile file(preset);
  for (auto _ : state) {
    state.PauseTiming();
    forgetFreeMemory();
    state.ResumeTiming();
    std::string text = peers::readFile(file.path());
    benchmark::DoNotOptimize(text.data());
  }
}

Answers answersOf(const std::string& preset) {
  const std::shared_ptr<UpdateMetaData> metaData = once<loadPreset>(preset);
  Answers answers;
  answers.toDelete = metaData->getComponentsToDelete(u"");
  answers.toExtract = metaData->getComponentsToExtract(u"");
  answers.sizes = metaData->getUpdateSizeForComponentsToExtract();
  answers.files = metaData->getComponentsWithFilesToDelete();
  return answers;
}

using Keys = std::vector<std::u16string>;

KeySet setOf(const Keys& keys) {
  KeySet set;
  for (const std::u16string& key : keys) {
    set.emplace_hint(set.end(), key);
  }
  return set;
}

// The answers as sorted flat lists, from which the containers are built by appending.
class ReadyAnswers {
 public:
  explicit ReadyAnswers(const Answers& answers)
      : toDelete_(flat(answers.toDelete)), toExtract_(flat(answers.toExtract)) {
    sizes_.assign(answers.sizes.begin(), answers.sizes.end());
    for (const auto& [key, package] : answers.files) {
      files_.push_back({key, Keys(package.first.begin(), package.first.end()), package.second});
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
  using KeysByCode = std::vector<std::pair<std::u16string, Keys>>;
  struct Files {
    std::u16string key;
    Keys files;
    std::int64_t size;
  };

  static KeysByCode flat(const std::map<std::u16string, KeySet>& keysByCode) {
    KeysByCode list;
    for (const auto& [code, keys] : keysByCode) {
      list.emplace_back(code, Keys(keys.begin(), keys.end()));
    }
    return list;
  }

  static std::map<std::u16string, KeySet> built(const KeysByCode& list) {
    std::map<std::u16string, KeySet> keysByCode;
    for (const auto& [code, keys] : list) {
      keysByCode.emplace_hint(keysByCode.end(), code, setOf(keys));
    }
    return keysByCode;
  }

  KeysByCode toDelete_;
  KeysByCode toExtract_;
  std::vector<std::pair<std::u16string, std::pair<std::int64_t, std::int64_t>>> sizes_;
  std::vector<Files> files_;
};

ReadyAnswers readyAnswersOf(const std::string& preset) {
  return ReadyAnswers(answersOf(preset));
}

// With `isWarm`, the memory of the previous round stays allocated.
void buildContainers(benchmark::State& state, const char* preset, bool isWarm) {
  const ReadyAnswers& ready = once<readyAnswersOf>(preset);
  for (auto _ : state) {
    state.PauseTiming();
    if (!isWarm) {
      forgetFreeMemory();
    }
    state.ResumeTiming();
    Answers answers = ready.build();
    benchmark::DoNotOptimize(answers);
    state.PauseTiming();
    { const Answers dropped = std::move(answers); }
    state.ResumeTiming();
  }
}

void destroyContainers(benchmark::State& state, const char* preset) {
  const ReadyAnswers& ready = once<readyAnswersOf>(preset);
  for (auto _ : state) {
    state.PauseTiming();
    {
      const Answers answers = ready.build();
      state.ResumeTiming();
    }
  }
}

// The two tables of packages by component, from sorted flat lists.
class ReadyTables {
 public:
  explicit ReadyTables(const ProductCalls& products) {
    for (const auto& [component, pkgs] : products.pkgsToDelete) {
      toDelete_.emplace_back(component, Sizes(pkgs.begin(), pkgs.end()));
    }
    toExtract_.assign(products.pkgsToExtract.begin(), products.pkgsToExtract.end());
  }

  void build(UpdateMetaDataHandler::PkgsToDelete& toDelete,
             UpdateMetaDataHandler::PkgsToExtract& toExtract) const {
    for (const auto& [component, pkgs] : toDelete_) {
      auto& sizes = toDelete.try_emplace(toDelete.end(), component)->second;
      for (const auto& [pkg, size] : pkgs) {
        sizes.emplace_hint(sizes.end(), pkg, size);
      }
    }
    for (const auto& [component, pkgs] : toExtract_) {
      toExtract.emplace_hint(toExtract.end(), component, pkgs);
    }
  }

 private:
  using Sizes = std::vector<std::pair<std::u16string, std::int64_t>>;

  std::vector<std::pair<std::u16string, Sizes>> toDelete_;
  std::vector<
      std::pair<std::u16string, std::vector<install::update_metadata_parser::UpdatePkgData>>>
      toExtract_;
};

ReadyTables readyTablesOf(const std::string& preset) {
  return ReadyTables(productCallsOf(preset));
}

void buildTables(benchmark::State& state, const char* preset) {
  const ReadyTables& ready = once<readyTablesOf>(preset);
  for (auto _ : state) {
    state.PauseTiming();
    forgetFreeMemory();
    {
      UpdateMetaDataHandler::PkgsToDelete toDelete;
      UpdateMetaDataHandler::PkgsToExtract toExtract;
      state.ResumeTiming();
      ready.build(toDelete, toExtract);
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
}

void destroyTables(benchmark::State& state, const char* preset) {
  const ReadyTables& ready = once<readyTablesOf>(preset);
  for (auto _ : state) {
    state.PauseTiming();
    {
      UpdateMetaDataHandler::PkgsToDelete toDelete;
      UpdateMetaDataHandler::PkgsToExtract toExtract;
      ready.build(toDelete, toExtract);
      state.ResumeTiming();
    }
  }
}

template <class Floor, class... Arguments>
void add(const char* name, const char* preset, Floor floor, Arguments... arguments) {
  benchmark::RegisterBenchmark((std::string("FLOOR ") + name + "\t" + preset).c_str(),
                               [=](benchmark::State& state) { floor(state, preset, arguments...); })
      ->Unit(benchmark::kMillisecond);
}

const bool kAdded = [] {
  add("read the file", "medium", readFile);
  for (const char* preset : {"medium", "shared"}) {
    add("result containers from ready keys", preset, buildContainers, false);
    add("the same in memory already touched", preset, buildContainers, true);
    add("destroy the result containers", preset, destroyContainers);
  }
  add("the handler's two tables from ready keys", "medium", buildTables);
  add("destroy the two tables", "medium", destroyTables);
  return true;
}();

}  // namespace
}  // namespace bench::micro
