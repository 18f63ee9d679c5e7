# SPDX-License-Identifier: Apache-2.0
"""What the cases have in common: things of the server to act on."""

import secrets
import uuid


class CaseHelpers:
    server = None

    def app(self):
        return self.server.new_app()

    def version(self):
        return self.server.new_version(self.app())

    def released(self):
        version = self.version()
        self.server.write("POST", f"/api/v1/versions/{version}/release", body={"type": 1}, headers={"If-Match": '"1"'})
        return version

    def dead_token(self, method, path):
        return lambda: self.server.ask(method, path, token=secrets.token_hex(32), headers={"Idempotency-Key": "12345678"})

    def reuse_key(self, method, path, headers, first, second):
        key = str(uuid.uuid4())
        self.server.write(method, path, body=first[0], headers={**headers, **first[1]}, key=key)
        return self.server.write(method, path, body=second[0], headers={**headers, **second[1]}, key=key)
