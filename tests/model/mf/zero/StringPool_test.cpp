#include "mf/zero/StringPool.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/SampleStrings.h"

namespace mf::zero {
namespace {

TEST(StringPool, KeepsEveryUnitOfAString) {
  StringPool pool;
  for (const std::u16string& text : test_support::sampleStrings()) {
    EXPECT_EQ(pool.intern(text).view(), text);
  }
}

TEST(StringPool, StoresEqualStringsOnce) {
  StringPool pool;
  for (const std::u16string& text : test_support::sampleStrings()) {
    const std::u16string copy = text;
    EXPECT_EQ(&pool.intern(text), &pool.intern(copy));
  }
}

TEST(StringPool, TellsStringsApartThatDifferInOneUnitOrInLength) {
  StringPool pool;
  const std::u16string base = u"0123456789";
  std::map<const InternedString*, std::u16string> stored;
  stored.emplace(&pool.intern(base), base);
  for (std::size_t index = 0; index < base.size(); ++index) {
    std::u16string other = base;
    other[index] = u'x';
    stored.emplace(&pool.intern(other), other);
    other = base.substr(0, index);
    stored.emplace(&pool.intern(other), other);
    other += std::u16string(base.size() - index, u'\0');
    stored.emplace(&pool.intern(other), other);
  }
  EXPECT_EQ(stored.size(), 1 + 3 * base.size());
  for (const auto& [string, text] : stored) {
    EXPECT_EQ(string->view(), text);
  }
}

TEST(StringPool, TellsStringsApartWhoseHashesAreEqual) {
  StringPool pool;
  const InternedString& text = pool.intern(u"aaaacccc");
  const InternedString& other = pool.intern(u"bbbb\x0736\x3A38\x83D9\x3942");
  const InternedString& longer = pool.intern(u"name\xFD34\xC7D3\xB3B8\x1C6B");
  const InternedString& shorter = pool.intern(u"name");
  // For another hash function, other strings have to be found.
  ASSERT_EQ(text.hash, other.hash);
  ASSERT_EQ(longer.hash, shorter.hash);
  EXPECT_EQ(text.view(), u"aaaacccc");
  EXPECT_EQ(other.view(), u"bbbb\x0736\x3A38\x83D9\x3942");
  EXPECT_EQ(longer.view(), u"name\xFD34\xC7D3\xB3B8\x1C6B");
  EXPECT_EQ(shorter.view(), u"name");
  EXPECT_EQ(&pool.intern(u"bbbb\x0736\x3A38\x83D9\x3942"), &other);
  EXPECT_EQ(&pool.intern(u"name"), &shorter);
}

TEST(StringPool, TakesAViewOfNothingForTheEmptyString) {
  StringPool pool;
  const InternedString& empty = pool.intern(std::u16string_view());
  EXPECT_EQ(empty.view(), u"");
  EXPECT_EQ(&pool.intern(u""), &empty);
  EXPECT_EQ(&pool.intern(std::u16string_view()), &empty);
}

TEST(StringPool, FindsEveryStringAgainHoweverManyThereAre) {
  StringPool pool;
  std::vector<const InternedString*> stored;
  std::vector<std::u16string> texts;
  for (int number = 0; number < 20000; ++number) {
    std::u16string text = u"package-";
    for (const char digit : std::to_string(number)) {
      text += static_cast<char16_t>(digit);
    }
    texts.push_back(text);
    stored.push_back(&pool.intern(text));
  }
  for (std::size_t index = 0; index < texts.size(); ++index) {
    ASSERT_EQ(stored[index]->view(), texts[index]);
    ASSERT_EQ(&pool.intern(texts[index]), stored[index]);
  }
}

TEST(StringPool, KeepsStringsOfEverySizeWhereTheyAre) {
  StringPool pool;
  std::vector<const InternedString*> stored;
  std::vector<std::u16string> texts;
  // From nothing to more than the largest block, with small ones in between.
  for (std::size_t size = 1; size < 2000000; size = size * 3 + 1) {
    for (const char16_t unit : {u'a', u'\u4E2D'}) {
      texts.emplace_back(size, unit);
      texts.emplace_back(1, static_cast<char16_t>(unit + texts.size()));
    }
  }
  for (const std::u16string& text : texts) {
    stored.push_back(&pool.intern(text));
  }
  for (std::size_t index = 0; index < texts.size(); ++index) {
    EXPECT_TRUE(stored[index]->view() == texts[index]) << "of size " << texts[index].size();
  }
}

TEST(StringPool, TakesAStringThatItHoldsItself) {
  StringPool pool;
  const InternedString& whole = pool.intern(u"component");
  const InternedString& part = pool.intern(whole.view().substr(0, 4));
  EXPECT_EQ(part.view(), u"comp");
  EXPECT_EQ(&pool.intern(whole.view()), &whole);
}

TEST(StringPool, IsNoOtherPools) {
  StringPool one;
  StringPool other;
  EXPECT_NE(&one.intern(u"name"), &other.intern(u"name"));
}

}  // namespace
}  // namespace mf::zero
