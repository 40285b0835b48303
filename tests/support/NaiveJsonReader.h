#pragma once

#include <string>

#include "foundation/json/Value.h"

namespace test_support {

/// Reads one JSON value from text in the most literal way, for comparison with the fast reader:
/// tries each of six alternatives in turn and reports the failure that got furthest.
///
/// Throws what foundation::json::parseJsonText() throws. Recurses over the depth of the text, and
/// reads a payload again whenever its type is named again, so texts must be small.
foundation::json::Value naiveParseJsonText(const std::string& text, bool allowComments = false);

}  // namespace test_support
