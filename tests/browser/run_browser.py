#!/usr/bin/env python3
"""Runs the *.test.mjs of this folder under `node --test` and writes their counts.

Node's summary is the same lines in every version and reporter, but for the mark before them:
"# pass 3" (TAP) or "i pass 3" (spec). A run without a summary is one failure.
"""
import argparse
import json
import os
import re
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--results", type=Path, required=True)
    options = parser.parse_args()
    tests = [str(path) for path in sorted(HERE.glob("*.test.mjs"))]
    environment = dict(os.environ, RKCLIENT=str(options.program.resolve()))
    done = subprocess.run(["node", "--test", *tests], cwd=HERE, env=environment, text=True,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    sums = dict(re.findall(r"^\S+ (pass|fail|cancelled|skipped|todo) (\d+)$", done.stdout, re.M))
    count = {word: int(sums.get(word, 0)) for word in ("pass", "fail", "cancelled", "skipped", "todo")}
    failed = count["fail"] + count["cancelled"]
    if not sums or (done.returncode and not failed):
        failed = 1
    failures = [f"browser test {n} of {failed}" for n in range(1, failed + 1)]
    if failures:
        failures[-1] += "\n" + done.stdout
    options.results.write_text(json.dumps(
        {"passed": count["pass"], "failed": failed, "skipped": count["skipped"] + count["todo"],
         "failures": failures}))
    return 1 if failed else 0


sys.exit(main())
