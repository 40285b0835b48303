#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace bench::answers {

using KeySet = std::set<std::u16string>;

/// The four answers about one document, in the containers that the library returns. The product's
/// name serves as its base code.
struct Answers {
  std::map<std::u16string, KeySet> toDelete;
  std::map<std::u16string, KeySet> toExtract;
  std::map<std::u16string, std::pair<std::int64_t, std::int64_t>> sizes;
  std::map<std::u16string, std::pair<KeySet, std::int64_t>> files;

  friend bool operator==(const Answers& left, const Answers& right) {
    return left.toDelete == right.toDelete && left.toExtract == right.toExtract &&
           left.sizes == right.sizes && left.files == right.files;
  }
};

/// How many keys and paths the answers contain.
std::size_t entriesOf(const Answers& answers);

/// A hash of the answers: different answers almost always have different digests.
std::uint64_t digestOf(const Answers& answers);

}  // namespace bench::answers
