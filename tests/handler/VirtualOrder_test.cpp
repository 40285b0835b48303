// The order of the virtual operations of the exported classes, their signatures and their constness
// are binary interface: libraries that were compiled before call by place.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "install/product_data_provider/ProductDataProvider.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::PkgDataWithFilesToDelete;
using datamodels::product_update::ProductUpdateMetaData;
using product_data_provider::ProductDataProvider;

using String = std::u16string;
using Strings = std::vector<String>;
using Keys = std::set<String>;
using KeysByCode = std::map<String, Keys>;
using Sizes = std::map<String, std::pair<std::int64_t, std::int64_t>>;
using Files = std::map<String, std::pair<Keys, std::int64_t>>;

// The destructor comes first and takes two places: it alone, and it with freeing the memory.
constexpr std::size_t kPlacesOfDestructor = 2;

// What a pointer to an operation holds: the address of a function, which is even, or, for a virtual
// operation, one more than the offset of its place in the class's table, in bytes. This is so in
// the Itanium C++ interface on all machines whose functions start at even addresses.
template <class Operation>
std::uintptr_t functionOrPlace(Operation operation) {
  struct {
    std::uintptr_t functionOrPlace;
    std::ptrdiff_t adjustment;
  } parts;
  static_assert(sizeof parts == sizeof operation);
  std::memcpy(&parts, &operation, sizeof parts);
  return parts.functionOrPlace;
}

template <class Operation>
bool isVirtual(Operation operation) {
  return functionOrPlace(operation) % 2 == 1;
}

template <class Operation>
std::size_t placeOf(Operation operation) {
  EXPECT_TRUE(isVirtual(operation));
  return functionOrPlace(operation) / sizeof(void*);
}

std::vector<std::size_t> placesBehindTheDestructor(std::size_t count) {
  std::vector<std::size_t> places;
  for (std::size_t place = 0; place < count; ++place) {
    places.push_back(kPlacesOfDestructor + place);
  }
  return places;
}

// A new virtual operation of a derived class gets the first place behind those of its base.
template <class Base>
class WithOneMore : public Base {
 public:
  virtual void oneMore() = 0;
};

TEST(VirtualOrder, OfTheHandlerIsFixed) {
  using H = UpdateMetaDataHandler;
  using PkgsToDelete = std::map<String, std::map<String, std::int64_t>>;
  using PkgsToExtract = std::map<String, std::vector<UpdatePkgData>>;
  using GetText = String (H::*)() const;
  using SetText = void (H::*)(const String&);
  using SetTextConst = void (H::*)(const String&) const;
  using Initialize = void (H::*)() const;
  using ByLocation = KeysByCode (H::*)(const String&);
  using ByCode = Keys (H::*)(const String&, const String&);
  using LookUp = String (H::*)(const String&, const String&);
  using SetProduct = void (H::*)(const String&, const Strings&, const Strings&, const PkgsToDelete&,
                                 const PkgsToExtract&) const;
  using CreatePkg =
      PkgDataWithFilesToDelete (H::*)(const String&, std::int64_t, const Strings&) const;
  using SetComponent =
      void (H::*)(const String&, const std::vector<PkgDataWithFilesToDelete>&) const;
  const std::vector<std::size_t> places = {
      placeOf<Initialize>(&H::initializeReleaseData),
      placeOf<Initialize>(&H::initializeBaseRelease),
      placeOf<Initialize>(&H::initializeTargetRelease),
      placeOf<SetText>(&H::setBaseReleaseFamily),
      placeOf<GetText>(&H::getBaseReleaseFamily),
      placeOf<SetText>(&H::setTargetReleaseFamily),
      placeOf<GetText>(&H::getTargetReleaseFamily),
      placeOf<SetTextConst>(&H::setBaseReleaseVersion),
      placeOf<GetText>(&H::getBaseReleaseVersion),
      placeOf<SetTextConst>(&H::setTargetReleaseVersion),
      placeOf<GetText>(&H::getTargetReleaseVersion),
      placeOf<void (H::*)(int) const>(&H::setTargetUpdateLevelForQorv),
      placeOf<int (H::*)() const>(&H::getTargetUpdateLevelForQorv),
      placeOf<SetTextConst>(&H::setMetaDataArch),
      placeOf<SetProduct>(&H::setProductDeltaData),
      placeOf<CreatePkg>(&H::createPkgDataWithFilesToDelete),
      placeOf<SetComponent>(&H::setComponentDataWithFilesToDelete),
      placeOf<ByLocation>(&H::getComponentsToExtract),
      placeOf<ByCode>(&H::getComponentsToExtract),
      placeOf<ByLocation>(&H::getComponentsToDelete),
      placeOf<ByCode>(&H::getComponentsToDelete),
      placeOf<Files (H::*)() const>(&H::getComponentsWithFilesToDelete),
      placeOf<Sizes (H::*)() const>(&H::getUpdateSizeForComponentsToExtract),
      placeOf<ProductUpdateMetaData (H::*)() const>(&H::getProductUpdateMetaDataModel),
      placeOf<SetText>(&H::initializeProductDataProvider),
      placeOf<LookUp>(&H::getProductName),
      placeOf<LookUp>(&H::getProductBaseCode),
      placeOf(&WithOneMore<H>::oneMore),
  };
  EXPECT_EQ(places, placesBehindTheDestructor(28));
}

