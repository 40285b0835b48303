#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace test_support {

/// A document as plain tables, from which its text is written. It does not depend on the library,
/// so the library's answers can be computed independently. Names are UTF-8 that needs no escape.
///
/// The keys of the tables are ordered by their bytes, as the library reads them.
struct PlainDocument {
  struct Sizes {
    std::int64_t size = 0;
    std::int64_t uncompressedBytes = 0;  ///< of a package to extract
  };

  struct Component {
    std::map<std::string, Sizes> toDelete;
    std::map<std::string, Sizes> toExtract;
  };

  struct Product {
    std::vector<std::string> toDelete;
    std::vector<std::string> toExtract;
  };

  struct PackageWithFiles {
    std::int64_t size = 0;
    std::vector<std::string> files;
  };

  std::map<std::string, Component> components;
  std::map<std::string, Product> products;
  std::map<std::string, std::map<std::string, PackageWithFiles>> componentsWithFiles;

  /// The text of the document: from "Old 1" to "New 2", update level 3, for "x86_64".
  std::string json() const;
};

/// Generates a document in which names repeat and keys of packages collide. The sizes are small,
/// and some are negative.
PlainDocument makeRandomDocument(std::mt19937& random);

}  // namespace test_support
