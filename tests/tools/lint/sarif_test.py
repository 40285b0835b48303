"""Checks the SARIF of the command against the schema of the standard, and compares it with the JSON.

sarif_test.py SCHEMA COMMAND SOURCES
"""

import copy
import hashlib
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
import urllib.parse

try:
    from jsonschema import Draft202012Validator
except ImportError:
    sys.exit("sarif_test.py needs jsonschema; install Debian's python3-jsonschema")

SCHEMA, COMMAND, SOURCES = sys.argv[1:4]
CASES = os.path.join(SOURCES, "tests/golden/cases")
FAULTS = os.path.join(SOURCES, "tests/golden/lint")
SAMPLES = os.path.join(SOURCES, "examples/documents")

# The schema requires a URI reference, but validators do not check formats.
URI = re.compile(r"\A(?:file:///)?(?:[A-Za-z0-9._~/-]|%[0-9A-F]{2})+\Z")


LEVELS = {"error": "error", "warning": "warning", "info": "note"}


def lint(*arguments, form="sarif", folder="."):
    run = subprocess.run([COMMAND, "lint", "--format", form, *arguments], cwd=folder,
                         stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    return json.loads(run.stdout.decode("utf-8"))


def documents():
    for name in sorted(os.listdir(CASES)):
        yield os.path.join(CASES, name, "document.json")
    for name in sorted(os.listdir(FAULTS)):
        yield os.path.join(FAULTS, name, "document.json")
    for name in sorted(os.listdir(SAMPLES)):
        yield os.path.join(SAMPLES, name, "update.json")


def characters(text):
    """The number of characters in bytes that may not be UTF-8: bytes that continue none."""
    return sum(byte & 0xC0 != 0x80 for byte in text)


def region_of(text, offset, length):
    begin = min(offset, len(text))
    end = min(begin + length, len(text))

    def place(at):
        return text.count(b"\n", 0, at) + 1, characters(text[text.rfind(b"\n", 0, at) + 1:at]) + 1

    (first_line, first_column), (last_line, last_column) = place(begin), place(end)
    return {"startLine": first_line, "startColumn": first_column, "endLine": last_line,
            "endColumn": last_column, "byteOffset": begin, "byteLength": end - begin}


def sentence(text):
    return text[:1].upper() + text[1:] + ("" if text.endswith("?") else ".")


def message(text):
    escaped = re.sub(r"[\\\[\]]", lambda match: "\\" + match.group(), text)
    return {"text": escaped.replace("{", "{{").replace("}", "}}")}


class FromJson:
    """The SARIF that a file of the JSON form corresponds to."""

    def __init__(self, file, index, rules):
        self.rules = rules
        with open(file["file"], "rb") as document:
            self.text = document.read()
        assert list(file.items())[-1] == ("sha256", hashlib.sha256(self.text).hexdigest())
        self.location = {"uri": "file://" + urllib.parse.quote(file["file"], safe="-._~/"),
                         "index": index}
        self.artifact = {"location": {"uri": self.location["uri"]},
                         "hashes": {"sha-256": file["sha256"]},
                         "properties": {name: file[name]
                                        for name in ("loads", "exception", "omitted")}}
        self.results = [self.result(finding) for finding in file["findings"]]

    def place(self, place, length):
        return {"artifactLocation": self.location,
                "region": region_of(self.text, place["offset"], length)}

    def result(self, finding):
        location = {"physicalLocation": self.place(finding, finding["length"])}
        if finding["pointer"]:
            item = {"name": finding["item"]} if finding["item"] else {}
            location["logicalLocations"] = [{**item, "fullyQualifiedName": finding["pointer"]}]
        result = {
            "ruleId": finding["rule"],
            "ruleIndex": self.rules.index(finding["rule"]),
            "level": LEVELS[finding["severity"]],
            "message": message(sentence(finding["message"]) + " " + sentence(finding["advice"])),
            "locations": [location],
        }
        if finding["related"]:
            result["relatedLocations"] = [
                {"id": number, "message": message(sentence(related["message"])),
                 "physicalLocation": self.place(related, 1)}
                for number, related in enumerate(finding["related"])]
        if finding["fix"]:
            result["fixes"] = [self.fix(finding["fix"])]
        return result

    def fix(self, fix):
        replacement = {"deletedRegion": region_of(self.text, fix["offset"], fix["length"])}
        if fix["replacement"]:
            replacement["insertedContent"] = {"text": fix["replacement"]}
        kind = "Safe" if fix["safe"] else "Suggested"
        return {"description": {"text": kind + " fix."},
                "artifactChanges": [{"artifactLocation": self.location,
                                     "replacements": [replacement]}]}


class Sarif(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with open(SCHEMA, encoding="utf-8") as schema:
            cls.schema = json.load(schema)
        Draft202012Validator.check_schema(cls.schema)

    def faults_of(self, log):
        return [list(fault.absolute_path)
                for fault in Draft202012Validator(self.schema).iter_errors(log)]

    def check(self, log):
        self.assertEqual(self.faults_of(log), [])
        for artifact in log["runs"][0]["artifacts"]:
            self.assertRegex(artifact["location"]["uri"], URI)

    def test_keeps_to_the_schema_and_says_the_same_as_the_json_for_every_document(self):
        log = lint(*documents())
        self.check(log)
        run = log["runs"][0]
        rules = [rule["id"] for rule in run["tool"]["driver"]["rules"]]
        files = [FromJson(file, index, rules)
                 for index, file in enumerate(lint(*documents(), form="json")["files"])]
        self.assertGreater(len(files), 100)
        self.assertEqual(run["artifacts"], [file.artifact for file in files])
        self.assertEqual(run["results"], [result for file in files for result in file.results])

    def test_keeps_to_the_schema_without_a_finding(self):
        log = lint(os.path.join(FAULTS, "faultless/document.json"))
        self.check(log)
        self.assertEqual(log["runs"][0]["results"], [])

    def test_keeps_to_the_schema_for_any_name_of_the_file(self):
        with tempfile.TemporaryDirectory() as folder:
            for name in ["a b:%#?.json", "\u00fc.json", "-.json"]:
                with open(os.path.join(folder, name), "w", encoding="utf-8") as document:
                    document.write("{} \n")
                log = lint("--", name, folder=folder)
                self.check(log)
                self.assertEqual(len(log["runs"][0]["artifacts"]), 1)

    def test_keeps_to_the_schema_for_a_file_that_is_given_twice(self):
        path = os.path.join(FAULTS, "null-value/document.json")
        log = lint(path, path)
        self.check(log)
        self.assertEqual(len(log["runs"][0]["artifacts"]), 1)
        self.assertEqual(len(log["runs"][0]["results"]), 2 * len(lint(path)["runs"][0]["results"]))

    def test_keeps_to_the_schema_for_a_file_that_cannot_be_read(self):
        log = lint("nowhere.json")
        self.check(log)
        self.assertEqual(len(log["runs"][0]["invocations"][0]["toolExecutionNotifications"]), 1)

    def test_is_rejected_by_the_schema_with_any_of_these_changes(self):
        log = lint(os.path.join(CASES, "missing_metadata/document.json"))
        region = ("runs", 0, "results", 0, "locations", 0, "physicalLocation", "region")
        for path, value in [
                (("version",), "2.0.0"),
                (("runs", 0, "columnKind"), "bytes"),
                (("runs", 0, "results", 0, "level"), "info"),
                (("runs", 0, "results", 0, "advice"), "x"),
                (region + ("startLine",), 0),
                (region + ("endColumn",), "1"),
                (("runs", 0, "artifacts", 0, "location", "uri"), 1),
                (("runs", 0, "invocations", 0, "executionSuccessful"), None),
                (("runs", 0, "tool", "driver", "rules", 0, "id"), 1)]:
            with self.subTest(path):
                changed = copy.deepcopy(log)
                place = changed
                for step in path[:-1]:
                    place = place[step]
                place[path[-1]] = value
                self.assertNotEqual(self.faults_of(changed), [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
