#pragma once

#include <string>
#include <vector>

#include "support/RunTool.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::plan {

/// Runs plan on a document, with a table of products.
inline test_support::ToolRun plan(const std::string& document, std::vector<std::string> options,
                                  const std::string& products = "\n") {
  options.insert(options.begin(), "plan");
  return test_support::runOnDocument(options, document, products);
}

}  // namespace update_metadata_tool::plan
