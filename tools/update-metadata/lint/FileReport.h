#pragma once

#include <string>

#include "install/update_metadata_parser/Diagnosis.h"

namespace update_metadata_tool::lint {

using install::update_metadata_parser::Diagnosis;
using install::update_metadata_parser::Finding;
using install::update_metadata_parser::Fix;
using install::update_metadata_parser::OmittedFindings;
using install::update_metadata_parser::RelatedPlace;
using install::update_metadata_parser::Severity;
using install::update_metadata_parser::ThrownException;

/// A document and what was found in it.
struct FileReport {
  std::string file;  ///< the path as the user gave it
  std::string text;  ///< its bytes
  Diagnosis diagnosis;
};

}  // namespace update_metadata_tool::lint
