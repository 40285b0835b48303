#include "lint/JsonReport.h"

#include <gtest/gtest.h>

#include "tools/lint/SampleReports.h"

namespace update_metadata_tool::lint {
namespace {

TEST(JsonReport, WritesEverythingOnOneLine) {
  EXPECT_EQ(
      test_support::reportOnAllSamples<JsonReport>(),
      R"({"version":1,"files":[)"
      R"({"file":"a folder/update.json","loads":true,"exception":null,"findings":[)"
      R"({"rule":"null-section","severity":"info","message":"a section is null","advice":"look",)"
      R"("line":1,"column":1,"offset":0,"pointer":"","length":0,"item":"","related":[],"fix":null},)"
      "{\"rule\":\"repeated-key\",\"severity\":\"warning\",\"message\":\"duplicate key "
      "'\xC3\xBC'\","
      "\"advice\":\"remove one of the two\",\"line\":4,\"column\":5,\"offset\":46,"
      "\"pointer\":\"/extract/\xC3\xBC\",\"length\":4,\"item\":\"package '\xC3\xBC'\","
      R"("related":[{"message":"the value that is used",)"
      R"("line":3,"column":5,"offset":21}],)"
      R"("fix":{"offset":44,"length":18,"replacement":"","safe":true}}],"readable":true,"readerMessage":null,)"
      R"("omitted":{"null-section":1,"empty-name":3},)"
      R"("sha256":"b7bc6f4dc418b19851de40980a4a9f66ff639df07e8102925f3131e8040ce699"},)"
      R"({"file":"/srv/b\u001b.json","loads":false,"exception":{"type":"std::runtime_error",)"
      R"("text":"Error while parsing /srv/b\u001b.json"},"findings":[{"rule":"malformed-text",)"
      "\"severity\":\"error\",\"message\":\"expected 'true' or 'false' for '\xEF\xBF\xBD\\u001b'\","
      R"("advice":"correct the text","line":1,"column":8,"offset":7,)"
      "\"pointer\":\"/\xEF\xBF\xBD\",\"length\":3,\"item\":\"member '\xEF\xBF\xBD'\","
      "\"related\":[],\"fix\":{\"offset\":7,\"length\":3,\"replacement\":\"\xC3\xBC\",\"safe\":"
      "false}}],"
      R"("readable":true,)"
      R"("readerMessage":"JSON ParserException (E0002): Expected 'true' or 'false' (Line 1, )"
      "Column 8)\\n\\t\\t{\\\"\xEF\xBF\xBD\\\": tru}\\n\\t       ^\",\"omitted\":{},"
      R"("sha256":"0629919bb75c7411dd601daa7b6c896fcd868c026cd4196d08f259859c31850c"},)"
      R"({"file":"gone.json","loads":false,"exception":{"type":"std::runtime_error",)"
      R"("text":"Update MetaData Json file does not exist "},"findings":[],"readable":false,)"
      R"("readerMessage":null,"omitted":{},"sha256":null},)"
      R"({"file":"clean.json","loads":true,"exception":null,"findings":[],"readable":true,)"
      R"("readerMessage":null,"omitted":{},)"
      R"("sha256":"44136fa355b3678a1146ad16f7e8649e94fb4fc21fe77e8310c060f61caaff8a"}],)"
      R"("totals":{"files":4,"loads":2,"unreadable":1,"errors":1,"warnings":4,"infos":2}})"
      "\n");
}

}  // namespace
}  // namespace update_metadata_tool::lint
