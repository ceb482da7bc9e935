#!/usr/bin/env python3
"""The zelstr tool when memory runs out.

Runs a set of commands under the failing_malloc preload: first cleanly,
counting the allocations made from main on (to the process's end), then
once for each of them failed alone and once with every later one failed
too.  Each run must end normally (no signal, no core dump) and either give
exactly the clean run's output and status, or exit with status 2 and the
one line "zelstr: out of memory" as its last word on standard error.

usage: out_of_memory.py ZELSTR PRELOAD DATA_DIR
"""
import os
import subprocess
import sys
import tempfile
import unittest

TOOL, PRELOAD, DATA = (os.path.abspath(a) for a in sys.argv[1:4])
OUT_OF_MEMORY = b"zelstr: out of memory\n"

SQL = os.path.join(DATA, "sql", "sqlcase_input.sql")
QUERY = os.path.join(DATA, "str", "replace_input.sql")
LINES = os.path.join(DATA, "tool", "lines.txt")
NOT_CLOSED = os.path.join(DATA, "tool", "hide_input_plsql.sql")

COMMANDS = [
    ["map", "A-Z=a-z", QUERY],
    ["map", "--dump", "b=a c=a=k=l=m=n=o=p=q=r=s"],
    ["find", "-i", "-n", "SYS.OBJECTS", QUERY],
    ["replace", "--delimiters", "[a-z_]", "name", "object_name_of_the_row", QUERY],
    ["trim", "--chars", "x-", LINES],
    ["sqlcase", "--lower", SQL],
    ["grep", "-n", "-g", "1", "FROM +([a-z.]+)", QUERY],
    ["findall", "-i", "s", QUERY],
    ["hide", "--names", SQL],
    ["hide", "--oracle", "--commands", NOT_CLOSED],
    ["grep", "--code-only", "-n", "FROM", QUERY],
    ["like", "-i", "-n", "--escape", "!", "%sys.objects%!'U'", QUERY],
    ["match", "-c", "*[Ss]ys.objects*", QUERY],
    ["sub", "--all", "(sys)[.]([a-z]+)", "[\\1].[\\2]", QUERY],
    ["sub", "(a)", "\\2", QUERY],
    ["resword", "--tsql", "2016", "pivot", "select", "name"],
    ["plsqlname", "Mixed Case", "EMP", "VARRAY"],
    ["-W", "cmp", "(null)", "x"],
]


def run(args, fail=None):
    env = dict(os.environ, LD_PRELOAD=PRELOAD)
    env.pop("ZELSTR_WARNINGS", None)
    with tempfile.NamedTemporaryFile() as count:
        if fail is None:
            env["ZELSTR_COUNT_ALLOCATIONS"] = count.name
        else:
            env["ZELSTR_FAIL_ALLOCATION"] = fail
        r = subprocess.run([TOOL, *args], env=env, capture_output=True, timeout=60)
        counted = int(count.read() or 0) if fail is None else 0
    return r, counted


class OutOfMemory(unittest.TestCase):
    def test_every_allocation_failed_once_and_from_then_on(self):
        points = 0
        for args in COMMANDS:
            clean, counted = run(args)
            self.assertGreater(counted, 0, args)
            points += counted
            for n in range(1, counted + 1):
                for fail in (str(n), f"{n}+"):
                    with self.subTest(command=" ".join(args), fail=fail):
                        r, _ = run(args, fail)
                        self.assertGreaterEqual(r.returncode, 0, r.stderr)  # not a signal
                        if r.returncode == 2 and r.stderr.endswith(OUT_OF_MEMORY):
                            self.assertEqual(r.stderr.count(b"out of memory"), 1, r.stderr)
                            continue
                        self.assertNotIn(b"out of memory", r.stderr)
                        self.assertEqual((r.returncode, r.stdout, r.stderr),
                                         (clean.returncode, clean.stdout, clean.stderr))
        print(f"{points} fault points over {len(COMMANDS)} commands")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
