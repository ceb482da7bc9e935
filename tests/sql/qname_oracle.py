#!/usr/bin/env python3
"""The dotted names of the T-SQL corpus, split by sqlparse and by the tool.

usage: qname_oracle.py ZELSTR CORPUS_DIR

sqlparse (an independent lexer) reads every T-SQL script of the corpus;
each run of names joined by dots with nothing between (db.dbo.t, [a].b,
"x".y, db..t) is one qualified name, whose parts are the names with their
brackets or quotation marks taken off.  `zelstr qname` splits the same
names; the parts must agree.  Runs sqlparse cannot read as names are left
out: a name preceded by "@" (a variable's member), more than four parts,
and brackets holding "]]" (which sqlparse does not read as one name).
"""
import os
import re
import subprocess
import sys

from sqlparse import lexer, tokens

PLAIN = re.compile(r"^#{0,2}[A-Za-z_\x80-\xff][\w@$#\x80-\xff]*$")
BRACKETED = re.compile(r"^\[[^\]]*\]$")


def part_of(kind, value):
    """The part a token stands for, or None when it is no name."""
    if kind in tokens.Name and (PLAIN.match(value) or BRACKETED.match(value)):
        return value[1:-1] if value.startswith("[") else value
    if kind in tokens.Literal.String.Symbol and value.startswith('"'):
        return value[1:-1].replace('""', '"')
    return None


def dotted_names(text):
    """(source text, parts) of each run of names joined by dots."""
    found = []
    toks = list(lexer.tokenize(text)) + [(tokens.Whitespace, " ")]
    i = 0
    while i < len(toks):
        parts, run, expect_name, j = [], "", True, i
        while j < len(toks):
            kind, value = toks[j]
            if kind in tokens.Punctuation and value == ".":
                if expect_name:
                    parts.append("")
                run, expect_name = run + value, True
            elif expect_name and part_of(kind, value) is not None:
                parts.append(part_of(kind, value))
                run, expect_name = run + value, False
            else:
                break
            j += 1
        if j == i:
            i += 1
            continue
        if expect_name:
            parts.append("")  # the run ended on a dot
        after_at = i > 0 and toks[i - 1][0] in tokens.Operator and toks[i - 1][1] == "@"
        if "." in run and not after_at and len(parts) <= 4 and any(parts):
            found.append((run, parts))
        i = j
    return found


def main():
    zelstr, corpus = sys.argv[1:3]
    names = []
    tsql = os.path.join(corpus, "tsql")
    for root, _, files in os.walk(tsql):
        for f in sorted(files):
            if not f.lower().endswith(".sql"):
                continue
            with open(os.path.join(root, f), "rb") as fh:
                raw = fh.read()
            if b"\0" in raw:
                continue  # UTF-16: not text the tool reads
            names.extend(dotted_names(raw.decode("latin-1").replace("\\", " ")))
    if len(names) < 100:
        sys.exit(f"only {len(names)} dotted names found in {tsql}")
    given = "".join(n + "\n" for n, _ in names).encode("latin-1")
    out = subprocess.run([zelstr, "qname"], input=given, capture_output=True).stdout
    lines = out.decode("latin-1").split("\n")[:-1]
    if len(lines) != len(names):
        sys.exit(f"{len(names)} names, {len(lines)} lines printed")
    wrong = [(n, p, l) for (n, p), l in zip(names, lines) if l.split("\t") != p]
    for n, p, l in wrong[:10]:
        print(f"{n!r}: sqlparse {p}, zelstr {l.split(chr(9))}")
    print(f"{len(names)} dotted names, {len(wrong)} split differently")
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
