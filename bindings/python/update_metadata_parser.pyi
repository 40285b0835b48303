"""Reads update metadata documents and answers what an update does.

A package is named by its key: the component's name, an underscore and the package's name. Sizes are
bytes. Every answer is a new object. Product data are a folder with products.tsv, or such a file; the first
query that looks something up opens them, and later ones are ignored.
"""

import os
from typing import Union

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

def load(path: _Path) -> UpdateMetaData:
    """Loads the document at a path."""

def load_bytes(document: bytes, name: str = "document") -> UpdateMetaData:
    """Loads a document from its bytes; the name stands for it in messages."""
