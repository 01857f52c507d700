#!/usr/bin/env python3
"""Makes the site: the guide and the reference of the public headers, as web pages.

    scripts/make-site.py [FOLDER]       writes to FOLDER/html, by default build/site/html

Needs Doxygen. Pages are the Markdown files of the project; each example becomes a page as well, so
that the guide can lead to it. Fails on every warning.
"""

import os
import pathlib
import posixpath
import re
import shutil
import sys

from doctools import ROOT, run_doxygen, slug

MAIN_PAGE = "README.md"
# A link or a picture, whose label may hold code; code; what begins a command.
INLINE = re.compile(r"(!?)\[((?:`[^`]*`|[^\]`])*)\]\(([^)\s]+)\)|`[^`]*`|@")
CODE_LANGUAGES = {".cpp": "cpp", ".sh": "sh"}


def pages():
    """The files that become pages, by their paths."""
    found = ["README.md", "CONTRIBUTING.md", "CHANGELOG.md", "examples/graphs/README.md"]
    found += sorted(str(p.relative_to(ROOT)) for p in (ROOT / "docs").rglob("*.md"))
    return found


def examples():
    return sorted(str(p.relative_to(ROOT)) for p in (ROOT / "examples").iterdir()
                  if p.suffix in CODE_LANGUAGES)


def page_id(path):
    return "page-" + re.sub(r"[^a-z0-9]+", "-", os.path.splitext(path)[0].lower()).strip("-")


def with_links(text, path, known):
    """Links to files that are pages become references to these; the site has no other files."""
    def replaced(match):
        picture, label, target = match.groups()
        if match[0] == "@":
            return r"\@"
        if target is None or re.match(r"[a-z]+:", target):
            return match[0]
        # Doxygen takes neither line feeds nor code in a label.
        label = " ".join(label.replace("`", "").split())
        if picture:
            return f"![{label}]({posixpath.basename(target)})"
        file, _, anchor = target.partition("#")
        file = posixpath.normpath(posixpath.join(posixpath.dirname(path), file)) if file else path
        if file not in known:
            return label
        return f"[{label}](@ref {page_id(file)}{'-' + anchor if anchor else ''})"
    return INLINE.sub(replaced, text)


def staged(path, known):
    """A Markdown file as Doxygen is to read it: all headings have names, all links are known."""
    lines = []
    in_fence = False
    block = []

    def flush():
        # A link may go on in the next line.
        if block:
            lines.append(with_links("\n".join(block), path, known))
            block.clear()

    for line in (ROOT / path).read_text(encoding="utf-8").splitlines():
        if line.startswith("```"):
            flush()
            in_fence = not in_fence
            lines.append(line.replace("```c++", "```cpp"))
        elif in_fence or line.startswith("    "):
            flush()
            lines.append(line)
        elif heading := re.match(r"(#+) (.*)$", line):
            flush()
            name = page_id(path)
            if len(heading[1]) > 1:
                name += "-" + slug(heading[2])
            lines.append(f"{heading[1]} {heading[2]} {{#{name}}}")
        else:
            block.append(line)
    flush()
    return "\n".join(lines) + "\n"


def example_page(path):
    name = posixpath.basename(path)
    code = (ROOT / path).read_text(encoding="utf-8").rstrip()
    language = CODE_LANGUAGES[posixpath.splitext(path)[1]]
    return f"# {name} {{#{page_id(path)}}}\n\n```{language}\n{code}\n```\n"


def write_inputs(folder):
    """Writes all pages below `folder`, and answers their paths."""
    shutil.rmtree(folder, ignore_errors=True)
    known = set(pages()) | set(examples())
    written = []
    for path in sorted(known):
        text = example_page(path) if path in examples() else staged(path, known)
        target = folder / (path if path.endswith(".md") else path + ".md")
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(text, encoding="utf-8")
        written.append(target)
    return written


def main():
    if len(sys.argv) > 2 or (len(sys.argv) == 2 and sys.argv[1].startswith("-")):
        sys.exit(__doc__)
    output = pathlib.Path(sys.argv[1] if len(sys.argv) == 2 else ROOT / "build" / "site").resolve()
    inputs = write_inputs(output / "pages")
    shutil.rmtree(output / "html", ignore_errors=True)
    warnings = run_doxygen(
        "INPUT += " + " ".join(f'"{page}"' for page in inputs),
        f'USE_MDFILE_AS_MAINPAGE = "{output / "pages" / MAIN_PAGE}"',
        f'OUTPUT_DIRECTORY = "{output}"',
    )
    if warnings:
        sys.exit("\n".join([*warnings, "the site could not be made without warnings"]))
    print(output / "html" / "index.html")


main()
