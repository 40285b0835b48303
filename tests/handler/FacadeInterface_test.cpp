// What the facade does not offer.

#include "install/update_metadata_parser/UpdateMetaData.h"

#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace install::update_metadata_parser {
namespace {

// Whether `call` can be made on an object of class `T`.
template <class T, class Call>
constexpr bool offers(Call) {
  return std::is_invocable_v<Call, T&>;
}

template <class T>
std::vector<bool> offersWhatChangesOrOpens() {
  return {
      offers<T>([](auto& t) -> decltype(t.initializeReleaseData()) {}),
      offers<T>([](auto& t) -> decltype(t.initializeBaseRelease()) {}),
      offers<T>([](auto& t) -> decltype(t.initializeTargetRelease()) {}),
      offers<T>([](auto& t) -> decltype(t.setBaseReleaseFamily(u"")) {}),
      offers<T>([](auto& t) -> decltype(t.setTargetReleaseFamily(u"")) {}),
      offers<T>([](auto& t) -> decltype(t.setBaseReleaseVersion(u"")) {}),
      offers<T>([](auto& t) -> decltype(t.setTargetReleaseVersion(u"")) {}),
      offers<T>([](auto& t) -> decltype(t.setTargetUpdateLevelForQorv(0)) {}),
      offers<T>([](auto& t) -> decltype(t.setMetaDataArch(u"")) {}),
      offers<T>([](auto& t) -> decltype(t.setProductDeltaData(u"", {}, {}, {}, {})) {}),
      offers<T>([](auto& t) -> decltype(t.createPkgDataWithFilesToDelete(u"", 0, {})) { throw 0; }),
      offers<T>([](auto& t) -> decltype(t.setComponentDataWithFilesToDelete(u"", {})) {}),
      offers<T>([](auto& t) -> decltype(t.getProductUpdateMetaDataModel()) { throw 0; }),
      offers<T>([](auto& t) -> decltype(t.initializeProductDataProvider(u"")) {}),
      offers<T>([](auto& t) -> decltype(t.getProductName(u"", u"")) { throw 0; }),
      offers<T>([](auto& t) -> decltype(t.getProductBaseCode(u"", u"")) { throw 0; }),
  };
}

TEST(FacadeInterface, OffersNothingOfTheHandlerThatChangesTheModelOrOpensTheCatalogue) {
  EXPECT_EQ(offersWhatChangesOrOpens<UpdateMetaDataHandler>(), std::vector<bool>(16, true));
  EXPECT_EQ(offersWhatChangesOrOpens<UpdateMetaData>(), std::vector<bool>(16, false));
}

}  // namespace
}  // namespace install::update_metadata_parser
