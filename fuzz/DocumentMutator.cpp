// Mutates documents by their structure, so that most results are still documents: members are
// dropped, repeated, renamed, moved and given other values.

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
#include "DocumentWords.h"
#include "Fuzzer.h"

namespace {

using fuzz::DocumentTree;
using fuzz::kKeys;
using fuzz::kPlainDocument;
using fuzz::kScalars;

constexpr std::size_t kMostChanges = 4;
constexpr std::size_t kMostRepeats = 12;
constexpr std::size_t kMostNodes = 3000;

// The trees are kept: parsing is most of the cost of a mutation.
class Mutator {
 public:
  // Mutates `text`, possibly with parts from `donor`.
  std::string change(std::string_view text, std::optional<std::string_view> donor, unsigned seed) {
    random_.seed(seed * 2654435761U + 1);
    if (!tree_.parse(text)) {
      tree_.parse(kPlainDocument);
    }
    const bool hasDonor = donor && donor_.parse(*donor);
    for (std::size_t left = 1 + below(kMostChanges); left != 0; --left) {
      gather();
      if (places_.size() < kMostNodes) {
        changeOnce(hasDonor);
      }
    }
    return tree_.toText();
  }

 private:
  using Node = DocumentTree::Node;

  // A node and its parent; the root has none.
  struct Place {
    Node parent;
    Node node;
  };

  std::size_t below(std::size_t limit) { return random_() % limit; }

  template <std::size_t N>
  std::string_view oneOf(const std::string_view (&choices)[N]) {
    return choices[below(N)];
  }

  void gather() {
    places_.assign(1, Place{DocumentTree::kNone, DocumentTree::kRoot});
    for (std::size_t i = 0; i < places_.size(); ++i) {
      const Node node = places_[i].node;
      for (Node part = tree_.firstPart(node); part != DocumentTree::kNone;
           part = tree_.nextPart(part)) {
        places_.push_back({node, part});
      }
    }
  }

  Place somePlace() { return places_[below(places_.size())]; }

  void changeOnce(bool hasDonor) {
    const Place place = somePlace();
    const Node node = place.node;
    switch (below(hasDonor ? 12 : 10)) {
      case 0:
        tree_.setValue(node, someScalar());
        break;
      case 1:
        tree_.setToken(node, withChangedBytes(tree_.token(node)));
        break;
      case 2:
        if (!tree_.key(node).empty()) {
          tree_.setKey(node, below(4) == 0 ? someKey() : oneOf(kKeys));
        }
        break;
      case 3:
        tree_.setKey(node, withChangedBytes(tree_.key(node)));
        break;
      case 4:
        drop(place);
        break;
      case 5:
        repeat(place);
        break;
      case 6:
        addTo(node, someScalar());
        break;
      case 7:
        tree_.reverseParts(node);
        break;
      case 8:
        tree_.setValue(node, tree_.copyOf(tree_, somePlace().node));
        break;
      case 9:
        addTo(node, tree_.copyOf(tree_, somePlace().node));
        break;
      case 10:
        tree_.setValue(node, tree_.copyOf(donor_, someNodeOfDonor()));
        break;
      default:
        addTo(node, tree_.copyOf(donor_, someNodeOfDonor()));
        break;
    }
  }

  Node someScalar() {
    fresh_.parse(oneOf(kScalars));
    return tree_.copyOf(fresh_, DocumentTree::kRoot);
  }

  // The key of a random member of the document.
  std::string_view someKey() {
    const std::string_view key = tree_.key(somePlace().node);
    return key.empty() ? oneOf(kKeys) : key;
  }

  Node someNodeOfDonor() {
    Node node = DocumentTree::kRoot;
    while (donor_.firstPart(node) != DocumentTree::kNone && below(3) != 0) {
      const std::size_t place = below(donor_.countParts(node));
      node = donor_.firstPart(node);
      for (std::size_t left = place; left != 0; --left) {
        node = donor_.nextPart(node);
      }
    }
    return node;
  }

  void addTo(Node container, Node part) {
    if (!tree_.isContainer(container)) {
      return;
    }
    if (!tree_.isObject(container)) {
      tree_.setKey(part, {});
    } else if (tree_.key(part).empty() || below(2) == 0) {
      tree_.setKey(part, someKey());
    }
    tree_.insertPart(container, below(tree_.countParts(container) + 1), part);
  }

  void drop(const Place& place) {
    if (place.parent != DocumentTree::kNone) {
      tree_.dropPart(place.parent, place.node);
    }
  }

  void repeat(const Place& place) {
    if (place.parent == DocumentTree::kNone) {
      return;
    }
    std::string key(tree_.key(place.node));
    const bool renames = !key.empty() && below(2) == 0;
    const std::size_t count = tree_.countParts(place.parent);
    for (std::size_t left = 1 + below(kMostRepeats); left != 0; --left) {
      const Node copy = tree_.copyOf(tree_, place.node);
      if (renames) {
        key.insert(key.size() - 1, 1, static_cast<char>('a' + below(4)));
        tree_.setKey(copy, tree_.keep(key));
      }
      tree_.insertPart(place.parent, count, copy);
    }
  }

  // Changes single bytes; in a string, those between the quotation marks.
  std::string_view withChangedBytes(std::string_view token) {
    if (token.empty() || token == "{" || token == "[") {
      return token;
    }
    const std::size_t border = token.front() == '"' ? 1 : 0;
    const std::string_view inside = token.substr(border, token.size() - 2 * border);
    std::vector<std::uint8_t> bytes(inside.begin(), inside.end());
    bytes.resize(inside.size() + 8);
    bytes.resize(LLVMFuzzerMutate(bytes.data(), inside.size(), bytes.size()));
    std::string changed(token.substr(0, border));
    changed.append(bytes.begin(), bytes.end());
    changed.append(token.substr(token.size() - border));
    return tree_.keep(std::move(changed));
  }

  DocumentTree tree_;
  DocumentTree donor_;
  DocumentTree fresh_;
  std::minstd_rand random_;
  std::vector<Place> places_;
};

std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

Mutator& mutator() {
  static Mutator mutator;
  return mutator;
}

}  // namespace

std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                    unsigned seed) {
  constexpr unsigned kSeedsForOneChangeOfBytes = 8;
  if (seed % kSeedsForOneChangeOfBytes != 0) {
    const std::string text = mutator().change(textOf(data, size), std::nullopt, seed);
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
  const std::string text =
      mutator().change(textOf(first, firstSize), textOf(second, secondSize), seed);
  const std::size_t size = std::min(text.size(), maxSize);
  std::memcpy(out, text.data(), size);
  return size;
}
