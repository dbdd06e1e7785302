"""Serves a Maildir by IMAP and takes mails by SMTP, both with and without TLS, on free ports of this
machine, to one user: mail_servers.py FOLDER USER PASSWORD. The Maildir is FOLDER/Maildir; FOLDER/sent
gets a file for each mail that was taken, its envelope first. Writes "imap imaps smtp smtps silent rude"
as numbers to FOLDER/ports; nothing ever answers at the silent port, and the rude one hangs up at once. The certificate is FOLDER/cert.pem, for
"localhost". Ends with the process that started it."""
import asyncio, base64, ctypes, grp, os, pathlib, pwd, shutil, signal, socket, ssl, subprocess, sys

folder, user, password = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3]
parent = os.getppid()
dovecot_config = """
base_dir = {run}
state_dir = {run}
log_path = {folder}/dovecot.log
protocols = imap
ssl = yes
ssl_cert = <{folder}/cert.pem
ssl_key = <{folder}/key.pem
disable_plaintext_auth = no
default_login_user = {account}
default_internal_user = {account}
default_internal_group = {group}
first_valid_uid = 1
service imap-login {{
  chroot =
  inet_listener imap {{
    address = 127.0.0.1
    port = {imap}
  }}
  inet_listener imaps {{
    address = 127.0.0.1
    port = {imaps}
  }}
}}
service anvil {{
  chroot =
  unix_listener anvil-auth-penalty {{
    mode = 0
  }}
}}
mail_location = maildir:{folder}/Maildir
mail_max_userip_connections = 100
auth_failure_delay = 0
passdb {{
  driver = passwd-file
  args = {folder}/users
}}
userdb {{
  driver = static
  args = uid={uid} gid={gid} home={folder}
}}
"""


def run(*command):
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)


def free_ports(count):
    sockets = [socket.create_server(("127.0.0.1", 0)) for _ in range(count)]
    ports = [each.getsockname()[1] for each in sockets]
    for each in sockets:
        each.close()
    return ports


def end_with_parent():
    pr_set_pdeathsig = 1
    ctypes.CDLL(None).prctl(pr_set_pdeathsig, signal.SIGTERM)


def start_dovecot(imap, imaps):
    # The server refuses to serve root, and to run as anybody else it must be started as that.
    is_root = os.geteuid() == 0
    uid, gid = (65534, 65534) if is_root else (os.getuid(), os.getgid())
    run_folder = folder / "run"
    run_folder.mkdir()
    (folder / "users").write_text(f"{user}:{{PLAIN}}{password}\n")
    (folder / "dovecot.conf").write_text(dovecot_config.format(
        folder=folder, run=run_folder, imap=imap, imaps=imaps, uid=uid, gid=gid,
        account=pwd.getpwuid(uid).pw_name, group=grp.getgrgid(gid).gr_name))
    if is_root:
        for path in [folder, *folder.rglob("*")]:
            os.chown(path, uid, gid)
    program = shutil.which("dovecot", path=os.environ["PATH"] + ":/usr/sbin")
    return subprocess.Popen([program, "-F", "-c", str(folder / "dovecot.conf")],
                            preexec_fn=end_with_parent,
                            **(dict(user=uid, group=gid, extra_groups=[]) if is_root else {}))


async def answer_smtp(reader, writer, is_secure):
    """One conversation; a stranger's login is refused, and "gone@..." does not exist."""
    envelope = []

    async def say(line):
        writer.write(line.encode() + b"\r\n")
        await writer.drain()

    await say("220 ready")
    while line := (await reader.readline()).decode().rstrip("\r\n"):
        verb = line.split(" ")[0].upper()
        if verb == "EHLO":
            await say("250-hello")
            await say("250 AUTH PLAIN" if is_secure else "250 STARTTLS")
        elif verb == "STARTTLS":
            await say("220 go on")
            await writer.start_tls(tls)
            is_secure = True
        elif verb == "AUTH":
            await say("334 ")
            login = base64.b64decode(await reader.readline()).split(b"\0")
            is_right = login[1:] == [user.encode(), password.encode()]
            envelope += ["login"]
            await say("235 welcome" if is_right else f"535 go away, {login[2].decode()}")
        elif verb in ("MAIL", "RCPT"):
            envelope.append(line)
            await say("550 no such user" if "<gone@" in line else "250 ok")
        elif verb == "DATA":
            await say("354 go on")
            text = b""
            while (part := await reader.readline()) not in (b".\r\n", b""):
                text += part.removeprefix(b".") if part.startswith(b".") else part
            number = len(list((folder / "sent").iterdir()))
            file = folder / "sent" / f".{number}"
            file.write_bytes("".join(f"{each}\n" for each in envelope).encode() + b"\n" + text)
            file.rename(folder / "sent" / f"{number}")
            await say("250 taken")
        else:
            await say("221 bye" if verb == "QUIT" else "502 unknown")
            if verb == "QUIT":
                break
    writer.close()


async def hang_up(reader, writer):
    writer.write(b"* OK hello\r\n")
    await reader.readline()
    writer.write(b"* BYE\r\n")
    writer.close()


async def main():
    imap, imaps = free_ports(2)
    dovecot = start_dovecot(imap, imaps)
    try:
        smtp = await asyncio.start_server(lambda *ends: answer_smtp(*ends, False), "127.0.0.1", 0)
        smtps = await asyncio.start_server(lambda *ends: answer_smtp(*ends, True), "127.0.0.1", 0, ssl=tls)
        rude = await asyncio.start_server(hang_up, "127.0.0.1", 0)
        silent = socket.create_server(("127.0.0.1", 0))
        for _ in range(500):
            with socket.socket() as probe:
                if probe.connect_ex(("127.0.0.1", imap)) == 0 or dovecot.poll() is not None:
                    break
            await asyncio.sleep(0.02)
        ports = [imap, imaps] + [each.sockets[0].getsockname()[1] for each in (smtp, smtps)]
        ports += [silent.getsockname()[1], rude.sockets[0].getsockname()[1]]
        (folder / "ports.new").write_text(" ".join(map(str, ports)))
        (folder / "ports.new").rename(folder / "ports")
        while os.getppid() == parent and dovecot.poll() is None:
            await asyncio.sleep(0.2)
    finally:
        dovecot.terminate()
        try:
            dovecot.wait(3)
        except subprocess.TimeoutExpired:
            dovecot.kill()


(folder / "sent").mkdir()
run("openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=localhost",
    "-addext", "subjectAltName=DNS:localhost", "-keyout", folder / "key.pem", "-out", folder / "cert.pem")
tls = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
tls.load_cert_chain(folder / "cert.pem", folder / "key.pem")
signal.signal(signal.SIGTERM, lambda *_: sys.exit())
asyncio.run(main())
