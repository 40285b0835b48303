#include "json/MemberOrder.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/ValueText.h"

namespace foundation::json::detail {
namespace {

using namespace std::string_literals;

using Keys = std::vector<std::string>;
using Places = std::vector<std::size_t>;

Places orderOf(const Keys& keys, MemberOrder& order) {
  std::vector<Rep> slots;
  for (const std::string& key : keys) {
    Rep::Content content{};
    content.characters = key.data();
    slots.push_back({content, Rep::tagOf(traits<std::string>::index, key.size(), false)});
    slots.push_back({{}, Rep::tagOf(traits<std::nullptr_t>::index, 0, false)});
  }
  order.find(slots.data(), keys.size());
  Places places;
  for (std::size_t i = 0; i != order.size(); ++i) {
    places.push_back(order[i]);
  }
  return places;
}

Places orderOf(const Keys& keys) {
  MemberOrder order;
  return orderOf(keys, order);
}

// The order that an ordered map yields which keeps the first of equal keys.
Places naiveOrderOf(const Keys& keys) {
  std::map<std::string, std::size_t> places;
  for (std::size_t i = 0; i != keys.size(); ++i) {
    places.emplace(keys[i], i);
  }
  Places order;
  for (const auto& [key, place] : places) {
    order.push_back(place);
  }
  return order;
}

TEST(MemberOrder, OfNoMembersIsEmpty) {
  EXPECT_EQ(orderOf({}), Places{});
}

TEST(MemberOrder, IsThatOfTheBytesAsUnsignedNumbers) {
  EXPECT_EQ(orderOf({"b", "a"}), (Places{1, 0}));
  EXPECT_EQ(orderOf({"\xC3\xA9", "z", "\x7F"}), (Places{1, 2, 0}));
  EXPECT_EQ(orderOf({"12345678\xFF", "12345678z"}), (Places{1, 0}));
}

TEST(MemberOrder, PutsAPrefixFirst) {
  EXPECT_EQ(orderOf({"ab", "a", ""}), (Places{2, 1, 0}));
  EXPECT_EQ(orderOf({"12345678", "1234567", "123456789"}), (Places{1, 0, 2}));
}

TEST(MemberOrder, TellsKeysApartThatEndInNulBytes) {
  EXPECT_EQ(orderOf({"a\0"s, "a"}), (Places{1, 0}));
  EXPECT_EQ(orderOf({"a", "a\0"s, "a\0\0"s}), (Places{0, 1, 2}));
  EXPECT_EQ(orderOf({"\0"s, ""}), (Places{1, 0}));
}

TEST(MemberOrder, HasTheFirstOfEqualKeysAlone) {
  EXPECT_EQ(orderOf({"a", "a"}), Places{0});
  EXPECT_EQ(orderOf({"12345678a", "12345678a"}), Places{0});
  EXPECT_EQ(orderOf({"b", "a", "b", "a", "b"}), (Places{1, 0}));
  EXPECT_EQ(orderOf(Keys(100, "the same key")), Places{0});
}

TEST(MemberOrder, IsFoundForMembersThatComeInTheOppositeOrder) {
  Keys keys;
  for (int i = 0; i != 100; ++i) {
    keys.push_back("key " + std::to_string(2000 - i));
  }
  Places opposite = naiveOrderOf(keys);
  EXPECT_EQ(opposite.front(), 99u);
  EXPECT_EQ(orderOf(keys), opposite);
  keys.push_back(keys.back());
  EXPECT_EQ(orderOf(keys), opposite);
}

TEST(MemberOrder, DoesNotDependOnWhatWasOrderedBefore) {
  MemberOrder order;
  EXPECT_EQ(orderOf(Keys(50, "x"), order), Places{0});
  EXPECT_EQ(orderOf({"c", "b", "a"}, order), (Places{2, 1, 0}));
  EXPECT_EQ(orderOf({}, order), Places{});
  EXPECT_EQ(orderOf({"b", "a"}, order), (Places{1, 0}));
}

TEST(MemberOrder, AgreesWithAnOrderedMap) {
  std::mt19937_64 random(1);
  MemberOrder order;
  for (int left = 20000; left != 0; --left) {
    const std::size_t count = random() % (left % 50 == 0 ? 300 : 24);
    const std::size_t length = 1 + random() % 12;
    const std::size_t letters = 1 + random() % 4;
    const std::string common(random() % 10, 'c');
    Keys keys(count);
    for (std::string& key : keys) {
      key = common;
      for (std::size_t i = random() % (length + 1); i != 0; --i) {
        key.push_back("a\0z\xFF"[random() % letters]);
      }
    }
    ASSERT_EQ(orderOf(keys, order), naiveOrderOf(keys)) << ::testing::PrintToString(keys);
  }
}

}  // namespace
}  // namespace foundation::json::detail
