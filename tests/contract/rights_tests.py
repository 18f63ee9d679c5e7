# SPDX-License-Identifier: Apache-2.0
"""The rights of every role on every operation."""

import secrets

from contract_base import ContractBase
from server import ACCOUNTS

# What each role gets for a well-formed request on what "owner" made. Everybody else gets 401.
EDITORS = {"owner": "ok", "colleague": "ok"}
RIGHTS = {
    ("GET", "/api/v1/apps"): {name: 200 for name in ACCOUNTS},
    ("POST", "/api/v1/apps"): {"owner": 201, "colleague": 201, "foreign-author": 201, "*": 403},
    ("GET", "/api/v1/apps/{appId}"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("PATCH", "/api/v1/apps/{appId}"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("DELETE", "/api/v1/apps/{appId}"): {"owner": 204, "colleague": 403, "administrator": 204, "*": 404},
    ("POST", "/api/v1/apps/{appId}/copies"): {**dict.fromkeys(EDITORS, 201), "*": 404},
    ("GET", "/api/v1/deleted-apps"): {name: 200 for name in ACCOUNTS},
    ("DELETE", "/api/v1/deleted-apps/{appId}"): {"owner": 204, "administrator": 204, "*": 404},
    ("POST", "/api/v1/deleted-apps/{appId}/restore"): {"owner": 200, "administrator": 200, "*": 404},
    ("GET", "/api/v1/apps/{appId}/versions"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("POST", "/api/v1/apps/{appId}/versions"): {**dict.fromkeys(EDITORS, 201), "*": 404},
    ("PUT", "/api/v1/versions/{versionId}"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("GET", "/api/v1/versions/{versionId}/data"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("DELETE", "/api/v1/versions/{versionId}"): {**dict.fromkeys(EDITORS, 204), "*": 404},
    ("POST", "/api/v1/versions/{versionId}/release"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("GET", "/api/v1/apps/{appId}/releases"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("GET", "/api/v1/apps/{appId}/saves"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("PUT", "/api/v1/versions/{versionId}/note"): {"owner": 204, "colleague": 403, "*": 404},
    ("POST", "/api/v1/apps/{appId}/take-back"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("POST", "/api/v1/versions/{versionId}/restore"): {"administrator": 200, "foreign-administrator": 404, "*": 403},
    ("GET", "/api/v1/apps/{appId}/invitations"): {"owner": 200, "colleague": 403, "*": 404},
    ("POST", "/api/v1/apps/{appId}/invitations"): {"owner": 201, "colleague": 403, "*": 404},
    ("DELETE", "/api/v1/invitations/{invitationId}"): {"owner": 200, "colleague": 403, "*": 404},
    ("POST", "/api/v1/invitations/redeem"): {name: 200 for name in ACCOUNTS},
    ("GET", "/api/v1/online-apps"): {name: 200 for name in ACCOUNTS},
    ("GET", "/api/v1/gray-apps"): {name: 200 for name in ACCOUNTS},
    ("GET", "/api/v1/audit"): {"administrator": 200, "foreign-administrator": 200, "*": 403},
    ("POST", "/api/v1/usage-events"): {name: 204 for name in ACCOUNTS},
    ("GET", "/api/v1/usage"): {"administrator": 200, "foreign-administrator": 200, "*": 403},
    ("GET", "/api/v1/sessions/current"): {name: 200 for name in ACCOUNTS},
    ("DELETE", "/api/v1/sessions/current"): {},  # tried with sessions of its own in Cases
    ("GET", "/api/v1/health"): {},  # nobody needs a token
    ("GET", "/metrics"): {},
    ("POST", "/api/v1/sessions"): {},
}


class RightsTests(ContractBase):
    def test_every_role_has_the_rights_it_is_meant_to_have(self):
        self.assertEqual(set(RIGHTS), set(self.operations))
        for (method, path), rights in RIGHTS.items():
            for role in ACCOUNTS if rights else ():
                with self.subTest(method=method, path=path, role=role):
                    answer = self.send(method, path, self.server.tokens[role])
                    self.assertEqual(answer.status, rights.get(role, rights.get("*")), answer.bytes)

    def test_no_route_that_asks_for_a_token_works_without_a_living_one(self):
        for (method, path), route in self.routes().items():
            if route["access"] in ("public", "monitoring"):
                continue
            for state, token in {"none": None, "unknown": secrets.token_hex(32), "cut": self.server.tokens["owner"][:-1],
                                 "empty": " "}.items():
                with self.subTest(method=method, path=path, token=state):
                    self.assertEqual(self.send(method, path, token).status, 401)
