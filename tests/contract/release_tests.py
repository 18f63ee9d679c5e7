# SPDX-License-Identifier: Apache-2.0
"""Whom a released version reaches, and whom no longer."""

from contract_base import ContractBase
from server import ACCOUNTS


class ReleaseTests(ContractBase):
    def data_status(self, version, role):
        return self.server.ask("GET", f"/api/v1/versions/{version}/data", self.server.tokens[role]).status

    def names(self, path, role):
        answer = self.server.ask("GET", path, self.server.tokens[role]).json()
        return [released["version"]["id"] for released in answer["apps"]]

    def test_an_online_version_is_run_by_everybody_of_its_vendor(self):
        version = self.server.new_released(2)
        rights = {**dict.fromkeys(ACCOUNTS, 200), "foreign-author": 404, "foreign-administrator": 404}
        for role, status in rights.items():
            with self.subTest(role=role):
                self.assertEqual(self.data_status(version, role), status)
                self.assertEqual(version in self.names("/api/v1/online-apps", role), status == 200)

    def test_a_gray_version_is_run_by_whoever_redeemed_an_invitation(self):
        app = self.server.new_app()
        version = self.server.new_version(app)
        self.server.release(version, 1)
        code = self.server.ask("GET", f"/api/v1/apps/{app}/invitations",
                               self.server.tokens["owner"]).json()["invitations"][0]["code"]
        for role in ("administrator", "foreign-administrator"):
            with self.subTest(role=role):
                self.assertEqual(self.data_status(version, role), 404)
                self.assertNotIn(version, self.names("/api/v1/gray-apps", role))
                redeemed = self.server.write("POST", "/api/v1/invitations/redeem", role, {"code": code})
                self.assertEqual(redeemed.json()["version"]["id"], version)
                self.assertEqual(self.data_status(version, role), 200)
                self.assertIn(version, self.names("/api/v1/gray-apps", role))

    def take_back(self, app, state, seen, wanted=""):
        body = {"state": state, "from": seen, "to": wanted, "reason": "坏了"}
        return self.server.write("POST", f"/api/v1/apps/{app}/take-back", "colleague", body)

    def test_what_was_taken_back_reaches_only_its_authors(self):
        app = self.server.new_app()
        online, gray = self.server.new_version(app), self.server.new_version(app)
        self.server.release(online, 2)
        self.server.release(gray, 1)
        code = self.server.ask("GET", f"/api/v1/apps/{app}/invitations",
                               self.server.tokens["owner"]).json()["invitations"][0]["code"]
        self.server.write("POST", "/api/v1/invitations/redeem", "foreign-author", {"code": code})
        for state, version, path, role in ((3, online, "/api/v1/online-apps", "user"),
                                           (2, gray, "/api/v1/gray-apps", "foreign-author")):
            with self.subTest(state=state):
                self.assertEqual(self.data_status(version, role), 200)
                self.assertEqual(self.take_back(app, state, version).json(), {"versionId": ""})
                self.assertEqual(self.data_status(version, role), 404)
                self.assertNotIn(version, self.names(path, role))
                self.assertEqual(self.data_status(version, "owner"), 200)
                self.assertEqual(self.take_back(app, state, version).status, 200)
                self.assertEqual(self.take_back(app, state, "", version).json(), {"versionId": version})
                self.assertEqual(self.data_status(version, role), 200)
                self.assertIn(version, self.names(path, role))
        entries = self.server.ask("GET", "/api/v1/audit?limit=1000", self.server.tokens["administrator"]).json()["entries"]
        told = [(entry["act"], entry["versionId"], entry["pin"], entry["reason"]) for entry in entries
                if entry["appId"] == app and entry["reason"]]
        self.assertEqual(told, [("release.return", gray, "colleague", "坏了"), ("release.stop", gray, "colleague", "坏了"),
                                ("release.return", online, "colleague", "坏了"),
                                ("release.offline", online, "colleague", "坏了")])

    def test_the_releases_say_which_ones_users_have(self):
        app = self.server.new_app()
        first, second = self.server.new_version(app), self.server.new_version(app)
        for version in (first, second):
            self.server.release(version, 2)

        def shown():
            answer = self.server.ask("GET", f"/api/v1/apps/{app}/releases", self.server.tokens["owner"]).json()
            return [(one["version"]["id"], one["present"], one["version"]["withdrawnAt"] > 0) for one in answer["releases"]]

        self.assertEqual(shown(), [(second, True, False), (first, False, False)])
        self.take_back(app, 3, second, first)
        self.assertEqual(shown(), [(first, True, False), (second, False, True)])

    def test_an_administrator_reads_the_audit_of_his_own_vendor(self):
        version = self.server.new_released(2)
        for role, expected in {"administrator": True, "foreign-administrator": False}.items():
            entries = self.server.ask("GET", "/api/v1/audit?limit=5", self.server.tokens[role]).json()["entries"]
            found = [entry for entry in entries if entry["versionId"] == version]
            self.assertEqual(bool(found), expected)
            if expected:
                self.assertEqual((found[0]["act"], found[0]["pin"]), ("release.online", "owner"))
