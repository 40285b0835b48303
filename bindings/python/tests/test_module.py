"""Tests of the Python module, against the sample documents and documents made here."""

import ast
import json
import pathlib
import tempfile
import unittest
from typing import Any

import update_metadata_parser as ump

ROOT = pathlib.Path(__file__).resolve().parents[3]
SMALL = ROOT / "examples" / "documents" / "small"
PRODUCT_DATA = SMALL / "product-data"


def make_document(**changes: Any) -> bytes:
    """A document without releases and content, except for what is given."""
    document: dict[str, Any] = {
        "metadata": {"arch": "", "base": None, "target": None},
        "components": None, "products": None, "componentsWithFilesDeleted": None}
    document.update(changes)
    return json.dumps(document).encode()


class Answers(unittest.TestCase):
    def setUp(self) -> None:
        self.update = ump.load(SMALL / "update.json")

    def test_tells_both_releases(self) -> None:
        self.assertEqual(
            ("Fernlight 7", "7.1.0", "Fernlight 7", "7.2.0", 3),
            (self.update.base_release_family, self.update.base_release_version,
             self.update.target_release_family, self.update.target_release_version,
             self.update.target_update_level))

    def test_tells_packages_by_base_code(self) -> None:
        self.assertEqual({"FE": {"core_legacy-formats", "editor_spelling"}},
                         self.update.components_to_delete(PRODUCT_DATA))
        self.assertEqual(
            {"FE": {"core_engine", "core_fonts", "editor_spelling", "editor_toolbox"},
             "FV": {"core_engine", "core_fonts", "viewer_slideshow"}},
            self.update.components_to_extract(str(PRODUCT_DATA)))

    def test_tells_packages_of_one_product(self) -> None:
        self.assertEqual({"core_legacy-formats", "editor_spelling"},
                         self.update.components_to_delete_of("FE", PRODUCT_DATA))
        self.assertEqual({"core_engine", "core_fonts", "viewer_slideshow"},
                         self.update.components_to_extract_of("FV", PRODUCT_DATA))
        self.assertEqual(set(), self.update.components_to_extract_of("none", PRODUCT_DATA))

    def test_tells_sizes_and_files(self) -> None:
        self.assertEqual(
            {"core_engine": (1572864, 4194304), "core_fonts": (655360, 901120),
             "editor_spelling": (222208, 614400), "editor_toolbox": (48128, 131072),
             "viewer_slideshow": (917, 2048)},
            self.update.update_size_for_components_to_extract())
        self.assertEqual(
            {"editor_manual": ({"manual/old-index.html", "manual/images/tour.png"}, 36864)},
            self.update.components_with_files_to_delete())

    def test_gives_answers_that_belong_to_the_caller(self) -> None:
        self.update.update_size_for_components_to_extract().clear()
        self.assertEqual(5, len(self.update.update_size_for_components_to_extract()))


class Loading(unittest.TestCase):
    def test_takes_bytes_and_text_of_every_plane(self) -> None:
        name = "caf\u00e9 \U0001F600"
        update = ump.load_bytes(make_document(
            componentsWithFilesDeleted={name: {"p": {"size": 1e30, "files": ["\x00", name]}}}))
        self.assertEqual({name + "_p": ({"\x00", name}, -2**63)},
                         update.components_with_files_to_delete())

    def test_takes_paths_beyond_ascii(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "caf\u00e9.json")
            path.write_bytes(make_document())
            self.assertEqual(0, ump.load(path).target_update_level)

    def assert_fails(self, text: str, document: bytes, **names: str) -> None:
        with self.assertRaises(ump.UpdateMetaDataError) as failure:
            ump.load_bytes(document, **names)
        self.assertEqual(text, str(failure.exception))

    def test_fails_with_the_texts_of_the_library(self) -> None:
        self.assert_fails("Error while parsing document", make_document() + b"\n")
        self.assert_fails("Error while parsing caf\u00e9", b"", name="caf\u00e9")
        self.assert_fails("map::at", b'{"metadata":{"arch":"","base":null,"target":null}}')
        self.assert_fails("Invalid data provided for 'arch'", make_document(metadata={}))
        self.assert_fails("invalid conversion: double to object", make_document(products=1))
        with self.assertRaises(ump.UpdateMetaDataError) as failure:
            ump.load("/nonexistent/update.json")
        self.assertEqual("Update MetaData Json file does not exist ", str(failure.exception))
        with self.assertRaises(ump.UpdateMetaDataError) as failure:
            ump.load(SMALL)
        self.assertEqual("Error opening Update MetaData Json File", str(failure.exception))

    def test_finds_no_file_at_a_path_that_is_no_text(self) -> None:
        with self.assertRaises(ump.UpdateMetaDataError):
            ump.load("\ud800")

    def test_rejects_what_is_not_a_path_or_a_document(self) -> None:
        for path in (b"update.json", 1, None):
            with self.assertRaises(TypeError):
                ump.load(path)  # type: ignore[arg-type]
        with self.assertRaises(TypeError):
            ump.load_bytes("{}")  # type: ignore[arg-type]


