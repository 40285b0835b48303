#pragma once

#include <cstddef>
#include <string>

#include "lint/FileReport.h"

namespace update_metadata_tool::lint {

/// A file that could not be read, so nothing is known about its content.
struct UnreadableFile {
  std::string file;  ///< as the user named it
  ThrownException exception;
};

/// What was found in all files.
struct LintTotals {
  std::size_t files = 0;
  std::size_t loads = 0;       ///< files that the library loads
  std::size_t unreadable = 0;  ///< files that could not be read
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t infos = 0;
  std::size_t unfixed = 0;  ///< files that could not be replaced

  /// Counts a file with its findings, including the omitted ones.
  void count(const FileReport& report);
  void count(const UnreadableFile& file);

  /// Adds what was found in other files.
  void add(const LintTotals& others);
};

/// Writes the findings in one form.
///
/// Each file is a piece that depends on no other, so that several processes can write them, each
/// with its own writer. The writer that begins and ends the report remembers what the others
/// have returned.
class ReportWriter {
 public:
  ReportWriter() = default;
  virtual ~ReportWriter() = default;
  ReportWriter(const ReportWriter&) = delete;
  ReportWriter& operator=(const ReportWriter&) = delete;

  /// Begins the report, before the first piece.
  virtual void begin() {}

  /// What is written between two pieces that are not empty.
  virtual const char* separator() const { return ""; }

  /// Writes the piece of one file. Returns what the end of the report says about it.
  virtual std::string write(const FileReport& report) = 0;
  virtual std::string write(const UnreadableFile& file) = 0;

  /// Receives what write() has returned for each file, in their order.
  virtual void remember(const std::string& /*file*/, const std::string& /*note*/) {}

  /// Ends the report, after the last piece.
  virtual void finish(const LintTotals& totals) = 0;
};

}  // namespace update_metadata_tool::lint
