"""Compares the places that lint reports with those that an independent reader finds.

positions_test.py COMMAND SOURCES

The reader knows only plain JSON. It records where each key and value is, by JSON Pointer.
"""

import json
import os
import re
import subprocess
import sys
import unittest

COMMAND, SOURCES = sys.argv[1:3]
CASES = os.path.join(SOURCES, "tests/golden/lint")

STRING = re.compile(rb'"(?:[^"\\]|\\.)*"', re.DOTALL)
SPACE = re.compile(rb"[ \t\r\n]*")
SCALAR = re.compile(rb"-?[0-9]+(?:\.[0-9]+)?(?:[eE][+-]?[0-9]+)?|true|false|null")


class NotJson(Exception):
    pass


class Places:
    """The keys and values of a text: ranges of bytes by JSON Pointer."""

    def __init__(self, text):
        self.text = text
        self.ranges = {}
        if self.skip(self.value(self.skip(0), "")) != len(text):
            raise NotJson

    def skip(self, at):
        return SPACE.match(self.text, at).end()

    def expect(self, byte, at):
        if self.text[at:at + 1] != byte:
            raise NotJson
        return self.skip(at + 1)

    def note(self, pointer, begin, end):
        self.ranges.setdefault(pointer, []).append((begin, end))

    def string(self, at):
        match = STRING.match(self.text, at)
        if not match:
            raise NotJson
        # Bytes that are not UTF-8, and unpaired surrogates, become U+FFFD, as in the command.
        decoded = json.loads(match.group().decode("utf-8", "replace"), strict=False)
        return decoded.encode("utf-16", "surrogatepass").decode("utf-16", "replace"), match.end()

    def members(self, at, pointer, closing, step):
        at = self.skip(at + 1)
        index = 0
        while self.text[at:at + 1] != closing:
            if index:
                at = self.expect(b",", at)
            at = step(at, pointer, index)
            index += 1
        return at + 1

    def member(self, at, pointer, _):
        name, end = self.string(at)
        inner = pointer + "/" + name.replace("~", "~0").replace("/", "~1")
        self.note(inner, at, end)
        return self.skip(self.value(self.expect(b":", self.skip(end)), inner))

    def element(self, at, pointer, index):
        return self.skip(self.value(at, "%s/%d" % (pointer, index)))

    def value(self, at, pointer):
        first = self.text[at:at + 1]
        if first == b"{":
            end = self.members(at, pointer, b"}", self.member)
        elif first == b"[":
            end = self.members(at, pointer, b"]", self.element)
        elif first == b'"':
            end = self.string(at)[1]
        else:
            match = SCALAR.match(self.text, at)
            if not match:
                raise NotJson
            end = match.end()
        self.note(pointer, at, end)
        return end


def read(path):
    with open(path, "rb") as file:
        return file.read()


def documents():
    for name in sorted(os.listdir(CASES)):
        for document in ("document.json", "silent.json"):
            path = os.path.join(CASES, name, document)
            if os.path.exists(path):
                yield path


def findings_of_documents():
    """The findings of each document, which one run of the command reports."""
    paths = list(documents())
    run = subprocess.run([COMMAND, "lint", "--format", "json", *paths], stdout=subprocess.PIPE,
                         check=False)
    files = json.loads(run.stdout.decode("utf-8"))["files"]
    return [(path, file["findings"]) for path, file in zip(paths, files)]


class Positions(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.findings = findings_of_documents()

    def check_line_and_column(self, text, place):
        before = text[:place["offset"]]
        self.assertLessEqual(place["offset"], len(text))
        self.assertEqual(place["line"], before.count(b"\n") + 1)
        self.assertEqual(place["column"], place["offset"] - (before.rfind(b"\n") + 1) + 1)

    def test_lines_and_columns_are_those_of_the_offsets(self):
        places = 0
        for path, findings in self.findings:
            with self.subTest(path):
                for finding in findings:
                    for place in [finding] + finding["related"]:
                        self.check_line_and_column(read(path), place)
                        places += 1
        self.assertGreater(places, 80)

    def test_each_finding_is_about_bytes_of_the_value_or_key_that_its_pointer_names(self):
        compared = 0
        for path, findings in self.findings:
            try:
                ranges = Places(read(path)).ranges
            except NotJson:
                continue
            with self.subTest(path):
                for finding in findings:
                    # A rule about the whole text or the product data refers to no value.
                    if finding["rule"] in ("text-around-value", "typed-payload", "product-data",
                                           "type-name-not-a-string"):
                        continue
                    begin = finding["offset"]
                    end = begin + finding["length"]
                    self.assertTrue(
                        any(first <= begin and end <= last and
                            (first == begin or finding["rule"] in ("ill-formed-utf8",
                                                                   "unpaired-surrogate"))
                            for first, last in ranges.get(finding["pointer"], [])),
                        finding)
                    compared += 1
        self.assertGreater(compared, 60)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
