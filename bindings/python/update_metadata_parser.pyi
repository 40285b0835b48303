"""Reads update metadata documents and answers what an update does.

A package is named by its key: the component's name, an underscore and the package's name. Sizes are
bytes. Every answer is a new object. Product data are a folder with products.tsv, or such a file; the first
query that looks something up opens them, and later ones are ignored.
"""

import os
from typing import Optional, Union

__version__: str

_Path = Union[str, os.PathLike[str]]

class UpdateMetaDataError(RuntimeError):
    """A document cannot be loaded or a query cannot be answered.

    The text is the library's. If memory runs out, a MemoryError is raised instead.
    """

class UpdateMetaData:
    """A loaded document: its releases and its answers. Made by load() and load_bytes()."""

    @property
    def base_release_family(self) -> str: ...
    @property
    def base_release_version(self) -> str: ...
    @property
    def target_release_family(self) -> str: ...
    @property
    def target_release_version(self) -> str: ...
    @property
    def target_update_level(self) -> int: ...
    def components_to_delete(self, product_data: _Path) -> dict[str, set[str]]:
        """The packages to delete, by product base code."""
    def components_to_delete_of(self, base_code: str, product_data: _Path) -> set[str]:
        """The packages to delete of one product."""
    def components_to_extract(self, product_data: _Path) -> dict[str, set[str]]:
        """The packages to extract, by product base code."""
    def components_to_extract_of(self, base_code: str, product_data: _Path) -> set[str]:
        """The packages to extract of one product."""
    def components_with_files_to_delete(self) -> dict[str, tuple[set[str], int]]:
        """The files to delete and the size of each package that loses files."""
    def update_size_for_components_to_extract(self) -> dict[str, tuple[int, int]]:
        """The size and the unpacked size of each package to extract."""

class RelatedPlace:
    """Another place of the document that a finding refers to."""

    @property
    def offset(self) -> int:
        """The byte in the document, from 0."""
    @property
    def line(self) -> int:
        """The line, from 1."""
    @property
    def column(self) -> int:
        """The byte in the line, from 1."""
    @property
    def message(self) -> str:
        """What is there."""

class Fix:
    """A change of the document that removes a problem.

    To apply several whose bytes do not overlap, begin with the last.
    """

    @property
    def offset(self) -> int:
        """The first byte that is replaced, from 0."""
    @property
    def length(self) -> int:
        """The number of bytes that are replaced; 0 inserts."""
    @property
    def replacement(self) -> bytes:
        """What to write instead; empty removes."""
    @property
    def is_safe(self) -> bool:
        """Whether applying it needs no decision.

        The library then gives the same answers as before, or it rejected the document before.
        Otherwise the fix is a suggestion, which may guess wrong.
        """

class Finding:
    """One problem of a document.

    Bytes of the document that are not UTF-8 are U+FFFD in the texts.
    """

    @property
    def rule(self) -> str:
        """The id of the rule, which never changes."""
    @property
    def severity(self) -> str:
        """"info", "warning" or "error"."""
    @property
    def message(self) -> str:
        """What is wrong."""
    @property
    def advice(self) -> str:
        """What to do."""
    @property
    def offset(self) -> int:
        """The first byte that is marked, from 0."""
    @property
    def length(self) -> int:
        """The number of bytes that are marked."""
    @property
    def line(self) -> int:
        """The line, from 1."""
    @property
    def column(self) -> int:
        """The byte in the line, from 1."""
    @property
    def pointer(self) -> str:
        """The JSON Pointer to the value; empty for the whole document."""
    @property
    def item(self) -> str:
        """The value in words; may be empty."""
    @property
    def related(self) -> list[RelatedPlace]:
        """Other places that the finding refers to."""
    @property
    def fix(self) -> Optional[Fix]:
        """How to change the document; None if the remedy is not obvious."""

class Diagnosis:
    """Everything that is known about one document. Made by lint()."""

    @property
    def loads(self) -> bool:
        """Whether load_bytes() loads the document."""
    @property
    def exception(self) -> Optional[tuple[str, str]]:
        """The type in C++ and the text of the library's exception; None if the document loads."""
    @property
    def reader_message(self) -> str:
        """The text reader's own message about malformed text, or an empty one."""
    @property
    def findings(self) -> list[Finding]:
        """The problems, in the order of their offsets."""
    @property
    def omitted(self) -> dict[str, int]:
        """How many findings of each rule are left out because there are too many."""

def load(path: _Path) -> UpdateMetaData:
    """Loads the document at a path."""

def load_bytes(document: bytes, name: str = "document") -> UpdateMetaData:
    """Loads a document from its bytes; the name stands for it in messages."""

def lint(document: bytes, name: str = "document", product_data: Optional[_Path] = None) -> Diagnosis:
    """Finds every problem of a document, as the command's lint does.

    The name stands for the document in the exception's text. With product data, the products are
    looked up there.
    """
