# SPDX-License-Identifier: Apache-2.0
"""The service itself and the sessions of its users."""

from case_helpers import CaseHelpers
from server import PASSWORD


class SessionCases(CaseHelpers):
    def rows_service(self):
        ask = self.server.ask
        return {
            ("GET", "/api/v1/health", 200): lambda: ask("GET", "/api/v1/health"),
            ("GET", "/metrics", 200): lambda: ask("GET", "/metrics"),
            ("GET", "/metrics", 401): lambda: ask("GET", "/metrics", headers={"X-Forwarded-For": "192.0.2.1"}),
        }

    def rows_sessions(self):
        path = "/api/v1/sessions"
        ask = self.server.ask

        def sign_in(account, password):
            return ask("POST", path, body={"account": account, "password": password})

        def too_often():
            for _ in range(5):
                sign_in("nobody", "wrong-password")
            return sign_in("nobody", "wrong-password")

        def sign_out():
            token = sign_in("signer", PASSWORD).json()["token"]
            answer = ask("DELETE", path + "/current", token)
            assert ask("GET", path + "/current", token).status == 401, "a token outlives its session"
            return answer

        return {
            ("POST", path, 201): lambda: sign_in("signer", PASSWORD),
            ("POST", path, 400): lambda: ask("POST", path, body=b"[]"),
            ("POST", path, 401): lambda: sign_in("signer", "wrong-password"),
            ("POST", path, 429): too_often,
            ("GET", path + "/current", 200): lambda: ask("GET", path + "/current", self.server.tokens["owner"]),
            ("GET", path + "/current", 401): self.dead_token("GET", path + "/current"),
            ("DELETE", path + "/current", 204): sign_out,
            ("DELETE", path + "/current", 401): self.dead_token("DELETE", path + "/current"),
        }
