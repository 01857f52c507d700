"""Graphs and drawings in the lines that bench-quality prints and reads."""

import collections

# Widths and heights are those of nodes without contents; owners are -1 at the top.
Graph = collections.namedtuple("Graph", "owners sizes edges")
# Boxes have left, top, width and height. Routes are lists of points, and empty where there is none;
# `bends` has their numbers of bends where they were curves, and else is None.
Drawing = collections.namedtuple("Drawing", "boxes routes bends", defaults=(None,))


def parse(text):
    owners, sizes, edges = [], [], []
    for line in text.splitlines():
        kind, _, *numbers = line.split()
        if kind == "n":
            owners.append(int(numbers[0]))
            sizes.append((float(numbers[1]), float(numbers[2])))
        else:
            edges.append((int(numbers[0]), int(numbers[1])))
    return Graph(owners, sizes, edges)


def contents(graph):
    """The nodes in each node that has some, and in -1."""
    inside = collections.defaultdict(list)
    for node, owner in enumerate(graph.owners):
        inside[owner].append(node)
    return inside


def write(graph, drawing, ms):
    lines = [f"t {ms}"]
    for node, (left, top, width, height) in enumerate(drawing.boxes):
        lines.append(f"n {node} {graph.owners[node]} {left} {top} {width} {height}")
    for edge, (ends, route) in enumerate(zip(graph.edges, drawing.routes)):
        numbers = [edge, *ends] + [number for point in route for number in point]
        lines.append(f"r {' '.join(map(str, numbers))}")
    for edge, bends in enumerate(drawing.bends or []):
        lines.append(f"b {edge} {bends}")
    return "\n".join(lines) + "\n"
