#!/usr/bin/env python3
"""The mail service over a real Maildir and a real sendmail: mail_service_test.py GORBEX COMPILER STOREFRONT

Thousands of requests over many looks: every one is answered exactly once, and the service grows no larger. Told to
end, it answers the present request first. Killed during a build, it has lost no request.
"""

import email
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

GORBEX, COMPILER, STOREFRONT = sys.argv[1:4]
BATCHES, REQUESTS = 8, 250
PATIENCE = 240

SENDMAIL = """#!/bin/sh
# Keeps each mail in a file of its own, which appears whole.
file=$(mktemp -p '{outbox}' part.XXXXXX)
cat >"$file"
mv "$file" "$(dirname "$file")/mail.${{file##*.}}"
"""


class Machine:
    """A product in a prefix, a mailbox, and the service between them."""

    def __init__(self, root):
        self.root = pathlib.Path(root)
        self.outbox = self.root / "outbox"
        self.folder = self.root / "Maildir" / ".Builder"
        self.product = self.root / "prefix" / "drive_c" / "Storefront"
        self.environment = dict(os.environ, HOME=root, GORBEX_PREFIX=str(self.root / "prefix"))
        self.service = None
        self.sent = 0
        for part in ("cur", "new", "tmp"):
            (self.folder / part).mkdir(parents=True)
            (self.folder.parent / part).mkdir()
        self.outbox.mkdir()
        sendmail = self.root / "sendmail"
        sendmail.write_text(SENDMAIL.format(outbox=self.outbox))
        sendmail.chmod(0o755)
        self.run(COMPILER, "/regserver")
        shutil.copytree(STOREFRONT, self.product)
        for binding in self.product.rglob("mssccprj.scc"):
            binding.unlink()
        self.run(GORBEX, "settings", "MailTransport", f"sendmail://{sendmail}")
        self.run(GORBEX, "build", str(self.product / "Storefront.bpf"), "--yes")

    def run(self, *command):
        subprocess.run(command, env=self.environment, check=True, stdout=subprocess.DEVNULL)

    def start(self):
        self.service = subprocess.Popen(
            [GORBEX, "serve", str(self.product / "Storefront.bpf"), "--interval", "1", "--no"],
            env=self.environment, stdout=subprocess.DEVNULL)

    def request(self, body):
        self.sent += 1
        name = f"{self.sent:06}.host"
        text = (f"From: Anna Berg <anna@dev.example>\r\nSubject: Build Request\r\n"
                f"Message-ID: <{self.sent}@dev.example>\r\n\r\n{body}\r\n")
        (self.folder / "tmp" / name).write_bytes(text.encode())
        os.rename(self.folder / "tmp" / name, self.folder / "new" / name)

    def replies(self):
        return list(self.outbox.glob("mail.*"))

    def unread(self):
        seen = sum(1 for mail in (self.folder / "cur").iterdir() if "S" in mail.name.split(":2,")[-1])
        return self.sent - seen

    def memory(self):
        status = pathlib.Path(f"/proc/{self.service.pid}/status").read_text()
        return int(next(line for line in status.splitlines() if line.startswith("VmRSS")).split()[1])

    def handles(self):
        return len(os.listdir(f"/proc/{self.service.pid}/fd"))


def until(machine, condition, what):
    end = time.monotonic() + PATIENCE
    while not condition():
        check(machine.service.poll() is None, f"the service ended before {what}")
        check(time.monotonic() < end, f"waited in vain until {what}")
        time.sleep(0.02)


def check(condition, what):
    if not condition:
        sys.exit(f"FAILED: {what}")


def answers_every_request_once(machine):
    machine.start()
    sizes = []
    for batch in range(BATCHES):
        for number in range(REQUESTS):
            build = "BUILD," if number % 10 == 0 else ""
            machine.request(f"GET,{build}PRO C:\\Storefront\\Core\\StoreCore.vbp,")
        wanted = (batch + 1) * REQUESTS
        until(machine, lambda: len(machine.replies()) >= wanted, f"{wanted} requests are answered")
        sizes.append((machine.memory(), machine.handles()))
    time.sleep(1.5)
    check(len(machine.replies()) == BATCHES * REQUESTS, "a request was answered twice")
    answered = set()
    for file in machine.replies():
        mail = email.message_from_bytes(file.read_bytes())
        check(mail["Auto-Submitted"] == "auto-replied", f"{file}: no automatic reply")
        check("succe" in mail["Subject"], f"{file}: {mail['Subject']}")
        check(mail["Subject"].startswith("Your Build") == mail.is_multipart(), f"{file}: the attachment")
        answered.add(mail["In-Reply-To"])
    check(len(answered) == BATCHES * REQUESTS, "replies answer the same request")
    check(machine.unread() == 0, "answered requests are unread")
    print("memory in kB and handles after each batch:", sizes)
    check(sizes[-1][0] < sizes[1][0] * 1.2 + 1000, f"the service grows: {sizes}")
    check(sizes[-1][1] <= sizes[0][1], f"handles are lost: {sizes}")


def ends_between_two_requests(machine):
    before = len(machine.replies())
    for _ in range(40):
        machine.request("BUILD,PRO C:\\Storefront\\Core\\StoreCore.vbp,")
    until(machine, lambda: len(machine.replies()) > before, "the first request is answered")
    machine.service.send_signal(signal.SIGTERM)
    check(machine.service.wait(30) == 0, "told to end, it ends well")
    check(machine.sent - machine.unread() == len(machine.replies()), "a request was taken but not answered")
    check(machine.unread() > 0, "it goes on though told to end")


def loses_no_request_when_killed(machine):
    taken = machine.sent - machine.unread()
    machine.start()
    until(machine, lambda: machine.sent - machine.unread() > taken, "requests are served again")
    time.sleep(0.05)
    machine.service.kill()
    machine.service.wait()
    machine.start()
    until(machine, lambda: machine.unread() == 0, "all requests are served")
    machine.service.send_signal(signal.SIGTERM)
    check(machine.service.wait(30) == 0, "told to end, it ends well")
    lost = machine.sent - len(machine.replies())
    check(0 <= lost <= 1, f"{lost} requests have no answer")


def main():
    with tempfile.TemporaryDirectory() as root:
        machine = Machine(root)
        try:
            answers_every_request_once(machine)
            ends_between_two_requests(machine)
            loses_no_request_when_killed(machine)
        finally:
            if machine.service and machine.service.poll() is None:
                machine.service.kill()
                machine.service.wait()


main()
