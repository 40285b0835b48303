#pragma once

#include <string>

#include "foundation/json/Value.h"
#include "json/ParseResult.h"

namespace test_support {

/// Skips white space and, if they are allowed, comments.
void naiveSkipWhitespace(const char*& position, const char* end, bool allowComments);

/// Whether a name is one of the eight names of integer types.
bool naiveIsIntegerType(const std::string& name);

/// Reads a payload of the named integer type in the most literal way. `position` ends after what
/// was read or, on failure, at the byte that was not accepted.
foundation::json::ParseResult naiveReadIntegers(const std::string& typeName, const char*& position,
                                                const char* end, bool allowComments,
                                                foundation::json::Value& result);

}  // namespace test_support
