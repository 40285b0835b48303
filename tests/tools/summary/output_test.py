#!/usr/bin/env python3
"""Checks what 'show' and 'plan' write for programs.

usage: output_test.py SOURCE_DIR TOOL

Every sample document that the library loads is shown and planned. The output must keep to the schemas
in docs/schemas, and its numbers must be those that this script computes from the document itself.
"""

import glob
import hashlib
import json
import os
import subprocess
import sys

import jsonschema

SMALLEST = -2**63


def first_wins(pairs):
    """An object as the library reads it: of a repeated key the first value."""
    members = {}
    for key, value in pairs:
        members.setdefault(key, value)
    return members


def in_key_order(members):
    return sorted((members or {}).items(), key=lambda member: member[0].encode())


def to_bytes(number):
    """A size as the library holds it."""
    number = int(number)
    return number if SMALLEST <= number < 2**63 else SMALLEST


def fitting(number):
    return number if SMALLEST <= number < 2**63 else None


class Sums:
    """What the products of one document name, computed from the document."""

    def __init__(self, document):
        self.document = document
        self.sizes = {"delete": {}, "extract": {}}
        self.products = [(name, product) for name, product in in_key_order(document["products"])
                         if product["delete"] or product["extract"]]
        for _, product in self.products:
            for action in self.sizes:
                for key, package in self.packages(product, action):
                    self.sizes[action].setdefault(key, package)

    def packages(self, product, action):
        components = self.document["components"] or {}
        for name in product[action]:
            for package, sizes in in_key_order(components.get(name, {}).get(action)):
                yield name + "_" + package, sizes

    def totals(self, products):
        keys = {action: {key for product in products for key, _ in self.packages(product, action)}
                for action in self.sizes}

        def total(action, member):
            return fitting(sum(to_bytes(self.sizes[action][key][member]) for key in keys[action]))

        return {
            "components": len({name for product in products
                               for name in product["delete"] + product["extract"]}),
            "packagesToDelete": len(keys["delete"]),
            "packagesToExtract": len(keys["extract"]),
            "bytesToFetch": total("extract", "size"),
            "bytesUnpacked": total("extract", "uncompressedBytes"),
            "bytesDeleted": total("delete", "size"),
        }

    def files(self):
        files = {}
        for component, packages in in_key_order(self.document["componentsWithFilesDeleted"]):
            for package, content in in_key_order(packages):
                files.setdefault(component + "_" + package, set(content["files"]))
        return files


def run(tool, *arguments):
    done = subprocess.run([tool, *arguments, "--format", "json"], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, check=False)
    return json.loads(done.stdout) if done.returncode == 0 else None


def compare(what, actual, expected):
    if actual != expected:
        sys.exit("%s:\n  written:  %s\n  expected: %s" % (what, actual, expected))


def check(path, shown, planned):
    with open(path, "rb") as file:
        text = file.read()
    for answer in (shown, planned):
        compare(path + ": last member", list(answer.items())[-1],
                ("sha256", hashlib.sha256(text).hexdigest()))
    sums = Sums(json.loads(text, object_pairs_hook=first_wins))
    of_all = sums.totals([product for _, product in sums.products])
    files = sums.files()
    number_of_files = sum(len(paths) for paths in files.values())
    compare(path + ": totals", shown["totals"], {**of_all, "filesToDelete": number_of_files})
    compare(path + ": products",
            sorted(({**product, "baseCode": None} for product in shown["products"]),
                   key=lambda product: product["name"].encode()),
            [{"name": name, "baseCode": None, **sums.totals([product])}
             for name, product in sums.products])
    for action, member in (("delete", "packagesToDelete"), ("extract", "packagesToExtract")):
        names = ("size", "uncompressedBytes") if action == "extract" else ("size",)
        compare(path + ": " + member,
                {package["key"]: [package[name] for name in names] for package in planned[member]},
                {key: [to_bytes(package[name]) for name in names]
                 for key, package in sums.sizes[action].items()})
    compare(path + ": files",
            {package["key"]: set(package["files"]) for package in planned["filesToDelete"]}, files)
    for member in ("bytesToFetch", "bytesUnpacked", "bytesDeleted"):
        compare(path + ": " + member, planned["totals"][member], of_all[member])


# Documents whose names or numbers another reader of JSON takes differently: not well-formed text,
# escapes of half a character, extensions of the grammar.
def is_plain(path):
    try:
        with open(path, encoding="utf-8") as file:
            text = file.read()
        json.loads(text)
    except ValueError:
        return False
    return "qztype" not in text and "\\ud" not in text.lower()


def check_installed(validator, tool):
    """The members that a plan has only for an installation, here for the sources as one."""
    planned = run(tool, "plan", "examples/documents/small/update.json", "--product-data",
                  "examples/documents/small/product-data", "--installed", ".")
    validator.validate(planned)
    compare("files looked for", planned["installed"],
            {"present": 0, "missing": 2, "folder": 0, "outside": 0, "unknown": 0})
    for package in planned["filesToDelete"]:
        compare("states of " + package["key"], (package["states"], package["leadsTo"], package["reasons"]),
                (["missing"] * len(package["files"]), [None] * len(package["files"]),
                 [None] * len(package["files"])))


def main():
    source, tool = sys.argv[1:]
    os.chdir(source)
    validators = {}
    for command in ("show", "plan"):
        with open("docs/schemas/%s.schema.json" % command, encoding="utf-8") as file:
            schema = json.load(file)
        jsonschema.Draft202012Validator.check_schema(schema)
        validators[command] = jsonschema.Draft202012Validator(schema)
    check_installed(validators["plan"], tool)
    recomputed = 0
    paths = glob.glob("examples/documents/*/update.json") + \
        glob.glob("tests/golden/cases/*/document.json")
    for path in sorted(paths):
        shown = run(tool, "show", path, "--top", "1000")
        planned = run(tool, "plan", path, "--product-data", os.path.dirname(path))
        if shown is None or planned is None:
            compare(path + ": loaded by one command only", shown, planned)
            continue
        validators["show"].validate(shown)
        validators["plan"].validate(planned)
        if is_plain(path):
            check(path, shown, planned)
            recomputed += 1
    if recomputed < 15:
        sys.exit("only %d documents were recomputed" % recomputed)
    print("%d documents were recomputed" % recomputed)


if __name__ == "__main__":
    main()
