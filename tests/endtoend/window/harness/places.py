"""Where things lie."""

import os
from pathlib import Path

ROOT = Path(__file__).resolve().parents[4]
BUILD = Path(os.environ.get("QUORLIN_BUILD_DIR", ROOT / "build/release")).absolute()
PROGRAMS = BUILD / "bin"
SUPPORT = BUILD / "tests-bin/support"
EXAMPLES = ROOT / "examples"
# Pictures for people to look at.
PICTURES = BUILD / "tests-out/window"
