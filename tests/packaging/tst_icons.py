"""The icons are there in every size, and are what their drawings give."""

import re
import shutil
import struct
import subprocess
import tempfile
import unittest
import zlib
from pathlib import Path

from commands import PROJECT
from desktop_files import LINUX

THEME = LINUX / "icons/hicolor"
SOURCES = LINUX / "icons/sources"
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
SIGNATURE = b"\x89PNG\r\n\x1a\n"
# Versions of the renderer differ a little at the edges.
TOLERANCE = 12


def icon(size, theme=THEME):
    return theme / f"{size}x{size}/apps/quorlin.png"


def chunks(path):
    data = path.read_bytes()
    assert data.startswith(SIGNATURE), f"{path} is no PNG"
    at = len(SIGNATURE)
    while at < len(data):
        (length,) = struct.unpack_from(">I", data, at)
        yield data[at + 4:at + 8], data[at + 8:at + 8 + length]
        at += length + 12


def header(path):
    """Width, height, bits of a channel and colour type."""
    return struct.unpack(">IIBB", next(data for name, data in chunks(path) if name == b"IHDR")[:10])


def paeth(left, up, corner):
    return min((left, up, corner), key=lambda near: abs(left + up - corner - near))


def unfiltered(kind, line, above):
    """A line of four bytes a pixel without the filter that it was stored with."""
    for at, byte in enumerate(line):
        left, corner = (line[at - 4], above[at - 4]) if at >= 4 else (0, 0)
        added = (0, left, above[at], (left + above[at]) // 2, paeth(left, above[at], corner))[kind]
        line[at] = (byte + added) & 0xFF
    return line


def pixels(path):
    """Red, green, blue and opacity of all pixels, line by line."""
    width, height, bits, colour = header(path)
    assert (bits, colour) == (8, 6), f"{path} has no opacity"
    stored = zlib.decompress(b"".join(data for name, data in chunks(path) if name == b"IDAT"))
    above, picture, step = bytearray(4 * width), bytearray(), 4 * width + 1
    for at in range(0, height * step, step):
        above = unfiltered(stored[at], bytearray(stored[at + 1:at + step]), above)
        picture += above
    return picture


class Icons(unittest.TestCase):
    def test_there_is_one_of_each_size(self):
        for size in SIZES:
            self.assertEqual(header(icon(size))[:2], (size, size))
        there = {path.parent.parent.name for path in THEME.rglob("*.png")}
        self.assertEqual(there, {f"{size}x{size}" for size in SIZES})

    def test_small_ones_have_drawings_of_their_own(self):
        for size in (16, 22, 24, 32):
            drawing = (SOURCES / f"quorlin-{size}.svg").read_text(encoding="utf-8")
            self.assertIn(f'viewBox="0 0 {size} {size}"', drawing)

    @unittest.skipUnless(shutil.which("rsvg-convert"), "rsvg-convert is not installed")
    def test_they_are_what_the_drawings_give(self):
        folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, folder)
        subprocess.run([PROJECT / "tools/render-icons", folder], check=True)
        for size in SIZES:
            kept, made = icon(size), icon(size, folder)
            if kept.read_bytes() == made.read_bytes():
                continue
            most = max(abs(a - b) for a, b in zip(pixels(kept), pixels(made), strict=True))
            self.assertLessEqual(most, TOLERANCE, f"{kept} is older than its drawing")

    # Desktops give the colour of their text to what is filled, and to nothing else.
    def test_the_symbolic_one_is_filled_shapes_of_one_colour(self):
        drawing = (THEME / "symbolic/apps/quorlin-symbolic.svg").read_text(encoding="utf-8")
        self.assertEqual(len(set(re.findall(r'fill="(#\w+)"', drawing))), 1)
        self.assertNotIn("stroke", drawing)
        self.assertNotIn("gradient", drawing.lower())


if __name__ == "__main__":
    unittest.main(verbosity=2)
