// What a placeholder cannot resolve to.

#include "mf/zero/elements/Placeholders.h"

#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "foundation/core/except.h"
#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "mf/zero/elements/Messages.h"
#include "mf/zero/fields/OwnedCollection.h"

namespace mf::zero {
namespace {

using foundation::core::except::Exception;
using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;

struct WrongTarget {
  const char* name;
  ModelElement (*resolve)(const Model& model);
  std::u16string typeName;
  std::string text;
};

void PrintTo(const WrongTarget& target, std::ostream* stream) {
  *stream << target.name;
}

class PlaceholderRejects : public ::testing::TestWithParam<WrongTarget> {};

TEST_P(PlaceholderRejects, AndStays) {
  const Model model = Model::create(ModelSpec());
  const ComponentDeltaData component = ComponentDeltaData::create(model, Uuid());
  const PkgDeltaData placeholder = PkgDeltaData::create(model, Uuid());
  int resolved = 0;
  Placeholders::make(placeholder, [&] {
    ++resolved;
    return GetParam().resolve(model);
  });
  component->getPkgsToExtractMutable().append(placeholder);
  for (int attempt = 1; attempt <= 2; ++attempt) {
    try {
      static_cast<void>(component->getPkgsToExtract().readAt(0));
      FAIL() << "nothing was thrown";
    } catch (const Exception<CannotCastIncompatibleTypes>& error) {
      EXPECT_EQ(error.message().typeName, GetParam().typeName);
      EXPECT_EQ(error.what(), GetParam().text);
    }
    EXPECT_EQ(resolved, attempt) << "the placeholder is still in its place";
  }
  EXPECT_TRUE(placeholder->isProxy());
  EXPECT_EQ(component->getPkgsToExtract().size(), 1u);
}

const WrongTarget kWrongTargets[] = {
    {"Nothing", [](const Model&) { return ModelElement(); }, u"mf::zero::ModelElement",
     "cannot cast incompatible types: mf::zero::ModelElement"},
    {"AnElementOfAnotherType",
     [](const Model& model) -> ModelElement { return ComponentDeltaData::create(model, Uuid()); },
     u"install::datamodels::product_update::ComponentDeltaData",
     "cannot cast incompatible types: install::datamodels::product_update::ComponentDeltaData"},
    {"AnotherPlaceholder",
     [](const Model& model) -> ModelElement {
       PkgDeltaData other = PkgDeltaData::create(model, Uuid());
       Placeholders::make(other, [] { return ModelElement(); });
       return other;
     },
     u"install::datamodels::product_update::PkgDeltaData",
     "cannot cast incompatible types: install::datamodels::product_update::PkgDeltaData"},
};

INSTANTIATE_TEST_SUITE_P(Target, PlaceholderRejects, ::testing::ValuesIn(kWrongTargets),
                         [](const auto& row) { return row.param.name; });
}  // namespace
}  // namespace mf::zero
