#include "lint/Prediction.h"

#include <new>
#include <stdexcept>
#include <typeinfo>

#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "output/Text.h"

namespace update_metadata_tool::lint {
namespace {

using install::update_metadata_parser::UpdateMetaDataJsonParser;

/// Reads a text in place of the file.
class ParserOfText : public UpdateMetaDataJsonParser {
 public:
  ParserOfText(const std::u16string& file, const std::string& text)
      : UpdateMetaDataJsonParser(file), text_(text) {}

  std::string readFile(const std::u16string& /*path*/) override { return text_; }

 private:
  const std::string& text_;
};

const char* typeNameOf(const std::exception& exception) {
  if (typeid(exception) == typeid(std::out_of_range)) {
    return "std::out_of_range";
  }
  return typeid(exception) == typeid(std::runtime_error) ? "std::runtime_error" : "std::exception";
}

}  // namespace

std::optional<ThrownException> predictLoading(const std::string& file, const std::string& text) {
  try {
    ParserOfText(output::toUtf16(file), text).parseUpdateMetaDataJson();
    return std::nullopt;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& exception) {
    return ThrownException{typeNameOf(exception), exception.what()};
  }
}

}  // namespace update_metadata_tool::lint
