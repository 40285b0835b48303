"""The page in windows of any width, on a phone, on paper, in light and dark."""

import os
import subprocess

import documents
from page_test import REALISTIC, SMALL, PageTest


def luminance(color):
    """The relative luminance of a color as the browser gives it: "rgb(27, 32, 39)"."""
    parts = [float(part) / 255 for part in color[color.index("(") + 1:-1].split(",")[:3]]
    linear = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4
              for part in parts]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one, other):
    light, dark = sorted((luminance(one), luminance(other)), reverse=True)
    return (light + 0.05) / (dark + 0.05)


# The narrowest and the widest window, and both sides of each change of the layout.
WIDTHS = (320, 400, 640, 641, 700, 768, 769, 800, 900, 901, 1024, 1120, 1121, 1280, 1600, 2000)
# In pixels: narrower names cannot be read.
LEAST_NAME_WIDTH = 200
# The width of A4 and of A5 within the margins that a browser leaves.
PAPER_WIDTHS = (718, 484)

# Lists elements that are cut off or outside their container. Names in rows may be cut off: they end
# in an ellipsis.
FAULTS = """
(() => {
  const faults = [];
  const fault = (kind, element) => faults.push(
      `${kind}: ${element.tagName} ${element.className} "${element.textContent.slice(0, 40)}"`);
  if (document.documentElement.scrollWidth > innerWidth) {
    fault('the page is too wide', document.documentElement);
  }
  const seen = [...document.querySelectorAll(
      'h1, h2, p, dt, dd, th, td, button, input, caption, dl, table, thead, .scroll, .treemap')]
      .filter((element) => element.offsetParent && !element.closest('.unseen, .box'));
  for (const element of seen) {
    const box = element.getBoundingClientRect();
    const around = (element.closest('.scroll') === element ? null : element.closest('.scroll')) ||
                   element.closest('.panel, .figures > div') || document.documentElement;
    const outer = around.getBoundingClientRect();
    if (box.left < outer.left - 1 || box.right > outer.left + around.clientLeft +
                                                 around.clientWidth + 1) {
      fault('outside', element);
    }
    const isName = element.matches('tr.row td:not(.number)');
    if (!isName && element.scrollWidth > element.clientWidth + 1 && element.clientWidth > 0) {
      fault('cut off', element);
    }
  }
  for (const row of document.querySelectorAll('tr.row')) {
    if (row.offsetParent && row.scrollHeight > row.clientHeight + 1) {
      fault('too high', row);
    }
  }
  return faults;
})()
"""


class Widths(PageTest):
    """Every table at every width: names can be read, and nothing is cut off."""

    def check(self, name, document, dark=False):
        self.open(name, document, dark=dark)
        for width in WIDTHS:
            self.browser.resize(width)
            for number in range(4):
                self.choose_tab(number)
                with self.subTest(page=name, width=width, tab=number, dark=dark):
                    self.check_layout(number)

    def check_layout(self, number):
        self.assertEqual(self.browser.evaluate(FAULTS), [])
        for table in ("#panel-%d" % number, "#findings"):
            narrowest = self.browser.evaluate(
                "Math.min(...[...document.querySelectorAll('%s tr.row td:first-child')].map("
                "(cell) => cell.clientWidth))" % table)
            if narrowest is not None:  # there are rows
                self.assertGreaterEqual(narrowest, LEAST_NAME_WIDTH)

    def test_fit_a_release(self):
        self.check("realistic", REALISTIC)

    def test_fit_a_release_in_the_dark(self):
        self.check("realistic", REALISTIC, dark=True)

    def test_fit_long_figures_and_names(self):
        self.check("wide", documents.make_wide())

    def test_fit_headings_with_the_mark_of_their_order(self):
        self.open("wide", documents.make_wide())
        for width in WIDTHS:
            self.browser.resize(width)
            for number in range(4):
                self.choose_tab(number)
                for head in range(len(self.texts("#panel-%d th" % number))):
                    self.browser.evaluate(
                        "document.querySelectorAll('#panel-%d th button')[%d].click()"
                        % (number, head))
                    with self.subTest(width=width, tab=number, head=head):
                        self.assertEqual(self.browser.evaluate(FAULTS), [])


