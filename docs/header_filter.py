#!/usr/bin/env python3
"""Doxygen input filter: reads the library's headers as Doxygen comments.

The headers document each declaration with plain `//` comments written just
above it.  Doxygen only reads `///`, so this filter rewrites the headers on
the fly (the files themselves are left alone), keeping every line where it
is so that Doxygen's line numbers stay right:

  * the comment that opens a header becomes the file's documentation;
  * a comment directly followed by code documents that code; when the code
    is several declarations in a row (overloads, a family of functions),
    they form one member group sharing the comment;
  * a trailing comment after a declaration documents that declaration, and
    so do the comment lines aligned under it;
  * other comments (separators, notes followed by a blank line) stay plain.

The comments are prose, not Doxygen markup: characters that Doxygen or
Markdown would take as commands are escaped (outside `code spans` and
"quoted texts", which Doxygen shows as they are), each comment's first
sentence is marked as its brief description, and lines indented further
than their paragraph (examples, tables of syntax) are shown as code, as
they read in the header.

Usage (as Doxygen's INPUT_FILTER): header_filter.py FILE  -> standard output
"""

import re
import sys

COMMENT = re.compile(r"^(\s*)//(?!/)(.*)$")
TRAILING = re.compile(r"^(\s*\S.*?;)(\s+)//(?!/) ?(.*)$")
FILE_HEAD = re.compile(r"^(\S+\.h(?:pp|\.in)?) - (.*)$")

# Escapes that make Doxygen show a character as it is.
ESCAPES = {
    "\\": "\\\\",
    "@": "\\@",
    "<": "\\<",
    ">": "\\>",
    "&": "\\&",
    "#": "\\#",
    "$": "\\$",
    "%": "\\%",
}


def escape_prose(text):
    """Escapes `text` outside its `code spans` and "quoted texts", which
    Doxygen shows as they are."""
    out = []
    for part in re.split(r"(`[^`]*`|'\"'|\"[^\"]*\")", text):
        if part.startswith("`") or (part.startswith('"') and len(part) > 1):
            out.append(part)
            continue
        part = "".join(ESCAPES.get(c, c) for c in part)
        # "--" and "---" would become dashes.
        part = re.sub(r"-{2,}", lambda m: "\\" + m.group(0), part)
        out.append(part)
    return "".join(out)


def comment_text(body):
    """The text of a comment line: what follows "//" and one blank."""
    return body[1:] if body.startswith(" ") else body


def is_indented(text):
    """A line of an example or a table: indented inside its paragraph."""
    return text.startswith("  ") and text.strip() != ""


def doc_lines(texts, prefix):
    """The lines of one documentation comment, in place of `texts`."""
    out = []
    i = 0
    while i < len(texts):
        if not is_indented(texts[i]):
            text = escape_prose(texts[i])
            # A number and a dot opening a line would start a numbered list.
            text = re.sub(r"^(\d+)\.(?=\s|$)", r"\1\\.", text)
            out.append(prefix + (" " + text if text else ""))
            i += 1
            continue
        j = i
        while j < len(texts) and is_indented(texts[j]):
            j += 1
        run = texts[i:j]
        margin = min(len(t) - len(t.lstrip(" ")) for t in run)
        run = [prefix + " " + t[margin:] for t in run]
        # The code block opens at the end of the line before it, so that its
        # first line keeps its place among the others.
        if out:
            out[-1] += " @code{.unparsed}"
        else:
            run[0] = prefix + " @code{.unparsed}" + run[0][len(prefix) + 1 :]
        run[-1] += " @endcode"
        out.extend(run)
        i = j
    return out


def mark_brief(block, prefix):
    """Makes the first sentence of a documentation comment its brief
    description: "@brief" in front, "@details" after the sentence's final
    dot when the first paragraph has one.  (Doxygen's own guess at the
    first sentence stumbles over quoted dots such as '.'.)"""
    start = len(prefix) + 1
    if len(block[0]) <= start:
        return block
    block = list(block)
    block[0] = block[0][:start] + "@brief " + block[0][start:]
    for k, line in enumerate(block):
        body = line[len(prefix):]
        if body.strip() == "" or "@code" in body:
            break  # the first paragraph ends without a full stop
        # A dot followed by a blank or the line's end, outside code spans.
        for m in re.finditer(r"`[^`]*`|(?<!\.)\.(?=\s|$)", line):
            if m.group(0).startswith("`"):
                continue
            block[k] = line[: m.end()] + " @details" + line[m.end() :]
            return block
    return block


