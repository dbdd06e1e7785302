#!/usr/bin/env python3
"""The mail service among real servers: exactly_once_test.py GORBEX COMPILER STOREFRONT REQUESTS

The requests arrive at a dovecot; replies leave through a postfix. While they are served both servers are stopped and started
again, and the service is killed five times at work. In the end every request has one answer, and no more. Needs root: postfix
starts as nobody else. Both servers live in a folder of this test's own, on ports of this machine."""

import collections
import contextlib
import email
import os
import pathlib
import pwd
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "platform"))
from dovecot import free_ports, make_certificate, start_dovecot

GORBEX, COMPILER, STOREFRONT = sys.argv[1:4]
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


def check(condition, what):
    if not condition:
        sys.exit(f"FAILED: {what}")


def until(condition, what, patience):
    end = time.monotonic() + patience
    while not condition():
        check(time.monotonic() < end, f"waited in vain until {what}")
        time.sleep(0.02)


def listens(port):
    with socket.socket() as probe:
        return probe.connect_ex(("127.0.0.1", port)) == 0


class Dovecot:
    def __init__(self, folder):
        self.folder = folder
        self.port, self.tls_port = free_ports(2)
        self.process = None
        for part in ("cur", "new", "tmp"):
            (folder / "Maildir" / ".Builder" / part).mkdir(parents=True)
            (folder / "Maildir" / part).mkdir()
        make_certificate(folder)

    def start(self):
        self.process = start_dovecot(self.folder, USER, PASSWORD, self.port, self.tls_port)
        until(lambda: listens(self.port), "dovecot listens", 30)

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
        until(lambda: self.control("start")[0], "postfix starts", 30)
        until(lambda: listens(self.port), "postfix listens", 30)

    def stop(self):
        self.control("stop")

    def answers(self):
        folder = self.folder / "answers" / "new"
        return sorted(folder.iterdir()) if folder.exists() else []


class Service:
    """The product in its own prefix, and the service over it."""

    def __init__(self, root, dovecot, postfix):
        self.dovecot = dovecot
        self.log = root / "service.log"
        self.environment = dict(os.environ, HOME=str(root), GORBEX_PREFIX=str(root / "prefix"),
                                SSL_CERT_FILE=str(dovecot.folder / "cert.pem"))
        self.process = None
        product = root / "prefix" / "drive_c" / "Storefront"
        self.file = product / "Storefront.bpf"
        self.run(COMPILER, "/regserver")
        shutil.copytree(STOREFRONT, product)
        for path in product.rglob("*"):
            path.chmod(path.stat().st_mode | 0o200)
        for binding in product.rglob("mssccprj.scc"):
            binding.unlink()
        self.run(GORBEX, "settings", "MailStore", f"imap://{USER}@localhost:{dovecot.port}/")
        self.run(GORBEX, "settings", "MailTransport", f"smtp://localhost:{postfix.port}/?tls=none")
        self.run(GORBEX, "settings", "MailFrom", "Builder <builder@dev.example>")
        self.run(GORBEX, "build", self.file, "--all", "--yes")

    def run(self, *command):
        done = subprocess.run([str(word) for word in command], env=self.environment, capture_output=True, text=True)
        check(done.returncode == 0, f"{command} ended with {done.returncode}: {done.stdout}{done.stderr}")

    def start(self):
        # Its words go to a file: a pipe that nobody empties would hold it up.
        with self.log.open("a") as log:
            self.process = subprocess.Popen([GORBEX, "serve", str(self.file), "--interval", "1", "--no"], stdout=log,
                                            stderr=log, env=dict(self.environment, GORBEX_MAIL_PASSWORD=PASSWORD))

    def kill_at_work(self):
        """Kills it while it compiles."""
        children = pathlib.Path(f"/proc/{self.process.pid}/task/{self.process.pid}/children")
        until(lambda: children.read_text().strip(), "the service compiles", 120)
        compilers = children.read_text().split()
        self.process.kill()
        self.process.wait()
        for compiler in compilers:
            with contextlib.suppress(ProcessLookupError):
                os.killpg(int(compiler), signal.SIGKILL)

    def end(self):
        self.process.send_signal(signal.SIGTERM)
        check(self.process.wait(60) == 0, "told to end, it ends well")


