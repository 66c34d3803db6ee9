"""A site folder served by a real `rkclient serve`, with its log; for stages and transcripts that look
at the front. RKCLIENT names the program."""
import http.client
import os
import re
import signal
import socket
import subprocess
import threading
from pathlib import Path

PROGRAM = os.environ.get("RKCLIENT", "rkclient")


class Served:
    """files: path in the site -> text or bytes."""

    def __init__(self, folder, files, settings=""):
        self.folder = Path(folder)
        for name, content in {**files, "rkclient.ini": settings}.items():
            path = self.folder / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(content.encode() if isinstance(content, str) else content)
        self.log = open(self.folder.parent / "served.log", "w+b")
        # A program with AddressSanitizer holds back what it was given back, 256 MiB where nothing is
        # said: memory that no page keeps.
        options = f"{os.environ.get('ASAN_OPTIONS', '')}:quarantine_size_mb=16"
        self.process = subprocess.Popen([PROGRAM, "serve", self.folder, "--listen", "127.0.0.1:0"],
                                        stdout=subprocess.PIPE, stderr=self.log, text=True,
                                        env={**os.environ, "ASAN_OPTIONS": options})
        self.port = int(re.search(r":(\d+)/$", self.process.stdout.readline().strip())[1])

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()
        self.process.stdout.close()
        self.log.close()

    def stop(self):
        """The exit code."""
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
        return self.process.wait(60)

    def logged(self):
        self.log.seek(0)
        return self.log.read().decode()

    def resident_mib(self):
        status = Path(f"/proc/{self.process.pid}/status").read_text()
        return int(re.search(r"VmRSS:\s+(\d+)", status)[1]) / 1024

    def threads(self):
        return len(os.listdir(f"/proc/{self.process.pid}/task"))

    def connect(self):
        return socket.create_connection(("127.0.0.1", self.port), timeout=60)

    def begin(self, path, more=""):
        """A connection with a request under way, whose answer ends it."""
        visitor = self.connect()
        visitor.sendall(f"GET {path} HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n{more}\r\n".encode())
        return visitor

    def ask(self, path):
        """(status, body as bytes), over a connection of its own."""
        visitor = http.client.HTTPConnection("127.0.0.1", self.port, timeout=60)
        try:
            visitor.request("GET", path)
            answer = visitor.getresponse()
            return answer.status, answer.read()
        finally:
            visitor.close()


def whole(visitor):
    """All that comes until the end; what a reset cuts off is not there."""
    out = bytearray()
    with visitor:
        try:
            while piece := visitor.recv(65536):
                out += piece
        except ConnectionResetError:
            pass
    return bytes(out)


class Silent:
    """A server that takes connections and never answers. release(n) closes n of them."""

    def __init__(self):
        self.listener = socket.create_server(("127.0.0.1", 0), backlog=512)
        self.port = self.listener.getsockname()[1]
        self.held, self.changed = [], threading.Condition()
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while True:
            try:
                connection = self.listener.accept()[0]
            except OSError:
                return
            with self.changed:
                self.held.append(connection)
                self.changed.notify_all()

    def await_held(self, count):
        """Whether so many wait at the same time."""
        with self.changed:
            return self.changed.wait_for(lambda: len(self.held) >= count, 60)

    def release(self, count):
        with self.changed:
            for connection in self.held[:count]:
                connection.close()
            del self.held[:count]
