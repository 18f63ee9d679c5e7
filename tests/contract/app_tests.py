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