def send_requests(maildir):
    """All at once, as after a night in which nothing was served. Every fifth one builds."""
    for number in range(REQUESTS):
        body = f"GET,{'BUILD,' if number % 5 == 0 else ''}PRO C:\\Storefront\\Core\\StoreCore.vbp,"
        file = maildir / "tmp" / f"{1700000000 + number}.{number}.host"
        file.write_text(f"From: Anna Berg <anna@dev.example>\r\nSubject: Build Request\r\n"
                        f"Message-ID: <{number}@dev.example>\r\n\r\n{body}\r\n")
        os.chown(file, NOBODY, NOBODY)
        file.rename(maildir / "new" / file.name)


def read_requests(maildir):
    return sum(1 for mail in (maildir / "cur").iterdir() if "S" in mail.name.split(":2,")[-1])


def interrupt(service, dovecot, postfix):
    """Yields what befalls the service and its servers, one thing after the other."""
    def restart(server, pause):
        server.stop()
        time.sleep(pause)
        server.start()

    def kill():
        service.kill_at_work()
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
    maildir = dovecot.folder / "Maildir" / ".Builder"
    service.start()
    send_requests(maildir)
    events = list(interrupt(service, dovecot, postfix))

    def are_served(count):
        check(service.process.poll() is None, f"the service ended, {count} requests should have been served")
        return read_requests(maildir) >= count

    for number, (name, happens) in enumerate(events):
        served = (number + 1) * REQUESTS // (len(events) + 2)
        until(lambda: are_served(served), f"{served} requests are served, before {name}", 300)
        print(f"{read_requests(maildir)} served, {len(postfix.answers())} answered: {name}", flush=True)
        happens()
    until(lambda: are_served(REQUESTS), "all requests are served", 600)
    until(lambda: len(postfix.answers()) >= REQUESTS, "all requests are answered", 600)
    time.sleep(5)
    service.end()


def check_answers(service, postfix):
    answered = collections.Counter()
    for file in postfix.answers():
        mail = email.message_from_bytes(file.read_bytes())
        check("succe" in mail["Subject"], f"{mail['In-Reply-To']}: {mail['Subject']}")
        check(mail.is_multipart() == mail["Subject"].startswith("Your Build"), f"{mail['In-Reply-To']}: the attachment")
        answered[mail["In-Reply-To"]] += 1
    twice = [request for request, count in answered.items() if count > 1]
    check(not twice, f"answered more than once: {twice}")
    check(len(answered) == REQUESTS, f"{REQUESTS - len(answered)} requests have no answer")
    outbox = pathlib.Path(service.environment["GORBEX_PREFIX"]) / "drive_c/Program Files/GorbexBuilder/Outbox"
    check(not list(outbox.rglob("*.mail")) and not list(outbox.rglob("*.eml")), "something is left in the outbox")
    check("the mailbox is away" in service.log.read_text(), "no outage was noticed")


def main():
    check(os.geteuid() == 0, "only root can start postfix")
    with tempfile.TemporaryDirectory() as name:
        root = pathlib.Path(name)
        root.chmod(0o755)
        (root / "dovecot").mkdir()
        (root / "postfix").mkdir()
        dovecot, postfix = Dovecot(root / "dovecot"), Postfix(root / "postfix")
        service = Service(root, dovecot, postfix)
        try:
            dovecot.start()
            postfix.start()
            serve_all(service, dovecot, postfix)
            check_answers(service, postfix)
        except BaseException:
            print("The service said last:", *service.log.read_text().splitlines()[-20:], sep="\n")
            raise
        finally:
            if service.process and service.process.poll() is None:
                service.process.kill()
                service.process.wait()
            postfix.stop()
            if dovecot.process and dovecot.process.poll() is None:
                dovecot.stop()
    print(f"{REQUESTS} requests, each answered once")


main()
