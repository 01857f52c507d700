"""Graphs in the language of Graphviz, and the drawings that `dot` makes of them."""

import json

from .quality_graph import Drawing, contents

# Graphviz counts in points, and tells sizes of nodes in inches.
POINTS_PER_INCH = 72
# Enough that a curve and its pieces look alike.
PIECES_OF_CURVE = 8


def to_dot(graph):
    """Owners are clusters; an edge of a cluster is one of a node in it, cut off at the border."""
    inside = contents(graph)
    lines = ["digraph {", "rankdir=LR;", "compound=true;", "edge [arrowsize=0];",
             'node [shape=box, label="", fixedsize=true];']

    def write(node):
        if node not in inside:
            width, height = (length / POINTS_PER_INCH for length in graph.sizes[node])
            lines.append(f"n{node} [width={width:.6f}, height={height:.6f}];")
            return
        lines.append(f"subgraph cluster_{node} {{")
        for child in inside[node]:
            write(child)
        lines.append("}")

    def stand_in(node):
        while node in inside:
            node = inside[node][0]
        return node

    for node in inside[-1]:
        write(node)
    for number, (tail, head) in enumerate(graph.edges):
        attributes = [f"number={number}"]
        if tail in inside:
            attributes.append(f"ltail=cluster_{tail}")
        if head in inside:
            attributes.append(f"lhead=cluster_{head}")
        lines.append(f"n{stand_in(tail)} -> n{stand_in(head)} [{', '.join(attributes)}];")
    return "\n".join([*lines, "}", ""])


def points_of(shape, operation):
    """The points of each outline or curve that is drawn; y grows downwards."""
    return [[(x, -y) for x, y in step["points"]]
            for step in shape.get("_draw_", []) if step["op"] == operation]


def sample(controls):
    """A chain of cubic curves as straight pieces."""
    route = controls[:1]
    for start in range(0, len(controls) - 3, 3):
        curve = controls[start:start + 4]
        for step in range(1, PIECES_OF_CURVE + 1):
            t = step / PIECES_OF_CURVE
            weights = ((1 - t) ** 3, 3 * t * (1 - t) ** 2, 3 * t * t * (1 - t), t ** 3)
            route.append(tuple(sum(weight * point[axis] for weight, point in zip(weights, curve))
                               for axis in (0, 1)))
    return route


def from_json(graph, text):
    plan = json.loads(text)
    boxes = [None] * len(graph.owners)
    for shape in plan["objects"]:
        outline = points_of(shape, "p")
        if not outline:
            continue
        node = int(shape["name"].removeprefix("cluster_").removeprefix("n"))
        left, right = min(x for x, _ in outline[0]), max(x for x, _ in outline[0])
        top, bottom = min(y for _, y in outline[0]), max(y for _, y in outline[0])
        boxes[node] = (left, top, right - left, bottom - top)
    routes = [[] for _ in graph.edges]
    bends = [0] * len(graph.edges)
    for shape in plan.get("edges", []):
        number = int(shape["number"])
        for controls in points_of(shape, "b"):
            routes[number] += sample(controls)
            bends[number] += (len(controls) - 1) // 3
        bends[number] = max(0, bends[number] - 1)
    return Drawing(boxes, routes, bends)
