#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/RandomJsonText.h"

namespace update_metadata_tool::fmt {

/// Makes documents that the library loads; the same ones for the same seed.
class RandomDocument {
 public:
  explicit RandomDocument(std::uint64_t seed) : random_(seed), values_(seed) {}

  /// The next document: members in any order, names with odd bytes and escapes, numbers of many
  /// forms, repeated keys, unlisted members with any value, white space of every kind inside.
  std::string next();

  /// White space of every kind, maybe none.
  std::string space();

 private:
  /// Key and value, as they are written.
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

  /// Few names.
  std::string array();

  /// The members in any order, maybe an unlisted one, maybe one a second time with any value.
  std::string object(std::vector<Member> members);

  /// An object of few members with such values, each with a name.
  std::string named(std::string (RandomDocument::*makeValue)());

  std::string written(const std::vector<Member>& members);

  std::mt19937_64 random_;
  test_support::RandomJsonText values_;
};

}  // namespace update_metadata_tool::fmt
