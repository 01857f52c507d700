"""What it costs to keep a view of a call graph up to date, and where the time of a pan goes."""

import sys

from . import programs, steps
from .markdown import count, digits, table

SIZES = (1000, 10000, 100000)
PAINTERS = ("recording", "cairo")


def measure(pattern):
    medians = programs.google_benchmark("view", pattern)
    if not any("/cairo/" in name for name in medians):
        sys.exit("bench-view paints no pictures: it was built without the Cairo backend.")
    return medians


def time(run):
    return f"{digits(run['cpu_time'])} µs"


def pan():
    """A step of a pan, in views that are alike and in the middle of each graph."""
    medians = measure("^Pan")
    rows = []
    for name, title in {"Pan": "alike", "PanMiddle": "the middle"}.items():
        for size in SIZES:
            runs = [medians[f"{name}/{painter}/{size}"] for painter in PAINTERS]
            smallest = [medians[f"{name}/{painter}/{SIZES[0]}"] for painter in PAINTERS]
            met = runs[0]
            row = [title, count(size),
                   f"{count(met['nodes'])} + {count(met['edges'])}",
                   f"{met['strip_nodes']:.1f} + {met['strip_edges']:.1f}", count(met["calls"])]
            for run, first in zip(runs, smallest):
                row += [time(run), f"{run['cpu_time'] / first['cpu_time']:.2f}"]
            rows.append(row)
    return table(["view", "nodes", "in the view", "in a strip", "calls", "recording",
                  "of 1,000 nodes", "Cairo", "of 1,000 nodes"], rows)


STEPS = {
    "Hover": "pointer moves over a node",
    "Select": "click, answered by repainting the node",
    "Click": "click, as `PortNodeHandler` answers it",
    "Repaint": "everything anew",
    "Overview": "everything anew in an overview of 300 by 200 pixels",
}


def view():
    """All other steps."""
    medians = measure(f"^({'|'.join(STEPS)})/")
    rows = []
    for name, title in STEPS.items():
        cells = [title]
        for size in SIZES:
            recording, cairo = (medians[f"{name}/{painter}/{size}"] for painter in PAINTERS)
            cells.append(f"{count(recording['calls'])}, {time(recording)}, {time(cairo)}")
        rows.append(cells)
    return table(["calls, recording, Cairo"] + [f"{count(size)} nodes" for size in SIZES], rows)


# All of a paint happens in here.
PAINT = "viewkit::WindowBase::PaintPending"

# As in `steps`, for the parts of a paint.
PARTS = {
    "finding nodes": ["nodeline::Graph::HitNodeTest"],
    "finding edges": ["nodeline::Graph::HitEdgeTest"],
    "drawing nodes": ["nodeline::PortNodeHandler::Draw"],
    "drawing edges": ["nodeline::DummyEdgeHandler::Draw"],
    "scroll bars": ["viewkit::CScrollBar::DrawContent"],
    "moving the pixels": ["nodeline::cairo::ImageWindow::MovePixels"],
}


def pans_with(painter, nodes):
    """The stacks of the paints of pans."""
    command = [programs.path("view"), f"--benchmark_filter=^Pan/{painter}/{nodes}$",
               "--benchmark_min_time=4"]
    return steps.profile(command, within=PAINT)


def pan_steps():
    programs.require({"perf": "linux-perf"})
    columns = [(painter, nodes) for painter in PAINTERS for nodes in (SIZES[0], SIZES[-1])]
    shares = [steps.shares(pans_with(painter, nodes), PARTS) for painter, nodes in columns]
    head = [""] + [f"{painter.title() if painter == 'cairo' else painter}, {count(nodes)} nodes"
                   for painter, nodes in columns]
    rows = [[part] + [f"{100 * column[part]:.0f} %" for column in shares]
            for part in [*PARTS, steps.REST]]
    return table(head, rows)
