#include <algorithm>
#include <cstddef>
#include <limits>
#include <stdexcept>

#include "install/update_metadata_parser/Limits.h"
#include "reader/DocumentFile.h"

namespace install::update_metadata_parser {

LimitedParser::LimitedParser(const std::u16string& path, const Limits& limits)
    : UpdateMetaDataJsonParser(path), limits_(limits) {}

LimitedParser::~LimitedParser() = default;

std::string LimitedParser::readFile(const std::u16string& path) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::size_t>::max();
  // One byte more shows that the text is too long.
  std::string text =
      readDocument(path, static_cast<std::size_t>(std::min(limits_.bytes, kMost - 1) + 1));
  if (text.size() > limits_.bytes) {
    throw std::runtime_error("Update MetaData Json file has more than " +
                             std::to_string(limits_.bytes) + " bytes");
  }
  return text;
}

std::shared_ptr<UpdateMetaDataHandler> LimitedParser::getUpdateMetaDataHandler() const {
  return std::make_shared<LimitedHandler>(limits_);
}

}  // namespace install::update_metadata_parser
