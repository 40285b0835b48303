// QUERY: each of the six on a loaded document, without the destruction of the result.

#include <utility>

#include <benchmark/benchmark.h>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "micro/Corpus.h"
#include "micro/Once.h"

namespace bench::micro {
namespace {

using install::update_metadata_parser::UpdateMetaData;

// Runs a query over and over, each time in new memory.
template <class Query>
void ask(benchmark::State& state, const char* preset, Query query) {
  const std::shared_ptr<UpdateMetaData>& metaData = once<loadPreset>(preset);
  for (auto _ : state) {
    state.PauseTiming();
    forgetFreeMemory();
    state.ResumeTiming();
    auto answer = query(*metaData);
    benchmark::DoNotOptimize(answer);
    state.PauseTiming();
    { const auto dropped = std::move(answer); }
    state.ResumeTiming();
  }
}

// A product that both documents contain.
constexpr const char16_t* kProduct = u"core runtime product 000";

template <class Query>
void add(const char* name, Query query) {
  for (const char* preset : {"medium", "shared"}) {
    benchmark::RegisterBenchmark((std::string("QUERY ") + name + "\t" + preset).c_str(),
                                 [=](benchmark::State& state) { ask(state, preset, query); })
        ->Unit(benchmark::kMillisecond);
  }
}

const bool kAdded = [] {
  add("getComponentsToDelete(location)",
      [](const UpdateMetaData& data) { return data.getComponentsToDelete(u""); });
  add("getComponentsToExtract(location)",
      [](const UpdateMetaData& data) { return data.getComponentsToExtract(u""); });
  add("getComponentsToDelete(code, location)",
      [](const UpdateMetaData& data) { return data.getComponentsToDelete(kProduct, u""); });
  add("getComponentsToExtract(code, location)",
      [](const UpdateMetaData& data) { return data.getComponentsToExtract(kProduct, u""); });
  add("getUpdateSizeForComponentsToExtract()",
      [](const UpdateMetaData& data) { return data.getUpdateSizeForComponentsToExtract(); });
  add("getComponentsWithFilesToDelete()",
      [](const UpdateMetaData& data) { return data.getComponentsWithFilesToDelete(); });
  return true;
}();

}  // namespace
}  // namespace bench::micro
