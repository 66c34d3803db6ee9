"""Builds and runs the tests; the last line is the sum, "N passed, N failed".

script/test                   everything
script/test ROOM...           the tests of rooms (jetsql, adapters/sqlite, pagehost), or cli, package, fuzz, browser
script/test --rebase [ROOM]   rewrites the expected outputs; look at the diff before you commit it
script/test --preset asan     in another build (asan, tsan, clang); --label threads: only such tests
"""
import argparse
import json
import os
import subprocess
import sys
import xml.etree.ElementTree as xml
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FOLDERS = {"release": "build", "asan": "build-asan", "tsan": "build-tsan", "clang": "build-clang"}
SECONDS = "400"  # one test program; a hanging one fails instead of holding up the run
LINES_OF_A_CRASH = 25


def arguments():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("rooms", nargs="*")
    parser.add_argument("--rebase", action="store_true")
    parser.add_argument("--preset", choices=FOLDERS, default="release")
    parser.add_argument("--label", default="")
    parser.add_argument("--werror", action="store_true", help="warnings of our code are errors")
    return parser.parse_args()


def run(*command, **more):
    return subprocess.run([str(word) for word in command], cwd=ROOT, check=True, **more)


def wanted_tests(folder, options):
    """Name -> labels of the entries of ctest that were asked for."""
    listing = run("ctest", "--test-dir", folder, "--show-only=json-v1", stdout=subprocess.PIPE)
    asked = [room.strip("/").replace("/", "_") for room in options.rooms]
    found = {}
    for test in json.loads(listing.stdout)["tests"]:
        labels = next((p["value"] for p in test["properties"] if p["name"] == "LABELS"), [])
        name = test["name"]
        if asked and not any(name == a or name.startswith(a + "_") for a in asked):
            continue
        if options.label and options.label not in labels:
            continue
        if options.preset != "release" and "browser" in labels:
            continue
        found[name] = labels
    return found


def programs_of(tests):
    """The build's targets that the tests need."""
    for name, labels in tests.items():
        if "unit" in labels:
            yield f"{name}_tests"
        else:
            yield name if "fuzz" in labels else "packaging" if name == "package" else "rkclient"


def configure_and_build(folder, options):
    run("cmake", "--preset", options.preset, "--log-level=WARNING",
        *(["-DRK_WERROR=ON"] if options.werror else []), stdout=subprocess.DEVNULL)
    tests = wanted_tests(folder, options)
    whole = not (options.rooms or options.label)
    if tests:
        run("ninja", "-C", folder, "--quiet", *([] if whole else sorted(set(programs_of(tests)))))
    return tests


def run_tests(tests, folder, options):
    """Runs them and returns ctest's report, an element for each."""
    report = folder / "results/ctest.xml"
    for name in tests:
        (folder / f"results/{name}.json").unlink(missing_ok=True)
    report.unlink(missing_ok=True)
    environment = dict(os.environ, UBSAN_OPTIONS="print_stacktrace=1",
                       TSAN_OPTIONS=f"suppressions={ROOT}/cmake/tsan.suppressions")
    if options.rebase:
        environment["RK_REBASE"] = "1"
    subprocess.run(["ctest", "--test-dir", folder, "-R", f"^({'|'.join(tests)})$", "-j", str(os.cpu_count()),
                    "--timeout", SECONDS, "--quiet", "--output-junit", report,
                    "--test-output-size-failed", "1000000"], env=environment, cwd=ROOT)
    return xml.parse(report).getroot().iter("testcase")


def counts_of(path):
    """(passed, skipped, failures) out of a results file: GoogleTest's JSON, or our own plain one."""
    data = json.loads(path.read_text())
    if "testsuites" not in data:
        return data["passed"], data.get("skipped", 0), data["failures"]
    passed, skipped, failures = 0, 0, []
    for suite in data["testsuites"]:
        for test in suite["testsuite"]:
            if test.get("failures"):
                text = "\n".join(f["failure"] for f in test["failures"])
                failures.append(f"{suite['name']}.{test['name']}\n{text}")
            elif test["status"] == "RUN" and test["result"] == "COMPLETED":
                passed += 1
            else:
                skipped += 1
    return passed, skipped, failures


def outcome(case, folder):
    """Counts of one entry. What ends badly without a failed test, such as a crash, is one failure."""
    name, ok = case.get("name"), case.get("status") == "run"
    path = folder / f"results/{name}.json"
    passed, skipped, failures = counts_of(path) if path.exists() else (0, 0, [])
    if not failures and not (ok and path.exists()):
        tail = (case.findtext("system-out") or "").splitlines()[-LINES_OF_A_CRASH:]
        why = "wrote no results" if ok else "ended badly"
        failures = ["\n".join([f"{name}: the program {why}"] + tail)]
    return passed, skipped, failures


def main():
    options = arguments()
    folder = ROOT / FOLDERS[options.preset]
    tests = configure_and_build(folder, options)
    if not tests:
        print("no such tests")
    passed, skipped, failures = 0, 0, []
    for case in run_tests(tests, folder, options) if tests else []:
        good, left_out, bad = outcome(case, folder)
        print(f"{case.get('name'):24} {good:6} passed {len(bad):4} failed {float(case.get('time')):8.1f} s")
        passed, skipped, failures = passed + good, skipped + left_out, failures + bad
    for failure in failures:
        print(f"\nFAILED {failure}")
    if skipped:
        print(f"{skipped} skipped")
    print(f"{passed} passed, {len(failures)} failed")
    return 1 if failures or not passed else 0


try:
    sys.exit(main())
except subprocess.CalledProcessError as error:
    print(f"{' '.join(map(str, error.cmd))}: exit {error.returncode}\n0 passed, 1 failed")
    sys.exit(1)
