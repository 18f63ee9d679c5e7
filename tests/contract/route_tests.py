# SPDX-License-Identifier: Apache-2.0
"""Routes and documented operations are the same, with the same access and the same answers."""

from cases import Cases
from contract_base import ContractBase


class RouteTests(ContractBase):
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
