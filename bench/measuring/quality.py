"""Measures of drawings, kept from one run to the next, and the tables of them."""

import collections
import hashlib
import json
import pathlib
import statistics

from . import programs, quality_graph
from . import quality_programs as drawing
from .markdown import count, digits, table

# By name: what bench-quality calls it, and what people do.
TITLES = {
    "crossings": "crossings",
    "bends": "bends",
    "length": "length of all edges",
    "area": "area",
    "over": "edges over nodes",
    "ms": "time",
}
# What is smaller, everybody draws well.
LEAST_EDGES = 40
GENERATED = [f"nested:{nodes}" for nodes in (50, 100, 200, 500)]

# `source` is what bench-quality takes; `text` is the graph as it tells it.
Subject = collections.namedtuple("Subject", "title source text nodes edges")


def subject(title, source):
    text, _ = drawing.run([programs.path("quality"), "graph", source])
    graph = quality_graph.parse(text)
    return Subject(title, source, text, len(graph.owners), len(graph.edges))


def subjects_in(folder):
    return [subject(file.stem, str(file)) for file in sorted(pathlib.Path(folder).glob("*.txt"))]


def subjects(folders, most):
    """The project's own graphs, or those of the folders that are not among them; by rising size."""
    own = subjects_in(programs.ROOT / "examples" / "graphs")
    own += [subject(f"nested clusters, {source.split(':')[1]}", source) for source in GENERATED]
    passed_over = {graph.text for graph in own} if folders else set()
    offered = [graph for folder in folders for graph in subjects_in(folder)] if folders else own
    found = {}
    for graph in offered:
        wanted = graph.edges >= LEAST_EDGES and graph.nodes <= most
        if wanted and graph.text not in passed_over:
            found.setdefault(graph.text, graph)
    return sorted(found.values(), key=lambda graph: (graph.nodes + graph.edges, graph.title))


class Findings:
    """The measures by program and graph; a text where there is no drawing tells why.

    What others have drawn is kept in a file, for it takes them long and stays the same.
    """

    def __init__(self, file, resume):
        self.file = file
        self.kept = json.loads(file.read_text()) if resume and file.exists() else {}
        self.fresh = {}

    def of(self, program, graph):
        digest = hashlib.sha256(graph.text.encode()).hexdigest()[:16]
        key = f"{program} {graph.title} {digest}"
        store = self.fresh if program in drawing.OURS else self.kept
        if key not in store:
            programs.say(f"{graph.title}: {program}")
            store[key] = look(program, graph)
            if store is self.kept:
                self.save()
        return store[key]

    def save(self):
        """Keeps what another run may have found out meanwhile."""
        others = json.loads(self.file.read_text()) if self.file.exists() else {}
        self.file.write_text(json.dumps(others | self.kept, indent=1))


def look(program, graph):
    try:
        measures = drawing.measure(drawing.draw(program, graph.source, graph.text))
    except drawing.Failed as failure:
        return str(failure)
    measures["area"] = measures["width"] * measures["height"]
    return measures


def cell(program, graph, measure, findings):
    measures = findings.of(program, graph)
    if isinstance(measures, str):
        return measures
    if measure == "ms":
        return f"{digits(measures['ms'])} ms"
    missing = graph.edges - int(measures["edges"])
    note = f" ({missing} edges missing)" if missing else ""
    return count(measures[measure]) + note


def table_of(measure, graphs, names, findings):
    """A row for each graph."""
    rows = [[graph.title, count(graph.nodes), count(graph.edges)]
            + [cell(name, graph, measure, findings) for name in names] for graph in graphs]
    return table([TITLES[measure], "nodes", "edges", *names], rows)


def ratios(measure, name, base, graphs, findings):
    """How many times as much as with another program, on each graph that has both drawings."""
    pairs = [(findings.of(name, graph), findings.of(base, graph)) for graph in graphs]
    return [ours[measure] / theirs[measure] for ours, theirs in pairs
            if not isinstance(ours, str) and not isinstance(theirs, str) and theirs[measure] > 0]


def summary(graphs, names, findings, base="dot"):
    """Medians of the ratios to `dot`; of what `dot` often has none of, the sums."""
    drawn = [graph for graph in graphs
             if not any(isinstance(findings.of(name, graph), str) for name in names)]
    rows = [[f"{title}, ratio to {base}"]
            + [f"{digits(statistics.median(ratios(measure, name, base, graphs, findings)))}"
               for name in names]
            for measure, title in TITLES.items() if measure != "over"]
    rows.append([f"{TITLES['over']}, on the {len(drawn)} graphs that all have drawn"]
                + [count(sum(findings.of(name, graph)["over"] for graph in drawn))
                   for name in names])
    rows.append([f"graphs with fewer crossings than {base}"]
                + [f"{sum(ratio < 1 for ratio in found)} of {len(found)}" for found in
                   (ratios("crossings", name, base, graphs, findings) for name in names)])
    rows.append([f"graphs drawn, of {len(graphs)}"]
                + [str(sum(not isinstance(findings.of(name, graph), str) for graph in graphs))
                   for name in names])
    return table(["", *names], rows)
