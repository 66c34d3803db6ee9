"""A site of pages that record movements of money, served by a real `rkclient serve`, and what its
table must hold afterwards. For the stages of this folder and the transcript of the money log.
"""
import http.client
import os
import re
import shutil
import signal
import sqlite3
import subprocess
import threading
import urllib.parse
from pathlib import Path

HERE = Path(__file__).resolve().parent
PROGRAM = os.environ.get("RKCLIENT", "rkclient")
COLUMNS = ("user", "type", "money", "buymoney", "logmoney", "info")


def movement(number):
    """The movement of a number: no two are alike in any column that could tell them apart."""
    return {"user": f"客户{number}", "type": "buy" if number % 2 else "refund",
            "money": f"-{number}.25", "buymoney": f"{number}.0001", "logmoney": str(1000 + number),
            "info": f"第 {number} 笔 'quoted' \"text\" %; --"}


def stored(number):
    """The same as its row's columns."""
    given = movement(number)
    return tuple(float(given[c]) if "money" in c else given[c] for c in COLUMNS)


class Site:
    """The site in a folder of its own."""

    def __init__(self, folder, settings=""):
        self.folder = Path(folder) / "site"
        shutil.copytree(HERE / "money_site", self.folder)
        (self.folder / "data").mkdir()
        (self.folder / "rkclient.ini").write_text(settings)
        self.database = self.folder / "data/shop.db"
        schema = subprocess.run([PROGRAM, "schema"], check=True, capture_output=True, text=True)
        with sqlite3.connect(self.database) as database:
            database.executescript(schema.stdout)
        database.close()

    def rows(self):
        database = sqlite3.connect(self.database)
        try:
            return database.execute(f"Select {','.join(COLUMNS)} From MoneyLog Order By Id").fetchall()
        finally:
            database.close()

    def integrity(self):
        database = sqlite3.connect(self.database)
        try:
            return database.execute("Pragma integrity_check").fetchone()[0]
        finally:
            database.close()


class Server:
    """`rkclient serve` on a port that the system gave."""

    def __init__(self, site):
        self.process = subprocess.Popen([PROGRAM, "serve", site.folder, "--listen", "127.0.0.1:0"],
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.port = int(re.search(r":(\d+)/$", self.process.stdout.readline().strip()).group(1))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
        self.process.wait()
        self.process.stdout.close()

    def kill(self):
        self.process.kill()
        self.process.wait()

    def visitor(self):
        return http.client.HTTPConnection("127.0.0.1", self.port, timeout=60)


def ask(visitor, path, form=None):
    """(status, body) of a page; POST where there is a form."""
    if form is None:
        visitor.request("GET", path)
    else:
        visitor.request("POST", path, urllib.parse.urlencode(form),
                        {"Content-Type": "application/x-www-form-urlencoded"})
    answer = visitor.getresponse()
    return answer.status, answer.read().decode().strip()


def record(visitor, number):
    return ask(visitor, "/write.asp", movement(number))


def together(count, work):
    """Runs work(0), ..., work(count - 1) at once and waits for all."""
    threads = [threading.Thread(target=work, args=(i,)) for i in range(count)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
