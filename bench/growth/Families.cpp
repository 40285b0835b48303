#include "growth/Families.h"

#include <algorithm>
#include <cmath>

#include "growth/Catalogues.h"

namespace bench::growth {
namespace {

// Many digits, so that numbers and their texts have one order.
std::string nineDigits(std::size_t number) {
  std::string digits = std::to_string(number);
  digits.insert(0, 9 - std::min<std::size_t>(9, digits.size()), '0');
  return digits;
}

// Calls `part` with 0 to `count` - 1 and joins what it gives by commas.
template <class Part>
std::string joined(std::size_t count, const Part& part) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text.append(i == 0 ? "" : ",").append(part(i));
  }
  return text;
}

template <class Key>
std::string objectOf(std::size_t count, const Key& key) {
  return "{" + joined(count, [&](std::size_t i) { return "\"" + key(i) + "\":1"; }) + "}";
}

std::string repeated(std::string_view piece, std::size_t count) {
  std::string text;
  text.reserve(piece.size() * count);
  for (; count != 0; --count) {
    text += piece;
  }
  return text;
}

// -------------------------------------------------------------------------------------------------
// Texts; sizes are about their bytes

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

constexpr std::size_t kMemberBytes = 14;  // "123456789":1,

std::string ascendingKeys(std::size_t size) {
  return objectOf(size / kMemberBytes, nineDigits);
}

std::string descendingKeys(std::size_t size) {
  const std::size_t count = size / kMemberBytes;
  return objectOf(count, [=](std::size_t i) { return nineDigits(count - i); });
}

std::string shuffledKeys(std::size_t size) {
  constexpr std::size_t kPrime = 999'999'937;
  return objectOf(size / kMemberBytes,
                  [](std::size_t i) { return nineDigits(i * 618'033'989 % kPrime); });
}

std::string equalKeys(std::size_t size) {
  return objectOf(size / kMemberBytes, [](std::size_t) { return nineDigits(7); });
}

std::string keysWithACommonStart(std::size_t size) {
  constexpr std::size_t kStart = 1000;
  const std::string start(kStart, 'k');
  const std::size_t count = size / (kStart + kMemberBytes);
  return objectOf(count, [&](std::size_t i) { return start + nineDigits(count - i); });
}

std::string oneString(std::size_t size) {
  return '"' + std::string(size, 's') + '"';
}

std::string cutOffString(std::size_t size) {
  return '"' + std::string(size, 's');
}

