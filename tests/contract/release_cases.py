# SPDX-License-Identifier: Apache-2.0
"""Releases: given, taken back, shared by invitation, read by their users, noted in the audit."""

import uuid

from case_helpers import CaseHelpers
from server import PASSWORD


class ReleaseCases(CaseHelpers):
    def rows_release(self):
        write = self.server.write
        path = "/api/v1/versions/{versionId}/release"

        def release(version, kind=1, revision='"1"', **more):
            headers = {"If-Match": revision} if revision else {}
            return write("POST", f"/api/v1/versions/{version}/release", body={"type": kind}, headers=headers, **more)

        def with_a_used_key():
            key = str(uuid.uuid4())
            version = self.version()
            release(version, 1, key=key)
            return release(version, 2, key=key)

        return {
            ("POST", path, 200): lambda: release(self.version()),
            ("POST", path, 400): lambda: release(self.version(), 3),
            ("POST", path, 401): self.dead_token("POST", "/api/v1/versions/none/release"),
            ("POST", path, 404): lambda: release("none"),
            ("POST", path, 409): with_a_used_key,
            ("POST", path, 412): lambda: release(self.version(), 1, '"2"'),
            ("POST", path, 428): lambda: release(self.version(), 1, None),
        }

    def rows_take_back(self):
        write, ask = self.server.write, self.server.ask
        path, listed = "/api/v1/apps/{appId}/take-back", "/api/v1/apps/{appId}/releases"

        def take_back(seen=None, **more):
            app = self.app()
            online = self.server.new_version(app)
            self.server.release(online, 2)
            body = {"state": 3, "from": seen or online, "to": "", "reason": "坏了", **more}
            return write("POST", f"/api/v1/apps/{app}/take-back", body=body)

        return {
            ("POST", path, 200): take_back,
            ("POST", path, 400): lambda: take_back(reason=" "),
            ("POST", path, 401): self.dead_token("POST", "/api/v1/apps/none/take-back"),
            ("POST", path, 404): lambda: take_back(to="none"),
            ("POST", path, 409): lambda: take_back(seen="another"),
            ("GET", listed, 200): lambda: ask("GET", f"/api/v1/apps/{self.server.new_gray_app()}/releases",
                                              self.server.tokens["owner"]),
            ("GET", listed, 401): lambda: ask("GET", "/api/v1/apps/none/releases"),
            ("GET", listed, 404): lambda: ask("GET", "/api/v1/apps/none/releases", self.server.tokens["owner"]),
        }

    def rows_invitations(self):
        write, ask = self.server.write, self.server.ask
        path, one = "/api/v1/apps/{appId}/invitations", "/api/v1/invitations/{invitationId}"
        redeem_path = "/api/v1/invitations/redeem"

        def at(app):
            return f"/api/v1/apps/{app}/invitations"

        def make(app, who="owner", **order):
            return write("POST", at(app), who, order)

        def gray():
            return self.server.new_gray_app()

        def revoke(invitation, who="owner"):
            return write("DELETE", f"/api/v1/invitations/{invitation}", who)

        def redeem(code, who="user"):
            return write("POST", redeem_path, who, {"code": code})

        def revoked():
            made = make(gray()).json()
            revoke(made["id"])
            return made["code"]

        def too_often():
            token = ask("POST", "/api/v1/sessions", body={"account": "signer", "password": PASSWORD}).json()["token"]
            for _ in range(6):
                answer = ask("POST", redeem_path, token, {"code": "WRONG-WRONG"}, {"Idempotency-Key": str(uuid.uuid4())})
            return answer

        return {
            ("GET", path, 200): lambda: ask("GET", at(gray()), self.server.tokens["owner"]),
            ("GET", path, 401): lambda: ask("GET", at("none")),
            ("GET", path, 403): lambda: ask("GET", at(gray()), self.server.tokens["colleague"]),
            ("GET", path, 404): lambda: ask("GET", at("none"), self.server.tokens["owner"]),
            ("POST", path, 201): lambda: make(gray(), validDays=7, mostUses=3),
            ("POST", path, 400): lambda: make(gray(), validDays=366),
            ("POST", path, 401): self.dead_token("POST", at("none")),
            ("POST", path, 403): lambda: make(gray(), "colleague"),
            ("POST", path, 404): lambda: make("none"),
            ("POST", path, 409): lambda: make(self.app()),
            ("DELETE", one, 200): lambda: revoke(make(gray()).json()["id"]),
            ("DELETE", one, 400): lambda: ask("DELETE", "/api/v1/invitations/none", self.server.tokens["owner"]),
            ("DELETE", one, 401): self.dead_token("DELETE", "/api/v1/invitations/none"),
            ("DELETE", one, 403): lambda: revoke(make(gray()).json()["id"], "colleague"),
            ("DELETE", one, 404): lambda: revoke("none"),
            ("POST", redeem_path, 200): lambda: redeem(make(gray()).json()["code"].lower().replace("-", " ")),
            ("POST", redeem_path, 400): lambda: redeem(""),
            ("POST", redeem_path, 401): self.dead_token("POST", redeem_path),
            ("POST", redeem_path, 404): lambda: redeem("WRONG-WRONG"),
            ("POST", redeem_path, 409): lambda: redeem(revoked()),
            ("POST", redeem_path, 429): too_often,
        }

    def rows_readers(self):
        ask, owner = self.server.ask, self.server.tokens["owner"]
        administrator = self.server.tokens["administrator"]

        def listed(path, who="owner"):
            self.server.new_gray_app()
            self.server.new_released(2)
            return ask("GET", path, self.server.tokens[who])

        return {
            ("GET", "/api/v1/online-apps", 200): lambda: listed("/api/v1/online-apps?query=-"),
            ("GET", "/api/v1/online-apps", 401): lambda: ask("GET", "/api/v1/online-apps"),
            ("GET", "/api/v1/gray-apps", 200): lambda: listed("/api/v1/gray-apps", "user"),
            ("GET", "/api/v1/gray-apps", 401): lambda: ask("GET", "/api/v1/gray-apps"),
            ("GET", "/api/v1/audit", 200): lambda: listed("/api/v1/audit?limit=10", "administrator"),
            ("GET", "/api/v1/audit", 400): lambda: ask("GET", "/api/v1/audit?limit=0", administrator),
            ("GET", "/api/v1/audit", 401): lambda: ask("GET", "/api/v1/audit"),
            ("GET", "/api/v1/audit", 403): lambda: ask("GET", "/api/v1/audit", owner),
        }
