#include "lint/RuleExplanations.h"

namespace update_metadata_tool::lint {

using install::update_metadata_parser::diagnosis::Rule;

const char* explain(Rule rule) {
  switch (rule) {
    // --- what keeps a document from being loaded ----------------------------------------------
    case Rule::kMalformedText:
      return R"(The text breaks the grammar of JSON: a missing or extra comma, a name without
quotation marks, a number that ends with its decimal point, an unclosed bracket,
a comment. The library rejects the document with "Error while parsing PATH";
the finding shows the full message of its text reader.

Trailing commas, commas missing before a string, and comments are reported and
skipped, up to twenty of them. After any other error the rest is not checked. If
a bracket or a quotation mark may be the cause, nothing else is checked.

    {"delete": ["core",], "extract": []}

What to do: correct the text at the caret and run lint again.)";
    case Rule::kTextAroundValue:
      return R"(A document is one JSON object, from the first byte to the last. The library
rejects a byte-order mark or white space before it, and a final line feed or any
other text after it, with "Error while parsing PATH". Many editors add a final
line feed, and some add a byte-order mark.

    {"metadata": ...}<line feed>

What to do: run "update-metadata fmt", which removes a byte-order mark and
surrounding white space. Configure the editor to keep the end of such files
unchanged (in .editorconfig: insert_final_newline = false).)";
    case Rule::kNotAnObject:
      return R"(The text is well-formed JSON, but it is an array, a string, a number, true,
false or null. The library rejects it with "Error while parsing PATH".

What to do: put the sections "metadata", "components", "products" and
"componentsWithFilesDeleted" into one object.)";
    case Rule::kTypeNameNotAString:
      return R"(In every object, at any depth, a member "qztype" names the type of the integers
in the member "qzdata" beside it and must be a string. Otherwise the library
rejects the whole document with "Error while parsing PATH", even if it would
ignore the object.

    {"qztype": 64, "qzdata": [1, 2]}

What to do: write one of "int8", "int16", "int32", "int64", "uint8", "uint16",
"uint32" and "uint64", or rename the member.)";
    case Rule::kTypedPayload:
      return R"(In an object whose "qztype" names an integer type, the member "qzdata" must be
an array of integers without fraction, exponent or leading zeros, whichever of
the two comes first. Otherwise the library rejects the whole document with
"Error while parsing PATH".

    {"qztype": "int64", "qzdata": [1, 2.5]}

What to do: write only integers, or remove "qztype", which makes "qzdata" an
ordinary value.)";
    case Rule::kMissingSection:
      return R"(The sections "metadata", "components", "products" and
"componentsWithFilesDeleted" are all required. The library reads them in this
order; at the first one that is missing it fails with std::out_of_range and the
text "map::at".

    {"metadata": ..., "components": {}, "products": {}}

What to do: add the section, which may be empty, or correct its name (case
matters).)";
    case Rule::kMissingMember:
      return R"(Required members are "arch" of "metadata", all eight members of a release that
is not null, "delete" and "extract" of every component and product, "size" of
every package, "uncompressedBytes" of a package to extract, and "files" of a
package with files to delete. For a missing member, and for one of the wrong
kind, the library fails with "Invalid data provided for 'NAME'".

    "components": {"core": {"extract": {}}}

What to do: add the member, which may be empty, or correct its name (case
matters).)";
    case Rule::kWrongKind:
      return R"(For example, a value is a string instead of a number. The library fails with
"Invalid data provided for 'NAME'" for a member that it looks up by name, and
with "invalid conversion: KIND to KIND" for a section, release, component,
product or package that is not an object. A size must be a plain number, not a
string of digits or a typed integer.

    {"size": "4096"}

What to do: write a value of the kind that the message names.)";
    case Rule::kNullValue:
      return R"(Only the releases "base" and "target" and the sections "components", "products"
and "componentsWithFilesDeleted" may be null. For any other null the library
fails with "invalid conversion: null to KIND".

    "products": {"Editor": {"delete": null, "extract": ["core"]}}

What to do: write a value; a string, array or object may be empty.)";
    case Rule::kAbsentRelease:
      return R"(Both releases are required, but may be null. If one is missing, the library
