#!/usr/bin/env python3
"""Tests report pages in a real browser.

    check_report.py TOOL FOLDER [unittest's arguments]

TOOL is the built command; FOLDER is for the pages and pictures of them.
"""

import os
import sys
import unittest

from browser import Browser
from page_test import PageTest
# unittest finds the tests by their names here.
from test_figures import *  # noqa: F401,F403
from test_layout import *   # noqa: F401,F403
from test_many import *     # noqa: F401,F403
from test_names import *    # noqa: F401,F403
from test_use import *      # noqa: F401,F403

if __name__ == "__main__":
    PageTest.tool, PageTest.folder = sys.argv[1:3]
    os.makedirs(PageTest.folder, exist_ok=True)
    with Browser() as PageTest.browser:
        unittest.main(argv=sys.argv[:1] + sys.argv[3:], verbosity=2)
