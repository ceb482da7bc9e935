#!/usr/bin/env python3
"""Times the library's own calls in two builds of the benchmarks, side by side.

    bench/compare_builds.py BEFORE_BIN AFTER_BIN [--rounds N] [--min-time S]
                            [--filter REGEX] [PROGRAM ...]

BEFORE_BIN and AFTER_BIN are the bin/ folders of two builds.  Each program
(bench_search, bench_replace, ... by default) runs ROUNDS times from each
folder, the two alternating so that a machine's drift hits both alike.  Only
the library's calls are compared (the first implementation of each
OPERATION/ARG group, as ratio_reporter.h names them); the median real time
of each is printed with after/before, then the geometric mean per program
and the calls that slowed down by more than 3 %.
"""
import argparse
import json
import math
import os
import re
import statistics
import subprocess
import sys
import tempfile

DEFAULT_PROGRAMS = ["bench_search", "bench_replace", "bench_regex", "bench_copy_compare",
                    "bench_map", "bench_findall", "bench_sql"]


def run(binary, min_time, filter_re):
    with tempfile.NamedTemporaryFile(suffix=".json", delete=False) as out:
        path = out.name
    args = [binary, f"--benchmark_min_time={min_time}", f"--benchmark_out={path}",
            "--benchmark_out_format=json"]
    if filter_re:
        args.append(f"--benchmark_filter={filter_re}")
    subprocess.run(args, stdout=subprocess.DEVNULL, check=True)
    with open(path) as f:
        data = json.load(f)
    os.unlink(path)
    return {b["name"]: b["real_time"] for b in data["benchmarks"] if b.get("run_type") == "iteration"}


def subjects(names):
    """The first implementation of each OPERATION/ARG group."""
    first = {}
    for name in names:
        m = re.match(r"([^:/]+):([^/]+)(/.*)?$", name)
        if not m:
            first.setdefault(name, name)
            continue
        first.setdefault((m.group(1), m.group(3)), name)
    return set(first.values())


def main():
    p = argparse.ArgumentParser()
    p.add_argument("before")
    p.add_argument("after")
    p.add_argument("programs", nargs="*", default=DEFAULT_PROGRAMS)
    p.add_argument("--rounds", type=int, default=3)
    p.add_argument("--min-time", default="0.1")
    p.add_argument("--filter", default="")
    a = p.parse_args()

    slower = []
    for program in a.programs:
        times = {"before": {}, "after": {}}
        for _ in range(a.rounds):
            for side in ("before", "after"):
                folder = a.before if side == "before" else a.after
                for name, t in run(os.path.join(folder, program), a.min_time, a.filter).items():
                    times[side].setdefault(name, []).append(t)
        names = [n for n in times["before"] if n in times["after"]]
        keep = subjects(names)
        ratios = []
        print(f"\n{program}")
        for name in names:
            if name not in keep:
                continue
            before = statistics.median(times["before"][name])
            after = statistics.median(times["after"][name])
            ratio = after / before if before > 0 else float("nan")
            ratios.append(ratio)
            print(f"  {name:60s} {before:12.1f} {after:12.1f}  {ratio:6.3f}")
            if ratio > 1.03:
                slower.append((program, name, ratio))
        if ratios:
            geo = math.exp(sum(math.log(r) for r in ratios) / len(ratios))
            print(f"  {'geometric mean after/before':60s} {'':12s} {'':12s}  {geo:6.3f}")
    print("\nslower by more than 3 %:" if slower else "\nnone slower by more than 3 %")
    for program, name, ratio in slower:
        print(f"  {program} {name} {ratio:.3f}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
