#!/usr/bin/env python3
"""Runs Google Benchmark programs and prints their entries in one table."""

import argparse
import json
import os
import subprocess
import sys


def entries_of(program, pattern):
    command = [program, f"--benchmark_filter={pattern}", "--benchmark_format=json"]
    run = subprocess.run(command, capture_output=True, text=True)
    if run.returncode != 0 or not run.stdout.strip():
        return []  # no entry of this program matches
    return json.loads(run.stdout)["benchmarks"]


def row(entry):
    if entry.get("error_occurred"):
        return (entry["name"], "", "", "skipped: " + entry["error_message"])
    if "ratio" in entry:
        return (entry["name"], f"{entry['peer_ns']:,.0f}", f"{entry['ours_ns']:,.0f}",
                f"{entry['ratio']:.3f}")
    scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[entry["time_unit"]]
    return (entry["name"], "", f"{entry['cpu_time'] * scale:,.0f}", "")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--filter", default=".")
    parser.add_argument("--json", help="also write the raw entries to this file")
    parser.add_argument("programs", nargs="+")
    arguments = parser.parse_args()

    entries = []
    for program in arguments.programs:
        if os.access(program, os.X_OK):
            entries += entries_of(program, arguments.filter)
    rows = [("entry", "peer ns", "ours ns", "ratio")] + [row(entry) for entry in entries]
    widths = [max(len(line[i]) for line in rows) for i in range(3)]
    for name, peer, ours, ratio in rows:
        print(f"{name:<{widths[0]}}  {peer:>{widths[1]}}  {ours:>{widths[2]}}  {ratio}")
    if arguments.json:
        with open(arguments.json, "w", encoding="utf-8") as out:
            json.dump(entries, out, indent=2)
    return 0 if entries else 1


if __name__ == "__main__":
    sys.exit(main())
