"""Documents for the page to show."""


def make_document(components, products, files=None):
    """A document from tables: sizes by component and package, component names by product."""
    def release(version, level):
        return {"zelvan_version": "", "date": "", "version": version, "prerelease": False,
                "release": "Fernlight 7", "checksum": "", "description": "", "update": level}
    return {
        "metadata": {"arch": "x86_64", "base": release("7.1.0", 0), "target": release("7.2.0", 3)},
        "components": components,
        "products": products,
        "componentsWithFilesDeleted": files or {},
    }


def extracted(size, unpacked=None):
    return {"size": size, "uncompressedBytes": 3 * size if unpacked is None else unpacked}


def make_large(products, components, packages):
    """Products that each name more components than the one before, each with that many packages."""
    names = ["component%04d" % number for number in range(components)]
    return make_document(
        {name: {"delete": {"package%05d" % number: {"size": 100 + number}
                           for number in range(0, packages, 5)},
                "extract": {"package%05d" % number: extracted(1000 + 7 * number + 13 * place)
                            for number in range(packages)}}
         for place, name in enumerate(names)},
        {"Product %03d" % number: {"delete": names[:1],
                                   "extract": names[:(number + 1) * components // products]}
         for number in range(products)})


def make_replaced(products, packages):
    """One component of packages that every product deletes and extracts."""
    names = ["package%06d" % number for number in range(packages)]
    return make_document(
        {"all": {"delete": {name: {"size": 100} for name in names},
                 "extract": {name: extracted(1000) for name in names}}},
        {"Product %03d" % number: {"delete": ["all"], "extract": ["all"]}
         for number in range(products)})


def make_even(packages):
    """One component of equal packages, none of them large enough to draw."""
    return make_document(
        {"even": {"delete": {}, "extract": {"package%05d" % number: extracted(1000)
                                            for number in range(packages)}}},
        {"Product": {"delete": [], "extract": ["even"]}})


# These have an effect if they are read as markup, script or control.
HOSTILE_NAMES = [
    "<script>document.hostile = true</script>",
    "</script><script>document.hostile = true</script>",
    "<!--<script>",
    "]]>",
    "<img src=x onerror='document.hostile = true'>",
    "&lt;b&gt;&amp;",
    "\" onmouseover=\"document.hostile = true",
    "'; document.hostile = true; '",
    "${document.hostile = true}",
    "line\u2028and\u2029paragraph",
    "turned \u202egnp.exe",
    "marked \ufeffname",
    "nul\u0000, escape\u001b[31m, return\r\n",
    "__proto__",
    "constructor",
    "@CONTENTS@",
    "\U0001f5fa \u00dcbersicht",
    "",
    "a" * 3000,
]


def make_hostile():
    """Every hostile name as a product, a component, a package and a file to delete."""
    document = make_document(
        {name: {"delete": {name: {"size": 5}}, "extract": {name: extracted(1000 + place)}}
         for place, name in enumerate(HOSTILE_NAMES)},
        {name: {"delete": [name], "extract": [name]} for name in HOSTILE_NAMES},
        {name: {name: {"size": 1, "files": [name]}} for name in HOSTILE_NAMES})
    for release in ("base", "target"):
        document["metadata"][release]["release"] = HOSTILE_NAMES[0]
        document["metadata"][release]["version"] = HOSTILE_NAMES[1]
    document["metadata"]["arch"] = HOSTILE_NAMES[4]
    return document


def make_odd():
    """Sizes below zero, at zero and beyond what a sum can hold, and packages with one key."""
    return make_document(
        {"a": {"delete": {"x": {"size": -5}},
               "extract": {"b_c": extracted(700), "nothing": extracted(0), "below": extracted(-7)}},
         "a_b": {"delete": {}, "extract": {"c": extracted(900)}},
         "vast": {"delete": {}, "extract": {"p": extracted(9e18, 9e18), "q": extracted(9e18, 1)}}},
        {"Small": {"delete": ["a"], "extract": ["a", "a_b"]},
         "Vast": {"delete": [], "extract": ["vast"]},
         "Nothing": {"delete": ["a"], "extract": []}})


def make_colliding():
    """Packages of two components with one key; the first one's size counts in each product."""
    return make_document(
        {"a": {"delete": {}, "extract": {"b_c": extracted(700)}},
         "a_b": {"delete": {}, "extract": {"c": extracted(900), "d": extracted(300)}}},
        {"Both": {"delete": [], "extract": ["a", "a_b"]},
         "Second": {"delete": [], "extract": ["a_b"]}})


def make_beyond():
    """Sums beyond 64 bits at both ends, and what lies between."""
    sizes = {"deep": [-9e18, -9e18], "plain": [1000, 24], "large": [4.5e18], "vast": [9e18, 9e18]}
    return make_document(
        {name: {"delete": {}, "extract": {"p%d" % place: extracted(size, 0)
                                          for place, size in enumerate(those)}}
         for name, those in sizes.items()},
        {name.capitalize(): {"delete": [], "extract": [name]} for name in sizes})


def make_wide():
    """The longest figures that the page can show, and names of several lengths."""
    names = ["a", "renderer", "Fernlight Engineering Workbench", "component_with_a_long_name" * 3]
    return make_document(
        {name: {"delete": {name: {"size": -1023 * 2 ** 20}},
                "extract": {name: extracted(-1023 * 2 ** 20, -1e300),
                            "vast": extracted(9e18, 9e18), "vaster": extracted(9e18, 9e18)}}
         for name in names},
        {name: {"delete": names, "extract": names} for name in names},
        {name: {name: {"size": 1, "files": ["folder/" + other for other in names]}}
         for name in names})


def make_empty():
    """A document that updates nothing."""
    return {"metadata": {"arch": "", "base": None, "target": None}, "components": None,
            "products": None, "componentsWithFilesDeleted": None}
