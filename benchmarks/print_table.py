#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Runs the benchmark programs and prints one table: the figures of goals.tsv, each beside its peer from the same run.

usage: print_table.py BIN-FOLDER [FILTER]   (FILTER: regular expression over the figures' names)
Exit code 1 if a goal is not met.
"""
import glob
import json
import os
import re
import subprocess
import sys
import tempfile

# Seconds, bytes or things counted per unit of the table.
UNITS = {"ms": 1e-3, "us": 1e-6, "ns": 1e-9, "MB": 1e6, "images": 1, "processors": 1, "part": 1}
TIME_UNITS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}


class Goal:
    def __init__(self, line):
        fields = line.rstrip("\n").split("\t")
        self.figure, self.own, self.peer, self.unit, value, ratio = fields[:6]
        self.needed, _, least = fields[6].partition(">=") if len(fields) > 6 else ("-", "", "0")
        self.least = float(least)
        self.max_value = None if value == "-" else float(value)
        self.max_ratio = None if ratio == "-" else float(ratio)

    def benchmarks(self):
        return {name.split(":")[0] for name in (self.own, self.peer, self.needed) if name != "-"}

    def text(self):
        parts = []
        if self.max_value is not None:
            parts.append(f"<= {self.max_value:g} {self.unit}")
        if self.max_ratio is not None:
            parts.append(f"<= {self.max_ratio:g}x")
        return ", ".join(parts) or "-"

    def is_applicable(self, rows):
        needed = value_of(rows, self.needed)
        return needed is None or needed >= self.least


def read_goals(pattern):
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "goals.tsv")
    with open(path, encoding="utf-8") as file:
        goals = [Goal(line) for line in file if line.strip() and not line.startswith("#")]
    return [goal for goal in goals if re.search(pattern, goal.figure, re.IGNORECASE)]


def run(program, names):
    """Median of several repetitions of each benchmark, as {name: row}."""
    # Some benchmarks append what they were given (iterations:1, manual_time, real_time) to their names.
    pattern = "^(" + "|".join(re.escape(name) for name in sorted(names)) + ")(/iterations:[0-9]+|/(manual|real)_time)*$"
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        result = subprocess.run(
            [program, f"--benchmark_filter={pattern}", "--benchmark_repetitions=5", "--benchmark_min_time=0.2",
             "--benchmark_enable_random_interleaving=true", f"--benchmark_out={out.name}",
             "--benchmark_out_format=json"],
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
            # The peer's allocator keeps what is freed, out of sight of what measures memory.
            env={**os.environ, "G_SLICE": "always-malloc"})
        if result.returncode != 0:
            sys.exit(f"{program} failed: {result.stderr.strip()}")
        text = out.read()
    if not text.strip():
        return {}
    rows = {}
    for row in json.loads(text)["benchmarks"]:
        if row.get("error_occurred"):
            sys.exit(f"{row['name']}: {row.get('error_message')}")
        if row.get("aggregate_name") == "median":
            rows[re.sub(r"/(iterations:\d+|(manual|real)_time)", "", row["run_name"])] = row
    return rows


def value_of(rows, name):
    """Seconds or bytes; None if the benchmark did not run."""
    benchmark, _, counter = name.partition(":")
    row = rows.get(benchmark)
    if row is None:
        return None
    if counter:
        return row[counter]
    # The CPU's time, as other work on the machine would otherwise count as ours, unless the benchmark chose another.
    time = row["real_time"] if re.search("(manual|real)_time", row["run_name"]) else row["cpu_time"]
    return time * TIME_UNITS[row["time_unit"]]


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    goals = read_goals(sys.argv[2] if len(sys.argv) == 3 else "")
    if not goals:
        sys.exit(f"no figure matches '{sys.argv[2]}'")
    names = set().union(*(goal.benchmarks() for goal in goals))
    rows = {}
    for program in sorted(glob.glob(os.path.join(sys.argv[1], "bench_*"))):
        rows.update(run(program, names))

    table = [("figure", "measured", "beside", "ratio", "goal", "met")]
    missed = 0
    for goal in goals:
        own, peer = value_of(rows, goal.own), value_of(rows, goal.peer)
        scale = UNITS[goal.unit]
        ratio = own / peer if own is not None and peer else None
        met = own is not None
        met = met and (goal.max_value is None or own / scale <= goal.max_value)
        met = met and (goal.max_ratio is None or (ratio is not None and ratio <= goal.max_ratio))
        applies = goal.is_applicable(rows)
        missed += applies and not met
        other = "peer" if goal.peer.split(":")[0].endswith("peer") else goal.peer.split(":")[0]
        table.append((
            goal.figure,
            "not measured" if own is None else f"{own / scale:.3g} {goal.unit}",
            "-" if peer is None else f"{peer / scale:.3g} {goal.unit} ({other})",
            "-" if ratio is None else f"{ratio:.3g}x",
            goal.text(),
            ("yes" if met else "NO") if applies
            else f"not applicable: {goal.needed} {value_of(rows, goal.needed):.3g} < {goal.least:g}"))
    widths = [max(len(row[i]) for row in table) for i in range(len(table[0]))]
    for i, row in enumerate(table):
        print("  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip())
        if i == 0:
            print("  ".join("-" * width for width in widths))
    if missed:
        print(f"{missed} of {len(goals)} goals not met", file=sys.stderr)
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
