// MODEL: the elements that a handler makes for products that share components.

#include <deque>
#include <memory>
#include <string>
#include <vector>

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

// Measures making the elements of *shared*: `make` makes something empty, `fill` fills it. Counts
// the memory of each package, including its share of the elements above it.
template <class Make, class Fill>
void measureMaking(benchmark::State& state, Make make, Fill fillIt) {
  const ProductCalls& products = once<productCallsOf>("shared");
  const auto elements = static_cast<double>(products.packageElements);
  double bytes = 0;
  for (auto _ : state) {
    state.PauseTiming();
    forgetFreeMemory();
    const std::int64_t before = peers::residentBytes();
    auto made = make();
    state.ResumeTiming();
    fillIt(*made, products);
    state.PauseTiming();
    bytes = static_cast<double>(peers::residentBytes() - before);
    made.reset();
    state.ResumeTiming();
  }
  state.counters[kElements] = elements;
  state.counters["bytes each"] = bytes / elements;
}

void makeElements(benchmark::State& state) {
  measureMaking(
      state, [] { return std::make_unique<UpdateMetaDataHandler>(); }, fill);
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

// The obvious form without a model: a reference-counted object for each package that contains its
// name.
struct PlainPackage {
  explicit PlainPackage(const std::u16string& itsName) : name(itsName) {}

  std::size_t references = 1;
  const void* container = nullptr;
  std::u16string name;
  std::int64_t size = 0;
  std::int64_t uncompressedBytes = 0;
};

struct PlainComponent {
  std::u16string name;
  std::vector<std::unique_ptr<PlainPackage>> pkgs;
};

template <class Table, class Read>
void fillPlain(std::deque<PlainComponent>& components, const std::vector<std::u16string>& names,
               const Table& table, Read read) {
  for (const std::u16string& name : names) {
    PlainComponent& component = components.emplace_back();
    component.name = name;
    const auto found = table.find(name);
    if (found == table.end()) {
      continue;
    }
    for (const auto& entry : found->second) {
      component.pkgs.push_back(read(entry));
      component.pkgs.back()->container = &component;
    }
  }
}

void fillPlain(std::deque<PlainComponent>& components, const ProductCalls& products) {
  for (const ProductCalls::Call& call : products.calls) {
    fillPlain(components, call.toDelete, products.pkgsToDelete, [](const auto& entry) {
      auto pkg = std::make_unique<PlainPackage>(entry.first);
      pkg->size = entry.second;
      return pkg;
    });
    fillPlain(components, call.toExtract, products.pkgsToExtract, [](const auto& entry) {
      auto pkg = std::make_unique<PlainPackage>(entry.name);
      pkg->size = entry.size;
      pkg->uncompressedBytes = entry.uncompressedBytes;
      return pkg;
    });
  }
}

void makePlainObjects(benchmark::State& state) {
  measureMaking(
      state, [] { return std::make_unique<std::deque<PlainComponent>>(); },
      [](std::deque<PlainComponent>& components, const ProductCalls& products) {
        fillPlain(components, products);
      });
}

BENCHMARK(makeElements)
    ->Name("MODEL make elements of packages\tshared")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(makePlainObjects)
    ->Name("MODEL make an object for each of them by hand\tshared")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(destroyElements)->Name("MODEL destroy them\tshared")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace bench::micro
