"""The program's settings, as they lie in its registry."""

import sqlite3
from contextlib import closing

KEY = "Software\\Varnex Software\\Quorlin\\2.0"
TEXT = 1
LAYOUT = """
CREATE TABLE registry_key (path TEXT PRIMARY KEY, parent TEXT NOT NULL, name TEXT NOT NULL) WITHOUT ROWID;
CREATE INDEX registry_key_parent ON registry_key (parent);
CREATE TABLE registry_value (id INTEGER PRIMARY KEY, path TEXT NOT NULL, folded TEXT NOT NULL, name TEXT NOT NULL,
    type INTEGER NOT NULL, data BLOB NOT NULL, UNIQUE (path, folded));
PRAGMA application_id = 0x514C5247;
PRAGMA user_version = 1;
"""


class Settings:
    """Those of one layer: `folder` is the desktop's `config`, the user's own, or `machine`, everybody's."""

    def __init__(self, folder):
        self._file = folder / "quorlin/registry.db"

    def all(self):
        """Names and texts; nothing where no program has written yet."""
        if not self._file.exists():
            return {}
        with closing(sqlite3.connect(self._file)) as database:
            found = database.execute("SELECT name, data FROM registry_value WHERE path = ?", (KEY.casefold(),))
            return {name: bytes(data).decode("utf-8") for name, data in found}

    def write(self, **values):
        """As an administrator or another program leaves them; `write(Skin="Clarity")`."""
        is_new = not self._file.exists()
        self._file.parent.mkdir(mode=0o700, exist_ok=True)
        with closing(sqlite3.connect(self._file)) as database:
            if is_new:
                database.executescript(LAYOUT)
            with database:
                self._add_keys(database)
                for name, text in values.items():
                    database.execute("INSERT OR REPLACE INTO registry_value (path, folded, name, type, data) "
                                     "VALUES (?, ?, ?, ?, ?)",
                                     (KEY.casefold(), name.casefold(), name, TEXT, text.encode("utf-8")))

    @staticmethod
    def _add_keys(database):
        names = KEY.split("\\")
        for depth in range(len(names), 0, -1):
            path, parent = "\\".join(names[:depth]).casefold(), "\\".join(names[:depth - 1]).casefold()
            database.execute("INSERT OR IGNORE INTO registry_key VALUES (?, ?, ?)", (path, parent, names[depth - 1]))
