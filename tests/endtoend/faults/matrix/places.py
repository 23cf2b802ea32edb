"""Where things lie."""

import os
from pathlib import Path

ROOT = Path(__file__).resolve().parents[4]
BUILD = Path(os.environ.get("QUORLIN_BUILD_DIR", ROOT / "build/release")).absolute()
PROGRAMS = BUILD / "bin"
SUPPORT = BUILD / "tests-bin/support"
CLOCK_LIBRARY = SUPPORT / "libfault-clock.so"
SHARED_FOLDER = Path("/tmp")
