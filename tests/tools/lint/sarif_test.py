"""Holds the SARIF of the command against the schema that is published with the standard.

sarif_test.py SCHEMA COMMAND SOURCES
"""

import copy
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest

try:
    from jsonschema import Draft202012Validator
except ImportError:
    sys.exit("sarif_test.py needs jsonschema; install Debian's python3-jsonschema")

SCHEMA, COMMAND, SOURCES = sys.argv[1:4]
CASES = os.path.join(SOURCES, "tests/golden/cases")
FAULTS = os.path.join(SOURCES, "tests/golden/lint")
SAMPLES = os.path.join(SOURCES, "examples/documents")

# What a reference to a file may be made of; the schema's word for it, a format, is not checked.
URI = re.compile(r"\A(?:file:///)?(?:[A-Za-z0-9._~/-]|%[0-9A-F]{2})+\Z")


def lint(*arguments, folder="."):
    run = subprocess.run([COMMAND, "lint", "--format", "sarif", *arguments], cwd=folder,
                         stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    return json.loads(run.stdout.decode("utf-8"))


def documents():
    for name in sorted(os.listdir(CASES)):
        yield os.path.join(CASES, name, "document.json")
    for name in sorted(os.listdir(FAULTS)):
        yield os.path.join(FAULTS, name, "document.json")
    for name in sorted(os.listdir(SAMPLES)):
        yield os.path.join(SAMPLES, name, "update.json")


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
        run = log["runs"][0]
        rules = run["tool"]["driver"]["rules"]
        for artifact in run["artifacts"]:
            self.assertRegex(artifact["location"]["uri"], URI)
        for result in run["results"]:
            self.assertEqual(rules[result["ruleIndex"]]["id"], result["ruleId"])
            for location in result["locations"] + result.get("relatedLocations", []):
                place = location["physicalLocation"]["artifactLocation"]
                self.assertEqual(run["artifacts"][place["index"]]["location"]["uri"], place["uri"])

    def test_keeps_to_the_schema_for_all_documents_at_once(self):
        self.check(lint(*documents()))

    def test_keeps_to_the_schema_for_each_document(self):
        for path in documents():
            with self.subTest(path):
                self.check(lint(path))

    def test_keeps_to_the_schema_whatever_the_file_is_called(self):
        with tempfile.TemporaryDirectory() as folder:
            for name in ["a b:%#?.json", "\u00fc.json", "-.json"]:
                with open(os.path.join(folder, name), "w", encoding="utf-8") as document:
                    document.write("{} \n")
                log = lint("--", name, folder=folder)
                self.check(log)
                self.assertEqual(len(log["runs"][0]["artifacts"]), 1)

    def test_keeps_to_the_schema_for_a_file_that_is_named_twice(self):
        path = os.path.join(FAULTS, "null-value/document.json")
        log = lint(path, path)
        self.check(log)
        self.assertEqual(len(log["runs"][0]["artifacts"]), 1)
        self.assertEqual(len(log["runs"][0]["results"]), 2 * len(lint(path)["runs"][0]["results"]))

    def test_keeps_to_the_schema_for_a_file_that_cannot_be_read(self):
        log = lint("nowhere.json")
        self.check(log)
        self.assertEqual(len(log["runs"][0]["invocations"][0]["toolExecutionNotifications"]), 1)

    def test_is_refused_by_the_schema_with_any_of_these_changes(self):
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
