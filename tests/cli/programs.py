"""What the tests of the whole programs share: NAME_test.py GORBEX COMPILER STOREFRONT ..."""

import collections
import contextlib
import email
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time

GORBEX, COMPILER, STOREFRONT = sys.argv[1:4]
UNDER_WINE = GORBEX.endswith(".exe")
PATIENCE = 60

AMENDED = re.compile(rb"(CompatibleMode|MajorVer|MinorVer|RevisionVer|OptimizationType|CodeViewDebugInfo)=[^\r]*")
DEBUG_VALUE = re.compile(rb"(?:OptimizationType|CodeViewDebugInfo)=[^\r]*")
GUID = re.compile(rb"\{[0-9A-Fa-f]{8}-[0-9A-Fa-f-]{27}\}")
LOG_LINE = re.compile(rb"\[\d\d/\d\d/\d{4} \d\d:\d\d:\d\d\] [^\r\n]+\r\n")
REGISTRY_LINE = re.compile(rb'WINE REGISTRY Version 2|;.*|#.*|\[.+\].*|(@|".*")=.+|  .*|')


def check(condition, what):
    if not condition:
        sys.exit(f"FAILED: {what}")


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
        self.environment = dict(os.environ, HOME=str(root), GORBEX_PREFIX=str(self.prefix))
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
        until(lambda: not any(runs(compiler) for compiler in self.compilers()), "the compiler ends with the program")
        return killer.returncode == 0

    def forget_components(self):
        """Those that are registered stay."""

    def require_whole_registry(self, when):
        """It is Wine's."""

    def end(self):
        subprocess.run(["/usr/lib/wine/wineserver64", "-k"], env=self.environment)


class MailService:
    """The service over a product, and the Maildir folder that its requests come to."""

    def __init__(self, product, maildir):
        self.product = product
        self.folder = maildir / ".Builder"
        self.words = product.root / "service.log"
        self.process = None
        self.sent = 0
        for part in ("cur", "new", "tmp"):
            (self.folder / part).mkdir(parents=True)
            (maildir / part).mkdir()
        for binding in product.folder.rglob("mssccprj.scc"):
            binding.unlink()
        product.run(GORBEX, "build", product.file, "--all", "--yes")

    def start(self):
        # Its words go to a file: a pipe that nobody empties would hold it up.
        with self.words.open("a") as words:
            self.process = subprocess.Popen([GORBEX, "serve", self.product.file, "--interval", "1", "--no"],
                                            env=self.product.environment, stdout=words, stderr=words)

    def end(self):
        self.process.send_signal(signal.SIGTERM)
        check(self.process.wait(PATIENCE) == 0, "told to end, it ends well")

    def end_anyhow(self):
        if self.process and self.process.poll() is None:
            self.product.kill(self.process)

    def until(self, condition, what, patience=240):
        until(condition, what, self.process, patience)

    def request(self, body):
        self.sent += 1
        name = f"{self.sent:06}.host"
        text = (f"From: Anna Berg <anna@dev.example>\r\nSubject: Build Request\r\n"
                f"Message-ID: <{self.sent}@dev.example>\r\n\r\n{body}\r\n")
        (self.folder / "tmp" / name).write_bytes(text.encode())
        os.rename(self.folder / "tmp" / name, self.folder / "new" / name)

    def served(self):
        return sum(1 for mail in (self.folder / "cur").iterdir() if "S" in mail.name.split(":2,")[-1])

    def require_one_answer_each(self, files):
        """Each file is an answer of its own to one of the requests, and as good as such answers get."""
        answered = collections.Counter()
        for file in files:
            mail = email.message_from_bytes(file.read_bytes())
            check(mail["Auto-Submitted"] == "auto-replied", f"{file}: no automatic reply")
            check("succe" in mail["Subject"], f"{file}: {mail['Subject']}")
            check(mail.is_multipart() == mail["Subject"].startswith("Your Build"), f"{file}: the attachment")
            answered[mail["In-Reply-To"]] += 1
        twice = [request for request, count in answered.items() if count > 1]
        check(not twice, f"answered more than once: {twice}")
        check(len(answered) == self.sent, f"{self.sent - len(answered)} requests have no answer")
