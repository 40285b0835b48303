#include "lint/FileLinting.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>
#include <filesystem>
#include <ios>
#include <memory>
#include <new>
#include <ostream>
#include <set>
#include <system_error>
#include <type_traits>

#include "command/Advice.h"
#include "command/Jobs.h"
#include "command/ReplaceableDocument.h"
#include "command/SharedOptions.h"
#include "input/DocumentText.h"
#include "lint/JsonReport.h"
#include "lint/SarifReport.h"
#include "lint/TextReport.h"
#include "output/Pieces.h"
#include "output/Text.h"
#include "terminal/ProgressLine.h"
#include "terminal/Terminal.h"

namespace update_metadata_tool::lint {
namespace {

using install::update_metadata_parser::diagnose;
using install::update_metadata_parser::DiagnosisOptions;

constexpr const char* kOtherException = "std::runtime_error";

template <class Exception>
bool isA(const std::exception& failure) {
  return dynamic_cast<const Exception*>(&failure) != nullptr;
}

ThrownException describeException(const std::exception& failure) {
  const char* type = kOtherException;
  if (isA<std::ios_base::failure>(failure)) {
    type = "std::ios_base::failure";
  } else if (isA<std::bad_alloc>(failure)) {
    type = "std::bad_alloc";
  }
  return {type, failure.what()};
}

// Whether two names lead to one file, which two processes must not replace.
bool namesAFileTwice(const std::vector<std::string>& files) {
  std::set<std::filesystem::path> paths;
  const auto isNew = [&paths](const std::string& file) {
    const std::filesystem::path path = std::filesystem::u8path(file);
    std::error_code error;
    const std::filesystem::path resolved = std::filesystem::canonical(path, error);
    return paths.insert(error ? path : resolved).second;
  };
  return !std::all_of(files.begin(), files.end(), isNew);
}

/// What is known about one file after its check.
struct FileResult {
  LintTotals totals;
  std::string note;  ///< of ReportWriter::write()
};

// Bytes that another process of this program reads.
std::string toBytes(const FileResult& result) {
  static_assert(std::is_trivially_copyable_v<LintTotals>);
  std::string bytes(sizeof result.totals, '\0');
  std::memcpy(bytes.data(), &result.totals, sizeof result.totals);
  return bytes + result.note;
}

FileResult fromBytes(const std::string& bytes) {
  FileResult result;
  std::memcpy(&result.totals, bytes.data(), sizeof result.totals);
  result.note = bytes.substr(sizeof result.totals);
  return result;
}

/// Checks one file at a time, in any process.
class FileLinter {
 public:
  explicit FileLinter(const LintOptions& options)
      : options_(options),
        artifacts_(options.format == kSarifFormat ? indexArtifacts(options.files)
                                                  : ArtifactIndices()) {}

  std::unique_ptr<ReportWriter> makeWriter(std::ostream& out, std::ostream& err) const {
    if (options_.fixing && options_.fixing->isDryRun) {
      return std::make_unique<TextReport>(nowhere_, false);  // a diff comes without a report
    }
    if (isFixingInput(options_)) {
      return std::make_unique<TextReport>(err, false);
    }
    if (options_.format == command::kJsonFormat) {
      return std::make_unique<JsonReport>(out);
    }
    if (options_.format == kSarifFormat) {
      return std::make_unique<SarifReport>(out, artifacts_);
    }
    return std::make_unique<TextReport>(out, terminal::isOutputColored(),
                                        terminal::outputColumns());
  }

  FileResult lint(const std::string& file, std::ostream& out, std::ostream& err,
                  terminal::ProgressLine& progress) const {
    DiagnosisOptions options;
    options.path = output::toUtf16(file);
    options.productData = options_.productData;
    options.onProgress = [&progress] { progress.update(); };
    FileResult result;
    FileReport report{file, {}, {}};
    try {
      check(report, result.totals, options, out, err, progress);
    } catch (const std::exception& failure) {
      if (!out) {
        throw;  // the output is at fault, not the file
      }
      progress.clear();
      command::reportUnloaded(failure, options.path, err);
      return unreadable(file, describeException(failure), out, err);
    }
    progress.clear();
    options_.severities.applyTo(report.diagnosis);
    result.totals.count(report);
    result.note = makeWriter(out, err)->write(report);
    return result;
  }

