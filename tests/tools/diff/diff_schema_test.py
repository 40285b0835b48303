"""Checks the schema of the output of "update-metadata diff --format json" with a public validator.

diff_schema_test.py SCHEMA COMMAND SOURCES
"""

import copy
import json
import os
import subprocess
import sys
import unittest

try:
    from jsonschema import Draft202012Validator
except ImportError:
    sys.exit("diff_schema_test.py needs jsonschema; install Debian's python3-jsonschema")

SCHEMA, COMMAND, SOURCES = sys.argv[1:4]
SMALL = os.path.join(SOURCES, "examples/documents/small/update.json")
REALISTIC = os.path.join(SOURCES, "examples/documents/realistic/update.json")
NEXT = os.path.join(SOURCES, "tests/golden/tool/diff/next.json")


def diff(*arguments):
    run = subprocess.run([COMMAND, "diff", "--format", "json", *arguments], check=False,
                         stdout=subprocess.PIPE)
    assert run.returncode in (0, 1)
    return json.loads(run.stdout)


def members(value, path=()):
    """The paths of all members and elements, at any depth."""
    items = value.items() if isinstance(value, dict) else enumerate(value)
    for key, item in items:
        yield path + (key,)
        if isinstance(item, (dict, list)):
            yield from members(item, path + (key,))


class DiffSchema(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with open(SCHEMA, encoding="utf-8") as file:
            cls.schema = json.load(file)
        cls.validator = Draft202012Validator(cls.schema)

    def test_is_a_schema(self):
        Draft202012Validator.check_schema(self.schema)

    def test_accepts_every_answer(self):
        for arguments in ((SMALL, SMALL), (SMALL, NEXT), (NEXT, SMALL), (SMALL, REALISTIC),
                          (REALISTIC, NEXT), (SMALL, NEXT, "--fail-if-larger", "5%")):
            with self.subTest(arguments):
                answer = diff(*arguments)
                self.assertEqual([error.message for error in self.validator.iter_errors(answer)],
                                 [])

    def test_rejects_an_answer_without_any_member_except_the_growth(self):
        answer = diff(SMALL, NEXT, "--fail-if-larger", "5%")
        for path in members(answer):
            if isinstance(path[-1], int) or path == ("growth",):
                continue
            with self.subTest(path):
                lacking = copy.deepcopy(answer)
                holder = lacking
                for step in path[:-1]:
                    holder = holder[step]
                del holder[path[-1]]
                self.assertFalse(self.validator.is_valid(lacking))

    def test_rejects_an_answer_with_any_value_of_another_kind(self):
        answer = diff(SMALL, NEXT, "--fail-if-larger", "5%")
        for path in members(answer):
            with self.subTest(path):
                wrong = copy.deepcopy(answer)
                holder = wrong
                for step in path[:-1]:
                    holder = holder[step]
                holder[path[-1]] = 0.5
                self.assertFalse(self.validator.is_valid(wrong))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
