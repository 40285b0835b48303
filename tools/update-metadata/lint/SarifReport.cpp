#include "lint/SarifReport.h"

#include <cstddef>
#include <optional>
#include <ostream>
#include <string_view>

#include "diagnosis/Rule.h"
#include "diagnosis/Text.h"
#include "install/update_metadata_parser/Version.h"
#include "lint/JsonPieces.h"
#include "lint/Regions.h"
#include "lint/RuleExplanations.h"
#include "output/Digest.h"
#include "output/JsonWriter.h"
#include "output/Text.h"
#include "output/WrittenText.h"

namespace update_metadata_tool::lint {
namespace {

namespace diagnosis = install::update_metadata_parser::diagnosis;
using diagnosis::RuleDescription;
using output::JsonWriter;

constexpr const char* kSchema = "https://json.schemastore.org/sarif-2.1.0.json";
constexpr const char* kManual = "man:update-metadata-lint(1)";  // a page that is installed
constexpr const char* kSarifVersion = "2.1.0";

// The bytes of a path as a URI reference: relative paths stay relative.
std::string toUri(std::string_view path) {
  constexpr std::string_view kKept = "-._~/";
  std::string uri = path.substr(0, 1) == "/" ? "file://" : "";
  for (const char character : path) {
    if (diagnosis::isLetterOrDigit(character) || kKept.find(character) != std::string_view::npos) {
      uri += character;
    } else {
      uri += '%';
      output::appendHexadecimal(static_cast<unsigned char>(character), 2, uri);
    }
  }
  return uri;
}

// An initial capital, and a full stop at the end unless there is a question mark.
std::string toSentence(std::string text) {
  if (!text.empty() && text.front() >= 'a' && text.front() <= 'z') {
    text.front() = static_cast<char>(text.front() - 'a' + 'A');
  }
  return !text.empty() && text.back() == '?' ? text : text + '.';
}

const char* levelOf(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return "error";
    case Severity::kWarning:
      return "warning";
    case Severity::kInfo:
      return "note";
  }
  return "none";  // no other value is ever made
}

void writeText(const char* name, std::string_view text, JsonWriter& json) {
  json.name(name).beginObject().member("text", text).endObject();
}

// In a message, brackets are links, braces are placeholders, and a backslash escapes brackets.
std::string toMessageText(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char byte : text) {
    if (byte == '\\' || byte == '[' || byte == ']') {
      escaped += '\\';
    } else if (byte == '{' || byte == '}') {
      escaped += byte;
    }
    escaped += byte;
  }
  return escaped;
}

// A message, which may quote the document.
void writeMessage(std::string_view text, JsonWriter& json) {
  writeText("message", toMessageText(text), json);
}

void writeRule(const RuleDescription& description, JsonWriter& json) {
  json.beginObject().member("id", description.id);
  writeText("shortDescription", std::string(description.summary) + '.', json);
  writeText("fullDescription", explain(description.rule), json);
  writeText("help", explain(description.rule), json);
  json.name("defaultConfiguration")
      .beginObject()
      .member("level", levelOf(description.severity))
      .endObject()
      .endObject();
}

void writeTool(JsonWriter& json) {
  json.name("tool")
      .beginObject()
      .name("driver")
      .beginObject()
      .member("name", "update-metadata")
      .member("version", install::update_metadata_parser::version())
      .member("informationUri", kManual);
  json.name("rules").beginArray();
  for (const RuleDescription& description : diagnosis::allRules()) {
    writeRule(description, json);
  }
  json.endArray().endObject().endObject();
}

/// A place in the file of an artifact.
struct Place {
  const Regions& regions;
  const std::string& uri;
  std::size_t artifact;  ///< its index
};

void writeArtifactLocation(const std::string& uri, std::size_t artifact, JsonWriter& json) {
  json.name("artifactLocation")
      .beginObject()
      .member("uri", uri)
      .member("index", artifact)
      .endObject();
}

void writePhysicalLocation(const Place& place, std::size_t begin, std::size_t length,
                           JsonWriter& json) {
  json.name("physicalLocation").beginObject();
  writeArtifactLocation(place.uri, place.artifact, json);
  place.regions.write("region", begin, length, json);
  json.endObject();
}

void writeLocations(const Finding& finding, const Place& place, JsonWriter& json) {
  json.name("locations").beginArray().beginObject();
  writePhysicalLocation(place, finding.offset, finding.length, json);
  if (!finding.pointer.empty()) {
    json.name("logicalLocations").beginArray().beginObject();
    if (!finding.item.empty()) {
      json.member("name", finding.item);
    }
    json.member("fullyQualifiedName", finding.pointer).endObject().endArray();
  }
  json.endObject().endArray();
}

