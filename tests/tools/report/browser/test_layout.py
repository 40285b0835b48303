"""How the page fits what shows it: a window, a phone, light and dark."""

import os

import documents
from page_test import REALISTIC, SMALL, PageTest


def luminance(colour):
    """Of what the browser tells of a colour: "rgb(27, 32, 39)"."""
    parts = [float(part) / 255 for part in colour[colour.index("(") + 1:-1].split(",")[:3]]
    linear = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4
              for part in parts]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one, other):
    light, dark = sorted((luminance(one), luminance(other)), reverse=True)
    return (light + 0.05) / (dark + 0.05)


class LightAndDark(PageTest):
    def background(self):
        return luminance(self.browser.evaluate("getComputedStyle(document.body).backgroundColor"))

    def test_follow_the_system(self):
        self.open("small", SMALL, dark=False)
        self.assertGreater(self.background(), 0.8)
        self.assertEqual(self.attribute("#theme", "aria-pressed"), "false")
        self.browser.set_dark(True)
        self.browser.settle()
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
