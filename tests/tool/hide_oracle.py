#!/usr/bin/env python3
"""What `zelstr hide` hides, against the comments and string literals that
sqlparse (an independent lexer) finds.

usage: hide_oracle.py ZELSTR CORPUS_DIR

Every 8-bit text script of the corpus (T-SQL in tsql/, read with --tsql;
Oracle in plsql/, read with --oracle) and a seeded random mix of code,
comments, literals and names go through `zelstr hide`, with a filler byte
the text does not hold, in two readings:

  strings   the default: comments and literals hidden ('...', and "..." in
            T-SQL, where quoted identifiers are off by default);
  names     --names: the names in "..." hidden too, and in T-SQL, read with
            --quoted-id, those in [...] and "...".

Each token sqlparse reads must then agree with the output: every byte of
a comment, literal or (second reading) delimited name is the filler but
line ends and the quotes, which are kept; every byte of any other token is
unchanged.  sqlparse knows neither T-SQL nor Oracle exactly.  Where its
rules differ from the servers', the two readings part at a
token; the stretch from where they parted to where both read code again
is set aside, under the first difference below that explains it, and
counted.  A stretch that none explains fails the test.  The random mix
avoids these differences, so there every token must agree.
"""
import collections
import os
import random
import re
import subprocess
import sys

from sqlparse import lexer, tokens

ZELSTR, CORPUS = sys.argv[1:3]

# The differences between sqlparse's reading and the servers', each with a
# test on the stretch where the two readings part (a Stretch) and a sample
# text that shows it.
DIFFERENCES = [
    ("nested block comment", "tsql",
     "T-SQL nests /* */ comments; sqlparse ends a comment at its first */",
     lambda st: any(k in tokens.Comment.Multiline and "/*" in v[2:] for k, v, _ in st.toks),
     "SELECT 1 /* a /* b */ c */ FROM t\n"),
    ("alternative quoting", "oracle",
     "Oracle reads q'c...c' and nq'c...c' as one literal; sqlparse reads q as a name "
     "and the quotes as ordinary ones",
     lambda st: re.search(r"(?i)(?<![\w$#])n?q'", st.text[max(0, st.a - 2):st.b]),
     "SELECT q'[it's]' FROM dual;\nSELECT 'x' FROM dual;\n"),
    ("]] in brackets", "tsql",
     "T-SQL reads ]] inside [...] as one ]; sqlparse ends the name at the first ]",
     lambda st: "]]" in st.text[st.a:st.b],
     "SELECT [a]]'b] FROM t\nSELECT 'x'\n"),
    ("[ after a word or in brackets", "tsql",
     "T-SQL reads [...] as a name wherever it stands and whatever it holds but ]; "
     "sqlparse reads a [ right after a word as an array subscript (PostgreSQL), and a "
     "name in brackets holding a [ as punctuation and words",
     lambda st: any(k in tokens.Punctuation and v == "[" for k, v, _ in st.toks),
     "DECLARE @v[int] = 1 SELECT [a['b] FROM t\n"),
    ('"" in a name', "oracle",
     'an Oracle name in "..." cannot hold a quotation mark: "a""b" is two names side by '
     'side; sqlparse reads "" as one mark inside a single name',
     lambda st: any(k in tokens.String.Symbol and '""' in v[1:-1] for k, v, _ in st.toks),
     'SELECT "a""b" FROM t;\n'),
    ("# comment", "tsql oracle",
     "sqlparse reads # and a blank as a MySQL comment; in T-SQL # begins a temporary "
     "table's name, in Oracle it is no comment",
     lambda st: any(k in tokens.Comment.Single and v.startswith("#") for k, v, _ in st.toks),
     "SELECT 1 # 2\nFROM t\n"),
    ("lone CR", "tsql oracle",
     "a line comment ends at LF or CR LF; sqlparse ends it at a CR alone too",
     lambda st: any(k in tokens.Comment.Single and v.endswith("\r")
                    and not st.text.startswith("\n", s + len(v)) for k, v, s in st.toks),
     "SELECT 1 -- a\rb\nFROM t\n"),
    ("not closed", "tsql oracle",
     "a literal, comment or name runs to the end of the text when not closed; sqlparse "
     "reads a lone quote as an error, and the rest as code",
     lambda st: any(k in tokens.Error and v in "'\"" for k, v, _ in st.toks)
     or (st.unclosed and st.b == len(st.text)),
     "SELECT 1 /* to the end\nFROM t\n"),
]
# Also, sqlparse reads a backslash inside quotes as an escape (MySQL); T-SQL
# and Oracle have no such escape ('C:\' is a whole literal).  Each backslash
# is handed to sqlparse as a blank, which keeps every offset.  And N'...'
# agrees as it is: sqlparse reads the N as a name, which the output keeps
# as the literal's prefix.

