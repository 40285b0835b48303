#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "json/TypedValues.h"

namespace foundation::json {

/// Keeps track of objects with "qztype" or "qzdata" members while they are open.
///
/// Each "qztype" member may change how the payload before it must be read. A payload is read at
/// most once in each way, however many such members follow: each reading is kept.
template <class Sink>
class TypedPayloads {
 public:
  /// Records that the payload of the object open at `depth` begins at `position`. Returns the name
  /// of the integer type to read it with, or empty to read it as an ordinary value.
  std::string_view beginPayload(std::size_t depth, const char* position) {
    Object& object = objectAt(depth);
    object.payload = position;
    object.readings = {};
    return object.typeName;
  }

  /// Records that the payload begun last is the last value of the sink.
  void endPayload(const Sink& sink) {
    Object& object = objects_.back();
    if (!object.place) {
      object.place = sink.lastPlace();
    }
    if (!object.typeName.empty()) {
      object.reading() = sink.last();
    }
  }

  /// Records a "qztype" member of the object open at `depth`: the last one that names one of the
  /// eight types counts, other names are ignored. In the sink, an earlier payload is replaced by
  /// its integers.
  ///
  /// On failure `position` is set to the first byte of the payload that is not accepted.
  ParseResult setType(std::size_t depth, std::string_view name, const char*& position,
                      const char* end, bool allowComments, Sink& sink) {
    Object& object = objectAt(depth);
    if (const std::string_view known = knownTypeName(name); !known.empty()) {
      object.typeName = known;
    }
    if (object.typeName.empty() || !object.place) {
      return kSuccess;
    }
    auto& reading = object.reading();
    if (!reading) {
      const char* payload = object.payload;
      const ParseResult result =
          readTypedPayload(object.typeName, payload, end, allowComments, sink);
      if (result != kSuccess) {
        position = payload;
        return result;
      }
      reading = sink.takeLast();
    }
    sink.replace(*object.place, *reading);
    return kSuccess;
  }

  /// Forgets the object open at `depth`, which is being closed. It need not have such members.
  void leaveObject(std::size_t depth) noexcept {
    if (!objects_.empty() && objects_.back().depth == depth) {
      objects_.pop_back();
    }
  }

 private:
  struct Object {
    std::size_t depth;
    std::string_view typeName = {};         // static; empty until a known name is read
    const char* payload = nullptr;          // the payload read last
    std::optional<std::size_t> place = {};  // of the first payload, which is the one stored
    std::array<std::optional<typename Sink::Kept>, 2> readings = {};  // as signed, as unsigned

    // The payload's reading with the current type, if there is one.
    std::optional<typename Sink::Kept>& reading() noexcept {
      return readings[isSignedType(typeName) ? 0 : 1];
    }
  };

  Object& objectAt(std::size_t depth) {
    if (objects_.empty() || objects_.back().depth != depth) {
      objects_.push_back({depth});
    }
    return objects_.back();
  }

  std::vector<Object> objects_;  // the open objects that have such members
};

}  // namespace foundation::json
