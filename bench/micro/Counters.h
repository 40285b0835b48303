#pragma once

namespace bench::micro {

/// Counter of the elements that one iteration handles, so that rows show the time per element as
/// well.
constexpr const char* kElements = "elements";

}  // namespace bench::micro
