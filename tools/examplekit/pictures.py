"""The pictures: two that look like photographs, a mark with soft transparency, a garden plan."""

import math
import random
import struct
import subprocess
import tempfile
import zlib
from functools import lru_cache
from pathlib import Path


def png(width, height, samples, channels):
    """A PNG of 8-bit samples (3: RGB, 4: with transparency)."""

    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data)))

    kind = {3: 2, 4: 6}[channels]
    stride = width * channels
    rows = bytearray()
    previous = bytes(stride)
    for y in range(height):
        row = samples[y * stride:(y + 1) * stride]
        rows += b"\2" + bytes((a - b) & 255 for a, b in zip(row, previous))
        previous = row
    head = struct.pack(">IIBBBBB", width, height, 8, kind, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) +
            chunk(b"IDAT", zlib.compress(bytes(rows), 9)) + chunk(b"IEND", b""))


def jpeg(width, height, samples, quality=78):
    """A JPEG of RGB samples, packed by Ghostscript."""
    lines = samples.hex()
    text = (f"%!PS\n{width} {height} scale {width} {height} 8 [{width} 0 0 -{height} 0 {height}] "
            "currentfile /ASCIIHexDecode filter false 3 colorimage\n" +
            "\n".join(lines[i:i + 240] for i in range(0, len(lines), 240)) + ">\nshowpage\n")
    with tempfile.TemporaryDirectory() as folder:
        page, picture = Path(folder, "page.ps"), Path(folder, "picture.jpg")
        page.write_text(text)
        subprocess.run(["gs", "-q", "-dSAFER", "-sDEVICE=jpeg", "-r72", f"-g{width}x{height}",
                        f"-dJPEGQ={quality}", "-o", str(picture), str(page)], check=True)
        return picture.read_bytes()


class Clouds:
    """Soft noise in several sizes, between 0 and 1."""

    def __init__(self, seed, sizes):
        chance = random.Random(seed)
        self.layers = [(n, share, [[chance.random() for _ in range(n + 2)] for _ in range(n + 2)])
                       for n, share in sizes]

    def at(self, u, v):
        total = 0.0
        for n, share, grid in self.layers:
            x, y = u * n, v * n
            i, j = int(x), int(y)
            x, y = x - i, y - j
            x, y = x * x * (3 - 2 * x), y * y * (3 - 2 * y)
            upper = grid[j][i] * (1 - x) + grid[j][i + 1] * x
            lower = grid[j + 1][i] * (1 - x) + grid[j + 1][i + 1] * x
            total += share * (upper * (1 - y) + lower * y)
        return total


def mixed(a, b, share):
    return tuple(x + (y - x) * share for x, y in zip(a, b))


def flattened(rows):
    return bytes(max(0, min(255, int(value))) for row in rows for pixel in row for value in pixel)


SKY_TOP, SKY_LOW, SUN = (92, 132, 190), (252, 214, 168), (255, 244, 214)
HILLS = [((148, 158, 186), 0.50, 0.10), ((104, 128, 140), 0.57, 0.13),
         ((70, 108, 84), 0.66, 0.12), ((86, 122, 52), 0.78, 0.08)]


def sky(u, v, clouds):
    base = mixed(SKY_TOP, SKY_LOW, min(1, v / 0.62))
    glow = math.exp(-((u - 0.68) ** 2 * 14 + (v - 0.40) ** 2 * 30))
    cover = max(0, clouds.at(u * 0.8, v * 0.99) - 0.52) * 2.2
    return mixed(mixed(base, SUN, glow), (255, 236, 224), min(0.75, cover))


def ground(u, v, layer, texture):
    colour, _, _ = HILLS[layer]
    depth = (0.10, 0.20, 0.36, 0.56)[layer]
    light = 1 + depth * (texture.at(u * 0.99, min(0.99, v)) - 0.5)
    if layer == len(HILLS) - 1:
        light *= 0.8 + 0.5 * (v - 0.7)
    return tuple(c * light for c in colour)


PHOTO = (1440, 900)


