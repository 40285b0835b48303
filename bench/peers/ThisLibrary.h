#pragma once

#include "answers/FlatDocument.h"
#include "foundation/json/Value.h"

namespace bench::peers {

/// Decodes a document that this library's reader parsed. Texts are views into `document`.
answers::FlatDocument flatDocumentOf(const foundation::json::Value& document);

}  // namespace bench::peers
