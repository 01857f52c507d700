"""Timing other layout programs on the generated graphs."""

import collections
import json
import math
import os
import pathlib
import resource
import signal
import statistics
import subprocess
import threading
import time

from . import programs

FOLDER = programs.ROOT / "bench" / "peers"
LIMIT_SECONDS = 120
# What a run of `dot` has to take for its time to be worth reading.
LONG_ENOUGH = 0.5
# Deep graphs are no reason to fail: the programs get all the stack they may ask for.
STACK_BYTES = 2**29
HEAP_MIB = 8192

# How a peer fared: `ms` is None unless it finished, and then `reason` says why.
Result = collections.namedtuple("Result", "ms reason", defaults=(None, None))
OUT_OF_TIME = "did not finish within two minutes"


def give_stack():
    _, most = resource.getrlimit(resource.RLIMIT_STACK)
    stack = STACK_BYTES if most == resource.RLIM_INFINITY else min(STACK_BYTES, most)
    resource.setrlimit(resource.RLIMIT_STACK, (stack, most))


def export(family, nodes, file):
    with open(file, "w") as out:
        subprocess.run([programs.path("export"), family, str(nodes)], check=True, stdout=out)


def to_dot(plan):
    """The graph in the language of Graphviz; owners are clusters."""
    inside = collections.defaultdict(list)
    for node, owner in enumerate(plan["owners"]):
        inside[owner].append(node)
    lines = []

    def write(node):
        if node not in inside:
            lines.append(f"n{node};")
            return
        lines.append(f"subgraph cluster_{node} {{")
        for child in inside[node]:
            write(child)
        lines.append("}")

    width, height = plan["width"] / 72, plan["height"] / 72
    lines.append("digraph {")
    lines.append("rankdir=LR;")
    lines.append(f'node [shape=box, label="", fixedsize=true, width={width}, height={height}];')
    for node in inside[-1]:
        write(node)
    lines += [f"n{a} -> n{b};" for a, b in plan["edges"]]
    lines.append("}")
    return "\n".join(lines) + "\n"


def user_seconds_of(command, out):
    """The user time of a process that gets two minutes of it, or why there is none."""
    def limit():
        give_stack()
        resource.setrlimit(resource.RLIMIT_CPU, (LIMIT_SECONDS, LIMIT_SECONDS + 5))

    with open(out, "w") as file:
        process = subprocess.Popen(command, stdout=file, stderr=subprocess.DEVNULL,
                                   preexec_fn=limit)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode == -signal.SIGXCPU:
        return None, OUT_OF_TIME
    if process.returncode != 0:
        return None, f"failed ({process.returncode})"
    return usage.ru_utime, None


def time_dot(plan, folder, samples):
    """Layout alone: a run of `dot`, less a run that reads and writes its result as it is."""
    graph, drawing, copy = (str(pathlib.Path(folder) / name)
                            for name in ("graph.gv", "drawing.gv", "copy.gv"))
    pathlib.Path(graph).write_text(to_dot(plan))

    def sample(copies):
        whole, reason = user_seconds_of(["dot", "-Tdot"] + copies * [graph], drawing)
        if reason:
            return None, reason
        rest, reason = user_seconds_of(["neato", "-n2", "-Tdot", drawing], copy)
        return (None, reason) if reason else ((whole - rest) / copies, None)

    # A small graph is laid out many times by one process, or its start would drown the layout.
    seconds, reason = sample(1)
    if reason:
        return Result(reason=reason)
    copies = min(100, math.ceil(LONG_ENOUGH / max(seconds, 0.001)))
    times = [seconds] if copies == 1 else []
    while len(times) < samples:
        seconds, reason = sample(copies)
        if reason:
            return Result(reason=reason)
        times.append(seconds)
    return Result(ms=1e3 * statistics.median(times))


def user_seconds_so_far(pid):
    """The user time that a running process has used; None once it is gone."""
    try:
        stat = pathlib.Path(f"/proc/{pid}/stat").read_text()
    except FileNotFoundError:
        return None
    return int(stat.rpartition(")")[2].split()[11]) / os.sysconf("SC_CLK_TCK")


class Watch:
    """Follows what a timing script prints, and ends the script when a sample takes too long."""

    def __init__(self, process):
        self.process = process
        self.samples = []
        self.out_of_time = False
        self.began = 0.0
        self.reader = threading.Thread(target=self.read)
        self.reader.start()

    def read(self):
        for line in self.process.stdout:
            if line.strip() == "start":
                self.began = user_seconds_so_far(self.process.pid) or 0.0
            else:
                self.samples.append(float(line))

    def wait(self):
        while self.process.poll() is None:
            used = user_seconds_so_far(self.process.pid)
            if used is not None and used - self.began > LIMIT_SECONDS:
                self.out_of_time = True
                self.process.kill()
            time.sleep(0.2)
        self.reader.join()


def time_in_node(peer, graph, folder, samples):
    """A JavaScript program, when warm: the first sample does not count."""
    errors = pathlib.Path(folder) / "errors"
    command = ["node", f"--stack-size={STACK_BYTES // 1024 - 8192}",
               f"--max-old-space-size={HEAP_MIB}", str(FOLDER / "time_layout.js"), peer, graph,
               str(samples)]
    with open(errors, "w") as file:
        process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=file, text=True,
                                   preexec_fn=give_stack)
        watch = Watch(process)
        watch.wait()
    if watch.out_of_time:
        return Result(reason=OUT_OF_TIME)
    if process.returncode != 0:
        text = errors.read_text()
        known = ["heap out of memory", "Maximum call stack size exceeded"]
        return Result(reason=next((f"failed: {k}" for k in known if k in text),
                                  f"failed ({process.returncode})"))
    return Result(ms=statistics.median(watch.samples[1:]))


def time_peer(peer, graph, folder, samples):
    if peer == "dot":
        return time_dot(json.loads(pathlib.Path(graph).read_text()), folder, samples)
    return time_in_node(peer, graph, folder, samples)


def install():
    programs.require({"node": "nodejs", "npm": "npm", "dot": "graphviz", "neato": "graphviz"})
    if not (FOLDER / "node_modules").is_dir():
        subprocess.run(["npm", "ci", "--silent"], cwd=FOLDER, check=True, stdout=subprocess.DEVNULL)


def versions():
    dot = subprocess.run(["dot", "-V"], capture_output=True, text=True).stderr.split()
    node = subprocess.run(["node", "--version"], capture_output=True, text=True).stdout.strip()
    pinned = json.loads((FOLDER / "package.json").read_text())["dependencies"]
    names = [f"Graphviz {dot[4]}"] + [f"{name} {version}" for name, version in pinned.items()]
    return f"{', '.join(names)}, Node.js {node.removeprefix('v')}"
