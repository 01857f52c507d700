"""What one click on a port costs, next to laying the graph out from scratch, and where it goes."""

import sys

from . import programs, steps
from .markdown import count, digits, table

SIZES = (1000, 10000, 100000)
FAMILIES = {"calls": "call graph", "boxes": "call graph in boxes, three deep"}


def click():
    """Make and a click, by family and size, and the one as a share of the other."""
    medians = programs.google_benchmark("click", ".")
    if "Make/calls/1000/warm" not in medians:
        sys.exit("bench-click measures no texts: it was built without the Cairo backend.")

    def time(name):
        return medians[name]["real_time"]

    rows = []
    for family, title in FAMILIES.items():
        for size in SIZES:
            graph = f"{family}/{size}"
            makes = [time(f"Make/{graph}/{sizes}") for sizes in ("cold", "warm", "fixed")]
            clicks = [time(f"Click/{graph}/{sizes}") for sizes in ("warm", "fixed")]
            shares = [clicks[0] / makes[0], clicks[0] / makes[1], clicks[1] / makes[2]]
            rows.append([title, count(size)]
                        + [f"{digits(value)} ms" for value in makes + clicks]
                        + [f"{share:.2f}" for share in shares])
    return table(["family", "nodes", "Make, cold", "Make, warm", "Make, fixed", "click, warm",
                  "click, fixed", "warm of cold", "warm of warm", "fixed of fixed"], rows)


def layouts():
    """Make and a click with either layout, nodes of a fixed size."""
    medians = programs.google_benchmark("click", "/(fixed|stable)")
    rows = []
    for family, title in FAMILIES.items():
        for size in SIZES:
            row = [title, count(size)]
            for what in ("Make", "Click"):
                inc, stable = (medians[f"{what}/{family}/{size}/{setting}"]["real_time"]
                               for setting in ("fixed", "stable"))
                row += [f"{digits(inc)} ms", f"{digits(stable)} ms", f"{stable / inc:.2f}"]
            rows.append(row)
    return table(["family", "nodes", "Make, IncLayout", "Make, StableLayout", "ratio",
                  "click, IncLayout", "click, StableLayout", "ratio"], rows)


# As in `steps`, for the steps of an update.
PARTS = {
    "collecting nodes and edges": [f"{steps.RUN}LayoutRun", f"{steps.RUN}load_positions"],
    "moving the old picture back": [f"{steps.RUN}move_old_by"],
    "`restore_old_levels`": [f"{steps.INTERNAL}restore_old_levels"],
    "`make_y_shifts`": [f"{steps.INTERNAL}make_y_shifts"],
    "`determine_new_nodes_levels`": [f"{steps.INTERNAL}determine_new_nodes_levels"],
    "`place_nodes_on_levels`": [f"{steps.INTERNAL}place_nodes_on_levels"],
    "`calculate_new_nodes_y_coords`": [f"{steps.INTERNAL}calculate_new_nodes_y_coords"],
    "`calculate_x_coords`": [f"{steps.INTERNAL}calculate_x_coords"],
    "writing back and remembering": [f"{steps.RUN}finish", f"{steps.INTERNAL}update_epilogue"],
}


def updates_of(nodes):
    """The stacks of the updates of clicks on the call graph."""
    command = [programs.path("click"), f"--benchmark_filter=Click/calls/{nodes}/fixed",
               "--benchmark_min_time=2"]
    for names in steps.profile(command):
        if not any(name.startswith(f"{steps.ENGINE}make_owner") for name in names):
            yield names


def click_steps():
    programs.require({"perf": "linux-perf"})
    columns = [steps.shares(updates_of(nodes), PARTS) for nodes in SIZES]
    head = [""] + [f"{count(nodes)} nodes" for nodes in SIZES]
    rows = [[part] + [f"{100 * column[part]:.0f} %" for column in columns]
            for part in [*PARTS, steps.REST]]
    return table(head, rows)