TEST(VirtualOrder, OfTheFacadeIsFixed) {
  using F = UpdateMetaData;
  using GetText = String (F::*)() const;
  using ByLocation = KeysByCode (F::*)(const String&) const;
  using ByCode = Keys (F::*)(const String&, const String&) const;
  const std::vector<std::size_t> places = {
      placeOf<GetText>(&F::getBaseReleaseFamily),
      placeOf<GetText>(&F::getTargetReleaseFamily),
      placeOf<GetText>(&F::getBaseReleaseVersion),
      placeOf<GetText>(&F::getTargetReleaseVersion),
      placeOf<int (F::*)() const>(&F::getTargetUpdateLevelForQorv),
      placeOf<ByLocation>(&F::getComponentsToExtract),
      placeOf<ByCode>(&F::getComponentsToExtract),
      placeOf<ByLocation>(&F::getComponentsToDelete),
      placeOf<ByCode>(&F::getComponentsToDelete),
      placeOf<Files (F::*)() const>(&F::getComponentsWithFilesToDelete),
      placeOf<Sizes (F::*)() const>(&F::getUpdateSizeForComponentsToExtract),
      placeOf(&WithOneMore<F>::oneMore),
  };
  EXPECT_EQ(places, placesBehindTheDestructor(12));
}

TEST(VirtualOrder, OfTheParserIsFixed) {
  using P = UpdateMetaDataJsonParser;
  const std::vector<std::size_t> places = {
      placeOf<std::shared_ptr<UpdateMetaData> (P::*)()>(&P::parseUpdateMetaDataJson),
      placeOf<std::string (P::*)(const String&)>(&P::readFile),
      placeOf<std::shared_ptr<UpdateMetaDataHandler> (P::*)() const>(&P::getUpdateMetaDataHandler),
      placeOf(&WithOneMore<P>::oneMore),
  };
  EXPECT_EQ(places, placesBehindTheDestructor(4));
}

TEST(VirtualOrder, OfTheProductCatalogueIsFixed) {
  using C = ProductDataProvider;
  const std::vector<std::size_t> places = {
      placeOf<String (C::*)(const String&) const>(&C::getProductBaseCode),
      placeOf<String (C::*)(const String&) const>(&C::getProductName),
      placeOf(&WithOneMore<C>::oneMore),
  };
  EXPECT_EQ(places, placesBehindTheDestructor(3));
}

TEST(PopulationOperations, AreNotVirtualAndKeepTheirSignatures) {
  using datamodels::product_update::ComponentDeltaData;
  using datamodels::product_update::PkgDeltaData;
  using datamodels::product_update::ProductDeltaData;
  using H = UpdateMetaDataHandler;
  using PkgsToDelete = std::map<String, std::map<String, std::int64_t>>;
  using PkgsToExtract = std::map<String, std::vector<UpdatePkgData>>;
  void (H::*const setCompsToDelete)(const ProductDeltaData&, const Strings&, const PkgsToDelete&)
      const = &H::setCompsToDelete;
  void (H::*const setCompsToExtract)(const ProductDeltaData&, const Strings&, const PkgsToExtract&)
      const = &H::setCompsToExtract;
  void (H::*const setPkgsToDelete)(const String&, const ComponentDeltaData&, const PkgsToDelete&)
      const = &H::setPkgsToDelete;
  void (H::*const setPkgsToExtract)(const String&, const ComponentDeltaData&, const PkgsToExtract&)
      const = &H::setPkgsToExtract;
  PkgDeltaData (H::*const initializePkgDataForDelete)(const String&, std::int64_t) const =
      &H::initializePkgDataForDelete;
  PkgDeltaData (H::*const initializePkgDataForExtract)(const UpdatePkgData&) const =
      &H::initializePkgDataForExtract;
  EXPECT_FALSE(isVirtual(setCompsToDelete));
  EXPECT_FALSE(isVirtual(setCompsToExtract));
  EXPECT_FALSE(isVirtual(setPkgsToDelete));
  EXPECT_FALSE(isVirtual(setPkgsToExtract));
  EXPECT_FALSE(isVirtual(initializePkgDataForDelete));
  EXPECT_FALSE(isVirtual(initializePkgDataForExtract));
}

}  // namespace
}  // namespace install::update_metadata_parser
