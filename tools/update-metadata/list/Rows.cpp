#include "list/Rows.h"

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>

#include "output/JsonWriter.h"
#include "output/WrittenText.h"
#include "places/PlaceMembers.h"

namespace update_metadata_tool::list {
namespace {

using output::JsonWriter;
using places::DocumentHead;
using places::Place;

// What every row of a document begins with.
template <class Writer>
void writeHead(const DocumentHead& head, Writer& writer) {
  writer.member("document", head.file)
      .member("baseFamily", head.base.family)
      .member("baseVersion", head.base.version)
      .member("targetFamily", head.target.family)
      .member("targetVersion", head.target.version)
      .member("updateLevel", head.updateLevel)
      .member("arch", head.arch);
}

// And what it ends with.
template <class Writer>
void writeEnd(const DocumentHead& head, Writer& writer) {
  writer.member("sha256", head.sha256);
}

class JsonRows : public RowWriter {
 public:
  void writeHeading(std::ostream& /*out*/) const override {}

  void begin(const DocumentHead& head) override {
    before_ = output::writtenText([&head](std::ostream& out) {
      JsonWriter json(out);
      writeHead(head, json.beginObject());
      out << ',';
    });
    after_ = output::writtenText([&head](std::ostream& out) {
      out << ',';
      JsonWriter json(out);
      writeEnd(head, json);
      out << "}\n";
    });
  }

  void write(const Place& place, std::ostream& out) const override {
    out << before_;
    JsonWriter json(out);
    places::writeMembers(place, json);
    out << after_;
  }

 private:
  std::string before_;
  std::string after_;
};

/// Writes the names of members, or their values.
template <bool kNames>
class TsvWriter {
 public:
  explicit TsvWriter(std::ostream& out) : out_(out) {}

  template <class Value>
  TsvWriter& member(std::string_view name, const Value& value) {
    if (!isFirst_) {
      out_ << '\t';
    }
    isFirst_ = false;
    if constexpr (kNames) {
      out_ << name;
    } else {
      write(value);
    }
    return *this;
  }

 private:
  template <class Value>
  void write(const std::optional<Value>& value) {
    if (value) {
      write(*value);
    }
  }

  template <class Value>
  void write(const Value& value) {
    if constexpr (std::is_integral_v<Value>) {
      out_ << value;
    } else {
      output::writeUnquoted(value, out_);
    }
  }

  std::ostream& out_;
  bool isFirst_ = true;
};

class TsvRows : public RowWriter {
 public:
  void writeHeading(std::ostream& out) const override {
    TsvWriter<true> names(out);
    writeHead({}, names);
    places::writeMembers({}, names);
    writeEnd({}, names);
    out << '\n';
  }

  void begin(const DocumentHead& head) override {
    before_ = output::writtenText([&head](std::ostream& out) {
      TsvWriter<false> values(out);
      writeHead(head, values);
      out << '\t';
    });
    after_ = '\t' + head.sha256 + '\n';
  }

  void write(const Place& place, std::ostream& out) const override {
    out << before_;
    TsvWriter<false> values(out);
    places::writeMembers(place, values);
    out << after_;
  }

 private:
  std::string before_;
  std::string after_;
};

}  // namespace

std::unique_ptr<RowWriter> makeJsonRows() {
  return std::make_unique<JsonRows>();
}

std::unique_ptr<RowWriter> makeTsvRows() {
  return std::make_unique<TsvRows>();
}

}  // namespace update_metadata_tool::list
