"""Where the string literals and comments of T-SQL scripts are, as sqlparse
sees them: an independent reading for test_sql_corpus.cpp.

Usage: python3 sql_tokens.py FILE...

For each file, in the order given, prints "file SIZE" (its size in bytes),
then one line "literal OFFSET LENGTH" or "comment OFFSET LENGTH" per token,
in byte offsets.  The bytes are decoded as Latin-1, so that one character is
one byte and character offsets are byte offsets whatever the encoding.

sqlparse follows MySQL in reading a backslash inside quotation marks as an
escape; T-SQL has no such escape ('C:\' is a whole literal).  Each backslash
is therefore handed to sqlparse as a blank, which keeps every offset.
"""
import sys

from sqlparse import lexer, tokens

for path in sys.argv[1:]:
    with open(path, "rb") as f:
        text = f.read().decode("latin-1")
    print("file", len(text))
    offset = 0
    for kind, value in lexer.tokenize(text.replace("\\", " ")):
        if kind in tokens.Literal.String:
            print("literal", offset, len(value))
        elif kind in tokens.Comment:
            print("comment", offset, len(value))
        offset += len(value)
    if offset != len(text):
        sys.exit(f"{path}: the tokens cover {offset} of {len(text)} bytes")
