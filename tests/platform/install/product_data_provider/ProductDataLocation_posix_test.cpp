// Locations of product data that only POSIX systems have.

#include <sys/stat.h>

#include <string>

#include <gtest/gtest.h>

#include "install/product_data_provider/ProductDataProvider.h"
#include "platform/install/product_data_provider/Catalogue.h"
#include "support/TemporaryFolder.h"
#include "support/WithoutRights.h"

namespace {

using install::product_data_provider::ProductDataProvider;
using test_support::failure;
using test_support::kHeader;
using test_support::TemporaryFolder;
using test_support::WithoutRights;

TEST(ProductDataLocation, MayBeALink) {
  const TemporaryFolder folder;
  folder.writeFile("products.tsv", kHeader + "A\tOne\t1\t\n");
  folder.makeLink("link", ".");
  for (const char* location : {"link", "link/", "link/products.tsv"}) {
    EXPECT_EQ(ProductDataProvider(folder.path(location)).getProductName(u"A"), u"One") << location;
  }
}

TEST(ProductDataLocation, YieldsAnEmptyCatalogueWhereALinkOrASlashLeadsNowhere) {
  const TemporaryFolder folder;
  folder.writeFile("file", kHeader + "A\tOne\t1\t\n");
  folder.makeLink("loop", "loop");
  folder.makeLink("dangling", "missing");
  for (const char* location : {"file/", "loop", "dangling"}) {
    EXPECT_EQ(ProductDataProvider(folder.path(location)).getProductName(u"A"), u"") << location;
  }
}

TEST(ProductDataLocation, FailsForASocket) {
  const TemporaryFolder folder;
  EXPECT_EQ(failure(folder, folder.makeSocket("socket")), "@/socket: cannot be opened");
}

/// A folder "locked" that may not be searched. It contains a catalogue and a folder with another.
class LockedFolder : public ::testing::Test {
 protected:
  LockedFolder() {
    folder_.writeFile("locked/products.tsv", kHeader + "A\tOne\t1\t\n");
    folder_.writeFile("locked/inside/products.tsv", kHeader + "A\tOne\t1\t\n");
    ::chmod(folder_.nativePath().c_str(), 0755);
    ::chmod(folder_.nativePath("locked").c_str(), 0);
  }
  ~LockedFolder() override { ::chmod(folder_.nativePath("locked").c_str(), 0700); }

  const TemporaryFolder folder_;
};

TEST_F(LockedFolder, CannotBeOpenedAsALocation) {
  const WithoutRights withoutRights;
  EXPECT_EQ(failure(folder_, folder_.path("locked")), "@/locked: cannot be opened");
  EXPECT_EQ(failure(folder_, folder_.path("locked/")), "@/locked/: cannot be opened");
}

TEST_F(LockedFolder, HidesTheLocationsInIt) {
  for (const char* location : {"locked/products.tsv", "locked/inside", "locked/missing"}) {
    const WithoutRights withoutRights;
    EXPECT_EQ(ProductDataProvider(folder_.path(location)).getProductName(u"A"), u"") << location;
  }
}

TEST(ProductDataLocation, FailsForAFileThatCannotBeRead) {
  const TemporaryFolder folder;
  EXPECT_EQ(failure(folder, u"/proc/self/mem"),
            "/proc/self/mem: cannot be read: Input/output error");
}

}  // namespace
