# SPDX-License-Identifier: Apache-2.0
"""For each operation and status: how to bring the server to give that answer."""

from authoring_cases import AuthoringCases
from bin_cases import BinCases
from release_cases import ReleaseCases
from session_cases import SessionCases
from usage_cases import UsageCases


class Cases(SessionCases, AuthoringCases, BinCases, ReleaseCases, UsageCases):
    def __init__(self, server):
        self.server = server
        self.rows = {}
        for name in dir(self):
            if name.startswith("rows_"):
                self.rows.update(getattr(self, name)())
