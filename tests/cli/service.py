#!/usr/bin/env python3
"""A service manager for the transcript of `serve`: starts it on the site folder SITE with a socket to
be told by, sends a request for /fails.asp before and after the logs were moved away, stops it, and
prints what it was told and what the logs hold."""
import http.client
import os
import re
import signal
import socket
import subprocess
import sys
from pathlib import Path

site = Path(sys.argv[1])
manager = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
manager.bind("notify")
manager.settimeout(30)
process = subprocess.Popen(["rkclient", "serve", site, "--listen", "127.0.0.1:0"], stdout=subprocess.PIPE,
                           text=True, env=dict(os.environ, NOTIFY_SOCKET=str(Path("notify").resolve())))


def told():
    for line in manager.recv(4096).decode().splitlines():
        print("told:", re.sub(r"127\.0\.0\.1:\d+", "ADDRESS", line))


def ask(address):
    connection = http.client.HTTPConnection("127.0.0.1", int(address), timeout=30)
    connection.request("GET", "/fails.asp", headers={"User-Agent": "tester", "Via": "1.1 outside"})
    body = connection.getresponse().read().decode()
    connection.close()
    print("answer:", re.search("<p>(.*)</p>", body)[1])


port = re.search(r":(\d+)/", process.stdout.readline())[1]
told()
ask(port)
while not (site / "log/access.log").read_text():  # written behind the answer
    pass
for name in ("access", "errors"):
    (site / f"log/{name}.log").rename(site / f"log/{name}.1.log")
process.send_signal(signal.SIGHUP)
while not (site / "log/errors.log").exists() or not (site / "log/access.log").exists():
    pass
ask(port)
process.send_signal(signal.SIGTERM)
told()
print("exit code", process.wait(30))
for name in ("errors.1", "errors", "access.1", "access"):
    for line in (site / f"log/{name}.log").read_text().splitlines():
        print(f"{name}: {line}")
