#include "why/JsonOutput.h"

#include "places/PlaceMembers.h"
#include "summary/SummaryJson.h"

namespace update_metadata_tool::why {

using output::JsonWriter;

void writeJson(const FoundDocument& found, JsonWriter& json) {
  const places::DocumentHead& head = found.head;
  json.beginObject().member("document", head.file);
  summary::writeReleases(head.base, head.target, head.updateLevel, json);
  json.member("arch", head.arch)
      .name("places")
      .array(found.places, [](const FoundPlace& foundPlace, JsonWriter& writer) {
        places::Place place = foundPlace.place;
        place.product = foundPlace.product ? &*foundPlace.product : nullptr;
        writer.beginObject().member("matches", foundPlace.fileLine ? "file" : "key");
        places::writeMembers(place, writer);
        writer.endObject();
      });
  json.name("nearest").array(found.nearest);
  json.member("sha256", head.sha256).endObject();
}

}  // namespace update_metadata_tool::why
