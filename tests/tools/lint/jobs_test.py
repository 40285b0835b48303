"""Checks that lint writes the same with any number of processes.

jobs_test.py COMMAND SOURCES
"""

import glob
import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

COMMAND, SOURCES = sys.argv[1:3]
FORMATS = ("text", "json", "sarif")
GOLDEN = os.path.join(SOURCES, "tests/golden")
SAMPLE = os.path.join(SOURCES, "examples/documents/small/update.json")
FAULTY = os.path.join(GOLDEN, "lint/many-faults/document.json")
IS_SAMPLED = bool(os.environ.get("UMP_SAMPLED_TESTS"))
FILES = sorted(glob.glob(GOLDEN + "/*/*/document.json"))[::7 if IS_SAMPLED else 1] + [SAMPLE, "gone.json", "/", SAMPLE]


def start(*arguments, stdout=subprocess.PIPE):
    """In a new process group, so that one can look for what is left of it."""
    return subprocess.Popen([COMMAND, "lint", *arguments], stdout=stdout, stderr=subprocess.PIPE,
                            start_new_session=True)


def lint(*arguments, **options):
    process = start(*arguments, **options)
    out, err = process.communicate()
    return process.returncode, out, err


def first_child(process):
    children = "/proc/%d/task/%d/children" % (process.pid, process.pid)
    while True:
        with open(children, encoding="ascii") as file:
            found = file.read().split()
        if found:
            return int(found[0])


def is_left(group):
    try:
        os.killpg(group, 0)
    except ProcessLookupError:
        return False
    return True


class Jobs(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def copies(self, path, count):
        paths = [os.path.join(self.folder, "%d.json" % number) for number in range(count)]
        for copy in paths:
            shutil.copyfile(path, copy)
        return paths

    def test_writes_the_same_with_any_number_of_processes(self):
        self.assertGreater(len(FILES), 14 if IS_SAMPLED else 100)
        faultless = [SAMPLE] * 4
        for form in FORMATS:
            for files in (FILES, FILES[:1], faultless, ["gone.json", "/"]):
                expected = lint("--format", form, *files)
                for jobs in ("1", "2", "3", "7"):
                    with self.subTest(form=form, files=len(files), jobs=jobs):
                        self.assertEqual(lint("--format", form, "--jobs", jobs, *files), expected)

    def test_fixes_the_same_with_any_number_of_processes(self):
        runs = []
        for jobs in ("1", "3"):
            paths = self.copies(FAULTY, 5)
            run = lint("--fix", "--suggested", "--jobs", jobs, *paths)
            contents = []
            for path in paths:
                with open(path, "rb") as file:
                    contents.append(file.read())
            runs.append((run, contents))
        self.assertEqual(runs[0], runs[1])
        self.assertIn(b"was changed by", runs[0][0][2])

    def test_fixes_a_file_that_is_given_twice_in_one_process(self):
        path, other = self.copies(FAULTY, 2)
        again = os.path.join(self.folder, ".", os.path.basename(path))
        status, _, err = lint("--fix", "--suggested", "--jobs", "2", path, again)
        self.assertNotEqual(status, 2)
        self.assertEqual(err.count(b"was changed by"), 1)
        lint("--fix", "--suggested", other)
        with open(path, "rb") as file, open(other, "rb") as expected:
            self.assertEqual(file.read(), expected.read())

    def test_reports_output_that_cannot_be_written_and_leaves_no_process(self):
        files = self.copies(FAULTY, 300)
        for form in FORMATS:
            with self.subTest(form), open("/dev/full", "wb") as full:
                process = start("--format", form, "--jobs", "3", *files, stdout=full)
                err = process.communicate()[1]
                self.assertEqual((process.returncode, err), (
                    1, b"update-metadata: standard output could not be written: No space left on "
                       b"device; the output is incomplete\n"))
                self.assertFalse(is_left(process.pid))

    def test_reports_a_closed_pipe_and_leaves_no_process(self):
        process = start("--jobs", "3", *self.copies(FAULTY, 300))
        process.stdout.read(1)
        process.stdout.close()
        err = process.stderr.read()
        process.stderr.close()
        self.assertEqual(process.wait(), 1)
        self.assertIn(b"standard output could not be written: Broken pipe", err)
        self.assertFalse(is_left(process.pid))

    def test_goes_on_after_a_process_was_killed(self):
        pipe = os.path.join(self.folder, "pipe")
        os.mkfifo(pipe)
        others = self.copies(FAULTY, 3)
        for form in FORMATS:
            with self.subTest(form):
                process = start("--format", form, "--jobs", "2", pipe, *others)
                # The first process waits for the pipe, which nobody writes.
                os.kill(first_child(process), signal.SIGKILL)
                out, err = process.communicate()
                self.assertEqual(process.returncode, 2)
                self.assertEqual(err.decode(), (
                    "the process was ended by signal 9\n"
                    "update-metadata: '%s' was not checked; check it alone\n" % pipe))
                if form == "json":
                    answer = json.loads(out)
                    self.assertEqual([file["readable"] for file in answer["files"]],
                                     [False, True, True, True])
                    self.assertEqual(answer["totals"]["unreadable"], 1)
                elif form == "sarif":
                    run = json.loads(out)["runs"][0]
                    self.assertEqual(len(run["artifacts"]), 4)
                    self.assertFalse(run["invocations"][0]["executionSuccessful"])
                else:
                    self.assertIn(b"\n3 files checked, 1 could not be read: ", out)

    def test_says_what_a_process_that_was_killed_while_it_wrote_leaves(self):
        long, other = self.copies(FAULTY, 2)
        with open(long, "w", encoding="ascii") as file:
            file.write("{%s}" % ",".join(['"a":1'] * 30_000))
        endings = {
            "text": "is not complete; check it alone",
            "json": "breaks off, so the report is not valid JSON; run the command again without "
                    "this file, and check it alone"}
        endings["sarif"] = endings["json"]
        for form in FORMATS:
            with self.subTest(form):
                process = start("--format", form, "--jobs", "2", long, other)
                # More than begins the report. The rest is more than all pipes hold.
                process.stdout.read(200_000)
                os.kill(first_child(process), signal.SIGKILL)
                out, err = process.communicate()
                self.assertEqual((process.returncode, err.decode()), (
                    2, "the process was ended by signal 9\n"
                       "update-metadata: '%s' was not checked, and what is written about it %s\n"
                       % (long, endings[form])))
                self.assertIn(b"\n" + other.encode() if form == "text" else other.encode(), out)

    @unittest.skipIf(IS_SAMPLED, "instruments need memory themselves")
    def test_needs_no_more_memory_for_more_files(self):
        files = self.copies(FAULTY, 5000)

        def kilobytes(count):
            with open(os.devnull, "wb") as nowhere:
                process = os.posix_spawn(
                    COMMAND, [COMMAND, "lint", "--format", "json", "--jobs", "3", *files[:count]],
                    os.environ, file_actions=[(os.POSIX_SPAWN_DUP2, nowhere.fileno(), 1)])
                return os.wait4(process, 0)[2].ru_maxrss

        # All output would be 17 MB.
        self.assertLess(kilobytes(5000), kilobytes(500) + 6_000)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
