// The rights of replaced and of new files.

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <string>

#include <gtest/gtest.h>

#include "support/FileReplacementFixture.h"
#include "support/RunTool.h"

namespace update_metadata_tool::output {
namespace {

using test_support::FileReplacement;
using test_support::readBytes;
using test_support::replaceFile;
using test_support::statusOf;

class Modes : public FileReplacement, public ::testing::WithParamInterface<unsigned> {};

TEST_P(Modes, AreKept) {
  ASSERT_EQ(::chmod(file_.c_str(), GetParam()), 0);
  const mode_t mask = ::umask(077);
  replaceFile(file_, "new");
  ::umask(mask);
  EXPECT_EQ(statusOf(file_).st_mode & 07777U, GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, Modes, ::testing::Values(0600U, 0644U, 0664U, 0777U, 0640U, 04711U));

using FileRights = FileReplacement;

TEST_F(FileRights, KeepOwnerAndGroupForAnAdministrator) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "needs the rights of an administrator";
  }
  ASSERT_EQ(::chown(file_.c_str(), 12, 34), 0);
  ASSERT_EQ(::chmod(file_.c_str(), 02750), 0);
  replaceFile(file_, "new");
  const struct stat status = statusOf(file_);
  EXPECT_EQ(status.st_uid, 12U);
  EXPECT_EQ(status.st_gid, 34U);
  EXPECT_EQ(status.st_mode & 07777U, 02750U);
}

// --- access control lists -------------------------------------------------------------------

constexpr const char* kAccess = "system.posix_acl_access";
constexpr const char* kDefault = "system.posix_acl_default";

// The attribute of a list with the rights of the owner, user 12, the group, the mask and others.
std::string accessList(unsigned char owner, unsigned char user, unsigned char group,
                       unsigned char mask, unsigned char others) {
  std::string list("\2\0\0\0", 4);
  const auto add = [&list](char tag, unsigned char rights, const char* id) {
    list += {tag, '\0', static_cast<char>(rights), '\0'};
    list.append(id, 4);
  };
  constexpr const char* kNobody = "\xFF\xFF\xFF\xFF";
  add(0x01, owner, kNobody);
  add(0x02, user, "\x0C\0\0\0");
  add(0x04, group, kNobody);
  add(0x10, mask, kNobody);
  add(0x20, others, kNobody);
  return list;
}

std::string attributeOf(const std::string& path, const char* name) {
  std::string value(256, '\0');
  const ssize_t size = ::getxattr(path.c_str(), name, value.data(), value.size());
  value.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return value;
}

class AccessLists : public FileReplacement {
 protected:
  // False if the file system has none.
  static bool set(const std::string& path, const char* name, const std::string& list) {
    return ::setxattr(path.c_str(), name, list.data(), list.size(), 0) == 0;
  }
};

TEST_F(AccessLists, AreKept) {
  const std::string list = accessList(6, 4, 0, 4, 0);
  if (!set(file_, kAccess, list)) {
    GTEST_SKIP() << "the file system has no access control lists";
  }
  ASSERT_EQ(statusOf(file_).st_mode & 0777U, 0640U);
  replaceFile(file_, "new");
  EXPECT_EQ(readBytes(file_), "new");
  EXPECT_EQ(attributeOf(file_, kAccess), list);
  EXPECT_EQ(statusOf(file_).st_mode & 0777U, 0640U);
}

TEST_F(AccessLists, OfTheFolderDoNotAffectAReplacedFile) {
  ASSERT_EQ(::chmod(file_.c_str(), 0660), 0);
  if (!set(folder_.nativePath(), kDefault, accessList(7, 6, 7, 7, 4))) {
    GTEST_SKIP() << "the file system has no access control lists";
  }
  replaceFile(file_, "new");
  EXPECT_EQ(attributeOf(file_, kAccess), "");
  EXPECT_EQ(statusOf(file_).st_mode & 0777U, 0660U);
}

TEST_F(AccessLists, OfTheFolderApplyToANewFile) {
  if (!set(folder_.nativePath(), kDefault, accessList(7, 6, 5, 7, 4))) {
    GTEST_SKIP() << "the file system has no access control lists";
  }
  writeFile(folder_.nativePath("new"), "content");
  EXPECT_EQ(attributeOf(folder_.nativePath("new"), kAccess), accessList(6, 6, 5, 6, 4));
}

}  // namespace
}  // namespace update_metadata_tool::output
