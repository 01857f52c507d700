"""What the scripts that make and check documents share."""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def slug(heading):
    """The anchor that is customary for a heading of a Markdown file."""
    plain = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading).lower()
    return re.sub(r"[^\w\- ]", "", plain).strip().replace(" ", "-")


def run_doxygen(*settings):
    """Runs Doxygen with the settings of the site and these; answers its warnings."""
    lines = [(ROOT / "docs/site/Doxyfile").read_text(encoding="utf-8"), *settings, ""]
    try:
        run = subprocess.run(["doxygen", "-"], input="\n".join(lines), text=True, cwd=ROOT,
                             stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    except FileNotFoundError:
        sys.exit("doxygen is not installed")
    if run.returncode != 0:
        sys.exit(run.stderr + "doxygen has failed")
    return run.stderr.splitlines()
