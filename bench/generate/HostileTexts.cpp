#include <cstdint>

#include "generate/Dice.h"
#include "generate/Family.h"
#include "generate/Repetition.h"

namespace bench::generate {
namespace {

// -------------------------------------------------------------------------------------------------
// Texts; the size is about the number of bytes

std::string nestedArrays(std::size_t size) {
  return std::string(size / 2, '[') + std::string(size / 2, ']');
}

std::string nestedObjects(std::size_t size) {
  return repeated("{\"a\":", size / 6) + "1" + std::string(size / 6, '}');
}

std::string nestedMixture(std::size_t size) {
  return repeated("[{\"a\":", size / 8) + "1" + repeated("}]", size / 8);
}

std::string cutOffNesting(std::size_t size) {
  return std::string(size, '[');
}

std::string cutOffMixture(std::size_t size) {
  return repeated("[{\"a\":", size / 6);
}

std::string nestingWithAFaultAtTheEnd(std::size_t size) {
  return std::string(size / 2, '[') + std::string(size / 2 - 1, ']') + "}";
}

constexpr std::size_t kMemberBytes = 22;  // "key_123456789":12345, and the comma

template <class Key>
std::string objectOf(std::size_t count, const Key& key) {
  return "{" +
         joined(count, [&](std::size_t i) { return "\"" + key(i) + "\":" + std::to_string(i); }) +
         "}";
}

std::string numberedKey(std::size_t number) {
  return "key_" + nineDigits(number);
}

std::string ascendingKeys(std::size_t size) {
  return objectOf(size / kMemberBytes, numberedKey);
}

std::string descendingKeys(std::size_t size) {
  const std::size_t count = size / kMemberBytes;
  return objectOf(count, [=](std::size_t i) { return numberedKey(count - 1 - i); });
}

std::string shuffledKeys(std::size_t size) {
  return objectOf(size / kMemberBytes, [](std::size_t i) { return numberedKey(shuffled(i)); });
}

std::string equalKeys(std::size_t size) {
  return objectOf(size / kMemberBytes, [](std::size_t) { return numberedKey(1); });
}

std::string keysWithACommonStart(std::size_t size) {
  constexpr std::size_t kStart = 1000;
  const std::string start(kStart, 'k');
  const std::size_t count = size / (kStart + kMemberBytes);
  return objectOf(count, [&](std::size_t i) { return start + numberedKey(count - i); });
}

std::string oneString(std::size_t size) {
  return '"' + std::string(size, 's') + '"';
}

std::string cutOffString(std::size_t size) {
  return '"' + std::string(size, 's');
}

constexpr std::size_t kEscapeBytes = 6;

// One string of units from U+0080, one in 16 of them the first half of a surrogate pair.
std::string escapes(std::size_t size) {
  const std::size_t units = size / kEscapeBytes;
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text = "\"";
  const auto append = [&](std::uint64_t unit) {
    text.append("\\u");
    for (const unsigned shift : {12U, 8U, 4U, 0U}) {
      text.append(1, kDigits[(unit >> shift) & 0xFU]);
    }
  };
  Dice dice(1);
  for (std::size_t i = 0; i < units; ++i) {
    if (dice.below(16) == 0 && i + 1 < units) {
      append(0xD800 + dice.below(0x400));
      append(0xDC00 + dice.below(0x400));
      ++i;
    } else {
      append(0x80 + dice.below(0xD800 - 0x80));
    }
  }
  return text.append("\"");
}

std::string backslashes(std::size_t size) {
  return '"' + std::string(size / 2 * 2, '\\') + '"';
}

std::string lineFeeds(std::size_t size) {
  return "[" + std::string(size, '\n') + "1 2]";
}

std::string comments(std::size_t size) {
  return "[" + repeated("/* / *///\n", size / 10) + "1]";
}

std::string digits(std::size_t size) {
  return repeated("1234567890", size / 10);
}

std::string fractionDigits(std::size_t size) {
  return "0." + repeated("1234567890", size / 10) + "e5";
}

std::string smallNumbers(std::size_t size) {
  return "[" + joined(size / 2, [](std::size_t) { return std::string("1"); }) + "]";
}

std::string emptyContainers(std::size_t size) {
  return "[" + joined(size / 6, [](std::size_t) { return std::string("[],{}"); }) + "]";
}

std::string payloadOf(std::size_t size) {
  return "\"qzdata\":[" + joined(size / 3, [](std::size_t) { return std::string("-1"); }) + "]";
}

std::string typesAfterAPayload(std::size_t size) {
  return "{" + payloadOf(size / 2) +
         repeated(",\"qztype\":\"int8\",\"qztype\":\"uint8\"", size / 2 / 35) + "}";
}

std::string payloadsWithTypes(std::size_t size) {
  return "[" +
         joined(
             size / 36,
             [](std::size_t) { return std::string("{\"qzdata\":[-1],\"qztype\":\"uint64\"}"); }) +
         "]";
}

constexpr std::size_t kKilobyte = 1024;
constexpr std::size_t kMegabyte = 1'000'000;
constexpr bool kHasComments = true;

}  // namespace

const std::vector<Family>& hostileTexts() {
  static const std::vector<Family> all = {
      {"nested-arrays",
       "arrays in arrays",
       nestedArrays,
       32 * kKilobyte,
       kMegabyte,
       {"level", 2, 8'000'000}},
      {"nested-objects", "objects in objects", nestedObjects},
      {"nested-mixture", "objects in arrays in objects", nestedMixture},
      {"cut-off-nesting",
       "brackets that are never closed",
       cutOffNesting,
       32 * kKilobyte,
       kMegabyte,
       {"level", 1, 16'000'000}},
      {"cut-off-mixture", "brackets and braces that are never closed", cutOffMixture},
      {"fault-at-the-end", "arrays in arrays, with a wrong last bracket",
       nestingWithAFaultAtTheEnd},
      {"ascending-keys", "keys in ascending order", ascendingKeys},
      {"descending-keys",
       "keys in descending order",
       descendingKeys,
       32 * kKilobyte,
       kMegabyte,
       {"member", kMemberBytes, 1'000'000}},
      {"shuffled-keys", "keys in random order", shuffledKeys},
      {"equal-keys",
       "the same key over and over",
       equalKeys,
       32 * kKilobyte,
       kMegabyte,
       {"member", kMemberBytes, 1'000'000}},
      {"common-start", "keys that begin with the same 1,000 bytes", keysWithACommonStart,
       64 * kKilobyte},
      {"one-string", "one string", oneString, 256 * kKilobyte},
      {"cut-off-string", "one string that never ends", cutOffString, 256 * kKilobyte},
      {"escapes",
       "a string of escapes alone",
       escapes,
       32 * kKilobyte,
       kMegabyte,
       {"escape", kEscapeBytes, 8'333'333}},
      {"backslashes", "one string of backslashes", backslashes},
      {"line-feeds", "line feeds before a fault", lineFeeds, 256 * kKilobyte},
      {"comments", "comments", comments, 32 * kKilobyte, kMegabyte, {}, kHasComments},
      {"digits", "one number", digits, 128 * kKilobyte},
      {"fraction-digits", "one number with a fraction", fractionDigits, 128 * kKilobyte},
      {"small-numbers", "numbers of one digit", smallNumbers},
      {"empty-containers", "empty arrays and objects", emptyContainers},
      {"types", "many types after one payload, of alternating signs", typesAfterAPayload},
      {"payloads", "many payloads before their types", payloadsWithTypes},
  };
  return all;
}

}  // namespace bench::generate
