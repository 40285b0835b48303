#pragma once

#include <cstddef>
#include <sstream>
#include <string>

#include "lint/FileReport.h"
#include "lint/ReportWriter.h"
#include "output/Pieces.h"

namespace test_support {

/// The text of repeatedKey(): six lines, of which the third has a character of two bytes.
inline const std::string kRepeatedKeyText =
    "{\n"
    "  \"extract\": {\n"
    "    \"\xC3\xBC\": { \"size\": 1 },\n"
    "    \"\xC3\xBC\": { \"size\": 2 }\n"
    "  }\n"
    "}";

/// A document that loads, with a warning that refers to two places, an info about no byte, and more
/// findings that are omitted.
inline update_metadata_tool::lint::FileReport repeatedKey() {
  using update_metadata_tool::lint::Fix;
  using update_metadata_tool::lint::Severity;
  const std::size_t ignored = kRepeatedKeyText.rfind("\"\xC3\xBC\"");
  const std::size_t used = kRepeatedKeyText.find("\"\xC3\xBC\"");
  return {
      "a folder/update.json",
      kRepeatedKeyText,
      {std::nullopt,
       "",
       {{"null-section", Severity::kInfo, "a section is null", "look", 0, 0, 1, 1, "", "", {}, {}},
        {"repeated-key",
         Severity::kWarning,
         "duplicate key '\xC3\xBC'",
         "remove one of the two",
         ignored,
         4,
         4,
         5,
         "/extract/\xC3\xBC",
         "package '\xC3\xBC'",
         {{used, 3, 5, "the value that is used"}},
         Fix{44, 18, "", true}}},
       {{"null-section", Severity::kInfo, 1}, {"empty-name", Severity::kWarning, 3}}}};
}

/// A document that does not load, with control characters and bytes that are not UTF-8, which
/// neither a terminal nor JSON may receive.
inline update_metadata_tool::lint::FileReport malformedText() {
  using update_metadata_tool::lint::Fix;
  using update_metadata_tool::lint::Severity;
  using update_metadata_tool::lint::ThrownException;
  return {"/srv/b\x1B.json",
          "\t{\"\xFF\": tru}",
          {ThrownException{"std::runtime_error", "Error while parsing /srv/b\x1B.json"},
           "JSON ParserException (E0002): Expected 'true' or 'false' (Line 1, Column 8)\n"
           "\t\t{\"\xFF\": tru}\n\t       ^",
           {{"malformed-text",
             Severity::kError,
             "expected 'true' or 'false' for '\xFF\x1B'",
             "correct the text",
             7,
             3,
             1,
             8,
             "/\xFF",
             "member '\xFF'",
             {},
             Fix{7, 3, "\xC3\xBC", false}}},
           {}}};
}

inline update_metadata_tool::lint::FileReport clean() {
  return {"clean.json", "{}", {}};
}

inline update_metadata_tool::lint::UnreadableFile unreadable() {
  return {"gone.json", {"std::runtime_error", "Update MetaData Json file does not exist "}};
}

/// A report on all of these; the arguments are those of the writer after its stream.
template <class Writer, class... Arguments>
std::string reportOnAllSamples(const Arguments&... arguments) {
  std::ostringstream out;
  Writer report(out, arguments...);
  update_metadata_tool::output::Pieces pieces(out, report.separator());
  update_metadata_tool::lint::LintTotals totals;
  const auto write = [&](const auto& file) {
    totals.count(file);
    report.remember(file.file, Writer(pieces, arguments...).write(file));
    pieces.endPiece();
  };
  report.begin();
  write(repeatedKey());
  write(malformedText());
  write(unreadable());
  write(clean());
  report.finish(totals);
  return out.str();
}

}  // namespace test_support
