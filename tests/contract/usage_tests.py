# SPDX-License-Identifier: Apache-2.0
"""What accounts did, counted for the administrators of their vendor."""

import time
import uuid

from contract_base import ContractBase

DAY = 24 * 60 * 60 * 1000


def now():
    return int(time.time() * 1000)


def event(name="Saved", **more):
    return {"id": str(uuid.uuid4()), "event": name, "time": now(), **more}


class UsageTests(ContractBase):
    def report(self, events, who="owner"):
        answer = self.server.ask("POST", "/api/v1/usage-events", self.server.tokens[who], {"events": events})
        self.assertEqual(answer.status, 204, answer.bytes)

    def counts(self, name, who="administrator", days=90):
        answer = self.server.ask("GET", f"/api/v1/usage?days={days}", self.server.tokens[who]).json()
        return {one["day"]: one["count"] for one in answer["counts"] if one["event"] == name}

    def name(self):
        return "Event." + uuid.uuid4().hex

    def day(self, at):
        return time.strftime("%Y-%m-%d", time.gmtime(at / 1000))

    def test_an_event_that_comes_twice_counts_once(self):
        name = self.name()
        batch = [event(name), event(name)]
        self.report(batch)
        self.report(batch + [event(name)])
        self.assertEqual(sum(self.counts(name).values()), 3)

    def test_events_are_those_of_the_session_whatever_the_body_says(self):
        name, same = self.name(), str(uuid.uuid4())
        self.report([event(name, id=same, pin="owner", account="owner", venderId="a")], "foreign-author")
        self.assertEqual(self.counts(name), {})
        self.assertEqual(sum(self.counts(name, "foreign-administrator").values()), 1)
        # Nobody takes an id away from somebody else.
        self.report([event(name, id=same)])
        self.assertEqual(sum(self.counts(name).values()), 1)

    def test_an_event_counts_on_its_day(self):
        name, at = self.name(), now()
        self.report([event(name, time=at - 3 * DAY), event(name, time=at), event(name, time=at + 9 * DAY)])
        self.assertEqual(self.counts(name), {self.day(at): 2, self.day(at - 3 * DAY): 1})
        self.assertEqual(self.counts(name, days=3), {self.day(at): 2})

    def test_what_is_no_event_is_left_out_and_the_rest_is_kept(self):
        name = self.name()
        wrong = [None, 1, "x", [], {}, event(name, id=""), event(name, id="x" * 65), event(name, id="a b"),
                 event(name, id=7), event("x" * 65), event("<b>"), event("名"), event("a\n"), event(""),
                 event(name, time=now() - 92 * DAY), event(name, time=-1), event(name, time=None), event(name, time="1")]
        self.report(wrong + [event(name), event(name, time=2**53)])
        self.assertEqual(sum(self.counts(name).values()), 2)

    def test_a_day_of_an_account_holds_so_many_events(self):
        name, at = self.name(), now() - 40 * DAY
        for _ in range(21):
            self.report([event(name, time=at) for _ in range(100)], "user")
        self.assertEqual(self.counts(name), {self.day(at): 2000})

    def test_a_body_without_a_list_of_events_is_refused(self):
        for name, wrong in {"none": {}, "object": {"events": {}}, "text": {"events": "x"}}.items():
            with self.subTest(body=name):
                answer = self.server.ask("POST", "/api/v1/usage-events", self.server.tokens["owner"], wrong)
                self.assertEqual((answer.status, answer.json()["code"]), (400, "bad-events"))