def declared_names(code_lines):
    """The names the lines declare, one per declaration; None when they open
    a scope (a class, a namespace) or a section of a class."""
    names = []
    start = True
    for line in code_lines:
        stripped = line.split("//")[0].rstrip()
        if stripped.endswith("{") or stripped.endswith(":"):
            return None
        if start:
            name = re.search(r"(operator\s*\S+?|~?\w+)\s*\(", stripped)
            names.append(name.group(1) if name else stripped)
        start = stripped.endswith(";") or stripped.endswith("}")
    return names


def shares_comment(names, member):
    """Whether a comment above several declarations documents them all: at
    namespace level the comment speaks of the run below it; in a class, of
    the overloads of one name."""
    if names is None or len(names) < 2:
        return False
    return not member or all(name == names[0] for name in names)


def main(path):
    with open(path, encoding="latin-1") as f:
        lines = f.read().split("\n")
    out = list(lines)
    n = len(lines)
    trailing_column = None  # column of the trailing comment on the line above
    # Where member groups close: on a blank line of their own (line: indent),
    # or behind the last declaration when no blank line follows it.
    closing_lines = {}
    closing_behind = set()
    i = 0
    while i < n:
        m = COMMENT.match(lines[i])
        if m is None:
            if i in closing_lines:
                out[i] = closing_lines[i] + "/**@}*/"
                trailing_column = None
                i += 1
                continue
            close = " /**@}*/" if i in closing_behind else ""
            t = TRAILING.match(lines[i])
            if t is not None and not t.group(1).lstrip().startswith("}"):
                out[i] = t.group(1) + close + t.group(2) + "///< @brief " + escape_prose(t.group(3))
                trailing_column = len(t.group(1)) + len(close) + len(t.group(2))
            else:
                out[i] = lines[i] + close
                trailing_column = None
            i += 1
            continue
        indent = m.group(1)
        # A block: the comment lines of one indentation in a row.
        j = i
        while j < n:
            mj = COMMENT.match(lines[j])
            if mj is None or mj.group(1) != indent:
                break
            j += 1
        texts = [comment_text(COMMENT.match(lines[k]).group(2)) for k in range(i, j)]

        if trailing_column is not None and len(indent) == trailing_column:
            out[i:j] = [indent + "///< " + escape_prose(t) for t in texts]
        elif i == 0:
            head = FILE_HEAD.match(texts[0])
            name = head.group(1) if head else ""
            block = doc_lines([head.group(2) if head else texts[0]] + texts[1:], "///")
            block = mark_brief(block, "///")
            block[0] = "/// @file " + name + block[0][3:]
            out[i:j] = block
        elif j < n and lines[j].strip() != "" and COMMENT.match(lines[j]) is None:
            block = mark_brief(doc_lines(texts, indent + "///"), indent + "///")
            # The declarations that follow, up to a blank line or a comment.
            k = j
            while k < n and lines[k].strip() != "" and COMMENT.match(lines[k]) is None:
                k += 1
            # The group opens on the line above the comment (a blank line or
            # code without a comment), so that the comment stays one block.
            # It closes on the blank line below the declarations, or behind the
            # last one when it has no trailing comment (which would take the
            # marker for its own).
            above = out[i - 1] if i > 0 else None
            closes_below = k < n and lines[k].strip() == ""
            if (
                above is not None
                and "//" not in above
                and (closes_below or TRAILING.match(lines[k - 1]) is None)
                and shares_comment(declared_names(lines[j:k]), indent != "")
            ):
                out[i - 1] = above + (" " if above.strip() else indent) + "/**@{*/"
                if closes_below:
                    closing_lines[k] = indent
                else:
                    closing_behind.add(k - 1)
            out[i:j] = block
        trailing_column = None
        i = j
    sys.stdout.write("\n".join(out))


if __name__ == "__main__":
    main(sys.argv[1])
