"""A PDF's objects as qpdf tells them (its JSON, version 2), with what is needed to walk them."""

import json
import re
import subprocess

REFERENCE = re.compile(r"\d+ \d+ R")
QPDF_SECONDS = 120


class UnreadablePdf(Exception):
    """A tool could not read the file; the text says why."""


def text(value):
    """A string object as text; bytes that are no text keep their values."""
    if not isinstance(value, str):
        return ""
    if value.startswith("u:"):
        return value[2:]
    if value.startswith("b:"):
        return bytes.fromhex(value[2:]).decode("latin-1")
    return ""


def is_string(value):
    return isinstance(value, str) and value[:2] in ("u:", "b:")


def is_name(value):
    return isinstance(value, str) and value.startswith("/")


class PdfObjects:
    """Read access to one file. References are followed, streams appear as their dictionaries."""

    def __init__(self, path):
        content = _qpdf_json(path)
        self._objects = content["qpdf"][1]
        self._trailer = self._objects["trailer"]["value"]
        self._page_references = self._leaves(self.catalog.get("/Pages"))
        self._page_numbers = {ref: index for index, ref in enumerate(self._page_references)}

    def get(self, value):
        for _ in range(32):
            if not (isinstance(value, str) and REFERENCE.fullmatch(value)):
                return value
            entry = self._objects.get("obj:" + value, {})
            value = entry["stream"]["dict"] if "stream" in entry else entry.get("value")
        return None

    def dictionary(self, value):
        value = self.get(value)
        return value if isinstance(value, dict) else {}

    def array(self, value):
        value = self.get(value)
        return value if isinstance(value, list) else []

    def _leaves(self, root):
        """The page tree's leaves from left to right; every node counts once."""
        leaves, seen, pending = [], set(), [root]
        while pending:
            reference = pending.pop()
            node = self.dictionary(reference)
            if not isinstance(reference, str) or reference in seen or not node:
                continue
            seen.add(reference)
            if "/Kids" in node:
                pending += reversed(self.array(node.get("/Kids")))
            else:
                leaves.append(reference)
        return leaves

    @property
    def catalog(self):
        return self.dictionary(self._trailer.get("/Root"))

    @property
    def info(self):
        return self.dictionary(self._trailer.get("/Info"))

    @property
    def pages(self):
        return [self.dictionary(reference) for reference in self._page_references]

    def page_number(self, reference):
        """Position from 0 of a page named by reference or by number; None when there is none."""
        if isinstance(reference, int) and 0 <= reference < len(self._page_references):
            return reference
        return self._page_numbers.get(reference) if isinstance(reference, str) else None

    def inherited(self, page, key):
        for _ in range(64):
            value = self.get(page.get(key))
            if value is not None:
                return value
            page = self.dictionary(page.get("/Parent"))
        return None


def _qpdf_json(path):
    # Only the bare objects: told to list pages, qpdf follows an outline that runs in a circle for ever.
    command = ["qpdf", "--json=2", "--json-key=qpdf", "--json-stream-data=none"]
    try:
        done = subprocess.run([*command, str(path)], capture_output=True, timeout=QPDF_SECONDS, check=False)
    except subprocess.TimeoutExpired as error:
        raise UnreadablePdf("qpdf took too long") from error
    if done.returncode not in (0, 3):  # 3: read, with warnings
        said = done.stderr.decode("utf-8", "replace").strip().splitlines()
        raise UnreadablePdf(said[-1] if said else f"qpdf: exit code {done.returncode}")
    return json.loads(done.stdout)
