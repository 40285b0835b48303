"""Names that would have an effect if they were read as markup or script."""

import documents
from page_test import PageTest


class HostileNames(PageTest):
    def setUp(self):
        self.open("hostile", documents.make_hostile())

    def tearDown(self):
        self.assertIsNone(self.browser.evaluate("document.hostile"))
        super().tearDown()

    def test_are_only_names(self):
        shown = set()
        for number in range(4):
            self.choose_tab(number)
            self.browser.evaluate("document.querySelector('#panel-%d table').focus()" % number)
            for _ in documents.HOSTILE_NAMES:
                self.browser.press("ArrowDown")
                shown.update(self.texts("#panel-%d tr[aria-selected=true] td" % number))
        for name in documents.HOSTILE_NAMES:
            if name.isprintable() and name:
                self.assertIn(name, shown)
                self.assertIn(name + "_" + name, shown)
        self.assertIn("line<U+2028>and<U+2029>paragraph", shown)
        self.assertIn("turned <U+202E>gnp.exe", shown)
        self.assertIn("marked <U+FEFF>name", shown)
        self.assertIn("nul<U+0000>, escape<U+001B>[31m, return<U+000D><U+000A>", shown)
        self.assertIn("(empty)", shown)

    def test_make_no_elements(self):
        self.browser.click("document.querySelector('.box')")
        self.browser.click("document.querySelector('.box')")
        self.assertEqual(self.browser.evaluate("document.scripts.length"), 2)
        self.assertEqual(self.browser.evaluate("document.images.length"), 0)

    def test_do_not_widen_the_page(self):
        self.open("hostile", documents.make_hostile(), width=360, height=740, phone=True)
        self.assertEqual(self.browser.evaluate("document.documentElement.scrollWidth"), 360)
