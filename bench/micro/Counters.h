#pragma once

namespace bench::micro {

/// Counter of the elements that one iteration handles: rows then tell the time for each, too.
constexpr const char* kElements = "elements";

}  // namespace bench::micro
