"""Measures how time and memory of every subcommand grow: see scripts/check/command-growth.

command_growth.py COMMAND TEXTS FOLDER [FAMILY...]
"""

import json
import math
import os
import re
import subprocess
import sys

COMMAND, TEXTS, FOLDER = sys.argv[1:4]
MOST_SLOPE = 1.10
MOST_OF_TEXT = 60  # bytes of memory for each byte of the text
MOST_FOR_FINDINGS = 128_000_000
# In megabytes.
SIZES = (0.5, 1, 2, 4)
SMALLER_SIZES = (0.125, 0.25, 0.5)
LARGER_SIZES = (4, 8, 16)
# Smaller figures measure the program itself and the resolution of the clock.
LEAST_SECONDS = 0.05
LEAST_BYTES = 4_000_000
# The keys of these documents are many times as long as the text, and list prints each of them.
WITHOUT_LIST = ("component-name", "long-keys-that-coincide")
MEMORY = os.path.join(FOLDER, "memory")


def document(components="", products="", files=""):
    return ('{"metadata":{"arch":"x","target":null,"base":null},"components":{%s},"products":{%s},'
            '"componentsWithFilesDeleted":{%s}}' % (components, products, files)).encode(
                "utf-8", "surrogateescape")


def packages(names):
    return "{%s}" % ",".join('"%s":{"size":1,"uncompressedBytes":2}' % name for name in names)


def component(name, names):
    return '"%s":{"delete":{},"extract":%s}' % (name, packages(names))


def numbered(name, count):
    return [name + str(number) for number in range(count)]


# Each function makes a document of about `size` bytes.

