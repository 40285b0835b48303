#include "install/product_data_provider/ProductDataProvider.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <ios>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "fl/filesystem.h"
#include "fl/i18n.h"

namespace install::product_data_provider {

namespace {

constexpr std::u16string_view kTableName = u"products.tsv";

/// The fields of one line, in the order of the table.
enum Field : std::size_t { kBaseCode, kName, kNumber, kControllingProduct, kFieldCount };

/// Returns the path of the table that `location` refers to; empty if there is none.
std::u16string findTable(const std::u16string& location) {
  if (!fl::filesystem::exists(location)) {
    return {};
  }
  if (!fl::filesystem::is_directory(location)) {
    return location;
  }
  std::u16string table = fl::filesystem::join(location, kTableName);
  return fl::filesystem::exists(table) ? table : std::u16string();
}

std::string readTable(const std::u16string& table) {
  fl::filesystem::basic_ifstream<char> stream(table);
  if (!stream.is_open()) {
    throw std::runtime_error(fl::i18n::to_string(table) + ": cannot be opened");
  }
  try {
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
  } catch (const std::ios_base::failure& failure) {
    throw std::runtime_error(fl::i18n::to_string(table) +
                             ": cannot be read: " + failure.code().message());
  }
}

/// Walks over the text of a table line by line.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}

  /// Moves on to the next line; returns false after the last one.
  bool next() {
    if (rest_.empty()) {
      return false;
    }
    ++number_;
    const std::size_t lineFeed = std::min(rest_.find('\n'), rest_.size());
    line_ = rest_.substr(0, lineFeed);
    const bool terminated = lineFeed != rest_.size();
    rest_.remove_prefix(terminated ? lineFeed + 1 : lineFeed);
    if (terminated && !line_.empty() && line_.back() == '\r') {
      line_.remove_suffix(1);
    }
    return true;
  }

  /// The current line without its line ending.
  std::string_view line() const { return line_; }

  std::size_t number() const { return number_; }  ///< of the current line, from 1
  bool atLastLine() const { return rest_.empty(); }

 private:
  std::string_view rest_;
  std::string_view line_;
  std::size_t number_ = 0;
};

/// Splits a line at its tabs.
///
/// \throws std::runtime_error  the line does not have exactly four fields
std::array<std::string_view, kFieldCount> splitFields(std::string_view line) {
  if (line.empty()) {
    throw std::runtime_error("empty line");
  }
  const auto tabs = static_cast<std::size_t>(std::count(line.begin(), line.end(), '\t'));
  if (tabs + 1 != kFieldCount) {
    throw std::runtime_error("expected 4 tab-separated fields, found " + std::to_string(tabs + 1));
  }
  std::array<std::string_view, kFieldCount> fields;
  for (std::string_view& field : fields) {
    field = line.substr(0, line.find('\t'));
    line.remove_prefix(std::min(field.size() + 1, line.size()));
  }
  return fields;
}

/// Converts a number of decimal digits only.
///
/// \throws std::runtime_error  there is another character or no digit, or the number needs more
/// than 32 bits
std::uint32_t toProductNumber(std::string_view digits) {
  std::uint32_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || stop != end) {
    throw std::runtime_error("'" + std::string(digits) + "' is not an unsigned 32-bit number");
  }
  return number;
}

/// Reads one row. Its controlling product is the one with that name in `controllingProducts`; a new
/// one is added there.
///
/// \throws std::runtime_error  the line has another form
template <class ControllingProducts>
std::shared_ptr<const Product> readProduct(std::string_view line,
                                           ControllingProducts& controllingProducts) {
  const auto fields = splitFields(line);
  auto product = std::make_shared<Product>();
  product->baseCode = fl::i18n::to_ustring(fields[kBaseCode]);
  product->name = fl::i18n::to_ustring(fields[kName]);
  product->number = toProductNumber(fields[kNumber]);
  if (!fields[kControllingProduct].empty()) {
    const std::u16string name = fl::i18n::to_ustring(fields[kControllingProduct]);
    std::shared_ptr<const ControllingProduct>& controlling = controllingProducts[name];
    if (!controlling) {
      controlling = std::make_shared<ControllingProduct>(ControllingProduct{name});
    }
    product->controllingProduct = controlling;
  }
  return product;
}

}  // namespace

ProductDataProvider::ProductDataProvider(std::u16string productDataLocation)
    : location_(std::move(productDataLocation)) {
  const std::u16string table = findTable(location_);
  if (table.empty()) {
    return;
  }
  const std::string text = readTable(table);
  LineReader reader(text);
  reader.next();  // skip the header
  while (reader.next()) {
    if (reader.line().empty() && reader.atLastLine()) {
      break;
    }
    std::shared_ptr<const Product> product;
    try {
      product = readProduct(reader.line(), controllingProductsByName_);
    } catch (const std::runtime_error& reason) {
      throw std::runtime_error(fl::i18n::to_string(table) + ':' + std::to_string(reader.number()) +
                               ": " + reason.what());
    }
    // try_emplace keeps the entry of an earlier row, in each table independently.
    productsByBaseCode_.try_emplace(product->baseCode, product);
    productsByName_.try_emplace(product->name, product);
    productsByNumber_.try_emplace(product->number, product);
  }
}

ProductDataProvider::~ProductDataProvider() = default;

std::u16string ProductDataProvider::getProductBaseCode(const std::u16string& productName) const {
  const auto found = productsByName_.find(productName);
  return found != productsByName_.end() ? found->second->baseCode : std::u16string();
}

std::u16string ProductDataProvider::getProductName(const std::u16string& productBaseCode) const {
  const auto found = productsByBaseCode_.find(productBaseCode);
  return found != productsByBaseCode_.end() ? found->second->name : std::u16string();
}

std::shared_ptr<const Product> ProductDataProvider::findByNumber(std::uint32_t number) const {
  const auto found = productsByNumber_.find(number);
  return found != productsByNumber_.end() ? found->second : nullptr;
}

std::shared_ptr<const ControllingProduct> ProductDataProvider::findControllingProduct(
    const std::u16string& name) const {
  const auto found = controllingProductsByName_.find(name);
  return found != controllingProductsByName_.end() ? found->second : nullptr;
}

}  // namespace install::product_data_provider
