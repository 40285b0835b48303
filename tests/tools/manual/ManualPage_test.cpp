#include "manual/ManualPage.h"

#include <gtest/gtest.h>

#include "SampleProgram.h"

namespace {

using update_metadata_tool::manual::ProgramOutline;

class ManualPage : public ::testing::Test {
 protected:
  const test_support::SampleProgram sample;
  const ProgramOutline outline = update_metadata_tool::manual::outlineOf(sample.app());
};

TEST_F(ManualPage, OfTheProgramLinksToThoseOfItsSubcommands) {
  EXPECT_EQ(update_metadata_tool::manual::makeProgramPage(outline, "1.2.3"),
            R"(.TH SAMPLE 1 "" "update\-metadata 1.2.3" "User Commands"
.SH NAME
sample \- shows samples
.SH SYNOPSIS
\fBsample\fR \fISUBCOMMAND\fR [\fIOPTIONS\fR] \fIARGUMENTS\fR
.SH DESCRIPTION
Each subcommand has its own page.
.TP
\fBsample\-show\fR(1)
Show samples.
.TP
\fBsample\-list\fR(1)
List them.
.SH OPTIONS
.TP
\fB\-h\fR, \fB\-\-help\fR
Print this help message and exit.
.TP
\fB\-\-version\fR
Display program version information and exit.
)");
}

TEST_F(ManualPage, OfASubcommandShowsItsOptionsAndRemarks) {
  EXPECT_EQ(update_metadata_tool::manual::makeCommandPage(outline, outline.subcommands[0], "1.2.3"),
            R"(.TH SAMPLE\-SHOW 1 "" "update\-metadata 1.2.3" "User Commands"
.SH NAME
sample\-show \- show samples
.SH SYNOPSIS
\fBsample show\fR [\fIOPTIONS\fR] \fIFILE\fR...
.SH DESCRIPTION
Show samples.
.PP
Samples \e stay.
.PP
.nf
Lines:
  .as they are
.fi
.SH OPTIONS
.TP
\fIFILE\fR
What to show.
.TP
\fB\-h\fR, \fB\-\-help\fR
Print this help message and exit.
.TP
\fB\-d\fR, \fB\-\-data\fR \fIDIR\fR
Folder: [of] 'data'.
.TP
\fB\-\-form\fR \fIFORM\fR
The form.
One of \fBlong\fR, \fBshort\fR.
The default is \fBlong\fR.
.SH EXAMPLES
.nf
  sample show a\-b
.fi
.SH EXIT STATUS
0 shown.
.SH SEE ALSO
\fBsample\fR(1),
\fBsample\-list\fR(1)
)");
}

TEST_F(ManualPage, KeepsALineThatBeginsLikeARequestOfTheFormatter) {
  ProgramOutline dotted = outline;
  dotted.subcommands[0].remarks = {".SH Not a section\n'nor this"};
  EXPECT_NE(update_metadata_tool::manual::makeCommandPage(dotted, dotted.subcommands[0], "1")
                .find("\n\\&.SH Not a section\n\\&'nor this\n"),
            std::string::npos);
}

}  // namespace
