"""Using the page by pointer and by keys."""

import json
import subprocess

from page_test import REALISTIC, SMALL, PageTest


class Zoom(PageTest):
    def setUp(self):
        self.open("small", SMALL)

    def path(self):
        return self.texts("#treemap-path > *")

    def test_goes_in_by_clicks_and_back_by_the_path(self):
        self.browser.click("document.querySelector('.box')")
        self.assertEqual(self.path(), ["All products", "Fernlight Editor"])
        self.browser.click("document.querySelector('.box')")
        self.assertEqual(self.path(), ["All products", "Fernlight Editor", "core"])
        self.assertEqual([label for label, _ in self.boxes()],
                         ["engine: 1.5 MiB to fetch, 71% of 2.1 MiB",
                          "fonts: 640.0 KiB to fetch, 29% of 2.1 MiB"])
        self.browser.click("document.querySelector('#treemap-path button')")
        self.assertEqual(self.path(), ["All products"])
        self.assertEqual(len(self.boxes()), 2)

    def test_goes_in_and_back_by_keys(self):
        self.browser.evaluate("document.querySelector('.box').focus()")
        self.browser.press("ArrowRight")
        self.assertTrue(self.focused().startswith("Fernlight Viewer"), self.focused())
        self.browser.press("ArrowLeft")
        self.assertTrue(self.focused().startswith("Fernlight Editor"), self.focused())
        self.browser.press("End")
        self.assertTrue(self.focused().startswith("Fernlight Viewer"), self.focused())
        self.browser.press("Enter")
        self.assertEqual(self.path(), ["All products", "Fernlight Viewer"])
        self.assertTrue(self.focused().startswith("core"), self.focused())
        self.browser.press("Escape")
        self.assertEqual(self.path(), ["All products"])
        self.assertTrue(self.focused().startswith("Fernlight Viewer"), self.focused())

    def test_goes_from_a_package_to_its_row(self):
        for _ in range(3):
            self.browser.evaluate("document.querySelector('.box').focus()")
            self.browser.press("Enter")
        self.assertEqual(self.texts("[role=tab][aria-selected=true]"), ["Packages (6)"])
        self.assertEqual(self.texts("#panel-2 tr[aria-selected=true] td:first-child"),
                         ["core_engine"])
        self.assertEqual(self.texts("#panel-2 .details dd"), [
            "core_engine", "core", "1,572,864 bytes", "4,194,304 bytes", "Fernlight Editor (FE)",
            "Fernlight Viewer (FV)"])

    def test_describes_the_box_under_the_pointer(self):
        self.browser.evaluate("document.querySelectorAll('.box')[1].dispatchEvent("
                         "new PointerEvent('pointerover', {bubbles: true}))")
        self.assertEqual(self.texts("#treemap-status"),
                         ["Fernlight Viewer: 2.1 MiB to fetch, 47% of 4.5 MiB, 2 components"])


class SearchAndSort(PageTest):
    def setUp(self):
        self.open("realistic", REALISTIC)
        self.choose_tab(2)

    def test_keeps_rows_with_every_word_whatever_the_case(self):
        every = self.count(2)
        self.search(2, "MAP.")
        found = self.rows(2)
        self.assertTrue(found)
        self.assertTrue(all("map." in row[0] for row in found), found)
        self.search(2, "map. ROUTING")
        self.assertTrue(self.rows(2))
        self.assertTrue(all("map.routing" in row[0] for row in self.rows(2)))
        self.search(2, "no such package")
        self.assertEqual(self.rows(2), [])
        self.assertEqual(self.count(2), "0 of " + every)
        self.search(2, "")
        self.assertEqual(self.count(2), every)

    def test_sorts_by_a_column_and_reverses_the_order(self):
        def sizes():
            return self.browser.evaluate(
                "(() => { const rows = [];"
                "for (const row of document.querySelectorAll('#panel-2 tr.row'))"
                "  rows.push(row.children[3].textContent);"
                "return rows; })()")
        self.browser.click("document.querySelectorAll('#panel-2 th button')[3]")
        self.assertEqual(self.texts("#panel-2 th[aria-sort=descending]"), ["To fetch"])
        largest = sizes()[0]
        self.browser.click("document.querySelectorAll('#panel-2 th button')[3]")
        self.assertEqual(self.texts("#panel-2 th[aria-sort=ascending]"), ["To fetch"])
        self.assertEqual(sizes()[0], "\u2013")
        self.assertNotEqual(largest, "\u2013")
        self.browser.click("document.querySelectorAll('#panel-2 th button')[0]")
        keys = [row[0].lower() for row in self.rows(2)]
        self.assertEqual(keys, sorted(keys))

    def test_searches_what_was_sorted(self):
        self.browser.click("document.querySelectorAll('#panel-2 th button')[0]")
        self.browser.click("document.querySelectorAll('#panel-2 th button')[0]")
        self.search(2, "base")
        keys = [row[0].lower() for row in self.rows(2)]
        self.assertTrue(keys)
        self.assertEqual(keys, sorted(keys, reverse=True))


