#include "lint/Prediction.h"

#include <new>
#include <stdexcept>
#include <typeinfo>

#include "input/TextParser.h"
#include "output/Text.h"

namespace update_metadata_tool::lint {
namespace {

const char* typeNameOf(const std::exception& exception) {
  if (typeid(exception) == typeid(std::out_of_range)) {
    return "std::out_of_range";
  }
  return typeid(exception) == typeid(std::runtime_error) ? "std::runtime_error" : "std::exception";
}

}  // namespace

std::optional<ThrownException> predictLoading(const std::string& file, const std::string& text) {
  try {
    input::TextParser(output::toUtf16(file), text).parseUpdateMetaDataJson();
    return std::nullopt;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& exception) {
    return ThrownException{typeNameOf(exception), exception.what()};
  }
}

}  // namespace update_metadata_tool::lint
