"""Drawings that are small enough to be counted by hand, to see whether the counting is right."""

from . import quality_programs

# Four nodes at the corners of a rectangle, and what the edges between them come to.
CORNERS = "n 0 -1 0 0 10 10\nn 1 -1 0 40 10 10\nn 2 -1 100 0 10 10\nn 3 -1 100 40 10 10\n"
BY_HAND = {
    # The diagonals cross; the top edge meets each of them at a node that they share.
    "diagonals": (CORNERS + "r 0 0 3 10 5 100 45\nr 1 1 2 10 45 100 5\nr 2 0 2 10 5 100 5\n",
                  {"crossings": 1, "bends": 0, "over": 0}),
    # A loop upwards crosses the top edge twice, and a diagonal; it runs over the node above.
    "loop": (CORNERS + "n 4 -1 45 -25 20 10\nr 0 0 2 10 5 100 5\nr 1 0 3 10 5 100 45\n"
             "r 2 1 3 10 45 50 45 50 -20 60 -20 60 45 100 45\n",
             {"crossings": 2, "bends": 4, "over": 1, "length": 90 + 98.4886 + 220}),
    # Corners on the top edge: the second edge only touches it, the fourth runs along with it for a
    # while, and the third goes through both of these.
    "touches": (CORNERS + "r 0 0 2 10 5 100 5\nr 1 1 3 10 45 50 5 100 45\n"
                "r 2 1 3 10 45 40 5 40 -35\nr 3 1 3 10 45 30 5 70 5 100 45\n",
                {"crossings": 2, "bends": 4, "over": 0}),
}


def check():
    """Ends with an error unless the counts are right."""
    for name, (drawing, counts) in BY_HAND.items():
        measures = quality_programs.measure(drawing)
        wrong = {key: measures[key] for key, value in counts.items()
                 if abs(measures[key] - value) > 0.01}
        if wrong:
            raise SystemExit(f"{name}: measured {wrong}, by hand {counts}")
