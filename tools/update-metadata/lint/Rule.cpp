#include "lint/Rule.h"

namespace update_metadata_tool::lint {
namespace {

constexpr std::array<RuleDescription, kRuleCount> kRules = {{
    // --- what keeps a document from being loaded ----------------------------------------------
    {Rule::kMalformedText, "malformed-text", Severity::kError, "The text is not well-formed JSON",
     R"(The text breaks the grammar of JSON: a comma too many or too few, a name without
quotation marks, a number that ends in its decimal point, a bracket that is
never closed, a comment.

The library reads nothing of such a document and fails with
"Error while parsing PATH". Its text reader knows more; the linter shows that
message in full. A comma before a closing bracket, a missing one before a
string, and comments are reported and passed over, up to twenty of them. Behind
any other fault nothing is judged, because nobody knows what was meant; and
where a bracket or a quotation mark may be the fault, nothing before it either.

    {"delete": ["core",], "extract": []}

What to do: correct the text at the caret and lint again. An editor that knows
JSON marks the same place.)"},
    {Rule::kTextAroundValue, "text-around-value", Severity::kError,
     "Something stands before or after the document's object",
     R"(A document is one JSON object, from the first byte to the last. A byte-order
mark or white space before it, a final line feed or any other text after it
makes the library refuse it with "Error while parsing PATH".

Most editors add a final line feed, some a byte-order mark, without being asked.

    {"metadata": ...}<line feed>

What to do: "update-metadata fmt" removes a byte-order mark and white space
around the object. Tell the editor to keep the end of such files as it is (in
.editorconfig: insert_final_newline = false).)"},
    {Rule::kNotAnObject, "not-an-object", Severity::kError, "The document is not a JSON object",
     R"(The text is well-formed, but its value is an array, a string, a number, true,
false or null. The library refuses it with "Error while parsing PATH", as if it
were malformed.

    [{"metadata": ...}]

What to do: put the sections "metadata", "components", "products" and
"componentsWithFilesDeleted" into one object.)"},
    {Rule::kTypeNameNotAString, "type-name-not-a-string", Severity::kError,
     "A member \"qztype\" is not a string",
     R"(In every object, at whatever depth, a member "qztype" names the type of the
integers in the member "qzdata" beside it. Its value must be a string. Anything
else makes the library refuse the whole document with
"Error while parsing PATH", even where the object itself would be ignored.

    {"qztype": 64, "qzdata": [1, 2]}

What to do: write one of "int8", "int16", "int32", "int64", "uint8", "uint16",
"uint32" and "uint64", or choose another name for the member.)"},
    {Rule::kTypedPayload, "typed-payload", Severity::kError,
     "A member \"qzdata\" is not an array of integers",
     R"(In an object whose "qztype" names an integer type, the member "qzdata" must be
an array of integers without fraction, exponent or leading zeros. It does not
matter which of the two comes first. Anything else makes the library refuse the
whole document with "Error while parsing PATH".

    {"qztype": "int64", "qzdata": [1, 2.5]}

What to do: write integers only, or leave "qztype" out, which makes the payload
an ordinary value.)"},
    {Rule::kMissingSection, "missing-section", Severity::kError,
     "One of the four sections is missing at the top of the document",
     R"(The sections "metadata", "components", "products" and
"componentsWithFilesDeleted" must all be there. The library takes them in this
order and fails at the first one that is missing with std::out_of_range and the
text "map::at".

    {"metadata": ..., "components": {}, "products": {}}

What to do: add the section. One that has nothing to say is an empty object; any
but "metadata" may also be null. Check the spelling, which counts to the letter.)"},
    {Rule::kMissingMember, "missing-member", Severity::kError,
     "An object lacks a member that it must have",
     R"(Members that must be there are: "arch" of "metadata"; all eight of a release
that is not null; "delete" and "extract" of every component and of every
product; "size" of every package, "uncompressedBytes" of a package to extract,
"files" of a package with files to delete.

The library fails with "Invalid data provided for 'NAME'" and does not say of
which object. A member of the wrong kind gives the same text.

    "components": {"core": {"extract": {}}}

What to do: add the member. An empty object or array is allowed wherever one is
asked for. Check the spelling, which counts to the letter.)"},
    {Rule::kWrongKind, "wrong-kind", Severity::kError,
     "A value is of another kind than the document needs there",
     R"(A string stands where a number has to be, an array where an object has to be,
and so on. The library fails with "Invalid data provided for 'NAME'" for a
member that it looks for by its name, and with
"invalid conversion: KIND to KIND" for a section, a release, a component, a
product or a package that is not an object.

Sizes are plain numbers. Neither a string of digits nor a typed integer is one.

    {"size": "4096"}

What to do: write a value of the kind that the message names.)"},
    {Rule::kNullValue, "null-value", Severity::kError, "A value is null where none may be null",
     R"(Only the releases "base" and "target" and the sections "components", "products"
and "componentsWithFilesDeleted" may be null. Anywhere else null makes the
library fail with "invalid conversion: null to KIND": other than a missing
member, which gives "Invalid data provided for 'NAME'".

    "products": {"Editor": {"delete": null, "extract": ["core"]}}

What to do: write a value, be it an empty string, array or object.)"},
    {Rule::kAbsentRelease, "absent-release", Severity::kError,
     "The release \"base\" or \"target\" is missing in \"metadata\"",
     R"(Both releases must be there, though either may be null. For one that is missing
the library fails with "invalid conversion: undefined to object".

    "metadata": {"arch": "x86_64", "target": {...}}

What to do: add the release, or write null for one that is not known: its family
and its version are then empty.)"},
    {Rule::kNonStringElement, "non-string-element", Severity::kError,
     "A list of names or files holds something that is not a string",
     R"(The lists "delete" and "extract" of a product hold names of components, the list
"files" paths. For any other element the library fails with
"invalid conversion: KIND to string".

    {"delete": [], "extract": ["core", 7]}

What to do: put the element into quotation marks or remove it.)"},
    {Rule::kRefused, "refused", Severity::kError,
     "The library refuses the document for a reason that no other rule names",
     R"(The library was asked and did not load the document, although no other rule
found an error in it. The finding shows the library's own text. This is a gap in
the linter.

What to do: follow the library's text, and report the document to those who
maintain this program.)"},

    // --- members and sections that are not taken as they stand --------------------------------
    {Rule::kRepeatedKey, "repeated-key", Severity::kWarning,
     "A name stands twice in one object; the later value is lost",
     R"(Of equal names in one object the library takes the first value and drops the
later ones without a word. Names are equal if they are equal once their escapes
are resolved: "a" and "\u0061" are. What is dropped must be well-formed all the
same.

    "extract": {"engine": {"size": 1, ...}, "engine": {"size": 2, ...}}

What to do: remove the value that is not meant, or give it a name of its own.
The finding shows both places.)"},
    {Rule::kUnlistedMember, "unlisted-member", Severity::kWarning,
     "An object has a member that the library does not read",
     R"(The library reads the members that it knows and ignores all others. A misspelt
name is therefore not refused where a member of that name is not needed, and
what it says is lost. If the name resembles a known one, the finding says so.

A member "$schema" at the top of the document is known to editors and is not
reported.

    {"size": 1, "uncompressedBytes": 2, "Size": 3}

What to do: correct the name or remove the member.)"},
    {Rule::kReservedName, "reserved-name", Severity::kWarning,
     "\"qztype\" or \"qzdata\" is used as a name",
     R"(In every object the members "qztype" and "qzdata" have a meaning of their own:
together they are an array of exact integers. A component, product or package of
the name "qztype" cannot be written, because that member must be a string; one
of the name "qzdata" can, but is no longer accepted as soon as a "qztype" stands
beside it.

    "components": {"qzdata": {"delete": {}, "extract": {}}}

What to do: choose another name.)"},
    {Rule::kNullRelease, "null-release", Severity::kWarning, "A release is null",
     R"(A release that is null is skipped: its family and version are empty, the update
level of the target is 0. Whoever asks from which release to which the update
leads gets no answer and no error.

    "metadata": {"arch": "x86_64", "base": null, "target": {...}}

What to do: write the release, unless it is meant to be unknown.)"},
    {Rule::kNullSection, "null-section", Severity::kInfo, "A section is null",
     R"(The sections "components", "products" and "componentsWithFilesDeleted" may be
null, which the library takes as empty.

    "componentsWithFilesDeleted": null

What to do: nothing if the section is meant to be empty. An empty object says
the same to every reader.)"},

    // --- how components, packages and products fit together -----------------------------------
    {Rule::kUnknownComponent, "unknown-component", Severity::kWarning,
     "A product names a component that is not described",
     R"(A product lists a component that the section "components" does not have. The
library takes it as a component without packages: nothing of it is deleted or
extracted, and nothing says so.

    "components": {"core": ...},
    "products": {"Editor": {"delete": [], "extract": ["Core"]}}

What to do: correct the name, which counts to the letter, or describe the
component.)"},
    {Rule::kUnusedComponent, "unused-component", Severity::kWarning,
     "No product names the component",
     R"(The section "components" describes a component that no product deletes or
extracts. Its packages appear in no answer. They are checked all the same: a
fault in them keeps the document from being loaded.

    "components": {"core": ...}, "products": {}

What to do: name the component in a product or remove it.)"},
    {Rule::kUnreachablePackages, "unreachable-packages", Severity::kWarning,
     "A component has packages for a list in which no product names it",
     R"(The packages of a component under "delete" count for products that delete the
component, those under "extract" for products that extract it. Here the
component has packages on one side, but products name it on the other side only.
These packages appear in no answer. They are still checked: a fault in them
keeps the document from being loaded.

    "components": {"core": {"delete": {"old": {"size": 1}}, "extract": {...}}},
    "products": {"Editor": {"delete": [], "extract": ["core"]}}

What to do: add the component to that list of a product, or remove the packages.)"},
    {Rule::kNothingToDelete, "nothing-to-delete", Severity::kInfo,
     "A product deletes a component that has packages to extract only",
     R"(A product lists a component under "delete", but the component's own "delete" is
empty: nothing of it is deleted. A component without any package is a
placeholder and is not reported.

    "components": {"core": {"delete": {}, "extract": {"engine": ...}}},
    "products": {"Editor": {"delete": ["core"], "extract": ["core"]}}

What to do: nothing if that is meant. Otherwise remove the component from the
list, or describe its packages to delete.)"},
    {Rule::kComponentNamedTwice, "component-named-twice", Severity::kWarning,
     "A product names a component twice in one list",
     R"(The same name stands twice in the list "delete" or in the list "extract" of one
product. The library keeps both, but the answers are the same as with one.

    {"delete": [], "extract": ["core", "core"]}

What to do: remove one of the two, or write the name that was meant.)"},
    {Rule::kProductWithoutWork, "product-without-work", Severity::kWarning,
     "A product names no component",
     R"(Both lists of the product are empty. The library skips such a product: it
appears in no answer.

    "products": {"Editor": {"delete": [], "extract": []}}

What to do: name the components of the product or remove it.)"},
    {Rule::kPackageKeyCollision, "package-key-collision", Severity::kWarning,
     "Two packages have the same key in the answers",
     R"(In the answers a package is known by one key: its component's name, an
underscore and its own name. So the package "c" of the component "a_b" and the
package "b_c" of the component "a" are both a_b_c. The answers keep the sizes or
the files of the one that the library meets first and lose those of the other;
nothing is added up. Of packages to delete, one key stands for both.

    "a_b": {"extract": {"c": ...}, ...}, "a": {"extract": {"b_c": ...}, ...}

What to do: rename a component or a package, best without underscores.)"},
    {Rule::kFileOfChangedPackage, "file-of-changed-package", Severity::kInfo,
     "Single files are deleted of a package that is deleted or extracted, too",
     R"(The section "componentsWithFilesDeleted" is for packages that stay but lose
single files. Here it names a package that a component deletes or extracts as a
whole. The library gives both answers; in which order they are carried out is up
to the installer.

    "components": {"core": {"delete": {"docs": ...}, ...}},
    "componentsWithFilesDeleted": {"core": {"docs": {"files": ["a.txt"], ...}}}

What to do: remove the files if the package as a whole is meant.)"},

    {Rule::kSimilarComponent, "similar-component", Severity::kInfo,
     "A component with files to delete has nearly the name of a described one",
     R"(The section "componentsWithFilesDeleted" names a component that the section
"components" does not describe. That is allowed: files can be deleted of a
component that is otherwise unchanged. But here the name differs from that of a
described one in few characters only, so it may be misspelled. The keys of the
answers begin with that name.

    "components": {"core": ...},
    "componentsWithFilesDeleted": {"Core": {...}}

What to do: nothing if both components exist. Otherwise correct the name.)"},

    // --- numbers ------------------------------------------------------------------------------
    {Rule::kUpdateLevel, "update-level", Severity::kWarning,
     "The update level of the target does not come back as it is written",
     R"(The member "update" of the target is cut toward zero, and its low eight bits are
kept as a signed byte. Numbers from -128 to 127 without a fraction survive; the
finding shows what comes back of others.

    "update": 200     comes back as -56
    "update": 3.7     comes back as 3

What to do: write an integer from -128 to 127.)"},
    {Rule::kFractionalSize, "fractional-size", Severity::kWarning, "A size has a fraction",
     R"(Sizes are bytes. The library cuts them toward zero: 12.9 is read as 12, -3.5 as
-3.

    {"size": 12.9}

What to do: write an integer. A fraction often means that kilobytes were meant.)"},
    {Rule::kNegativeSize, "negative-size", Severity::kWarning, "A size is negative",
     R"(Sizes are bytes. The library takes a negative one as it stands and hands it on
in its answers, where it may spoil sums and progress bars.

    {"size": -1}

What to do: write the size of the package, or 0 if it is not known.)"},
    {Rule::kImpreciseSize, "imprecise-size", Severity::kWarning,
     "A size is beyond 2^53 and may be read as another number",
     R"(Numbers are read with 53 bits. Beyond 9007199254740992 not every integer can be
told from its neighbours; the finding shows which one the library reads.

    {"size": 9007199254740993}     is read as 9007199254740992

What to do: check the number: it is more than eight million gigabytes.)"},
    {Rule::kSizeOutOfRange, "size-out-of-range", Severity::kWarning,
     "A size is beyond 64 bits and becomes the smallest number",
     R"(Sizes are signed 64-bit integers. A number that does not fit, on either side, is
read as the smallest one, -9223372036854775808, not as the nearest.

    {"size": 1e19}

What to do: correct the number.)"},
    {Rule::kUnpackedSmaller, "unpacked-smaller", Severity::kWarning,
     "A package is smaller unpacked than packed",
     R"(The member "uncompressedBytes" of a package to extract is less than its "size".
The library hands both on as they stand. Mostly the two were mixed up or belong
to different builds.

    {"size": 4096, "uncompressedBytes": 1024}

What to do: check both numbers.)"},

    {Rule::kKilobyteSize, "kilobyte-size", Severity::kInfo,
     "The packed size of a package may be in kilobytes",
     R"(Unpacked, the package is more than 1,000 times as large as packed. Hardly any
package can be packed that well. Both sizes are in bytes; often "size" was
written in kilobytes. Packages of 64 GiB and more are not reported.

    {"size": 1536, "uncompressedBytes": 4194304}

What to do: write both sizes in bytes. Nothing if the package is that
repetitive.)"},

    // --- names and other text -----------------------------------------------------------------
    {Rule::kSameName, "same-name", Severity::kWarning,
     "Two different names are the same name once they are decoded",
     R"(Bytes that are not UTF-8 are decoded to U+FFFD, whatever they were. So two names
that differ in the file can be one name in the library. The first in the order
of their bytes counts where only one can be kept; the other is lost or hidden.

    "p<FE>" and "p<FF>" are both read as "p<U+FFFD>"

What to do: save the document as UTF-8 and give each a name of its own.)"},
    {Rule::kIllFormedUtf8, "ill-formed-utf8", Severity::kWarning, "A string is not UTF-8",
     R"(A string of the document holds bytes that are not well-formed UTF-8. The library
does not refuse them: each ill-formed part is decoded to one U+FFFD, and the
text in the answers is not the one that was meant. A file of that path will not
be found.

    "M<FC>nchen" (written in Latin-1) is read as "M<U+FFFD>nchen"

What to do: save the document as UTF-8.)"},
    {Rule::kUnpairedSurrogate, "unpaired-surrogate", Severity::kWarning,
     "An escape is half of a character",
     R"(Characters beyond U+FFFF are written as two escapes, a high and a low surrogate:
"\ud83d\uddfa". One without the other is no character; the library decodes it to
U+FFFD. A high one that no second escape follows is not even well-formed and is
reported by the rule malformed-text.

    "\uddfa"

What to do: write both escapes or the character itself.)"},
    {Rule::kControlCharacter, "control-character", Severity::kWarning,
     "A name or a path holds a control character",
     R"(A name, a path, the architecture, or the family or version of a release holds a
character below U+0020, U+007F or one from U+0080 to U+009F, written as an
escape or as it is. The library accepts it, even where JSON does not. A name
like that cannot be told from others by looking at it.

    "core\t"

What to do: remove the character.)"},
    {Rule::kUnseenCharacter, "unseen-character", Severity::kWarning,
     "A name or a path holds a character that cannot be seen",
     R"(A name, a path, the architecture, or the family or version of a release holds a
character that is not drawn: a zero-width space or joiner, a byte-order mark, a
soft hyphen, a filler, a tag, a variation selector, or one that changes the
direction of the text around it. The library accepts it. Two names that differ
only in such characters look the same and are different names, and a path can
look like another one. The command shows these characters by their codes.

    "core\u200b"

What to do: remove the character.)"},
    {Rule::kEmptyName, "empty-name", Severity::kWarning, "A name or a path is empty",
     R"(A component, a package, a product, a file to delete, the architecture, or the
family or version of a release has the empty string for a name. The library
accepts it. A package without a name has a key that ends in the underscore; an
empty path may stand for the whole folder.

    "extract": {"": {"size": 1, "uncompressedBytes": 1}}

What to do: write the name.)"},

    // --- paths of files to delete -------------------------------------------------------------
    {Rule::kFilePathAbsolute, "file-path-absolute", Severity::kWarning,
     "The path of a file to delete is absolute",
     R"(The path begins with a slash or a backslash. Files to delete are named relative
to where their package is installed. The library hands the path on as it stands;
an installer that joins it to a folder may delete a file of the system.

    "files": ["/etc/passwd"]

What to do: write the path relative to the package.)"},
    {Rule::kFilePathClimbs, "file-path-climbs", Severity::kWarning,
     "The path of a file to delete leads upwards with \"..\"",
     R"(A part of the path is "..". The library hands the path on as it stands; an
installer that joins it to a folder may delete a file outside of that folder.

    "files": ["../../shared/settings.ini"]

What to do: name the file in the package that it belongs to.)"},
    {Rule::kFilePathDrive, "file-path-drive", Severity::kWarning,
     "The path of a file to delete begins with a drive letter",
     R"(The path begins with a letter and a colon. On some systems that is a drive, and
the path leads out of the folder of the package; on others no file has such a
name. The library hands the path on as it stands.

    "files": ["C:/Program Files/editor/old.dll"]

What to do: write the path relative to the package.)"},
    {Rule::kFilePathNul, "file-path-nul", Severity::kWarning,
     "The path of a file to delete holds a NUL character",
     R"(The path holds U+0000. No file can have such a name. A system call takes the
path up to there and may delete another file, or a folder, in place of the one
that is meant.

    "files": ["manual\u0000.html"]

What to do: remove the character.)"},
    {Rule::kFilePathTrailingSeparator, "file-path-trailing-separator", Severity::kWarning,
     "The path of a file to delete ends in a separator",
     R"(The path ends in a slash or a backslash and so names a folder. The library hands
it on as it stands; what the installer does with a folder in a list of files is
not known.

    "files": ["manual/"]

What to do: name the files one by one, or leave the separator out if a file is
meant.)"},
    {Rule::kFilePathMixedSeparators, "file-path-mixed-separators", Severity::kWarning,
     "The path of a file to delete has both slashes and backslashes",
     R"(On some systems both separate folders, on others a backslash is part of a name.
The library changes neither, and it takes two spellings of one path as two
files.

    "files": ["manual\\images/tour.png"]

What to do: write slashes throughout.)"},
    {Rule::kFilePathCase, "file-path-case", Severity::kWarning,
     "Two paths of one package differ in upper and lower case only",
     R"(Two paths of one package differ in upper and lower case only. On a file system
that tells the two cases apart one of the files mostly does not exist; on one
that does not, both are the same file. The library takes them as two.

    "files": ["Manual/index.html", "manual/index.html"]

What to do: keep the spelling that the package has.)"},

    // --- against the product data -------------------------------------------------------------
    {Rule::kUnknownProduct, "unknown-product", Severity::kWarning,
     "The product data do not know a product of the document",
     R"(The answers name products by their base codes, which the product data tell. A
product that they do not know has the empty base code. If several are unknown,
only the first of them appears in the answers for all products.

This rule needs --product-data.

What to do: correct the product's name, which counts to the letter, or add the
product to the product data. If all products are unknown, check that the folder
is the one that holds products.tsv.)"},
    {Rule::kSharedBaseCode, "shared-base-code", Severity::kWarning,
     "Two products of the document have one base code",
     R"(The answers for all products have one entry for a base code. Of two products
with the same one, the first in the order of their names has the entry; the
other is left out, nothing is merged. Asked for the base code alone, the library
answers for the product that comes first in the product data.

This rule needs --product-data.

What to do: give each product a base code of its own in the product data, or
keep one of the two products.)"},
    {Rule::kProductData, "product-data", Severity::kError, "The product data cannot be read",
     R"(The table products.tsv exists but cannot be opened, or one of its lines is not a
base code, a name, a number and a controlling product, separated by tabs. Every
answer that needs a base code then fails with the text that the finding shows.
It names the first fault only.

This rule needs --product-data. Product data that do not exist are no fault:
then no product is known.

What to do: correct the line of the table that the message names.)"},
}};

constexpr bool isInOrderOfRules() {
  for (std::size_t index = 0; index != kRuleCount; ++index) {
    if (kRules[index].rule != static_cast<Rule>(index)) {
      return false;
    }
  }
  return true;
}
static_assert(isInOrderOfRules(), "a rule's number is the place of its description");

}  // namespace

const std::array<RuleDescription, kRuleCount>& allRules() {
  return kRules;
}

const RuleDescription& describe(Rule rule) {
  return kRules[static_cast<std::size_t>(rule)];
}

std::optional<Rule> findRule(std::string_view id) {
  for (const RuleDescription& description : kRules) {
    if (id == description.id) {
      return description.rule;
    }
  }
  return std::nullopt;
}

}  // namespace update_metadata_tool::lint
