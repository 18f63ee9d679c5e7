# SPDX-License-Identifier: Apache-2.0
"""What the server tells of saves."""

from contract_base import ContractBase
from saving import OTHER
from server import digest


class SavingTests(ContractBase):
    def test_the_saves_say_who_saved_when_and_with_which_note(self):
        app = self.server.new_app()
        version = self.server.new_version(app)
        headers = {"If-Match": '"1"', "Content-Digest": digest(OTHER)}
        self.server.write("PUT", f"/api/v1/versions/{version}", "colleague", OTHER, headers)
        for who, revision, note in (("owner", 1, " 第一版 "), ("colleague", 2, "改错"), ("colleague", 2, "改了登录")):
            order = {"revision": revision, "note": note}
            self.assertEqual(self.server.write("PUT", f"/api/v1/versions/{version}/note", who, order).status, 204)

        saves = self.server.ask("GET", f"/api/v1/apps/{app}/saves", self.server.tokens["owner"]).json()["saves"]

        self.assertEqual([(save["versionId"], save["revision"], save["pin"], save["note"]) for save in saves],
                         [(version, 2, "colleague", "改了登录"), (version, 1, "owner", "第一版")])
        self.assertGreaterEqual(saves[0]["savedAt"], saves[1]["savedAt"])
