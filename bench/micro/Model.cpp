// MODEL: the elements that a handler makes for products that share components.

#include <memory>

#include <benchmark/benchmark.h>

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "micro/Corpus.h"
#include "micro/Counters.h"
#include "micro/Once.h"
#include "peers/Probe.h"

namespace bench::micro {
namespace {

using install::update_metadata_parser::UpdateMetaDataHandler;

void fill(const UpdateMetaDataHandler& handler, const ProductCalls& products) {
  for (const ProductCalls::Call& call : products.calls) {
    handler.setProductDeltaData(call.name, call.toDelete, call.toExtract, products.pkgsToDelete,
                                products.pkgsToExtract);
  }
}

// What each package's element takes, with its share of what stands above it.
void makeElements(benchmark::State& state) {
  const ProductCalls& products = once<productCallsOf>("shared");
  const auto elements = static_cast<double>(products.packageElements);
  double bytes = 0;
  for (auto _ : state) {
    state.PauseTiming();
    forgetFreeMemory();
    const std::int64_t before = peers::residentBytes();
    auto handler = std::make_unique<UpdateMetaDataHandler>();
    state.ResumeTiming();
    fill(*handler, products);
    state.PauseTiming();
    bytes = static_cast<double>(peers::residentBytes() - before);
    handler.reset();
    state.ResumeTiming();
  }
  state.counters[kElements] = elements;
  state.counters["bytes each"] = bytes / elements;
}

void destroyElements(benchmark::State& state) {
  const ProductCalls& products = once<productCallsOf>("shared");
  for (auto _ : state) {
    state.PauseTiming();
    auto handler = std::make_unique<UpdateMetaDataHandler>();
    fill(*handler, products);
    state.ResumeTiming();
    handler.reset();
  }
}

BENCHMARK(makeElements)
    ->Name("MODEL make elements of packages\tshared")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(destroyElements)->Name("MODEL destroy them\tshared")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bench::micro