fails with "invalid conversion: undefined to object".

    "metadata": {"arch": "x86_64", "target": {...}}

What to do: add the release, or write null if it is not known.)";
    case Rule::kNonStringElement:
      return R"(The lists "delete" and "extract" of a product contain names of components, and
the list "files" contains paths. For any element that is not a string the
library fails with "invalid conversion: KIND to string".

What to do: put the element in quotation marks, or remove it.)";
    case Rule::kRefused:
      return R"(The library did not load the document, but no other rule found an error in it.
The finding shows the library's own text. This is a gap in the linter.

What to do: follow the library's text, and report the document to the
maintainers of this program.)";

    // --- members and sections that are not read as they are written ---------------------------
    case Rule::kRepeatedKey:
      return R"(If a key occurs more than once in an object, the library uses the first value
and ignores the later ones without any message. Keys are compared after their
escapes are resolved: "a" and "\u0061" are equal. An ignored value must still be
well-formed. The finding shows both places.

    "extract": {"engine": {"size": 1, ...}, "engine": {"size": 2, ...}}

What to do: remove the wrong value, or rename its key.)";
    case Rule::kUnlistedMember:
      return R"(The library ignores members that it does not know. So it does not reject a
misspelled optional name, but the value has no effect. If the name resembles a
known one, the finding suggests it. A member "$schema" at the top of the
document is for editors and is not reported.

    {"size": 1, "uncompressedBytes": 2, "Size": 3}

What to do: correct the name, or remove the member.)";
    case Rule::kReservedName:
      return R"(In every object the members "qztype" and "qzdata" together represent an array of
exact integers. A component, product or package cannot be named "qztype",
because that member must be a string. One named "qzdata" is rejected if a
"qztype" is beside it.

    "components": {"qzdata": {"delete": {}, "extract": {}}}

What to do: choose another name.)";
    case Rule::kNullRelease:
      return R"(The library skips a release that is null: its family and version are empty, and
the update level of the target is 0. A program that asks for them gets no error.

What to do: write the release, unless it is intentionally unknown.)";
    case Rule::kNullSection:
      return R"(The sections "components", "products" and "componentsWithFilesDeleted" may be
null; the library reads null as an empty section.

What to do: nothing if the section is meant to be empty; {} is clearer.)";

    // --- how components, packages and products fit together -----------------------------------
    case Rule::kUnknownComponent:
      return R"(A product lists a component that is not in the section "components". The library
treats it as a component without packages: it deletes and extracts nothing, and
reports no error.

    "components": {"core": ...},
    "products": {"Editor": {"delete": [], "extract": ["Core"]}}

What to do: correct the name (case matters), or describe the component.)";
    case Rule::kUnusedComponent:
      return R"(No product deletes or extracts the component, so its packages are in no answer.
An error in them still prevents loading.

    "components": {"core": ...}, "products": {}

What to do: list the component under a product, or remove it.)";
    case Rule::kUnreachablePackages:
      return R"(The packages of a component under "delete" apply to products that delete the
component, and those under "extract" to products that extract it. This component
has packages for one of the two, but no product lists it there, so these
packages are in no answer. An error in them still prevents loading.

    "components": {"core": {"delete": {"old": {"size": 1}}, "extract": {...}}},
    "products": {"Editor": {"delete": [], "extract": ["core"]}}

What to do: add the component to that list of a product, or remove the packages.)";
    case Rule::kNothingToDelete:
      return R"(A product lists a component under "delete", but the component has no packages
under "delete", so nothing is deleted. A component without any packages is a
placeholder and is not reported.

    "components": {"core": {"delete": {}, "extract": {"engine": ...}}},
    "products": {"Editor": {"delete": ["core"], "extract": ["core"]}}

What to do: nothing if that is intended. Otherwise remove the component from the
list, or describe its packages to delete.)";
    case Rule::kComponentNamedTwice:
      return R"(The same name is in the list "delete" or "extract" of a product more than once.
The library keeps all of them, but the answers are the same as with one.

What to do: remove the duplicate, or correct the name.)";
    case Rule::kProductWithoutWork:
      return R"(Both lists of the product are empty. The library leaves it out of every answer.

