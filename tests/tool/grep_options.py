#!/usr/bin/env python3
"""grep's everyday options of zelstr grep and zelstr find, against GNU grep;
and the inputs' encodings and binary files.

GNU grep (C locale, -E for zelstr grep, -F for zelstr find) is the oracle:
seeded random combinations of the options of output (-v -c -l -L -q -m -H
-h -Z --label -A -B -C -n -o) and of matching (-i -w -x -e -f) run on
scripts of the corpus, alone, several at once and on standard input, and
must print the same bytes with the same exit status.  The patterns are of
the syntax both engines read the same way, and their matches are the same
under leftmost-first and leftmost-longest rules (so that -o agrees).

usage: grep_options.py TOOL CORPUS_DIR [TEST_NAME...]
"""
import os
import random
import subprocess
import sys
import tempfile
import unittest

TOOL, CORPUS = (os.path.abspath(a) for a in sys.argv[1:3])
ENV = dict(os.environ, LC_ALL="C")


def scripts(folder):
    d = os.path.join(CORPUS, folder)
    paths = sorted(os.path.join(d, f) for f in os.listdir(d) if f.endswith(".sql"))
    # (UTF-16 scripts and a UTF-8 mark are read as their UTF-8 text, which
    # GNU grep does not do: the encodings are tested on their own below.)
    return [p for p in paths if b"\0" not in open(p, "rb").read() and
            not open(p, "rb").read().startswith(b"\xef\xbb\xbf")]


REGEXES = ["SELECT", "select", "customer[a-z]*", "^ *END", "[0-9]+", "'[^']*'", "FROM|JOIN",
           "Order(ID|Date)", "^$", "[(]", "a", "[[:upper:]][[:lower:]]+_", "zq_absent", "id"]
# Patterns whose matches may begin or end with a character that is not a
# word character: with -w, GNU grep tries the shorter matches of a place
# that fails the rule (leftmost-longest), the engine the next match.
WORDLESS_EDGES = {"'[^']*'", "[(]", "^ *END"}
STRINGS = ["SELECT", "select", "Customer", "END", "(", "id", "zq_absent", "@", "'", " = ", "a"]
SWITCHES = ["-v", "-c", "-l", "-L", "-q", "-H", "-h", "-Z", "-n", "-o", "-i", "-w", "-x", "-s",
            "--color=always", "--color=always"]
COUNTS = ["-m", "-A", "-B", "-C"]


def random_options(rng):
    options = list(set(rng.sample(SWITCHES, rng.randint(0, 4))))
    options.sort(key=SWITCHES.index)
    # -x with -w is -x (GNU grep's -o then prints an empty line after each
    # match too).
    for one, other in (("-H", "-h"), ("-l", "-L"), ("-x", "-w")):
        if one in options and other in options:
            options.remove(other)  # zelstr refuses the two together
    for name in rng.sample(COUNTS, rng.randint(0, 2)):
        options += [name, str(rng.choice([0, 1, 2, 3, 5]))]
    return options


