// Changes documents by their structure, so that most of them stay documents: members are dropped,
// repeated, renamed, moved and given other values.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "DocumentTree.h"
#include "Fuzzer.h"

namespace {

using fuzz::DocumentTree;

// What changes start from when an input is no JSON.
constexpr std::string_view kPlainDocument =
    R"({"metadata":{"arch":"x","target":{"zelvan_version":"","date":"","version":"2",)"
    R"("prerelease":false,"release":"r","checksum":"","description":"","update":1},"base":null},)"
    R"("components":{"a":{"delete":{"b_c":{"size":1}},"extract":{"d":{"size":2,)"
    R"("uncompressedBytes":3}}},"a_b":{"delete":{"c":{"size":4}},"extract":{}}},)"
    R"("products":{"p":{"delete":["a","a_b"],"extract":["a"]}},)"
    R"("componentsWithFilesDeleted":{"e":{"f":{"size":5,"files":["g"]}}}})";

constexpr std::string_view kScalars[] = {"null",
                                         "true",
                                         "false",
                                         "0",
                                         "-0",
                                         "1",
                                         "-1",
                                         "255",
                                         "300",
                                         "2147483648",
                                         "-2147483649",
                                         "9007199254740993",
                                         "9223372036854775807",
                                         "9223372036854775808",
                                         "-9223372036854775809",
                                         "18446744073709551616",
                                         "1e30",
                                         "-1e999",
                                         "4.9e-324",
                                         "3.7",
                                         "\"\"",
                                         "\"a\"",
                                         "\"=\"",
                                         "\"=x\"",
                                         "\"a_b\"",
                                         "\"\\u0000\"",
                                         "\"\\ud83d\\ude00\"",
                                         "\"\\ud83d\"",
                                         "\"\xFF\"",
                                         "\"\xC3\xA4\"",
                                         "\"int8\"",
                                         "\"uint64\"",
                                         "{}",
                                         "[]",
                                         "[1,-2]",
                                         "{\"qztype\":\"int8\",\"qzdata\":[1]}"};

constexpr std::string_view kKeys[] = {"\"metadata\"",
                                      "\"components\"",
                                      "\"products\"",
                                      "\"componentsWithFilesDeleted\"",
                                      "\"arch\"",
                                      "\"target\"",
                                      "\"base\"",
                                      "\"zelvan_version\"",
                                      "\"date\"",
                                      "\"version\"",
                                      "\"prerelease\"",
                                      "\"release\"",
                                      "\"checksum\"",
                                      "\"description\"",
                                      "\"update\"",
                                      "\"delete\"",
                                      "\"extract\"",
                                      "\"size\"",
                                      "\"uncompressedBytes\"",
                                      "\"files\"",
                                      "\"qztype\"",
                                      "\"qzdata\"",
                                      "\"a\"",
                                      "\"a_b\"",
                                      "\"b_c\"",
                                      "\"c\"",
                                      "\"\"",
                                      "\"=\"",
                                      "\"\xFF\"",
                                      "\"\xFE\"",
                                      "\"siz\\u0065\""};

constexpr std::size_t kMostChanges = 4;
constexpr std::size_t kMostRepeats = 12;
constexpr std::size_t kMostNodes = 3000;

class Mutator {
 public:
  Mutator(DocumentTree& root, unsigned seed) : root_(root), random_(seed * 2654435761U + 1) {}

  void change(const DocumentTree* donor) {
    for (std::size_t left = 1 + below(kMostChanges); left != 0; --left) {
      gather();
      if (nodes_.size() < kMostNodes) {
        changeOnce(donor);
      }
    }
  }

 private:
  // A node with where it hangs; the root hangs nowhere.
  struct Place {
    DocumentTree* parent;
    DocumentTree* node;
  };

  std::size_t below(std::size_t limit) { return random_() % limit; }

  template <std::size_t N>
  std::string_view oneOf(const std::string_view (&choices)[N]) {
    return choices[below(N)];
  }

  void gather() {
    nodes_.assign(1, Place{nullptr, &root_});
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
      DocumentTree* const node = nodes_[i].node;
      for (DocumentTree& part : node->parts) {
        nodes_.push_back({node, &part});
      }
    }
  }

