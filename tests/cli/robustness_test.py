#!/usr/bin/env python3
"""The real programs among signals and among one another: robustness_test.py CASE GORBEX COMPILER STOREFRONT [SEED]

killed    gorbex is killed 200 times while it saves, stamps, rewrites, registers and logs: every file is old or new
ended     told to end in the middle of a compile, it ends the compiler and gives project files their values back
together  many programs change one prefix, one build project and one project file at once, and lose nothing
mail      the service over a real Maildir and a real sendmail answers each of thousands of requests once and grows no
          larger; told to end it answers the present request first; killed during a build it has lost no request

Windows programs run under Wine, in a copy of the installation that WINEPREFIX names: killed (50 times) and together.
"""

import collections
import contextlib
import email
import json
import os
import pathlib
import pty
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

CASE, GORBEX, COMPILER, STOREFRONT = sys.argv[1:5]
SEED = int(sys.argv[5]) if len(sys.argv) > 5 else 20260304
UNDER_WINE = GORBEX.endswith(".exe")
KILLS = 50 if UNDER_WINE else 200
PATIENCE = 60
BATCHES, REQUESTS = 8, 250

AMENDED = re.compile(rb"(CompatibleMode|MajorVer|MinorVer|RevisionVer|OptimizationType|CodeViewDebugInfo)=[^\r]*")
DEBUG_VALUE = re.compile(rb"(?:OptimizationType|CodeViewDebugInfo)=[^\r]*")
GUID = re.compile(rb"\{[0-9A-Fa-f]{8}-[0-9A-Fa-f-]{27}\}")
LOG_LINE = re.compile(rb"\[\d\d/\d\d/\d{4} \d\d:\d\d:\d\d\] [^\r\n]+\r\n")
REGISTRY_LINE = re.compile(rb'WINE REGISTRY Version 2|;.*|#.*|\[.+\].*|(@|".*")=.+|  .*|')

SENDMAIL = """#!/bin/sh
# Keeps each mail in a separate file, which appears complete.
file=$(mktemp -p '{outbox}' part.XXXXXX)
cat >"$file"
mv "$file" "$(dirname "$file")/mail.${{file##*.}}"
"""


def check(condition, what):
    if not condition:
        sys.exit(f"FAILED (seed {SEED}): {what}")


def until(condition, what, process=None, patience=PATIENCE):
    end = time.monotonic() + patience
    while not condition():
        check(process is None or process.poll() is None, f"the service ended before {what}")
        check(time.monotonic() < end, f"waited in vain until {what}")
        time.sleep(0.01)


def children(process):
    """The processes that it has started, each the first of its own session."""
    return [int(child) for child in pathlib.Path(f"/proc/{process.pid}/task/{process.pid}/children").read_text().split()]


def runs(process):
    """Whether it does; one that only waits for its parent to notice does not."""
    with contextlib.suppress(OSError):
        return not re.search(r"^State:\s*[ZX]", pathlib.Path(f"/proc/{process}/status").read_text(), re.M)
    return False


def masked(text):
    """A project file or source with everything hidden that the program may change in it."""
    return GUID.sub(b"", AMENDED.sub(rb"\1=?", text)).rstrip(b"\r\n")


