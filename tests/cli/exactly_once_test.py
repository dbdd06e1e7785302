#!/usr/bin/env python3
"""The mail service among real servers: exactly_once_test.py GORBEX COMPILER STOREFRONT REQUESTS

The requests arrive at a dovecot; replies leave through a postfix. While they are served both servers are stopped and started
again, and the service is killed five times at work. In the end every request has one answer, and no more. Needs root: postfix
starts as nobody else. Both servers live in a folder of this test's own, on ports of this machine."""

import os
import pathlib
import pwd
import shutil
import socket
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "platform"))
from dovecot import free_ports, make_certificate, start_dovecot
from programs import GORBEX, MailService, Product, check, children, until

REQUESTS = int(sys.argv[4])
NOBODY = 65534
USER, PASSWORD = "builder", "s3cret"

POSTFIX = """
compatibility_level = 3.6
queue_directory = {folder}/queue
data_directory = {folder}/data
maillog_file = {folder}/postfix.log
maillog_file_prefixes = {folder}
myhostname = mail.example
mydestination =
inet_interfaces = 127.0.0.1
inet_protocols = ipv4
mynetworks = 127.0.0.0/8
alias_maps =
virtual_mailbox_domains = dev.example
virtual_mailbox_base = {folder}
virtual_mailbox_maps = static:answers/
virtual_uid_maps = static:{nobody}
virtual_gid_maps = static:{nobody}
virtual_minimum_uid = 1
"""
POSTFIX_SERVICES = """
127.0.0.1:{port} inet n - n - - smtpd
cleanup unix n - n - 0 cleanup
qmgr unix n - n 300 1 qmgr
rewrite unix - - n - - trivial-rewrite
bounce unix - - n - 0 bounce
defer unix - - n - 0 bounce
trace unix - - n - 0 bounce
error unix - - n - - error
retry unix - - n - - error
anvil unix - - n - 1 anvil
tlsmgr unix - - n 1000? 1 tlsmgr
proxymap unix - - n - - proxymap
smtp unix - - n - - smtp
virtual unix - n n - - virtual
postlog unix-dgram n - n - 1 postlogd
"""


def listens(port):
    with socket.socket() as probe:
        return probe.connect_ex(("127.0.0.1", port)) == 0


class Dovecot:
    def __init__(self, folder):
        self.folder = folder
        self.port, self.tls_port = free_ports(2)
        self.process = None
        make_certificate(folder)

    def start(self):
        self.process = start_dovecot(self.folder, USER, PASSWORD, self.port, self.tls_port)
        until(lambda: listens(self.port), "dovecot listens")

    def stop(self):
        self.process.terminate()
        self.process.wait(30)


class Postfix:
    def __init__(self, folder):
        self.folder = folder
        self.port, = free_ports(1)
        for part in ("queue", "data", "etc", "answers"):
            (folder / part).mkdir()
        os.chown(folder / "data", pwd.getpwnam("postfix").pw_uid, -1)
        os.chown(folder / "answers", NOBODY, NOBODY)
        (folder / "etc" / "main.cf").write_text(POSTFIX.format(folder=folder, nobody=NOBODY))
        (folder / "etc" / "master.cf").write_text(POSTFIX_SERVICES.format(port=self.port))

    def control(self, command):
        program = shutil.which("postfix", path=os.environ["PATH"] + ":/usr/sbin")
        done = subprocess.run([program, "-c", self.folder / "etc", command], capture_output=True, text=True)
        return done.returncode == 0, done.stdout + done.stderr

    def start(self):
        # Its lock may outlive it for a moment.
        until(lambda: self.control("start")[0], "postfix starts")
        until(lambda: listens(self.port), "postfix listens")

    def stop(self):
        self.control("stop")

    def answers(self):
        folder = self.folder / "answers" / "new"
        return sorted(folder.iterdir()) if folder.exists() else []


def interrupt(service, dovecot, postfix):
    """Yields what befalls the service and its servers, one thing after the other."""
    def restart(server, pause):
        server.stop()
        time.sleep(pause)
        server.start()

    def kill():
        service.until(lambda: children(service.process), "the service compiles")
        service.product.kill(service.process)
        service.start()

    def kill_without_postfix():
        """What it could not send before it was killed it sends afterwards."""
        postfix.stop()
        time.sleep(3)
        kill()
        postfix.start()

    yield "dovecot starts again", lambda: restart(dovecot, 3)
    yield "the service is killed", kill
    yield "postfix starts again", lambda: restart(postfix, 3)
    yield "the service is killed", kill
    yield "postfix is away while the service is killed", kill_without_postfix
    yield "dovecot starts again", lambda: restart(dovecot, 3)
    yield "the service is killed", kill
    yield "the service is killed", kill
    yield "both start again", lambda: (postfix.stop(), restart(dovecot, 1), postfix.start())


def serve_all(service, dovecot, postfix):
    # All at once, as after a night in which nothing was served.
    for number in range(REQUESTS):
        service.request(f"GET,{'BUILD,' if number % 5 == 0 else ''}PRO C:\\Storefront\\Core\\StoreCore.vbp,")
    for path in service.folder.rglob("*"):
        os.chown(path, NOBODY, NOBODY)
    service.start()
    events = list(interrupt(service, dovecot, postfix))
    for number, (name, happens) in enumerate(events):
        served = (number + 1) * REQUESTS // (len(events) + 2)
        service.until(lambda: service.served() >= served, f"{served} requests are served, before {name}", 300)
        print(f"{service.served()} served, {len(postfix.answers())} answered: {name}", flush=True)
        happens()
    service.until(lambda: service.served() >= REQUESTS, "all requests are served", 600)
    service.until(lambda: len(postfix.answers()) >= REQUESTS, "all requests are answered", 600)
    time.sleep(5)
    service.end()


def service_among(root, dovecot, postfix):
    product = Product(root)
    product.environment.update(SSL_CERT_FILE=str(dovecot.folder / "cert.pem"), GORBEX_MAIL_PASSWORD=PASSWORD)
    product.run(GORBEX, "settings", "MailStore", f"imap://{USER}@localhost:{dovecot.port}/")
    product.run(GORBEX, "settings", "MailTransport", f"smtp://localhost:{postfix.port}/?tls=none")
    product.run(GORBEX, "settings", "MailFrom", "Builder <builder@dev.example>")
    return MailService(product, dovecot.folder / "Maildir")


def main():
    check(os.geteuid() == 0, "only root can start postfix")
    with tempfile.TemporaryDirectory() as name:
        root = pathlib.Path(name)
        root.chmod(0o755)
        (root / "dovecot").mkdir()
        (root / "postfix").mkdir()
        dovecot, postfix = Dovecot(root / "dovecot"), Postfix(root / "postfix")
        service = service_among(root, dovecot, postfix)
        try:
            dovecot.start()
            postfix.start()
            serve_all(service, dovecot, postfix)
            service.require_one_answer_each(postfix.answers())
            outbox = service.product.prefix / "drive_c/Program Files/GorbexBuilder/Outbox"
            check(not [*outbox.rglob("*.mail"), *outbox.rglob("*.eml")], "something is left in the outbox")
            check("the mailbox is away" in service.words.read_text(), "no outage was noticed")
        except BaseException:
            print("The service said last:", *service.words.read_text().splitlines()[-20:], sep="\n")
            raise
        finally:
            service.end_anyhow()
            postfix.stop()
            if dovecot.process and dovecot.process.poll() is None:
                dovecot.stop()
    print(f"{REQUESTS} requests, each answered once")


main()
