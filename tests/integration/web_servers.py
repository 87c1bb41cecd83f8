"""A web server that misbehaves to order, and a real FTP server; both on loopback."""

import os
import random
import socket
import struct
import subprocess
import threading
import time


def free_port():
    """A port below 32768, which is what fits into the program's URLs."""
    while True:
        port = random.randint(20000, 32000)
        with socket.socket() as probe:
            try:
                probe.bind(("127.0.0.1", port))
                return port
            except OSError:
                continue


class WebServer:
    """Keeps the bytes of each request and treats its connection as the next of `acts` says; after those it is well."""

    def __init__(self, *acts):
        self.requests = []  # (when, bytes)
        self.arrived = threading.Condition()
        self.ended = threading.Event()
        self.acts = list(acts)
        self.listener = socket.create_server(("127.0.0.1", free_port()))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self._accept, daemon=True).start()

    def close(self):
        self.ended.set()
        self.listener.close()

    def wait_for(self, count, patience):
        with self.arrived:
            assert self.arrived.wait_for(lambda: len(self.requests) >= count, patience), self.requests
            return self.requests[count - 1]

    def _accept(self):
        while not self.ended.is_set():
            try:
                connection, _ = self.listener.accept()
            except OSError:
                return
            act = self.acts.pop(0) if self.acts else well
            threading.Thread(target=self._serve, args=(connection, act), daemon=True).start()

    def _serve(self, connection, act):
        with connection:
            data = b""
            while b"\r\n\r\n" not in data:
                piece = connection.recv(65536)
                if not piece:
                    return
                data += piece
            with self.arrived:
                self.requests.append((time.monotonic(), data))
                self.arrived.notify_all()
            try:
                act(connection, self.ended)
            except OSError:
                pass


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


class StuckFtpServer:
    """Says hello and nothing more, or dribbles its next answer, a byte in half a second."""

    def __init__(self, dribbles):
        self.dribbles = dribbles
        self.stuck = threading.Event()
        self.ended = threading.Event()
        self.listener = socket.create_server(("127.0.0.1", free_port()))
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self._serve, daemon=True).start()

    def close(self):
        self.ended.set()
        self.listener.close()

    def _serve(self):
        connection, _ = self.listener.accept()
        connection.sendall(b"220 hello\r\n")
        connection.recv(100)
        self.stuck.set()
        try:
            while self.dribbles and not self.ended.wait(0.5):
                connection.sendall(b"3")
        except OSError:
            pass
        self.ended.wait(120)


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
        with open(config, "w", encoding="utf-8") as file:
            file.write("\n".join((
                "listen=YES", "listen_address=127.0.0.1", "listen_port=%d" % self.port, "background=NO",
                "run_as_launching_user=YES", "seccomp_sandbox=NO", "secure_chroot_dir=" + empty,
                "anonymous_enable=YES", "anon_root=" + self.root, "allow_writeable_chroot=YES", "write_enable=YES",
                "anon_upload_enable=YES", "anon_other_write_enable=YES", "xferlog_enable=YES",
                "vsftpd_log_file=" + self.log, "log_ftp_protocol=YES", "")))
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
