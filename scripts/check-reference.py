#!/usr/bin/env python3
"""Tells what in the public headers has no comment.

    scripts/check-reference.py

Needs Doxygen. Prints every class, function and member without documentation, and fails if there is
any. A comment covers the declarations that follow it as well, up to an empty line, an access label
or another comment; that of a struct covers the values that it begins with, but no functions.
"""

import os
import re
import sys
import tempfile

from doctools import ROOT, run_doxygen

WARNING = re.compile(r"(.+?):(\d+): warning: (?:Compound|Member) (.+) is not documented\.$")
# Declarations that need no comment.
EXCEPTIONS = [
    # There is nothing to call.
    re.compile(r"= delete;$"),
    # It means what it means in the base class, which has to say so.
    re.compile(r"\boverride( \{.*|;)$"),
    # It destroys; what is out of the ordinary has a comment all the same.
    re.compile(r"^(virtual )?~"),
]


def doxygen_warnings():
    with tempfile.TemporaryDirectory() as folder:
        return run_doxygen(
            "EXTRACT_ALL = NO",
            "WARN_IF_UNDOCUMENTED = YES",
            'WARN_FORMAT = "$file:$line: $text"',
            "SOURCE_BROWSER = NO",
            "GENERATE_HTML = NO",
            # Without any output Doxygen complains.
            "GENERATE_XML = YES",
            "XML_PROGRAMLISTING = NO",
            f'OUTPUT_DIRECTORY = "{folder}"',
        )


def declaration(lines, at):
    """The declaration at a line, in one line and up to its end or its body."""
    text = ""
    for line in lines[at:]:
        text += " " + line.strip()
        if line.rstrip().endswith((";", "{", "}")):
            break
    return text.strip()


def is_covered(lines, at, is_value):
    """Whether a comment above the run that the line is in stands for it, too."""
    indent = len(lines[at]) - len(lines[at].lstrip())
    for line in reversed(lines[:at]):
        text = line.strip()
        depth = len(line) - len(line.lstrip())
        if not text or text.endswith(":"):
            return False
        if text.startswith("//") and depth <= indent:
            return True
        if depth < indent and not is_value:
            return False
    return False


def undocumented():
    """What has no comment: descriptions by path and line."""
    found = {}
    sources = {}
    for warning in doxygen_warnings():
        match = WARNING.match(warning)
        if not match:
            sys.exit(warning + "\ndoxygen has told something unknown")
        path, line, what = os.path.relpath(match[1], ROOT), int(match[2]), match[3]
        if path not in sources:
            sources[path] = (ROOT / path).read_text(encoding="utf-8").splitlines()
        lines = sources[path]
        if any(exception.search(declaration(lines, line - 1)) for exception in EXCEPTIONS):
            continue
        if not is_covered(lines, line - 1, "(variable)" in what):
            # What a base class has is told of once more for every class that inherits it.
            found.setdefault((path, line), what)
    return found


def main():
    if len(sys.argv) != 1:
        sys.exit(__doc__)
    found = undocumented()
    for (path, line), what in sorted(found.items()):
        print(f"{path}:{line}: {what} has no comment")
    sys.exit(1 if found else 0)


main()
