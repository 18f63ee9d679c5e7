# SPDX-License-Identifier: Apache-2.0
"""Where the tool that is tested here stands."""

import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
TOOL = ROOT / "tools" / "mutate"
sys.path.insert(0, str(TOOL))