class AgainstGnuGrep(unittest.TestCase):
    def compare(self, zelstr_args, grep_args, stdin=None, note="", colors=None):
        env = dict(ENV, GREP_COLORS=colors) if colors is not None else ENV
        want = subprocess.run(["grep", *grep_args], input=stdin, capture_output=True, env=env)
        got = subprocess.run([TOOL, *zelstr_args], input=stdin, capture_output=True, timeout=60, env=env)
        self.assertEqual(want.stdout, got.stdout, "%s %s" % (zelstr_args, note))
        self.assertEqual(want.returncode, got.returncode, "%s %s" % (zelstr_args, note))

    def test_random_combinations_on_the_corpus(self):
        rng = random.Random(20261127)
        paths = scripts("tsql")[:12] + scripts("plsql")[:6]
        for _ in range(600):
            options = random_options(rng)
            files = rng.sample(paths, rng.choice([1, 1, 2, 3]))
            if rng.random() < 0.5:
                pattern = rng.choice(REGEXES)
                if pattern in WORDLESS_EDGES and "-w" in options:
                    options.remove("-w")
                self.compare(["grep", *options, pattern, *files], ["-E", *options, pattern, *files])
            else:
                pattern = rng.choice(STRINGS)
                self.compare(["find", *options, pattern, *files], ["-F", *options, pattern, *files])
                self.compare(["grep", "-F", *options, pattern, *files],
                             ["-F", *options, pattern, *files])

    def test_several_patterns_from_e_f_and_lines(self):
        rng = random.Random(7)
        paths = scripts("tsql")[:6]
        with tempfile.TemporaryDirectory() as d:
            listed = os.path.join(d, "patterns.txt")
            with open(listed, "w") as f:
                f.write("INSERT\nDELETE|UPDATE\n")
            empty = os.path.join(d, "empty.txt")
            open(empty, "w").close()
            for sources in (["-e", "SELECT", "-e", "FROM"], ["-f", listed], ["-e", "x", "-f", listed],
                            ["SELECT\nGO"], ["-f", empty]):
                for _ in range(15):
                    options = random_options(rng)
                    path = rng.choice(paths)
                    self.compare(["grep", *options, *sources, path], ["-E", *options, *sources, path])

    def test_standard_input_missing_files_and_labels(self):
        text = open(scripts("tsql")[0], "rb").read()
        for options in (["-H"], ["-H", "--label", "in.sql"], ["-c", "--label=x", "-H"],
                        ["-l", "--label", "x"], ["-L", "--label", "x"], ["-Z", "-l"]):
            self.compare(["grep", *options, "SELECT"], ["-E", *options, "SELECT"], stdin=text)
            self.compare(["grep", *options, "SELECT", "-", "/nonexistent"],
                         ["-E", *options, "SELECT", "-", "/nonexistent"], stdin=text)
        for options in (["-q"], ["-s"], ["-q", "-s"], ["-s", "-c"]):
            for pattern in ("SELECT", "zq_absent"):
                for operands in (["/nonexistent", "-"], ["-", "/nonexistent"]):
                    self.compare(["find", *options, pattern, *operands],
                                 ["-F", *options, pattern, *operands], stdin=text)

    def test_case_insensitive_regular_expressions(self):
        path = scripts("tsql")[1]
        for pattern in ("select", "[a-c]+_id", "[^a-z ]+", "Order(id|date)", "n'"):
            for options in ([], ["-o"], ["-c"], ["-w"], ["-x"]):
                self.compare(["grep", "-i", *options, pattern, path],
                             ["-E", "-i", *options, pattern, path])

    def test_colours_of_grep_colors(self):
        paths = scripts("tsql")[2:4]
        for colors in ("mt=01;32", "ms=4:mc=5:fn=1:ln=33:se=", "ne", "fn=:ln=", "sl=1:cx=2:rv:ms=7",
                       "sl=1:cx=2:mt="):
            for options in (["-n", "-H"], ["-o", "-n"], ["-v", "-C", "1"], ["-c"], ["-l"], ["-Z", "-A1"]):
                self.compare(["grep", "--color=always", *options, "Order(ID|Date)", *paths],
                             ["-E", "--color=always", *options, "Order(ID|Date)", *paths], colors=colors)
                self.compare(["find", "--color=auto", *options, "Customer", *paths],
                             ["-F", "--color=auto", *options, "Customer", *paths], colors=colors)


def run(*args, stdin=None):
    return subprocess.run([TOOL, *args], input=stdin, capture_output=True, timeout=60)


