// Operations that must not fail allocate nothing: destroying, moving, swapping, copying handles and
// copying thrown exceptions.

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "faults/Documents.h"
#include "faults/Outcome.h"
#include "foundation/core/except.h"
#include "foundation/json/Value.h"
#include "install/datamodels/product_update/ReleaseData.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "json/JsonText.h"
#include "json/ParserException.h"
#include "mf/zero/elements/Messages.h"
#include "support/FailingAllocation.h"
#include "support/TemporaryFolder.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Array;
using foundation::json::Object;
using foundation::json::parseJsonText;
using foundation::json::ParserException;
using foundation::json::Value;
using mf::zero::Model;
using test_support::allocations;
using test_support::richDocument;
using test_support::TemporaryFolder;

/// Runs an action and returns how often it asked for memory.
template <class Action>
std::size_t allocationsOf(Action&& action) {
  const std::size_t before = allocations();
  action();
  return allocations() - before;
}

constexpr const char* kLong = "a text that does not fit into the string object itself";

/// A value with containers and strings built by hand, some of them shared.
Value handMadeValue() {
  const Value shared = Array{kLong, Array{kLong, 1.5}, Object{{"key", kLong}}};
  return Object{{"first", shared}, {"second", Array{shared, shared}}, {kLong, nullptr}};
}

template <class T>
void expectNoAllocationByMovesOf(T first, T second) {
  using std::swap;
  std::optional<T> moved;
  EXPECT_EQ(allocationsOf([&] { moved.emplace(std::move(first)); }), 0U);
  EXPECT_EQ(allocationsOf([&] { swap(*moved, second); }), 0U);
  EXPECT_EQ(allocationsOf([&] { second = std::move(*moved); }), 0U);
  EXPECT_EQ(allocationsOf([&] { moved.reset(); }), 0U);
}

template <class T>
void expectNoAllocationByCopiesOf(const T& first, const T& second) {
  std::optional<T> copy;
  EXPECT_EQ(allocationsOf([&] { copy.emplace(first); }), 0U);
  EXPECT_EQ(allocationsOf([&] { *copy = second; }), 0U);
  EXPECT_EQ(allocationsOf([&] { *copy = *copy; }), 0U);
  EXPECT_EQ(allocationsOf([&] { copy.reset(); }), 0U);
}

TEST(NoAllocation, IsMadeByMovingAndSwappingAndDestroyingValues) {
  expectNoAllocationByMovesOf<Value>(handMadeValue(), kLong);
  expectNoAllocationByMovesOf<Value>(parseJsonText(richDocument()), 1.0);
  expectNoAllocationByMovesOf<Object>(handMadeValue().as<Object>(),
                                      parseJsonText(richDocument()).as<Object>());
  expectNoAllocationByMovesOf<Array>(Array{kLong, kLong}, Array{});
}

TEST(NoAllocation, IsMadeByCopyingContainers) {
  const Value made = handMadeValue();
  const Value read = parseJsonText(richDocument());
  expectNoAllocationByCopiesOf<Value>(made, read);
  expectNoAllocationByCopiesOf<Object>(made.as<Object>(), read.as<Object>());
}

TEST(NoAllocation, IsMadeByDestroyingDeepValues) {
  constexpr std::size_t kDepth = 100'000;
  std::optional<Value> value = parseJsonText(std::string(kDepth, '[') + std::string(kDepth, ']'));
  EXPECT_EQ(allocationsOf([&] { value.reset(); }), 0U);
  value.emplace(1.0);
  for (std::size_t level = 0; level < kDepth; ++level) {
    value.emplace(Array{*value});
  }
  EXPECT_EQ(allocationsOf([&] { value.reset(); }), 0U);
}

