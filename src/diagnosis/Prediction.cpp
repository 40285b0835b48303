#include "diagnosis/Prediction.h"

#include <new>
#include <stdexcept>
#include <typeinfo>

#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

/// Loads a text as the document at a path, which is not opened.
class TextParser : public UpdateMetaDataJsonParser {
 public:
  TextParser(const std::u16string& path, std::string_view text)
      : UpdateMetaDataJsonParser(path), text_(text) {}

  std::string readFile(const std::u16string& /*path*/) override { return std::string(text_); }

 private:
  std::string_view text_;
};

const char* typeNameOf(const std::exception& exception) {
  if (typeid(exception) == typeid(std::out_of_range)) {
    return "std::out_of_range";
  }
  return typeid(exception) == typeid(std::runtime_error) ? "std::runtime_error" : "std::exception";
}

}  // namespace

std::optional<ThrownException> predictLoading(const std::u16string& path, std::string_view text) {
  try {
    TextParser(path, text).parseUpdateMetaDataJson();
    return std::nullopt;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& exception) {
    return ThrownException{typeNameOf(exception), exception.what()};
  }
}

}  // namespace install::update_metadata_parser::diagnosis