class Product:
    """The sample product in its own prefix."""

    def __init__(self, root):
        self.root = pathlib.Path(root)
        self.prefix = self.root / "prefix"
        self.folder = self.prefix / "drive_c" / "Storefront"
        self.file = self.folder / "Storefront.bpf"
        self.environment = dict(os.environ, HOME=root, GORBEX_PREFIX=str(self.prefix))
        self.prepare()
        self.run(COMPILER, "/regserver")
        shutil.copytree(STOREFRONT, self.folder)
        for path in self.folder.rglob("*"):
            path.chmod(path.stat().st_mode | 0o200)
        self.projects = sorted(self.folder.rglob("*.vbp"))
        self.sources = [p for p in self.folder.rglob("*.*") if p.suffix in (".vbp", ".frm", ".bas", ".cls", ".ctl")]
        self.before = {path: masked(path.read_bytes()) for path in self.sources}

    def prepare(self):
        """Makes the prefix, unless the programs do."""

    def words(self, command):
        return [str(word) for word in command]

    def start(self, *command, **options):
        return subprocess.Popen(self.words(command), env=self.environment, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)

    def run(self, *command, status=0):
        process = self.start(*command)
        said = process.communicate(timeout=300)[0]
        check(process.returncode == status, f"{command} ended with {process.returncode}: {said}")
        return said

    def kill(self, process):
        """True when that was its end. The compiler of that moment goes with it, or would go on beside the next one."""
        compilers = children(process)
        process.kill()
        for compiler in compilers:
            with contextlib.suppress(ProcessLookupError):
                os.killpg(compiler, signal.SIGKILL)
        process.communicate()
        return True

    def forget_components(self):
        (self.prefix / "gorbexbuilder.reg").unlink()

    def end(self):
        """Ends what the programs leave running."""

    def build_anew(self):
        """As from source control, on a machine where nothing is registered."""
        for path in self.sources:
            shutil.copyfile(pathlib.Path(STOREFRONT) / path.relative_to(self.folder), path)
        for path in (self.folder / "Bin").glob("Store*"):
            path.unlink()
        self.forget_components()
        self.run(COMPILER, "/regserver")
        self.run(GORBEX, "build", self.file, "--all", "--yes")

    def build_project(self):
        """What the build project says, in any order of its queue."""
        lines = self.file.read_bytes().replace(b"*", b"").split(b"\r\n")
        return collections.Counter(lines)

    def log(self):
        folders = self.prefix.glob("drive_c/Program Files/GorbexBuilder/[Ll]ogs")
        return b"".join(path.read_bytes() for folder in folders for path in sorted(folder.iterdir()))

    def require_own_debug_values(self, when):
        """The next start of the program has written back what a killed build had left."""
        for path in self.projects:
            now, own = (DEBUG_VALUE.findall(p.read_bytes()) for p in
                        (path, pathlib.Path(STOREFRONT) / path.relative_to(self.folder)))
            check(now == own, f"{when}: {path} has debug values: {now}")

    def require_whole_files(self, when):
        for path, text in self.before.items():
            now = path.read_bytes()
            check(masked(now) == text, f"{when}: {path} is torn: {now!r}")
        log = self.log()
        check(not LOG_LINE.sub(b"", log), f"{when}: a torn log line: {LOG_LINE.sub(b'', log)!r}")
        self.require_whole_registry(when)

    def require_whole_registry(self, when):
        for line in (self.prefix / "gorbexbuilder.reg").read_bytes().split(b"\n"):
            check(REGISTRY_LINE.fullmatch(line), f"{when}: the registry file is torn: {line!r}")

    def left_over(self):
        """The temporary files of killed programs."""
        programs = self.prefix / "drive_c/Program Files"
        return [*self.prefix.glob(".gorbex-*"), *self.folder.rglob(".gorbex-*"), *programs.rglob(".gorbex-*")]


