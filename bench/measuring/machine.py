"""What the figures were measured on."""

import os
import pathlib
import platform
import subprocess


def field(file, name):
    for line in pathlib.Path(file).read_text().splitlines():
        key, _, value = line.partition(":")
        if key.strip() == name:
            return value.strip()
    return "unknown"


def first_line(*command):
    return subprocess.run(command, capture_output=True, text=True).stdout.splitlines()[0]


def machine():
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    processor = field("/proc/cpuinfo", "model name")
    memory = int(field("/proc/meminfo", "MemTotal").split()[0]) / 2**20
    cores = len(os.sched_getaffinity(0))
    return (f"Measured on {cores} cores of an \"{processor}\" with {memory:.0f} GiB of memory, "
            f"under {system} with Linux {platform.release().split('-')[0]}; built with "
            f"{first_line('g++', '--version')} and the flags of the preset `release`.")
