"""Drawings of graphs by this library and by other programs, with the time that each took."""

import math
import os
import pathlib
import resource
import signal
import statistics
import subprocess
import tempfile

from . import peers, programs, quality_dot, quality_graph

LIMIT_SECONDS = 20
OUT_OF_TIME = f"over {LIMIT_SECONDS} s"
# What a run of `dot` has to take for its time to be worth reading.
LONG_ENOUGH = 0.3

# The status with which `draw_elkjs.js` says so.
TOOK_TOO_LONG = 3

OURS = ("inc", "stable")
PEERS = ("dot", "elkjs")


class Failed(Exception):
    """There is no drawing, and this is why."""


def run(command, limit=None, text=None):
    """What a program prints, and its user time. With a limit it may use so many seconds of it.

    The kernel tells a program that has a limit its processor time in steps of milliseconds.
    """

    def prepare():
        peers.give_stack()
        if limit is not None:
            resource.setrlimit(resource.RLIMIT_CPU, (limit, limit + 2))

    with tempfile.TemporaryFile("w+") as source, tempfile.TemporaryFile("w+") as out:
        source.write(text or "")
        source.seek(0)
        process = subprocess.Popen(command, stdin=source, stdout=out, stderr=subprocess.DEVNULL,
                                   preexec_fn=prepare)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        out.seek(0)
        output = out.read()
    if process.returncode in (-signal.SIGXCPU, -signal.SIGKILL, TOOK_TOO_LONG):
        raise Failed(OUT_OF_TIME)
    if process.returncode != 0:
        raise Failed("failed")
    return output, usage.ru_utime


def draw_ours(layout, name):
    """The median time of three; all three drawings are the same."""
    def sample():
        drawing, _ = run([programs.path("quality"), "draw", layout, name])
        first, rest = drawing.split("\n", 1)
        return float(first.removeprefix("t ")), rest

    times, drawings = zip(*[sample() for _ in range(3)])
    return f"t {statistics.median(times)}\n{drawings[0]}"


def draw_with_dot(graph):
    """Its time is that of a run, less that of a run that only reads and writes the drawing."""
    with tempfile.TemporaryDirectory() as folder:
        source, drawing = (str(pathlib.Path(folder) / name) for name in ("graph.gv", "drawing.gv"))
        pathlib.Path(source).write_text(quality_dot.to_dot(graph))
        text, _ = run(["dot", "-Tjson", source], LIMIT_SECONDS)

        def seconds(copies):
            written, whole = run(["dot", "-Tdot"] + copies * [source], LIMIT_SECONDS + 10)
            pathlib.Path(drawing).write_text(written)
            return (whole - run(["neato", "-n2", "-Tdot", drawing])[1]) / copies

        once = seconds(1)
        copies = min(100, math.ceil(LONG_ENOUGH / max(once, 0.003)))
        taken = once if copies == 1 else seconds(copies)
    drawn = quality_dot.from_json(graph, text)
    return quality_graph.write(graph, drawn, round(1e3 * taken, 3))


def draw_with_elkjs(graph_text):
    script = str(peers.FOLDER / "draw_elkjs.js")
    # Starting up and warming up take time too; the script tells whether one layout has taken too
    # much of it.
    command = ["node", f"--stack-size={peers.STACK_BYTES // 1024 - 8192}", script,
               str(LIMIT_SECONDS)]
    return run(command, LIMIT_SECONDS + 5, graph_text)[0]


def draw(program, name, graph_text):
    """The drawing as text."""
    if program in OURS:
        return draw_ours(program, name)
    if program == "dot":
        return draw_with_dot(quality_graph.parse(graph_text))
    return draw_with_elkjs(graph_text)


def measure(drawing):
    """The measures of a drawing, by name."""
    output, _ = run([programs.path("quality"), "measure"], text=drawing)
    return {name: float(value) for name, value in map(str.split, output.splitlines())}