class Keyboard(PageTest):
    def test_reaches_everything_in_order(self):
        self.open("small", SMALL)
        reached = []
        for _ in range(14):
            self.browser.press("Tab")
            reached.append(self.focused().split(":")[0])
        self.assertEqual(reached[:4],
                         ["Dark", "Fernlight Editor", "Products (2)", ""])  # the search
        self.assertEqual(reached[4:12], ["Products", "Product", "Base code", "Extract", "Delete",
                                         "To fetch", "Unpacked", "Deleted"])

    def test_walks_through_tabs_and_rows(self):
        self.open("small", SMALL)
        self.browser.evaluate("document.getElementById('tab-0').focus()")
        self.browser.press("ArrowRight")
        self.browser.press("ArrowRight")
        self.assertEqual(self.focused(), "Packages (6)")
        self.browser.press("Tab")
        self.browser.press("Tab")
        self.browser.press("ArrowDown")
        self.browser.press("ArrowDown")
        chosen = self.attribute("#panel-2 table", "aria-activedescendant")
        self.assertEqual(self.texts("#panel-2 tr[aria-selected=true]"), self.texts("#" + chosen))
        self.assertEqual(self.attribute("#" + chosen, "aria-rowindex"), "3")
        self.browser.press("End")
        self.assertEqual(self.attribute("#panel-2 tr[aria-selected=true]", "aria-rowindex"), "7")


class Findings(PageTest):
    def test_of_a_valid_document_are_none(self):
        self.open("small", SMALL)
        self.assertEqual(self.texts("#findings-text"), ["No problems found."])

    def test_are_counted_listed_and_explained(self):
        self.open("realistic", REALISTIC)
        linting = json.loads(subprocess.run(
            [self.tool, "lint", "--format", "json", "--product-data", REALISTIC + "/product-data",
             REALISTIC + "/update.json"], check=False, stdout=subprocess.PIPE).stdout)
        findings = linting["files"][0]["findings"]
        warnings = sum(finding["severity"] == "warning" for finding in findings)
        self.assertEqual(self.texts("#findings-text"), [
            "%d warnings, %d infos." % (warnings, len(findings) - warnings)])
        rows = self.browser.evaluate(
            "[...document.querySelectorAll('#findings tr.row')].map("
            "(row) => [...row.children].map((cell) => cell.textContent))")
        self.assertGreater(len(rows), 10)
        for row, finding in zip(rows, findings):
            self.assertEqual(row, [
                finding["message"], finding["severity"], finding["rule"],
                "%d:%d" % (finding["line"], finding["column"])])
        self.browser.click("document.querySelector('#findings tr.row')")
        self.assertIn(findings[0]["advice"], self.texts("#findings .details dd"))
        self.assertIn(findings[0]["pointer"], self.texts("#findings .details dd"))

    def test_are_searched_and_sorted_by_severity(self):
        self.open("realistic", REALISTIC)
        self.browser.evaluate("document.querySelector('#findings input').focus()")
        self.browser.type("info")
        severities = set(self.texts("#findings tr.row td:nth-child(2)"))
        self.assertEqual(severities, {"info"})
        self.browser.evaluate("document.activeElement.select()")
        self.browser.type("i")
        self.browser.click("document.querySelectorAll('#findings th button')[1]")
        self.assertEqual(self.texts("#findings tr.row td:nth-child(2)")[0], "warning")
        self.browser.click("document.querySelectorAll('#findings th button')[1]")
        self.assertEqual(self.texts("#findings tr.row td:nth-child(2)")[0], "info")