std::string escapes(std::size_t size) {
  return '"' + repeated("\\u00e9\\n\\ud83d\\ude00", size / 20) + '"';
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

std::string typesBehindAPayload(std::size_t size) {
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

// -------------------------------------------------------------------------------------------------
// Documents

std::string document(const std::string& components, const std::string& products,
                     const std::string& files) {
  return "{\"metadata\":{\"arch\":\"\",\"target\":null,\"base\":null},\"components\":{" +
         components + "},\"products\":{" + products + "},\"componentsWithFilesDeleted\":{" + files +
         "}}";
}

std::string component(const std::string& name, std::size_t packages) {
  return "\"" + name + "\":{\"delete\":{},\"extract\":{" +
         joined(packages,
                [](std::size_t i) {
                  return "\"" + nineDigits(i) + "\":{\"size\":1,\"uncompressedBytes\":2}";
                }) +
         "}}";
}

template <class Name>
std::string product(const std::string& name, std::size_t components, const Name& componentName) {
  return "\"" + name + "\":{\"delete\":[],\"extract\":[" +
         joined(components, [&](std::size_t i) { return "\"" + componentName(i) + "\""; }) + "]}";
}

std::string componentNumber(std::size_t number) {
  return "c" + std::to_string(number);
}

std::string productNumber(std::size_t number) {
  return "p" + nineDigits(number);
}

std::string manyFiles(std::size_t size) {
  return document("", "", "\"c\":{\"p\":{\"size\":1,\"files\":[" + joined(size, [](std::size_t i) {
                            return "\"folder/" + nineDigits(i * 618'033'989 % 999'999'937) + "\"";
                          }) + "]}}");
}

std::string oneComponentManyTimes(std::size_t size) {
  constexpr std::size_t kPackages = 20;
  return document(component("c", kPackages),
                  product("p", size, [](std::size_t) { return std::string("c"); }), "");
}

std::string manyPackages(std::size_t size) {
  return document(component("c", size), product("p", 1, componentNumber), "");
}

std::string manyComponents(std::size_t size) {
  return document(joined(size, [](std::size_t i) { return component(componentNumber(i), 2); }),
                  product("p", size, componentNumber), "");
}

std::string manyProducts(std::size_t size) {
  constexpr std::size_t kPackages = 100;
  return document(component("c", kPackages),
                  joined(size,
                         [](std::size_t i) {
                           return product(productNumber(i), 1,
                                          [](std::size_t) { return std::string("c"); });
                         }),
                  "");
}

// As many products as components as packages of each.
std::string productsTimesComponentsTimesPackages(std::size_t size) {
  const auto side = static_cast<std::size_t>(std::lround(std::cbrt(static_cast<double>(size))));
  return document(
      joined(side, [&](std::size_t i) { return component(componentNumber(i), side); }),
      joined(side, [&](std::size_t i) { return product(productNumber(i), side, componentNumber); }),
      "");
}

// A component name of n bytes before each of 2n packages.
std::string longComponentName(std::size_t size) {
  const auto bytes =
      static_cast<std::size_t>(std::lround(std::sqrt(static_cast<double>(size) / 2)));
  const auto name = [=](std::size_t) { return std::string(bytes, 'c'); };
  return document(component(name(0), 2 * bytes), product("p", 1, name), "");
}

constexpr std::size_t kKilobytes = 1024;
constexpr std::size_t kMegabyte = 1'000'000;

}  // namespace

const std::vector<Family>& families() {
  constexpr bool kText = false;
  constexpr bool kDocument = true;
  constexpr bool kCatalogue = true;
  constexpr bool kComments = true;
  static const std::vector<Family> all = {
      {"nested-arrays", "arrays in arrays", kText, false, 32 * kKilobytes, kMegabyte, nestedArrays},
      {"nested-objects", "objects in objects", kText, false, 32 * kKilobytes, kMegabyte,
       nestedObjects},
      {"nested-mixture", "objects in arrays in objects", kText, false, 32 * kKilobytes, kMegabyte,
       nestedMixture},
      {"cut-off-nesting", "brackets that are never closed", kText, false, 32 * kKilobytes,
       kMegabyte, cutOffNesting},
      {"cut-off-mixture", "brackets and braces that are never closed", kText, false,
       32 * kKilobytes, kMegabyte, cutOffMixture},
      {"fault-at-the-end", "arrays in arrays, the last bracket another", kText, false,
       32 * kKilobytes, kMegabyte, nestingWithAFaultAtTheEnd},
      {"ascending-keys", "keys in ascending order", kText, false, 32 * kKilobytes, kMegabyte,
       ascendingKeys},
      {"descending-keys", "keys in descending order", kText, false, 32 * kKilobytes, kMegabyte,
       descendingKeys},
      {"shuffled-keys", "keys in no order", kText, false, 32 * kKilobytes, kMegabyte, shuffledKeys},
      {"equal-keys", "the same key over and over", kText, false, 32 * kKilobytes, kMegabyte,
       equalKeys},
      {"common-start", "keys that begin with the same 1,000 bytes", kText, false, 64 * kKilobytes,
       kMegabyte, keysWithACommonStart},
      {"one-string", "one string", kText, false, 256 * kKilobytes, kMegabyte, oneString},
      {"cut-off-string", "one string that never ends", kText, false, 256 * kKilobytes, kMegabyte,
       cutOffString},
      {"escapes", "one string of escapes", kText, false, 32 * kKilobytes, kMegabyte, escapes},
      {"backslashes", "one string of backslashes", kText, false, 32 * kKilobytes, kMegabyte,
       backslashes},
      {"line-feeds", "line feeds before a fault", kText, false, 256 * kKilobytes, kMegabyte,
       lineFeeds},
      {"comments", "comments", kText, kComments, 32 * kKilobytes, kMegabyte, comments},
      {"digits", "one number", kText, false, 128 * kKilobytes, kMegabyte, digits},
      {"fraction-digits", "one number with a fraction", kText, false, 128 * kKilobytes, kMegabyte,
       fractionDigits},
      {"small-numbers", "numbers of one digit", kText, false, 32 * kKilobytes, kMegabyte,
       smallNumbers},
      {"empty-containers", "empty arrays and objects", kText, false, 32 * kKilobytes, kMegabyte,
       emptyContainers},
      {"types", "many types behind one payload, of alternating signs", kText, false,
       32 * kKilobytes, kMegabyte, typesBehindAPayload},
      {"payloads", "many payloads before their types", kText, false, 32 * kKilobytes, kMegabyte,
       payloadsWithTypes},
      {"files", "files in one package", kDocument, false, 1000, 54'000, manyFiles},
      {"one-component", "one component named many times", kDocument, false, 1000, 250'000,
       oneComponentManyTimes},
      {"packages", "packages of one component", kDocument, false, 500, 21'000, manyPackages},
      {"components", "components of one product", kDocument, false, 200, 7'300, manyComponents},
      {"products", "products that share one component", kDocument, false, 160, 24'000,
       manyProducts},
      {"product", "as many products as components as packages", kDocument, false, 64'000, 3'700'000,
       productsTimesComponentsTimesPackages},
      {"component-name", "packages of a component with a long name", kDocument, false, 200'000,
       200'000'000, longComponentName},
      {"product-rows", "products of a catalogue", kText, false, 500, 23'000, &productRows,
       kCatalogue},
      {"colliding-names", "products whose names share one hash", kText, false, 500, 10'000,
       &rowsOfCollidingNames, kCatalogue},
      {"colliding-numbers", "products whose numbers share one bucket", kText, false, 500, 23'000,
       &rowsOfCollidingNumbers, kCatalogue},
  };
  return all;
}

const Family* findFamily(std::string_view name) {
  const std::vector<Family>& all = families();
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const Family& one) { return one.name == name; });
  return found == all.end() ? nullptr : &*found;
}

}  // namespace bench::growth
