# SPDX-License-Identifier: Apache-2.0
"""Apps as a whole: deleted, restored, taken out of the bin for good, copied."""

import uuid

from case_helpers import CaseHelpers


class BinCases(CaseHelpers):
    def rows_bin_and_copies(self):
        write, ask, owner = self.server.write, self.server.ask, self.server.tokens["owner"]
        one, copies = "/api/v1/apps/{appId}", "/api/v1/apps/{appId}/copies"
        bin_, binned, restore = ("/api/v1/deleted-apps", "/api/v1/deleted-apps/{appId}",
                                 "/api/v1/deleted-apps/{appId}/restore")

        def at(pattern, app, method="POST", who="owner", **more):
            return write(method, pattern.format(appId=app), who, **more)

        def deleted():
            app = self.app()
            at(one, app, "DELETE")
            return app

        def listed():
            deleted()
            return ask("GET", bin_, owner)

        def with_a_used_key(pattern, make, method="POST"):
            key = str(uuid.uuid4())
            at(pattern, make(), method, key=key)
            return at(pattern, make(), method, key=key)

        def rows(method, pattern, make, done):
            def without_key():
                return ask(method, pattern.format(appId="none"), owner)

            return {
                (method, pattern, done): lambda: at(pattern, make(), method),
                (method, pattern, 400): without_key,
                (method, pattern, 401): self.dead_token(method, pattern.format(appId="none")),
                (method, pattern, 404): lambda: at(pattern, "none", method),
                (method, pattern, 409): lambda: with_a_used_key(pattern, make, method),
            }

        return {
            **rows("DELETE", one, self.app, 204),
            **rows("POST", copies, lambda: self.server.new_app_with_a_version(), 201),
            **rows("DELETE", binned, deleted, 204),
            **rows("POST", restore, deleted, 200),
            ("DELETE", one, 403): lambda: at(one, self.app(), "DELETE", "colleague"),
            ("GET", bin_, 200): listed,
            ("GET", bin_, 401): lambda: ask("GET", bin_),
        }