class Encodings(unittest.TestCase):
    """UTF-16 with a mark (either order), UTF-8 with a mark and --encoding
    are decoded before any command sees the text: the results are those of
    the UTF-8 text, which GNU grep and the tool's own passing of lines give."""

    def setUp(self):
        self.dir = tempfile.TemporaryDirectory()
        # Text with characters of 1 to 4 bytes in UTF-8 (a pair of surrogates
        # in UTF-16), long enough to cross several blocks of reading.
        rng = random.Random(3)
        words = ["SELECT", "select", "Größe", "naïve", "€uro", "🙂x", "FROM", "t", "日本"]
        lines = [" ".join(rng.choice(words) for _ in range(rng.randint(0, 12))) for _ in range(40000)]
        self.text = ("\n".join(lines) + "\n").encode("utf-8")

    def tearDown(self):
        self.dir.cleanup()

    def write(self, name, data):
        path = os.path.join(self.dir.name, name)
        with open(path, "wb") as f:
            f.write(data)
        return path

    def test_utf16_and_marked_utf8_read_as_their_utf8_text(self):
        text = self.text.decode("utf-8")
        plain = self.write("plain.sql", self.text)
        for name, data in (("le.sql", b"\xff\xfe" + text.encode("utf-16-le")),
                           ("be.sql", b"\xfe\xff" + text.encode("utf-16-be")),
                           ("bom8.sql", b"\xef\xbb\xbf" + self.text)):
            path = self.write(name, data)
            self.assertEqual(self.text, run("grep", "", path).stdout, name)
            for options in (["-n", "-i", "select"], ["-c", "🙂"], ["-o", "-w", "Größe"], ["-x", "t"]):
                want = subprocess.run(["grep", *options, plain], capture_output=True, env=ENV).stdout
                self.assertEqual(want, run("grep", *options, path).stdout, "%s %s" % (name, options))
                self.assertEqual(want, run("find", *options, path).stdout, "%s %s" % (name, options))
            self.assertEqual(run("sqlcase", "--upper", plain).stdout, run("sqlcase", "--upper", path).stdout)
            self.assertEqual(run("findall", "t", plain).stdout, run("findall", "t", path).stdout)

    def test_a_character_cut_at_the_end_of_a_short_file_is_decoded(self):
        path = self.write("odd.sql", b"\xff\xfeo\x00k\x00\n\x00X")  # a last byte alone
        self.assertEqual("ok\n\ufffd\n".encode(), run("grep", "", path).stdout)

    def test_a_mark_on_the_first_line_is_no_part_of_it(self):
        path = self.write("bom.sql", b"\xef\xbb\xbfCREATE TABLE t\n")
        self.assertEqual(b"1:CREATE TABLE t\n", run("grep", "-n", "^CREATE", path).stdout)
        self.assertEqual(b"0\n", run("grep", "-c", "\xef\xbb\xbf", path).stdout)

    def test_encoding_names_a_decoder(self):
        path = self.write("cp.sql", "caf\u00e9 \u20ac\n".encode("cp1252"))
        self.assertEqual("caf\u00e9 \u20ac\n".encode(), run("grep", "--encoding", "windows-1252", "caf", path).stdout)
        path = self.write("le.sql", "x\u00e9\ny\n".encode("utf-16-le"))  # no mark
        self.assertEqual("x\u00e9\n".encode(), run("grep", "--encoding=UTF-16LE", "x", path).stdout)
        self.assertEqual("x\u00e9\n".encode(), run("sqlcase", "--lower", "--encoding", "UTF-16LE", path).stdout[:4])
        bad = run("grep", "--encoding", "no-such-code", "x", path)
        self.assertEqual(2, bad.returncode)
        self.assertRegex(bad.stderr.decode(), r"^zelstr grep: unknown encoding 'no-such-code' \(a converter's name")