class WineProduct(Product):
    """The sample product and the programs for Windows in their own Windows installation."""

    RUNNER = pathlib.Path(__file__).parents[2] / "cmake" / "run-under-wine"

    def prepare(self):
        base = pathlib.Path(os.environ["WINEPREFIX"])
        self.environment["WINEPREFIX"] = str(self.prefix)
        drive = self.prefix / "drive_c"
        drive.mkdir(parents=True)
        # The system's own files are many, and nobody changes them.
        subprocess.run(["cp", "-al", base / "drive_c" / "windows", drive], check=True)
        subprocess.run(f"tar -C '{base}' -c --exclude ./drive_c/windows --exclude ./drive_c/Storefront . |"
                       f" tar -C '{self.prefix}' -x", shell=True, check=True)
        self.installed = {}
        for program, folder in ((GORBEX, "Program Files/GorbexBuilder"), (COMPILER, "Compiler")):
            (drive / folder).mkdir(parents=True, exist_ok=True)
            self.installed[program] = pathlib.Path(shutil.copy(program, drive / folder))
        # What Wine starts with its first program would keep a reader of that one's output waiting.
        subprocess.run([self.RUNNER, "cmd", "/c", "exit"], env=self.environment, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def windows_path(self, path):
        return "C:\\" + str(path.relative_to(self.prefix / "drive_c")).replace("/", "\\")

    def words(self, command):
        words = [self.installed.get(word, word) for word in command]
        return [str(self.RUNNER), *(self.windows_path(w) if isinstance(w, pathlib.Path) else str(w) for w in words)]

    def compilers(self):
        name = self.installed[COMPILER].name.encode()
        mine = f"WINEPREFIX={self.prefix}".encode()
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            with contextlib.suppress(OSError):
                if name in (process / "cmdline").read_bytes() and mine in (process / "environ").read_bytes().split(b"\0"):
                    yield process.name

    def kill(self, process):
        killer = self.start("taskkill", "/F", "/IM", "gorbex.exe")
        killer.communicate(timeout=PATIENCE)
        process.communicate(timeout=PATIENCE)
        until(lambda: not any(runs(compiler) for compiler in self.compilers()), "the compiler ends with the program",
              patience=20)
        return killer.returncode == 0

    def forget_components(self):
        """Those that are registered stay."""

    def require_whole_registry(self, when):
        """It is Wine's."""

    def end(self):
        subprocess.run(["/usr/lib/wine/wineserver64", "-k"], env=self.environment)


def killed(product):
    random.seed(SEED)
    product.run(GORBEX, "build", product.file, "--all", "--yes")
    build_project, kills, left, number, lasted = product.build_project(), 0, 0, 0, {}
    while kills < KILLS:
        number += 1
        some = random.sample(product.projects, 2)
        version = f"1.{random.randrange(100)}.{random.randrange(100)}"
        command = random.choice([
            ["queue", product.file, random.choice(["mark", "unmark"]), *some, "--save"],
            ["build", product.file, *some, "--yes", "--debug", "--version", version],
            ["build", product.file, *some, "--yes", "--break-compat", "--change-refs"],
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
    compiler.write_text('#!/bin/sh\nsleep 300 &\necho $! >"$0.new"; mv "$0.new" "$0.helper"\nwait\n')
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
        check("0 built, 1 failed, 9 not built" in said, f"it says what it did: {said}")
        until(lambda: not runs(helper.read_text().strip()), "the compiler is ended with what it started", patience=5)
        for path, text in before.items():
            check(path.read_bytes().rstrip(b"\r\n") == text, f"{path} did not get its values back")
    said = product.run(GORBEX, "build", product.file, core, product.projects[-1], "--yes", "--time-limit", "1",
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


class MailService:
    """A mailbox, and the service between it and a product."""

    def __init__(self, product):
        self.product = product
        self.outbox = product.root / "outbox"
        self.folder = product.root / "Maildir" / ".Builder"
        self.process = None
        self.sent = 0
        for part in ("cur", "new", "tmp"):
            (self.folder / part).mkdir(parents=True)
            (self.folder.parent / part).mkdir()
        self.outbox.mkdir()
        sendmail = product.root / "sendmail"
        sendmail.write_text(SENDMAIL.format(outbox=self.outbox))
        sendmail.chmod(0o755)
        for binding in product.folder.rglob("mssccprj.scc"):
            binding.unlink()
        product.run(GORBEX, "settings", "MailTransport", f"sendmail://{sendmail}")
        product.run(GORBEX, "build", product.file, "--yes")

    def start(self):
        self.process = subprocess.Popen([GORBEX, "serve", self.product.file, "--interval", "1", "--no"],
                                        env=self.product.environment, stdout=subprocess.DEVNULL)

    def end(self):
        self.process.send_signal(signal.SIGTERM)
        check(self.process.wait(30) == 0, "told to end, it ends well")

    def until(self, condition, what):
        until(condition, what, self.process, 240)

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
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return int(next(line for line in status.splitlines() if line.startswith("VmRSS")).split()[1])

    def handles(self):
        return len(os.listdir(f"/proc/{self.process.pid}/fd"))


def answers_every_request_once(service):
    service.start()
    sizes = []
    for batch in range(BATCHES):
        for number in range(REQUESTS):
            build = "BUILD," if number % 10 == 0 else ""
            service.request(f"GET,{build}PRO C:\\Storefront\\Core\\StoreCore.vbp,")
        wanted = (batch + 1) * REQUESTS
        service.until(lambda: len(service.replies()) >= wanted, f"{wanted} requests are answered")
        sizes.append((service.memory(), service.handles()))
    time.sleep(1.5)
    check(len(service.replies()) == BATCHES * REQUESTS, "a request was answered twice")
    answered = set()
    for file in service.replies():
        mail = email.message_from_bytes(file.read_bytes())
        check(mail["Auto-Submitted"] == "auto-replied", f"{file}: no automatic reply")
        check("succe" in mail["Subject"], f"{file}: {mail['Subject']}")
        check(mail["Subject"].startswith("Your Build") == mail.is_multipart(), f"{file}: the attachment")
        answered.add(mail["In-Reply-To"])
    check(len(answered) == BATCHES * REQUESTS, "replies answer the same request")
    check(service.unread() == 0, "answered requests are unread")
    print("memory in kB and handles after each batch:", sizes)
    check(sizes[-1][0] < sizes[1][0] * 1.2 + 1000, f"the service grows: {sizes}")
    check(sizes[-1][1] <= sizes[0][1], f"handles are lost: {sizes}")


def ends_between_two_requests(service):
    before = len(service.replies())
    for _ in range(40):
        service.request("BUILD,PRO C:\\Storefront\\Core\\StoreCore.vbp,")
    service.until(lambda: len(service.replies()) > before, "the first request is answered")
    service.end()
    check(service.sent - service.unread() == len(service.replies()), "a request was taken but not answered")
    check(service.unread() > 0, "it goes on though told to end")


def loses_no_request_when_killed(service):
    taken = service.sent - service.unread()
    service.start()
    service.until(lambda: service.sent - service.unread() > taken, "requests are served again")
    time.sleep(0.05)
    service.process.kill()
    service.process.wait()
    service.start()
    service.until(lambda: service.unread() == 0, "all requests are served")
    service.end()
    lost = service.sent - len(service.replies())
    check(0 <= lost <= 1, f"{lost} requests have no answer")


def mail(product):
    service = MailService(product)
    try:
        answers_every_request_once(service)
        ends_between_two_requests(service)
        loses_no_request_when_killed(service)
    finally:
        if service.process and service.process.poll() is None:
            service.process.kill()
            service.process.wait()


with tempfile.TemporaryDirectory() as root:
    product = WineProduct(root) if UNDER_WINE else Product(root)
    try:
        {"killed": killed, "ended": ended, "together": together, "mail": mail}[CASE](product)
    finally:
        product.end()
print(f"{CASE}: all as expected")
