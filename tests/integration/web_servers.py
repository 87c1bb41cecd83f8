"""A web server that misbehaves to order, and a real FTP server; both on loopback."""

import contextlib
import os
import socket
import struct
import subprocess
import threading
import time
from pathlib import Path

from ports import free_port


class Server:
    """Serves each connection in a thread of its own, until it is closed."""

    def __init__(self):
        self.ended = threading.Event()
        self.listener = socket.create_server(("127.0.0.1", free_port()))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self._accept, daemon=True).start()

    def close(self):
        self.ended.set()
        self.listener.close()

    def _accept(self):
        try:
            while True:
                threading.Thread(target=self._serve, args=self.listener.accept()[:1], daemon=True).start()
        except OSError:
            pass  # closed

    def _serve(self, connection):
        with connection, contextlib.suppress(OSError):
            self.serve(connection)


class WebServer(Server):
    """Keeps the bytes of each request and treats its connection as the next of `acts` says; after those it is well."""

    def __init__(self, *acts):
        self.requests = []  # (when, bytes)
        self.arrived = threading.Condition()
        self.acts = list(acts)
        super().__init__()

    def wait_for(self, count, patience):
        with self.arrived:
            assert self.arrived.wait_for(lambda: len(self.requests) >= count, patience), self.requests
            return self.requests[count - 1]

    def serve(self, connection):
        act = self.acts.pop(0) if self.acts else well
        data = b""
        while b"\r\n\r\n" not in data:
            piece = connection.recv(65536)
            if not piece:
                return
            data += piece
        with self.arrived:
            self.requests.append((time.monotonic(), data))
            self.arrived.notify_all()
        act(connection, self.ended)


def well(connection, _):
    connection.sendall(b"HTTP/1.0 200 OK\nContent-Type: text/html\n\nsuccess\n")


def refuse_politely(connection, _):
    connection.sendall(b"HTTP/1.0 200 OK\r\n\r\nINVALIDPASSWORDID|Password or key and/or id are incorrect\r\n")


def silent(connection, ended):
    ended.wait(120)


def drip(connection, ended):
    while not ended.wait(1):
        connection.sendall(b"H")


def reset(connection, _):
    connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))


def redirect(connection, _):
    connection.sendall(b"HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:1/\r\n\r\n")


def flood(connection, _):
    connection.sendall(b"HTTP/1.0 200 OK\r\n\r\n")
    for _ in range(100):
        connection.sendall(b"0123456789abcdef" * 65536)


class StuckFtpServer(Server):
    """Says hello and nothing more, or dribbles its next answer, a byte in half a second."""

    def __init__(self, dribbles):
        self.dribbles = dribbles
        self.stuck = threading.Event()
        super().__init__()

    def serve(self, connection):
        connection.sendall(b"220 hello\r\n")
        connection.recv(100)
        self.stuck.set()
        while not self.ended.wait(0.5):
            if self.dribbles:
                connection.sendall(b"3")


class FtpServer:
    """vsftpd as this user, with one folder that takes files, "pictures"."""

    def __init__(self, folder):
        self.root = os.path.join(folder, "ftp")
        self.log = os.path.join(folder, "ftp.log")
        self.port = free_port()
        empty = os.path.join(folder, "ftp-empty")
        for path in (os.path.join(self.root, "pictures"), empty):
            os.makedirs(path)
        config = os.path.join(folder, "ftp.conf")
        Path(config).write_text("\n".join((
            "listen=YES", "listen_address=127.0.0.1", "listen_port=%d" % self.port, "background=NO",
            "run_as_launching_user=YES", "seccomp_sandbox=NO", "secure_chroot_dir=" + empty, "anonymous_enable=YES",
            "anon_root=" + self.root, "allow_writeable_chroot=YES", "write_enable=YES", "anon_upload_enable=YES",
            "anon_other_write_enable=YES", "xferlog_enable=YES", "vsftpd_log_file=" + self.log, "log_ftp_protocol=YES",
            "")))
        self.process = subprocess.Popen(["/usr/sbin/vsftpd", config])
        end = time.monotonic() + 20
        while True:
            try:
                socket.create_connection(("127.0.0.1", self.port)).close()
                return
            except OSError:
                assert time.monotonic() < end and self.process.poll() is None, "vsftpd does not start"
                time.sleep(0.1)

    def close(self):
        self.process.terminate()
        self.process.wait()
