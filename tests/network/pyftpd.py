"""A server for the tests, over pyftpdlib. Prints its port and serves until its standard input closes.

usage: pyftpd.py FOLDER [--tls=explicit|implicit CERTIFICATE] [--new-tls-only]
                 [--no-facts] [--read-only] [--listing=FILE]
"""
import os
import sys
import threading

import logging

from OpenSSL import SSL
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler, TLS_FTPHandler
from pyftpdlib.servers import FTPServer

folder = sys.argv[1]
options = [a for a in sys.argv[2:] if a.startswith("--")]
others = [a for a in sys.argv[2:] if not a.startswith("--")]

logging.basicConfig(level=logging.ERROR)

authorizer = DummyAuthorizer()
authorizer.add_user("ada", "secret", folder, perm="elr" if "--read-only" in options else "elradfmwMT")
authorizer.add_anonymous(folder)

handler = FTPHandler
if "--tls=explicit" in options or "--tls=implicit" in options:

    class Handler(TLS_FTPHandler):
        certfile = others[0]
        tls_control_required = True
        tls_data_required = True
        if "--new-tls-only" in options:
            ssl_options = SSL.OP_NO_TLSv1 | SSL.OP_NO_TLSv1_1 | SSL.OP_NO_TLSv1_2

    if "--tls=implicit" in options:

        class Implicit(Handler):
            def handle(self):
                self.secure_connection(self.get_ssl_context())

            def handle_ssl_established(self):
                FTPHandler.handle(self)

        handler = Implicit
    else:
        handler = Handler
else:

    class Plain(FTPHandler):
        pass

    handler = Plain

handler.authorizer = authorizer
handler.banner = "ready"
handler.use_sendfile = False
handler.permit_foreign_addresses = True
if "--no-facts" in options:
    handler.proto_cmds = {k: v for k, v in FTPHandler.proto_cmds.items() if k not in ("MLSD", "MLST")}

for option in options:
    if option.startswith("--listing="):
#What an odd server would print, whatever is there.
        text = open(option[len("--listing="):], "rb").read()

        def ftp_LIST(self, path, text=text):
            self.push_dtp_data(text, isproducer=False, cmd="LIST")
            return path

        handler.ftp_LIST = ftp_LIST
        handler.proto_cmds = {k: v for k, v in FTPHandler.proto_cmds.items() if k not in ("MLSD", "MLST")}

server = FTPServer(("127.0.0.1", 0), handler)
print(server.address[1], flush=True)


def wait_for_the_end():
    sys.stdin.read()
    os._exit(0)


threading.Thread(target=wait_for_the_end, daemon=True).start()
server.serve_forever()
