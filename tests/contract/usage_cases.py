# SPDX-License-Identifier: Apache-2.0
"""What accounts did, and how often."""

from case_helpers import CaseHelpers
from usage_tests import event


class UsageCases(CaseHelpers):
    def rows_usage(self):
        ask, tokens = self.server.ask, self.server.tokens
        events, usage = "/api/v1/usage-events", "/api/v1/usage"

        def counted():
            ask("POST", events, tokens["owner"], {"events": [event()]})
            return ask("GET", usage + "?days=1", tokens["administrator"])

        return {
            ("POST", events, 204): lambda: ask("POST", events, tokens["owner"], {"events": [event()]}),
            ("POST", events, 400): lambda: ask("POST", events, tokens["owner"], {"events": [event()] * 101}),
            ("POST", events, 401): self.dead_token("POST", events),
            ("GET", usage, 200): counted,
            ("GET", usage, 400): lambda: ask("GET", usage + "?days=91", tokens["administrator"]),
            ("GET", usage, 401): lambda: ask("GET", usage),
            ("GET", usage, 403): lambda: ask("GET", usage, tokens["owner"]),
        }
