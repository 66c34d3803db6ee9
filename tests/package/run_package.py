#!/usr/bin/env python3
"""Installs the built tree for real: the library with a program on it, and the Debian package,
unpacked into a folder. Nothing outside of a folder of its own is written."""
import argparse
import json
import os
import subprocess
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
USUAL = ("./usr/bin/", "./usr/lib/systemd/system/", "./usr/lib/sysusers.d/", "./usr/share/doc/rkclient/",
         "./usr/share/man/man1/", "./usr/share/bash-completion/completions/", "./usr/share/rkclient/")
PAGE = """<%@ CodePage=65001 %><%
Set site = Server.CreateObject("Rkclient.SiteMain")
Response.Write site.Show_HostList("Table", "0", "0", "", "Id", "", "", "20", "")
%>"""


def output(*command, **more):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, **more)
    if done.returncode:
        raise AssertionError(f"{' '.join(map(str, command))}: exit {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def expect(true, what):
    if not true:
        raise AssertionError(what)


class Tests:
    """Each test is a method; what it raises is its failure. The folder is theirs together."""

    def __init__(self, build, program, folder):
        self.build, self.program, self.folder = build, program, folder
        self.site = folder / "site"
        output(ROOT / "script/demo-site", self.site, env={**os.environ, "RKCLIENT": str(program)})

    def a_program_on_the_installed_library_renders_what_a_page_does(self):
        prefix, made = self.folder / "prefix", self.folder / "region"
        output("cmake", "--install", self.build, "--prefix", prefix, "--component", "development")
        output("cmake", "-S", ROOT / "examples/region", "-B", made, "-G", "Ninja",
               f"-DCMAKE_PREFIX_PATH={prefix}")
        output("ninja", "-C", made)
        (self.site / "region.asp").write_text(PAGE)
        page = output(self.program, "run", "/region.asp", "--site", self.site)
        expect("{HostList_HostName}" not in page and len(page) > 1000, f"no list:\n{page}")
        region = output(made / "region", self.site)
        expect(region.strip() == page.strip(), f"a page gives\n{page}\nthe program\n{region}")

    def package(self):
        """The package's file, made once."""
        made = self.folder / "package"
        if not made.exists():
            output("cpack", "--config", self.build / "CPackConfig.cmake", "-B", made)
        return next(made.glob("rkclient_*.deb"))

    def unpacked(self):
        folder = self.folder / "unpacked"
        if not folder.exists():
            output("dpkg-deb", "--extract", self.package(), folder)
        return folder

    def the_package_puts_nothing_outside_of_the_usual_places(self):
        lines = output("dpkg-deb", "--contents", self.package()).splitlines()
        files = [line.split()[5] for line in lines if not line.startswith("d")]
        expect(len(files) > 10, f"few files: {files}")
        strange = [file for file in files if not file.startswith(USUAL)]
        expect(not strange, f"outside: {strange}")
        users = {line.split()[1] for line in lines}
        expect(users == {"root/root"}, f"owners: {users}")

    def the_packaged_program_runs_with_what_the_package_depends_on(self):
        program = self.unpacked() / "usr/bin/rkclient"
        expect(output(program, "--version") == output(self.program, "--version"), "another version")
        expect("not found" not in output("ldd", program), output("ldd", program))
        depends = output("dpkg-deb", "--field", self.package(), "Depends")
        for library in ("libc6", "libsqlite3-0", "libicu", "libpcre2-16-0", "libcurl4", "libodbc2"):
            expect(library in depends, f"{library} is not in: {depends}")
        expect("region" in output(program, "run", "/region.asp", "--site", self.small_site()), "no page")

    def small_site(self):
        site = self.folder / "small"
        site.mkdir(exist_ok=True)
        (site / "region.asp").write_text('<% Response.Write "region" %>')
        return site

    def the_manual_page_and_the_completion_tell_every_command(self):
        manual = (self.unpacked() / "usr/share/man/man1").glob("rkclient.1*")
        text = output("zcat", "-f", *manual)
        completion = self.unpacked() / "usr/share/bash-completion/completions/rkclient"
        for command in ("serve", "run", "schema", "check", "new"):
            expect(f'"rkclient {command} ' in text, f"the manual lacks {command}")
            script = f'. {completion}; COMP_WORDS=(rkclient {command[:2]}); COMP_CWORD=1; _rkclient; echo "${{COMPREPLY[@]}}"'
            expect(output("bash", "-c", script).split() == [command], f"{command} is not completed")

    def the_example_site_is_the_storefront_that_new_writes(self):
        site = self.unpacked() / "usr/share/rkclient/example-site"
        output(self.program, "new", self.folder / "new")
        expect(output("diff", "-r", "--brief", "--exclude=*.db", site, self.folder / "new") == "", "they differ")
        expect(output(self.program, "check", site) == "", "check finds something")

    def run(self):
        names = [name for name in vars(Tests) if name.startswith(("a_", "the_"))]
        failures = []
        for name in names:
            try:
                getattr(self, name)()
            except AssertionError as failure:
                failures.append(f"package/{name}\n{failure}")
        return len(names) - len(failures), failures


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--results", type=Path, required=True)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        passed, failures = Tests(options.build.resolve(), options.program.resolve(), Path(folder)).run()
    options.results.write_text(json.dumps({"passed": passed, "failed": len(failures), "failures": failures}))
    return 1 if failures or not passed else 0


raise SystemExit(main())
