#!/usr/bin/env python3
"""Prints a header with its plain comments as ones that Doxygen takes for documentation.

    scripts/doxygen-comments.py HEADER

A comment documents what stands directly below it, one at the end of a line what stands before it,
and the one that begins a header the header. Comments with an empty line below are for whoever reads
the source. Lines keep their numbers.
"""

import re
import sys

COMMENT = re.compile(r"( *)//( ?)(.*)$")
# A declaration with a remark behind it: a member, or an enumerator.
REMARK = re.compile(r"( *[^ /\"][^\"]*?[;,}\w]) {2,}// (.*)$")
SCOPE = re.compile(r"\b(namespace|class|struct|union|enum|extern)\b")
CODE_INDENT = 3


def documentation(block):
    """The lines of one comment, as Markdown."""
    lines = []
    after_gap = False
    in_code = False
    for indent, blank, text in block:
        leading = len(blank + text) - len((blank + text).lstrip(" "))
        if not text.strip():
            after_gap = True
        else:
            in_code = leading >= CODE_INDENT and (after_gap or in_code)
            after_gap = False
        lines.append(f"{indent}///{'    ' if in_code else ''}{blank}{text}".rstrip())
    return lines


def header_documentation(lines):
    """The lines of the first comment of a header, with the command that says whose they are."""
    if len(lines) == 1:
        # In the place of the include guard.
        return [r"/// \file", lines[0]]
    return [r"/// \file", lines[0] + lines[1].removeprefix("///")] + lines[2:]


def is_documented(line):
    """Whether a comment above this line describes it."""
    stripped = line.strip()
    if stripped.startswith("#"):
        return stripped.startswith("#define")
    return bool(stripped) and stripped[0] != "}" and not stripped.endswith(":")


class Scopes:
    """The braces around the line that comes next."""

    def __init__(self):
        self.are_bodies = []
        self.head = ""

    def read(self, line):
        for c in re.sub(r"//.*", "", line):
            if c == "{":
                head = re.sub(r"template\s*<[^>]*>", "", self.head)
                self.are_bodies.append(not SCOPE.search(head))
            elif c == "}" and self.are_bodies:
                self.are_bodies.pop()
            self.head = "" if c in "{};" else self.head + c
        self.head += " "

    def is_in_body(self):
        """Whether it is the source of a function, whose comments are for its reader."""
        return any(self.are_bodies)


def converted(source):
    result = []
    scopes = Scopes()
    at = 0
    while at < len(source):
        match = COMMENT.match(source[at])
        if not match:
            scopes.read(source[at])
            remark = None if scopes.is_in_body() else REMARK.match(source[at])
            result.append(f"{remark[1]}  ///< {remark[2]}" if remark else source[at])
            at += 1
            continue
        start = at
        block = []
        while at < len(source) and (match := COMMENT.match(source[at])):
            block.append(match.groups())
            at += 1
        if start == 0:
            result += header_documentation(documentation(block))
            at = len(result)
        elif at < len(source) and is_documented(source[at]) and not scopes.is_in_body():
            result += documentation(block)
        else:
            result += source[start:at]
    return result


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with open(sys.argv[1], encoding="utf-8") as header:
        print("\n".join(converted(header.read().splitlines())))


main()
