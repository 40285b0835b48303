#!/usr/bin/env python3
"""Checks what the pages of this project say: their links lead somewhere, and what their commands
name is there.

usage: check_pages.py TOOL

TOOL is the built command. Checked are, in every Markdown file: targets of links, with their headings;
scripts; presets of CMake; options UMP_...; and the subcommands and options of update-metadata.
"""

import glob
import json
import os
import re
import subprocess
import sys

FENCE = re.compile(r"^```.*?^```", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
HEADING = re.compile(r"^#+ (.*)$", re.MULTILINE)
SCRIPT = re.compile(r"(?<![\w/.-])(?:\./)?((?:scripts|\.ci)/[\w./-]*\w)")
PRESET = re.compile(r"--preset[ =](\w+)")
OPTION = re.compile(r"\bUMP_[A-Z_]+\b")
COMMAND = re.compile(r"update-metadata ([a-z]+)((?: [^\n`]*)?)")
FLAG = re.compile(r"(?<![\w-])--?[a-z][a-z-]*")


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def anchor_of(heading):
    """The name by which a heading is linked."""
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
        yield "names the preset %s, which is not there" % preset
    for option in sorted(set(OPTION.findall(text)) - options):
        yield "names %s, which the build does not know" % option


class Tool:
    """What the built command knows, by its own help."""

    def __init__(self, path):
        self.path = path
        self.helps = {}

    def help_of(self, subcommand):
        if subcommand not in self.helps:
            run = subprocess.run([self.path, subcommand, "--help"], capture_output=True, text=True,
                                 check=False)
            self.helps[subcommand] = run.stdout if run.returncode == 0 else None
        return self.helps[subcommand]

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


def commands_of(text):
    """The lines that show commands: blocks without a language, indented ones and code in a line."""
    indented = re.findall(r"^    (.*)$", text, re.MULTILINE)
    fenced = re.findall(r"^\$ (.*)$", text, re.MULTILINE)
    inline = re.findall(r"`(update-metadata [^`\n]*)`", text)
    return "\n".join(indented + fenced + inline)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    tool = Tool(os.path.abspath(sys.argv[1]))
    os.chdir(os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
    presets = {preset["name"] for preset in json.loads(read("CMakePresets.json"))["configurePresets"]}
    sources = ["CMakeLists.txt", *glob.glob("cmake/*.cmake"), *glob.glob("bindings/*/CMakeLists.txt")]
    options = set().union(*(OPTION.findall(read(source)) for source in sources))
    pages = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard", "*.md"],
                           capture_output=True, text=True, check=True).stdout.split()
    found = 0
    for page in pages:
        text = read(page)
        for problem in [*link_problems(page, text), *name_problems(text, presets, options),
                        *tool.problems(commands_of(text))]:
            found += 1
            print("%s %s" % (page, problem), file=sys.stderr)
    if found or not pages:
        sys.exit("check_pages.py: %d problems in %d pages" % (found, len(pages)))
    print("check_pages.py: what %d pages link and name is there" % len(pages))


if __name__ == "__main__":
    main()
