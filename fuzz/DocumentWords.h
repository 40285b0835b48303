#pragma once

#include <string_view>

namespace fuzz {

/// The starting point when an input is not JSON.
inline constexpr std::string_view kPlainDocument =
    R"({"metadata":{"arch":"x","target":{"zelvan_version":"","date":"","version":"2",)"
    R"("prerelease":false,"release":"r","checksum":"","description":"","update":1},"base":null},)"
    R"("components":{"a":{"delete":{"b_c":{"size":1}},"extract":{"d":{"size":2,)"
    R"("uncompressedBytes":3}}},"a_b":{"delete":{"c":{"size":4}},"extract":{}}},)"
    R"("products":{"p":{"delete":["a","a_b"],"extract":["a"]}},)"
    R"("componentsWithFilesDeleted":{"e":{"f":{"size":5,"files":["g"]}}}})";

/// Values that a member is given.
inline constexpr std::string_view kScalars[] = {"null",
                                                "true",
                                                "false",
                                                "0",
                                                "-0",
                                                "1",
                                                "-1",
                                                "255",
                                                "300",
                                                "2147483648",
                                                "-2147483649",
                                                "9007199254740993",
                                                "9223372036854775807",
                                                "9223372036854775808",
                                                "-9223372036854775809",
                                                "18446744073709551616",
                                                "1e30",
                                                "-1e999",
                                                "4.9e-324",
                                                "3.7",
                                                "\"\"",
                                                "\"a\"",
                                                "\"=\"",
                                                "\"=x\"",
                                                "\"a_b\"",
                                                "\"\\u0000\"",
                                                "\"\\ud83d\\ude00\"",
                                                "\"\\ud83d\"",
                                                "\"\xFF\"",
                                                "\"\xC3\xA4\"",
                                                "\"int8\"",
                                                "\"uint64\"",
                                                "{}",
                                                "[]",
                                                "[1,-2]",
                                                "{\"qztype\":\"int8\",\"qzdata\":[1]}"};

/// Keys that a member is given.
inline constexpr std::string_view kKeys[] = {"\"metadata\"",
                                             "\"components\"",
                                             "\"products\"",
                                             "\"componentsWithFilesDeleted\"",
                                             "\"arch\"",
                                             "\"target\"",
                                             "\"base\"",
                                             "\"zelvan_version\"",
                                             "\"date\"",
                                             "\"version\"",
                                             "\"prerelease\"",
                                             "\"release\"",
                                             "\"checksum\"",
                                             "\"description\"",
                                             "\"update\"",
                                             "\"delete\"",
                                             "\"extract\"",
                                             "\"size\"",
                                             "\"uncompressedBytes\"",
                                             "\"files\"",
                                             "\"qztype\"",
                                             "\"qzdata\"",
                                             "\"a\"",
                                             "\"a_b\"",
                                             "\"b_c\"",
                                             "\"c\"",
                                             "\"\"",
                                             "\"=\"",
                                             "\"\xFF\"",
                                             "\"\xFE\"",
                                             "\"siz\\u0065\""};

}  // namespace fuzz
