#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "lint/ReportWriter.h"

namespace update_metadata_tool::lint {

/// The index of each file's artifact. A file may be checked twice, but is only one artifact.
using ArtifactIndices = std::map<std::string, std::size_t>;

ArtifactIndices indexArtifacts(const std::vector<std::string>& files);

/// Writes findings for code-review systems, as one SARIF 2.1.0 log on one line.
///
/// Columns count characters. Each file is an artifact, whose properties are whether the library
/// loads it, the exception if it does not, and the numbers of omitted findings; a file that could
/// not be read is also a notification. Bytes that are not UTF-8 become U+FFFD. Memory does not grow
/// with the number of findings.
class SarifReport : public ReportWriter {
 public:
  /// \param artifacts  those of all files, which must outlive the writer
  SarifReport(std::ostream& out, const ArtifactIndices& artifacts)
      : out_(out), indices_(artifacts) {}

  void begin() override;
  const char* separator() const override { return ","; }
  std::string write(const FileReport& report) override;
  std::string write(const UnreadableFile& file) override;
  void remember(const std::string& file, const std::string& note) override;
  void finish(const LintTotals& totals) override;

 private:
  std::ostream& out_;
  const ArtifactIndices& indices_;
  std::size_t artifactCount_ = 0;
  std::string artifacts_;      ///< as JSON, separated by commas
  std::string notifications_;  ///< the same
};

}  // namespace update_metadata_tool::lint
