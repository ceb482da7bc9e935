#!/usr/bin/env python3
"""End-to-end tests of the installed zelstr tool.

Installs the build into a staging prefix, then runs the installed tool: the
example of every command's help must print what the help shows; the real
scripts of the corpus go through find, grep, findall, sqlcase, resword,
sysname and plsqlname and are checked against small models written here;
crafted bad input must give a clear message and exit status 2, never a
crash; and a large input must stream through grep, find and sqlcase in
little memory.

usage: e2e.py BUILD_DIR STAGE_DIR CORPUS_DIR
"""
import os
import re
import resource
import subprocess
import sys
import tempfile
import threading
import unittest

BUILD, STAGE, CORPUS = (os.path.abspath(a) for a in sys.argv[1:4])
TOOL = os.path.join(STAGE, "bin", "zelstr")


def zelstr(*args, stdin=b""):
    return subprocess.run([TOOL, *args], input=stdin, capture_output=True, timeout=120)


def scripts(folder):
    d = os.path.join(CORPUS, folder)
    return sorted(os.path.join(d, f) for f in os.listdir(d) if f.endswith(".sql"))


def text_scripts(folder):
    """The scripts the tool can read: UTF-16 ones hold zero bytes."""
    return [p for p in scripts(folder) if b"\0" not in read(p)]


def read(path):
    with open(path, "rb") as f:
        return f.read()


def commands():
    out = zelstr("--help").stdout.decode()
    return re.findall(r"^  (\w+) ", out.split("commands:\n", 1)[1], re.M)


class Installed(unittest.TestCase):
    def test_installed_files(self):
        for path in ["bin/zelstr", "share/man/man1/zelstr.1",
                     "share/bash-completion/completions/zelstr"]:
            self.assertTrue(os.path.exists(os.path.join(STAGE, path)), path)

    def test_every_example_prints_what_its_help_shows(self):
        names = commands()
        self.assertGreaterEqual(len(names), 14)
        env = dict(os.environ, PATH=os.path.dirname(TOOL) + os.pathsep + os.environ["PATH"])
        for name in names:
            help_text = zelstr(name, "--help")
            self.assertEqual(0, help_text.returncode, name)
            text = help_text.stdout.decode()
            self.assertTrue(text.startswith("usage: zelstr " + name), name)
            m = re.search(r"^example:\n  \$ (.*)\n((?:  .*\n)*)", text, re.M)
            self.assertIsNotNone(m, name)
            expected = "".join(line[2:] + "\n" for line in m.group(2).splitlines())
            run = subprocess.run(["bash", "-c", m.group(1)], capture_output=True, env=env)
            self.assertEqual(expected, run.stdout.decode(), name)
            self.assertEqual(b"", run.stderr, name)

    def test_man_page_and_completion(self):
        man = read(os.path.join(STAGE, "share/man/man1/zelstr.1")).decode()
        self.assertTrue(man.startswith(".TH ZELSTR 1"))
        for name in commands():
            self.assertIn('.SS "%s"' % name, man)
        script = os.path.join(STAGE, "share/bash-completion/completions/zelstr")
        probe = ('source "%s"; COMP_WORDS=(zelstr sq); COMP_CWORD=1; _zelstr; echo "${COMPREPLY[*]}";'
                 'COMP_WORDS=(zelstr grep -); COMP_CWORD=2; _zelstr; echo "${COMPREPLY[*]}"') % script
        out = subprocess.run(["bash", "-c", probe], capture_output=True).stdout.decode().splitlines()
        self.assertEqual(["sqlcase", "-o -g -n -c -W --help"], out)


