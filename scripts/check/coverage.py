#!/usr/bin/env python3
"""Summarizes what the tests cover, and fails if it is too little.

  scripts/check/coverage.py LINES BRANCHES FOLDER=PERCENT...

LINES and BRANCHES are what llvm-cov exports as lcov and as JSON. A folder does not include those below it that
are also given.
"""

import collections
import json
import os
import sys


def read_lines(path):
    """Returns the count of each line, by source and number."""
    counts = collections.defaultdict(dict)
    source = None
    with open(path, encoding="utf-8") as trace:
        for record in trace:
            kind, _, rest = record.strip().partition(":")
            if kind == "SF":
                source = os.path.relpath(rest)
            elif kind == "DA":
                number, count = rest.split(",")[:2]
                counts[source][(int(number),)] = int(count)
    return counts


def read_branches(path):
    """Returns how often each condition was true and was false, by source and place.

    The instances of a template count together; what the compiler decides for each is no branch.
    """
    counts = collections.defaultdict(collections.Counter)
    with open(path, encoding="utf-8") as text:
        files = json.load(text)["data"][0]["files"]
    for file in files:
        source = os.path.relpath(file["filename"])
        for branch in file["branches"]:
            place = tuple(branch[:4])
            counts[source][place + ("true",)] += branch[4]
            counts[source][place + ("false",)] += branch[5]
    return counts


def main():
    line_trace, branch_trace, *limits = sys.argv[1:]
    kinds = {"lines": read_lines(line_trace), "branches": read_branches(branch_trace)}
    texts = {}
    for source in kinds["lines"]:
        with open(source, encoding="utf-8") as text:
            texts[source] = [line.strip() for line in text]
    failed = False
    left_out = set()
    folders = [limit.partition("=")[0] for limit in limits]
    for limit in limits:
        folder, _, least = limit.partition("=")
        inner = tuple(other + "/" for other in folders if other.startswith(folder + "/"))
        for kind, counts in kinds.items():
            run = missed = 0
            for source in counts:
                if not source.startswith(folder + "/") or source.startswith(inner):
                    continue
                for place, count in counts[source].items():
                    text = texts[source][place[0] - 1]
                    if kind == "branches" and "if constexpr (" in text:
                        continue
                    if count != 0:
                        run += 1
                    else:
                        missed += 1
                        what = "never run" if kind == "lines" else f"never {place[-1]}"
                        left_out.add((source, place, what, text))
            if run == 0 and kind == "lines":
                sys.exit(f"no coverage data for {folder}")
            percent = 100 * run / max(run + missed, 1) if missed else 100.0
            print(f"{folder}: {percent:.2f} % of {run + missed} {kind}")
            failed = failed or percent < float(least)
    for source, place, what, text in sorted(left_out):
        print(f"{source}:{':'.join(map(str, place[:2]))}: {what}: {text}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
