#!/usr/bin/env python3
"""Requests that try to reach what no visitor may read, or to be read in two ways: attacks.py paths | headers.
Each has one answer by the tables below, and none ever shows a secret of the site or of its neighbour."""
import os
import re
import sqlite3
import sys
import tempfile
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parent.parent / "soak"))
from served import Served, whole  # noqa: E402

SECRET = b"TOP-SECRET"
FILES = {
    "index.asp": "the home page", "shop/index.asp": "the shop", "a.txt": "a text", "Read Me.txt": "a text",
    "shop/picture.png": "a picture", ".well-known/acme": "a token", "sum.html": "a text",
    "global.asa": "<script language=VBScript runat=Server>'TOP-SECRET\n</script>",
    "conn.inc": "TOP-SECRET", "shop/conn.INC": "TOP-SECRET", "shop.ini": "TOP-SECRET", "log/today.txt": "TOP-SECRET",
    "data/plans.txt": "TOP-SECRET", "data/page.asp": "TOP-SECRET", ".git/config": "TOP-SECRET",
    ".htpasswd": "TOP-SECRET", "shop/.svn/entries": "TOP-SECRET", "shop.mdb": "TOP-SECRET", "old.log": "TOP-SECRET",
    "code.asp": '<% x = "TOP-SECRET" %>code', "renamed.gif": b"\0\1\0\0Standard Jet DB\0TOP-SECRET",
}
PATHS = [  # target, status
    # What is there for everybody, in its forms.
    ("/", 200), ("/INDEX.ASP", 200), ("/a.txt", 200), ("/A.TXT", 200), ("/Read%20Me.txt", 200), ("/shop/", 200),
    ("/shop", 301), ("/shop/../a.txt", 200), ("//a.txt", 200), ("/./a.txt", 200), ("/%61.txt", 200),
    ("/shop\\picture.png", 200), ("/.well-known/acme", 200), ("/code.asp", 200), ("/a.txt?../../x", 200),
    # Out of the site.
    ("/../outside.txt", 400), ("/shop/../../outside.txt", 400), ("/%2e%2e/outside.txt", 400),
    ("/%2E%2E%2Foutside.txt", 400), ("/..%2foutside.txt", 400), ("/..%5coutside.txt", 400),
    ("/..\\outside.txt", 400), ("/shop/..\\..\\outside.txt", 400), ("/....//outside.txt", 404),
    ("/..;/outside.txt", 404), ("/%252e%252e/outside.txt", 404), ("/%c0%ae%c0%ae/outside.txt", 404),
    ("/%u002e%u002e/outside.txt", 400), ("/link.txt", 404), ("/linked/outside.txt", 404),
    ("/linked/../../outside.txt", 400), ("//etc/passwd", 404), ("/C:/outside.txt", 404),
    ("/file:///etc/passwd", 404), ("http://localhost/../outside.txt", 400), ("file:///etc/passwd", 400),
    # What lies in the site and is nobody's.
    ("/global.asa", 404), ("/GLOBAL.ASA", 404), ("/global.asa%20", 404), ("/global.asa.", 404),
    ("/global.asa/", 404), ("/global.asa::$DATA", 404), ("/global%2easa", 404), ("/conn.inc", 404),
    ("/shop/conn.inc", 404), ("/rkclient.ini", 404), ("/shop.ini", 404), ("/log/today.txt", 404),
    ("/LOG/today.txt", 404), ("/data/plans.txt", 404), ("/Data\\plans.txt", 404), ("/shop/../data/plans.txt", 404),
    ("/data/page.asp", 404), ("/data", 404), ("/.git/config", 404), ("/.htpasswd", 404), ("/%2ehtpasswd", 404),
    ("/shop/.svn/entries", 404), ("/.well-known/../.htpasswd", 404), ("/shop.mdb", 404), ("/old.log", 404),
    ("/renamed.gif", 404), ("/plans.txt.db", 404), ("/copy.bin", 404),
    # Bytes that end or bend a path.
    ("/a.txt%00.asp", 400), ("/global.asa%00.txt", 400), ("/code.asp%00", 400), ("/a.txt%", 400), ("/a.txt%zz", 400),
    ("/%", 400), ("/a.txt%0d%0aX:%20y", 404), ("/code.asp%20", 404), ("/code.asp.", 404),
    ("/code.asp::$DATA", 404), ("*", 400), ("a.txt", 400),
    # Behind a page's name.
    ("/code.asp/", 200), ("/code.asp/x", 200), ("/CODE.asp/7.html", 200), ("/code.asp/../a.txt", 200),
    ("/code.asp/../global.asa", 404), ("/code.asp/global.asa", 404), ("/code.asp/.git/config", 404),
    ("/code.asp/shop.mdb", 404), ("/code.asp/a%2fb", 400), ("/code.asp/%00", 400), ("/none.asp/x", 404),
    ("/data/page.asp/x", 404), ("/code.asp%20/x", 404), ("/code.asp./x", 404), ("/code.asp/../../outside.txt", 400),
    ("/a.txt/x", 404), ("/a.txt/code.asp", 404),
]
SMUGGLED = "GET /sum.html HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n"
LINE = "POST /code.asp HTTP/1.1\r\n"
HOST = "Host: localhost\r\n"
HEADERS = [  # bytes, status; behind each another request is hidden, which must not be answered
    (LINE + "\r\n", 400), (LINE + HOST + HOST + "\r\n", 400), (LINE + "Host: a, b\r\n\r\n", 400),
    (LINE + "Host: localhost/x\r\n\r\n", 400), (LINE + "Host: user@localhost\r\n\r\n", 400), (LINE + "Host:\r\n\r\n", 400),
    (LINE + HOST + "Content-Length: 1\r\nContent-Length: 90\r\n\r\n", 400),
    (LINE + HOST + "Content-Length: 0, 90\r\n\r\n", 400), (LINE + HOST + "Content-Length: +0\r\n\r\n", 400),
    (LINE + HOST + "Content-Length: -1\r\n\r\n", 400), (LINE + HOST + "Content-Length: 0x5\r\n\r\n", 400),
    (LINE + HOST + "Content-Length: 99999999999999999999\r\n\r\n", 413),
    (LINE + HOST + "Content-Length: 2000000\r\n\r\n", 413), (LINE + HOST + "Content-Length : 0\r\n\r\n", 400),
    (LINE + HOST + "Content-Length: 0\r\nTransfer-Encoding: chunked\r\n\r\n", 400),
    (LINE + HOST + "Transfer-Encoding: chunked\r\nContent-Length: 5\r\n\r\n", 400),
    (LINE + HOST + "Transfer-Encoding: gzip, chunked\r\n\r\n", 501), (LINE + HOST + "Transfer-Encoding: identity\r\n\r\n", 501),
    (LINE + HOST + "Transfer-Encoding: xchunked\r\n\r\n", 501), (LINE + HOST + "Transfer-Encoding: \x0bchunked\r\n\r\n", 400),
    (LINE + HOST + "Transfer-Encoding: chunked\r\nTransfer-Encoding: x\r\n\r\n", 400),
    (LINE + HOST + "Transfer-Encoding : chunked\r\n\r\n", 400), (LINE + HOST + "X: a\r\n Transfer-Encoding: chunked\r\n\r\n", 400),
    (LINE + HOST + "X: a\nTransfer-Encoding: chunked\r\n\r\n", 400), (LINE + HOST + "X: a\rY: b\r\n\r\n", 400),
    (LINE + HOST + "X: a\0b\r\n\r\n", 400), (LINE + HOST + ": x\r\n\r\n", 400), (LINE + HOST + "X\r\n\r\n", 400),
    (LINE + " " + HOST + "\r\n", 400), ("POST /code.asp HTTP/1.1\n" + HOST + "\r\n", 400),
    ("POST  /code.asp HTTP/1.1\r\n" + HOST + "\r\n", 400), ("POST /code.asp HTTP/1.1 \r\n" + HOST + "\r\n", 400),
    ("POST /code.asp HTTP/2.0\r\n" + HOST + "\r\n", 505), ("POST /" + "a" * 9000 + " HTTP/1.1\r\n" + HOST + "\r\n", 414),
    (LINE + HOST + "X: " + "a" * 40000 + "\r\n\r\n", 431), (LINE + HOST + "X: y\r\n" * 101 + "\r\n", 431),
    (LINE + HOST + "Transfer-Encoding: chunked\r\n\r\n0x0\r\n\r\n", 400),
    (LINE + HOST + "Transfer-Encoding: chunked\r\n\r\n0\n\n", 400),
    (LINE + HOST + "Transfer-Encoding: chunked\r\n\r\n1\r\naX\r\n0\r\n\r\n", 400),
    (LINE + HOST + "Transfer-Encoding: chunked\r\n\r\nffffffffffffffff0\r\n\r\n", 400),
]


