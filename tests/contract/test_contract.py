"""Every operation and every documented status of server/openapi.yaml against a real server, and the rights of every
role on every operation. A route without a row here or in the document fails, and so does a row without a route.

usage: test_contract.py OPENAPI_YAML [EMULATOR] RPA_VERSION_SERVER"""

import json
import secrets
import subprocess
import sys
import unittest
import uuid

from openapi import Contract
from server import ACCOUNTS, PASSWORD, Server, digest

DOCUMENT, *PROGRAM = sys.argv[1:]
BODY = b'{"uiData":{"pages":[]},"processData":{"processes":[]},"a":1}'
OTHER = BODY.replace(b'"a":1', b'"a":2')


def save_headers(body=BODY, **more):
    headers = {"Content-Digest": digest(body), "Version-Name": secrets.token_hex(8), "Version-Api": "1.0"}
    headers.update({name.replace("_", "-"): value for name, value in more.items()})
    return {name: value for name, value in headers.items() if value is not None}


class Cases:
    """For each operation and status: how to bring the server to give that answer."""

    def __init__(self, server):
        self.server = server
        self.rows = {}
        for name in dir(self):
            if name.startswith("rows_"):
                self.rows.update(getattr(self, name)())

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

    def rows_apps(self):
        write, ask, owner = self.server.write, self.server.ask, self.server.tokens["owner"]
        path, one = "/api/v1/apps", "/api/v1/apps/{appId}"

        def taken(method, target):
            name = str(uuid.uuid4())
            write("POST", path, body={"name": name, "kind": 0})
            return write(method, target(), body={"name": name, "kind": 0})

        return {
            ("GET", path, 200): lambda: ask("GET", path + "?query=%E6%B5%8B", owner),
            ("GET", path, 401): lambda: ask("GET", path),
            ("POST", path, 201): lambda: write("POST", path, body={"name": str(uuid.uuid4()), "kind": 1}),
            ("POST", path, 400): lambda: write("POST", path, body={"name": "", "kind": 0}),
            ("POST", path, 401): self.dead_token("POST", path),
            ("POST", path, 403): lambda: write("POST", path, "user", {"name": str(uuid.uuid4()), "kind": 0}),
            ("POST", path, 409): lambda: taken("POST", lambda: path),
            ("GET", one, 200): lambda: ask("GET", f"{path}/{self.app()}", owner),
            ("GET", one, 401): lambda: ask("GET", f"{path}/{self.app()}"),
            ("GET", one, 404): lambda: ask("GET", f"{path}/none", owner),
            ("PATCH", one, 200): lambda: ask("PATCH", f"{path}/{self.app()}", owner, {"name": str(uuid.uuid4())}),
            ("PATCH", one, 400): lambda: ask("PATCH", f"{path}/{self.app()}", owner, {"name": "x" * 51}),
            ("PATCH", one, 401): self.dead_token("PATCH", f"{path}/none"),
            ("PATCH", one, 404): lambda: ask("PATCH", f"{path}/none", owner, {"name": str(uuid.uuid4())}),
            ("PATCH", one, 409): lambda: taken("PATCH", lambda: f"{path}/{self.app()}"),
        }

    def rows_versions_of_an_app(self):
        write, ask, owner = self.server.write, self.server.ask, self.server.tokens["owner"]
        path = "/api/v1/apps/{appId}/versions"

        def at(app):
            return f"/api/v1/apps/{app}/versions"

        def listed():
            app = self.app()
            self.server.new_version(app)
            return ask("GET", at(app), owner)

        def taken():
            app = self.app()
            self.server.new_version(app, name="one")
            return write("POST", at(app), body=BODY, headers=save_headers(Version_Name="one"))

        return {
            ("GET", path, 200): listed,
            ("GET", path, 401): lambda: ask("GET", at("none")),
            ("GET", path, 404): lambda: ask("GET", at("none"), owner),
            ("POST", path, 201): lambda: write("POST", at(self.app()), body=BODY, headers=save_headers()),
            ("POST", path, 400): lambda: write("POST", at(self.app()), body=OTHER, headers=save_headers(BODY)),
            ("POST", path, 401): self.dead_token("POST", at("none")),
            ("POST", path, 404): lambda: write("POST", at("none"), body=BODY, headers=save_headers()),
            ("POST", path, 409): taken,
        }

    def rows_one_version(self):
        write, owner = self.server.write, self.server.tokens["owner"]
        path = "/api/v1/versions/{versionId}"

        def put(version, revision='"1"', body=BODY, **more):
            return write("PUT", f"/api/v1/versions/{version}", body=body, headers=save_headers(If_Match=revision, **more))

        def delete(version, revision='"1"', **more):
            headers = {"If-Match": revision} if revision else {}
            return write("DELETE", f"/api/v1/versions/{version}", headers=headers, **more)

        def deleted_with_a_used_key():
            key = str(uuid.uuid4())
            delete(self.version(), key=key)
            return delete(self.version(), key=key)

        return {
            ("PUT", path, 200): lambda: put(self.version()),
            ("PUT", path, 400): lambda: put(self.version(), body=b"not json", Content_Digest=digest(b"not json")),
            ("PUT", path, 401): self.dead_token("PUT", "/api/v1/versions/none"),
            ("PUT", path, 404): lambda: put("none"),
            ("PUT", path, 409): lambda: put(self.released()),
            ("PUT", path, 412): lambda: put(self.version(), '"2"'),
            ("PUT", path, 428): lambda: put(self.version(), None),
            ("DELETE", path, 204): lambda: delete(self.version()),
            ("DELETE", path, 400): lambda: self.server.ask(
                "DELETE", "/api/v1/versions/none", owner, headers={"If-Match": '"1"'}),
            ("DELETE", path, 401): self.dead_token("DELETE", "/api/v1/versions/none"),
            ("DELETE", path, 404): lambda: delete("none"),
            ("DELETE", path, 409): deleted_with_a_used_key,
            ("DELETE", path, 412): lambda: delete(self.version(), '"2"'),
            ("DELETE", path, 428): lambda: delete(self.version(), None),
        }

    def rows_data(self):
        ask, owner = self.server.ask, self.server.tokens["owner"]
        path = "/api/v1/versions/{versionId}/data"

        def damaged():
            version = self.version()
            script = ("import sqlite3,sys; c=sqlite3.connect(sys.argv[1]); c.execute('DROP TRIGGER revision_stays');"
                      "c.execute('UPDATE revision SET body=? WHERE version_id=?', (b'{\"a\":9}', sys.argv[2])); c.commit()")
            subprocess.run([sys.executable, "-c", script, self.server.folder + "/versions.db", version], check=True)
            return ask("GET", f"/api/v1/versions/{version}/data", owner)

        return {
            ("GET", path, 200): lambda: ask("GET", f"/api/v1/versions/{self.version()}/data", owner),
            ("GET", path, 401): lambda: ask("GET", "/api/v1/versions/none/data"),
            ("GET", path, 404): lambda: ask("GET", "/api/v1/versions/none/data", owner),
            ("GET", path, 500): damaged,
        }

    def rows_restore(self):
        write, ask = self.server.write, self.server.ask
        path = "/api/v1/versions/{versionId}/restore"

        def deleted(app, name=None):
            version = self.server.new_version(app, name=name)
            write("DELETE", f"/api/v1/versions/{version}", headers={"If-Match": '"1"'})
            return version

        def name_taken():
            app = self.app()
            version = deleted(app, "one")
            self.server.new_version(app, name="one")
            return restore(version)

        def restore(version, who="administrator"):
            return write("POST", f"/api/v1/versions/{version}/restore", who)

        return {
            ("POST", path, 200): lambda: restore(deleted(self.app())),
            ("POST", path, 400): lambda: ask(
                "POST", "/api/v1/versions/none/restore", self.server.tokens["administrator"]),
            ("POST", path, 401): self.dead_token("POST", "/api/v1/versions/none/restore"),
            ("POST", path, 403): lambda: restore(deleted(self.app()), "owner"),
            ("POST", path, 404): lambda: restore("none"),
            ("POST", path, 409): name_taken,
        }

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


