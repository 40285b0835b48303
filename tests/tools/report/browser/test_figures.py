"""What the page shows: totals, tables, the picture in words."""

import json
import subprocess

import documents
from page_test import SMALL, PageTest


class SmallSample(PageTest):
    def setUp(self):
        self.open("small", SMALL)

    def test_shows_the_releases(self):
        self.assertEqual(self.texts("h1"), ["Fernlight 7 7.1.0 \u2192 Fernlight 7 7.2.0"])
        self.assertEqual(self.texts("#subtitle"),
                         ["Update level 3 \u00b7 x86_64 \u00b7 update.json"])

    def test_shows_the_totals(self):
        with open(SMALL + "/update.json", encoding="utf-8") as file:
            components = json.load(file)["components"]
        sizes = [package for component in components.values()
                 for package in component["extract"].values()]
        self.assertEqual(self.texts("#figures .exact"), [
            "{:,} bytes".format(sum(package["size"] for package in sizes)),
            "{:,} bytes".format(sum(package["uncompressedBytes"] for package in sizes)),
            "{:,} bytes".format(sum(package["size"] for component in components.values()
                                    for package in component["delete"].values()))])
        self.assertEqual(self.texts("#figures .large"),
                         ["2.4 MiB", "5.6 MiB", "272.0 KiB", "5", "2", "2"])

    def test_names_sums_as_show_does(self):
        sums = ["To fetch", "Unpacked", "Deleted"]
        shown = subprocess.run([self.tool, "show", SMALL + "/update.json"], check=True,
                               stdout=subprocess.PIPE, text=True).stdout
        self.assertRegex(shown, " +".join(["Products", "Delete", "Extract"] + sums))
        self.assertEqual(self.texts("#figures dt")[:3], sums)
        self.assertEqual(self.texts("#panel-0 th")[-3:], sums)
        self.assertEqual(self.texts("#bars table:first-child th"), sums)

    def test_lists_the_products_with_base_codes_and_sums(self):
        self.assertEqual(self.rows(0), [
            ["Fernlight Editor", "FE", "4", "2", "2.4 MiB", "5.6 MiB", "272.0 KiB"],
            ["Fernlight Viewer", "FV", "3", "0", "2.1 MiB", "4.9 MiB", "0 bytes"]])

    def test_lists_components_packages_and_files(self):
        self.choose_tab(1)
        self.assertEqual(self.rows(1), [
            ["core", "2", "2", "1", "2.1 MiB", "4.9 MiB", "72.0 KiB"],
            ["editor", "1", "2", "1", "264.0 KiB", "728.0 KiB", "200.0 KiB"],
            ["viewer", "1", "1", "0", "917 bytes", "2.0 KiB", "0 bytes"]])
        self.choose_tab(2)
        self.assertEqual(sorted(self.rows(2)), [
            ["core_engine", "core", "2", "1.5 MiB", "4.0 MiB", "\u2013"],
            ["core_fonts", "core", "2", "640.0 KiB", "880.0 KiB", "\u2013"],
            ["core_legacy-formats", "core", "1", "\u2013", "\u2013", "72.0 KiB"],
            ["editor_spelling", "editor", "1", "217.0 KiB", "600.0 KiB", "200.0 KiB"],
            ["editor_toolbox", "editor", "1", "47.0 KiB", "128.0 KiB", "\u2013"],
            ["viewer_slideshow", "viewer", "1", "917 bytes", "2.0 KiB", "\u2013"]])
        self.choose_tab(3)
        self.assertEqual(self.rows(3), [["manual/images/tour.png", "editor_manual"],
                                        ["manual/old-index.html", "editor_manual"]])

    def test_draws_products_in_proportion_to_what_they_fetch(self):
        (first, first_area), (second, second_area) = self.boxes()
        self.assertEqual(first,
                         "Fernlight Editor: 2.4 MiB to fetch, 53% of 4.5 MiB, 2 components")
        self.assertEqual(second,
                         "Fernlight Viewer: 2.1 MiB to fetch, 47% of 4.5 MiB, 2 components")
        self.assertAlmostEqual(first_area / second_area, 2498560 / 2229141, delta=0.01)

    def test_describes_each_picture_in_words(self):
        self.assertEqual(self.attribute("#treemap", "aria-label"), "Bytes to fetch: All products")
        self.assertIn("treemap-text", self.attribute("#treemap", "aria-describedby"))
        self.assertEqual(self.texts("#treemap-text"), [
            "Largest of 4.5 MiB drawn: Fernlight Editor 2.4 MiB (53%), Fernlight Viewer 2.1 MiB "
            "(47%). The tables below list everything."])
        self.assertEqual(self.texts("#treemap-status"),
                         ["All products: 4.5 MiB drawn (2.4 MiB to fetch)"])
        self.assertEqual(self.texts("#bars caption"),
                         ["Fernlight Editor (FE)", "Fernlight Viewer (FV)"])
        self.assertEqual(self.texts("#bars td.size"), ["2.4 MiB", "5.6 MiB", "272.0 KiB",
                                                       "2.1 MiB", "4.9 MiB", "0 bytes"])

    def test_says_that_shared_packages_count_once(self):
        self.assertIn("counts once", self.texts("#counting")[0])


