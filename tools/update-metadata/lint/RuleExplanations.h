#pragma once

#include "diagnosis/Rule.h"

namespace update_metadata_tool::lint {

using namespace install::update_metadata_parser::diagnosis;

/// What the rule finds, why that matters and what to do: paragraphs of lines of at most 80
/// characters, in which examples are indented.
const char* explain(Rule rule);

}  // namespace update_metadata_tool::lint