@lru_cache
def meadow(width, height):
    """Hills before an evening sky, with grain; RGB samples."""
    clouds = Clouds(3, [(3, .4), (7, .3), (16, .2), (40, .1)])
    texture = Clouds(8, [(12, .3), (40, .3), (110, .4)])
    ridges = [Clouds(20 + k, [(3, .6), (9, .28), (50, .12)]) for k in range(len(HILLS))]
    crests = [[low + swing * (ridges[k].at(x / width * .99, .5) - .5) * 2 for x in range(width)]
              for k, (_, low, swing) in enumerate(HILLS)]
    grain = random.Random(5)
    rows = []
    for y in range(height):
        row, v = [], y / height
        for x in range(width):
            u = x / width
            layers = [k for k in range(len(HILLS)) if v > crests[k][x]]
            pixel = ground(u, v, layers[-1], texture) if layers else sky(u, v, clouds)
            noise = grain.gauss(0, 2.5)
            row.append(tuple(value + noise for value in pixel))
        rows.append(row)
    return flattened(rows)


@lru_cache
def lights(width=720, height=480):
    """Out-of-focus lights between leaves; RGB samples."""
    backdrop = Clouds(11, [(3, .5), (8, .3), (25, .2)])
    chance = random.Random(17)
    rows = [[mixed((18, 44, 26), (96, 132, 58), backdrop.at(x / width, y / height))
             for x in range(width)] for y in range(height)]
    for _ in range(70):
        radius = chance.uniform(14, 52)
        left, top = chance.uniform(0, width), chance.uniform(0, height)
        colour = chance.choice([(255, 226, 150), (210, 240, 160), (255, 200, 190), (240, 250, 230)])
        strength = chance.uniform(.12, .45)
        for y in range(max(0, int(top - radius)), min(height, int(top + radius) + 1)):
            for x in range(max(0, int(left - radius)), min(width, int(left + radius) + 1)):
                away = math.hypot(x - left, y - top)
                cover = max(0, min(1, (radius - away) / 3)) * strength * (.7 + .3 * away / radius)
                if cover:
                    rows[y][x] = mixed(rows[y][x], colour, cover)
    grain = random.Random(6)
    return flattened([[tuple(v + grain.gauss(0, 3) for v in pixel) for pixel in row] for row in rows])


@lru_cache
def meadow_jpeg():
    return jpeg(*PHOTO, meadow(*PHOTO))


@lru_cache
def lights_jpeg():
    return jpeg(720, 480, lights())


def leaf_cover(x, y):
    """How far a point lies inside the leaf (negative outside), in units of its length."""
    if not -1 < y < 1:
        return -1.0
    t = (y + 1) / 2
    return 0.62 * math.sin(math.pi * t ** 0.72) * (1 - 0.18 * t) - abs(x)


@lru_cache
def leaf_samples(size):
    """A leaf with smooth edges and a soft shadow: its size, its colours, and how much it covers."""
    colours, cover = bytearray(), bytearray()
    for j in range(size):
        for i in range(size):
            x, y = (i - size / 2) / (size * .44), (j - size / 2) / (size * .44)
            x, y = x * .8 - y * .6, x * .6 + y * .8
            inside = max(0, min(1, leaf_cover(x, y) * size * .3 + .5))
            vein = math.exp(-(x * 55) ** 2) + .6 * math.exp(
                -(math.sin((y - abs(x) * .9) * 13) * 9) ** 2)
            colour = mixed((70, 140, 60), (196, 224, 150), min(1, vein) * .8)
            colour = mixed(colour, (40, 104, 56), max(0, min(1, .5 + x)))
            shade = max(0, min(1, leaf_cover(x - .06, y - .09) * 4 + .35)) * .35
            alpha = inside + (1 - inside) * shade
            mix = tuple(c * inside / alpha for c in colour) if alpha else (0, 0, 0)
            colours += bytes(int(c) for c in mix)
            cover.append(int(alpha * 255))
    return size, bytes(colours), bytes(cover)


def leaf_png():
    """The leaf on nothing."""
    size, colours, cover = leaf_samples(360)
    samples = b"".join(colours[3 * k:3 * k + 3] + cover[k:k + 1] for k in range(size * size))
    return png(size, size, samples, 4)


def meadow_png():
    """The picture of the examples: the meadow, small and with few shades so that it stays light."""
    samples = bytes(value & 0xf8 for value in meadow(480, 300))
    return png(480, 300, samples, 3)
