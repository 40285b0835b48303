#include "support/PlainDocument.h"

#include <cstddef>
#include <iterator>
#include <utility>

namespace test_support {
namespace {

std::string quoted(const std::string& text) {
  return '"' + text + '"';
}

// What `write` writes for each item, in a pair of brackets.
template <class Items, class Write>
std::string joined(char open, const Items& items, char close, Write write) {
  std::string text(1, open);
  for (const auto& item : items) {
    text += (text.size() == 1 ? "" : ",") + write(item);
  }
  return text + close;
}

std::string toJson(const std::vector<std::string>& strings) {
  return joined('[', strings, ']', quoted);
}

std::string toJson(const std::map<std::string, PlainDocument::Sizes>& packages) {
  return joined('{', packages, '}', [](const auto& package) {
    return quoted(package.first) + ":{\"size\":" + std::to_string(package.second.size) +
           ",\"uncompressedBytes\":" + std::to_string(package.second.uncompressedBytes) + '}';
  });
}

std::string toJson(const std::map<std::string, PlainDocument::PackageWithFiles>& packages) {
  return joined('{', packages, '}', [](const auto& package) {
    return quoted(package.first) + ":{\"size\":" + std::to_string(package.second.size) +
           ",\"files\":" + toJson(package.second.files) + '}';
  });
}

std::string release(const std::string& family, const std::string& version) {
  return "{\"zelvan_version\":\"\",\"date\":\"\",\"version\":" + quoted(version) +
         ",\"prerelease\":false,\"release\":" + quoted(family) +
         ",\"checksum\":\"\",\"description\":\"\",\"update\":3}";
}

class Random {
 public:
  explicit Random(std::mt19937& engine) : engine_(engine) {}

  std::size_t below(std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(engine_);
  }

  std::int64_t size() {
    return std::uniform_int_distribution<std::int64_t>(-100, 1'000'000)(engine_);
  }

  /// A few names that are prefixes of each other, so that different pairs form the same key.
  std::string name() {
    constexpr const char* kNames[] = {"a",   "a_b", "a_b_c", "b",      "b_c", "c",
                                      "c_c", "",    "_",     "\u00FC", "x"};
    return kNames[below(std::size(kNames))];
  }

  std::vector<std::string> names() {
    std::vector<std::string> names(below(5));
    for (std::string& each : names) {
      each = name();
    }
    return names;
  }

 private:
  std::mt19937& engine_;
};

}  // namespace

std::string PlainDocument::json() const {
  const std::string described = joined('{', components, '}', [](const auto& component) {
    return quoted(component.first) + ":{\"delete\":" + toJson(component.second.toDelete) +
           ",\"extract\":" + toJson(component.second.toExtract) + '}';
  });
  const std::string named = joined('{', products, '}', [](const auto& product) {
    return quoted(product.first) + ":{\"delete\":" + toJson(product.second.toDelete) +
           ",\"extract\":" + toJson(product.second.toExtract) + '}';
  });
  const std::string withFiles = joined('{', componentsWithFiles, '}', [](const auto& component) {
    return quoted(component.first) + ':' + toJson(component.second);
  });
  return "{\"metadata\":{\"arch\":\"x86_64\",\"base\":" + release("Old", "1") +
         ",\"target\":" + release("New", "2") + "},\"components\":" + described +
         ",\"products\":" + named + ",\"componentsWithFilesDeleted\":" + withFiles + '}';
}

PlainDocument makeRandomDocument(std::mt19937& engine) {
  Random random(engine);
  PlainDocument document;
  for (std::size_t count = random.below(8); count != 0; --count) {
    PlainDocument::Component& component = document.components[random.name()];
    for (std::size_t packages = random.below(5); packages != 0; --packages) {
      component.toDelete[random.name()] = {random.size(), 0};
      component.toExtract[random.name()] = {random.size(), random.size()};
    }
  }
  for (std::size_t count = random.below(5); count != 0; --count) {
    document.products["Product " + random.name()] = {random.names(), random.names()};
  }
  for (std::size_t count = random.below(5); count != 0; --count) {
    auto& packages = document.componentsWithFiles[random.name()];
    for (std::size_t each = random.below(4); each != 0; --each) {
      packages[random.name()] = {random.size(), random.names()};
    }
  }
  return document;
}

}  // namespace test_support
