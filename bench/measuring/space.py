"""Tables of memory, and the graphs that must fit a small stack."""

from . import programs
from .markdown import count, digits, table

STACK_KIB = 1024


def memory():
    """How much the process grows by for each element."""
    rows = []
    for family in ("calls", "chain", "nested"):
        run = programs.once(family, 100000)
        total = run["nodes"] + run["edges"] + run["breaks"]
        rows.append([programs.FAMILIES[family], count(total),
                     f"{run['resident_bytes'] / 1e6:,.0f} MB",
                     f"{run['resident_bytes'] / total:.0f} bytes",
                     f"{run['peak_bytes'] / total:.0f} bytes"])
    return table(["100,000 nodes", "elements", "resident memory", "for each element",
                  "for each, at the peak"], rows)


def stack():
    """Graphs that a recursive program would not survive."""
    graphs = {
        "a chain of 1,000,000 nodes": ("chain", 1000000),
        "a ladder of 10,000 diamonds": ("ladder", 30001),
        "a star of 100,000 leaves": ("star", 100001),
    }
    rows = []
    for title, (family, nodes) in graphs.items():
        programs.say(f"bench-once {family} {nodes}")
        try:
            run = programs.once(family, nodes, stack_kib=STACK_KIB)
        except RuntimeError as error:
            rows.append([title, str(error), ""])
            continue
        if run["stack_limit"] != STACK_KIB * 1024:
            raise RuntimeError(f"the stack limit was {run['stack_limit']} bytes")
        total = run["nodes"] + run["edges"] + run["breaks"]
        rows.append([title, count(total), f"{digits(run['make_ms'])} ms"])
    return table([f"under a stack limit of {STACK_KIB} KiB", "elements", "`Make`"], rows)
