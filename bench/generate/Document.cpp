#include "generate/Document.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "generate/Dice.h"

namespace bench::generate {
namespace {

class DocumentWriter {
 public:
  DocumentWriter(const DocumentShape& shape, const TextSink& sink)
      : shape_(shape),
        dice_(shape.seed),
        json_(sink, shape.indent),
        components_(componentNames(shape.names, shape.components)),
        packages_(packageNames(shape.names,
                               shape.packages + std::max<std::size_t>(1, shape.packages / 10))) {
    if (shape.continued != 0) {
      continueNames(components_, shape.continued, shape.chain);
    }
  }

  void write() {
    json_.beginObject();
    inRandomOrder({"metadata", "components", "products", "componentsWithFilesDeleted"},
                  [&](std::size_t section) {
                    switch (section) {
                      case 0:
                        return writeMetaData();
                      case 1:
                        return writeComponents();
                      case 2:
                        return writeProducts();
                      default:
                        return writeDeletedFiles();
                    }
                  });
    json_.endObject();
    json_.finish();
  }

 private:
  using Numbers = std::vector<std::size_t>;

  // Writes members in random order: the key of each, then whatever `writeValue` writes for its
  // number.
  template <class WriteValue>
  void inRandomOrder(std::initializer_list<const char*> keys, WriteValue writeValue) {
    for (const std::size_t number : dice_.distinct(keys.size(), keys.size())) {
      json_.key(keys.begin()[number]);
      writeValue(number);
    }
  }

  // Returns a whole number of 3 to 11 digits, or one more than that in a revised package.
  std::uint64_t size() {
    const bool isRevised = shape_.revised != 0 && ++sizes_ % shape_.revised == 0;
    std::uint64_t low = 100;
    for (std::uint64_t digits = dice_.below(9); digits != 0; --digits) {
      low *= 10;
    }
    return low + dice_.below(9 * low) + (isRevised ? 1 : 0);
  }

  void writeMetaData() {
    json_.beginObject();
    inRandomOrder({"arch", "target", "base"}, [&](std::size_t member) {
      switch (member) {
        case 0:
          return json_.string("win64");
        case 1:
          return writeRelease("31.2.0.2719403", 3);
        default:
          return writeRelease("31.2.0.2650188", 0);
      }
    });
    json_.endObject();
  }

  void writeRelease(const std::string& version, std::uint64_t update) {
    json_.beginObject();
    inRandomOrder({"zelvan_version", "date", "version", "prerelease", "release", "checksum",
                   "description", "update"},
                  [&](std::size_t member) {
                    switch (member) {
                      case 0:
                      case 2:
                        return json_.string(version);
                      case 1:
                        return json_.string("2031-04-17");
                      case 3:
                        return json_.boolean(false);
                      case 4:
                        return json_.string("A31");
                      case 5:
                        return json_.string(std::to_string(dice_.next()));
                      case 6:
                        return json_.string("Update of the family A31");
                      default:
                        return json_.number(update);
                    }
                  });
    json_.endObject();
  }

  void writeComponents() {
    json_.beginObject();
    for (const std::size_t component : dice_.distinct(components_.size(), components_.size())) {
      json_.key(components_[component]);
      json_.beginObject();
      inRandomOrder({"delete", "extract"}, [&](std::size_t side) { writePackages(side == 1); });
      json_.endObject();
    }
    json_.endObject();
  }

  void writePackages(bool toExtract) {
    json_.beginObject();
    for (const std::size_t package : dice_.distinct(shape_.packages, packages_.size())) {
      json_.key(packages_[package]);
      json_.beginObject();
      const std::uint64_t bytes = size();
      if (toExtract) {
        inRandomOrder({"size", "uncompressedBytes"}, [&](std::size_t member) {
          json_.number(member == 0 ? bytes : bytes + dice_.below(3 * bytes));
        });
      } else {
        json_.member("size", bytes);
      }
      json_.endObject();
    }
    json_.endObject();
  }

  void writeProducts() {
    json_.beginObject();
    for (const std::size_t product : dice_.distinct(shape_.products, shape_.products)) {
      const Numbers toDelete = dice_.distinct(shape_.componentsPerProduct, components_.size());
      const Numbers toExtract = mostlyTheSame(toDelete);
      json_.key(productName(shape_.names, product));
      json_.beginObject();
      inRandomOrder({"delete", "extract"},
                    [&](std::size_t side) { writeNames(side == 0 ? toDelete : toExtract); });
      json_.endObject();
    }
    json_.endObject();
  }

  // Replaces a tenth of the numbers by others below the number of components, and shuffles them.
  Numbers mostlyTheSame(Numbers numbers) {
    std::vector<bool> isUsed(components_.size());
    for (const std::size_t number : numbers) {
      isUsed[number] = true;
    }
    for (std::size_t i = 0; i < numbers.size() / 10; ++i) {
      const auto other = static_cast<std::size_t>(dice_.below(components_.size()));
      if (!isUsed[other]) {
        isUsed[other] = true;
        numbers[i] = other;
      }
    }
    dice_.shuffle(numbers);
    return numbers;
  }

  void writeNames(const Numbers& numbers) {
    constexpr std::uint64_t kOneUnlistedIn = 200;
    std::vector<std::string> names;
    names.reserve(numbers.size());
    for (const std::size_t number : numbers) {
      const bool isUnlisted = dice_.below(kOneUnlistedIn) == 0;
      names.push_back((isUnlisted ? "unlisted_" : "") + components_[number]);
    }
    json_.beginArray();
    for (std::size_t i = 0; i < shape_.repeats; ++i) {
      for (const std::string& name : names) {
        json_.string(name);
      }
    }
    json_.endArray();
  }

  void writeDeletedFiles() {
    json_.beginObject();
    for (const std::size_t component : dice_.distinct(shape_.fileComponents, components_.size())) {
      json_.key(components_[component]);
      json_.beginObject();
      for (const std::size_t package : dice_.distinct(shape_.packages, packages_.size())) {
        json_.key(packages_[package]);
        json_.beginObject();
        inRandomOrder({"size", "files"}, [&](std::size_t member) {
          return member == 0 ? json_.number(size()) : writeFiles();
        });
        json_.endObject();
      }
      json_.endObject();
    }
    json_.endObject();
  }

  void writeFiles() {
    json_.beginArray();
    for (std::size_t i = 0; i < shape_.files; ++i) {
      json_.string(filePath(dice_, fileSerial_++, shape_.pathBytes));
    }
    json_.endArray();
  }

  const DocumentShape& shape_;
  Dice dice_;
  JsonWriter json_;
  std::vector<std::string> components_;
  std::vector<std::string> packages_;
  std::size_t sizes_ = 0;  // how many have been written
  std::size_t fileSerial_ = 0;
};

}  // namespace

void writeDocument(const DocumentShape& shape, const TextSink& sink) {
  DocumentWriter(shape, sink).write();
}

std::string makeDocument(const DocumentShape& shape) {
  std::string text;
  writeDocument(shape, [&text](std::string_view piece) { text.append(piece); });
  return text;
}

}  // namespace bench::generate
