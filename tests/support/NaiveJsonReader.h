#pragma once

#include <string>

#include "foundation/json/Value.h"

namespace test_support {

/// Reads one JSON value from text in the most literal way: a value is tried as each of six
/// alternatives in turn, and the failure that got furthest is the one that counts. To compare the
/// quick reader with.
///
/// Throws what foundation::json::parseJsonText() throws. Recurses over the depth of the text and
/// reads a payload again whenever its type is named again, so texts are to be small.
foundation::json::Value naiveParseJsonText(const std::string& text, bool allowComments = false);

}  // namespace test_support
