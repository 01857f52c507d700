"""Counts of instructions: the same number twice, on any machine and under any load."""

import math
import re
import subprocess

from . import programs
from .markdown import count, table

MAKE = "nodeline::IncLayout::Make(nodeline::Node)"
SIZES = (1000, 10000)


def instructions_of_make(family, nodes):
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
               f"--toggle-collect={MAKE}", programs.path("once"), family, str(nodes)]
    programs.say(f"callgrind bench-once {family} {nodes}")
    done = subprocess.run(command, check=True, capture_output=True, text=True)
    return int(re.search(r"Collected : (\d+)", done.stderr)[1])


def instructions():
    """`Make` of every family, and how the count grows."""
    programs.require({"valgrind": "valgrind"})
    rows = []
    for family, title in programs.FAMILIES.items():
        elements = []
        counts = []
        for size in SIZES:
            run = programs.once(family, size)
            elements.append(run["nodes"] + run["edges"] + run["breaks"])
            counts.append(instructions_of_make(family, size))
        exponent = math.log(counts[1] / counts[0]) / math.log(elements[1] / elements[0])
        rows.append([title] + [count(c / e) for c, e in zip(counts, elements)]
                    + [f"{exponent:.2f}"])
    return table(["instructions for each element"]
                 + [f"{count(size)} nodes" for size in SIZES] + ["exponent"], rows)