# Where the readings part: the text, the stretch from a to b, sqlparse's
# tokens (kind, value, offset) there, and whether zelstr reported a part
# left open at the end.
Stretch = collections.namedtuple("Stretch", "text a b toks unclosed")

READINGS = {  # dialect -> [(reading, options)]
    "tsql": [("strings", ["--tsql"]), ("names", ["--tsql", "--quoted-id", "--names"])],
    "oracle": [("strings", ["--oracle"]), ("names", ["--oracle", "--names"])],
}


def hide(text, options, filler):
    """zelstr's output, and whether it reported a part left open."""
    run = subprocess.run([ZELSTR, "hide", "--fill", filler, *options],
                         input=text.encode("latin-1"), capture_output=True)
    unclosed = run.returncode == 2 and re.match(rb"zelstr hide: .*: unterminated ", run.stderr)
    if run.returncode not in (0, 1) and not unclosed:
        sys.exit(f"zelstr hide {options}: status {run.returncode}: {run.stderr.decode()}")
    out = run.stdout.decode("latin-1")
    if len(out) != len(text):
        sys.exit(f"zelstr hide {options}: {len(out)} bytes out for {len(text)} in")
    return out, bool(unclosed)


def kind_of(kind, value, dialect, reading):
    """'comment', 'literal' (hidden, its quotes kept), 'code', or 'quote':
    a quotation mark sqlparse finds no end for."""
    if kind in tokens.Error:  # a byte it has no token for: code, or a lone quote
        return "quote" if value in "'\"" else "code"
    if kind in tokens.Comment:
        return "comment"
    if kind in tokens.String.Single:
        return "literal"
    if kind in tokens.String.Symbol:  # "..."
        if (dialect == "tsql" and reading == "strings") or reading == "names":
            return "literal"
        return "code"
    if kind in tokens.Name and value.startswith("[") and dialect == "tsql" and reading == "names":
        return "literal"
    return "code"


def line_end(text, i):
    return text[i] == "\n" or (text[i] == "\r" and text.startswith("\n", i + 1))


def agrees(text, kept, kind, start, end):
    """Whether the output agrees with a token of that kind."""
    if kind == "code":
        return kept[start:end] == text[start:end]
    inner = range(start, end)
    if kind == "literal":  # the quotes are kept
        if kept[start] != text[start] or kept[end - 1] != text[end - 1]:
            return False
        inner = range(start + 1, end - 1)
    return all((kept[i] == text[i]) if line_end(text, i) else kept[i] != text[i] for i in inner)


class Tally:
    def __init__(self):
        self.spans = self.span_bytes = self.tokens = self.bytes = 0
        self.set_aside = {}  # difference -> [stretches, bytes]
        self.failures = []

    def set(self, name, length):
        entry = self.set_aside.setdefault(name, [0, 0])
        entry[0] += 1
        entry[1] += length


def compare(text, dialect, reading, options, tally, where, strict=False):
    """Walks sqlparse's tokens of `text` against zelstr's output."""
    filler = next(chr(c) for c in list(range(1, 32)) + list(range(127, 256))
                  if chr(c) not in text and chr(c) not in "\t\n\r")
    kept, unclosed = hide(text, options, filler)
    # Where zelstr's parts lie: every byte of each hidden (names too).
    whole, _ = hide(text, options + ["--names", "--quotes"], filler)
    toks, offset = [], 0
    for k, v in lexer.tokenize(text.replace("\\", " ")):
        toks.append((k, v, offset))
        offset += len(v)
    assert offset == len(text), where
    i = 0
    while i < len(toks):
        k, v, s = toks[i]
        kind = kind_of(k, v, dialect, reading)
        if kind != "quote" and agrees(text, kept, kind, s, s + len(v)):
            tally.tokens += 1
            tally.bytes += len(v)
            if kind != "code":
                tally.spans += 1
                tally.span_bytes += len(v)
            i += 1
            continue
        # The readings part here, or where the part of zelstr's that holds
        # this token began; they meet again at a token both read as code.
        a = s
        while a > 0 and (whole[a - 1] != text[a - 1] or line_end(text, a - 1)) and a > s - 4096:
            a -= 1
        j = i + 1
        while j < len(toks):
            k2, v2, s2 = toks[j]
            if (kind_of(k2, v2, dialect, reading) == "code" and not v2.isspace()
                    and whole[s2] == text[s2]):
                break
            j += 1
        b = toks[j][2] if j < len(toks) else len(text)
        st = Stretch(text, a, b, [t for t in toks if a <= t[2] < b], unclosed)
        why = None if strict else next(
            (name for name, dialects, _, test, _ in DIFFERENCES
             if dialect in dialects.split() and test(st)), None)
        if why is None:
            tally.failures.append("%s (%s), offset %d: sqlparse %s %r; zelstr %r" % (
                where, reading, s, kind, text[a:b][:200], kept[a:b][:200]))
        else:
            tally.set(why, b - s)
        i = j


