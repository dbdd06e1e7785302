"""A dovecot of a test's own, on ports of this machine, which ends with the process that started it."""
import ctypes, grp, os, pwd, shutil, signal, socket, subprocess

dovecot_config = """
base_dir = {run}
state_dir = {run}
log_path = {folder}/dovecot.log
protocols = imap
ssl = yes
ssl_cert = <{folder}/cert.pem
ssl_key = <{folder}/key.pem
disable_plaintext_auth = no
auth_mechanisms = plain login xoauth2
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
  driver = oauth2
  mechanisms = xoauth2
  args = {folder}/oauth2.conf
}}
passdb {{
  driver = passwd-file
  args = {folder}/users
}}
userdb {{
  driver = static
  args = uid={uid} gid={gid} home={folder}
}}
"""


def free_ports(count):
    sockets = [socket.create_server(("127.0.0.1", 0)) for _ in range(count)]
    ports = [each.getsockname()[1] for each in sockets]
    for each in sockets:
        each.close()
    return ports


def end_with_parent():
    pr_set_pdeathsig = 1
    ctypes.CDLL(None).prctl(pr_set_pdeathsig, signal.SIGTERM)


def make_certificate(folder):
    """FOLDER/cert.pem and key.pem, for "localhost"."""
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj", "/CN=localhost",
                    "-addext", "subjectAltName=DNS:localhost", "-keyout", folder / "key.pem", "-out", folder / "cert.pem"],
                    check=True, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)


def start_dovecot(folder, user, password, imap, imaps):
    """Serves FOLDER/Maildir with FOLDER/cert.pem and key.pem; started again after its end, it goes on with the same mails."""
    # The server refuses to serve root, and to run as anybody else it must be started as that.
    is_root = os.geteuid() == 0
    uid, gid = (65534, 65534) if is_root else (os.getuid(), os.getgid())
    run_folder = folder / "run"
    run_folder.mkdir(exist_ok=True)
    # Who checks tokens is asked at the port that the file "tokens" names, if there is one.
    tokens = folder / "tokens"
    (folder / "oauth2.conf").write_text(
        f"introspection_url = http://127.0.0.1:{tokens.read_text() if tokens.exists() else 1}/?token=\n"
        "introspection_mode = get\nusername_attribute = user\nactive_attribute = active\nactive_value = yes\n")
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
