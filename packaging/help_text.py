"""What a program's --help says, taken apart."""
import re
import subprocess


class Help:
    def __init__(self, program):
        self.program = program

    def lines(self, *command):
        done = subprocess.run([self.program, *command, "--help"], check=True, capture_output=True,
                              text=True)
        return done.stdout.rstrip().splitlines()

    def about(self, *command):
        return self.lines(*command)[0]

    def usage(self, *command):
        mark = "Usage: "
        return next(line for line in self.lines(*command) if line.startswith(mark)).removeprefix(mark)

    def sections(self, *command):
        """Heading -> its rows of (words, meaning)."""
        found, heading = {}, None
        for line in self.lines(*command):
            if line and not line.startswith(" ") and line.endswith(":"):
                heading = found.setdefault(line[:-1], [])
            elif heading is not None:
                heading.append(line)
        return {heading: rows(lines) for heading, lines in found.items()}

    def version(self):
        done = subprocess.run([self.program, "--version"], check=True, capture_output=True, text=True)
        return done.stdout.split()[-1]


def rows(lines):
    """(words, meaning) of the indented lines of a section; a meaning may go on below."""
    found = []
    for line in lines:
        match = re.match(r"  (\S.*?)(?:  +(\S.*))?$", line)
        if match:
            found.append([match.group(1), match.group(2) or ""])
        elif line.strip() and found:
            found[-1][1] = f"{found[-1][1]} {line.strip()}".strip()
    return found
