#!/usr/bin/env python3
"""Checks every update metadata document below a folder: check_folder.py FOLDER

Tells for each what it leads to and how much there is to fetch, or why it cannot be loaded. Ends with
0 if every document loads, with 1 if one does not or there is none, with 2 if it was called wrongly.
"""

import pathlib
import sys

import update_metadata_parser


def describe(path: pathlib.Path) -> str:
    update = update_metadata_parser.load(path)
    sizes = update.update_size_for_components_to_extract()
    packed = sum(size for size, _ in sizes.values())
    return "%s %s, %d packages, %d bytes" % (
        update.target_release_family, update.target_release_version, len(sizes), packed)


def main() -> int:
    if len(sys.argv) != 2:
        print("usage: check_folder.py FOLDER", file=sys.stderr)
        return 2
    folder = pathlib.Path(sys.argv[1])
    documents = sorted(folder.rglob("*.json"))
    failures = 0
    for path in documents:
        try:
            print("%s: %s" % (path.relative_to(folder), describe(path)))
        except update_metadata_parser.UpdateMetaDataError as failure:
            failures += 1
            print("%s: %s" % (path.relative_to(folder), failure), file=sys.stderr)
    return 0 if documents and not failures else 1


if __name__ == "__main__":
    sys.exit(main())
