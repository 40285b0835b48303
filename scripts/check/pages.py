#!/usr/bin/env python3
"""Checks what the pages of this project say: their links lead somewhere, what their commands name
exists, and the command lines that they show run.

usage: pages.py TOOL [INSTALLED]

TOOL is the built command. In every Markdown file, it checks the targets of links, with their headings;
scripts; presets of CMake; options UMP_...; and the subcommands and options of update-metadata. Command
lines without a placeholder are run, also those in the command's help; the output that a page shows below
one must be what it prints. INSTALLED is a folder of installed pages, whose links are also followed.

With UMP_UPDATE_GOLDEN in the environment, the output that a page shows is replaced by what the command
prints.
"""

import glob
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile

FENCE = re.compile(r"^```.*?^```", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
HEADING = re.compile(r"^#+ (.*)$", re.MULTILINE)
SCRIPT = re.compile(r"(?<![\w/.-])(?:\./)?((?:scripts|\.ci)/[\w./-]*\w)")
PRESET = re.compile(r"--preset[ =](\w+)")
OPTION = re.compile(r"\bUMP_[A-Z_]+\b")
COMMAND = re.compile(r"update-metadata ([a-z]+)((?: [^\n`]*)?)")
FLAG = re.compile(r"(?<![\w-])--?[a-z][a-z-]*")
PLACEHOLDER = re.compile(r"\[|\b[A-Z]{3,}\b")


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def anchor_of(heading):
    """Returns the anchor of a heading."""
    text = re.sub(r"[`*]", "", heading).strip().lower()
    return re.sub(r"[^\w\- ]", "", text).replace(" ", "-")


def link_problems(path, text):
    for target in LINK.findall(FENCE.sub("", text)):
        if re.match(r"[a-z]+:", target):
            continue
        name, _, anchor = target.partition("#")
        file = os.path.normpath(os.path.join(os.path.dirname(path), name)) if name else path
        if not os.path.exists(file):
            yield "links to %s, which is not there" % target
        elif anchor and anchor not in map(anchor_of, HEADING.findall(FENCE.sub("", read(file)))):
            yield "links to %s, which has no such heading" % target


def name_problems(text, presets, options):
    for script in sorted(set(SCRIPT.findall(text))):
        if not os.path.exists(script):
            yield "names %s, which is not there" % script
    for preset in sorted(set(PRESET.findall(text)) - presets):
        yield "names the preset %s, which does not exist" % preset
    for option in sorted(set(OPTION.findall(text)) - options):
        yield "names %s, which the build does not know" % option


class Tool:
    """The options and subcommands of the built command, according to its help."""

    def __init__(self, path):
        self.path = path
        self.helps = {}

    def help_of(self, subcommand):
        if subcommand not in self.helps:
            run = subprocess.run([self.path, subcommand, "--help"], capture_output=True, text=True,
                                 check=False)
            # For an unknown subcommand, the command prints its general help.
            is_there = "update-metadata %s " % subcommand in run.stdout.partition("Options:")[0]
            self.helps[subcommand] = run.stdout if is_there else None
        return self.helps[subcommand]

    def helps_by_name(self):
        """Returns the general help and the help of every subcommand."""
        general = subprocess.run([self.path, "--help"], capture_output=True, text=True,
                                 check=True).stdout
        listed = re.findall(r"^  (\w+) ", general.partition("Subcommands:")[2], re.MULTILINE)
        return {"update-metadata": general, **{name: self.help_of(name) for name in listed}}

    def problems(self, text):
        for subcommand, arguments in COMMAND.findall(text):
            answer = self.help_of(subcommand)
            if answer is None:
                yield "calls 'update-metadata %s', which is not there" % subcommand
                continue
            known = set(FLAG.findall(answer))
            for flag in FLAG.findall(arguments.split("|")[0]):
                if flag not in known:
                    yield "gives 'update-metadata %s' the option %s" % (subcommand, flag)


class Workplace:
    """A folder with everything that the command lines of the pages name."""

    SMALL = "examples/documents/small"
    FILES = {"tests/golden/tool/diff/next.json": ["new.json", "releases/new.json"],
             "tests/golden/lint/repeated-key/document.json": ["document.json"],
             SMALL + "/update.json": ["update.json", "old.json", "one.json", "another.json",
                                      "releases/old.json", "documents/update.json"]}
    # Replacements for other programs in a pipe with the command; their output is not checked.
    PROGRAMS = {"generate-update": "cat old.json", "jq": "cat", "parallel": "cat"}
    # Commands that may exit with status 1 without having failed.
    ANSWERS_NO = re.compile(r"update-metadata (diff|fmt --check|lint) ")
    # Folders that a page names, and their replacements here.
    FOLDERS = {"/srv/product-data": "product-data", "/opt/fernlight": "fernlight"}

    def __init__(self, tool):
        self.tool = tool
        self.project = os.getcwd()

    def fill(self, folder):
        for name in ("bin", "documents", "fernlight", "product-data", "releases"):
            os.mkdir(os.path.join(folder, name))
        for source, names in self.FILES.items():
            for name in names:
                shutil.copy(source, os.path.join(folder, name))
        # The pages call the products of the small document ED and VI.
        with open(os.path.join(folder, "product-data/products.tsv"), "w", encoding="utf-8") as table:
            table.write(re.sub(r"^F([EV])\t", lambda row: {"E": "ED\t", "V": "VI\t"}[row[1]],
                               read(self.SMALL + "/product-data/products.tsv"), flags=re.MULTILINE))
        os.symlink(os.path.join(self.project, "examples"), os.path.join(folder, "examples"))
        os.symlink(self.tool, os.path.join(folder, "bin/update-metadata"))
        for name, script in self.PROGRAMS.items():
            path = os.path.join(folder, "bin", name)
            with open(path, "w", encoding="utf-8") as program:
                program.write("#!/bin/sh\n%s\n" % script)
            os.chmod(path, 0o755)

    def run(self, line):
        """Runs a command line for a terminal of 80 columns."""
        command = re.sub(r"\S*/update-metadata(?= )", "update-metadata", line)
        for folder, stand_in in self.FOLDERS.items():
            command = command.replace(folder, stand_in)
        with tempfile.TemporaryDirectory() as folder:
            self.fill(folder)
            path = os.path.join(folder, "bin") + ":/usr/bin:/bin"
            return subprocess.run(["bash", "-o", "pipefail", "-c", command], cwd=folder,
                                  env={"PATH": path, "LC_ALL": "C.UTF-8", "COLUMNS": "80"},
                                  text=True, stdin=subprocess.DEVNULL, capture_output=True,
                                  check=False)

    def problems(self, line, shown=None):
        """Yields what is wrong with a command line and the output that the page shows below it."""
        run = self.run(line)
        if run.returncode not in ((0, 1) if self.ANSWERS_NO.search(line) else (0,)):
            yield "shows '%s', which ends with %d: %s" % (line, run.returncode, run.stderr.strip())
        elif shown is not None and run.stdout != shown:
            yield "the output shown below '%s' is not what it prints" % line


def runnable(lines):
    return [line for line in lines if "update-metadata " in line and not PLACEHOLDER.search(line)]


def run_problems(page, text, workplace):
    for line in runnable(re.findall(r"^    (\S.*)$", FENCE.sub("", text), re.MULTILINE)):
        yield from workplace.problems(line)
    for block in FENCE.findall(text):
        for line, shown in re.findall(r"^\$ (.*)\n((?:(?!\$ |```).*\n)*)", block, re.MULTILINE):
            if runnable([line]):
                if "UMP_UPDATE_GOLDEN" in os.environ:
                    replace(page, line, shown, workplace.run(line).stdout)
                else:
                    yield from workplace.problems(line, shown)


def replace(page, line, shown, printed):
    text = read(page)
    with open(page, "w", encoding="utf-8") as file:
        file.write(text.replace("$ %s\n%s" % (line, shown), "$ %s\n%s" % (line, printed)))


def example_problems(help_text, workplace):
    examples = re.search(r"Examples?:\n((?:  .*\n)+)", help_text)
    lines = runnable(examples[1].split("\n")) if examples else []
    if not lines:
        yield "shows no example"
    for line in lines:
        yield from workplace.problems(line.strip())


def commands_of(text):
    """Returns the lines that show commands: in blocks without a language, in indented blocks and in inline code."""
    indented = re.findall(r"^    (.*)$", text, re.MULTILINE)
    fenced = re.findall(r"^\$ (.*)$", text, re.MULTILINE)
    inline = re.findall(r"`(update-metadata [^`\n]*)`", text)
    return "\n".join(indented + fenced + inline)


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    tool = Tool(os.path.abspath(sys.argv[1]))
    installed = os.path.abspath(sys.argv[2]) if len(sys.argv) == 3 else None
    os.chdir(os.path.join(os.path.dirname(os.path.abspath(__file__)), "../.."))
    presets = {preset["name"] for preset in json.loads(read("CMakePresets.json"))["configurePresets"]}
    sources = ["CMakeLists.txt", *glob.glob("cmake/*.cmake"), *glob.glob("bindings/*/CMakeLists.txt")]
    options = set().union(*(OPTION.findall(read(source)) for source in sources))
    # Wine's folders in a build contain links to the root of the file system.
    folders = [name for name in os.listdir() if not name.startswith((".", "build"))]
    pages = sum((glob.glob(name + "/**/*.md", recursive=True) for name in folders), glob.glob("*.md"))
    workplace = Workplace(tool.path)
    problems = []
    for page in pages:
        text = read(page)
        problems += [(page, problem) for problem in
                     [*link_problems(page, text), *name_problems(text, presets, options),
                      *tool.problems(commands_of(text)), *run_problems(page, text, workplace)]]
    for name, help_text in tool.helps_by_name().items():
        problems += [("the help of " + name, problem) for problem in
                     example_problems(help_text, workplace)]
    installed_pages = glob.glob(installed + "/**/*.md", recursive=True) if installed else []
    for page in installed_pages:
        problems += [(page, problem) for problem in link_problems(page, read(page))]
    for place, problem in problems:
        print("%s %s" % (place, problem), file=sys.stderr)
    if problems or not pages or (installed and not installed_pages):
        sys.exit("pages: %d problems in %d pages, %d of them installed"
                 % (len(problems), len(pages) + len(installed_pages), len(installed_pages)))
    print("pages: what %d pages link, name and run is there, and what %d installed ones link"
          % (len(pages), len(installed_pages)))


if __name__ == "__main__":
    main()
