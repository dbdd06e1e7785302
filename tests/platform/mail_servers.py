"""Serves a Maildir by IMAP and takes mails by SMTP, both with and without TLS, on free ports of this
machine, to one user: mail_servers.py FOLDER USER PASSWORD. The Maildir is FOLDER/Maildir; FOLDER/sent
gets a file for each mail that was taken, its envelope first. Writes "imap imaps smtp smtps silent rude"
as numbers to FOLDER/ports; nothing ever answers at the silent port, and the rude one hangs up at once. The certificate is FOLDER/cert.pem, for
"localhost". Ends with the process that started it."""
import asyncio, base64, os, pathlib, signal, socket, ssl, subprocess, sys, urllib.parse

sys.dont_write_bytecode = True
from dovecot import free_ports, make_certificate, start_dovecot

folder, user, password = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3]
parent = os.getppid()
largest_mail = 200_000


async def answer_smtp(reader, writer, is_secure):
    """One conversation; a stranger's login is refused, "gone@..." does not exist and "busy@..." is put off."""
    envelope = []

    async def say(line):
        writer.write(line.encode() + b"\r\n")
        await writer.drain()

    await say("220 ready")
    while line := (await reader.readline()).decode().rstrip("\r\n"):
        verb = line.split(" ")[0].upper()
        if verb == "EHLO":
            await say("250-hello")
            await say(f"250-SIZE {largest_mail}")
            await say("250 AUTH PLAIN XOAUTH2" if is_secure else "250 STARTTLS")
        elif verb == "STARTTLS":
            await say("220 go on")
            await writer.start_tls(tls)
            is_secure = True
        elif line.upper().startswith("AUTH XOAUTH2 "):
            envelope += ["token"]
            is_right = base64.b64decode(line.split(" ")[2]) == f"user={user}\1auth=Bearer {token()}\1\1".encode()
            await say("235 welcome" if is_right else "535 no such token")
        elif verb == "AUTH":
            await say("334 ")
            login = base64.b64decode(await reader.readline()).split(b"\0")
            is_right = login[1:] == [user.encode(), password.encode()]
            envelope += ["login"]
            await say("235 welcome" if is_right else f"535 go away, {login[2].decode()}")
        elif verb in ("MAIL", "RCPT"):
            address, _, size = line.partition(" SIZE=")
            envelope.append(address)
            await say("552 too large" if int(size or 0) > largest_mail else
                      "550 no such user" if "<gone@" in line else
                      "450 come back later" if "<busy@" in line else "250 ok")
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


def token():
    """The one token that is taken now: what FOLDER/token says."""
    return (folder / "token").read_text().strip()


async def answer_introspection(reader, writer):
    """Says whether a token is the one that is taken."""
    url = urllib.parse.urlparse((await reader.readline()).decode().split(" ")[1])
    while (await reader.readline()).strip():
        pass
    is_right = urllib.parse.parse_qs(url.query).get("token") == [token()]
    said = f'{{"active": "{"yes" if is_right else "no"}", "user": "{user}"}}'.encode()
    writer.write(b"HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nConnection: close\r\n"
                 b"Content-Length: %d\r\n\r\n%s" % (len(said), said))
    await writer.drain()
    writer.close()


async def hang_up(reader, writer):
    """Asks back where nobody has more to say, and is gone."""
    writer.write(b"* OK hello\r\n")
    if b"CAPABILITY" in await reader.readline():
        writer.write(b"+ and then?\r\n")
    writer.write(b"* BYE\r\n")
    writer.close()


async def main():
    imap, imaps = free_ports(2)
    checker = await asyncio.start_server(answer_introspection, "127.0.0.1", 0)
    (folder / "tokens").write_text(str(checker.sockets[0].getsockname()[1]))
    dovecot = start_dovecot(folder, user, password, imap, imaps)
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
make_certificate(folder)
tls = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
tls.load_cert_chain(folder / "cert.pem", folder / "key.pem")
signal.signal(signal.SIGTERM, lambda *_: sys.exit())
asyncio.run(main())