class BinaryFiles(unittest.TestCase):
    def test_a_zero_byte_in_the_first_block_makes_a_binary_file(self):
        with tempfile.TemporaryDirectory() as d:
            path = os.path.join(d, "b.dat")
            with open(path, "wb") as f:
                f.write(b"abc\0def\nxyz\n" + b"line\n" * 100000)
            self.assertEqual(b"Binary file %s matches\n" % path.encode(), run("grep", "xyz", path).stdout)
            self.assertEqual(b"Binary file %s matches\n" % path.encode(), run("find", "-v", "q", path).stdout)
            self.assertEqual(b"Binary file (standard input) matches\n",
                             run("grep", "def", stdin=open(path, "rb").read()).stdout)
            for options, want in ((["-c", "def"], b"1\n"), (["-c", "line"], b"100000\n"),
                                  (["-a", "abc"], b"abc\0def\n"), (["-a", "-c", "def"], b"0\n"),
                                  (["-l", "xyz"], path.encode() + b"\n"), (["zzz"], b"")):
                got = run("grep", *options, path)
                self.assertEqual(want, got.stdout, options)
                self.assertEqual(1 if want == b"" or want == b"0\n" else 0, got.returncode, options)

    def test_a_zero_byte_past_the_first_block_refuses_the_file(self):
        with tempfile.TemporaryDirectory() as d:
            path = os.path.join(d, "late.sql")
            with open(path, "wb") as f:
                f.write(b"x\n" * 300000 + b"\0\n")
            got = run("grep", "-c", "x", path)
            self.assertEqual(2, got.returncode)
            self.assertIn(b"binary data (a zero byte at offset 600000)", got.stderr)


