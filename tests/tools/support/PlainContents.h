#pragma once

#include <optional>

#include "summary/Document.h"
#include "support/PlainDocument.h"
#include "support/TemporaryFolder.h"

namespace test_support {

/// Returns what the command gathers from a document.
inline update_metadata_tool::summary::Contents contentsOf(const PlainDocument& document) {
  const TemporaryFolder folder;
  return update_metadata_tool::summary::Document(
             {folder.writeFile("update.json", document.json()), std::nullopt})
      .gatherContents();
}

}  // namespace test_support
