#!/usr/bin/env python3
"""Whatever pages and visitors do to the file of a database that is in use, other processes go on finding it
in use: none of them takes its log away when it closes the database, and no write is lost.

tests/cli/database_locks.py
"""
import os
import sqlite3
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "soak"))
from served import Served  # noqa: E402

CONNECT = 'Set c = Server.CreateObject("ADODB.Connection"): c.Open "Data Source=" & Server.MapPath("data/shop.db")\n'
FILES = 'Set f = Server.CreateObject("Scripting.FileSystemObject")\n'
STREAM = 'Set s = Server.CreateObject("ADODB.Stream"): s.Type = 1: s.Open: s.LoadFromFile Server.MapPath("data/shop.db")\n'
WRITE = CONNECT + 'c.Execute "Insert Into Written (Number) Values (" & Request.QueryString & ")"'
DEEDS = {
    "copy": FILES + 'f.CopyFile Server.MapPath("data/shop.db"), Server.MapPath("data/copy.db"), True',
    "file_copy": FILES + 'f.GetFile(Server.MapPath("data/shop.db")).Copy Server.MapPath("data/copy.db"), True',
    "copy_all": FILES + 'f.CopyFile Server.MapPath("data") & "/*.db", Server.MapPath("kept/"), True',
    "copy_folder": FILES + 'f.CopyFolder Server.MapPath("data"), Server.MapPath("kept/data"), True',
    "put_back": FILES + 'f.CopyFile Server.MapPath("data/shop.db"), Server.MapPath("data/copy.db"), True\n'
                        'f.CopyFile Server.MapPath("data/copy.db"), Server.MapPath("data/shop.db"), True',
    "text": FILES + 'Response.Write Len(f.OpenTextFile(Server.MapPath("data/shop.db")).Read(5))',
    "as_text": FILES + 'Response.Write Len(f.GetFile(Server.MapPath("data/shop.db")).OpenAsTextStream.Read(5))',
    "stream": STREAM + "Response.Write s.Size > 0",
    "other_string": 'Set c = Server.CreateObject("ADODB.Connection"): c.Open "Mode=Read;Data Source=data/SHOP.db"\n'
                    'Response.Write c.Execute("Select Count(*) From Written")(0)',
    "make": 'Set c = Server.CreateObject("ADODB.Connection"): c.Open "Data Source=data/shop.db;Mode=Create"\n'
            'Response.Write c.Execute("Select Count(*) From Written")(0)',
}


# Visitors may not read a database under any name.
VISITS = ["/plain.dat", "/data/shop.db"]
# What another process does: it looks, and closes.
LOOK = """import sqlite3, sys
database = sqlite3.connect(sys.argv[1])
database.execute("Select 1 From Written").fetchone()
database.close()"""


def opened_files(process):
    """What its descriptors lead to; one may be closed meanwhile."""
    for path in Path(f"/proc/{process.pid}/fd").iterdir():
        try:
            yield os.readlink(path)
        except FileNotFoundError:
            pass


def main():
    wrong = []

    def ask(served, path):
        status, body = served.ask(path)
        if (status, body[-4:]) != (200, b"done") and (path not in VISITS or status != 404):
            wrong.append(f"{path}: {status} {body[:200]!r}")

    files = {f"{name}.asp": f"<% {script} %>done" for name, script in DEEDS.items()}
    files.update({"write.asp": f"<% {WRITE} %>done", "kept/data/made": "", "data/made": ""})
    with tempfile.TemporaryDirectory() as folder:
        site = Path(folder) / "site"
        (site / "data").mkdir(parents=True)
        database = site / "data/shop.db"
        sqlite3.connect(database).execute("Create Table Written (Number Integer)").connection.close()
        os.link(database, site / "plain.dat")
        written = 0
        with Served(site, files) as served:
            for deed in [*(f"/{name}.asp" for name in DEEDS), *VISITS]:
                ask(served, f"/write.asp?{written}")
                ask(served, deed)
                written += 1
                subprocess.run([sys.executable, "-c", LOOK, database], check=True)
                if any("shop.db-wal (deleted)" in file for file in opened_files(served.process)):
                    wrong.append(f"{deed}: the log was taken away")
                    break
            ask(served, f"/write.asp?{written}")
            seen = sqlite3.connect(database).execute("Select Count(*) From Written").fetchone()[0]
        if seen != written + 1:
            wrong.append(f"{seen} rows instead of {written + 1}")
    print("\n".join(wrong) or f"{len(DEEDS) + len(VISITS)} deeds leave the database's locks as they are")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
