#!/usr/bin/env python3
"""Real servers on loopback for the tests of the update, on ports that the system chooses.

    tests/update/update_servers.py FOLDER

FOLDER/site is what both the web servers and the FTP servers serve; FOLDER/ca.pem becomes the
certificate that the ones with TLS show. Prints a line "NAME PORT" for each server, then "ready":

  http, https   a web server; paths that begin with /odd/ misbehave, see WebHandler
  ftp, ftps     vsftpd, plain and with TLS offered; takes account "anonymous", password "qvnctlro"
  silent        takes connections and never says a word
  refused       nobody listens here

A line "cut" on standard input ends every FTP session where it stands and is answered by "cut". At
the end of the input everything ends.
"""

import http.server
import os
import re
import shutil
import signal
import socket
import ssl
import subprocess
import sys
import threading
import time
from pathlib import Path

PASSWORD = "qvnctlro"
LOOPBACK = "127.0.0.1"


class WebHandler(http.server.SimpleHTTPRequestHandler):
    def do_GET(self):
        self.path = re.sub("^ftp://[^/]*", "", self.path)  # asked as a proxy
        odd = {
            "/odd/cut": self.cut_off,
            "/odd/stuck": lambda: self.endless(1, 3600),
            "/odd/endless": lambda: self.endless(1000, 0),
            "/odd/drops": lambda: self.endless(1, 0.1),
            "/odd/redirect-to-file": lambda: self.redirect("file:///etc/passwd"),
            "/odd/redirect-round": lambda: self.redirect("/odd/redirect-round"),
            "/odd/redirect-home": lambda: self.redirect(self.path.partition("?")[2]),
        }.get(self.path.partition("?")[0])
        try:
            odd() if odd else super().do_GET()
        except OSError:
            pass  # the client had enough

    def redirect(self, where):
        self.send_response(302)
        self.send_header("Location", where)
        self.send_header("Content-Length", "0")
        self.end_headers()

    def cut_off(self):
        """Promises 1,000 bytes and closes after 10."""
        self.send_response(200)
        self.send_header("Content-Length", "1000")
        self.end_headers()
        self.wfile.write(b"VERSION:9.")

    def endless(self, lines, pause):
        self.send_response(200)
        self.end_headers()
        while True:
            self.wfile.write(b"VERSION:9.9.9\n" * lines)
            time.sleep(pause)

    def log_message(self, *_):
        pass


def serve_web(site, context=None):
    def handler(*arguments):
        return WebHandler(*arguments, directory=str(site))

    server = http.server.ThreadingHTTPServer((LOOPBACK, 0), handler)
    server.daemon_threads = True
    if context:
        server.socket = context.wrap_socket(server.socket, server_side=True)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server.server_address[1]


class FtpServer:
    """Starts a vsftpd for each connection, so that the port is free for certain."""

    sessions, lock = [], threading.Lock()

    def __init__(self, folder, name, settings):
        self.configuration = folder / f"{name}.conf"
        self.configuration.write_text("".join(f"{key}={value}\n" for key, value in settings.items()))
        os.chmod(self.configuration, 0o600)
        self.program = shutil.which("vsftpd", path=os.environ.get("PATH", "") + ":/usr/sbin")
        if not self.program:
            sys.exit("vsftpd is missing: the Debian package vsftpd has it")
        self.listener = socket.create_server((LOOPBACK, 0))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while True:
            connection, _ = self.listener.accept()
            with FtpServer.lock, connection:
                FtpServer.sessions.append(subprocess.Popen(
                    [self.program, str(self.configuration)], stdin=connection, stdout=connection,
                    stderr=subprocess.DEVNULL, start_new_session=True))

    @classmethod
    def cut(cls):
        with cls.lock:
            for session in cls.sessions:
                try:
                    os.killpg(session.pid, signal.SIGKILL)
                except ProcessLookupError:
                    pass
                session.wait()
            cls.sessions.clear()


def ftp_settings(folder):
    passwords = folder / "passwords"
    passwords.write_text(PASSWORD + "\n")
    return {
        "listen": "NO",
        "background": "NO",
        "run_as_launching_user": "YES",
        "seccomp_sandbox": "NO",  # needs more than a container grants
        "anonymous_enable": "YES",
        "local_enable": "NO",
        "anon_root": folder / "site",
        "allow_writeable_chroot": "YES",
        "secure_email_list_enable": "YES",
        "email_password_file": passwords,
        "anon_max_rate": 0,
        "delay_failed_login": 0,
        "pasv_address": LOOPBACK,
        "xferlog_enable": "NO",
    }


def make_certificate(folder):
    certificate, key = folder / "ca.pem", folder / "key.pem"
    subprocess.run(
        ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
         "-nodes", "-days", "2", "-subj", "/CN=Kelvrane tests", "-addext",
         f"subjectAltName=IP:{LOOPBACK}", "-keyout", key, "-out", certificate],
        check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return certificate, key


def main():
    folder = Path(sys.argv[1]).resolve()
    site = folder / "site"
    site.mkdir(exist_ok=True)
    certificate, key = make_certificate(folder)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(certificate, key)
    silent = socket.create_server((LOOPBACK, 0))
    refused = socket.socket()
    refused.bind((LOOPBACK, 0))
    plain = ftp_settings(folder)
    secure = {"ssl_enable": "YES", "allow_anon_ssl": "YES", "force_anon_data_ssl": "YES",
              "force_anon_logins_ssl": "YES", "ssl_tlsv1": "YES", "ssl_ciphers": "HIGH",
              "rsa_cert_file": certificate, "rsa_private_key_file": key}
    ports = {
        "http": serve_web(site),
        "https": serve_web(site, context),
        "ftp": FtpServer(folder, "plain", plain).port,
        "ftps": FtpServer(folder, "secure", plain | secure).port,
        "slow": FtpServer(folder, "slow", plain | {"anon_max_rate": 100_000}).port,
        "silent": silent.getsockname()[1],
        "refused": refused.getsockname()[1],
    }
    for name, port in ports.items():
        print(name, port)
    print("ready", flush=True)
    for line in sys.stdin:
        if line.strip() == "cut":
            FtpServer.cut()
            print("cut", flush=True)
    FtpServer.cut()


if __name__ == "__main__":
    main()
