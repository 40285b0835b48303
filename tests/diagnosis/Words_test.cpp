#include "diagnosis/Words.h"

#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace install::update_metadata_parser::diagnosis {
namespace {

struct Place {
  const char* name;
  const char* pointer;
  const char* words;
};

std::ostream& operator<<(std::ostream& out, const Place& row) {
  return out << row.name;
}

class DescribedPlace : public ::testing::TestWithParam<Place> {};

TEST_P(DescribedPlace, IsWhatThePointerRefersTo) {
  EXPECT_EQ(describePlace(GetParam().pointer), GetParam().words);
}

const Place kPlaces[] = {
    {"Document", "", ""},
    {"NothingThatIsRead", "/note/components", ""},
    {"Metadata", "/metadata/arch", "section 'metadata'"},
    {"Release", "/metadata/base/version", "base release"},
    {"Section", "/products", "section 'products'"},
    {"Product", "/products/p/delete/0", "product 'p'"},
    {"Component", "/components/c/delete", "component 'c'"},
    {"PackageToDelete", "/components/c/delete/p/size", "package 'p' to delete of component 'c'"},
    {"PackageToExtract", "/components/c/extract/p", "package 'p' to extract of component 'c'"},
    {"ComponentWithFiles", "/componentsWithFilesDeleted/c", "component 'c'"},
    {"PackageWithFiles", "/componentsWithFilesDeleted/c/p/files/3",
     "package 'p' with files to delete of component 'c'"},
    {"EscapesInNames", "/products/a~1b~0c", "product 'a/b~c'"},
    {"EmptyName", "/components//delete/", "package '' to delete of component ''"},
};
INSTANTIATE_TEST_SUITE_P(Places, DescribedPlace, ::testing::ValuesIn(kPlaces),
                         [](const auto& row) { return row.param.name; });

TEST(Quote, CutsALongNameBetweenTwoCharacters) {
  const std::string name = std::string(59, 'a') + "\xC3\xA9" + "b";
  EXPECT_EQ(quote(name), '\'' + std::string(59, 'a') + "...'");
  EXPECT_EQ(quote("short"), "'short'");
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
