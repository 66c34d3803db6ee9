#!/usr/bin/env python3
"""Runs the transcripts of this folder, each of them one test of the program from outside.

A transcript NAME.transcript is a list of steps:

    # a comment on the step below it
    $ rkclient run /greeting.asp --host blue.localhost
    <p>Good day</p>
    ! a line of standard error
    exit 1

"$" and a shell command; the lines it prints to standard output; behind "! " those of standard
error; "exit N" where the exit code is not 0. Blank lines at the end of a step only divide. A line
of output that begins with "$ ", "! ", "# ", "exit " or "\\" has one "\\" before it.
{any} stands for any text within a line, {number} for digits: for what no two runs share.

A transcript's steps run in one fresh folder, filled from NAME/ where that is there; `rkclient` is
the program under test, ROOT the source tree. RK_REBASE=1 rewrites what differs.
"""
import argparse
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
SECONDS = 60
SPECIAL = re.compile(r"[$!#] |[$!#]$|exit |\\")


class Step:
    def __init__(self, command, notes):
        self.command, self.notes = command, notes
        self.out, self.err, self.code = [], [], 0

    def lines(self):
        """The step as it stands in a file."""
        out = [("\\" if SPECIAL.match(line) else "") + line for line in self.out]
        code = [f"exit {self.code}"] if self.code else []
        return [*self.notes, f"$ {self.command}", *out, *[f"! {line}".rstrip() for line in self.err], *code]


def read(path):
    """The steps of a transcript, each with the comment lines above it."""
    steps, notes = [], []
    for line in path.read_text().splitlines():
        if line.startswith("# ") or line == "#":
            notes.append(line)
        elif line.startswith("$ "):
            steps.append(Step(line[2:], notes))
            notes = []
        elif line.startswith("! ") or line == "!":
            steps[-1].err.append(line[2:])
        elif line.startswith("exit "):
            steps[-1].code = int(line[5:])
        elif steps:
            steps[-1].out.append(line[1:] if line.startswith("\\") else line)
    for step in steps:
        while step.out and not step.out[-1]:
            step.out.pop()
    return steps


def agrees(expected, line):
    pattern = re.escape(expected).replace(r"\{any\}", ".*").replace(r"\{number\}", r"\d+")
    return re.fullmatch(pattern, line) is not None


def agree(expected, lines):
    return len(expected) == len(lines) and all(map(agrees, expected, lines))


def lines_of(stream):
    """What was printed, as lines; a carriage return is shown, so that a transcript can hold it."""
    lines = stream.decode("utf-8", "backslashreplace").replace("\r", "\\r").split("\n")
    while lines and not lines[-1]:
        lines.pop()
    return lines


def carry_out(step, folder, environment):
    done = subprocess.run(["bash", "-c", step.command], cwd=folder, env=environment,
                          stdin=subprocess.DEVNULL, capture_output=True, timeout=SECONDS)
    found = Step(step.command, step.notes)
    found.out, found.err, found.code = lines_of(done.stdout), lines_of(done.stderr), done.returncode
    return found


def settle(step, found):
    """What a rebased transcript holds: the found lines, but placeholders where they still agree."""
    for part in ("out", "err"):
        before, after = getattr(step, part), getattr(found, part)
        if len(before) == len(after):
            setattr(found, part, [b if agrees(b, a) else a for b, a in zip(before, after)])
    return found


def play(path, program):
    """Runs a transcript; returns the differences as text, empty where there is none."""
    steps, differences, settled = read(path), [], []
    with tempfile.TemporaryDirectory() as folder:
        if (HERE / path.stem).is_dir():
            shutil.copytree(HERE / path.stem, folder, dirs_exist_ok=True)
        environment = dict(os.environ, PATH=f"{program.parent}:{os.environ['PATH']}",
                           ROOT=str(HERE.parent.parent), LC_ALL="C.UTF-8")
        for step in steps:
            found = carry_out(step, folder, environment)
            same = (agree(step.out, found.out) and agree(step.err, found.err)
                    and step.code == found.code)
            if not same:
                differences += ["expected:", *step.lines(), "found:", *found.lines()]
            settled.append(settle(step, found))
    if differences and os.environ.get("RK_REBASE"):
        path.write_text("\n\n".join("\n".join(step.lines()) for step in settled) + "\n")
        return ""
    return "\n".join(differences) if steps else "the transcript has no step"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--results", type=Path, required=True)
    options = parser.parse_args()
    paths = sorted(HERE.glob("*.transcript"))
    failures = []
    for path in paths:
        differences = play(path, options.program.resolve())
        if differences:
            failures.append(f"cli/{path.name}\n{differences}")
    options.results.write_text(json.dumps(
        {"passed": len(paths) - len(failures), "failed": len(failures), "failures": failures}))
    return 1 if failures or not paths else 0


sys.exit(main())