What to do: list the product's components, or remove the product.)";
    case Rule::kPackageKeyCollision:
      return R"(Answers identify a package by a key: the name of its component, an underscore
and its own name. So package "c" of component "a_b" and package "b_c" of
component "a" both have the key a_b_c. The answers contain the sizes or the
files of the package that the library reads first; nothing is added up. Packages
to delete share one key.

    "a_b": {"extract": {"c": ...}, ...}, "a": {"extract": {"b_c": ...}, ...}

What to do: rename a component or a package, preferably without underscores.)";
    case Rule::kFileOfChangedPackage:
      return R"(The section "componentsWithFilesDeleted" is for packages that stay installed but
lose some files. Here it names a package that a component deletes or extracts.
The library answers both; the installer decides on the order.

    "components": {"core": {"delete": {"docs": ...}, ...}},
    "componentsWithFilesDeleted": {"core": {"docs": {"files": ["a.txt"], ...}}}

What to do: remove the files if the whole package is meant.)";
    case Rule::kSimilarComponent:
      return R"(The section "componentsWithFilesDeleted" names a component that the section
"components" does not describe. That is allowed, because files can be deleted
from a component that is otherwise unchanged. But the name is nearly that of a
described component and may be misspelled.

    "components": {"core": ...},
    "componentsWithFilesDeleted": {"Core": {...}}

What to do: nothing if both components exist. Otherwise correct the name.)";

    // --- numbers ------------------------------------------------------------------------------
    case Rule::kUpdateLevel:
      return R"(The library truncates the member "update" of the target toward zero and keeps
its low eight bits as a signed byte: only integers from -128 to 127 are kept.

    "update": 200     is read back as -56
    "update": 3.7     is read back as 3

What to do: write an integer from -128 to 127.)";
    case Rule::kFractionalSize:
      return R"(Sizes are bytes. The library truncates them toward zero: 12.9 is read as 12, and
-3.5 as -3.

What to do: write an integer. A fraction often means kilobytes.)";
    case Rule::kNegativeSize:
      return R"(The library accepts a negative size and returns it in its answers, where it can
distort sums and progress bars.

What to do: write the size of the package in bytes, or 0 if it is not known.)";
    case Rule::kImpreciseSize:
      return R"(The library reads numbers as doubles. Beyond 2^53, 9007199254740992, a double
cannot represent every integer; the finding shows the one that is read.

    {"size": 9007199254740993}     is read as 9007199254740992

What to do: check the number: it is more than eight million gigabytes.)";
    case Rule::kSizeOutOfRange:
      return R"(Sizes are signed 64-bit integers. A number outside that range, too large or too
small, is read as the smallest one, -9223372036854775808.

What to do: correct the number.)";
    case Rule::kUnpackedSmaller:
      return R"(The member "uncompressedBytes" of a package to extract is less than its "size".
The library returns both unchanged. Usually they were swapped or come from
different builds.

    {"size": 4096, "uncompressedBytes": 1024}

What to do: check both numbers.)";
    case Rule::kKilobyteSize:
      return R"(The unpacked size of the package is more than 1,000 times its packed size. Few
packages compress that well; often "size" was written in kilobytes. Packages of
64 GiB and more are not reported.

    {"size": 1536, "uncompressedBytes": 4194304}

What to do: write both sizes in bytes.)";

    // --- names and other text -----------------------------------------------------------------
    case Rule::kSameName:
      return R"(Bytes that are not UTF-8 are decoded to U+FFFD, so names that differ in the file
can become equal. Where only one can be kept, the library keeps the first in
byte order and ignores the other.

    "p<FE>" and "p<FF>" are both read as "p<U+FFFD>"

What to do: save the document as UTF-8, and make the names different.)";
    case Rule::kIllFormedUtf8:
      return R"(A string contains bytes that are not well-formed UTF-8. The library decodes each
ill-formed part to U+FFFD, so the answers contain a different text, and a file
with that path is not found.

    "M<FC>nchen" (written in Latin-1) is read as "M<U+FFFD>nchen"

