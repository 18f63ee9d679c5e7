# SPDX-License-Identifier: Apache-2.0
"""Apps and their versions: made, read, changed, deleted, restored."""

import subprocess
import sys
import uuid

from case_helpers import CaseHelpers
from saving import BODY, OTHER, save_headers
from server import digest


class AuthoringCases(CaseHelpers):
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

    def rows_saves(self):
        write, ask = self.server.write, self.server.ask
        path, listed = "/api/v1/versions/{versionId}/note", "/api/v1/apps/{appId}/saves"

        def note(version, who="owner", text="改了登录", **more):
            return write("PUT", f"/api/v1/versions/{version}/note", who, {"revision": 1, "note": text}, **more)

        def saves():
            app = self.app()
            note(self.server.new_version(app))
            return ask("GET", f"/api/v1/apps/{app}/saves", self.server.tokens["owner"])

        def with_a_used_key():
            key, version = str(uuid.uuid4()), self.version()
            note(version, key=key)
            return note(version, text="别的", key=key)

        return {
            ("PUT", path, 204): lambda: note(self.version()),
            ("PUT", path, 400): lambda: note(self.version(), text="字" * 201),
            ("PUT", path, 401): self.dead_token("PUT", "/api/v1/versions/none/note"),
            ("PUT", path, 403): lambda: note(self.version(), "colleague"),
            ("PUT", path, 404): lambda: note("none"),
            ("PUT", path, 409): with_a_used_key,
            ("GET", listed, 200): saves,
            ("GET", listed, 401): lambda: ask("GET", "/api/v1/apps/none/saves"),
            ("GET", listed, 404): lambda: ask("GET", "/api/v1/apps/none/saves", self.server.tokens["owner"]),
        }
