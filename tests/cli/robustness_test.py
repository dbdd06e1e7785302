#!/usr/bin/env python3
"""The real programs among signals and among one another: robustness_test.py GORBEX COMPILER STOREFRONT CASE [SEED]

killed    gorbex is killed 200 times while it saves, stamps, rewrites, registers and logs: every file is old or new
ended     told to end in the middle of a compile, it ends the compiler and gives project files their values back
together  many programs change one prefix, one build project and one project file at once, and lose nothing
mail      the service over a real Maildir and a real sendmail answers each of a thousand requests once and grows no
          larger; told to end it answers the present request first; killed during a build it has lost no request

Windows programs run under Wine, in a copy of the installation that WINEPREFIX names: killed (50 times) and together.
"""

import json
import os
import pathlib
import pty
import random
import signal
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
from programs import COMPILER, GORBEX, PATIENCE, UNDER_WINE, MailService, Product, WineProduct, check, masked, runs, until

CASE = sys.argv[4]
SEED = int(sys.argv[5]) if len(sys.argv) > 5 else 20260304
KILLS = 50 if UNDER_WINE else 200
BATCHES, REQUESTS = 8, 125

SENDMAIL = """#!/bin/sh
# Keeps each mail in a separate file, which appears complete.
file=$(mktemp -p '{outbox}' part.XXXXXX)
cat >"$file"
mv "$file" "$(dirname "$file")/mail.${{file##*.}}"
"""


def killed(product):
    random.seed(SEED)
    print("seed", SEED)
    product.run(GORBEX, "build", product.file, "--all", "--yes")
    build_project, kills, left, number, lasted = product.build_project(), 0, 0, 0, {}
    while kills < KILLS:
        number += 1
        some = random.sample(product.projects, 2)
        version = f"1.{random.randrange(100)}.{random.randrange(100)}"
        jobs = random.choice(["1", "4"])
        command = random.choice([
            ["queue", product.file, random.choice(["mark", "unmark"]), *some, "--save"],
            ["build", product.file, *some, "--yes", "--debug", "--version", version, "--jobs", jobs],
            ["build", product.file, *some, "--yes", "--break-compat", "--change-refs", "--jobs", jobs],
            ["value", "set", some[0], "MajorVer", str(number)],
            ["settings", "ReplyUser", f"user{number}@dev.example"],
            ["register", product.folder / "Bin" / "StoreMoney.dll"]])
        # The commands that were not killed say how long one may take.
        kind = command[0] + (command[5] if command[0] == "build" else "")
        begin = time.monotonic()
        process = product.start(GORBEX, *command)
        patience = None if kind not in lasted else random.uniform(0, lasted[kind])
        try:
            process.communicate(timeout=patience)
            lasted[kind] = time.monotonic() - begin
        except subprocess.TimeoutExpired:
            kills += product.kill(process)
        when = f"command {number}, {command}"
        product.require_whole_files(when)
        check(product.build_project() == build_project, f"{when}: the build project is torn")
        said = product.run(GORBEX, "show", product.file, "--json")
        shown = json.loads(said[said.index("{"):])
        check(len(shown["projects"]) == len(product.projects), f"{when}: a project is lost")
        product.require_own_debug_values(when)
        for path in product.left_over():
            path.unlink()
            left += 1
        if number % 10 == 0:
            product.build_anew()
    mended = product.log().count(b"Wrote back the debug values")
    check(mended > 0, "no debug build was killed")
    print(f"{kills} kills survived; {mended} times debug values were written back; {left} temporary files were left")


def ended(product):
    compiler = product.root / "slow"
    compiler.write_text('#!/bin/sh\nsleep 300 &\necho $! >"$0.$$"; mv "$0.$$" "$0.helper"\nwait\n')
    compiler.chmod(0o755)
    before = {path: path.read_bytes().rstrip(b"\r\n") for path in product.projects}
    core = product.folder / "Core" / "StoreCore.vbp"
    helper = product.root / "slow.helper"
    for kind in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        helper.unlink(missing_ok=True)
        process = product.start(GORBEX, "build", product.file, "--all", "--yes", "--debug", "--stop-on-error",
                                "--compiler", compiler, umask=0o077)
        until(lambda: b"CodeViewDebugInfo=-1" in core.read_bytes(), "the debug values are set")
        until(helper.exists, "the compiler runs")
        lock = product.prefix / "gorbexbuilder.build.lock"
        check(lock.stat().st_mode & 0o004, "other users of the prefix see that it builds")
        waiting = product.start(GORBEX, "build", product.file, core, "--yes", "--compiler", compiler)
        check("waiting for its end" in waiting.stdout.readline(), "a second build says that it waits")
        waiting.send_signal(kind)
        check(waiting.wait(10) == 1, "told to end, who waits for another build ends")
        process.send_signal(kind)
        said = process.communicate(timeout=20)[0]
        check(process.returncode == 1, f"ended with {process.returncode}: {said}")
        check("stopped: 0 built, 1 failed, 9 not built" in said, f"it says what it did: {said}")
        until(lambda: not runs(helper.read_text().strip()), "the compiler is ended with what it started", patience=5)
        for path, text in before.items():
            check(path.read_bytes().rstrip(b"\r\n") == text, f"{path} did not get its values back")
    programs = [path for path in product.projects if path.stem in ("StoreTill", "StoreReport")]
    said = product.run(GORBEX, "build", product.file, *programs, "--yes", "--jobs", "4", "--time-limit", "1",
                       "--compiler", compiler, status=1)
    check("0 built, 2 failed in" in said and said.count("limit of 1 s") == 2, f"both are ended: {said}")
    ended_at_a_question(product, core)
    product.require_whole_files("at the end")
    product.run(GORBEX, "build", product.file, "--all", "--yes")