void writeRelatedLocations(const Finding& finding, const Place& place, JsonWriter& json) {
  json.name("relatedLocations").beginArray();
  std::size_t id = 0;
  for (const RelatedPlace& related : finding.related) {
    json.beginObject().member("id", id++);
    writeMessage(toSentence(related.message), json);
    writePhysicalLocation(place, related.offset, 1, json);
    json.endObject();
  }
  json.endArray();
}

void writeFix(const Fix& fix, const Place& place, JsonWriter& json) {
  json.name("fixes").beginArray().beginObject();
  writeText("description", fix.isSafe ? "Safe fix." : "Suggested fix.", json);
  json.name("artifactChanges").beginArray().beginObject();
  writeArtifactLocation(place.uri, place.artifact, json);
  json.name("replacements").beginArray().beginObject();
  place.regions.write("deletedRegion", fix.offset, fix.length, json);
  if (!fix.replacement.empty()) {
    writeText("insertedContent", fix.replacement, json);
  }
  json.endObject().endArray().endObject().endArray().endObject().endArray();
}

void writeProperties(const std::optional<ThrownException>& exception,
                     const std::vector<OmittedFindings>& omitted, JsonWriter& json) {
  json.name("properties").beginObject().member("loads", !exception).name("exception");
  writeException(exception, json);
  json.name("omitted");
  writeOmitted(omitted, json);
  json.endObject();
}

// One result.
void writeFinding(const Finding& finding, const Place& place, JsonWriter& json) {
  json.beginObject()
      .member("ruleId", finding.rule)
      .member("ruleIndex", static_cast<std::size_t>(*diagnosis::findRule(finding.rule)))
      .member("level", levelOf(finding.severity));
  writeMessage(toSentence(finding.message) + ' ' + toSentence(finding.advice), json);
  writeLocations(finding, place, json);
  if (!finding.related.empty()) {
    writeRelatedLocations(finding, place, json);
  }
  if (finding.fix) {
    writeFix(*finding.fix, place, json);
  }
  json.endObject();
}

}  // namespace

ArtifactIndices indexArtifacts(const std::vector<std::string>& files) {
  ArtifactIndices indices;
  for (const std::string& file : files) {
    indices.try_emplace(file, indices.size());
  }
  return indices;
}

void SarifReport::begin() {
  JsonWriter json(out_);
  json.beginObject().member("$schema", kSchema).member("version", kSarifVersion);
  json.name("runs").beginArray().beginObject();
  writeTool(json);
  json.member("columnKind", "unicodeCodePoints").name("results").beginArray();
}

std::string SarifReport::write(const FileReport& report) {
  const Diagnosis& diagnosis = report.diagnosis;
  const std::string uri = toUri(report.file);
  if (!diagnosis.findings.empty()) {
    JsonWriter json(out_);
    const Regions regions(report.text);
    for (const Finding& finding : diagnosis.findings) {
      writeFinding(finding, {regions, uri, indices_.at(report.file)}, json);
    }
  }
  return output::writtenText([&](std::ostream& note) {
    JsonWriter json(note);
    json.beginObject().name("location").beginObject().member("uri", uri).endObject();
    json.name("hashes").beginObject().member("sha-256", output::sha256(report.text)).endObject();
    writeProperties(diagnosis.exception, diagnosis.omitted, json);
    json.endObject();
  });
}

std::string SarifReport::write(const UnreadableFile& file) {
  const std::string uri = toUri(file.file);
  return output::writtenText([&](std::ostream& note) {
    JsonWriter artifact(note);
    artifact.beginObject().name("location").beginObject().member("uri", uri).endObject();
    writeProperties(file.exception, {}, artifact);
    artifact.endObject();
    note << '\n';
    JsonWriter json(note);
    json.beginObject().member("level", "error");
    writeMessage(file.exception.text, json);
    json.name("locations").beginArray().beginObject().name("physicalLocation").beginObject();
    writeArtifactLocation(uri, indices_.at(file.file), json);
    json.endObject().endObject().endArray().endObject();
  });
}

// A note is an artifact and, on a second line, perhaps a notification.
void SarifReport::remember(const std::string& file, const std::string& note) {
  const auto append = [](std::string_view json, std::string& list) {
    list += list.empty() ? "" : ",";
    list += json;
  };
  const std::size_t end = note.find('\n');
  if (indices_.at(file) == artifactCount_) {
    ++artifactCount_;
    append(note.substr(0, end), artifacts_);
  }
  if (end != std::string::npos) {
    append(note.substr(end + 1), notifications_);
  }
}

void SarifReport::finish(const LintTotals& /*totals*/) {
  out_ << "],\"artifacts\":[" << artifacts_ << "],\"invocations\":[{\"executionSuccessful\":"
       << (notifications_.empty() ? "true" : "false") << ",\"toolExecutionNotifications\":["
       << notifications_ << "]}]}]}\n";
}

}  // namespace update_metadata_tool::lint
