#pragma once

#include <cstddef>
#include <string_view>

#include "diagnosis/source/LineIndex.h"
#include "lint/CharacterIndex.h"
#include "output/JsonWriter.h"

namespace update_metadata_tool::lint {

/// Regions of one file's text, as SARIF has them: columns count characters.
class Regions {
 public:
  /// Linear in the text, which must outlive it.
  explicit Regions(std::string_view text) : size_(text.size()), lines_(text), characters_(text) {}

  /// Writes a member `name` with the region of some bytes, or of those that the text has of them.
  void write(const char* name, std::size_t begin, std::size_t length,
             output::JsonWriter& json) const;

 private:
  std::size_t columnOf(std::size_t offset) const;

  std::size_t size_;
  install::update_metadata_parser::diagnosis::source::LineIndex lines_;
  CharacterIndex characters_;
};

}  // namespace update_metadata_tool::lint
