"""A server for the tests that misbehaves in one chosen way. Prints its port and serves until its input closes.

usage: odd_ftpd.py ODDITY [SIZE]

Every file has SIZE bytes. ODDITY: none, slow, refuse, silent, silent-login, echo-password, other-address, dos,
cut:BYTES, stall:BYTES, cut-upload:BYTES, full, deaf-goodbye, late-answer:MILLISECONDS
"""
import os
import socket
import sys
import threading
import time

oddity, _, at = sys.argv[1].partition(":")
at = int(at or 0)
size = int(sys.argv[2]) if len(sys.argv) > 2 else 1000
content = bytes((i * 31 + i // 251) & 255 for i in range(size))
received = {}

DOS = b"11-22-26  05:59AM       <DIR>          pictures\r\n11-22-26  12:05PM                 1234 photo one.gif\r\n"


class Session:
    def __init__(self, control):
        self.control = control
        self.lines = control.makefile("rb")
        self.listener = None
        self.target = None

    def reply(self, text):
        self.control.sendall(text.encode() + b"\r\n")

    def data(self):
        if self.listener:
            connection, _ = self.listener.accept()
            self.listener.close()
            self.listener = None
            return connection
        return socket.create_connection(self.target)

    def cut(self):
        self.control.shutdown(socket.SHUT_RDWR)
        self.control.close()

    def run(self):
        if oddity == "refuse":
            return self.reply("421 Too many users")
        if oddity == "silent":
            return time.sleep(600)
        self.reply("220-Hello\r\n220 ready")
        for line in self.lines:
            verb, _, argument = line.decode("utf-8", "replace").rstrip("\r\n").partition(" ")
            if not self.act(verb.upper(), argument):
                return

    def act(self, verb, argument):
        if verb == "USER":
            if oddity == "silent-login":
                time.sleep(600)
            self.reply("331 Password please")
        elif verb == "PASS":
            self.password = argument
            if oddity == "echo-password":
                self.reply("530 The password " + argument + " is wrong")
            else:
                self.reply("230 Welcome")
        elif verb == "PWD":
            self.reply('257 "/" is here')
        elif verb in ("TYPE", "CWD", "REST"):
            self.reply("350 ok" if verb == "REST" else "250 ok")
        elif verb == "SIZE":
            self.reply("213 %d" % size)
        elif verb == "EPSV" and oddity == "other-address":
            self.reply("500 no")
        elif verb in ("EPSV", "PASV"):
            self.listener = socket.create_server(("127.0.0.1", 0))
            if oddity == "slow":  # as on a slow line: room for little at a time
                self.listener.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 8192)
            port = self.listener.getsockname()[1]
            host = "10,9,8,7" if oddity == "other-address" else "127,0,0,1"
            if verb == "EPSV":
                self.reply("229 here (|||%d|)" % port)
            else:
                self.reply("227 here (%s,%d,%d)" % (host, port >> 8, port & 255))
        elif verb == "EPRT":
            _, _, host, port, _ = argument.split("|")
            self.target = (host, int(port))
            self.reply("200 ok")
        elif verb in ("MLSD", "LIST"):
            if oddity == "dos" and verb == "MLSD":
                self.reply("500 no")
            else:
                self.send(DOS if oddity == "dos" else b"type=file;size=%d; a\r\n" % size)
        elif verb == "RETR":
            return self.retrieve()
        elif verb == "STOR":
            return self.store()
        elif verb == "QUIT":
            if oddity == "deaf-goodbye":
                time.sleep(600)
            self.reply("221 bye")
            return False
        else:
            self.reply("500 no")
        return True

    def send(self, text):
        self.reply("150 here it comes")
        with self.data() as data:
            data.sendall(text)
        self.reply("226 done")

    def retrieve(self):
        self.reply("150 here it comes")
        with self.data() as data:
            if oddity == "cut":
                data.sendall(content[:at])
                time.sleep(0.05)
                self.cut()
                return False
            if oddity == "stall":
                data.sendall(content[:at])
                time.sleep(600)
            if oddity == "slow":
                for start in range(0, size, 500):
                    data.sendall(content[start:start + 500])
                    time.sleep(0.05)
            else:
                data.sendall(content)
        if oddity == "late-answer":
            time.sleep(at / 1000)
        self.reply("226 done")
        return True

    def store(self):
        self.reply("150 go on")
        got = 0
        with self.data() as data:
            while True:
                if oddity == "stall-upload" and got >= at:
                    time.sleep(600)
                block = data.recv(4096)
                if not block:
                    break
                got += len(block)
                if oddity == "cut-upload" and got >= at:
                    self.cut()
                    return False
                if oddity == "slow":
                    time.sleep(0.05)
        if oddity == "late-answer":
            time.sleep(at / 1000)
        self.reply("552 The disk is full" if oddity == "full" else "226 done")
        return True


def serve(control):
    try:
        Session(control).run()
    except OSError:
        pass
    finally:
        control.close()


server = socket.create_server(("127.0.0.1", 0), backlog=64)
print(server.getsockname()[1], flush=True)


def accept():
    while True:
        control, _ = server.accept()
        threading.Thread(target=serve, args=(control,), daemon=True).start()


threading.Thread(target=accept, daemon=True).start()
sys.stdin.read()
os._exit(0)
