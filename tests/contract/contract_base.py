# SPDX-License-Identifier: Apache-2.0
"""The server, its document, and what the tests of every subject do with them."""

import json
import subprocess
import unittest
import uuid

from openapi import Contract
from saving import BODY, save_headers
from server import Server


class ContractBase(unittest.TestCase):
    document = ""  # set by whoever runs the tests
    program = []

    @classmethod
    def setUpClass(cls):
        cls.contract = Contract(cls.document)
        cls.operations = cls.contract.operations()
        cls.server = Server(cls.program)

    @classmethod
    def tearDownClass(cls):
        code = cls.server.stop()
        assert code == 0, f"the server ended with {code}"

    def routes(self):
        printed = subprocess.run([*self.program, "--print-routes"], check=True, capture_output=True).stdout
        return {(route["method"], route["path"]): route for route in json.loads(printed)}

    def send(self, method, path, token):
        if "invitation" in path:
            app, version = self.server.new_gray_app(), ""
            made = self.server.write("POST", f"/api/v1/apps/{app}/invitations", body={}).json()
        else:
            app, made = self.server.new_app(), {"id": "", "code": ""}
            version = self.server.new_version(app)
        if path.endswith("/restore"):
            self.server.write("DELETE", f"/api/v1/versions/{version}", headers={"If-Match": '"1"'})
        if "/deleted-apps/" in path:
            self.server.write("DELETE", f"/api/v1/apps/{app}")
        target = path.format(appId=app, versionId=version, invitationId=made["id"])
        headers = {"Idempotency-Key": str(uuid.uuid4()), "If-Match": '"1"', **save_headers()}
        body = None
        if path.endswith("/note"):
            body = {"revision": 1, "note": "改了登录"}
        elif path.endswith("/versions") and method == "POST" or method == "PUT":
            body = BODY
        elif method in ("POST", "PATCH"):
            body = {"name": str(uuid.uuid4()), "kind": 0, "type": 1, "code": made["code"], "state": 3,
                    "reason": "坏了", "events": []}
        return self.server.ask(method, target, token, body, headers)
