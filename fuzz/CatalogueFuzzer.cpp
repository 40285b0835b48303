// Any bytes as the table of a product catalogue: its answers, or the line that is rejected, agree
// with a naive reader of tables.

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

#include "Fuzzer.h"
#include "Require.h"
#include "fl/i18n.h"
#include "install/product_data_provider/ProductDataProvider.h"

namespace {

using fuzz::require;
using fuzz::requireEqual;
using install::product_data_provider::ProductDataProvider;

// A file that is in no folder; its path leads through /proc.
class FileInMemory {
 public:
  FileInMemory() : descriptor_(::memfd_create("products.tsv", 0)) {
    require(descriptor_ >= 0, "the file in memory cannot be created");
  }

  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

  void write(const std::uint8_t* data, std::size_t size) const {
    require(::ftruncate(descriptor_, 0) == 0 &&
                ::pwrite(descriptor_, data, size, 0) == static_cast<ssize_t>(size),
            "the file in memory cannot be written");
  }

 private:
  int descriptor_;
};

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> pieces(1);
  for (const char byte : text) {
    if (byte == separator) {
      pieces.emplace_back();
    } else {
      pieces.back() += byte;
    }
  }
  return pieces;
}

std::optional<std::uint32_t> productNumber(const std::string& digits) {
  std::uint64_t number = 0;
  for (const char digit : digits) {
    if (digit < '0' || digit > '9' || number > UINT32_MAX) {
      return std::nullopt;
    }
    number = number * 10 + static_cast<std::uint64_t>(digit - '0');
  }
  return digits.empty() || number > UINT32_MAX
             ? std::nullopt
             : std::optional<std::uint32_t>(static_cast<std::uint32_t>(number));
}

// The content of a table.
struct NaiveCatalogue {
  std::size_t rejectedLine = 0;  // 0 if there is none
  std::map<std::u16string, std::u16string> codesByName;
  std::map<std::u16string, std::u16string> namesByCode;
  std::map<std::uint32_t, std::u16string> namesByNumber;
};

NaiveCatalogue readNaively(const std::string& text) {
  NaiveCatalogue catalogue;
  std::vector<std::string> lines = split(text, '\n');
  const bool isLastTerminated = lines.back().empty();
  if (isLastTerminated) {
    lines.pop_back();
  }
  for (std::size_t i = 1; i < lines.size(); ++i) {
    std::string& line = lines[i];
    const bool isLast = i + 1 == lines.size();
    if ((!isLast || isLastTerminated) && !line.empty() && line.back() == '\r') {
      line.pop_back();
    }
    if (line.empty() && isLast) {
      break;
    }
    const std::vector<std::string> fields = split(line, '\t');
    const auto number = fields.size() == 4 ? productNumber(fields[2]) : std::nullopt;
    if (!number) {
      catalogue.rejectedLine = i + 1;
      break;
    }
    const std::u16string code = fl::i18n::to_ustring(fields[0]);
    const std::u16string name = fl::i18n::to_ustring(fields[1]);
    catalogue.codesByName.emplace(name, code);
    catalogue.namesByCode.emplace(code, name);
    catalogue.namesByNumber.emplace(*number, name);
  }
  return catalogue;
}

void compare(const ProductDataProvider& provider, const NaiveCatalogue& catalogue) {
  require(catalogue.rejectedLine == 0, "an invalid table is accepted");
  for (const auto& [name, code] : catalogue.codesByName) {
    require(provider.getProductBaseCode(name) == code, "wrong base code");
  }
  for (const auto& [code, name] : catalogue.namesByCode) {
    require(provider.getProductName(code) == name, "another name");
  }
  for (const auto& [number, name] : catalogue.namesByNumber) {
    const auto product = provider.findByNumber(number);
    require(product && product->name == name, "wrong product for a number");
    if (product->controllingProduct) {
      require(provider.findControllingProduct(product->controllingProduct->name) ==
                  product->controllingProduct,
              "a controlling product is not found");
    }
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const FileInMemory file;
  file.write(data, size);
  const std::string path = file.path();
  const NaiveCatalogue catalogue = readNaively(std::string(data, data + size));
  try {
    compare(ProductDataProvider(fl::i18n::utf8_to_ustring(path)), catalogue);
  } catch (const std::runtime_error& failure) {
    require(typeid(failure) == typeid(std::runtime_error), "an exception of another kind");
    const std::string start = path + ':' + std::to_string(catalogue.rejectedLine) + ": ";
    requireEqual(std::string(failure.what()).substr(0, start.size()), start, "another line");
  }
  return 0;
}
