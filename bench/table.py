"""Runs the benchmarks of a build and prints one table; scripts/bench says how.

The exponent is that of time ~ size ^ exponent, fitted over the sizes from 10,000 up.
"""
import argparse
import glob
import json
import math
import os
import re
import subprocess
import sys
import tempfile

# Whose time a benchmark's is divided by, for the same size.
PEERS = {
    "BM_Pipeline/hatched": "BM_Noder/hatched",
    "BM_Pipeline/gridded": "BM_Noder/gridded",
    "BM_PipelineLarge": "BM_Noder/gridded",
    "DxfReadEverything": "DxfReadPeer",
    "DxfWriteChanged": "DxfWritePeer",
}


def names(program, pattern):
    out = subprocess.run([program, "--benchmark_list_tests"], check=True, capture_output=True, text=True)
    return [line for line in out.stdout.split() if re.search(pattern, line)]


def run(program, name):
    """One benchmark in a process of its own: its time in milliseconds and its peak in megabytes."""
    with tempfile.NamedTemporaryFile(suffix=".json") as file:
        subprocess.run([program, "--benchmark_filter=^" + re.escape(name) + "$",
                        "--benchmark_out=" + file.name, "--benchmark_out_format=json"],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        found = json.load(file)
    result = found["benchmarks"][0]
    if result.get("error_occurred"):
        sys.exit(f"{name}: {result['error_message']}")
    scale = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}[result["time_unit"]]
    # What the engine's own clock tells is processor time already.
    time = result["real_time" if name.endswith("manual_time") else "cpu_time"]
    return time * scale, result.get("MB_peak")


def split(name):
    """BM_X/kind/1000/min_time:0.2/manual_time is BM_X/kind of 1000."""
    parts = [part for part in name.split("/") if ":" not in part and not part.endswith("_time")]
    if len(parts) > 1 and parts[-1].isdigit():
        return "/".join(parts[:-1]), int(parts[-1])
    return "/".join(parts), 0


def exponent(times):
    points = [(math.log(size), math.log(time)) for size, time in times.items() if size >= 10000 and time > 0]
    if len(points) < 2:
        return None
    x = sum(p[0] for p in points) / len(points)
    y = sum(p[1] for p in points) / len(points)
    return sum((p[0] - x) * (p[1] - y) for p in points) / sum((p[0] - x) ** 2 for p in points)


def show(value, digits):
    return "" if value is None else f"{value:.{digits}f}"


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench")
    parser.add_argument("programs")
    parser.add_argument("pattern", nargs="?", default=".")
    parser.add_argument("--save")
    parser.add_argument("--against")
    options = parser.parse_args()
    before = {}
    if options.against:
        with open(options.against, encoding="utf-8") as file:
            before = json.load(file)

    figures = {}
    told = sys.stderr.isatty()
    for program in sorted(glob.glob(os.path.join(options.programs, "*_bench"))):
        for name in names(program, options.pattern):
            if told:
                print(f"\r{name[:76]:76}", end="", file=sys.stderr, flush=True)
            figures["{}/{}".format(*split(name))] = run(program, name)
    if told:
        print("\r" + " " * 76 + "\r", end="", file=sys.stderr)
    if not figures:
        sys.exit("no benchmark of that name")

    print(f"{'benchmark':28}{'size':>9}{'ms':>12}{'to peer':>9}{'MB':>7}{'before':>12}{'ratio':>7}{'growth':>8}")
    series = {}
    for key, (time, _) in figures.items():
        name, size = key.rsplit("/", 1)
        series.setdefault(name, {})[int(size)] = time
    for name, times in series.items():
        for size, time in times.items():
            key = f"{name}/{size}"
            peer = figures.get(f"{PEERS.get(name)}/{size}")
            old = before.get(key)
            last = size == max(times)
            print(f"{name:28}{size or '':>9}{time:12.3f}{show(peer and time / peer[0], 2):>9}"
                  f"{show(figures[key][1], 0):>7}{show(old and old[0], 3):>12}"
                  f"{show(old and time / old[0], 2):>7}{show(exponent(times) if last else None, 2):>8}")
    if options.save:
        with open(options.save, "w", encoding="utf-8") as file:
            json.dump(figures, file, indent=1)


if __name__ == "__main__":
    main()
