#pragma once

#include <string_view>

namespace update_metadata_tool::report {

/// The text of the page, made of the files in page/, with @CONTENTS@ where the data go.
extern const std::string_view kPageText;

}  // namespace update_metadata_tool::report
