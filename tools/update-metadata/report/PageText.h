#pragma once

#include <string_view>

namespace update_metadata_tool {

/// The text of the page, put together from the files in page/, with @CONTENTS@ where the data
/// belong.
extern const std::string_view kPageText;

}  // namespace update_metadata_tool
