"""What the tests of man pages and completions share: the commands, and what their help says."""

import functools
import os
import re
import subprocess
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
BIN = Path(os.environ.get("QUORLIN_BIN_DIR", PROJECT / "build/release/bin"))
COMPLETED = ("quorlin-convert", "quorlin-settings", "quorlin-skin")


def environment(folder=None):
    """For the programs: no display, and settings of their own when a folder is given."""
    names = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8",
             "PATH": f"{BIN}:{os.environ['PATH']}"}
    if folder:
        names |= {"HOME": str(folder), "XDG_CONFIG_HOME": f"{folder}/config",
                  "XDG_CONFIG_DIRS": f"{folder}/machine", "XDG_CACHE_HOME": f"{folder}/cache",
                  "XDG_RUNTIME_DIR": f"{folder}/runtime", "XDG_DATA_HOME": f"{folder}/data"}
    return names


@functools.cache
def help_of(command):
    return subprocess.run([BIN / command, "--help"], env=environment(), capture_output=True,
                          text=True, check=True, timeout=60).stdout


def options_of(command):
    """The options that --help lists, with their dashes."""
    options = set()
    for line in help_of(command).splitlines():
        if not (found := re.match(r" {2,6}((?:-\w, )?--[\w-]+)", line)):
            continue
        options.update(found[1].split(", "))
    return options


def accepted_extensions():
    """The extensions that the component takes, from its own table."""
    source = (PROJECT / "src/component/protocol/Acceptance.cpp").read_text(encoding="utf-8")
    lists = re.findall(r'list\(\s*"([a-z ]+)"\)', source)
    return {word for words in lists for word in words.split()}
