#include "support/Json.h"

#include <ostream>

namespace nlohmann {

void PrintTo(const ordered_json& json, std::ostream* out) {
  *out << json.dump(1);
}

}  // namespace nlohmann

namespace test_support {

Json parseJson(const std::string& text) {
  return Json::parse(text);
}

}  // namespace test_support
