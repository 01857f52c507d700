"""Tables of times: the layout by family and size, the life of a graph, hit tests."""

import math

from . import programs
from .markdown import count, digits, table

SIZES = (1000, 10000, 100000)


def elements(run):
    return run["nodes"] + run["edges"] + run["breaks"]


def exponent(runs):
    """The slope of time over elements, both as logarithms, by least squares."""
    points = [(math.log(elements(run)), math.log(run["real_time"])) for run in runs]
    mean_x = sum(x for x, _ in points) / len(points)
    mean_y = sum(y for _, y in points) / len(points)
    spread = sum((x - mean_x) ** 2 for x, _ in points)
    return sum((x - mean_x) * (y - mean_y) for x, y in points) / spread


def scaling():
    """`Make` of every family at every size from 1,000 on, and how the time grows."""
    medians = programs.google_benchmark("make", "^Make/[^/]+/[0-9]{4,}/")
    rows = []
    for family, title in programs.FAMILIES.items():
        runs = [run for name, run in medians.items() if name.startswith(f"Make/{family}/")]
        runs.sort(key=lambda run: run["nodes"])
        largest = runs[-1]
        cells = [title]
        for size in SIZES:
            # The largest stands in the last column, whatever its size.
            run = largest if size == SIZES[-1] else medians[f"Make/{family}/{size}"]
            cells.append(f"{digits(run['real_time'])} ms, {count(run['ns_per_element'])} ns")
        cells += [count(largest["nodes"]), count(elements(largest)), f"{exponent(runs):.2f}"]
        rows.append(cells)
    return table(["family", "1,000 nodes", "10,000 nodes", "largest", "its nodes",
                  "its elements", "exponent"], rows)


# Milliseconds by nodes: what the bare steps take, see the page.
BARE_STEPS = {1000: 0.7, 10000: 10.0, 100000: 170.0}


def yardstick():
    """The call graph next to the bare steps over flat arrays."""
    medians = programs.google_benchmark("make", r"^Make/calls/(1000|10000|100000)/")
    rows = []
    for size, bare in BARE_STEPS.items():
        run = medians[f"Make/calls/{size}"]
        rows.append([count(size), count(elements(run)), f"{digits(run['real_time'])} ms",
                     f"{digits(bare, 1)} ms", f"{run['real_time'] / bare:.1f}"])
    return table(["nodes", "elements", "`Make`", "bare steps", "factor"], rows)


def life():
    """Building, laying out and taking apart the call graph."""
    stages = ("Build", "Make", "RecalculateLayout", "TearDown")
    medians = programs.google_benchmark(
        "make", rf"^({'|'.join(stages)})/calls/(1000|10000|100000)/")
    rows = [[f"`{stage}`" if stage in ("Make", "RecalculateLayout") else stage]
            + [f"{digits(medians[f'{stage}/calls/{size}']['real_time'])} ms" for size in SIZES]
            for stage in stages]
    return table([""] + [f"{count(size)} nodes" for size in SIZES], rows)


def hits():
    """Hit tests on the call graph."""
    medians = programs.google_benchmark("hit", ".")
    titles = {
        "Still": "few, nothing moves",
        "Changed": "few, a node moves before each",
        "ChangedTwice": "few, two after each move",
        "All": "everything",
    }
    rows = []
    for test in ("HitNodeTest", "HitEdgeTest"):
        for kind, title in titles.items():
            cells = [f"`{test}`, {title}"]
            for size in SIZES:
                run = medians[f"{test}/{kind}/{size}"]
                cells.append(f"{digits(run['cpu_time'])} µs, {digits(run['hits'], 1)}")
            rows.append(cells)
    return table([""] + [f"{count(size)} nodes" for size in SIZES], rows)
