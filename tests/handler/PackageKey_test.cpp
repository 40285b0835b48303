#include "handler/PackageKey.h"

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "handler/Sign.h"

namespace install::update_metadata_parser {
namespace {

using test_support::signOf;

std::u16string textOf(const PackageKey& key) {
  std::u16string text = u"what was there before";
  key.copyTo(text);
  return text;
}

// All names of up to three units, from units that sort before, at and after the underscore.
std::vector<std::u16string> names() {
  const std::vector<char16_t> units = {u'\0', u'^', u'_', u'`', u'\xD83D', u'\xE000'};
  std::vector<std::u16string> all = {u""};
  for (std::size_t first = 0, length = 1; length <= 3; ++length) {
    const std::size_t end = all.size();
    for (; first < end; ++first) {
      for (const char16_t unit : units) {
        all.push_back(all[first] + unit);
      }
    }
  }
  return all;
}

TEST(PackageKey, IsComponentUnderscorePackage) {
  EXPECT_EQ(textOf({u"core", u"bin"}), u"core_bin");
  EXPECT_EQ(textOf({u"x", u""}), u"x_");
  EXPECT_EQ(textOf({u"", u"y"}), u"_y");
  EXPECT_EQ(textOf({u"", u""}), u"_");
}

TEST(PackageKey, ComparesAsItsTextDoes) {
  const std::vector<std::u16string> all = names();
  // Each component with each package, compared with keys that split elsewhere.
  const std::vector<PackageKey> others = {
      {u"", u""},   {u"_", u""},   {u"", u"_"},   {u"_", u"_"},  {u"^_", u"`"},
      {u"_`", u""}, {u"`", u"__"}, {u"`_", u"_"}, {u"", u"^_^"}, {u"\xD83D", u"\xE000"}};
  for (const std::u16string& component : all) {
    for (const std::u16string& package : all) {
      const PackageKey key{component, package};
      for (const PackageKey& other : others) {
        const int expected = signOf(textOf(key).compare(textOf(other)));
        ASSERT_EQ(signOf(key.compare(other)), expected)
            << ::testing::PrintToString(textOf(key)) << ' '
            << ::testing::PrintToString(textOf(other));
        ASSERT_EQ(signOf(other.compare(key)), -expected);
      }
    }
  }
}

TEST(PackageKey, ComparesPackagesOfOneComponentAsTheirTextsDo) {
  const std::vector<std::u16string> all = names();
  for (const std::u16string_view component : {std::u16string_view(u"core"), {}}) {
    for (const std::u16string& left : all) {
      for (const std::u16string& right : all) {
        ASSERT_EQ(signOf(PackageKey{component, left}.compare({component, right})),
                  signOf(left.compare(right)));
      }
    }
  }
}

TEST(PackageKey, ComparesAsItsTextDoesWhenOneComponentIsAPrefixOfTheOtherInTheSameMemory) {
  const std::u16string_view component = u"core_base";
  const std::u16string_view start = component.substr(0, 4);
  for (const std::u16string& package : names()) {
    const PackageKey key{start, package};
    const PackageKey other{component, u"_"};
    const int expected = signOf(textOf(key).compare(textOf(other)));
    ASSERT_EQ(signOf(key.compare(other)), expected) << ::testing::PrintToString(package);
    ASSERT_EQ(signOf(other.compare(key)), -expected) << ::testing::PrintToString(package);
  }
}

TEST(Components, AreOrderedAsTheBeginningsOfTheirPackageKeys) {
  const std::vector<std::u16string> all = names();
  for (const std::u16string& left : all) {
    for (const std::u16string& right : all) {
      ASSERT_EQ(signOf(compareComponents(left, right)), signOf((left + u"_").compare(right + u"_")))
          << ::testing::PrintToString(left) << ' ' << ::testing::PrintToString(right);
    }
  }
}

TEST(Components, MayContinueAnotherNameAfterItsSeparator) {
  const std::vector<std::u16string> all = names();
  for (const std::u16string& shorter : all) {
    for (const std::u16string& longer : all) {
      ASSERT_EQ(isContinued(shorter, longer), longer.rfind(shorter + u"_", 0) == 0)
          << ::testing::PrintToString(shorter) << ' ' << ::testing::PrintToString(longer);
    }
  }
}

}  // namespace
}  // namespace install::update_metadata_parser
