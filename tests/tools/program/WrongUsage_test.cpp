// Usage errors of the program and of most subcommands.

#include <gtest/gtest.h>

#include "support/RunTool.h"
#include "support/ToolCases.h"

namespace update_metadata_tool::program {
namespace {

using test_support::WrongUsage;

class WrongUsages : public ::testing::TestWithParam<WrongUsage> {};

TEST_P(WrongUsages, ExitWithStatusTwoAndPointToTheHelp) {
  EXPECT_EQ(test_support::runTool(GetParam().arguments), test_support::rejectedRun(GetParam()));
}

const WrongUsage kProgramUsages[] = {
    {"NoCommand", {}, "A subcommand is required"},
    {"UnknownCommand", {"ask"}, "The following argument was not expected: ask"},
    {"MistypedCommand",
     {"qurey"},
     "The following argument was not expected: qurey\nDid you mean 'query'?"},
    {"MistypedCommandWithArguments",
     {"--color", "Lnit", "good.json"},
     "The following arguments were not expected: good.json Lnit --color\nDid you mean 'lint'?"},
};
INSTANTIATE_TEST_SUITE_P(Program, WrongUsages, ::testing::ValuesIn(kProgramUsages),
                         [](const auto& row) { return row.param.name; });

const WrongUsage kQueryUsages[] = {
    {"ControlsInAnArgument",
     {"query", "x", "a\x1B[31m\n\x9B"},
     "The following argument was not expected: a<U+001B>[31m<U+000A><9B>"},
    {"NoFile", {"query"}, "FILE is required"},
    {"TwoFiles", {"query", "x", "y"}, "The following argument was not expected: y"},
    {"UnknownOption",
     {"query", "x", "--color"},
     "The following argument was not expected: --color"},
    {"UnknownFormat", {"query", "x", "--format", "xml"}, "--format: xml not in {text,json}"},
    {"FormatWithoutValue",
     {"query", "x", "--format"},
     "--format: 1 required FORMAT:{text,json} missing"},
    {"FileNotUtf8", {"query", "\xFF"}, "FILE: the argument is not UTF-8"},
    {"ProductDataNotUtf8",
     {"query", "x", "--product-data", "a\xC3"},
     "--product-data: the argument is not UTF-8"},
    {"BaseCodeNotUtf8",
     {"query", "x", "--base-code", "\xED\xA0\x80"},
     "--base-code: the argument is not UTF-8"},
};
INSTANTIATE_TEST_SUITE_P(Query, WrongUsages, ::testing::ValuesIn(kQueryUsages),
                         [](const auto& row) { return row.param.name; });

const WrongUsage kShowUsages[] = {
    {"NoFile", {"show"}, "FILE is required"},
    {"UnknownOrder", {"show", "x", "--sort", "date"}, "--sort: date not in {size,name}"},
    {"UnknownFormat", {"show", "x", "--format", "xml"}, "--format: xml not in {text,json}"},
    {"NegativeTop",
     {"show", "x", "--top=-1"},
     "--top: '-1' is not a whole number, or is too large"},
    {"TopNotANumber",
     {"show", "x", "--top", "5 or so"},
     "--top: '5 or so' is not a whole number, or is too large"},
    {"TopTooLarge",
     {"show", "x", "--top", "18446744073709551616"},
     "--top: '18446744073709551616' is not a whole number, or is too large"},
    {"FileNotUtf8", {"show", "\xFF"}, "FILE: the argument is not UTF-8"},
    {"ProductDataNotUtf8",
     {"show", "x", "--product-data", "\xFF"},
     "--product-data: the argument is not UTF-8"},
};
INSTANTIATE_TEST_SUITE_P(Show, WrongUsages, ::testing::ValuesIn(kShowUsages),
                         [](const auto& row) { return row.param.name; });

const WrongUsage kPlanUsages[] = {
    {"NoFile", {"plan", "--product-data", "."}, "FILE is required"},
    {"NoProductData", {"plan", "x"}, "--product-data is required"},
    {"ProductWithoutCode",
     {"plan", "x", "--product-data", ".", "--product"},
     "--product: 1 required CODE missing"},
    {"ProductNotUtf8",
     {"plan", "x", "--product-data", ".", "--product", "\xFF"},
     "--product: the argument is not UTF-8"},
    {"UnknownFormat",
     {"plan", "x", "--product-data", ".", "--format", "xml"},
     "--format: xml not in {text,json}"},
};
INSTANTIATE_TEST_SUITE_P(Plan, WrongUsages, ::testing::ValuesIn(kPlanUsages),
                         [](const auto& row) { return row.param.name; });

const WrongUsage kDiffUsages[] = {
    {"OneDocument", {"diff", "x"}, "NEW is required"},
    {"StandardInputTwice", {"diff", "-", "-"}, "NEW: standard input (-) can be read only once"},
    {"UnknownFormat", {"diff", "x", "y", "--format=xml"}, "--format: xml not in {text,json}"},
    {"BadLimit",
     {"diff", "x", "y", "--fail-if-larger", "5x"},
     "--fail-if-larger: give a number of bytes, such as 1048576, or a percentage of OLD's bytes to "
     "fetch, such as 2.5%"},
    {"NegativeLimit",
     {"diff", "x", "y", "--fail-if-larger=-1"},
     "--fail-if-larger: give a number of bytes, such as 1048576, or a percentage of OLD's bytes to "
     "fetch, such as 2.5%"},
};
INSTANTIATE_TEST_SUITE_P(Diff, WrongUsages, ::testing::ValuesIn(kDiffUsages),
                         [](const auto& row) { return row.param.name; });

const WrongUsage kReportUsages[] = {
    {"NoOutput", {"report", "x"}, "--output is required"},
    {"EmptyOutput", {"report", "x", "-o", ""}, "--output: give a file, or - for standard output"},
};
INSTANTIATE_TEST_SUITE_P(Report, WrongUsages, ::testing::ValuesIn(kReportUsages),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace update_metadata_tool::program
