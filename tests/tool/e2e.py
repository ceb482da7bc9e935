#!/usr/bin/env python3
"""End-to-end tests of the installed zelstr tool.

Installs the build into a staging prefix, then runs the installed tool: the
example of every command's help must print what the help shows; the real
scripts of the corpus go through find, grep, findall, sqlcase, resword,
sysname, plsqlname and hide (and grep and findall in the code only) and are
checked against small models written here, as are like and match on
random lines and patterns;
crafted bad input must give a clear message and exit status 2, never a
crash; and a large input must stream through grep, find and sqlcase in
little memory.

usage: e2e.py BUILD_DIR STAGE_DIR CORPUS_DIR [EMULATOR]

A cross build names the emulator that runs its programs (qemu-user): the
tests then run the installed tool through a script of the tool's name that
starts it under the emulator, so that shell commands find it too.
"""
import gzip
import os
import random
import re
import subprocess
import sys
import tempfile
import threading
import unittest

BUILD, STAGE, CORPUS = (os.path.abspath(a) for a in sys.argv[1:4])
EMULATOR = sys.argv[4] if len(sys.argv) > 4 else None
INSTALLED_TOOL = os.path.join(STAGE, "bin", "zelstr")
TOOL = os.path.join(STAGE, "emulated", "zelstr") if EMULATOR else INSTALLED_TOOL


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


def text_of(path):
    """The text the tool reads: UTF-16 with its mark decoded into UTF-8, and
    a UTF-8 mark left out."""
    data = read(path)
    if data[:2] in (b"\xff\xfe", b"\xfe\xff"):
        return data[2:].decode("utf-16-le" if data[0] == 0xFF else "utf-16-be").encode()
    return data[3:] if data.startswith(b"\xef\xbb\xbf") else data


def commands():
    out = zelstr("--help").stdout.decode()
    return re.findall(r"^  (\w+) ", out.split("commands:\n", 1)[1], re.M)