# What each role gets for a well-formed request on what "owner" made. Everybody else gets 401.
EDITORS = {"owner": "ok", "colleague": "ok"}
RIGHTS = {
    ("GET", "/api/v1/apps"): {name: 200 for name in ACCOUNTS},
    ("POST", "/api/v1/apps"): {"owner": 201, "colleague": 201, "foreign-author": 201, "*": 403},
    ("GET", "/api/v1/apps/{appId}"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("PATCH", "/api/v1/apps/{appId}"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("GET", "/api/v1/apps/{appId}/versions"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("POST", "/api/v1/apps/{appId}/versions"): {**dict.fromkeys(EDITORS, 201), "*": 404},
    ("PUT", "/api/v1/versions/{versionId}"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("GET", "/api/v1/versions/{versionId}/data"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("DELETE", "/api/v1/versions/{versionId}"): {**dict.fromkeys(EDITORS, 204), "*": 404},
    ("POST", "/api/v1/versions/{versionId}/release"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("GET", "/api/v1/apps/{appId}/releases"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("POST", "/api/v1/apps/{appId}/take-back"): {**dict.fromkeys(EDITORS, 200), "*": 404},
    ("POST", "/api/v1/versions/{versionId}/restore"): {"administrator": 200, "foreign-administrator": 404, "*": 403},
    ("GET", "/api/v1/apps/{appId}/invitations"): {"owner": 200, "colleague": 403, "*": 404},
    ("POST", "/api/v1/apps/{appId}/invitations"): {"owner": 201, "colleague": 403, "*": 404},
    ("DELETE", "/api/v1/invitations/{invitationId}"): {"owner": 200, "colleague": 403, "*": 404},
    ("POST", "/api/v1/invitations/redeem"): {name: 200 for name in ACCOUNTS},
    ("GET", "/api/v1/online-apps"): {name: 200 for name in ACCOUNTS},
    ("GET", "/api/v1/gray-apps"): {name: 200 for name in ACCOUNTS},
    ("GET", "/api/v1/audit"): {"administrator": 200, "foreign-administrator": 200, "*": 403},
    ("GET", "/api/v1/sessions/current"): {name: 200 for name in ACCOUNTS},
    ("DELETE", "/api/v1/sessions/current"): {},  # tried with sessions of its own in Cases
    ("GET", "/api/v1/health"): {},  # nobody needs a token
    ("GET", "/metrics"): {},
    ("POST", "/api/v1/sessions"): {},
}


class ContractTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.contract = Contract(DOCUMENT)
        cls.operations = cls.contract.operations()
        cls.server = Server(PROGRAM)

    @classmethod
    def tearDownClass(cls):
        code = cls.server.stop()
        assert code == 0, f"the server ended with {code}"

    def routes(self):
        printed = subprocess.run([*PROGRAM, "--print-routes"], check=True, capture_output=True).stdout
        return {(route["method"], route["path"]): route for route in json.loads(printed)}

    def test_every_route_is_documented_and_every_documented_route_exists(self):
        self.assertEqual(set(self.routes()), set(self.operations))

    def test_a_route_without_a_documented_row_is_noticed(self):
        operations = dict(self.operations)
        operations.popitem()
        self.assertNotEqual(set(self.routes()), set(operations))

    def test_the_access_of_every_route_is_as_documented(self):
        for key, route in self.routes().items():
            with self.subTest(route=key):
                self.assertEqual(route["access"], self.contract.access(self.operations[key]))

    def test_every_documented_status_is_given_as_documented(self):
        rows = Cases(self.server).rows
        documented = {(*key, status) for key, op in self.operations.items() for status in self.contract.statuses(op)}
        self.assertEqual(set(rows), documented)
        for (method, path, status), provoke in sorted(rows.items()):
            with self.subTest(method=method, path=path, status=status):
                answer = provoke()
                self.assertEqual(answer.status, status, answer.bytes)
                operation = self.operations[method, path]
                self.assertEqual(self.contract.schema_faults(operation, status, answer.type, answer.json()), [])
                self.assertEqual(self.contract.header_faults(operation, status, answer.headers), [])
                if status >= 400:
                    self.assertRegex(answer.json()["message"], "[\u4e00-\u9fff]")

    def send(self, method, path, token):
        if "invitation" in path:
            app, version = self.server.new_gray_app(), ""
            made = self.server.write("POST", f"/api/v1/apps/{app}/invitations", body={}).json()
        else:
            app, made = self.server.new_app(), {"id": "", "code": ""}
            version = self.server.new_version(app)
        if path.endswith("/restore"):
            self.server.write("DELETE", f"/api/v1/versions/{version}", headers={"If-Match": '"1"'})
        target = path.format(appId=app, versionId=version, invitationId=made["id"])
        headers = {"Idempotency-Key": str(uuid.uuid4()), "If-Match": '"1"', **save_headers()}
        body = None
        if path.endswith("/versions") and method == "POST" or method == "PUT":
            body = BODY
        elif method in ("POST", "PATCH"):
            body = {"name": str(uuid.uuid4()), "kind": 0, "type": 1, "code": made["code"], "state": 3,
                    "reason": "坏了"}
        return self.server.ask(method, target, token, body, headers)

    def test_every_role_has_the_rights_it_is_meant_to_have(self):
        self.assertEqual(set(RIGHTS), set(self.operations))
        for (method, path), rights in RIGHTS.items():
            for role in ACCOUNTS if rights else ():
                with self.subTest(method=method, path=path, role=role):
                    answer = self.send(method, path, self.server.tokens[role])
                    self.assertEqual(answer.status, rights.get(role, rights.get("*")), answer.bytes)

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

    def test_no_route_that_asks_for_a_token_works_without_a_living_one(self):
        for (method, path), route in self.routes().items():
            if route["access"] in ("public", "monitoring"):
                continue
            for state, token in {"none": None, "unknown": secrets.token_hex(32), "cut": self.server.tokens["owner"][:-1],
                                 "empty": " "}.items():
                with self.subTest(method=method, path=path, token=state):
                    self.assertEqual(self.send(method, path, token).status, 401)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=1)
