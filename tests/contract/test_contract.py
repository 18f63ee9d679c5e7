# SPDX-License-Identifier: Apache-2.0
"""Every operation and every documented status of server/openapi.yaml against a real server, and the rights of every
role on every operation. A route without a row here or in the document fails, and so does a row without a route.

usage: test_contract.py OPENAPI_YAML [EMULATOR] RPA_VERSION_SERVER"""

import sys
import unittest

from app_tests import AppTests
from contract_base import ContractBase
from release_tests import ReleaseTests
from rights_tests import RightsTests
from route_tests import RouteTests
from saving_tests import SavingTests
from usage_tests import UsageTests

ContractBase.document, *ContractBase.program = sys.argv[1:]


class ContractTest(RouteTests, RightsTests, ReleaseTests, SavingTests, AppTests, UsageTests):
    """All subjects, one server."""


if __name__ == "__main__":
    # The subjects alone are no tests: each would start a server of its own.
    unittest.main(argv=[sys.argv[0], "ContractTest"], verbosity=1)
