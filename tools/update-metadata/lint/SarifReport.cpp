#include "lint/SarifReport.h"

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <string_view>
#include <utility>

#include "OrderedJson.h"
#include "install/update_metadata_parser/Version.h"
#include "lint/CharacterIndex.h"
#include "lint/JsonPieces.h"
#include "source/LineIndex.h"

namespace update_metadata_tool {
namespace {

constexpr const char* kSchema = "https://json.schemastore.org/sarif-2.1.0.json";
constexpr const char* kVersion = "2.1.0";

// The bytes of a path as a URI reference: relative paths stay relative.
std::string toUri(std::string_view path) {
  constexpr std::string_view kKept = "-._~/";
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string uri = path.substr(0, 1) == "/" ? "file://" : "";
  for (const char character : path) {
    const auto byte = static_cast<unsigned char>(character);
    const bool isLetterOrDigit = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                                 (byte >= '0' && byte <= '9');
    if (isLetterOrDigit || kKept.find(character) != std::string_view::npos) {
      uri += character;
    } else {
      uri += {'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
    }
  }
  return uri;
}

// A capital at the beginning, a full stop at the end.
std::string toSentence(std::string text) {
  if (!text.empty() && text.front() >= 'a' && text.front() <= 'z') {
    text.front() = static_cast<char>(text.front() - 'a' + 'A');
  }
  return text + '.';
}

const char* levelOf(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return "error";
    case Severity::kWarning:
      return "warning";
    case Severity::kInfo:
      return "note";
    default:
      return "none";
  }
}

OrderedJson toMessage(const std::string& text) {
  return {{"text", text}};
}

OrderedJson toJson(const RuleDescription& description) {
  return {{"id", description.id},
          {"shortDescription", toMessage(std::string(description.summary) + '.')},
          {"fullDescription", toMessage(description.explanation)},
          {"defaultConfiguration", {{"level", levelOf(description.severity)}}}};
}

OrderedJson makeTool() {
  OrderedJson rules = OrderedJson::array();
  for (const RuleDescription& description : allRules()) {
    rules.push_back(toJson(description));
  }
  return {{"driver",
           {{"name", "update-metadata"},
            {"version", install::update_metadata_parser::version()},
            {"rules", std::move(rules)}}}};
}

/// Finds regions of one file's text.
class Regions {
 public:
  explicit Regions(std::string_view text) : size_(text.size()), lines_(text), characters_(text) {}

  OrderedJson regionOf(std::size_t begin, std::size_t length) const {
    begin = std::min(begin, size_);
    const std::size_t end = begin + std::min(length, size_ - begin);
    return {{"startLine", lines_.positionOf(begin).line},
            {"startColumn", columnOf(begin)},
            {"endLine", lines_.positionOf(end).line},
            {"endColumn", columnOf(end)},
            {"byteOffset", begin},
            {"byteLength", end - begin}};
  }

 private:
  std::size_t columnOf(std::size_t offset) const {
    const std::size_t lineBegin = offset - (lines_.positionOf(offset).column - 1);
    return characters_.countBefore(offset) - characters_.countBefore(lineBegin) + 1;
  }

  std::size_t size_;
  LineIndex lines_;
  CharacterIndex characters_;
};

OrderedJson makePhysicalLocation(const std::string& uri, std::size_t artifact, OrderedJson region) {
  return {{"artifactLocation", {{"uri", uri}, {"index", artifact}}}, {"region", std::move(region)}};
}

// One result. `artifact` is the index of its file, whose URI is `uri`.
OrderedJson toJson(const Finding& finding, const Regions& regions, const std::string& uri,
                   std::size_t artifact) {
  OrderedJson location = {
      {"physicalLocation",
       makePhysicalLocation(uri, artifact, regions.regionOf(finding.offset, finding.length))}};
  if (!finding.pointer.empty()) {
    OrderedJson logical;
    if (!finding.item.empty()) {
      logical["name"] = finding.item;
    }
    logical["fullyQualifiedName"] = finding.pointer;
    location["logicalLocations"] = OrderedJson::array({std::move(logical)});
  }
  OrderedJson result = {
      {"ruleId", describe(finding.rule).id},
      {"ruleIndex", static_cast<std::size_t>(finding.rule)},
      {"level", levelOf(finding.severity)},
      {"message", toMessage(toSentence(finding.message) + ' ' + toSentence(finding.advice))},
      {"locations", OrderedJson::array({std::move(location)})}};
  if (!finding.related.empty()) {
    OrderedJson& locations = result["relatedLocations"] = OrderedJson::array();
    for (const RelatedPlace& related : finding.related) {
      locations.push_back(
          {{"id", locations.size()},
           {"message", toMessage(toSentence(related.message))},
           {"physicalLocation",
            makePhysicalLocation(uri, artifact, regions.regionOf(related.offset, 1))}});
    }
  }
  return result;
}

}  // namespace

SarifReport::SarifReport(std::ostream& out) : out_(out) {
  out_ << "{\"$schema\":\"" << kSchema << "\",\"version\":\"" << kVersion
       << "\",\"runs\":[{\"tool\":";
  writeJson(makeTool(), out_);
  out_ << ",\"columnKind\":\"unicodeCodePoints\",\"results\":[";
}

void SarifReport::write(const FileReport& report) {
  const std::string uri = toUri(report.file);
  // A file may be linted twice, but no artifact may stand there twice.
  const auto [known, isNew] = artifactsByUri_.try_emplace(uri, artifacts_.size());
  const std::size_t artifact = known->second;
  if (isNew) {
    artifacts_.push_back({uri, report.loads, report.exception, report.omitted});
  }
  if (report.findings.empty()) {
    return;
  }
  const Regions regions(report.text);
  for (const Finding& finding : report.findings) {
    out_ << (isFirstResult_ ? "" : ",");
    isFirstResult_ = false;
    writeJson(toJson(finding, regions, uri, artifact), out_);
  }
}

void SarifReport::write(const UnreadableFile& file) {
  unreadable_.push_back(file);
}

void SarifReport::finish(const LintTotals& /*totals*/) {
  OrderedJson artifacts = OrderedJson::array();
  for (const Artifact& artifact : artifacts_) {
    OrderedJson properties = {{"loads", artifact.loads},
                              {"exception", toJson(artifact.exception)},
                              {"omitted", toJson(artifact.omitted)}};
    artifacts.push_back(
        {{"location", {{"uri", artifact.uri}}}, {"properties", std::move(properties)}});
  }
  OrderedJson notifications = OrderedJson::array();
  for (const UnreadableFile& file : unreadable_) {
    const OrderedJson place = {
        {"physicalLocation", {{"artifactLocation", {{"uri", toUri(file.file)}}}}}};
    notifications.push_back({{"level", "error"},
                             {"message", toMessage(file.exception.text)},
                             {"locations", OrderedJson::array({place})}});
  }
  out_ << "],\"artifacts\":";
  writeJson(artifacts, out_);
  out_ << ",\"invocations\":[";
  writeJson({{"executionSuccessful", unreadable_.empty()},
             {"toolExecutionNotifications", std::move(notifications)}},
            out_);
  out_ << "]}]}\n";
}

}  // namespace update_metadata_tool
