#!/usr/bin/env python3
"""What the transcript of the money log asks of a server: money_log.py many | busy | released."""
import os
import sqlite3
import sys
import tempfile
import threading
import time
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parent.parent / "soak"))
from money_site import Server, Site, ask, record, stored, together  # noqa: E402

MOVEMENTS = 1000
VISITORS = 50
# As long as the database is locked in `busy`, and far longer than `released` needs.
BUSY = 0.3
PATIENCE = 30
# Visitors who wait for the lock at once. One after the other they would wait so many times BUSY.
WAITING = 12


def locked(site):
    """The database, held by this process as a writer holds it."""
    database = sqlite3.connect(site.database, isolation_level=None, check_same_thread=False)
    database.execute("Begin Immediate")
    return database


def many(folder):
    """A thousand movements of visitors who come at once."""
    site, answers = Site(folder), [None] * MOVEMENTS

    def visit(visitor_number):
        visitor = server.visitor()
        for number in range(visitor_number, MOVEMENTS, VISITORS):
            answers[number] = record(visitor, number)
        visitor.close()

    with Server(site) as server:
        together(VISITORS, visit)
    rows = site.rows()
    wanted = {stored(number) for number in range(MOVEMENTS)}
    print(f"{answers.count((200, 'stored'))} answered, {len(rows)} rows,",
          "each movement once" if set(rows) == wanted else "but not those that were sent")


def busy(folder):
    """Pages that write while another process holds the database get its error after their time."""
    site = Site(folder, f"[data]\nbusy_ms = {int(BUSY * 1000)}\n[server]\nshow_errors = all\n")
    answers, times = [None] * WAITING, [0.0] * WAITING

    def visit(number):
        visitor, start = server.visitor(), time.monotonic()
        answers[number] = record(visitor, number)
        times[number] = time.monotonic() - start
        visitor.close()

    with Server(site) as server:
        database = locked(site)
        together(len(answers), visit)
        database.execute("Rollback")
        database.close()
        refused = all(status == 500 and "80004005" in body and "locked" in body for status, body in answers)
        print("refused" if refused else answers, "with", len(site.rows()), "rows")
        print("after their time" if min(times) >= BUSY else times)
        print("each waited for itself" if max(times) < WAITING / 2 * BUSY else times)
        visitor = server.visitor()
        print(record(visitor, 7)[1], "once the lock was gone:", len(site.rows()), "row")
        visitor.close()


def released(folder):
    """A page that waits writes as soon as the other process lets go."""
    site, answers = Site(folder, f"[data]\nbusy_ms = {PATIENCE * 1000}\n"), []
    with Server(site) as server:
        database = locked(site)
        visitor = server.visitor()
        waiting = threading.Thread(target=lambda: answers.append(record(visitor, 1)))
        waiting.start()
        watcher = server.visitor()
        while ask(watcher, "/begun.asp")[1] != "yes":
            pass
        print("waiting" if not answers else answers)
        database.execute("Rollback")
        database.close()
        waiting.join()
        visitor.close()
        watcher.close()
    print(answers[0][1], len(site.rows()), "row")


os.environ.setdefault("no_proxy", "*")
with tempfile.TemporaryDirectory() as own_folder:
    {"many": many, "busy": busy, "released": released}[sys.argv[1]](own_folder)
