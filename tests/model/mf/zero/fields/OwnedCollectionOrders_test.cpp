// Elements lie in memory in the order of creation. Lists behave alike in that order and in any
// other.

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "install/datamodels/product_update/ComponentDeltaData.h"
#include "install/datamodels/product_update/PkgDeltaData.h"
#include "model/mf/zero/fields/OwnedList.h"

namespace mf::zero {
namespace {

using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDeltaData;
using test_support::OwnedList;

struct Order {
  const char* name;
  std::vector<std::size_t> places;  // of the elements in their list, by order of creation
};

class OwnedListInOrder : public OwnedList, public ::testing::WithParamInterface<Order> {
 protected:
  OwnedListInOrder() {
    for (int count = 0; count < 12; ++count) {
      made.push_back(make(std::u16string(1, static_cast<char16_t>(u'a' + count))));
    }
    for (const std::size_t place : GetParam().places) {
      appended.push_back(made[place]);
      list().append(made[place]);
    }
  }

  std::vector<PkgDeltaData> made;
  std::vector<PkgDeltaData> appended;
};

TEST_P(OwnedListInOrder, HoldsWhatWasAppended) {
  EXPECT_EQ(elements(), appended);
  for (std::size_t index = 0; index < appended.size(); ++index) {
    EXPECT_EQ(&list().readAt(index), appended[index].operator->());
    EXPECT_EQ(appended[index]->getContainer(), component);
  }
}

TEST_P(OwnedListInOrder, AppendsEachElementOnce) {
  for (const PkgDeltaData& pkg : made) {
    list().append(pkg);
    list().append(pkg);
  }
  for (const PkgDeltaData& pkg : made) {
    if (std::find(appended.begin(), appended.end(), pkg) == appended.end()) {
      appended.push_back(pkg);
    }
  }
  EXPECT_EQ(elements(), appended);
}

TEST_P(OwnedListInOrder, AcceptsEachElementThatAnotherListHolds) {
  const ComponentDeltaData other = ComponentDeltaData::create(model, Uuid());
  for (const PkgDeltaData& pkg : made) {
    other->getPkgsToDeleteMutable().append(pkg);
  }
  for (const PkgDeltaData& pkg : made) {
    list().append(pkg);
    if (std::find(appended.begin(), appended.end(), pkg) == appended.end()) {
      appended.push_back(pkg);
    }
  }
  EXPECT_EQ(elements(), appended);
}

TEST_P(OwnedListInOrder, LeavesElementsToTheirHoldersWhenItIsDestroyed) {
  const PkgDeltaData kept = appended[1];
  const std::u16string name = kept->getName();
  made.clear();
  appended.clear();
  component = ComponentDeltaData();
  EXPECT_FALSE(kept->getContainer());
  EXPECT_EQ(kept->getName(), name);
  // The others are freed. Their memory goes to the next elements, none of which is a kept one.
  for (int count = 0; count < 20; ++count) {
    appended.push_back(make(u"next"));
    EXPECT_NE(appended.back(), kept);
  }
  EXPECT_EQ(kept->getName(), name);
}

const Order kOrders[] = {
    {"AsMade", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}},
    {"FromTheMiddle", {5, 6, 7}},
    {"Backwards", {9, 8, 7, 6, 5, 4, 3, 2, 1, 0}},
    {"WithAGap", {0, 1, 2, 4, 5}},
    {"WithOneFromBefore", {3, 4, 5, 0, 6}},
    {"EveryOther", {0, 2, 4, 6, 8, 10, 1, 3, 5}},
    {"BackToTheStart", {4, 5, 6, 7, 1, 2, 3, 8, 9, 10, 11}},
};

INSTANTIATE_TEST_SUITE_P(Elements, OwnedListInOrder, ::testing::ValuesIn(kOrders),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace mf::zero
