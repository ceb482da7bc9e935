#!/usr/bin/env python3
"""Instructions per call of short library calls, in two builds.

    bench/instructions_per_call.py BEFORE_BIN AFTER_BIN [CASE ...]

BEFORE_BIN and AFTER_BIN are the bin/ folders of two builds holding
call_cost (bench/call_cost.cpp).  For each case, call_cost runs under
callgrind once with 0 and once with N calls; the difference of the two
instruction totals over N is the cost of one call.  Unlike a timing, the
count does not move with the machine's load, so a change of a few percent
in the work a call does shows.
"""
import os
import re
import subprocess
import sys
import tempfile

N = 2000


def instructions(binary, case, n):
    with tempfile.NamedTemporaryFile(suffix=".cg", delete=False) as out:
        path = out.name
    subprocess.run(["valgrind", "--tool=callgrind", f"--callgrind-out-file={path}", binary, case,
                    str(n)], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
    total = 0
    with open(path) as f:
        for line in f:
            m = re.match(r"(?:summary|totals): (\d+)", line)
            if m:
                total = int(m.group(1))
    os.unlink(path)
    return total


def per_call(binary, case):
    return (instructions(binary, case, N) - instructions(binary, case, 0)) / N


def main():
    if len(sys.argv) < 3:
        print(__doc__)
        return 2
    before_bin, after_bin = sys.argv[1], sys.argv[2]
    before_prog = os.path.join(before_bin, "call_cost")
    after_prog = os.path.join(after_bin, "call_cost")
    cases = sys.argv[3:] or subprocess.run([after_prog, "--list"], capture_output=True,
                                           text=True, check=True).stdout.split()
    print(f"{'call':16s} {'before':>10s} {'after':>10s}  after/before")
    for case in cases:
        b = per_call(before_prog, case)
        a = per_call(after_prog, case)
        print(f"{case:16s} {b:10.1f} {a:10.1f}  {a / b:6.3f}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
