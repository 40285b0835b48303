#include "mf/zero/elements/Messages.h"

#include <exception>
#include <string>
#include <type_traits>
#include <typeinfo>

#include <gtest/gtest.h>

#include "foundation/core/except.h"

namespace mf::zero {
namespace {

using foundation::core::except::Exception;
using foundation::core::except::IMsgIDException;
using CannotCast = Exception<CannotCastIncompatibleTypes>;
using ForeignModel = Exception<IncompatibleModels>;

static_assert(std::is_base_of_v<std::exception, CannotCast>);
static_assert(std::is_base_of_v<IMsgIDException, CannotCast>);
static_assert(std::is_convertible_v<CannotCast*, std::exception*>, "no ambiguous base");
static_assert(!std::is_base_of_v<std::exception, IMsgIDException>);
static_assert(std::is_nothrow_copy_constructible_v<CannotCast>);
static_assert(std::is_nothrow_copy_assignable_v<CannotCast>);
static_assert(std::is_nothrow_copy_constructible_v<ForeignModel>);
static_assert(std::is_nothrow_copy_assignable_v<ForeignModel>);

constexpr const char* kText = "cannot cast incompatible types: some::Type";

void report() {
  reportException(CannotCastIncompatibleTypes{u"some::Type"});
}

TEST(CannotCastIncompatibleTypes, CarriesTheNameOfTheOffendingType) {
  try {
    report();
    FAIL() << "nothing was thrown";
  } catch (const CannotCast& error) {
    EXPECT_EQ(error.message().typeName, u"some::Type");
    EXPECT_STREQ(error.what(), kText);
  }
}

TEST(CannotCastIncompatibleTypes, NamesItsMessageCatalogueAndKey) {
  EXPECT_STREQ(CannotCastIncompatibleTypes::kCatalogue, "mf0:messages");
  EXPECT_STREQ(CannotCastIncompatibleTypes::kKey, "CannotCastIncompatibleTypes");
  EXPECT_STREQ(CannotCast(CannotCastIncompatibleTypes{u"some::Type"}).getMessageId(),
               "mf0:messages:CannotCastIncompatibleTypes");
}

TEST(CannotCastIncompatibleTypes, IsCaughtAsAStandardException) {
  try {
    report();
    FAIL() << "nothing was thrown";
  } catch (const std::exception& error) {
    EXPECT_STREQ(error.what(), kText);
    EXPECT_EQ(typeid(error), typeid(CannotCast));
  }
}

TEST(CannotCastIncompatibleTypes, IsCaughtByItsMessageIdentifier) {
  try {
    report();
    FAIL() << "nothing was thrown";
  } catch (const IMsgIDException& error) {
    EXPECT_STREQ(error.getMessageId(), "mf0:messages:CannotCastIncompatibleTypes");
    EXPECT_STREQ(error.what(), kText);
    EXPECT_EQ(typeid(error), typeid(CannotCast));
  }
}

TEST(CannotCastIncompatibleTypes, OutlivesTheOriginalAsACopy) {
  std::exception_ptr kept;
  CannotCast copy(CannotCastIncompatibleTypes{u"another::Type"});
  try {
    report();
  } catch (const CannotCast& error) {
    copy = error;
    kept = std::current_exception();
  }
  kept = nullptr;
  EXPECT_EQ(copy.message().typeName, u"some::Type");
  EXPECT_STREQ(copy.what(), kText);
}

TEST(CannotCastIncompatibleTypes, ShowsUnitsBeyondAsciiAsQuestionMarksInItsText) {
  const CannotCast error(CannotCastIncompatibleTypes{u"caf\u00E9::\U0001F600"});
  EXPECT_STREQ(error.what(), "cannot cast incompatible types: caf?::??");
  EXPECT_EQ(error.message().typeName, u"caf\u00E9::\U0001F600");
}

TEST(IncompatibleModels, CarriesTheNameOfTheElementsType) {
  try {
    reportException(IncompatibleModels{u"some::Type"});
    FAIL() << "nothing was thrown";
  } catch (const std::exception& error) {
    EXPECT_STREQ(error.what(), "element of another model: some::Type");
    const auto& exact = dynamic_cast<const ForeignModel&>(error);
    EXPECT_EQ(exact.message().typeName, u"some::Type");
    EXPECT_STREQ(exact.getMessageId(), "mf0:messages:IncompatibleModels");
  }
}

}  // namespace
}  // namespace mf::zero