What to do: save the document as UTF-8.)";
    case Rule::kUnpairedSurrogate:
      return R"(A character beyond U+FFFF is written as two escapes, a high and a low surrogate:
"\ud83d\uddfa". One without the other is not a character and is decoded to
U+FFFD. A high one without any escape after it is reported as malformed-text.

What to do: write both escapes, or the character itself.)";
    case Rule::kControlCharacter:
      return R"(A name, a path, the architecture, or the family or version of a release contains
a character below U+0020 or from U+007F to U+009F, written directly or as an
escape. The library accepts it, even where JSON does not. Names that differ only
in such characters look the same but are different.

What to do: remove the character.)";
    case Rule::kUnseenCharacter:
      return R"(A name, a path, the architecture, or the family or version of a release contains
an invisible character: a zero-width space or joiner, a byte-order mark, a soft
hyphen, a filler, a tag, a variation selector, or one that changes the direction
of text. The library accepts it. Names that differ only in such characters look
the same but are different. The command shows these characters by their codes.

What to do: remove the character.)";
    case Rule::kEmptyName:
      return R"(A component, package, product or file to delete, the architecture, or the family
or version of a release has an empty name. The library accepts it. The key of a
package without a name ends with the underscore; an empty path may mean the
whole folder.

What to do: write the name.)";

    // --- paths of files to delete -------------------------------------------------------------
    case Rule::kFilePathAbsolute:
      return R"(The path starts with a slash or a backslash. Paths are relative to the folder
where the package is installed. The library returns the path unchanged; an
installer that appends it to a folder may delete a system file.

What to do: write the path relative to the package.)";
    case Rule::kFilePathClimbs:
      return R"(A part of the path is "..". The library returns the path unchanged; an installer
that appends it to a folder may delete a file outside that folder.

What to do: list the file under the package that it belongs to.)";
    case Rule::kFilePathDrive:
      return R"(The path starts with a letter and a colon. On some systems that is a drive
outside the package's folder; on others no file has such a name. The library
returns the path unchanged.

What to do: write the path relative to the package.)";
    case Rule::kFilePathNul:
      return R"(The path contains U+0000, which a file name cannot contain. A system call reads
the path only up to there and may delete another file or a folder.

    "files": ["manual\u0000.html"]

What to do: remove the character.)";
    case Rule::kFilePathTrailingSeparator:
      return R"(The path ends with a slash or a backslash, so it names a folder. The library
returns it unchanged; what an installer does with it is not known.

What to do: list the files of the folder, or remove the separator.)";
    case Rule::kFilePathMixedSeparators:
      return R"(On some systems both characters separate folders; on others a backslash is part
of a name. The library changes neither and treats two spellings of one path as
two files.

What to do: use slashes throughout.)";
    case Rule::kFilePathCase:
      return R"(On a case-sensitive file system usually only one of the two files exists; on
others both paths name the same file. The library treats them as two files.

    "files": ["Manual/index.html", "manual/index.html"]

What to do: keep the spelling that the package has.)";

    // --- against the product data -------------------------------------------------------------
    case Rule::kUnknownProduct:
      return R"(Answers identify products by the base codes in the product data. A product that
is not there has an empty base code. If several are not there, only the first of
them is in the answers for all products. This rule needs --product-data.

What to do: correct the name (case matters), or add the product to the product
data. If no product is found, check that the folder contains products.tsv.)";
    case Rule::kSharedBaseCode:
      return R"(Answers for all products have one entry per base code. The entry belongs to the
first product with that code, in order of names; the others are left out, not
merged. A query for the base code uses the product that comes first in the
product data. This rule needs --product-data.

What to do: give each product its own base code in the product data, or remove
one of the products.)";
    case Rule::kProductData:
      return R"(The table products.tsv exists but cannot be opened, or one of its lines is not a
base code, a name, a number and a controlling product, separated by tabs. Every
answer that needs a base code then fails with the text in the finding, which
names the first error. If there is no table, this rule reports nothing and no
product is found. This rule needs --product-data.

What to do: correct the line of the table that the message names.)";
  }
  return "";  // no other value is ever made
}

}  // namespace update_metadata_tool::lint
