"""How far a picture stays what it was: one picture of a graph compared with the next.

A picture maps the number of a node to its box (left, top, width, height); `owners` maps it to that
of its owner.
"""

import bisect
import collections
import dataclasses

# `dot` writes five digits, so that positions in a large drawing are only known to the unit.
TOLERANCE = 1.0


def middle_y(box):
    return box[1] + box[3] / 2


def stacked(picture, family):
    """The pairs of nodes that have some range of x in common, so that one stands above the other.

    These are the nodes of one level, as far as a picture shows it: programs align the boxes of a
    level each in its own way. A pair, lesser number first, is mapped to the upper node.
    """
    family = sorted(family, key=lambda number: picture[number][0])
    pairs = {}
    for i, a in enumerate(family):
        right = picture[a][0] + picture[a][2]
        for b in family[i + 1:]:
            if picture[b][0] > right - TOLERANCE:
                break
            pairs[min(a, b), max(a, b)] = min(a, b, key=lambda number: middle_y(picture[number]))
    return pairs


def groups(keys):
    """The nodes by what `keys` maps them to."""
    result = collections.defaultdict(list)
    for number, key in keys.items():
        result[key].append(number)
    return list(result.values())


@dataclasses.dataclass
class Change:
    """What became of the nodes that both pictures have, or of those of many pairs of pictures."""

    pictures: int = 0
    nodes: int = 0
    moved: int = 0
    sum_x: float = 0.0
    sum_y: float = 0.0
    most_x: float = 0.0
    most_y: float = 0.0
    # Pairs of nodes of one owner of which one stood above the other.
    pairs: int = 0
    # Those that are the other way round now.
    swapped: int = 0
    # Pairs that are not above one another any more, or have come to be.
    regrouped: int = 0
    # Nodes that have moved along y against their owner in a way that no opening explains.
    unexplained: int = 0
    # Pairs of boxes of one owner that lie on one another in the new picture.
    overlaps: int = 0
    # The time that the new pictures took.
    sum_ms: float = 0.0
    most_ms: float = 0.0

    def add(self, other):
        for field in dataclasses.fields(self):
            name = field.name
            join = max if name.startswith("most") else lambda a, b: a + b
            setattr(self, name, join(getattr(self, name), getattr(other, name)))


def unexplained(old, new, nodes, owner):
    """Nodes of one owner that do not fit with the others.

    Where a picture opens, all that lies below a height moves down alike. So the way down must not
    get shorter from a node to those below it; what remains is the fewest nodes to leave out for
    that to hold.
    """
    def way(number):
        base = new[owner][1] - old[owner][1] if owner in old else 0.0
        return round(new[number][1] - old[number][1] - base, 3)

    # An opening goes by the top of a node, or by the middle that it has with its new size.
    heights = (lambda n: round(old[n][1], 3), lambda n: old[n][1] + new[n][3] / 2)
    return min(left_over(sorted(nodes, key=lambda n: (height(n), way(n))), way)
               for height in heights)


def left_over(nodes, way):
    """How many nodes to leave out so that the way never gets shorter from one to the next."""
    longest = []
    for number in nodes:
        place = bisect.bisect_right(longest, way(number))
        longest[place:place + 1] = [way(number)]
    return len(nodes) - len(longest)


def overlaps(picture, family):
    """How many pairs of boxes have more than a touch in common."""
    family = sorted((picture[number] for number in family))
    found = 0
    for i, (left, top, width, height) in enumerate(family):
        for x, y, _, tall in family[i + 1:]:
            if x > left + width - TOLERANCE:
                break
            found += y < top + height - TOLERANCE and top < y + tall - TOLERANCE
    return found


def compare(old, new, owners, ms):
    """The change from one picture to the next, which took so many milliseconds."""
    kept = [number for number in old if number in new]
    change = Change(pictures=1, nodes=len(kept), sum_ms=ms, most_ms=ms)
    for number in kept:
        x, y = (abs(new[number][i] - old[number][i]) for i in (0, 1))
        change.moved += x > TOLERANCE or y > TOLERANCE
        change.sum_x += x
        change.sum_y += y
        change.most_x = max(change.most_x, x)
        change.most_y = max(change.most_y, y)
    for family in groups({number: owners[number] for number in new}):
        change.overlaps += overlaps(new, family)
    for family in groups({number: owners[number] for number in kept}):
        change.unexplained += unexplained(old, new, family, owners[family[0]])
        was, is_now = stacked(old, family), stacked(new, family)
        change.pairs += len(was)
        change.regrouped += len(was.keys() ^ is_now.keys())
        for (a, b), upper in was.items():
            lower = a if upper == b else b
            change.swapped += middle_y(new[upper]) > middle_y(new[lower])
    return change
