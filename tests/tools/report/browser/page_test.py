"""A base for tests of report pages, which the command writes and the browser opens."""

import json
import os
import subprocess
import unittest

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../..")
SMALL = os.path.join(ROOT, "examples/documents/small")
REALISTIC = os.path.join(ROOT, "examples/documents/realistic")


class PageTest(unittest.TestCase):
    """Opens pages; after each test, checks that nothing went wrong and that nothing was fetched."""

    tool = None     # the built command
    folder = None   # for the pages and pictures of them
    browser = None
    pages = {}      # the files written so far, by the name of the page

    def open(self, name, document, **how):
        """Opens the page of a document: a folder with product data, or an object for JSON."""
        if name not in self.pages:
            self.pages[name] = self.write_page(name, document)
        self.page = self.pages[name]
        self.browser.open(self.page, **how)

    def write_page(self, name, document):
        page = os.path.join(self.folder, name + ".html")
        source, options = os.path.join(self.folder, name + ".json"), []
        if isinstance(document, str):
            source, options = document + "/update.json", ["--product-data",
                                                          document + "/product-data"]
        else:
            with open(source, "w", encoding="utf-8") as file:
                json.dump(document, file)
        subprocess.run([self.tool, "report", source, "-o", page] + options, check=True)
        return page

    def tearDown(self):
        self.assertEqual(self.browser.complaints(), [])
        self.assertEqual(self.browser.requests(), ["file://" + os.path.abspath(self.page)])

    def texts(self, selector):
        """The texts of the elements."""
        return self.browser.evaluate(
            "[...document.querySelectorAll(%s)].map((element) => element.textContent)"
            % json.dumps(selector))

    def attribute(self, selector, name):
        return self.browser.evaluate("document.querySelector(%s).getAttribute(%s)"
                                % (json.dumps(selector), json.dumps(name)))

    def focused(self):
        """The focused element as a screen reader names it."""
        return self.browser.evaluate("(document.activeElement.getAttribute('aria-label') || "
                                "document.activeElement.textContent)")

    def choose_tab(self, number):
        self.browser.click("document.getElementById('tab-%d')" % number)

    def rows(self, panel):
        """The texts of the cells of the rows that exist."""
        return self.browser.evaluate(
            "[...document.querySelectorAll('#panel-%d tr.row')].map("
            "(row) => [...row.children].map((cell) => cell.textContent))" % panel)

    def search(self, panel, text):
        self.browser.evaluate("document.querySelector('#panel-%d input').focus()" % panel)
        self.browser.evaluate("document.activeElement.select()")
        self.browser.type(text) if text else self.browser.evaluate(
            "(() => { const input = document.activeElement; input.value = ''; "
            "input.dispatchEvent(new Event('input')); })()")

    def count(self, panel):
        return self.texts("#panel-%d [role=status]" % panel)[0]

    def boxes(self):
        """The boxes of the treemap: their labels and areas."""
        return self.browser.evaluate(
            "[...document.querySelectorAll('.box')].map((box) => "
            "[box.getAttribute('aria-label'), box.offsetWidth * box.offsetHeight])")