def escaped_name(size):
    files = ",".join(['"/"'] * (size // 8))
    return document(files='"c":{"\\u0061%s":{"size":1,"files":[%s]}}' % ("b" * (size // 2), files))


def members_of_a_named_component(size):
    members = ",".join('"%s":1' % name for name in numbered("member", size // 28))
    products = ",".join('"%s":{"delete":["c"],"extract":["c"]}' % name
                        for name in numbered("p", size // 80))
    return document('"c":{"delete":{},"extract":{},%s}' % members, products)


# The names are ill-formed, so that all of them are read as the same name.
def names_read_alike(size):
    def name(number):
        return "".join(chr(0xDC80 + (number >> 5 * place) % 32) for place in range(4))

    files = ",".join('"%s":{"q":{"size":1,"files":[]}}' % name(number)
                     for number in range(size // 80))
    return document(component("\ufffd" * 4, numbered("p", size // 90)),
                    '"p":{"delete":[],"extract":["%s"]}' % ("\ufffd" * 4), files)


def long_pointers(size):
    files = ",".join(['"/"'] * (size // 4))
    return document(files='"%s":{"p":{"size":1,"files":[%s]}}' % ("k" * 4000, files))


# Each name continues the one before.
def continued_names(size):
    names = ["_".join("a" * length) for length in range(1, math.isqrt(size // 2))]
    return document(",".join([component(name, ["_"]) for name in names[:-1]] +
                             [component(names[-1], numbered("p", size // 80))]))


def long_keys_that_coincide(size):
    name = "k" * (size // 4)
    return document(component(name, numbered("x_p", size // 180)) + "," +
                    component(name + "_x", numbered("p", size // 180)))


def repeated_names(size):
    return document(",".join([component("c", ["p"])] * (size // 60)))


LINT_FAMILIES = [
    escaped_name, members_of_a_named_component, names_read_alike, long_pointers, continued_names,
    long_keys_that_coincide, repeated_names]


def families():
    """Yields the name of each family and a function that makes a text of so many megabytes."""
    for line in subprocess.check_output([TEXTS, "list"], text=True).splitlines():
        name, megabyte = line.split()
        yield name, lambda size, name=name, megabyte=int(megabyte): subprocess.check_output(
            [TEXTS, name, str(int(size * megabyte))])
    for make in LINT_FAMILIES:
        yield (make.__name__.replace("_", "-"),
               lambda size, make=make: make(int(size * 1_000_000)))


def subcommands(path):
    table = path + ".tsv"
    return {
        "show": ["show", path],
        "show json": ["show", path, "--format", "json"],
        "query": ["query", path],
        "query json": ["query", path, "--format", "json"],
        "plan": ["plan", path, "--product-data", table],
        "plan json": ["plan", path, "--product-data", table, "--format", "json"],
        "diff": ["diff", path, path],
        "diff all": ["diff", os.path.join(FOLDER, "nothing.json"), path],
        "why": ["why", "no_such_package", path, "--product-data", table],
        "list": ["list", path, "--product-data", table],
        "fmt": ["fmt", "--check", path],
        "lint": ["lint", path],
        "lint json": ["lint", path, "--format", "json"],
        "lint sarif": ["lint", path, "--format", "sarif"],
        "report": ["report", path, "-o", "-"]}


def measure(arguments):
    """Returns processor seconds and bytes of memory."""
    # The system counts the memory of the process that starts the command as the command's, so that must be
    # a small one.
    process = subprocess.Popen(["time", "--format=%M", "--output=" + MEMORY, "--quiet", COMMAND, *arguments],
                               stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode not in (0, 1, 2):
        sys.exit(f"{arguments} exited with status {process.returncode}")
    with open(MEMORY) as memory:
        return usage.ru_utime, int(memory.read()) * 1024


def best(arguments):
    runs = [measure(arguments)]
    if runs[0][0] < 0.5:  # short runs vary more
        runs.append(measure(arguments))
    return min(time for time, _ in runs), min(memory for _, memory in runs)


def count_instructions(arguments):
    process = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
                              COMMAND, *arguments], stdin=subprocess.DEVNULL,
                             stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                             errors="replace", check=False)
    return int(re.search(r"Collected : (\d+)", process.stderr)[1])


def slope(sizes, values, least):
    """Returns the slope of the logarithms of the values above the noise, or None for fewer than three."""
    points = [(math.log(size), math.log(value)) for size, value in zip(sizes, values)
              if value >= least]
    if len(points) < 3:
        return None
    middle = [sum(axis) / len(points) for axis in zip(*points)]
    return (sum((x - middle[0]) * (y - middle[1]) for x, y in points) /
            sum((x - middle[0]) ** 2 for x, _ in points))


def write(path, content):
    with open(path, "wb") as out:
        out.write(content)


def write_products(path, text):
    """Writes a table that knows the products of a document."""
    try:
        products = json.loads(text.decode("utf-8", "replace"))["products"] or {}
        names = list(products)
    except (ValueError, KeyError, TypeError, RecursionError):
        names = []
    write(path, "".join("C%d\t%s\t%d\t\n" % (number, name, number)
                        for number, name in enumerate(names)).encode())


class Documents:
    """The documents of a family with their product data, made when they are first needed."""

    def __init__(self, family, make):
        self.family, self.make, self.paths = family, make, {}

    def path(self, size):
        if size not in self.paths:
            path = os.path.join(FOLDER, "%s-%s.json" % (self.family, size))
            text = self.make(size)
            write(path, text)
            write_products(path + ".tsv", text)
            self.paths[size] = path
        return self.paths[size]

    def remove(self):
        for path in self.paths.values():
            os.remove(path)
            os.remove(path + ".tsv")


class Growth:
    """Time and memory of one subcommand for documents of some sizes."""

    def __init__(self, name, documents, floor):
        self.name, self.documents, self.floor = name, documents, floor
        times = self.measure(SIZES)
        self.of_time = slope(SIZES, times, LEAST_SECONDS)
        if (self.of_memory or 0) > MOST_SLOPE:
            # Memory begins to grow in steps, which larger documents hide.
            self.measure(LARGER_SIZES)
        if (self.of_time or 0) > MOST_SLOPE:
            # Other work on the machine takes time, and so does memory beyond the processor's caches.
            # Instructions show growth alone.
            self.of_time = slope(SMALLER_SIZES, [count_instructions(arguments) for arguments in
                                                 self.arguments(SMALLER_SIZES)], 0)
        self.is_too_much = (self.is_over or (self.of_time or 0) > MOST_SLOPE or
                            (self.of_memory or 0) > MOST_SLOPE)

    def arguments(self, sizes):
        return [subcommands(self.documents.path(size))[self.name] for size in sizes]

    def measure(self, sizes):
        runs = [best(arguments) for arguments in self.arguments(sizes)]
        memories = [memory - self.floor for _, memory in runs]
        lengths = [os.path.getsize(self.documents.path(size)) for size in sizes]
        self.of_memory = slope(sizes, memories, LEAST_BYTES)
        # Findings have a separate limit, up to which they may grow in any way.
        self.is_over = self.name.startswith("lint") and any(
            memory > MOST_OF_TEXT * length + MOST_FOR_FINDINGS
            for memory, length in zip(memories, lengths))
        self.length, self.seconds, self.memory = lengths[-1], runs[-1][0], memories[-1]
        return [time for time, _ in runs]

    def row(self):
        shown = ["" if value is None else "%.2f" % value for value in (self.of_time, self.of_memory)]
        return (f"{self.length:9} {self.seconds:8.2f} {shown[0]:>6} "
                f"{self.memory / 1e6:7.0f} {shown[1]:>6} {self.memory / self.length:7.1f}"
                f"{'  TOO MUCH' if self.is_too_much else ''}")


def main():
    os.makedirs(FOLDER, exist_ok=True)
    nothing = os.path.join(FOLDER, "nothing.json")
    write(nothing, document())
    write(nothing + ".tsv", b"")
    floors = {name: best(arguments)[1] for name, arguments in subcommands(nothing).items()}
    wanted = sys.argv[4:]
    failed = False
    print(f"{'family':30} {'subcommand':11} {'text':>9} {'seconds':>8} {'slope':>6} "
          f"{'MB':>7} {'slope':>6} {'B/byte':>7}")
    for family, make in families():
        if wanted and family not in wanted:
            continue
        documents = Documents(family, make)
        for name in floors:
            if name == "list" and family in WITHOUT_LIST:
                continue
            growth = Growth(name, documents, floors[name])
            failed = failed or growth.is_too_much
            print(f"{family:30} {name:11} {growth.row()}", flush=True)
        documents.remove()
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
