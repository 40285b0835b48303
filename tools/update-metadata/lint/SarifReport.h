#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "lint/ReportWriter.h"
#include "output/JsonWriter.h"

namespace update_metadata_tool::lint {

/// Writes findings for code-review systems, as one SARIF 2.1.0 log on one line.
///
/// Columns count characters. Whether the library loads a file, the exception if it does not, and
/// the numbers of omitted findings are properties of its artifact; a file that could not be read is
/// a notification. Bytes that are not UTF-8 become U+FFFD. Memory does not grow with the number of
/// findings.
class SarifReport : public ReportWriter {
 public:
  explicit SarifReport(std::ostream& out);

  void write(const FileReport& report) override;
  void write(const UnreadableFile& file) override;
  void finish(const LintTotals& totals) override;

 private:
  struct Artifact {
    std::string uri;
    std::string sha256;                        ///< digest of the bytes
    std::optional<ThrownException> exception;  ///< nothing if the library loads the file
    std::vector<OmittedFindings> omitted;
  };

  std::ostream& out_;
  output::JsonWriter json_;
  std::vector<Artifact> artifacts_;
  std::map<std::string, std::size_t> artifactsByUri_;
  std::vector<UnreadableFile> unreadable_;
};

}  // namespace update_metadata_tool::lint
