"""Compares the JSON Schema of the document, in a public validator, with the library.

schema_test.py SCHEMA COMMAND SOURCES

The schema must accept a document exactly if the library loads it, as `COMMAND lint` says.
"""

import copy
import json
import os
import subprocess
import sys
import tempfile
import unittest

try:
    from jsonschema import Draft202012Validator
except ImportError:
    sys.exit("schema_test.py needs jsonschema; install Debian's python3-jsonschema")

SCHEMA, COMMAND, SOURCES = sys.argv[1:4]
CASES = os.path.join(SOURCES, "tests/golden/cases")
SAMPLES = os.path.join(SOURCES, "examples/documents")

# Cases that Python's reader rejects: one is malformed, one has leading zeros, which the library
# accepts and JSON does not.
NOT_JSON = {"malformed_text", "numbers_at_the_edges"}

RELEASE = {
    "zelvan_version": "", "date": "", "version": "7.1", "prerelease": False, "release": "Fernlight",
    "checksum": "", "description": "", "update": 3,
}
DOCUMENT = {
    "metadata": {"arch": "x86_64", "base": RELEASE, "target": dict(RELEASE)},
    "components": {
        "core": {
            "delete": {"old": {"size": 1}},
            "extract": {"new": {"size": 2, "uncompressedBytes": 3}},
        }
    },
    "products": {"Editor": {"delete": ["core"], "extract": ["core"]}},
    "componentsWithFilesDeleted": {"help": {"guide": {"size": 4, "files": ["a.txt"]}}},
}

# The values that replace the value at a path; ABSENT removes it.
ABSENT = object()
KINDS = [ABSENT, None, True, 1.5, "text", [], [1], ["text"], {}, {"a": {}}]


def first_wins(members):
    """Builds an object as the library does: the first value of a repeated key is used."""
    made = {}
    for key, value in members:
        made.setdefault(key, value)
    return made


def read(path):
    # Strings may contain any byte, even control characters.
    with open(path, encoding="utf-8", errors="surrogateescape") as file:
        return json.loads(file.read(), object_pairs_hook=first_wins, strict=False)


def paths_of(value, path=()):
    """Every path below and including `value`, the containers before what they contain."""
    yield path
    if isinstance(value, dict):
        for key in value:
            yield from paths_of(value[key], path + (key,))
    elif isinstance(value, list):
        for index, element in enumerate(value):
            yield from paths_of(element, path + (index,))


def changed(path, value):
    """DOCUMENT with another value at `path`, or with a new member."""
    if not path:
        return copy.deepcopy(value)
    document = copy.deepcopy(DOCUMENT)
    container = document
    for step in path[:-1]:
        container = container[step]
    if value is ABSENT:
        del container[path[-1]]
    else:
        container[path[-1]] = copy.deepcopy(value)
    return document


class SchemaTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        with open(SCHEMA, encoding="utf-8") as file:
            cls.schema = json.load(file)
        cls.validator = Draft202012Validator(cls.schema)
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)

    def faults_of(self, document):
        """The paths of the values that the schema rejects."""
        return sorted({tuple(error.absolute_path) for error in self.validator.iter_errors(document)},
                      key=str)

    def loads(self, documents):
        """Whether the library loads each of some documents, which one run of the command says."""
        paths = [os.path.join(self.folder.name, "%d.json" % number)
                 for number in range(len(documents))]
        for path, document in zip(paths, documents):
            with open(path, "w", encoding="utf-8") as file:
                json.dump(document, file)
        run = subprocess.run([COMMAND, "lint", "--format", "json", *paths], stdout=subprocess.PIPE,
                             check=False)
        self.assertIn(run.returncode, (0, 1))
        return [file["loads"] for file in json.loads(run.stdout.decode("utf-8"))["files"]]

    def test_is_a_valid_schema_of_its_draft(self):
        Draft202012Validator.check_schema(self.schema)

    def describes(self, member):
        """Whether the schema of a member, or what it refers to, has a description."""
        prefix, _, name = member.get("$ref", "").rpartition("/")
        referred = self.schema["$defs"][name] if prefix == "#/$defs" else {}
        return "description" in member or "description" in referred

    def test_describes_every_member_that_it_lists(self):
        def undescribed(schema, path):
            for name, member in schema.get("properties", {}).items():
                if not self.describes(member):
                    yield path + (name,)
                yield from undescribed(member, path + (name,))

        found = list(undescribed(self.schema, ()))
        for name, definition in self.schema["$defs"].items():
            if name != "anyValue":
                found += undescribed(definition, (name,))
        self.assertEqual(found, [])

    def test_accepts_the_sample_documents(self):
        for name in sorted(os.listdir(SAMPLES)):
            with self.subTest(name):
                self.assertEqual(self.faults_of(read(os.path.join(SAMPLES, name, "update.json"))),
                                 [])

    def test_accepts_the_golden_cases_that_load_and_rejects_the_others(self):
        names = sorted(os.listdir(CASES))
        self.assertLess(NOT_JSON, set(names))
        for name in names:
            document = os.path.join(CASES, name, "document.json")
            with open(os.path.join(CASES, name, "expected.txt"), encoding="utf-8") as report:
                loads = "\nfailure\n  nothing\n" in report.read()
            with self.subTest(name):
                if name in NOT_JSON:
                    with self.assertRaises(json.JSONDecodeError):
                        read(document)
                elif loads:
                    self.assertEqual(self.faults_of(read(document)), [])
                else:
                    self.assertNotEqual(self.faults_of(read(document)), [])

    def test_accepts_what_the_library_accepts(self):
        rows = {
            "the document": ((), DOCUMENT),
            "a name of the schema": (("$schema",), "./update-metadata.schema.json"),
            "a name of the schema that is not a string": (("$schema",), 5),
            "an unlisted section": (("history",), [{"date": None}]),
            "an unlisted member of the metadata": (("metadata", "note"), 1),
            "an unlisted member of a release": (("metadata", "base", "note"), []),
            "an unlisted member of a component": (("components", "core", "note"), {}),
            "an unlisted member of a package": (
                ("components", "core", "extract", "new", "note"), None),
            "an unlisted member of a product": (("products", "Editor", "note"), "text"),
            "no base release": (("metadata", "base"), None),
            "no target release": (("metadata", "target"), None),
            "components that are null": (("components",), None),
            "products that are null": (("products",), None),
            "no files to delete": (("componentsWithFilesDeleted",), None),
            "empty components": (("components",), {}),
            "empty products": (("products",), {}),
            "a component without files": (("componentsWithFilesDeleted",), {"help": {}}),
            "an update level with a fraction": (("metadata", "target", "update"), 300.7),
            "a negative size": (("components", "core", "delete", "old", "size"), -3.5),
            "a size beyond 64 bits": (("components", "core", "delete", "old", "size"), 1e30),
            "a package without files": (
                ("componentsWithFilesDeleted", "help", "guide", "files"), []),
            "empty names": (("products",), {"": {"delete": [""], "extract": []}}),
            "a component called qzdata": (("components", "qzdata"), {"delete": {}, "extract": {}}),
            "a typed payload": (("history",), {"qztype": "int8", "qzdata": [300, -1]}),
            "a payload of an unknown type": (("history",), {"qztype": "no type", "qzdata": {}}),
        }
        documents = [changed(path, value) for path, value in rows.values()]
        for name, document, loads in zip(rows, documents, self.loads(documents)):
            with self.subTest(name):
                self.assertEqual(self.faults_of(document), [])
                self.assertTrue(loads)

    def test_rejects_a_fault_at_its_place(self):
        package = ("components", "core", "extract", "new")
        files = ("componentsWithFilesDeleted", "help", "guide")
        # Path of the change, new value, path of the fault.
        rows = {
            "not an object": ((), [], ()),
            "a missing section": (("products",), ABSENT, ()),
            "metadata that is null": (("metadata",), None, ("metadata",)),
            "a section of the wrong kind": (("products",), [], ("products",)),
            "a missing architecture": (("metadata", "arch"), ABSENT, ("metadata",)),
            "a missing release": (("metadata", "base"), ABSENT, ("metadata",)),
            "a release of the wrong kind": (("metadata", "target"), "", ("metadata", "target")),
            "a missing member of a release": (
                ("metadata", "base", "checksum"), ABSENT, ("metadata", "base")),
            "a null member of a release": (
                ("metadata", "base", "update"), None, ("metadata", "base", "update")),
            "a number for a string": (
                ("metadata", "target", "version"), 7.1, ("metadata", "target", "version")),
            "a string for a boolean": (
                ("metadata", "target", "prerelease"), "no", ("metadata", "target", "prerelease")),
            "a component that is null": (("components", "core"), None, ("components", "core")),
            "a component without packages to delete": (
                ("components", "core", "delete"), ABSENT, ("components", "core")),
            "packages in an array": (
                ("components", "core", "extract"), [], ("components", "core", "extract")),
            "a package without its size": (package + ("size",), ABSENT, package),
            "a package without its unpacked size": (
                package + ("uncompressedBytes",), ABSENT, package),
            "a size in quotation marks": (package + ("size",), "2", package + ("size",)),
            "a product that is null": (("products", "Editor"), None, ("products", "Editor")),
            "component names that are null": (
                ("products", "Editor", "delete"), None, ("products", "Editor", "delete")),
            "a component name that is not a string": (
                ("products", "Editor", "extract", 0), 5, ("products", "Editor", "extract", 0)),
            "a component with files that is null": (
                files[:2], None, files[:2]),
            "a package without the list of its files": (files + ("files",), ABSENT, files),
            "files that are not a list": (files + ("files",), "a.txt", files + ("files",)),
            "a file that is not a string": (files + ("files", 0), None, files + ("files", 0)),
            "a type that is not a string": (("history",), [{"qztype": 5}], ("history", 0, "qztype")),
            "a component called qztype": (
                ("components", "qztype"), {"delete": {}, "extract": {}}, ("components", "qztype")),
            "a product called qztype": (("products", "qztype"), "int8", ("products", "qztype")),
            "a typed payload that is not an array": (
                ("history",), {"qztype": "int64", "qzdata": 7}, ("history", "qzdata")),
            "a typed payload with a fraction": (
                ("history",), {"qztype": "uint8", "qzdata": [1, 1.5]}, ("history", "qzdata", 1)),
        }
        documents = [changed(path, value) for path, value, _ in rows.values()]
        for name, document, loads in zip(rows, documents, self.loads(documents)):
            with self.subTest(name):
                self.assertEqual(self.faults_of(document), [rows[name][2]])
                self.assertFalse(loads)

    def test_agrees_with_the_library_on_every_document_with_one_change(self):
        changes = [(path, value) for path in paths_of(DOCUMENT)
                   for value in (KINDS if path else KINDS[1:])]
        documents = [changed(path, value) for path, value in changes]
        for (path, value), document, loads in zip(changes, documents, self.loads(documents)):
            with self.subTest(path=path, value="absent" if value is ABSENT else value):
                self.assertEqual(self.faults_of(document) == [], loads)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
