#!/usr/bin/env python3
"""Runs the examples of the documentation against the installed package.

Every C++ block of the README and of docs/ that holds a main() is built as a
user of an install in a folder of their own would build it (the flags of
the pkg-config file, a run path to the library's folder only, no
LD_LIBRARY_PATH) and run; what it prints must be the output block shown
after it ("Output:" and a fenced block, or "prints" and an indented block).
A block that includes <zelstr/zelstr.hpp> is built as C++17, the others as
C++20.  The tool sessions are replayed too: on every page, a paragraph
"Given `FILE`:" and the file's text as an indented block open a session,
which runs to the next heading; each "$ " line of its indented blocks runs
in a folder holding the file, and must print the lines shown under it.

usage: run_examples.py BUILD_DIR STAGE_DIR SOURCE_DIR
"""
import concurrent.futures
import os
import re
import subprocess
import sys
import tempfile
import unittest

BUILD, STAGE, SOURCE = (os.path.abspath(a) for a in sys.argv[1:4])


def libdir():
    return next(os.path.join(STAGE, d) for d in ("lib", "lib64")
                if os.path.isdir(os.path.join(STAGE, d, "pkgconfig")))


def pages():
    docs = os.path.join(SOURCE, "docs")
    return [os.path.join(SOURCE, "README.md")] + sorted(
        os.path.join(docs, f) for f in os.listdir(docs) if f.endswith(".md"))


def indented_block(lines, i):
    """The 4-space-indented block starting at or after line i (blank lines
    before it skipped), without its indent, and the line after it."""
    while i < len(lines) and not lines[i].strip():
        i += 1
    block = []
    while i < len(lines) and (lines[i].startswith("    ") or not lines[i].strip()):
        block.append(lines[i][4:])
        i += 1
    while block and not block[-1].strip():
        block.pop()
    return block, i


def fenced_block(lines, i):
    """The fenced block whose opening fence is at line i."""
    j = i + 1
    while not lines[j].startswith("```"):
        j += 1
    return lines[i + 1:j], j + 1


def examples(path):
    """(name, code, expected output or None) of each C++ example of a page."""
    lines = read(path).split("\n")
    found, i = [], 0
    while i < len(lines):
        if lines[i].strip() != "```cpp":
            i += 1
            continue
        code, i = fenced_block(lines, i)
        if not any(re.match(r"int main\(", l) for l in code):
            continue
        j = i
        while j < len(lines) and not lines[j].strip():
            j += 1
        expected = None
        if j < len(lines) and lines[j].strip() == "Output:":
            j += 1
            while not lines[j].strip():
                j += 1
            expected, i = fenced_block(lines, j)
        elif j < len(lines) and lines[j].strip() == "prints":
            expected, i = indented_block(lines, j + 1)
        name = "%s:%d" % (os.path.relpath(path, SOURCE), i)
        found.append((name, "\n".join(code) + "\n",
                      None if expected is None else "\n".join(expected) + "\n"))
    return found


def tool_sessions(path):
    """(file name, file text, [(command, what it prints)]) of each tool
    session of a page."""
    lines = read(path).split("\n")
    sessions = []
    for start, opening in enumerate(lines):
        m = re.match(r"Given `([\w.]+)`:$", opening)
        if m is None:
            continue
        text, i = indented_block(lines, start + 1)
        commands = []
        while i < len(lines) and not lines[i].startswith("#"):
            if not lines[i].startswith("    "):
                i += 1
                continue
            block, i = indented_block(lines, i)
            for at, line in enumerate(block):
                if not line.startswith("$ "):
                    continue
                shown = []
                for out in block[at + 1:]:
                    if out.startswith("$ "):
                        break
                    shown.append(out + "\n")
                commands.append((line[2:], "".join(shown)))
        sessions.append((m.group(1), "\n".join(text) + "\n", commands))
    return sessions


def addresses_hidden(text):
    """Addresses differ from run to run: they are compared as 0x..."""
    return re.sub(r"0x[0-9a-f]{6,}", "0x...", text)


def read(path):
    with open(path, encoding="utf-8") as f:
        return f.read()


def build_and_run(example, work):
    name, code, expected = example
    stem = os.path.join(work, re.sub(r"\W", "_", name))
    with open(stem + ".cpp", "w") as f:
        f.write(code)
    standard = "c++17" if "zelstr/zelstr.hpp" in code else "c++20"
    env = dict(os.environ, PKG_CONFIG_LIBDIR=os.path.join(libdir(), "pkgconfig"))
    env.pop("LD_LIBRARY_PATH", None)
    flags = subprocess.run(["pkg-config", "--cflags", "--libs", "zelstr32"], env=env,
                           capture_output=True, text=True, check=True).stdout.split()
    build = subprocess.run(["g++", "-std=" + standard, "-Wall", "-Werror", stem + ".cpp", *flags,
                            "-Wl,-rpath," + libdir(), "-o", stem],
                           capture_output=True, text=True, env=env)
    if build.returncode != 0:
        return name, "does not build:\n" + build.stderr
    run = subprocess.run([stem], capture_output=True, text=True, env=env, timeout=60)
    if run.returncode != 0:
        return name, "exits with %d:\n%s" % (run.returncode, run.stderr)
    if expected is not None and addresses_hidden(run.stdout) != addresses_hidden(expected):
        return name, "prints:\n%s\ninstead of:\n%s" % (run.stdout, expected)
    return name, None


class Documentation(unittest.TestCase):
    def test_every_cpp_example_builds_runs_and_prints_its_output(self):
        found = [e for p in pages() for e in examples(p)]
        self.assertGreaterEqual(len(found), 20)
        with tempfile.TemporaryDirectory() as work, \
                concurrent.futures.ThreadPoolExecutor(os.cpu_count() or 2) as pool:
            results = list(pool.map(lambda e: build_and_run(e, work), found))
        failures = ["%s %s" % (n, problem) for n, problem in results if problem is not None]
        self.assertEqual([], failures, "\n\n".join(failures))

    def test_every_tool_session_prints_what_it_shows(self):
        counted = {}
        for path in pages():
            for name, text, commands in tool_sessions(path):
                with tempfile.TemporaryDirectory() as work:
                    with open(os.path.join(work, name), "w") as f:
                        f.write(text)
                    env = dict(os.environ,
                               PATH=os.path.join(STAGE, "bin") + os.pathsep + os.environ["PATH"])
                    env.pop("LD_LIBRARY_PATH", None)
                    for line, shown in commands:
                        # As on a terminal: messages and output in the order written.
                        run = subprocess.run(["bash", "-c", line], cwd=work, env=env, text=True,
                                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
                        self.assertEqual(shown, run.stdout, line)
                page = os.path.relpath(path, SOURCE)
                counted[page] = counted.get(page, 0) + len(commands)
        self.assertGreaterEqual(counted.get("README.md", 0), 8)
        self.assertGreaterEqual(counted.get(os.path.join("docs", "sql.md"), 0), 4)


if __name__ == "__main__":
    subprocess.run(["cmake", "--install", BUILD, "--prefix", STAGE], check=True,
                   stdout=subprocess.DEVNULL)
    unittest.main(argv=sys.argv[:1], verbosity=2)
