#include "foundation/core/except.h"

namespace foundation::core::except {

IMsgIDException::~IMsgIDException() = default;

}  // namespace foundation::core::except