TEST(NoAllocation, IsMadeByHandles) {
  const UpdateMetaDataHandler handler;
  handler.initializeReleaseData();
  handler.setProductDeltaData(u"product", {u"component"}, {}, {{u"component", {{u"pkg", 1}}}}, {});
  const auto root = handler.getProductUpdateMetaDataModel();
  const auto product = root->getProductsDeltaData()[0];
  const auto other = UpdateMetaDataHandler().getProductUpdateMetaDataModel();
  expectNoAllocationByCopiesOf(root, other);
  expectNoAllocationByMovesOf(root, other);
  expectNoAllocationByCopiesOf(product, decltype(product)());
  expectNoAllocationByMovesOf(product, product);
  const Model model = Model::create(mf::zero::ModelSpec());
  expectNoAllocationByCopiesOf(model, Model());
  expectNoAllocationByMovesOf(model, Model());
  product->getCompsToDelete()[0]->getPkgsToDelete()[0];  // makes the elements
  EXPECT_EQ(allocationsOf([&] {
              const auto component = product->getCompsToDelete()[0];
              const auto pkg = component->getPkgsToDelete()[0];
              EXPECT_TRUE(pkg->getContainer() == component);
            }),
            0U);
}

TEST(NoAllocation, IsMadeByFacades) {
  const TemporaryFolder folder;
  UpdateMetaDataJsonParser first(folder.writeFile("document.json", richDocument()));
  const auto facade = first.parseUpdateMetaDataJson();
  const UpdateMetaData other(std::make_shared<UpdateMetaDataHandler>());
  expectNoAllocationByCopiesOf(*facade, other);
  expectNoAllocationByMovesOf(*facade, other);
  EXPECT_EQ(allocationsOf([&] { EXPECT_NE(facade->getTargetUpdateLevelForQorv(), 0); }), 0U);
}

TEST(NoAllocation, IsMadeByDestroyingEverythingThatALoadHasMade) {
  const TemporaryFolder folder;
  folder.writeFile("catalogue/products.tsv", "header\na base code\tproduct\t1\tcontrolling\n");
  std::optional<UpdateMetaDataJsonParser> parser;
  parser.emplace(folder.writeFile("document.json", richDocument()));
  auto facade = parser->parseUpdateMetaDataJson();
  auto extract = facade->getComponentsToExtract(folder.path("catalogue"));
  auto files = facade->getComponentsWithFilesToDelete();
  auto sizes = facade->getUpdateSizeForComponentsToExtract();
  EXPECT_EQ(allocationsOf([&] { parser.reset(); }), 0U);
  EXPECT_EQ(allocationsOf([&] { facade.reset(); }), 0U);
  expectNoAllocationByMovesOf(std::move(extract), {});
  expectNoAllocationByMovesOf(std::move(files), {});
  expectNoAllocationByMovesOf(std::move(sizes), {});
  expectNoAllocationByMovesOf(UpdatePkgData{u"a package with a long name", 1, 2},
                              UpdatePkgData{u"another one, also long", 3, 4});
}

/// Catches what an action throws and expects that copying it allocates nothing.
template <class Exception, class Action>
void expectNoAllocationByCopiesOfFailure(Action action) {
  try {
    action();
    FAIL() << "nothing was thrown";
  } catch (const Exception& failure) {
    static_assert(std::is_nothrow_copy_constructible_v<Exception>);
    expectNoAllocationByCopiesOf(failure, failure);
    const Exception copy = failure;
    EXPECT_STREQ(copy.what(), failure.what());
  }
}

TEST(NoAllocation, IsMadeByCopiesOfThrownExceptions) {
  using foundation::core::except::Exception;
  using mf::zero::CannotCastIncompatibleTypes;
  using mf::zero::IncompatibleModels;
  expectNoAllocationByCopiesOfFailure<ParserException>([] { parseJsonText("[1 2]"); });
  expectNoAllocationByCopiesOfFailure<Exception<IncompatibleModels>>(
      [] { mf::zero::reportException(IncompatibleModels{u"a class with a long name"}); });
  expectNoAllocationByCopiesOfFailure<Exception<CannotCastIncompatibleTypes>>(
      [] { mf::zero::reportException(CannotCastIncompatibleTypes{u"a class with a long name"}); });
  expectNoAllocationByCopiesOfFailure<std::runtime_error>(
      [] { UpdateMetaDataJsonParser(u"/nonexistent").parseUpdateMetaDataJson(); });
  expectNoAllocationByCopiesOfFailure<std::runtime_error>([] { Value(1.0).as<std::string>(); });
  expectNoAllocationByCopiesOfFailure<std::out_of_range>([] { Object().at("absent"); });
  expectNoAllocationByCopiesOfFailure<std::ios_base::failure>(
      [] { UpdateMetaDataJsonParser(u"").readFile(u"/proc/self/mem"); });
}

}  // namespace
}  // namespace install::update_metadata_parser
