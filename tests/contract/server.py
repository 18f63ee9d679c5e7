# SPDX-License-Identifier: Apache-2.0
"""A real version server for one test run, with the accounts that the contract is tried with."""

import base64
import hashlib
import http.client
import json
import secrets
import shutil
import subprocess
import tempfile
import uuid

ACCOUNTS = {
    "owner": {"pin": "owner", "name": "甲", "venderId": "a", "roles": ["author"]},
    "colleague": {"pin": "colleague", "name": "乙", "venderId": "a", "roles": ["author"]},
    "user": {"pin": "user", "name": "丙", "venderId": "a", "roles": ["user"]},
    "administrator": {"pin": "administrator", "name": "丁", "venderId": "a", "roles": ["administrator"]},
    "foreign-author": {"pin": "foreign-author", "name": "戊", "venderId": "b", "roles": ["author"]},
    "foreign-administrator": {"pin": "foreign-administrator", "name": "己", "venderId": "b", "roles": ["administrator"]},
}
PASSWORD = "correct horse"


def digest(body):
    return "sha-256=:" + base64.b64encode(hashlib.sha256(body).digest()).decode() + ":"


class Answer:
    def __init__(self, response):
        self.status = response.status
        self.headers = dict(response.getheaders())
        self.bytes = response.read()
        self.type = self.headers.get("Content-Type", "")

    def json(self):
        if not self.bytes:
            return None
        return json.loads(self.bytes) if self.type.startswith("application/json") else self.bytes.decode()


class Server:
    def __init__(self, program):
        self.program = program
        self.folder = tempfile.mkdtemp(prefix="rpa-contract-")
        self.tokens = {name: secrets.token_hex(32) for name in ACCOUNTS}
        subprocess.run(
            [*program, "--data", self.folder, "account", "add", "signer", "--name", "庚", "--vender", "a"],
            input=PASSWORD.encode(), check=True)
        self.process = subprocess.Popen(
            [*program, "--embedded", "--data", self.folder, "--log", "error"],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        entries = [{"token": self.tokens[name], "account": account} for name, account in ACCOUNTS.items()]
        line = dict(entries[0], others=entries[1:])
        self.process.stdin.write(json.dumps(line).encode() + b"\n")
        self.process.stdin.flush()
        ready = json.loads(self.process.stdout.readline())
        self.port = int(ready["listening"].rsplit(":", 1)[1])

    def stop(self):
        self.process.stdin.close()
        code = self.process.wait(20)
        self.process.stdout.close()
        shutil.rmtree(self.folder)
        return code

    def ask(self, method, path, token=None, body=None, headers=None):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=30)
        try:
            sent = dict(headers or {})
            if token:
                sent["Authorization"] = "Bearer " + token
            if body is not None and not isinstance(body, bytes):
                body = json.dumps(body).encode()
            connection.request(method, path, body=body, headers=sent)
            return Answer(connection.getresponse())
        finally:
            connection.close()

    def write(self, method, path, who="owner", body=None, headers=None, key=None):
        sent = {"Idempotency-Key": key or str(uuid.uuid4())}
        sent.update(headers or {})
        return self.ask(method, path, self.tokens[who], body, sent)

    def new_app(self, who="owner"):
        return self.write("POST", "/api/v1/apps", who, {"name": str(uuid.uuid4()), "kind": 0}).json()["id"]

    def new_version(self, app, who="owner", name=None, body=b'{"uiData":{"pages":[]},"processData":{"processes":[]}}'):
        headers = {"Content-Digest": digest(body), "Version-Name": name or secrets.token_hex(8)}
        return self.write("POST", f"/api/v1/apps/{app}/versions", who, body, headers).json()["id"]

    def new_app_with_a_version(self):
        app = self.new_app()
        self.new_version(app)
        return app

    def release(self, version, kind, who="owner"):
        return self.write("POST", f"/api/v1/versions/{version}/release", who, {"type": kind}, {"If-Match": '"1"'})

    def new_released(self, kind):
        version = self.new_version(self.new_app())
        self.release(version, kind)
        return version

    def new_gray_app(self):
        app = self.new_app()
        self.release(self.new_version(app), 1)
        return app
