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

  /// Counts a file with its findings, including the omitted ones.
  void count(const FileReport& report);
  void count(const UnreadableFile& file);
};

/// Writes the findings in one form, file by file, so only one file's text is in memory.
class ReportWriter {
 public:
  ReportWriter() = default;
  virtual ~ReportWriter() = default;
  ReportWriter(const ReportWriter&) = delete;
  ReportWriter& operator=(const ReportWriter&) = delete;

  virtual void write(const FileReport& report) = 0;
  virtual void write(const UnreadableFile& file) = 0;

  /// Ends the report. Called once, after every file.
  virtual void finish(const LintTotals& totals) = 0;
};

}  // namespace update_metadata_tool::lint