class Print(PageTest):
    def printed(self, name):
        """The text on paper without its white space, as names may take several lines."""
        path = os.path.join(self.folder, name + ".pdf")
        self.browser.print(path)
        text = subprocess.run(["pdftotext", path, "-"], check=True, stdout=subprocess.PIPE).stdout
        return "".join(text.decode().split())

    def test_has_the_names_of_every_table(self):
        for width in (360, 1200):
            for number, title in enumerate(["Products", "Components", "Packages", "Files"]):
                self.open("realistic", REALISTIC, width=width)
                names = self.browser.evaluate(
                    "[products.map((row) => row.name), components.map((row) => row.name),"
                    " packages.map((row) => row.key), listFiles().map((row) => row.path)][%d]"
                    % number)
                names = ["".join(name.split()) for name in names
                         if max(name) < "\u3000"]  # other scripts may lack a font
                self.choose_tab(number)
                text = self.printed("%s-%d" % (title, width))
                self.assertIn(title, text)
                self.assertEqual([name for name in names if name not in text], [])

    def test_has_the_first_rows_of_many_and_says_so(self):
        self.open("even", documents.make_even(100000))
        self.choose_tab(2)
        self.browser.evaluate("document.querySelector('#panel-2 .scroll').scrollTop = 9999")
        self.browser.settle()
        text = self.printed("even")
        self.assertIn("even_package00000", text)
        self.assertIn("even_package00199", text)
        self.assertNotIn("even_package00200", text)
        self.assertIn("Thefirst200of100,000rows", text)
        self.assertGreater(text.count("Unpacked"), 4, "the headings are on every page")
        self.assertLess(len(self.rows(2)), 60)
        self.assertEqual(self.count(2), "100,000 rows")

    def test_cuts_nothing_off(self):
        for name, document in (("realistic", REALISTIC), ("wide", documents.make_wide())):
            self.open(name, document)
            for number in range(4):
                self.choose_tab(number)
                for width in PAPER_WIDTHS:
                    self.browser.set_media(media="print")
                    self.browser.resize(width)
                    self.browser.evaluate("dispatchEvent(new Event('beforeprint'))")
                    with self.subTest(page=name, tab=number, width=width):
                        self.assertEqual(self.browser.evaluate(FAULTS), [])
                        cut = self.browser.evaluate(
                            "[...document.querySelectorAll('#panel-%d tr.row td')].filter((cell) =>"
                            " cell.offsetParent && cell.scrollWidth > cell.clientWidth)"
                            ".map((cell) => cell.textContent)" % number)
                        self.assertEqual(cut, [])
                    self.browser.evaluate("dispatchEvent(new Event('afterprint'))")
                    self.browser.set_media()
                    self.browser.resize(1200)

    def test_fits_the_picture_to_the_paper_without_drawing_it_again(self):
        self.open("realistic", REALISTIC)
        for width in (300, 900):
            # Before the page learns of the new size.
            ends = self.browser.evaluate(
                "(() => { const host = document.getElementById('treemap');"
                "host.style.width = '%dpx';"
                "const left = host.getBoundingClientRect().left;"
                "return Math.max(...[...document.querySelectorAll('.box')].map("
                "(box) => box.getBoundingClientRect().right - left)); })()" % width)
            self.assertAlmostEqual(ends, width, delta=1)

    def test_is_light_whatever_the_screen_is(self):
        self.open("small", SMALL, dark=True)
        for dark in (True, False):
            self.browser.evaluate("document.documentElement.dataset.theme = '%s'"
                                  % ("dark" if dark else "light"))
            self.browser.set_media(dark=True, media="print")
            self.assertGreater(luminance(self.browser.evaluate(
                "getComputedStyle(document.querySelector('.panel')).backgroundColor")), 0.9)
            self.browser.set_media(dark=True)


class LightAndDark(PageTest):
    def background(self):
        return luminance(self.browser.evaluate("getComputedStyle(document.body).backgroundColor"))

    def test_follow_the_system(self):
        self.open("small", SMALL, dark=False)
        self.assertGreater(self.background(), 0.8)
        self.assertEqual(self.attribute("#theme", "aria-pressed"), "false")
        self.browser.set_media(dark=True)
        self.assertLess(self.background(), 0.1)
        self.assertEqual(self.attribute("#theme", "aria-pressed"), "true")

    def test_follow_the_switch_rather_than_the_system(self):
        self.open("small", SMALL, dark=True)
        self.browser.click("document.getElementById('theme')")
        self.assertGreater(self.background(), 0.8)
        self.assertEqual(self.attribute("#theme", "aria-pressed"), "false")
        self.browser.click("document.getElementById('theme')")
        self.assertLess(self.background(), 0.1)

    def test_can_both_be_read(self):
        for dark in (False, True):
            self.open("realistic", REALISTIC, dark=dark)
            self.choose_tab(2)
            self.browser.click("document.querySelector('#panel-2 tr.row')")
            # Each text with the first background behind it that is not transparent.
            pairs = self.browser.evaluate(
                "[...document.querySelectorAll('h1, h2, p, dt, dd, th, td, button, b, i, label, "
                "caption, input')].filter((element) => element.offsetParent && "
                "element.textContent.trim()).map((element) => {"
                "  let behind = element;"
                "  const see = (one) => getComputedStyle(one).backgroundColor;"
                "  while (see(behind) === 'rgba(0, 0, 0, 0)') behind = behind.parentElement;"
                "  return [element.textContent, getComputedStyle(element).color, see(behind)]; })")
            self.assertGreater(len(pairs), 100)
            faint = [pair for pair in pairs if contrast(pair[1], pair[2]) < 4.5]
            self.assertEqual(faint, [])
            self.browser.screenshot(os.path.join(self.folder, "dark.png" if dark else "light.png"))


class OnAPhone(PageTest):
    def setUp(self):
        self.open("realistic", REALISTIC, width=360, height=740, phone=True)

    def test_nothing_is_wider_than_the_screen(self):
        for number in range(4):
            self.choose_tab(number)
            self.assertEqual(self.browser.evaluate("document.documentElement.scrollWidth"), 360)
        self.choose_tab(2)
        self.browser.screenshot(os.path.join(self.folder, "phone.png"))

    def test_rows_are_alike_in_height_and_cut_nothing_off(self):
        for number in range(4):
            self.choose_tab(number)
            heights = self.browser.evaluate(
                "[...document.querySelectorAll('#panel-%d tr.row')].map("
                "(row) => [row.offsetHeight, row.scrollHeight <= row.clientHeight])" % number)
            self.assertTrue(heights)
            self.assertEqual(heights, [[72, True]] * len(heights))
