#include "output/Pieces.h"

#include <ios>
#include <sstream>

#include <gtest/gtest.h>

namespace update_metadata_tool::output {
namespace {

TEST(Pieces, AreSeparatedWhereTheyAreNotEmpty) {
  std::ostringstream out;
  Pieces pieces(out, ", ");
  for (const char* piece : {"", "one", "", "", "two", "3", ""}) {
    pieces << piece;
    pieces.endPiece();
  }
  EXPECT_EQ(out.str(), "one, two, 3");
}

TEST(Pieces, MayBeWrittenByteByByte) {
  std::ostringstream out;
  Pieces pieces(out, ",");
  pieces << 'a' << 'b';
  pieces.endPiece();
  pieces << 'c' << 1;
  EXPECT_EQ(out.str(), "ab,c1");
}

TEST(Pieces, FailAsTheirReceiverDoes) {
  std::ostringstream out;
  out.exceptions(std::ios_base::badbit);
  Pieces pieces(out, ",");
  EXPECT_EQ(pieces.exceptions(), std::ios_base::badbit);
  std::stringbuf readOnly("", std::ios_base::in);
  std::ostream closed(&readOnly);
  Pieces failing(closed, ",");
  EXPECT_FALSE(failing << "text");
}

}  // namespace
}  // namespace update_metadata_tool::output