def corpus_texts(folder):
    d = os.path.join(CORPUS, folder)
    for f in sorted(os.listdir(d)):
        if not f.lower().endswith(".sql"):
            continue
        with open(os.path.join(d, f), "rb") as fh:
            raw = fh.read()
        if b"\0" in raw:
            continue  # UTF-16: the tool decodes it; sqlparse is given 8-bit text here
        if raw.startswith(b"\xef\xbb\xbf"):
            raw = raw[3:]  # a UTF-8 mark is no part of the text the tool reads
        yield f, raw.decode("latin-1")


def generated(dialect, rng):
    """Code, comments, literals and names, none of which sqlparse reads
    otherwise than the server."""
    content = "ab Z9_-/*'\"[]().,;=\n" + "\r\n"

    def text_of(exclude, n=8):
        s = "".join(rng.choice(content) for _ in range(rng.randrange(n)))
        for e in exclude:
            s = s.replace(e, "")
        return s

    def literal():
        body = text_of(["'"]) + rng.choice(["", "''"]) + text_of(["'"])
        return rng.choice(["", "N"]) + "'" + body + "'"

    def quoted():
        doubled = rng.choice(["", '""']) if dialect == "tsql" else ""
        return '"' + text_of(['"']) + doubled + text_of(['"']) + '"'

    def block():
        return "/*" + text_of(["*", "/"]) + rng.choice(["", "*", "**", "/"]) + " */"

    def line():
        return "--" + text_of(["\n", "\r"]) + rng.choice(["\n", "\r\n"])

    def bracketed():
        return "[" + text_of(["[", "]"]) + "x]"

    code = ["SELECT", "a", "x1", "12", "3.5", "=", "(", ")", ",", ";", "+", "dbo.t", "@v",
            "\n", "\r\n"]
    pieces = [literal, quoted, block, line, lambda: rng.choice(code)]
    if dialect == "tsql":
        pieces.append(bracketed)
    return " ".join(rng.choice(pieces)() for _ in range(rng.randrange(1, 40)))


def samples_show_their_differences():
    """Each difference's sample is set aside under that difference, and
    under no other: the list says what sqlparse and the tool really do."""
    wrong = []
    for name, dialects, _, _, sample in DIFFERENCES:
        dialect = dialects.split()[0]
        tally = Tally()
        for reading, options in READINGS[dialect]:
            compare(sample, dialect, reading, options, tally, "sample of " + name)
        if list(tally.set_aside) != [name] or tally.failures:
            wrong.append("%s: set aside %s, %s" % (name, list(tally.set_aside), tally.failures))
    return wrong


def main():
    tally = Tally()
    files = 0
    for dialect, folder in (("tsql", "tsql"), ("oracle", "plsql")):
        for name, text in corpus_texts(folder):
            files += 1
            for reading, options in READINGS[dialect]:
                compare(text, dialect, reading, options, tally, folder + "/" + name)
    corpus = (files, tally.spans, tally.span_bytes, tally.tokens, tally.bytes)
    rng = random.Random(20240611)
    mixes = 0
    for dialect in ("tsql", "oracle"):
        for n in range(150):
            text = generated(dialect, rng)
            mixes += 1
            for reading, options in READINGS[dialect]:
                compare(text, dialect, reading, options, tally, "%s mix %d" % (dialect, n),
                        strict=True)
    print("corpus: %d files, each in both readings: %d comments/literals/names (%d bytes) and "
          "%d tokens in all (%d bytes) agree" % corpus)
    print("random mix: %d texts, each in both readings: %d comments/literals/names and %d tokens "
          "agree" % (
        mixes, tally.spans - corpus[1], tally.tokens - corpus[3]))
    for name, dialects, why, _, _ in DIFFERENCES:
        stretches, length = tally.set_aside.get(name, [0, 0])
        print("set aside in the corpus, %s (%s): %d stretches, %d bytes: %s" % (
            name, dialects, stretches, length, why))
    failures = tally.failures + samples_show_their_differences()
    for f in failures[:20]:
        print("DIFFERS:", f)
    print("%d differences unexplained" % len(failures))
    if corpus[1] < 50000 or failures:
        sys.exit(1)


if __name__ == "__main__":
    main()
