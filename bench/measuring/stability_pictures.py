"""Pictures of graphs by other programs: the box of every node, for a graph that is given as it stands.

A graph has "nodes", a list of (number, owner or -1, width, height), and "edges", a list of (number,
number). A picture is a list of (left, top, width, height), one for each node, in logical units with
y going down. It comes with the processor time that it took, in milliseconds; None stands for a layout
that took too long or failed.
"""

import collections
import json
import resource
import selectors
import subprocess

from . import peers

LIMIT_SECONDS = 20
UNITS_PER_INCH = 72


def to_dot(graph):
    """The graph in the language of Graphviz; owners are clusters."""
    inside = collections.defaultdict(list)
    for node in graph["nodes"]:
        inside[node[1]].append(node)
    lines = []

    def write(node):
        number, _, width, height = node
        if number not in inside:
            lines.append(f"n{number} [width={width / UNITS_PER_INCH}, "
                         f"height={height / UNITS_PER_INCH}];")
            return
        lines.append(f"subgraph cluster_{number} {{")
        for child in inside[number]:
            write(child)
        lines.append("}")

    lines.append("digraph {")
    lines.append("rankdir=LR;")
    lines.append('node [shape=box, label="", fixedsize=true];')
    for node in inside[-1]:
        write(node)
    lines += [f"n{a} -> n{b};" for a, b in graph["edges"]]
    lines.append("}")
    return "\n".join(lines) + "\n"


def from_dot(drawing, graph):
    """The boxes in a drawing that `dot` has written as JSON, where y goes up."""
    bottom, height = (float(drawing["bb"].split(",")[i]) for i in (1, 3))
    boxes = {}
    for item in drawing["objects"]:
        if "bb" in item:
            left, low, right, high = map(float, item["bb"].split(","))
            boxes[item["name"].removeprefix("cluster_")] = (left, high, right - left, high - low)
        elif "pos" in item:
            x, y = map(float, item["pos"].split(","))
            wide, tall = (UNITS_PER_INCH * float(item[key]) for key in ("width", "height"))
            boxes[item["name"].removeprefix("n")] = (x - wide / 2, y + tall / 2, wide, tall)
    found = [boxes[str(node[0])] for node in graph["nodes"]]
    return [(left, bottom + height - high, wide, tall) for left, high, wide, tall in found]


def seconds_of_children():
    """The processor time of all processes that have been waited for."""
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


class Dot:
    """One process for each layout. Its time is that of the whole process."""

    def draw(self, graph):
        def limit():
            peers.give_stack()
            resource.setrlimit(resource.RLIMIT_CPU, (LIMIT_SECONDS, LIMIT_SECONDS + 5))

        before = seconds_of_children()
        done = subprocess.run(["dot", "-Tjson0"], input=to_dot(graph), capture_output=True,
                              text=True, preexec_fn=limit)
        ms = 1e3 * (seconds_of_children() - before)
        return (from_dot(json.loads(done.stdout), graph), ms) if done.returncode == 0 else None

    def close(self):
        pass


class Elkjs:
    """One process for all layouts, and a new one after a layout that took too long.

    The time is that of the layout call alone.
    """

    def __init__(self):
        self.process = None

    def draw(self, graph):
        if self.process is None:
            command = ["node", f"--stack-size={peers.STACK_BYTES // 1024 - 8192}",
                       str(peers.FOLDER / "lay_out.js")]
            self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                            stderr=subprocess.DEVNULL, text=True,
                                            preexec_fn=peers.give_stack)
        question = {"nodes": graph["nodes"], "edges": graph["edges"]}
        try:
            print(json.dumps(question), file=self.process.stdin, flush=True)
            answer = self.process.stdout.readline() if self.answers_in_time() else ""
        except BrokenPipeError:
            answer = ""
        if not answer:
            self.close()
            return None
        answer = json.loads(answer)
        return answer["boxes"], answer["ms"]

    def answers_in_time(self):
        """Waits until there is something to read, or the process has used up its time."""
        began = peers.user_seconds_so_far(self.process.pid)
        with selectors.DefaultSelector() as selector:
            selector.register(self.process.stdout, selectors.EVENT_READ)
            while not selector.select(timeout=0.2):
                if peers.user_seconds_so_far(self.process.pid) - began > LIMIT_SECONDS:
                    return False
        return True

    def close(self):
        if self.process is not None:
            self.process.kill()
            self.process.communicate()
            self.process = None


def versions():
    """What is installed of the programs that draw here."""
    return ", ".join(part for part in peers.versions().split(", ") if "dagre" not in part)
