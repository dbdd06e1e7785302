"""Serves the repositories of a folder over HTTP on a free port to one user. Writes the port to
FILE; ends with the process that started it: git_server.py FOLDER FILE USER PASSWORD"""
import base64, http.server, os, pathlib, subprocess, sys

folder, port_file, user, password = sys.argv[1:]
wanted = "Basic " + base64.b64encode(f"{user}:{password}".encode()).decode()


class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        if self.headers.get("Authorization") != wanted:
            self.answer(401, [("WWW-Authenticate", 'Basic realm="git"')], b"")
            return
        path, _, query = self.path.partition("?")
        body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
        cgi = dict(GIT_PROJECT_ROOT=folder, GIT_HTTP_EXPORT_ALL="1", PATH_INFO=path,
                   QUERY_STRING=query, REQUEST_METHOD=self.command, REMOTE_USER=user)
        for name in ("Content-Type", "Content-Length", "HTTP-Content-Encoding", "HTTP-Git-Protocol"):
            cgi[name.upper().replace("-", "_")] = self.headers.get(name.removeprefix("HTTP-"), "")
        answer = subprocess.run(["git", "http-backend"], input=body, env=dict(os.environ, **cgi),
                                stdout=subprocess.PIPE).stdout
        head, _, content = answer.partition(b"\r\n\r\n")
        fields = [line.split(": ", 1) for line in head.decode().split("\r\n") if line]
        self.answer(int(dict(fields).get("Status", "200")[:3]), fields, content)

    def answer(self, status, fields, content):
        self.send_response(status)
        for name, value in fields:
            self.send_header(name, value)
        self.end_headers()
        self.wfile.write(content)

    do_POST = do_GET
    log_message = lambda *_: None


parent = os.getppid()
server = http.server.HTTPServer(("127.0.0.1", 0), Handler)
server.timeout = 1
pathlib.Path(port_file).write_text(str(server.server_port))
while os.getppid() == parent:
    server.handle_request()
