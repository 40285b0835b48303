#pragma once

#include "diagnosis/Rule.h"

namespace update_metadata_tool::lint {

/// What the rule finds, why that matters and what to do: paragraphs of lines of at most 80
/// characters, in which examples are indented.
const char* explain(install::update_metadata_parser::diagnosis::Rule rule);

}  // namespace update_metadata_tool::lint
