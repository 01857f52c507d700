#!/usr/bin/env python3
"""Checks what the Markdown files say about other files. Prints what is wrong, and fails if anything is.

    scripts/check-docs.py links          relative links lead to files, and their anchors to headings
    scripts/check-docs.py code           code in the guide stands in an example that its page links to
    scripts/check-docs.py site FOLDER    the links of web pages lead to pages and to places in them
"""

import html.parser
import pathlib
import re
import sys
import urllib.parse

from doctools import ROOT, slug

LINK = re.compile(r"\[(?:`[^`]*`|[^\]`])*\]\(([^)\s]+)\)")
FENCE = re.compile(r"^```(\S*)$")
# Doxygen refers to nested classes also where all of them are private, and so not listed.
NO_PLACE = "nested-classes"
CODE = {"cpp": ".cpp", "c++": ".cpp", "sh": ".sh"}


def markdown_files():
    skipped = {"build", ".git", "node_modules"}
    return sorted(p for p in ROOT.rglob("*.md") if not skipped & set(p.relative_to(ROOT).parts))


def split(text):
    """The prose of a page, and its fenced blocks as pairs of a language and lines."""
    prose, blocks, block = [], [], None
    for line in text.splitlines():
        fence = FENCE.match(line)
        if fence and block is None:
            block = (fence[1], [])
        elif fence:
            blocks.append(block)
            block = None
        elif block is not None:
            block[1].append(line)
        else:
            prose.append(line)
    return "\n".join(prose), blocks


def anchors(path):
    prose, _ = split(path.read_text(encoding="utf-8"))
    return {slug(heading) for heading in re.findall(r"^#+ (.*)$", prose, re.M)}


def targets(path):
    """The links of a page to files of the project: as written, the file, and the anchor."""
    prose, _ = split(path.read_text(encoding="utf-8"))
    prose = re.sub(r"^    .*$", "", prose, flags=re.M)
    for target in LINK.findall(prose):
        if not re.match(r"[a-z]+:", target):
            file, _, anchor = target.partition("#")
            yield target, (path.parent / file).resolve() if file else path, anchor


def check_links():
    for path in markdown_files():
        for target, file, anchor in targets(path):
            if not file.exists():
                yield path, f"no file for the link {target}"
            elif anchor and anchor not in anchors(file):
                yield path, f"no heading for the link {target}"


def without_indent(lines):
    indents = [len(line) - len(line.lstrip()) for line in lines if line.strip()]
    cut = min(indents, default=0)
    return [line[cut:].rstrip() for line in lines]


def holds(source, block):
    """Whether consecutive lines of the source are those of the block, all shifted alike."""
    wanted = without_indent(block)
    lines = source.read_text(encoding="utf-8").splitlines()
    return any(without_indent(lines[at:at + len(wanted)]) == wanted
               for at in range(len(lines) - len(wanted) + 1))


def check_code():
    checked = 0
    for path in markdown_files():
        _, blocks = split(path.read_text(encoding="utf-8"))
        sources = {file for _, file, _ in targets(path)
                   if file.is_relative_to(ROOT / "examples") and file.is_file()}
        for language, block in blocks:
            # A whole program is built by the check of the installed library.
            if language not in CODE or any("int main()" in line for line in block):
                continue
            checked += 1
            fitting = [file for file in sources if file.suffix == CODE[language]]
            if not any(holds(file, block) for file in fitting):
                yield path, f"in no example that the page links to: {block[0].strip()} ..."
    if checked == 0:
        yield ROOT / "docs", "no code to check"


class WebPage(html.parser.HTMLParser):
    """The links of a page, and the places in it that links can lead to."""

    def __init__(self, text):
        super().__init__()
        self.links, self.places = [], set()
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        values = dict(attrs)
        self.places.update(values[name] for name in ("id", "name") if values.get(name))
        self.links += [values[name] for name in ("href", "src") if values.get(name)]


def check_site(folder):
    pages = {path: WebPage(path.read_text(encoding="utf-8")) for path in sorted(folder.glob("*.html"))}
    if not pages:
        yield folder, "no page to check"
    for path, page in pages.items():
        for link in page.links:
            parts = urllib.parse.urlsplit(link)
            if parts.scheme or parts.netloc or not (parts.path or parts.fragment):
                continue
            file = folder / urllib.parse.unquote(parts.path) if parts.path else path
            if not file.exists():
                yield path, f"no file for the link {link}"
            elif (parts.fragment not in ("", NO_PLACE) and file in pages
                  and parts.fragment not in pages[file].places):
                yield path, f"no place for the link {link}"
    for path in [*pages, *folder.glob("navtree*.js")]:
        if re.search(r"[\\@]ref\b", path.read_text(encoding="utf-8")):
            yield path, "a reference to no page"


def main():
    checks = {"links": check_links, "code": check_code, "site": check_site}
    arguments = [pathlib.Path(folder) for folder in sys.argv[2:]]
    if len(sys.argv) < 2 or len(arguments) != {"links": 0, "code": 0, "site": 1}.get(sys.argv[1]):
        sys.exit(__doc__)
    findings = [f"{path}: {what}" for path, what in checks[sys.argv[1]](*arguments)]
    print("\n".join(findings), end="\n" if findings else "")
    sys.exit(1 if findings else 0)


main()