class Installed(unittest.TestCase):
    def test_installed_files(self):
        for path in ["bin/zelstr", "share/man/man1/zelstr.1.gz",
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
        man = gzip.decompress(read(os.path.join(STAGE, "share/man/man1/zelstr.1.gz"))).decode()
        self.assertTrue(man.startswith(".TH ZELSTR 1"))
        for name in commands():
            self.assertIn('.SS "%s"' % name, man)
        script = os.path.join(STAGE, "share/bash-completion/completions/zelstr")
        probe = ('source "%s"; COMP_WORDS=(zelstr sq); COMP_CWORD=1; _zelstr; echo "${COMPREPLY[*]}";'
                 'COMP_WORDS=(zelstr grep -); COMP_CWORD=2; _zelstr; echo "${COMPREPLY[*]}"') % script
        out = subprocess.run(["bash", "-c", probe], capture_output=True).stdout.decode().splitlines()
        listed = re.findall(r"^  (-[-\w]+)", zelstr("grep", "--help").stdout.decode().split("options:\n")[1],
                            re.M)
        self.assertIn("--word-set", listed)
        self.assertEqual(["sqlcase", " ".join(listed)], out)
        self.assertIn("no command matches, counts,", man)  # the line-end rule


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

    def test_grep_F_prints_what_gnu_grep_prints(self):
        # GNU grep -F in the C locale is the oracle, on the scripts with
        # words taken from them (present ones, their prefixes, absent ones).
        paths = text_scripts("tsql")[:8] + text_scripts("plsql")[:4]
        words = sorted(set(re.findall(rb"[A-Za-z_][A-Za-z0-9_]{2,}", read(paths[0]))))[:40]
        words += [w[:3] for w in words[:10]] + [b"zq_absent", b"Customer", b"END"]
        with tempfile.TemporaryDirectory() as d:
            listed = os.path.join(d, "words.txt")
            with open(listed, "wb") as f:
                f.write(b"\n".join(words) + b"\n")
            env = dict(os.environ, LC_ALL="C")
            for options in (["-F", "-f", listed], ["-F", "-i", "-f", listed], ["-F", "-w", "-f", listed],
                            ["-F", "-o", "-f", listed], ["-F", "-o", "-w", "-i", "-f", listed],
                            ["-F", "-c", "-n", "-e", "select", "-e", "FROM"],
                            ["-F", "-n", "-i", "-e", "end"], ["-F", "-o", "-i", "select\nfrom"]):
                for path in paths:
                    want = subprocess.run(["grep", *options, path], capture_output=True, env=env)
                    got = zelstr("grep", *options, path)
                    self.assertEqual(want.stdout, got.stdout, "%s %s" % (options, path))
                    self.assertEqual(want.returncode, got.returncode, "%s %s" % (options, path))

    def test_findall_f_counts_each_word_as_a_model_counts(self):
        path = text_scripts("tsql")[0]
        text = read(path)
        words = [b"SELECT", b"SEL", b"FROM", b"from", b"zq_absent", b"EL"]
        with tempfile.TemporaryDirectory() as d:
            listed = os.path.join(d, "words.txt")
            with open(listed, "wb") as f:
                f.write(b"\n".join(words) + b"\n")
            for insensitive in (False, True):
                t = text.lower() if insensitive else text
                want = b"".join(b"%d\t%s\n" % (
                    sum(1 for i in range(len(t)) if t.startswith(w.lower() if insensitive else w, i)), w)
                    for w in words)
                got = zelstr("findall", "-f", listed, *(["-i"] if insensitive else []), path)
                self.assertEqual(want, got.stdout, insensitive)

    def test_stretches_of_lines_cut_only_at_line_ends(self):
        # find and grep -F read stretches of lines: matches, CR LF ends,
        # two-byte characters and long lines across the edges of reads
        # (every 256 KiB, from standard input) and of the stretches of a
        # file seen whole (every MiB), a last line without its end, a file
        # that ends on a page's end, an empty input; GNU grep -F, a line at a
        # time, is the oracle.
        rng = random.Random(29)
        pieces = []
        size = 0
        for i, edge in enumerate((1 << 16, 1 << 18, 2 << 18, 3 << 18, 4 << 18, 1 << 20, 2 << 20)):
            piece = b"needle\r\n" if i % 2 == 0 else b"\xc3\xa9needle\n"
            before = 5 + rng.randrange(3) if i % 2 == 0 else 1  # of the piece, before the edge
            filler = b"x" * (edge - size - before)
            pieces += [filler, piece]
            size += len(filler) + len(piece)
        long_line = b"y" * (600 << 10) + b"needle" + b"y" * 100 + b"\n"
        texts = [b"".join(pieces) + long_line + b"last needle",
                 b"".join(pieces) + b"\n" * 1000 + b"NEEDLE\r\n",
                 b"", b"needle", b"\n\nneedle\n", b"x" * 4090 + b"needle",
                 b"a\n" + b"z" * (100 << 20) + b"needle\r\nb\n"]  # a 100 MB line
        env = dict(os.environ, LC_ALL="C")
        with tempfile.TemporaryDirectory() as d:
            path = os.path.join(d, "text")
            for text in texts:
                with open(path, "wb") as f:
                    f.write(text)
                for options in (["-n"], ["-c"], ["-i", "-n"]):
                    want = subprocess.run(["grep", "-F", *options, "needle", path],
                                          capture_output=True, env=env)
                    for command in (["find"], ["grep", "-F"], ["grep"]):
                        if command == ["grep"] and "-i" in options:
                            continue  # the engine has no -i
                        got = zelstr(*command, *options, "needle", path)
                        self.assertEqual(want.stdout, got.stdout, "%s %s" % (command, options))
                        self.assertEqual(want.returncode, got.returncode)
                        if options == ["-n"] and len(text) < (50 << 20):
                            got = zelstr(*command, *options, "needle", stdin=text)
                            self.assertEqual(want.stdout.replace(path.encode() + b":", b""),
                                             got.stdout, "%s from standard input" % command)

    def test_a_zero_byte_refuses_a_file_wherever_it_lies(self):
        # A file seen whole is searched without a pass of its own for zero
        # bytes: the search's end tells where one lies, before, in or after
        # the stretch that holds the matches.
        with tempfile.TemporaryDirectory() as d:
            path = os.path.join(d, "text")
            # (In the first block read, one makes a binary file: see below.)
            for at in ((1 << 20) - 3, (1 << 20) + 5, (3 << 20) + 1):
                text = bytearray((b"needle\n" + b"x" * 56 + b"\n") * ((4 << 20) // 64))
                text[at] = 0
                with open(path, "wb") as f:
                    f.write(text)
                for command in (["find", "-c", "needle"], ["find", "-c", "absent"],
                                ["grep", "-F", "-c", "needle"], ["grep", "-c", "needle"],
                                ["grep", "-c", "need+le"]):
                    run = zelstr(*command, path)
                    self.assertEqual(2, run.returncode, (command, at))
                    self.assertIn(b"binary data (a zero byte at offset %d)" % at, run.stderr)
            # A zero byte after a match in its line, past the first block: the
            # line is not printed.
            with open(path, "wb") as f:
                f.write(b"x\n" * (1 << 20) + b"x needle\0y\nneedle\n")
            for command in (["find", "needle"], ["grep", "needle"]):
                run = zelstr(*command, path)
                self.assertEqual((2, b""), (run.returncode, run.stdout), command)
                self.assertIn(b"binary data (a zero byte at offset %d)" % ((2 << 20) + 8), run.stderr)
            # In the first block: a binary file, whose lines are not printed.
            for at in (0, 9, 4000):
                text = bytearray(b"needle\n" * 100000)
                text[at] = 0
                with open(path, "wb") as f:
                    f.write(text)
                for command in (["find", "needle"], ["grep", "needle"], ["grep", "-F", "needle"]):
                    run = zelstr(*command, path)
                    self.assertEqual((0, b"Binary file %s matches\n" % path.encode(), b""),
                                     (run.returncode, run.stdout, run.stderr), (command, at))

    def test_sqlcase_keeps_a_long_open_literal_and_maps_a_long_open_name(self):
        # Pieces of lines are mapped once they end in code; a part that stays
        # open past 16 MB goes through the stream: either way the result is
        # that of one mapping of the whole code.
        rest = b"abc DEF\n" * (3 << 20)
        for opening, kept in ((b"'open", True), (b"[open", False)):
            text = b"Select A from T;\nSelect " + opening + b"\n" + rest
            run = zelstr("sqlcase", "--lower", stdin=text)
            body = rest if kept else rest.lower()
            self.assertEqual(b"select a from t;\nselect " + (opening if kept else opening.lower()) +
                             b"\n" + body, run.stdout)
            self.assertEqual(2, run.returncode)
            self.assertIn(b"opened on line 2", run.stderr)

    def test_sqlcase_maps_a_name_open_across_many_stretches_whole(self):
        # The name opens in one stretch of input and closes a megabyte on;
        # "]]" in it is an inner "]".
        for opener in (b"[", b"[a]]"):
            text = (b"select x from t\n" * 16000 + b"select " + opener + b"abc\n" +
                    b"def ghi\n" * 100000 + b"jkl] from t\nselect 'it''s'\n")
            run = zelstr("sqlcase", "--upper", stdin=text)
            self.assertEqual(text.upper().replace(b"'IT''S'", b"'it''s'"), run.stdout, opener)

    def test_sqlcase_changes_only_case_and_keeps_what_it_keeps(self):
        for path in scripts("tsql"):
            text = text_of(path)  # UTF-16 ones too, decoded
            lower = zelstr("sqlcase", "--lower", path)
            self.assertIn(lower.returncode, (0, 2), path)
            self.assertEqual(text.lower(), lower.stdout.lower(), path)
            # Literals and comments are kept: upper then lower gives lower.
            upper = zelstr("sqlcase", "--upper", path).stdout
            self.assertEqual(lower.stdout, zelstr("sqlcase", "--lower", stdin=upper).stdout, path)

    def test_code_only_searches_match_where_hide_leaves_code(self):
        # grep prints the lines as written whose hidden copy matches; findall
        # gives the offsets of the hidden text.
        for folder, dialect in (("tsql", "--tsql"), ("plsql", "--oracle")):
            for path in text_scripts(folder)[:15]:
                text, hidden = text_of(path), zelstr("hide", dialect, path).stdout
                self.assertEqual(len(text), len(hidden), path)
                want = [b"%d:%s" % (n, line.rstrip(b"\r"))
                        for n, (line, code) in enumerate(zip(text.split(b"\n"), hidden.split(b"\n")), 1)
                        if b"FROM" in code]
                got = zelstr("grep", "--code-only", dialect, "-n", "FROM", path).stdout
                self.assertEqual(want, [l.rstrip(b"\r") for l in got.split(b"\n")[:-1]], path)
                want = [i for i in range(len(hidden)) if hidden.startswith(b"E", i)]
                got = zelstr("findall", "--code-only", dialect, "E", path).stdout.split()
                self.assertEqual(want, [int(x) for x in got], path)

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
            # (find and grep read it as a binary file: tested with them.)
            for command in (["sqlcase", "--lower"], ["map", "a-z=A-Z"],
                            ["findall", "x"], ["trim"], ["span", "[a-z]"], ["replace", "a", "b"],
                            ["hide"], ["findall", "--code-only", "x"],
                            ["like", "x"], ["match", "x"], ["sub", "x", "y"]):
                self.check_error(command + [binary], r"binary data \(a zero byte at offset 9\)")
            self.check_error(["grep", "x", os.path.join(d, "missing.sql")],
                             r"^zelstr grep: cannot open '.*missing.sql': No such file")
        self.check_error(["sqlcase", "--upper"], r"unterminated string literal opened on line 2",
                         stdin=b"SELECT 1\nSELECT 'abc\n")
        self.check_error(["grep", "a(b"], r"^zelstr grep: bad pattern 'a\(b': ")
        self.check_error(["map", "a-z=A-"], r"^zelstr map: bad map definition 'a-z=A-': ")
        self.check_error(["find", "--bogus", "x"], r"unknown option '--bogus'")
        self.check_error(["nothing"], r"unknown command 'nothing'")
        self.check_error(["resword", "--tsql", "5", "x"], r"T-SQL version 5 is not known")

    def test_nothing_found_is_status_1(self):
        for args in (["find", "absent"], ["grep", "absent"], ["findall", "absent"], ["like", "%absent%"],
                     ["match", "*absent*"], ["sub", "absent", "x"]):
            self.assertEqual(1, zelstr(*args, stdin=b"text\n").returncode, args)


# Every command that reads text, with arguments that find, change or keep
# something on a line of "a" (the input's lines hold "a", "x" and spaces).
TEXT_COMMANDS = [
    ["find", "a"], ["find", "-i", "A"], ["span", "[ a]"], ["replace", "a", "bb"],
    ["trim"], ["trim", "--left"], ["trim", "--right", "--chars", "x"], ["quote"],
    ["unquote", "-c", "x"], ["map", "A-Z=a-z"], ["grep", "a"],
    ["grep", "-o", "a+"], ["findall", "a"], ["sqlcase", "--upper"], ["resword", "--tsql", "15"],
    ["sysname"], ["plsqlname"], ["hide"], ["grep", "--code-only", "a"], ["findall", "--code-only", "a"],
    ["like", "%a"], ["like", "-i", "--escape", "!", "%!A"], ["match", "*a"], ["sub", "a+", "<&>"],
    ["sub", "--all", "a+", "<&>"], ["eol", "--lf"], ["eol", "--crlf"], ["sort"],
    ["sort", "-r", "-u"],
]


def model(args, lines, ends):
    """What a command prints for `lines` (content without line ends) that
    ended with `ends`: the tool's rules written out once more, simply.  The
    lines hold no comment or literal: in the code only, all is code."""
    args = [a for a in args if a != "--code-only"]
    name, out = args[0], []
    picked = lambda l, e: out.append(l + (e or b"\n"))
    for l, e in zip(lines, ends):
        if name == "find":
            if (b"a" in l) if args[1] == "a" else (b"a" in l.lower()):
                picked(l, e)
        elif name == "span":
            n = len(l) - len(l.lstrip(b" a"))
            out.append(b"%d\t%s\n" % (n, l[:n]))
        elif name == "replace":
            out.append(l.replace(b"a", b"bb") + e)
        elif name == "trim":
            chars = args[args.index("--chars") + 1].encode() if "--chars" in args else b" "
            strip = l.lstrip if "--left" in args else l.rstrip if "--right" in args else l.strip
            out.append(strip(chars) + e)
        elif name == "quote":
            out.append(b"'" + l + b"'" + e)
        elif name == "unquote":
            framed = len(l) >= 2 and l[:1] == l[-1:] == b"x"
            out.append((l[1:-1] if framed else l) + e)
        elif name == "hide":
            out.append(l + e)
        elif name in ("map", "sqlcase"):
            out.append(l.upper() + e)
        elif name == "grep" and len(args) == 2:
            if b"a" in l:
                picked(l, e)
        elif name == "grep":
            out.extend(m + b"\n" for m in re.findall(rb"a+", l))
        elif name == "resword":
            out.append(l + b": not reserved\n")
        elif name == "plsqlname":
            out.append(b'"' + l + b'"\n' if l else b"\n")
        elif name == "sysname" and not l:  # every other line here holds a blank or a CR
            out.append(b"\n")
        elif name == "like":  # the blanks that end a line are ignored
            if l.rstrip(b" ").endswith(b"a"):
                picked(l, e)
        elif name == "match":
            if l.endswith(b"a"):
                picked(l, e)
        elif name == "sub":
            out.append(re.sub(rb"a+", rb"<\g<0>>", l, count=0 if "--all" in args else 1) + e)
        elif name == "eol":
            out.append(l + ((b"\r\n" if args[1] == "--crlf" else b"\n") if e else b""))
    if name == "sort":
        ordered = sorted(set(lines) if "-u" in args else lines, reverse="-r" in args)
        out = [l + b"\n" for l in ordered]
    if name == "findall":
        text = b"".join(l + e for l, e in zip(lines, ends))
        out = [b"%d\n" % i for i, c in enumerate(text) if c == ord("a")]
    return b"".join(out)


class Lines(unittest.TestCase):
    def check_commands(self, lines, ends):
        text = b"".join(l + e for l, e in zip(lines, ends))
        for args in TEXT_COMMANDS:
            run = zelstr(*args, stdin=text)
            self.assertIn(run.returncode, (0, 1), (args, run.stderr[:300]))
            if args[0] == "sysname":  # names with blanks have no system form: each refused
                self.assertEqual(sum(1 for l in lines if l), run.stderr.count(b"has no system form"))
            self.assertEqual(model(args, lines, ends), run.stdout, args)

    def test_every_command_keeps_a_100_kb_line_whole(self):
        line = (b"a" * 999 + b" ") * 100
        self.check_commands([b"x" + line + b"x", line], [b"\n", b""])

    def test_every_command_keeps_crlf_and_lf_ends_out_of_the_line(self):
        lines = [b" a  ", b"xa ax", b"", b"a\ra", b"  x a"]
        self.check_commands(lines, [b"\r\n", b"\n", b"\r\n", b"\r\n", b""])
        self.check_commands(lines[:2], [b"\r\n", b"\r\n"])

    def test_the_line_rewriting_commands_over_stretches_of_many_lines(self):
        # Lines of every length up to two blocks of the line-feed scan, some
        # framed by "x", in more text than one stretch of input.
        rng = random.Random(5)
        lines, ends = [], []
        while sum(map(len, lines)) < 400000:
            line = bytes(rng.choice(b"ax \r") for _ in range(rng.randrange(140))).rstrip(b"\r")
            lines.append(b"x" + line + b"x" if rng.random() < 0.2 else line)
            ends.append(rng.choice([b"\n", b"\r\n"]))
        ends[-1] = b""
        text = b"".join(l + e for l, e in zip(lines, ends))
        for args in (["trim"], ["trim", "--left"], ["trim", "--right", "--chars", "x"], ["quote"],
                     ["unquote", "-c", "x"], ["map", "A-Z=a-z"], ["replace", "a", "bb"]):
            self.assertEqual(model(args, lines, ends), zelstr(*args, stdin=text).stdout, args)

    def test_a_map_that_translates_line_ends_keeps_them(self):
        # "_" for LF and CR: a lone CR is text, the CR of a CRLF end is not
        # (also when the block the tool reads ends between the two).
        run = zelstr("map", "_=\n=\r", stdin=b"a\r\nb\rc\n" + b"x" * 65528 + b"\r\nd\r")
        self.assertEqual(b"a\r\nb_c\n" + b"x" * 65528 + b"\r\nd_", run.stdout)


class GrepParts(unittest.TestCase):
    CASES = [  # args, input, output
        (["-o", "ab"], b"ab xab ab\nnone\n", b"ab\nab\nab\n"),
        (["-o", "^a"], b"aaa\n", b"a\n"),
        (["-o", "x*"], b"axxbx\n", b"xx\nx\n"),
        (["-n", "-o", "[0-9]+"], b"a1b22\nc\n333\n", b"1:1\n1:22\n3:333\n"),
        (["-c", "-o", "b"], b"abcb\nb\nc\n", b"2\n"),
        (["-g", "1", "(a)|b"], b"xabab\n", b"a\na\n"),
        (["-g1", "-o", "(a*)b"], b"b ab aab\n", b"a\naa\n"),
        (["-g", "2", "(x)(y)?"], b"xy x xy\n", b"y\ny\n"),
    ]

    def test_every_match_and_group_of_each_line(self):
        for args, text, expected in self.CASES:
            run = zelstr("grep", *args, stdin=text)
            self.assertEqual(expected, run.stdout, args)
            self.assertEqual(0, run.returncode, args)

    def test_a_line_whose_matches_are_all_empty_still_matches(self):
        run = zelstr("grep", "-c", "-o", "x*", stdin=b"abc\n")
        self.assertEqual((0, b"1\n"), (run.returncode, run.stdout))


class Patterns(unittest.TestCase):
    CASES = [  # args, input, output, exit status
        (["like", "usp[_]%"], b"usp_a\nuspa\nUSP_b\n", b"usp_a\n", 0),
        (["like", "-i", "usp[_]%"], b"usp_a\nuspa\nUSP_b\n", b"usp_a\nUSP_b\n", 0),
        (["like", "[^u]%"], b"usp\nx\n\n", b"x\n", 0),
        (["like", "--escape", "!", "10!%"], b"10%\n100\n", b"10%\n", 0),
        (["like", "--escape", "!", "[!]%"], b"!x\nx\n", b"!x\n", 0),  # a set member as it is
        (["like", "-n", "x"], b"x  \r\nx\ty\nx\n", b"1:x  \r\n3:x\n", 0),  # blanks end, a tab does not
        (["like", "a_"], b"a \na\n", b"a \n", 0),  # the blanks the pattern asks for are there
        (["like", "-c", "%"], b"a\r\n\r\nb", b"3\n", 0),
        (["match", "*.[st]ql"], b"a.sql\nb.tql\nc.txt\n.sql\n", b"a.sql\nb.tql\n.sql\n", 0),
        (["match", "-i", "ORD?R*"], b"orders\nord\nOrdEr\n", b"orders\nOrdEr\n", 0),
        (["match", "[!a]*"], b"abc\nbcd\n\n", b"bcd\n", 0),
        (["match", "[*]"], b"*\nx\n", b"*\n", 0),
        (["match", "abc"], b"abc \nabc\r\n", b"abc\r\n", 0),  # MATCH ignores no blank
        (["match", "-c", "-n", "x"], b"y\n", b"0\n", 1),
        (["sub", "dbo\\.([a-z_]+)", "[dbo].[\\1]"], b"x dbo.a dbo.b\n", b"x [dbo].[a] dbo.b\n", 0),
        (["sub", "--all", "dbo\\.([a-z_]+)", "[dbo].[\\1]"], b"x dbo.a dbo.b\n", b"x [dbo].[a] [dbo].[b]\n", 0),
        (["sub", "--all", "x*", "-"], b"axb\n", b"-a--b-\n", 0),
        (["sub", "--all", "(a)|(b)", "[\\2]"], b"ab\n", b"[][b]\n", 0),
        (["sub", "a", "\\&\\\\\\0&"], b"xa\n", b"x&\\aa\n", 0),
        (["sub", "^", "> "], b"a\r\n\nb", b"> a\r\n> \n> b", 0),
        (["sub", "b", "&"], b"abc\nb\n", b"abc\nb\n", 1),  # matches, but no line changed
        (["sub", "z", "y"], b"a\r\nb", b"a\r\nb", 1),
    ]

    def test_whole_line_patterns_and_substitution(self):
        for args, text, out, status in self.CASES:
            run = zelstr(*args, stdin=text)
            self.assertEqual((out, b"", status), (run.stdout, run.stderr, run.returncode), (args, text))

    ERRORS = [  # args, the one message
        (["like", "--escape", "!", "a!"], "zelstr like: bad pattern 'a!': it ends with its escape character '!'"),
        (["sub", "a(", "x"], "zelstr sub: bad pattern 'a(': Unmatched '(' in TCL reg.exp."),
        (["sub", "(a)", "\\2"], "zelstr sub: bad template '\\2': a backslash goes before '&', a backslash "
                                "or the number of a group of the pattern (0 to 1)"),
        (["sub", "a", "x\\"], "zelstr sub: bad template 'x\\': a backslash goes before '&', a backslash "
                              "or the number of a group of the pattern (0 to 0)"),
    ]

    def test_a_bad_pattern_or_template_is_reported_once_before_any_line(self):
        for args, message in self.ERRORS:
            run = zelstr(*args, stdin=b"a\nab\n" * 3)
            self.assertEqual((b"", message + "\n", 2), (run.stdout, run.stderr.decode(), run.returncode), args)
        # -W shows the library's warning first.
        err = zelstr("-W", "sub", "a", "\\x", stdin=b"a\n").stderr.decode().splitlines()
        self.assertEqual(2, len(err))
        self.assertRegex(err[0], r"^warning -?\d+ \(severity \d\): _zstrregsub\(\) - Warning: replacement "
                                 r"template '\\x' is not valid")

    def test_like_and_match_agree_with_a_model_on_random_lines(self):
        # The model: each pattern as a Python expression, matched against the
        # whole line (LIKE: or the line without some of its ending blanks).
        rng = random.Random(20240612)
        like_tokens = [b"a", b"b", b"A", b" ", b"%", b"_", b"[ab]", b"[^a]", b"[a-b]", b"!%", b"!_", b"!["]
        match_tokens = [b"a", b"b", b"A", b" ", b"*", b"?", b"[ab]", b"[^a]", b"[!a]", b"[a-b]"]
        sets = {b"[ab]": rb"[ab]", b"[^a]": rb"[^a]", b"[!a]": rb"[^a]", b"[a-b]": rb"[a-b]"}
        lines = [bytes(rng.choice(b"abAB ") for _ in range(rng.randrange(6))) for _ in range(300)]
        ends = [rng.choice([b"\n", b"\r\n"]) for _ in lines]
        text = b"".join(l + e for l, e in zip(lines, ends))
        for _ in range(40):
            for name, tokens in (("like", like_tokens), ("match", match_tokens)):
                pattern = [rng.choice(tokens) for _ in range(rng.randrange(1, 5))]
                expression = b"".join(rb".*" if t in (b"%", b"*") else rb"." if t in (b"_", b"?") else
                                      sets[t] if t in sets else re.escape(t[-1:]) for t in pattern)
                for insensitive in (False, True):
                    rx = re.compile(expression, re.S | (re.I if insensitive else 0))
                    keep = (lambda l: any(rx.fullmatch(l[:i]) for i in range(len(l.rstrip(b" ")), len(l) + 1))) \
                        if name == "like" else (lambda l: rx.fullmatch(l) is not None)
                    want = b"".join(l + e for l, e in zip(lines, ends) if keep(l))
                    args = [name] + (["-i"] if insensitive else []) + (["--escape", "!"] if name == "like" else [])
                    run = zelstr(*args, b"".join(pattern).decode(), stdin=text)
                    self.assertEqual((want, 0 if want else 1), (run.stdout, run.returncode), (args, pattern))


class Hide(unittest.TestCase):
    CASES = [  # args, input, output, exit status
        (["--fill", "."], b"SELECT 'a''b' -- c\r\nFROM t /* x\r\ny */\n",
         b"SELECT '....' ....\r\nFROM t ....\r\n....\n", 0),
        ([], b"x -- y\n", b"x     \n", 0),  # the filler is a blank
        (["--fill", "."], b"-- a\rb\nx", b"......\nx", 0),  # a lone CR is no line end
        (["--fill", "."], b"/* a /* b */ c */ x", b"................. x", 0),
        (["--fill", "."], b'"a b" [c d]', b'"..." [c d]', 0),
        (["--quoted-id", "--fill", "."], b'"a b" [c d]', b'"a b" [c d]', 1),
        (["--quoted-id", "--names", "--fill", "."], b'"a b" [c]]d]', b'"..." [....]', 0),
        (["--keep-strings", "--fill", "."], b"'a' -- b\n", b"'a' ....\n", 0),
        (["--quotes", "--fill", "."], b"x N'ab' y", b"x ..... y", 0),
        (["--fill", "-"], b"--\n", b"--\n", 0),  # hidden, though it looks the same
        (["--oracle", "--fill", "."], b"q'{a'b}' \"n\" N'c' /* /* */ x", b"q'{...}' \"n\" N'.' ........ x", 0),
        (["--oracle", "--names", "--fill", "."], b'"n" x', b'"." x', 0),
        (["--commands", "--fill", "."], b"SELECT 1\nGO\n:setvar x 'y\nGO 2 -- z\n",
         b"SELECT 1\n..\n............\n.........\n", 0),
        (["--oracle", "--commands", "--fill", "."], b"REM it's\nUPDATE t\nSET a = 1;\nSET ECHO ON\n/\n",
         b"........\nUPDATE t\nSET a = 1;\n...........\n.\n", 0),
    ]

    def test_what_each_option_hides(self):
        for args, text, out, status in self.CASES:
            run = zelstr("hide", *args, stdin=text)
            self.assertEqual((out, b"", status), (run.stdout, run.stderr, run.returncode), (args, text))

    OPEN = [  # args, input, what the message says is open, where and what became of it
        ([], b"SELECT 1\nSELECT 'abc\n", "string literal opened on line 2 (hidden"),
        ([], b"x /* a /* b */\n\n", "block comment opened on line 1 (hidden"),
        ([], b"x\n[a\nb", "delimited name opened on line 2 (kept as it is"),
        (["--keep-strings"], b"'a\n-- b", "string literal opened on line 1 (kept as it is"),
        (["--oracle"], b"a\nb \"c", "delimited name opened on line 2 (kept as it is"),
        ([], b":setvar x 'y\nGO\n", "string literal opened on line 1 (hidden"),
    ]

    def test_a_part_not_closed_is_printed_then_reported(self):
        for args, text, message in self.OPEN:
            run = zelstr("hide", *args, stdin=text)
            self.assertEqual(2, run.returncode, text)
            self.assertEqual(len(text), len(run.stdout), text)
            self.assertEqual("zelstr hide: (standard input): unterminated %s to the end)\n" % message,
                             run.stderr.decode(), text)
        # Ends that close what they hold: a command line, a last line comment.
        for args, text in ((["--commands"], b":setvar x 'y\nGO\n"), ([], b"x -- y")):
            run = zelstr("hide", *args, stdin=text)
            self.assertEqual((0, b""), (run.returncode, run.stderr), text)


class CodeOnly(unittest.TestCase):
    GREP = [  # args, input, output, exit status
        (["-o", "FROM [a-z]+"], b"-- FROM x\nSELECT 'FROM y' FROM z /* FROM w */\n", b"FROM z\n", 0),
        (["-n", "b"], b"/* a\nb */ b\n", b"2:b */ b\n", 0),  # the line as written
        (["-c", "x"], b"'x\nx'\nx\n", b"1\n", 0),
        (["-n", "y"], b"x -- y\r\ny\r\n", b"2:y\r\n", 0),
        (["--oracle", "-o", "'.*'"], b"SELECT q'[it's]' x\n", b"'[it's]'\n", 0),  # matches as written
        (["-c", "b"], b"a /* /* */ b */\n", b"0\n", 1),
        (["--oracle", "-c", "b"], b"a /* /* */ b */\n", b"1\n", 0),
        (["Col"], b'SELECT "Col"\n', b"", 1),
        (["--quoted-id", "Col"], b'SELECT "Col"\n', b'SELECT "Col"\n', 0),
        (["-g", "1", "FROM +(dbo)"], b"SELECT 1 FROM /* x */ dbo.t\n", b"dbo\n", 0),
    ]

    def test_grep_matches_in_code_and_prints_the_text_as_written(self):
        for args, text, out, status in self.GREP:
            run = zelstr("grep", "--code-only", *args, stdin=text)
            self.assertEqual((out, b"", status), (run.stdout, run.stderr, run.returncode), args)

    def test_findall_gives_the_offsets_of_code(self):
        run = zelstr("findall", "--code-only", "x", stdin=b"x 'x' -- x\n/* x */ x")
        self.assertEqual((b"0\n19\n", 0), (run.stdout, run.returncode))
        run = zelstr("findall", "--code-only", "--oracle", "-i", "--no-overlap", "aa", stdin=b"AAA q'[aa]' aaaa")
        self.assertEqual(b"0\n12\n14\n", run.stdout)

    def test_a_part_not_closed_is_a_notice(self):
        run = zelstr("grep", "--code-only", "a", stdin=b"a 'b\na")
        self.assertEqual((0, b"a 'b\n"), (run.returncode, run.stdout))
        self.assertEqual(b"zelstr grep: (standard input): unterminated string literal opened on line 1 "
                         b"(hidden to the end)\n", run.stderr)


class CommandLines(unittest.TestCase):
    def test_bundled_and_attached_short_options(self):
        for args, text, expected in [
                (["find", "-ic", "x"], b"X\nx\ny\n", b"2\n"),
                (["find", "-nic", "x"], b"X\n", b"1\n"),
                (["grep", "-co", "a"], b"aa\nb\n", b"1\n"),
                (["grep", "-g1", "(b)"], b"abc\n", b"b\n"),
                (["cmp", "-in3", "SELx", "selY"], b"", b"0\n"),
                (["quote", "-c\"", "--", "-"], b"x\n", b'"x"\n')]:
            run = zelstr(*args, stdin=text)
            self.assertEqual((expected, b""), (run.stdout, run.stderr), args)

    def refused(self, args, message):
        run = zelstr(*args)
        self.assertEqual(2, run.returncode, args)
        err = run.stderr.decode()
        self.assertRegex(err, message, args)
        # The tool's own words: no library warning text, no parser jargon.
        self.assertNotRegex(err, r"_z\w+\(|Warning|TEXT|required", args)
        return err

    def test_options_that_exclude_each_other(self):
        for a, b, rest in [("--lower", "--upper", ["sqlcase"]), ("--tsql", "--oracle", ["resword"]),
                           ("--tsql", "--oracle", ["hide"]), ("--oracle", "--quoted-id", ["grep"]),
                           ("--left", "--right", ["trim"]), ("--first", "--last", ["replace"]),
                           ("--first", "--delimiters", ["replace"])]:
            versions = rest == ["resword"]
            args = rest + [a] + (["15"] if a == "--tsql" and versions else []) + [b] + \
                (["102"] if b == "--oracle" and versions else ["[a]"] if b == "--delimiters" else []) + \
                ["x", "y"]
            self.refused(args, r"^zelstr %s: options '%s' and '%s' cannot be used together\n"
                         % (rest[0], a, b))

    def test_bad_arguments_get_the_tools_own_words(self):
        self.refused(["resword", "--tsql", "99", "x"],
                     r"T-SQL version 99 is not known \(4, 6 to 17, or 2004 and 2006 to 2017\)")
        self.refused(["resword", "--oracle", "111", "x"], r"Oracle version 111 is not known \(102 to")
        self.refused(["map", "x"], r"^zelstr map: the map definition 'x' translates no character")
        self.refused(["find", "--map", "", "x"], r"map definition '' translates no character")
        self.refused(["grep", "-g"], r"^zelstr grep: option '-g' needs a value \(N\)")
        self.refused(["replace", "--first=yes", "a", "b"], r"option '--first' takes no value")
        self.refused(["find", "-iy", "x"], r"unknown option '-y'")
        for command in ("find", "grep"):
            self.refused([command, "-m", "x", "a"], r"^zelstr %s: option '-m' needs a whole number, not 'x'" % command)
            self.refused([command, "-C1x", "a"], r"option '-C' needs a whole number, not '1x'")
            self.refused([command, "-A", "-1", "a"], r"option '-A' needs a whole number, not '-1'")
            self.refused([command, "-Hh", "a"], r"options '-H' and '-h' cannot be used together")
            self.refused([command, "-w", "--word-set", "[a-", "a"], r"bad set definition '\[a-'")
        self.refused(["grep", "-g1", "-e", "(a)", "-e", "b"], r"^zelstr grep: option '-g' takes one pattern")
        self.refused(["grep", "-x", "-g2", "(a)"], r"^zelstr grep: the pattern has no group '2'")
        self.refused(["grep", "-w", "-g2", "(a)"], r"^zelstr grep: the pattern has no group '2'")
        for value, message in (("", "one character, not ''"), ("ab", "one character, not 'ab'"),
                               ("\n", "a character that ends no line"), ("\r", "a character that ends no line")):
            self.refused(["hide", "--fill", value], r"^zelstr hide: --fill takes %s" % message)
        for value in ("", "ab"):
            self.refused(["like", "--escape", value, "x"],
                         r"^zelstr like: --escape takes one character, not '%s'\n" % value)
        self.refused(["like"], r"^zelstr like: no pattern\n")
        self.refused(["sub", "a"], r"^zelstr sub: PATTERN and TEMPLATE are needed\n")
        for option in ("--tsql", "--oracle", "--quoted-id"):
            self.refused(["findall", option, "x"],
                         r"^zelstr findall: option '%s' goes with '--code-only'\n" % option)
        for args in (["span", "[a-"], ["replace", "--delimiters", "[a-", "a", "b"],
                     ["replace", "-i", "--delimiters=", "a", "b"]):
            self.refused(args, r"bad set definition '\[?a?-?': it is empty or has a syntax error")

    def test_every_help_line_is_tidy_and_completion_offers_every_option(self):
        script = os.path.join(STAGE, "share/bash-completion/completions/zelstr")
        for name in [""] + commands():
            text = zelstr(*([name] if name else []), "--help").stdout.decode()
            prose = text.split("\nexample:\n")[0]  # an example's output may end in blanks
            self.assertEqual([], [l for l in prose.splitlines() if l.endswith(" ")], name)
            listed = re.findall(r"^  (-[-\w]+)", text.split("options:\n", 1)[1], re.M)
            words = ["zelstr", name, "-"] if name else ["zelstr", "-"]
            probe = 'source "%s"; COMP_WORDS=(%s); COMP_CWORD=%d; _zelstr; echo "${COMPREPLY[*]}"' % (
                script, " ".join(words), len(words) - 1)
            offered = subprocess.run(["bash", "-c", probe], capture_output=True).stdout.split()
            self.assertEqual(sorted(listed), sorted(w.decode() for w in offered), name)

    def test_version_names_the_tool_and_the_library_it_loaded(self):
        out = zelstr("--version").stdout.decode()
        self.assertRegex(out, r"^zelstr (\d+\.\d+\.\d+) \(ZelStr32 \1\)\n$")


class HelpAgreesWithBehaviour(unittest.TestCase):
    def status_when_empty(self, name):
        help_text = zelstr(name, "--help").stdout.decode()
        return help_text, re.search(r"exit status: .*1: ([^;]*)", help_text)

    def test_no_input_gives_the_status_each_help_promises(self):
        for args in TEXT_COMMANDS:
            help_text, one = self.status_when_empty(args[0])
            self.assertIsNotNone(one, args)
            run = zelstr(*args, stdin=b"")
            self.assertEqual((1, b""), (run.returncode, run.stdout), args)

    def test_the_map_help_says_what_definitions_do(self):
        text = zelstr("map", "--help").stdout.decode()
        self.assertIn("elements separated by spaces, each SOURCE=TARGET", text)
        for definition, text_in, out in [("a-z=A-Z", b"SeLeCt\n", b"select\n"),
                                         ("A-Z=a-z", b"SeLeCt\n", b"SELECT\n"),
                                         ("_=-", b"a-b_c\n", b"a_b_c\n")]:
            self.assertIn('"%s"' % definition, text)
            self.assertEqual(out, zelstr("map", definition, stdin=text_in).stdout, definition)

    def test_trim_removes_spaces_only_and_says_so(self):
        self.assertIn("spaces (tabs are kept)", zelstr("trim", "--help").stdout.decode())
        self.assertEqual(b"\t a\t\n", zelstr("trim", stdin=b" \t a\t \n").stdout)

    def test_sqlcase_keeps_open_literals_and_maps_open_names_as_its_help_says(self):
        self.assertIn("a name that is not closed is mapped to the end",
                      " ".join(zelstr("sqlcase", "--help").stdout.decode().split()))
        for code, out, message in [(b"SELECT [My\nName", b"select [my\nname", "delimited name opened on line 1 (mapped"),
                                   (b"SELECT 'My\nName", b"select 'My\nName", "string literal opened on line 1 (kept")]:
            run = zelstr("sqlcase", "--lower", stdin=code)
            self.assertEqual((2, out), (run.returncode, run.stdout), code)
            self.assertIn(message, run.stderr.decode(), code)


class Streaming(unittest.TestCase):
    SIZE = 256 << 20

    def test_large_input_streams_in_little_memory(self):
        line = b"SELECT [Name], N'It''s' FROM dbo.T -- done /* x */\n"
        block = line * ((1 << 20) // len(line))
        for args in (["grep", "-c", "dbo[.]T"], ["find", "-c", "dbo.T"], ["sqlcase", "--lower"]):
            # GNU time measures the tool's own peak memory: a child of this
            # process would count this process's pages it started with.
            with tempfile.NamedTemporaryFile() as peak:
                p = subprocess.Popen(["/usr/bin/time", "-f", "%M", "-o", peak.name, TOOL, *args],
                                     stdin=subprocess.PIPE, stdout=subprocess.PIPE)
                # Drains the output so that the tool never blocks on it.
                drain = threading.Thread(
                    target=lambda: [None for _ in iter(lambda: p.stdout.read(1 << 20), b"")])
                drain.start()
                for _ in range(self.SIZE // len(block)):
                    p.stdin.write(block)
                p.stdin.close()
                drain.join()
                p.stdout.close()
                self.assertEqual(0, p.wait(), args)
                self.assertLess(int(peak.read()) - EMULATOR_PEAK, 32 * 1024, args)  # kilobytes


def emulator_peak():
    """The emulator's own peak memory, in kilobytes, running the tool for
    its version (0 for a native tool)."""
    if not EMULATOR:
        return 0
    with tempfile.NamedTemporaryFile() as peak:
        subprocess.run(["/usr/bin/time", "-f", "%M", "-o", peak.name, TOOL, "--version"],
                       check=True, stdout=subprocess.DEVNULL)
        return int(peak.read())


def write_emulated_tool():
    os.makedirs(os.path.dirname(TOOL), exist_ok=True)
    with open(TOOL, "w") as f:
        f.write('#!/bin/sh\nexec "%s" "%s" "$@"\n' % (EMULATOR, INSTALLED_TOOL))
    os.chmod(TOOL, 0o755)


if __name__ == "__main__":
    subprocess.run(["cmake", "--install", BUILD, "--prefix", STAGE], check=True,
                   stdout=subprocess.DEVNULL)
    if EMULATOR:
        write_emulated_tool()
    EMULATOR_PEAK = emulator_peak()
    unittest.main(argv=sys.argv[:1], verbosity=2)
