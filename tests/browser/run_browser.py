#!/usr/bin/env python3
"""Runs the *.test.mjs of this folder under `node --test`, some at once, and writes their counts.

Each file has a server and a browser of its own, and mostly waits for them. Node's summary is the same
lines in every version and reporter, but for the mark before them: "# pass 3" (TAP) or "i pass 3" (spec).
A run without a summary is one failure.
"""
import argparse
import json
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

HERE = Path(__file__).resolve().parent
AT_ONCE = 3
WORDS = ("pass", "fail", "cancelled", "skipped", "todo")


def run(test, environment):
    """The counts of one file by WORDS, and its output where something failed."""
    done = subprocess.run(["node", "--test", str(test)], cwd=HERE, env=environment, text=True,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    sums = dict(re.findall(r"^\S+ (" + "|".join(WORDS) + r") (\d+)$", done.stdout, re.M))
    count = {word: int(sums.get(word, 0)) for word in WORDS}
    failed = count["fail"] + count["cancelled"]
    if not sums or (done.returncode and not failed):
        count["fail"] = failed = 1
    return count, done.stdout if failed else ""


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--results", type=Path, required=True)
    options = parser.parse_args()
    environment = dict(os.environ, RKCLIENT=str(options.program.resolve()))
    tests = sorted(HERE.glob("*.test.mjs"))
    with ThreadPoolExecutor(AT_ONCE) as pool:
        results = list(pool.map(lambda test: run(test, environment), tests))
    failures = []
    for test, (count, output) in zip(tests, results):
        failed = count["fail"] + count["cancelled"]
        failures += [f"browser/{test.name} {n} of {failed}" for n in range(1, failed + 1)]
        if failed:
            failures[-1] += "\n" + output
    total = {word: sum(count[word] for count, _ in results) for word in WORDS}
    options.results.write_text(json.dumps(
        {"passed": total["pass"], "failed": len(failures), "skipped": total["skipped"] + total["todo"],
         "failures": failures}))
    return 1 if failures or not tests else 0


sys.exit(main())
