"""What the stand-ins share: a loopback server that names its port and ends with who started it."""
import os
import socket
import sys
import threading

LONGEST_REQUEST = 65536
SECONDS = 30


def listen(first_port=0, last_port=0):
    """A listening socket on the first free port of a range, or on any free one."""
    for port in range(first_port, last_port + 1):
        listener = socket.socket()
        listener.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        try:
            listener.bind(("127.0.0.1", port))
            listener.listen(64)
            return listener
        except OSError:
            listener.close()
    sys.exit("no free port")


def serve(listener, converse):
    """Prints the port, and has `converse(connection)` with each caller until standard input ends."""
    threading.Thread(target=accept, args=(listener, converse), daemon=True).start()
    print(listener.getsockname()[1], flush=True)
    while os.read(0, 4096):
        pass


def accept(listener, converse):
    while True:
        connection = listener.accept()[0]
        threading.Thread(target=attend, args=(connection, converse), daemon=True).start()


def attend(connection, converse):
    connection.settimeout(SECONDS)
    with connection:
        try:
            converse(connection)
        except OSError:
            pass  # the caller went away


def answer_http(connection, page_at):
    """One GET: `page_at(path, query)` gives the page's text, or None where there is none."""
    head = b""
    while b"\r\n\r\n" not in head and len(head) < LONGEST_REQUEST:
        more = connection.recv(4096)
        if not more:
            return
        head += more
    # A target may hold blanks, so it ends at the last one.
    line = head.split(b"\r\n", 1)[0].decode("utf-8", "replace")
    target = line.partition(" ")[2].rpartition(" ")[0]
    path, _, query = target.partition("?")
    page = page_at(path, query)
    status = "404 Not Found" if page is None else "200 OK"
    body = ("nothing here" if page is None else page).encode("gbk", "replace")
    connection.sendall(f"HTTP/1.1 {status}\r\nContent-Type: text/html; charset=gb2312\r\n"
                       f"Content-Length: {len(body)}\r\nConnection: close\r\n\r\n".encode() + body)
