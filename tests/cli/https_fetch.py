#!/usr/bin/env python3
"""What pages fetch over TLS and through proxies, against servers of this process on loopback."""
import http.server
import os
import ssl
import subprocess
import sys
import tempfile
import threading
from pathlib import Path

PAGE = ('<%@ CodePage=65001 %><% Set h = Server.CreateObject("Rkclient.Host")\n'
        'Response.Write h.GetURL(Request.QueryString("url")) %>')


class Answers(http.server.BaseHTTPRequestHandler):
    """Answers each GET with its server's word and what was asked for, which a proxy sees whole."""

    def do_GET(self):  # noqa: N802 - the name that the base class calls
        body = f"{self.server.word} {self.path}".encode()
        self.send_response(200)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


class Listening:
    """A server on a free port, over TLS where a certificate's files are given."""

    def __init__(self, word, certificate=None):
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Answers)
        self.server.word = word
        self.server.handle_error = lambda *_: None  # a refused certificate ends the handshake
        if certificate:
            context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            context.load_cert_chain(*certificate)
            self.server.socket = context.wrap_socket(self.server.socket, server_side=True,
                                                     do_handshake_on_connect=False)
        self.port = self.server.server_address[1]
        threading.Thread(target=self.server.serve_forever, daemon=True).start()


def certificate_for(folder, name, subject):
    """A certificate that signs itself, and its key."""
    files = folder / f"{name}.pem", folder / f"{name}.key"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
                    "-subj", "/CN=loopback", "-addext", f"subjectAltName={subject}",
                    "-out", files[0], "-keyout", files[1]], check=True, stderr=subprocess.DEVNULL)
    return files


def fetched(site, settings, url, **environment):
    (site / "rkclient.ini").write_text(f"[fetch]\n{settings}\n")
    done = subprocess.run(["rkclient", "run", "/fetch.asp", "--site", site, "--query", f"url={url}"],
                          env={**os.environ, **environment}, check=True, capture_output=True, text=True)
    return done.stdout.strip()


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        site = folder / "site"
        site.mkdir()
        (site / "fetch.asp").write_text(PAGE)
        own, other = (certificate_for(folder, *given)
                      for given in (("own", "IP:127.0.0.1"), ("other", "DNS:other.example")))
        secure, elsewhere = Listening("secure", own), Listening("elsewhere", other)
        plain, proxy = Listening("plain"), Listening("proxy")
        trust = f"ca_file = {own[0]}"
        print("nobody vouches:", fetched(site, "", f"https://127.0.0.1:{secure.port}/a"))
        print("its authority is named:", fetched(site, trust, f"https://127.0.0.1:{secure.port}/a"))
        print("made out to another name:",
              fetched(site, f"ca_file = {other[0]}", f"https://127.0.0.1:{elsewhere.port}/a"))
        print("TLS to a server without:", fetched(site, trust, f"https://127.0.0.1:{plain.port}/a"))
        by = f"http://127.0.0.1:{proxy.port}"
        print("by the proxy of the settings:", fetched(site, f"proxy = {by}", "http://shop.invalid/a"))
        print("the environment's is not used:",
              fetched(site, "", f"http://127.0.0.1:{plain.port}/a", http_proxy=by, HTTP_PROXY=by, ALL_PROXY=by))


sys.exit(main())
