"""Where the time of a layout goes, by a sampling profile of the unchanged program."""

import pathlib
import subprocess
import tempfile

from . import programs
from .markdown import count, table

INTERNAL = "nodeline::internal::"
# All of `Make` happens in here; its own frame is gone by then, for its last act is a call.
ENGINE = f"{INTERNAL}LayoutEngine::"
RUN = f"{INTERNAL}LayoutRun::"

# What a sample counts for: the name in the table, and the functions that stand for it.
PARTS = {
    "collecting nodes and edges": [f"{RUN}LayoutRun", f"{RUN}load_positions"],
    "`determine_levels`": [f"{INTERNAL}determine_levels"],
    "`place_nodes_on_levels`": [f"{INTERNAL}place_nodes_on_levels"],
    "`barycentric_adjust`": [f"{INTERNAL}barycentric_adjust"],
    "`calculate_initial_y_coords`": [f"{INTERNAL}calculate_initial_y_coords"],
    "`force_adjust`": [f"{INTERNAL}force_adjust"],
    "`calculate_x_coords`": [f"{INTERNAL}calculate_x_coords"],
    "writing back and remembering": [f"{RUN}finish", f"{INTERNAL}make_epilogue"],
}
REST = "the rest"


def profile(program, within=ENGINE):
    """The stacks of all samples taken inside of the layout, or of functions whose names begin
    otherwise; the innermost function first."""
    with tempfile.TemporaryDirectory() as folder:
        data = str(pathlib.Path(folder) / "perf.data")
        command = ["perf", "record", "--quiet", "-F", "999", "-e", "cpu-clock",
                   "--call-graph", "dwarf,4096", "-o", data, *program]
        programs.say(f"perf record {' '.join(program)}")
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        script = subprocess.run(["perf", "script", "-i", data, "-F", "comm,ip,sym"],
                                check=True, capture_output=True, text=True).stdout
    for sample in script.split("\n\n"):
        # A line of a stack is an address and a name; names may hold blanks.
        frames = [line.strip().split(" ", 1) for line in sample.splitlines()[1:]]
        names = [frame[1].removesuffix(" (inlined)") for frame in frames if len(frame) == 2]
        if any(name.startswith(within) for name in names):
            yield names


def shares(stacks, parts):
    """The share of the samples that each part takes, from 0 to 1."""
    part_of = {function: part for part, functions in parts.items() for function in functions}
    hits = dict.fromkeys([*parts, REST], 0)
    for names in stacks:
        hits[next((part_of[name] for name in names if name in part_of), REST)] += 1
    total = sum(hits.values())
    if total < 100:
        raise RuntimeError(f"a profile holds only {total} samples")
    return {part: number / total for part, number in hits.items()}


def steps():
    programs.require({"perf": "linux-perf"})
    graphs = [("calls", 10000), ("calls", 100000), ("knot", 100000), ("nested", 100000)]
    columns = [
        shares(profile([programs.path("once"), family, str(nodes), "--samples", "5"]), PARTS)
        for family, nodes in graphs]
    head = [""] + [f"{programs.FAMILIES[family]}, {count(nodes)}" for family, nodes in graphs]
    rows = [[part] + [f"{100 * column[part]:.0f} %" for column in columns]
            for part in [*PARTS, REST]]
    return table(head, rows)
