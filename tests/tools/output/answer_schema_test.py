"""Checks the schema of a subcommand's output for programs with a public validator.

answer_schema_test.py SUBCOMMAND COMMAND SOURCES
"""

import copy
import glob
import json
import os
import subprocess
import sys
import unittest

try:
    from jsonschema import Draft202012Validator
except ImportError:
    sys.exit("answer_schema_test.py needs jsonschema; install Debian's python3-jsonschema")

SUBCOMMAND, COMMAND, SOURCES = sys.argv[1:4]
SMALL = os.path.join(SOURCES, "examples/documents/small/update.json")
REALISTIC = os.path.join(SOURCES, "examples/documents/realistic/update.json")
NEXT = os.path.join(SOURCES, "tests/golden/tool/diff/next.json")
PRODUCT_DATA = "--product-data=" + os.path.join(SOURCES, "examples/documents/small/product-data")
FAULTY = [os.path.join(SOURCES, "tests/golden/lint", name, "document.json")
          for name in ("null-section", "repeated-key")]
STEP = 7 if os.environ.get("UMP_SAMPLED_TESTS") else 1  # which takes each seventh document
CASES = sorted(glob.glob(os.path.join(SOURCES, "tests/golden/*/*/document.json")))[::STEP]

# Arguments; of those of the first list, every member is removed and changed.
ARGUMENTS = {
    "diff": [[SMALL, NEXT, "--fail-if-larger", "5%"], [SMALL, SMALL], [SMALL, NEXT], [NEXT, SMALL],
             [SMALL, REALISTIC], [REALISTIC, NEXT]],
    "lint": [[*FAULTY, "gone.json"], [SMALL, PRODUCT_DATA], CASES],
    "query": [[SMALL], [SMALL, PRODUCT_DATA], [SMALL, PRODUCT_DATA, "--base-code=FE"], [REALISTIC],
              *([case] for case in CASES)],
}[SUBCOMMAND]

# The names of objects whose members an answer need not have.
TABLES = {"componentsToDelete", "componentsToExtract", "updateSizeForComponentsToExtract",
          "componentsWithFilesToDelete"}


def answer(arguments):
    """Null if there is none, which lint and diff always have."""
    run = subprocess.run([COMMAND, SUBCOMMAND, "--format", "json", *arguments], check=False,
                         stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    assert run.stdout or SUBCOMMAND == "query"
    return json.loads(run.stdout) if run.stdout else None


def members(value, path=()):
    """The paths of all members and elements, at any depth."""
    items = value.items() if isinstance(value, dict) else enumerate(value)
    for key, item in items:
        yield path + (key,)
        if isinstance(item, (dict, list)):
            yield from members(item, path + (key,))


def is_optional(path):
    return (isinstance(path[-1], int) or path == ("growth",) or
            SUBCOMMAND == "query" and len(path) == 2 and path[0] in TABLES)


class AnswerSchema(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        schema = os.path.join(SOURCES, "docs/schemas/%s.schema.json" % SUBCOMMAND)
        with open(schema, encoding="utf-8") as file:
            cls.schema = json.load(file)
        cls.validator = Draft202012Validator(cls.schema)
        cls.answer = answer(ARGUMENTS[0])

    def changed(self):
        """Each path with a copy of the answer, the holder of the member in it, and its name."""
        for path in members(self.answer):
            changed = copy.deepcopy(self.answer)
            holder = changed
            for step in path[:-1]:
                holder = holder[step]
            yield path, changed, holder, path[-1]

    def test_is_a_schema(self):
        Draft202012Validator.check_schema(self.schema)

    def test_accepts_every_answer(self):
        answers = [made for made in map(answer, ARGUMENTS) if made]
        self.assertGreaterEqual(len(answers), 3)
        for made in answers:
            self.assertEqual([error.message for error in self.validator.iter_errors(made)], [])

    def test_rejects_an_answer_without_any_member_that_is_always_there(self):
        for path, changed, holder, name in self.changed():
            if not is_optional(path):
                del holder[name]
                with self.subTest(path):
                    self.assertFalse(self.validator.is_valid(changed))

    def test_rejects_an_answer_with_any_value_of_another_kind(self):
        for path, changed, holder, name in self.changed():
            holder[name] = 0.5
            with self.subTest(path):
                self.assertFalse(self.validator.is_valid(changed))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