class Trees(unittest.TestCase):
    """-r and -R against GNU grep -r on a tree of the corpus's scripts (GNU
    grep walks in the order the system lists a directory, the tool in the
    order of the names: the lines are compared sorted, and the tool's order
    checked on its own)."""

    @classmethod
    def setUpClass(cls):
        cls.dir = tempfile.TemporaryDirectory()
        root = cls.root = cls.dir.name
        for i, folder in enumerate(("tsql", "plsql")):
            for j, path in enumerate(scripts(folder)[:20]):
                sub = os.path.join(root, folder, "deep" * (j % 3), "s%d" % (j % 4))
                os.makedirs(sub, exist_ok=True)
                with open(path, "rb") as f, open(os.path.join(sub, os.path.basename(path)), "wb") as g:
                    g.write(f.read())
        for hidden in (".git", ".cache"):
            os.makedirs(os.path.join(root, "tsql", hidden))
            with open(os.path.join(root, "tsql", hidden, "x.sql"), "w") as f:
                f.write("SELECT hidden\n")
        with open(os.path.join(root, "plsql", ".hidden.sql"), "w") as f:
            f.write("SELECT hidden\n")

    @classmethod
    def tearDownClass(cls):
        cls.dir.cleanup()

    def both(self, args, gnu_extra=(), cwd=None):
        want = subprocess.run(["grep", "-E", *args, "--exclude=.*", "--exclude-dir=.*", *gnu_extra],
                              capture_output=True, env=ENV, cwd=cwd or self.root)
        got = subprocess.run([TOOL, "grep", *args], capture_output=True, cwd=cwd or self.root)
        self.assertEqual(sorted(want.stdout.splitlines()), sorted(got.stdout.splitlines()), args)
        self.assertEqual(want.returncode, got.returncode, args)
        return got.stdout

    def test_the_walk_reads_what_grep_reads_in_the_order_of_names(self):
        for args in (["-r", "-c", "SELECT"], ["-r", "-n", "-i", "customer", "tsql", "plsql/"],
                     ["-rl", "FROM"], ["-r", "-L", "FROM", "plsql"], ["-r", "-c", "--include=*.sql", "--exclude=C*", "END"],
                     ["-r", "-c", "--exclude-dir=s1", "--exclude-dir=deep*", "END"], ["-r", "-h", "-c", "x", "plsql"]):
            out = self.both(args)
            names = [line.split(b":")[0] for line in out.splitlines()]
            keyed = [n.split(b"/") for n in names]
            if "tsql" not in args and "-h" not in args:  # (operands are read in their order)
                self.assertEqual(sorted(keyed), keyed, args)  # depth first, names in byte order
        got = subprocess.run([TOOL, "grep", "-r", "-c", "--hidden", "hidden", "tsql"], capture_output=True, cwd=self.root)
        self.assertIn(b"tsql/.git/x.sql:1\n", got.stdout)
        self.assertIn(b"tsql/.cache/x.sql:1\n", got.stdout)

    def test_threads_print_what_one_thread_prints(self):
        rng = random.Random(11)
        for _ in range(40):
            options = random_options(rng)
            pattern = rng.choice(REGEXES)
            runs = [subprocess.run([TOOL, "grep", "-r", "-j%d" % j, *options, pattern], capture_output=True,
                                   cwd=self.root, timeout=120) for j in (1, 2, 5)]
            for run in runs[1:]:
                self.assertEqual((runs[0].stdout, runs[0].returncode), (run.stdout, run.returncode),
                                 (options, pattern))
        self.assertEqual(2, subprocess.run([TOOL, "find", "-j0", "x"], capture_output=True).returncode)

    def test_patterns_choose_named_files_and_directories_too(self):
        with tempfile.TemporaryDirectory() as d:
            os.makedirs(os.path.join(d, "t", "a"))
            for name in ("t/a/x.sql", "f1", "-"):
                with open(os.path.join(d, name), "w") as f:
                    f.write("foo\n")
            for args in (["--exclude=*.sql", "foo", "t/a/x.sql", "f1"], ["-r", "--include=*.txt", "foo", "t/a/x.sql", "f1"],
                         ["-r", "--exclude-dir=a", "foo", "t/a"], ["-r", "--exclude=a/*.sql", "foo", "t/a/x.sql", "f1"],
                         ["-r", "--exclude=a/*.sql", "foo", "t"], ["-r", "-c", "foo", "t/"]):
                want = subprocess.run(["grep", *args], capture_output=True, env=ENV, cwd=d)
                got = subprocess.run([TOOL, "grep", *args], capture_output=True, cwd=d)
                self.assertEqual((want.stdout, want.returncode), (got.stdout, got.returncode), args)
            # A file named "-" found in the walk is no standard input.
            got = subprocess.run([TOOL, "grep", "-r", "-c", "foo"], input=b"foo\n", capture_output=True, cwd=d)
            self.assertEqual(b"./-:1\nf1:1\nt/a/x.sql:1\n", got.stdout)

    def test_links_are_followed_with_R_only_and_loops_are_not(self):
        with tempfile.TemporaryDirectory() as d:
            os.makedirs(os.path.join(d, "t", "u"))
            with open(os.path.join(d, "t", "u", "a.sql"), "w") as f:
                f.write("SELECT 1\n")
            os.symlink("..", os.path.join(d, "t", "u", "up"))
            os.symlink(os.path.join(d, "t", "u", "a.sql"), os.path.join(d, "t", "b.sql"))
            got = subprocess.run([TOOL, "grep", "-r", "-c", "SELECT", "t"], capture_output=True, cwd=d)
            self.assertEqual(b"t/u/a.sql:1\n", got.stdout)
            got = subprocess.run([TOOL, "grep", "-R", "-c", "SELECT", "t"], capture_output=True, cwd=d)
            self.assertEqual(b"t/b.sql:1\nt/u/a.sql:1\n", got.stdout)
            self.assertEqual(b"zelstr grep: warning: t/u/up: recursive directory loop\n", got.stderr)
            self.assertEqual(0, got.returncode)
            got = subprocess.run([TOOL, "find", "-r", "-c", "SELECT"], capture_output=True, cwd=os.path.join(d, "t"))
            self.assertEqual(b"u/a.sql:1\n", got.stdout)  # the working directory: no "./"
            # A link -R follows to nothing is a missing file, as for grep.
            os.symlink("nowhere", os.path.join(d, "t", "dangling"))
            got = subprocess.run([TOOL, "grep", "-R", "-c", "SELECT", "t"], capture_output=True, cwd=d)
            self.assertEqual(2, got.returncode)
            self.assertIn(b"zelstr grep: cannot open 't/dangling': No such file or directory\n", got.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], verbosity=1)