def ended_at_a_question(product, core):
    keyboard, terminal = pty.openpty()
    command = [GORBEX, "build", product.file, core, "--stop-on-error", "--compiler", "/bin/false"]
    process = subprocess.Popen(command, env=product.environment, stdin=terminal, stdout=terminal, stderr=terminal)
    said = b""
    while b"[Abort/Retry/Ignore]" not in said:
        said += os.read(keyboard, 4096)
    process.send_signal(signal.SIGTERM)
    check(process.wait(10) == 1, "told to end, who waits for an answer ends")


def together(product):
    def at_once(commands):
        running = [product.start(GORBEX, *command) for command in commands]
        for command, process in zip(commands, running):
            said = process.communicate(timeout=PATIENCE)[0]
            check(process.returncode == 0, f"{command} ended with {process.returncode}: {said}")

    settings = {"Interval": "17", "ReplyUser": "me@dev.example", "WatchFolder": "Watched", "ReplyTo": "1",
                "MailFrom": "builder@dev.example", "AllowedSenders": "dev.example", "MailStore": "maildir:///m"}
    at_once([["settings", name, value] for name, value in settings.items()])
    for name, value in settings.items():
        check(product.run(GORBEX, "settings", name).strip() == value, f"the setting {name} is lost")

    product.run(GORBEX, "queue", product.file, "unmark", *product.projects, "--save")
    at_once([["queue", product.file, "mark", path, "--save"] for path in product.projects])
    marked = product.file.read_bytes().count(b"queue=*")
    check(marked == len(product.projects), f"{len(product.projects) - marked} changes of the queue are lost")

    core = product.folder / "Core" / "StoreCore.vbp"
    values = {"MajorVer": "7", "MinorVer": "8", "RevisionVer": "9", "StartMode": "6", "Retained": "5"}
    at_once([["value", "set", core, name, value] for name, value in values.items()])
    for name, value in values.items():
        check(f"\r\n{name}={value}\r\n".encode() in core.read_bytes(), f"the value {name} is lost")

    opened = product.log().count(b"Opened Project ")
    at_once([["show", product.file] for _ in range(24)])
    lost = opened + 24 - product.log().count(b"Opened Project ")
    check(lost == 0, f"{lost} log lines are lost")
    product.before[core] = masked(core.read_bytes())
    product.require_whole_files("after all together")


def replies(product):
    return list((product.root / "outbox").glob("mail.*"))


def handles_at_rest(folder):
    """The fewest handles in half a second: the service opens some for a moment to look for new mails."""
    counts = []
    for _ in range(10):
        counts.append(len(os.listdir(folder / "fd")))
        time.sleep(0.05)
    return min(counts)


def held(service):
    """Memory in kB, and handles."""
    folder = pathlib.Path(f"/proc/{service.process.pid}")
    lines = (folder / "status").read_text().splitlines()
    memory = next(line for line in lines if line.startswith("VmRSS")).split()[1]
    return int(memory), handles_at_rest(folder)


def answers_every_request_once(product, service):
    service.start()
    sizes = []
    for _ in range(BATCHES):
        for number in range(REQUESTS):
            build = "BUILD," if number % 10 == 0 else ""
            service.request(f"GET,{build}PRO C:\\Storefront\\Core\\StoreCore.vbp,")
        service.until(lambda: len(replies(product)) >= service.sent, f"{service.sent} requests are answered")
        service.until(lambda: service.served() == service.sent, "answered requests are marked")
        sizes.append(held(service))
    time.sleep(1.5)
    service.require_one_answer_each(replies(product))
    check(service.served() == service.sent, "answered requests are unread")
    print("memory in kB and handles after each batch:", sizes)
    check(sizes[-1][0] < sizes[1][0] * 1.2 + 1000, f"the service grows: {sizes}")
    check(sizes[-1][1] <= sizes[0][1], f"handles are lost: {sizes}")


def ends_between_two_requests(product, service):
    before = len(replies(product))
    for _ in range(40):
        service.request("BUILD,PRO C:\\Storefront\\Core\\StoreCore.vbp,")
    service.until(lambda: len(replies(product)) > before, "the first request is answered")
    service.end()
    check(service.served() == len(replies(product)), "a request was taken but not answered")
    check(service.served() < service.sent, "it goes on though told to end")


def loses_no_request_when_killed(product, service):
    taken = service.served()
    service.start()
    service.until(lambda: service.served() > taken, "requests are served again")
    time.sleep(0.05)
    product.kill(service.process)
    service.start()
    service.until(lambda: service.served() == service.sent, "all requests are served")
    service.end()
    lost = service.sent - len(replies(product))
    check(0 <= lost <= 1, f"{lost} requests have no answer")


def mail(product):
    service = MailService(product, product.root / "Maildir")
    sendmail, outbox = product.root / "sendmail", product.root / "outbox"
    outbox.mkdir()
    sendmail.write_text(SENDMAIL.format(outbox=outbox))
    sendmail.chmod(0o755)
    product.run(GORBEX, "settings", "MailTransport", f"sendmail://{sendmail}")
    try:
        answers_every_request_once(product, service)
        ends_between_two_requests(product, service)
        loses_no_request_when_killed(product, service)
    finally:
        service.end_anyhow()


with tempfile.TemporaryDirectory() as root:
    product = WineProduct(root) if UNDER_WINE else Product(root)
    try:
        {"killed": killed, "ended": ended, "together": together, "mail": mail}[CASE](product)
    finally:
        product.end()
print(f"{CASE}: all as expected")
