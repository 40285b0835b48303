#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/RandomJsonText.h"

namespace test_support {

/// Generates documents that the library loads; the same seed gives the same documents.
class RandomDocument {
 public:
  explicit RandomDocument(std::uint64_t seed) : random_(seed), values_(seed) {}

  /// The next document: members in any order, names with unusual bytes and escapes, numbers of many
  /// forms, repeated keys, unlisted members with any value, white space of every kind.
  std::string next();

  /// White space of every kind, possibly none.
  std::string space();

 private:
  /// A key and a value as JSON.
  struct Member {
    std::string key;
    std::string value;
  };

  std::size_t below(std::size_t limit) { return random_() % limit; }
  bool oneIn(std::size_t count) { return below(count) == 0; }
  template <std::size_t N>
  std::string oneOf(const std::string_view (&choices)[N]) {
    return std::string(choices[below(N)]);
  }

  std::string name();
  std::string number();
  std::string anyValue();

  std::string release();
  std::string metadata();
  std::string packageToDelete();
  std::string packageToExtract();
  std::string component();
  std::string product();
  std::string packageWithFiles();
  std::string componentWithFiles();

  /// A few names.
  std::string array();

  /// The members in any order, possibly with an unlisted one and a repeated one with any value.
  std::string object(std::vector<Member> members);

  /// An object with a few members, each with a name and such a value.
  std::string named(std::string (RandomDocument::*makeValue)());

  std::string written(const std::vector<Member>& members);

  std::mt19937_64 random_;
  RandomJsonText values_;
};

}  // namespace test_support