  void changeOnce(const DocumentTree* donor) {
    const Place place = nodes_[below(nodes_.size())];
    switch (below(donor != nullptr ? 12 : 10)) {
      case 0:
        setValue(*place.node, *fuzz::takeApart(oneOf(kScalars)));
        break;
      case 1:
        changeBytes(place.node->token);
        break;
      case 2:
        if (!place.node->key.empty()) {
          place.node->key = below(4) == 0 ? someKey() : std::string(oneOf(kKeys));
        }
        break;
      case 3:
        if (!place.node->key.empty()) {
          changeBytes(place.node->key);
        }
        break;
      case 4:
        drop(place);
        break;
      case 5:
        repeat(place);
        break;
      case 6:
        addTo(*place.node, *fuzz::takeApart(oneOf(kScalars)));
        break;
      case 7:
        std::reverse(place.node->parts.begin(), place.node->parts.end());
        break;
      case 8:
        setValue(*place.node, DocumentTree(*nodes_[below(nodes_.size())].node));
        break;
      case 9:
        addTo(*place.node, DocumentTree(*nodes_[below(nodes_.size())].node));
        break;
      case 10:
        setValue(*place.node, partOf(*donor));
        break;
      default:
        addTo(*place.node, partOf(*donor));
        break;
    }
  }

  // The key of some member of the document.
  std::string someKey() {
    const std::string& key = nodes_[below(nodes_.size())].node->key;
    return key.empty() ? std::string(oneOf(kKeys)) : key;
  }

  DocumentTree partOf(const DocumentTree& tree) {
    const DocumentTree* part = &tree;
    while (!part->parts.empty() && below(3) != 0) {
      part = &part->parts[below(part->parts.size())];
    }
    return *part;
  }

  // `value` is a copy: it may have hung above the node or below it.
  static void setValue(DocumentTree& node, DocumentTree value) {
    value.key = std::move(node.key);
    node = std::move(value);
  }

  void addTo(DocumentTree& node, DocumentTree part) {
    if (!node.isContainer()) {
      return;
    }
    if (!node.isObject()) {
      part.key.clear();
    } else if (part.key.empty() || below(2) == 0) {
      part.key = someKey();
    }
    const auto place = static_cast<std::ptrdiff_t>(below(node.parts.size() + 1));
    node.parts.insert(node.parts.begin() + place, std::move(part));
  }

  void drop(const Place& place) {
    if (place.parent != nullptr) {
      place.parent->parts.erase(place.parent->parts.begin() +
                                (place.node - &place.parent->parts[0]));
    }
  }

  void repeat(const Place& place) {
    if (place.parent == nullptr) {
      return;
    }
    DocumentTree copy = *place.node;
    const bool renames = !copy.key.empty() && below(2) == 0;
    for (std::size_t left = 1 + below(kMostRepeats); left != 0; --left) {
      if (renames) {
        copy.key.insert(copy.key.size() - 1, 1, static_cast<char>('a' + below(4)));
      }
      place.parent->parts.push_back(copy);
    }
  }

  // Changes single bytes; those of a string between its quotation marks.
  void changeBytes(std::string& token) {
    if (token.empty() || token == "{" || token == "[") {
      return;
    }
    const std::size_t border = token.front() == '"' ? 1 : 0;
    std::vector<std::uint8_t> bytes(token.begin() + static_cast<std::ptrdiff_t>(border),
                                    token.end() - static_cast<std::ptrdiff_t>(border));
    const std::size_t size = bytes.size();
    bytes.resize(size + 8);
    bytes.resize(LLVMFuzzerMutate(bytes.data(), size, bytes.size()));
    token = token.substr(0, border) + std::string(bytes.begin(), bytes.end()) +
            token.substr(token.size() - border);
  }

  DocumentTree& root_;
  std::minstd_rand random_;
  std::vector<Place> nodes_;
};

std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

std::string changed(std::string_view text, const DocumentTree* donor, unsigned seed) {
  std::optional<DocumentTree> tree = fuzz::takeApart(text);
  if (!tree) {
    tree = fuzz::takeApart(kPlainDocument);
  }
  Mutator(*tree, seed).change(donor);
  return fuzz::putTogether(*tree);
}

}  // namespace

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                    unsigned seed) {
  constexpr unsigned kSeedsForOneChangeOfBytes = 8;
  if (seed % kSeedsForOneChangeOfBytes != 0) {
    const std::string text = changed(textOf(data, size), nullptr, seed);
    if (text.size() <= maxSize) {
      std::memcpy(data, text.data(), text.size());
      return text.size();
    }
  }
  return LLVMFuzzerMutate(data, size, maxSize);
}

std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* first, std::size_t firstSize,
                                      const std::uint8_t* second, std::size_t secondSize,
                                      std::uint8_t* out, std::size_t maxSize, unsigned seed) {
  const std::optional<DocumentTree> donor = fuzz::takeApart(textOf(second, secondSize));
  const std::string text = changed(textOf(first, firstSize), donor ? &*donor : nullptr, seed);
  const std::size_t size = std::min(text.size(), maxSize);
  std::memcpy(out, text.data(), size);
  return size;
}