class ProductData(unittest.TestCase):
    def test_fails_with_the_text_of_the_catalogue_and_is_opened_again(self) -> None:
        update = ump.load(SMALL / "update.json")
        with tempfile.TemporaryDirectory() as folder:
            table = pathlib.Path(folder, "products.tsv")
            table.write_bytes(b"header\n\xff\tname\tx\t\n")
            with self.assertRaises(ump.UpdateMetaDataError) as failure:
                update.components_to_delete(folder)
            self.assertEqual("%s:2: 'x' is not an unsigned 32-bit number" % table,
                             str(failure.exception))
        self.assertEqual({"FE"}, set(update.components_to_delete(PRODUCT_DATA)))

    def test_shows_bytes_that_are_no_text_in_a_failure(self) -> None:
        update = ump.load(SMALL / "update.json")
        with tempfile.TemporaryDirectory() as folder:
            table = pathlib.Path(folder, "products.tsv")
            table.write_bytes(b"header\nc\tn\t\xff\t\n")
            with self.assertRaisesRegex(ump.UpdateMetaDataError, ":2: '\ufffd' is not"):
                update.components_to_delete(folder)


class Stub(unittest.TestCase):
    """The stub names what the module has, with the same parameters."""

    @staticmethod
    def public(names: Any) -> set[str]:
        return {name for name in names if not name.startswith("_") or name == "__version__"}

    def test_names_what_the_module_has(self) -> None:
        stub = ast.parse(pathlib.Path(ump.__file__).with_name("update_metadata_parser.pyi").read_text())
        top: set[str] = set()
        members: dict[str, set[str]] = {}
        for node in stub.body:
            if isinstance(node, (ast.FunctionDef, ast.ClassDef)):
                top.add(node.name)
            elif isinstance(node, ast.AnnAssign) and isinstance(node.target, ast.Name):
                top.add(node.target.id)
            if isinstance(node, ast.ClassDef):
                members[node.name] = {f.name for f in node.body if isinstance(f, ast.FunctionDef)}
        self.assertEqual(self.public(dir(ump)), top)
        self.assertEqual(self.public(dir(ump.UpdateMetaData)), members["UpdateMetaData"])

    def test_has_the_version_of_the_library(self) -> None:
        self.assertRegex(ump.__version__, r"^\d+\.\d+\.\d+$")


class Linting(unittest.TestCase):
    def test_finds_nothing_in_a_sample(self) -> None:
        diagnosis = ump.lint((SMALL / "update.json").read_bytes(), product_data=PRODUCT_DATA)
        self.assertTrue(diagnosis.loads)
        self.assertIsNone(diagnosis.exception)
        self.assertEqual(("", [], {}),
                         (diagnosis.reader_message, diagnosis.findings, diagnosis.omitted))

    def test_says_what_is_wrong_and_where(self) -> None:
        document = b'{"metadata": {"a\xff": 1,\n"a\xff": 2}, "components": 5}'
        diagnosis = ump.lint(document, "faulty.json")
        self.assertFalse(diagnosis.loads)
        with self.assertRaises(ump.UpdateMetaDataError) as failure:
            ump.load_bytes(document, "faulty.json")
        assert diagnosis.exception is not None
        self.assertEqual(str(failure.exception), diagnosis.exception[1])
        finding = next(each for each in diagnosis.findings if each.rule == "repeated-key")
        self.assertEqual(
            ("warning", "duplicate key 'a\ufffd': the first value is used, this one is ignored",
             "remove or rename one of the two", 23, 4, 2, 1, "/metadata/a\ufffd",
             "section 'metadata'"),
            (finding.severity, finding.message, finding.advice, finding.offset, finding.length,
             finding.line, finding.column, finding.pointer, finding.item))
        self.assertEqual([(14, 1, 15, "the value that is used")],
                         [(place.offset, place.line, place.column, place.message)
                          for place in finding.related])

    def test_has_fixes_that_repair_the_document(self) -> None:
        document = make_document().replace(b'""', b'"\xc3\xbc"')
        faulty = document.replace(b'"\xc3\xbc"', b"'\xc3\xbc'")[:-1] + b",}\n"
        fixes = []
        while not (diagnosis := ump.lint(faulty)).loads:
            fix = next(found.fix for found in diagnosis.findings if found.severity == "error")
            assert fix is not None
            fixes.append((fix.replacement, fix.is_safe))
            faulty = faulty[:fix.offset] + fix.replacement + faulty[fix.offset + fix.length:]
        self.assertEqual(document, faulty)
        self.assertEqual([(b'"\xc3\xbc"', False), (b"", True), (b"", True)], fixes)

    def test_has_no_fix_where_the_remedy_is_not_clear(self) -> None:
        self.assertIsNone(ump.lint(b"{").findings[0].fix)

    def test_has_the_message_of_the_text_reader(self) -> None:
        diagnosis = ump.lint(b"{\n]", "faulty.json")
        self.assertEqual(("std::runtime_error", "Error while parsing faulty.json"),
                         diagnosis.exception)
        self.assertIn("(Line 2, Column 1)", diagnosis.reader_message)

    def test_looks_up_products(self) -> None:
        document = make_document(products={"Nobody": {"delete": [], "extract": []}})
        rules = {finding.rule for finding in ump.lint(document, product_data=PRODUCT_DATA).findings}
        self.assertIn("unknown-product", rules)
        self.assertNotIn("unknown-product", {finding.rule for finding in ump.lint(document).findings})


if __name__ == "__main__":
    unittest.main()
