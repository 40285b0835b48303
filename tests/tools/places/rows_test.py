"""Checks the output of "update-metadata list" and "update-metadata why" for programs.

rows_test.py SOURCES COMMAND

Every row and every answer keeps to its schema, rows have the same content in both formats, and why shows the rows of
list that have the key.
"""

import csv
import glob
import json
import os
import subprocess
import sys
import unittest

try:
    import jsonschema
except ImportError:
    sys.exit("rows_test.py needs jsonschema; install Debian's python3-jsonschema")

SOURCES, COMMAND = sys.argv[1:3]
os.chdir(SOURCES)
DOCUMENTS = sorted(glob.glob("examples/documents/*/update.json") +
                   glob.glob("tests/golden/cases/*/document.json") +
                   glob.glob("tests/golden/lint/*/document.json"))
STEP = 7 if os.environ.get("UMP_SAMPLED_TESTS") else 1  # which takes each seventh document
PRODUCT_DATA = ("--product-data", "examples/documents/realistic/product-data")
HEAD = ("document", "baseFamily", "baseVersion", "targetFamily", "targetVersion", "updateLevel", "arch", "sha256")


def run_all(*arguments):
    return subprocess.run([COMMAND, *arguments], check=False, capture_output=True, encoding="utf-8")


def run(*arguments):
    return run_all(*arguments).stdout


def rows_of(*arguments):
    return [json.loads(line) for line in run("list", *arguments, "--format=ndjson").splitlines()]


def validator_of(name):
    with open("docs/schemas/%s.schema.json" % name, encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft202012Validator.check_schema(schema)
    return jsonschema.Draft202012Validator(schema)


class Rows(unittest.TestCase):
    def test_keep_to_their_schema_and_have_every_reason(self):
        validator = validator_of("list")
        rows = rows_of(*DOCUMENTS, *PRODUCT_DATA)
        for row in rows:
            validator.validate(row)
        words = {row[name] for row in rows for name in ("inAllProducts", "inOneProduct", "inSizes", "inFiles")}
        self.assertEqual(words - {None},
                         set(validator.schema["$defs"]["use"]["enum"]) - {None})

    def test_are_the_same_as_fields(self):
        rows = rows_of(*DOCUMENTS)
        fields = csv.DictReader(run("list", *DOCUMENTS).split("\n")[:-1], delimiter="\t", quoting=csv.QUOTE_NONE)

        def as_field(value):
            if isinstance(value, str):
                return json.dumps(value, ensure_ascii=False)[1:-1].replace('\\"', '"')
            return "" if value is None else str(value)

        def unescaped(text):
            return json.loads('"%s"' % text.replace('\\\\', '\\u005c').replace('"', '\\"'))

        self.assertEqual([{name: unescaped(value) for name, value in row.items()} for row in fields],
                         [{name: unescaped(as_field(value)) for name, value in row.items()} for row in rows])

    def test_are_what_why_shows(self):
        validator = validator_of("why")
        compared = 0
        for document in DOCUMENTS[::STEP]:
            rows = rows_of(document, *PRODUCT_DATA)
            for key in sorted({row["key"] for row in rows if "\0" not in row["key"]})[:3]:
                answer = json.loads(run("why", *PRODUCT_DATA, "--format=json", "--", key, document))
                validator.validate(answer)
                (found,) = answer["documents"]
                self.assertEqual(
                    [{name: value for name, value in place.items() if name != "matches"}
                     for place in found["places"] if place["matches"] == "key" and place["package"] is not None],
                    [{name: value for name, value in row.items() if name not in HEAD}
                     for row in rows if row["key"] == key])
                self.assertEqual(list(found.items())[-1], ("sha256", rows[0]["sha256"]))
                compared += 1
        self.assertGreater(compared, 50 // STEP)

    def test_come_with_the_notes_of_show(self):
        noted = 0
        for document in DOCUMENTS[::STEP]:
            messages = run_all("show", document, *PRODUCT_DATA).stderr
            self.assertEqual(run_all("list", document, *PRODUCT_DATA).stderr, messages)
            self.assertEqual(run_all("why", "a_b", document, *PRODUCT_DATA).stderr, messages)
            noted += "check --product-data" in messages
        self.assertGreater(noted, 50 // STEP)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
