#include "install/update_metadata_parser/Version.h"

#define UMP_TEXT_OF(NUMBER) #NUMBER
#define UMP_VERSION_TEXT(MAJOR, MINOR, PATCH) \
  UMP_TEXT_OF(MAJOR) "." UMP_TEXT_OF(MINOR) "." UMP_TEXT_OF(PATCH)

namespace install::update_metadata_parser {

const char* version() noexcept {
  return UMP_VERSION_TEXT(UPDATE_METADATA_PARSER_VERSION_MAJOR,
                          UPDATE_METADATA_PARSER_VERSION_MINOR,
                          UPDATE_METADATA_PARSER_VERSION_PATCH);
}

}  // namespace install::update_metadata_parser
