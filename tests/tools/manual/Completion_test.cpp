#include "manual/Completion.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SampleProgram.h"

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using update_metadata_tool::manual::makeBashCompletion;
using update_metadata_tool::manual::makeZshCompletion;

TEST(BashCompletion, OffersSubcommandsOptionsAndTheValuesOfEach) {
  const test_support::SampleProgram sample;
  EXPECT_THAT(makeBashCompletion(update_metadata_tool::manual::outlineOf(sample.app())),
              HasSubstr(R"(  case "$subcommand" in
    show)
      case "$option" in
        -d | --data) action=folder ;;
        --form) words='long short' action=nothing ;;
        *) [[ $current != -* ]] || words='-h --help -d --data --form' ;;
      esac
      ;;
    list)
      case "$option" in
        *) [[ $current != -* ]] || words='-h --help -q --quiet' ;;
      esac
      ;;
    '')
      case "$option" in
        *) words='show list -h --help --version' action=nothing ;;
      esac
      ;;
  esac
)"));
}

TEST(ZshCompletion, DescribesSubcommandsOptionsAndTheValuesOfEach) {
  const test_support::SampleProgram sample;
  const std::string script =
      makeZshCompletion(update_metadata_tool::manual::outlineOf(sample.app()));
  EXPECT_THAT(script, StartsWith("#compdef update-metadata\n"));
  EXPECT_THAT(script, HasSubstr("    'show:Show samples'\n    'list:List them'\n"));
  EXPECT_THAT(script, HasSubstr(R"(    show)
      _arguments \
        '(-h --help)-h[Print this help message and exit]' \
        '(-h --help)--help[Print this help message and exit]' \
        '(-d --data)-d[Folder\: \[of\] '\''data'\'']:DIR:_files -/' \
        '(-d --data)--data[Folder\: \[of\] '\''data'\'']:DIR:_files -/' \
        '(--form)--form[The form]:FORM:(long short)' \
        '*:FILE:_files'
      ;;
)"));
  EXPECT_THAT(script, EndsWith("_update-metadata \"$@\"\n"));
}

}  // namespace