class OddNumbers(PageTest):
    def test_are_shown_unchanged(self):
        self.open("odd", documents.make_odd())
        self.assertEqual(self.texts("#figures .large")[:3],
                         ["beyond 64 bits", "7.8 EiB", "-5 bytes"])
        self.choose_tab(2)
        self.assertEqual(sorted(self.rows(2)), [
            ["a_b_c", "a, a_b", "1", "700 bytes", "2.1 KiB", "\u2013"],
            ["a_below", "a", "1", "! -7 bytes", "! -21 bytes", "\u2013"],
            ["a_nothing", "a", "1", "0 bytes", "0 bytes", "\u2013"],
            ["a_x", "a", "2", "\u2013", "\u2013", "! -5 bytes"],
            ["vast_p", "vast", "1", "7.8 EiB", "7.8 EiB", "\u2013"],
            ["vast_q", "vast", "1", "7.8 EiB", "1 byte", "\u2013"]])
        self.search(2, "vast_p")
        self.browser.click("document.querySelector('#panel-2 tr.row')")
        self.assertIn("9,000,000,000,000,000,000 bytes", self.texts("#panel-2 .details dd"))

    def test_that_no_package_can_have_are_marked_explained_and_counted(self):
        self.open("doubtful", documents.make_document(
            {"c": {"delete": {}, "extract": {"a": documents.extracted(5, 5),
                                             "b": documents.extracted(1e300, -2)}}},
            {"P": {"delete": [], "extract": ["c"]}}))
        self.choose_tab(2)
        self.assertEqual(self.rows(2), [
            ["c_a", "c", "1", "5 bytes", "5 bytes", "\u2013"],
            ["c_b", "c", "1", "! -8.0 EiB", "! -2 bytes", "\u2013"]])
        truncated = "A size that does not fit into 64 bits, read as -9223372036854775808."
        self.assertEqual(
            self.browser.evaluate("[...document.querySelectorAll('#panel-2 tr.row')].map("
                             "(row) => [row.children[3].title, row.children[4].title])"),
            [["5 bytes", "5 bytes"], [truncated, "A negative size."]])
        self.browser.click("document.querySelectorAll('#panel-2 tr.row')[1]")
        self.assertEqual(self.texts("#panel-2 .details dd"), [
            "c_b", "c", "-9,223,372,036,854,775,808 bytes", truncated, "-2 bytes",
            "A negative size.", "P"])
        self.assertEqual(self.texts("#tables-note"), [
            "'!' marks doubtful sizes: 1 package with a size that does not fit into 64 bits and "
            "is read as -9223372036854775808. Totals include these sizes."])

    def test_are_drawn_with_the_figures_of_the_tables(self):
        self.open("odd", documents.make_odd())
        self.assertEqual(self.texts("#treemap-status"),
                         ["All products: 15.6 EiB drawn (beyond 64 bits to fetch)"])
        self.assertEqual([label for label, _ in self.boxes()], [
            "Vast: 15.6 EiB drawn (beyond 64 bits to fetch), 100% of 15.6 EiB, 1 component",
            "Small: 700 bytes drawn (693 bytes to fetch), under 1% of 15.6 EiB, 2 components"])

    def test_of_two_packages_with_one_key_are_drawn_once_in_a_product(self):
        self.open("colliding", documents.make_colliding())
        self.assertEqual(self.texts("#figures .large")[0], "1,000 bytes")
        self.assertEqual(self.texts("#treemap-status"),
                         ["All products: 2.0 KiB drawn (1,000 bytes to fetch)"])
        self.assertEqual([label for label, _ in self.boxes()], [
            "Both: 1,000 bytes to fetch, 50% of 2.0 KiB, 2 components",
            "Second: 1,000 bytes to fetch, 50% of 2.0 KiB, 1 component"])
        self.browser.click("document.querySelector('.box')")
        self.assertEqual(sorted(label for label, _ in self.boxes()), [
            "a: 700 bytes to fetch, 70% of 1,000 bytes, 1 package",
            "a_b: 300 bytes drawn (1,000 bytes to fetch), 30% of 1,000 bytes, 2 packages"])

    def test_that_are_none_above_zero_leave_no_picture_and_say_so(self):
        self.open("zero", documents.make_document(
            {"a": {"delete": {}, "extract": {"b": documents.extracted(0)}}},
            {"P": {"delete": [], "extract": ["a"]}}))
        self.assertEqual(self.texts("#treemap"),
                         ["No package to extract has a size above zero."])

    def test_beyond_64_bits_are_named_and_sorted_at_the_ends(self):
        self.open("beyond", documents.make_beyond())
        def fetched():
            return [[row[0], row[4]] for row in self.rows(0)]
        descending = [["Vast", "beyond 64 bits"], ["Large", "3.9 EiB"], ["Plain", "1.0 KiB"],
                      ["Deep", "beyond 64 bits"]]
        self.browser.click("document.querySelectorAll('#panel-0 th button')[4]")
        self.assertEqual(fetched(), descending)
        self.browser.click("document.querySelectorAll('#panel-0 th button')[4]")
        self.assertEqual(fetched(), descending[::-1])

    def test_beyond_64_bits_have_full_bars_or_none(self):
        self.open("beyond", documents.make_beyond())
        bars = self.browser.evaluate(
            "[...document.querySelectorAll('#bars table')].map((table) => ["
            "table.caption.textContent, parseFloat(table.querySelector('.bar span').style.width)])")
        self.assertEqual([name for name, _ in bars], ["Vast", "Large", "Plain", "Deep"])
        for (_, width), expected in zip(bars, [100, 100 * 4.5e18 / 2 ** 63, 0, 0]):
            self.assertAlmostEqual(width, expected, delta=0.01)

    def test_of_an_empty_document_leave_a_page_that_says_so(self):
        self.open("empty", documents.make_empty())
        self.assertEqual(self.texts("h1"), ["no release \u2192 no release"])
        self.assertEqual(self.texts("#treemap"), ["There is nothing to fetch."])
        self.assertEqual(self.texts("#bars"), ["This update has no products."])
        self.assertEqual(self.count(0), "0 rows")
