#include "mf/zero/text/StringPool.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <set>
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
  // With this key, every string that begins with "name" and has at most eight units hashes to zero.
  std::uint64_t name;
  std::memcpy(&name, u"name", sizeof name);
  StringPool::HashKey key{};
  for (std::size_t word = 0; word < key.words.size(); word += 2) {
    key.words[word] = 0 - name;
  }
  StringPool pool(key);
  std::vector<std::u16string> texts = {u"name",   u"names",    u"named",
                                       u"namely", u"nameless", u"namesake"};
  // Likewise if each eight of the 32 units hash to zero.
  for (const std::u16string other : {u"less", u"sake"}) {
    for (std::size_t part = 0; part < 32; part += 8) {
      texts.push_back(u"namelistnamelistnamelistnamelist");
      texts.back().replace(part + 4, 4, other);
    }
  }
  std::vector<const InternedString*> stored;
  for (const std::u16string& text : texts) {
    stored.push_back(&pool.intern(text));
    EXPECT_EQ(stored.back()->hash, 0u);
  }
  for (std::size_t index = 0; index < texts.size(); ++index) {
    EXPECT_EQ(stored[index]->view(), texts[index]);
    EXPECT_EQ(&pool.intern(texts[index]), stored[index]);
  }
}

TEST(StringPool, HashesEveryUnitAndTheSize) {
  StringPool pool;
  std::set<std::size_t> hashes;
  std::size_t strings = 0;
  for (std::size_t size = 0; size <= 100; ++size) {
    std::u16string text(size, u'a');
    hashes.insert(pool.intern(text).hash);
    for (std::size_t index = 0; index < size; ++index) {
      text[index] = u'b';
      hashes.insert(pool.intern(text).hash);
      text[index] = u'a';
    }
    strings += 1 + size;
  }
  EXPECT_EQ(hashes.size(), strings);
}

TEST(StringPool, HashesWithItsOwnKey) {
  StringPool one;
  StringPool other;
  for (const std::size_t size : {1u, 5u, 20u, 50u}) {
    const std::u16string text(size, u'a');
    EXPECT_NE(one.intern(text).hash, other.intern(text).hash);
  }
}

// Memory of exact size, which the address sanitizer guards.
TEST(StringPool, ReadsNothingBeyondAString) {
  StringPool pool;
  for (std::size_t size = 0; size <= 100; ++size) {
    const std::vector<char16_t> units(size, u'a');
    const std::u16string_view text(units.data(), size);
    EXPECT_EQ(&pool.intern(text), &pool.intern(std::u16string(size, u'a')));
  }
}

TEST(StringPool, TreatsANullViewAsTheEmptyString) {
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
  // From empty to more than the largest block, with small strings in between.
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

TEST(StringPool, CanStoreAStringOfItsOwn) {
  StringPool pool;
  const InternedString& whole = pool.intern(u"component");
  const InternedString& part = pool.intern(whole.view().substr(0, 4));
  EXPECT_EQ(part.view(), u"comp");
  EXPECT_EQ(&pool.intern(whole.view()), &whole);
}

TEST(StringPool, IsSeparateFromOtherPools) {
  StringPool one;
  StringPool other;
  EXPECT_NE(&one.intern(u"name"), &other.intern(u"name"));
}

}  // namespace
}  // namespace mf::zero
