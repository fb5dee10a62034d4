#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Draws the icons of the device tree into resqt/: `python3 draw_icons.py`.

Each is a picture of shapes on a 32 by 32 grid, later ones above earlier ones, written as a 32-bit bitmap with
transparency. What a module is shows in its shape, how it is connected in its colour: blue is the network, green the
universal serial bus, orange the coaxial cable.
"""
import math
import pathlib
import struct

SIZE = 32
SAMPLES = 8  # per pixel and direction

BLUE, GREEN, ORANGE = (38, 110, 190), (46, 139, 87), (214, 120, 30)
DARK, GREY, LIGHT, WHITE = (52, 60, 70), (120, 130, 142), (214, 220, 227), (250, 251, 252)
BOARD = (30, 110, 84)


def rect(x, y, w, h, r=0.0):
    def inside(px, py):
        dx = max(x + r - px, px - (x + w - r), 0)
        dy = max(y + r - py, py - (y + h - r), 0)
        return x <= px <= x + w and y <= py <= y + h and dx * dx + dy * dy <= r * r + 1e-9

    return inside


def circle(cx, cy, r):
    return lambda px, py: (px - cx) ** 2 + (py - cy) ** 2 <= r * r


def ring(cx, cy, r, width):
    return lambda px, py: (r - width) ** 2 <= (px - cx) ** 2 + (py - cy) ** 2 <= r * r


def line(x0, y0, x1, y1, width):
    length = math.hypot(x1 - x0, y1 - y0)

    def inside(px, py):
        t = max(0, min(1, ((px - x0) * (x1 - x0) + (py - y0) * (y1 - y0)) / length**2))
        return math.hypot(px - x0 - t * (x1 - x0), py - y0 - t * (y1 - y0)) <= width / 2

    return inside


def polygon(*points):
    def inside(px, py):
        odd = False
        for (x0, y0), (x1, y1) in zip(points, points[1:] + points[:1]):
            if (y0 > py) != (y1 > py) and px < x0 + (py - y0) * (x1 - x0) / (y1 - y0):
                odd = not odd
        return odd

    return inside


def camera(colour, plug):
    """A box with a lens to the left, and its plug with the cable at the back."""
    return [
        (rect(23, 13.5, 6, 5), colour),
        (line(29, 16, 31, 16, 2.4), colour),
        (rect(9, 8, 15, 16, 2), DARK),
        (rect(11, 10, 11, 3, 1), colour),
        (rect(2, 10, 8, 12, 1.5), GREY),
        (rect(2, 10, 2.5, 12, 1.2), LIGHT),
        (rect(12, 24, 9, 2.5), GREY),
    ] + plug


ICONS = {
    # A producer: the modules below it hang on one root.
    "genicam": [
        (line(16, 10, 16, 20, 2.2), GREY),
        (line(6, 20, 26, 20, 2.2), GREY),
        (line(6, 20, 6, 24, 2.2), GREY),
        (line(16, 20, 16, 24, 2.2), GREY),
        (line(26, 20, 26, 24, 2.2), GREY),
        (rect(8, 2, 16, 11, 2.5), DARK),
        (circle(16, 7.5, 3.8), LIGHT),
        (circle(16, 7.5, 2.2), DARK),
        (rect(2, 22.5, 8, 7.5, 1.8), BLUE),
        (rect(12, 22.5, 8, 7.5, 1.8), GREEN),
        (rect(22, 22.5, 8, 7.5, 1.8), ORANGE),
    ],
    # A frame grabber in its slot.
    "Board": [
        (rect(2, 3, 2.6, 26), GREY),
        (rect(4, 6, 26, 15, 1), BOARD),
        (rect(10, 21, 14, 4), (205, 165, 60)),
        *[(rect(11.6 + 3 * i, 21.5, 1, 3.5), BOARD) for i in range(4)],
        (rect(13, 9, 9, 9, 1), DARK),
        (rect(15, 11, 5, 5, 0.6), GREY),
        (circle(26, 10, 1.6), LIGHT),
        (circle(26, 16.5, 1.6), LIGHT),
        (rect(0.5, 8, 5.5, 4, 1.2), ORANGE),
        (rect(0.5, 15, 5.5, 4, 1.2), ORANGE),
    ],
    # A network socket.
    "Network": [
        (rect(3, 3, 26, 26, 3), BLUE),
        (polygon((7, 25), (7, 12), (11, 12), (11, 8), (21, 8), (21, 12), (25, 12), (25, 25)), WHITE),
        *[(rect(9.4 + 3.0 * i, 19, 1.4, 6), DARK) for i in range(5)],
    ],
    # A plug.
    "USB": [
        (rect(10, 2, 12, 10, 0.8), LIGHT),
        (rect(10.9, 2.9, 10.2, 9, 0.4), GREY),
        (rect(12.6, 5, 2.6, 3.4), WHITE),
        (rect(16.8, 5, 2.6, 3.4), WHITE),
        (rect(7, 11, 18, 14, 3), GREEN),
        (line(16, 25, 16, 31, 3.4), DARK),
        (circle(16, 18, 3), WHITE),
    ],
    "coaxpress": camera(ORANGE, [(ring(16.5, 18.5, 4, 1.3), ORANGE), (circle(16.5, 18.5, 1.4), WHITE)]),
    "gev": camera(
        BLUE,
        [
            (polygon((12.5, 22), (12.5, 17), (14.5, 17), (14.5, 15), (18.5, 15), (18.5, 17), (20.5, 17), (20.5, 22)), BLUE),
            *[(rect(13.6 + 1.9 * i, 19.5, 0.9, 2.5), WHITE) for i in range(4)],
        ],
    ),
    "usb3_vision": camera(
        GREEN,
        [
            (rect(13.5, 14.5, 6, 4, 0.4), LIGHT),
            (rect(12, 17.5, 9, 4.5, 1.2), GREEN),
            (circle(16.5, 19.8, 1.2), WHITE),
        ],
    ),
}


def pixel(shapes, x, y):
    """Colour and opacity, the mean of what the samples see."""
    red = green = blue = seen = 0
    for sample in range(SAMPLES * SAMPLES):
        px = x + (sample % SAMPLES + 0.5) / SAMPLES
        py = y + (sample // SAMPLES + 0.5) / SAMPLES
        colour = next((colour for inside, colour in reversed(shapes) if inside(px, py)), None)
        if colour:
            red, green, blue, seen = red + colour[0], green + colour[1], blue + colour[2], seen + 1
    if not seen:
        return 0, 0, 0, 0
    return round(blue / seen), round(green / seen), round(red / seen), round(255 * seen / SAMPLES**2)


def bitmap(shapes):
    """BITMAPV4HEADER with masks, rows from the bottom upwards."""
    pixels = b"".join(bytes(pixel(shapes, x, y)) for y in reversed(range(SIZE)) for x in range(SIZE))
    header = struct.pack("<IiiHHIIiiII", 108, SIZE, SIZE, 1, 32, 3, len(pixels), 2835, 2835, 0, 0)
    header += struct.pack("<4I4s48x", 0xFF0000, 0xFF00, 0xFF, 0xFF000000, b"BGRs")
    offset = 14 + len(header)
    return b"BM" + struct.pack("<IHHI", offset + len(pixels), 0, 0, offset) + header + pixels


if __name__ == "__main__":
    folder = pathlib.Path(__file__).parent / "resqt"
    for name, shapes in ICONS.items():
        (folder / f"{name}.bmp").write_bytes(bitmap(shapes))
