#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

#include "output/FileReplacement.h"

namespace update_metadata_tool::command {

/// A document that was read and may be replaced by another text.
class ReplaceableDocument {
 public:
  /// Reads a file, or standard input, which cannot be replaced. A file that cannot be opened for
  /// replacement is read by the library, whose exceptions pass through; so does that of
  /// input::checkLength().
  ReplaceableDocument(const std::string& file, std::uint64_t limit);

  const std::string& text() const { return text_; }

  /// Replaces the file as output::OpenedFile does, if it is still the one that was read. Otherwise,
  /// or if it cannot be written, writes why to `err`, what to do, and returns false.
  bool replace(const std::string& text, std::ostream& err) const;

 private:
  std::string file_;
  std::optional<output::OpenedFile> opened_;
  std::string text_;
};

/// Writes what happened to a file: "'a.json' was not changed; ...".
void reportOutcome(const std::string& file, const std::string& outcome, std::ostream& err);

/// Returns whether a path is that of a pipe, a device or a file descriptor, such as /dev/stdin. It
/// should not even be read: its content can be read only once and would be lost.
bool isReadOnlyOnce(const std::string& file);

}  // namespace update_metadata_tool::command