class Corpus(unittest.TestCase):
    def test_find_and_grep_count_the_lines_a_model_counts(self):
        for path in text_scripts("tsql")[:20]:
            lines = read(path).split(b"\n")
            if lines and lines[-1] == b"":
                lines.pop()
            want = sum(1 for l in lines if b"select" in l.lower())
            got = zelstr("find", "-c", "-i", "select", path)
            self.assertEqual(b"%d\n" % want, got.stdout, path)
            want = sum(1 for l in lines if re.search(rb"CREATE +PROC", l.rstrip(b"\r")))
            got = zelstr("grep", "-c", "CREATE +PROC", path)
            self.assertEqual(b"%d\n" % want, got.stdout, path)

    def test_findall_finds_every_overlapping_occurrence(self):
        for path in text_scripts("plsql")[:10]:
            text = read(path)
            want = [i for i in range(len(text)) if text.startswith(b"E", i)]
            got = zelstr("findall", "E", path).stdout.split()
            self.assertEqual(want, [int(x) for x in got], path)

    def test_sqlcase_changes_only_case_and_keeps_what_it_keeps(self):
        for path in scripts("tsql"):
            text = read(path)
            lower = zelstr("sqlcase", "--lower", path)
            if b"\0" in text:  # UTF-16: refused, the library's strings are 8-bit
                self.assertEqual(2, lower.returncode, path)
                self.assertIn(b"binary data", lower.stderr, path)
                continue
            self.assertIn(lower.returncode, (0, 2), path)
            self.assertEqual(text.lower(), lower.stdout.lower(), path)
            # Literals and comments are kept: upper then lower gives lower.
            upper = zelstr("sqlcase", "--upper", path).stdout
            self.assertEqual(lower.stdout, zelstr("sqlcase", "--lower", stdin=upper).stdout, path)

    def test_plsql_names_come_back(self):
        words = set()
        for path in text_scripts("plsql"):
            words.update(re.findall(rb"\b[A-Za-z][A-Za-z0-9_$#]{0,29}\b", read(path)))
        names = b"\n".join(sorted(w.upper() for w in words)) + b"\n"
        source = zelstr("plsqlname", stdin=names)
        self.assertEqual(0, source.returncode)
        back = zelstr("sysname", stdin=source.stdout)
        self.assertEqual(names, back.stdout)
        reserved = zelstr("resword", "--oracle", "152", stdin=names).stdout.splitlines()
        quoted = [l for l in source.stdout.splitlines() if l.startswith(b'"')]
        self.assertEqual(len(quoted), sum(1 for l in reserved if l.endswith(b": reserved")))


class BadInput(unittest.TestCase):
    def check_error(self, args, message, stdin=b""):
        run = zelstr(*args, stdin=stdin)
        self.assertEqual(2, run.returncode, args)  # never a signal (negative)
        self.assertRegex(run.stderr.decode(errors="replace"), message)

    def test_each_bad_input_gets_a_message_and_status_2(self):
        with tempfile.TemporaryDirectory() as d:
            binary = os.path.join(d, "binary.sql")
            with open(binary, "wb") as f:
                f.write(b"SELECT 1\n" + bytes(range(256)) * 4)
            for command in (["find", "x"], ["grep", "x"], ["sqlcase", "--lower"], ["map", "a-z=A-Z"],
                            ["findall", "x"], ["trim"], ["span", "[a-z]"], ["replace", "a", "b"]):
                self.check_error(command + [binary], r"binary data \(a zero byte at offset 9\)")
            self.check_error(["grep", "x", os.path.join(d, "missing.sql")],
                             r"^zelstr grep: cannot open '.*missing.sql': No such file")
        self.check_error(["sqlcase", "--upper"], r"unterminated string literal opened on line 2",
                         stdin=b"SELECT 1\nSELECT 'abc\n")
        self.check_error(["grep", "a(b"], r"^zelstr grep: bad pattern 'a\(b': ")
        self.check_error(["map", "a-z=A-"], r"^zelstr map: bad map definition 'a-z=A-': ")
        self.check_error(["find", "--bogus", "x"], r"unknown option '--bogus'")
        self.check_error(["nothing"], r"unknown command 'nothing'")
        self.check_error(["resword", "--tsql", "5", "x"], r"T-SQL version #5 given to this function is unhandled!")

    def test_nothing_found_is_status_1(self):
        for args in (["find", "absent"], ["grep", "absent"], ["findall", "absent"]):
            self.assertEqual(1, zelstr(*args, stdin=b"text\n").returncode, args)


class Streaming(unittest.TestCase):
    SIZE = 256 << 20

    def test_large_input_streams_in_little_memory(self):
        line = b"SELECT [Name], N'It''s' FROM dbo.T -- done /* x */\n"
        block = line * ((1 << 20) // len(line))
        for args in (["grep", "-c", "dbo[.]T"], ["find", "-c", "dbo.T"], ["sqlcase", "--lower"]):
            p = subprocess.Popen([TOOL, *args], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
            # Drains the output so that the tool never blocks on it.
            drain = threading.Thread(target=lambda: [None for _ in iter(lambda: p.stdout.read(1 << 20), b"")])
            drain.start()
            for _ in range(self.SIZE // len(block)):
                p.stdin.write(block)
            p.stdin.close()
            drain.join()
            p.stdout.close()
            _, status, usage = os.wait4(p.pid, 0)  # this child's own peak memory
            p.returncode = os.waitstatus_to_exitcode(status)
            self.assertEqual(0, p.returncode, args)
            self.assertLess(usage.ru_maxrss, 32 * 1024, args)  # kilobytes


if __name__ == "__main__":
    subprocess.run(["cmake", "--install", BUILD, "--prefix", STAGE], check=True,
                   stdout=subprocess.DEVNULL)
    unittest.main(argv=sys.argv[:1], verbosity=2)