def make_traps(site):
    (site.parent / "outside.txt").write_bytes(SECRET)
    (site / "link.txt").symlink_to(site.parent / "outside.txt")
    (site / "linked").symlink_to(site.parent)
    for name in ("plans.txt.db", "copy.bin"):
        with sqlite3.connect(site / name) as database:
            database.execute("Create Table t (v Text)")
            database.execute("Insert Into t Values (?)", (SECRET.decode(),))
        database.close()


def status_of(answer):
    found = re.match(rb"HTTP/1\.1 (\d+) ", answer)
    return int(found[1]) if found else 0


def paths(served):
    for target, status in PATHS:
        answer = whole(served.begin(target))
        if status_of(answer) != status or SECRET in answer:
            yield f"{target}: {answer[:300]!r} instead of {status}"


def headers(served):
    for sent, status in HEADERS:
        visitor = served.connect()
        try:
            visitor.sendall((sent + SMUGGLED).encode("latin-1"))
        except OSError:
            pass  # refused and closed before all was sent
        answer = whole(visitor)
        if status_of(answer) != status or b"a text" in answer or b"Connection: close" not in answer:
            yield f"{sent[:120]!r}: {answer[:300]!r} instead of {status}"


def main():
    table, play = (PATHS, paths) if sys.argv[1] == "paths" else (HEADERS, headers)
    with tempfile.TemporaryDirectory(dir=os.getcwd()) as folder:
        site = Path(folder) / "site"
        site.mkdir()
        make_traps(site)
        with Served(site, FILES) as served:
            wrong = list(play(served))
            if served.ask("/")[1] != b"the home page":
                wrong.append("the home page does not come any more")
    print("\n".join(wrong) or f"{len(table)} {sys.argv[1]} have their answers")


main()