  FileResult unreadable(const std::string& file, const ThrownException& exception,
                        std::ostream& out, std::ostream& err) const {
    FileResult result;
    const UnreadableFile unreadable{file, exception};
    result.totals.count(unreadable);
    result.note = makeWriter(out, err)->write(unreadable);
    return result;
  }

  // A file whose process ended.
  FileResult lost(const std::string& file, const std::string& reason, bool hasOutput,
                  std::ostream& out, std::ostream& err) const {
    err << reason << '\n';
    command::reportOutcome(file, std::string("was not checked") + whatIsWritten(hasOutput), err);
    return unreadable(file, {kOtherException, reason}, hasOutput ? nowhere_ : out, err);
  }

 private:
  // What a part of the output about a file means for the whole, and what to do.
  const char* whatIsWritten(bool hasOutput) const {
    if (!hasOutput) {
      return "; check it alone";
    }
    return options_.format == command::kTextFormat
               ? ", and what is written about it is not complete; check it alone"
               : ", and what is written about it breaks off, so the report is not valid JSON; run "
                 "the command again without this file, and check it alone";
  }

  // Reads a file, fixes it if that is wanted, and diagnoses it.
  void check(FileReport& report, LintTotals& totals, const DiagnosisOptions& options,
             std::ostream& out, std::ostream& err, terminal::ProgressLine& progress) const {
    const std::uint64_t limit = input::limitsOf(report.file, options_.limits).bytes;
    if (options_.fixing) {
      FileFixer fixer(*options_.fixing, options_.severities, out, err);
      report = fixer.fix(report.file, limit, options, progress);
      totals.unfixed = fixer.hasFailed() ? 1 : 0;
    } else {
      report.text = input::readDocument(report.file, limit, progress);
      report.diagnosis = diagnose(report.text, options);
    }
  }

  const LintOptions& options_;
  ArtifactIndices artifacts_;
  mutable std::ostream nowhere_{nullptr};
};

}  // namespace

bool isFixingInput(const LintOptions& options) {
  return options.fixing && std::find(options.files.begin(), options.files.end(),
                                     input::kStandardInput) != options.files.end();
}

LintTotals lintFiles(const LintOptions& options, std::ostream& out, std::ostream& err) {
  const std::vector<std::string>& files = options.files;
  const FileLinter linter(options);
  const std::unique_ptr<ReportWriter> report = linter.makeWriter(out, err);
  output::Pieces pieces(out, report->separator());
  LintTotals totals;
  const auto finishFile = [&](const std::string& file, const FileResult& result) {
    totals.add(result.totals);
    report->remember(file, result.note);
    pieces.endPiece();
  };
  command::Jobs jobs;
  jobs.count = files.size();
  jobs.describe = [&files](std::size_t index) {
    return "checking file " + std::to_string(index + 1) + " of " + std::to_string(files.size());
  };
  jobs.work = [&](std::size_t index, std::ostream& output, std::ostream& messages,
                  terminal::ProgressLine& progress) {
    return toBytes(linter.lint(files[index], output, messages, progress));
  };
  jobs.done = [&](std::size_t index, const std::string& result) {
    finishFile(files[index], fromBytes(result));
  };
  jobs.lost = [&](std::size_t index, const std::string& reason, bool hasOutput) {
    finishFile(files[index], linter.lost(files[index], reason, hasOutput, pieces, err));
  };
  terminal::ProgressLine progress(err, terminal::errorTerminalColumns());
  report->begin();
  command::runJobs(jobs, options.fixing && namesAFileTwice(files) ? 1 : options.processes, pieces,
                   err, progress);
  report->finish(totals);
  out.flush();
  return totals;
}

}  // namespace update_metadata_tool::lint
