"""The benchmark programs: building them and running them."""

import json
import os
import pathlib
import resource
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
# Another folder serves to measure one state of the sources while working on the next.
BUILD = pathlib.Path(os.environ.get("NODELINE_BENCH_BUILD", ROOT / "build" / "bench"))

# In the order of the tables.
FAMILIES = {
    "calls": "call graph",
    "calls-back": "call graph, 3 % back edges",
    "layered": "layered, long edges",
    "tree": "tree",
    "chain": "chain",
    "knot": "one strongly connected component",
    "nested": "nested clusters",
    "ladder": "ladder of diamonds",
    "star": "star",
}


def say(text):
    print(text, file=sys.stderr, flush=True)


def require(commands):
    """Ends the script unless the commands are there; `commands` names the package of each."""
    missing = sorted({commands[name] for name in commands if not shutil.which(name)})
    if missing:
        sys.exit(f"Missing: {' '.join(missing)}. To install: apt-get install {' '.join(missing)}")


def build():
    """Brings the programs up to date; quick if they are."""
    require({"cmake": "cmake", "ninja": "ninja-build", "g++": "g++"})
    off = ("CLI", "EXAMPLES", "TESTS", "INSTALL", "QT")
    configure = ["cmake", "--preset", "release", "-B", str(BUILD)]
    configure += ["-DNODELINE_CAIRO=AUTO"] + [f"-DNODELINE_{option}=OFF" for option in off]
    for command in (configure, ["cmake", "--build", str(BUILD)]):
        done = subprocess.run(command, cwd=ROOT, capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(done.stdout + done.stderr)
    busy = os.getloadavg()[0]
    if busy > 1.5:
        say(f"The machine is busy (load {busy:.1f}): times will be too long.")


def path(name):
    return str(BUILD / "bin" / f"bench-{name}")


def once(family, nodes, samples=1, stack_kib=None):
    """Lays one graph out in a process of its own, if need be with a small stack."""

    def limit_stack():
        if stack_kib is not None:
            resource.setrlimit(resource.RLIMIT_STACK, (stack_kib * 1024, stack_kib * 1024))

    command = [path("once"), family, str(nodes), "--samples", str(samples)]
    done = subprocess.run(command, capture_output=True, text=True, preexec_fn=limit_stack)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(command[1:])} ended with status {done.returncode}")
    return json.loads(done.stdout)


def google_benchmark(name, pattern, repetitions=5):
    """Medians of a Google Benchmark program: by name of the benchmark, without its suffixes."""
    command = [path(name), f"--benchmark_filter={pattern}", "--benchmark_format=json",
               "--benchmark_min_time=0.1", f"--benchmark_repetitions={repetitions}",
               "--benchmark_report_aggregates_only=true"]
    say(f"bench-{name} {pattern}")
    done = subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    runs = json.loads(done.stdout)["benchmarks"]
    return {run["run_name"].removesuffix("/manual_time"): run
            for run in runs if run["aggregate_name"] == "median"}
