# SPDX-License-Identifier: Apache-2.0
"""What an app keeps of what was said about it."""

import uuid

from contract_base import ContractBase


class AppTests(ContractBase):
    def test_the_tags_of_an_app_are_kept_as_they_were_sent(self):
        app = self.server.new_app()

        def change(**what):
            return self.server.ask("PATCH", f"/api/v1/apps/{app}", self.server.tokens["owner"], what)

        tags = ["财务", "Month end"]
        self.assertEqual(change(tags=tags).json()["tags"], tags)
        refused = {"eleven": [str(n) for n in range(11)], "long": ["x" * 21], "twice": ["a", "A"], "empty": [""],
                   "blank": [" a"], "line feed": ["a\nb"], "number": [1], "no list": "a"}
        for name, wrong in refused.items():
            with self.subTest(tags=name):
                answer = change(tags=wrong)
                self.assertEqual((answer.status, answer.json()["code"]), (400, "bad-tags"))
        self.assertEqual(change().json()["code"], "bad-change")
        self.assertEqual(change(name=str(uuid.uuid4())).json()["tags"], tags)

    def test_an_app_is_made_under_a_free_name_where_that_is_asked_for(self):
        name = str(uuid.uuid4())

        def make(**more):
            return self.server.write("POST", "/api/v1/apps", body={"name": name, "kind": 1, **more})

        self.assertEqual(make(anyName=True).json()["name"], name)
        self.assertEqual(make().status, 409)
        self.assertEqual(make(anyName=True).json()["name"], name + " 2")
