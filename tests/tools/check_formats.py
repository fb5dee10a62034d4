#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Compares the converter with NumPy, every pixel format to RGB8, RGB16, Mono8 and Mono16.

usage: check_formats.py KX FORMATS.TSV

KX is the command-line tool, FORMATS.TSV the list that names the formats and their codes; all else about a format is
worked out here from its name, as the naming convention has it. Needs python3-numpy; not part of the plain test run.
Prints a line for each format, and exits with 1 when a value differs.
"""
import os
import re
import struct
import subprocess
import sys
import tempfile

import numpy as np

WIDTH, HEIGHT = 16, 6
DESTINATIONS = {"RGB8": (0x02180014, 8), "RGB16": (0x02300033, 16), "Mono8": (0x01080001, 8), "Mono16": (0x01100007, 16)}


def xxh64(data):
    p1, p2, p3, p4, p5 = (0x9E3779B185EBCA87, 0xC2B2AE3D27D4EB4F, 0x165667B19E3779F9, 0x85EBCA77C2B2AE63,
                          0x27D4EB2F165667C5)
    m = (1 << 64) - 1

    def rotl(x, r):
        return (x << r | x >> (64 - r)) & m

    def step(acc, lane):
        return rotl((acc + lane * p2) & m, 31) * p1 & m

    at = 0
    if len(data) >= 32:
        acc = [(p1 + p2) & m, p2, 0, -p1 & m]
        while at + 32 <= len(data):
            acc = [step(a, lane) for a, lane in zip(acc, struct.unpack_from("<4Q", data, at))]
            at += 32
        h = (rotl(acc[0], 1) + rotl(acc[1], 7) + rotl(acc[2], 12) + rotl(acc[3], 18)) & m
        for a in acc:
            h = ((h ^ step(0, a)) * p1 + p4) & m
    else:
        h = p5
    h = (h + len(data)) & m
    while at + 8 <= len(data):
        h = (rotl(h ^ step(0, struct.unpack_from("<Q", data, at)[0]), 27) * p1 + p4) & m
        at += 8
    if at + 4 <= len(data):
        h = (rotl(h ^ struct.unpack_from("<I", data, at)[0] * p1 & m, 23) * p2 + p3) & m
        at += 4
    for byte in data[at:]:
        h = rotl(h ^ byte * p5 & m, 11) * p1 & m
    h = (h ^ h >> 33) * p2 & m
    h = (h ^ h >> 29) * p3 & m
    return h ^ h >> 32


def write_raw(path, code, pitch, payload):
    header = struct.pack("<8sIIQQIIIIQ", b"KXRAW\r\n\x1a", 1, 1, len(payload), xxh64(payload), code, WIDTH, HEIGHT, 0, pitch)
    with open(path, "wb") as file:
        file.write(header + struct.pack("<Q", xxh64(header)) + payload)


def read_raw(path, channels, kind):
    data = open(path, "rb").read()
    code, width, height, _, pitch = struct.unpack_from("<IIIIQ", data, 32)
    lines = np.frombuffer(data, np.uint8, offset=64).reshape(height, pitch)
    size = np.dtype(kind).itemsize * channels * width
    return code, lines[:, :size].copy().view(kind).reshape(height, width, channels).astype(np.int64)


def stream(plane, bits):
    """Values of `bits` bits, one behind the other, the low bits first."""
    rows = np.unpackbits(plane, axis=1, bitorder="little")
    rows = rows[:, : rows.shape[1] // bits * bits].reshape(plane.shape[0], -1, bits)
    return (rows.astype(np.int64) << np.arange(bits)).sum(axis=2)


def halves(plane, bits):
    """Two values in three bytes, their low bits in the middle one."""
    b = plane.reshape(plane.shape[0], -1, 3).astype(np.int64)
    low = bits - 8
    mask = (1 << low) - 1
    first = b[:, :, 0] << low | b[:, :, 1] & mask
    second = b[:, :, 2] << low | b[:, :, 1] >> 4 & mask
    return np.stack([first, second], axis=2).reshape(plane.shape[0], -1)


def values(plane, bits, packing):
    if packing == "p":
        return stream(plane, bits)
    if packing == "Packed":
        return halves(plane, bits)
    storage = 8 if bits <= 8 else 16
    return stream(plane, storage) & ((1 << bits) - 1)


class Image:
    """Channels as arrays of whole numbers, all of `bits` bits."""

    def __init__(self, family, bits, channels):
        self.family, self.bits, self.channels = family, bits, channels


def line_bytes(bits):
    return WIDTH * bits // 8


def storage_bits(bits, packing):
    if packing == "p":
        return bits
    return 12 if packing == "Packed" else (8 if bits <= 8 else 16)


def planes_of(data, *plan):
    """Takes (lines, bytes) planes out of the data."""
    at, planes = 0, []
    for lines, size in plan:
        planes.append(data[at: at + lines * size].reshape(lines, size))
        at += lines * size
    return planes


def decode_single(name, match, data):
    bits, packing = int(match["bits"]), match["packing"] or ""
    if packing == "f":
        size = line_bytes(bits)
        reals = np.frombuffer(data[: HEIGHT * size].tobytes(), "<f4" if bits == 32 else "<f8").reshape(HEIGHT, WIDTH)
        return size, Image("real", 16, [reals])
    size = line_bytes(storage_bits(bits, packing if packing != "s" else ""))
    v = values(planes_of(data, (HEIGHT, size))[0], bits, "" if packing == "s" else packing)
    if packing == "s":  # two's complement: the middle of the range is 0
        v = v ^ 1 << (bits - 1)
    return size, Image("mono", bits, [v])


def decode_points(name, match, data):
    bits, packing, count = int(match["bits"]), match["packing"] or "", len(match["axes"])
    if packing == "f":
        kind, unit = ("<f4", 4) if bits == 32 else ("<f8", 8)
        reals = np.frombuffer(data[: HEIGHT * WIDTH * unit * count].tobytes(), kind)
        if match["planar"]:
            return WIDTH * unit, Image("real", 16, [reals.reshape(count, HEIGHT, WIDTH)[-1]])
        return WIDTH * unit * count, Image("real", 16, [reals.reshape(HEIGHT, WIDTH, count)[:, :, -1]])
    unit = line_bytes(storage_bits(bits, packing))
    if match["planar"]:
        plane = planes_of(data, *[(HEIGHT, unit)] * count)[-1]
        return unit, Image("mono", bits, [values(plane, bits, packing)])
    v = values(planes_of(data, (HEIGHT, unit * count))[0], bits, packing)
    return unit * count, Image("mono", bits, [v[:, count - 1:: count]])


def decode_rgb(name, match, data):
    order = {"RGB": "RGB", "BGR": "BGR", "RGBa": "RGBA", "BGRa": "BGRA"}[match["order"]]
    bits, packing = int(match["bits"]), match["packing"] or ""
    if name in ("RGB565p", "BGR565p"):
        words = stream(planes_of(data, (HEIGHT, 2 * WIDTH))[0], 16)
        low, green, high = words & 31, words >> 5 & 63, words >> 11
        spread = {"l": low << 3 | low >> 2, "g": green << 2 | green >> 4, "h": high << 3 | high >> 2}
        return 2 * WIDTH, Image("rgb", 8, [spread[c] for c in ("lgh" if order == "RGB" else "hgl")])
    if packing == "p32":
        words = stream(planes_of(data, (HEIGHT, 4 * WIDTH))[0], 32)
        return 4 * WIDTH, Image("rgb", 10, [words >> 10 * order.index(c) & 1023 for c in "RGB"])
    if packing == "a32":
        v = planes_of(data, (HEIGHT, 4 * WIDTH))[0].reshape(HEIGHT, WIDTH, 4).astype(np.int64)
        return 4 * WIDTH, Image("rgb", 8, [v[:, :, order.index(c)] for c in "RGB"])
    if name == "RGB10V1Packed":  # a byte with the low bits of all, then a byte with the high ones of each
        v = planes_of(data, (HEIGHT, 4 * WIDTH))[0].reshape(HEIGHT, WIDTH, 4).astype(np.int64)
        return 4 * WIDTH, Image("rgb", 10, [v[:, :, 1 + k] << 2 | v[:, :, 0] >> 2 * k & 3 for k in range(3)])
    if name == "RGB12V1Packed":
        size = line_bytes(36)
        v = halves(planes_of(data, (HEIGHT, size))[0], 12)
        return size, Image("rgb", 12, [v[:, k::3] for k in range(3)])
    unit = line_bytes(storage_bits(bits, packing))
    if match["planar"]:
        planes = planes_of(data, *[(HEIGHT, unit)] * 3)
        return unit, Image("rgb", bits, [values(plane, bits, packing) for plane in planes])
    v = values(planes_of(data, (HEIGHT, unit * len(order)))[0], bits, packing)
    return unit * len(order), Image("rgb", bits, [v[:, order.index(c):: len(order)] for c in "RGB"])


ORDERS = {  # of the values of a group of pixels, by sub-sampling and what the name ends with
    ("444", ""): "YUV", ("444", "UYV"): "UYV", ("444", "CbYCr"): "UYV",
    ("422", ""): "YUYV", ("422", "UYVY"): "UYVY", ("422", "CbYCrY"): "UYVY",
    ("411", ""): "YYUYYV", ("411", "UYYVYY"): "UYYVYY", ("411", "CbYYCrYY"): "UYYVYY"}


def decode_ycc(name, match, data):
    bits, packing = int(match["bits"]), match["packing"] or ""
    kind = match["kind"] or ""
    if "420" in name or "Semiplanar" in name:
        half = 2 if "420" in name else 1
        if name.endswith("Semiplanar"):
            luma, chroma = planes_of(data, (HEIGHT, WIDTH), (HEIGHT // half, WIDTH))
            u, v = (chroma[:, 0::2], chroma[:, 1::2]) if "_CbCr_" in name else (chroma[:, 1::2], chroma[:, 0::2])
        else:
            luma, u, v = planes_of(data, (HEIGHT, WIDTH), (HEIGHT // 2, WIDTH // 2), (HEIGHT // 2, WIDTH // 2))
        grow = [c.astype(np.int64).repeat(half, axis=0).repeat(2, axis=1) for c in (u, v)]
        return WIDTH, Image("ycc" + kind, 8, [luma.astype(np.int64)] + grow)
    order = ORDERS[match["sub"] or "444", match["order"] or ""]
    share = order.count("Y")
    size = line_bytes(storage_bits(bits, packing)) * len(order) // share
    v = values(planes_of(data, (HEIGHT, size))[0], bits, packing).reshape(HEIGHT, WIDTH // share, len(order))
    luma = v[:, :, [i for i, c in enumerate(order) if c == "Y"]].reshape(HEIGHT, WIDTH)
    return size, Image("ycc" + kind, bits, [luma] + [v[:, :, order.index(c)].repeat(share, axis=1) for c in "UV"])


GRAMMAR = [
    (r"(?:Polarized)?(?:Mono|Bayer(?:GR|RG|GB|BG))(?P<bits>\d+)(?P<packing>p|Packed|s)?", decode_single),
    (r"(?:R|G|B|Data|Confidence)(?P<bits>\d+)(?P<packing>p|s|f)?(?:_Deprecated)?", decode_single),
    (r"Coord3D_(?P<axes>ABC|AC|A|B|C)(?P<bits>\d+)(?P<packing>p|f)?(?P<planar>_Planar)?", decode_points),
    (r"(?P<order>RGBa|BGRa|RGB|BGR)(?P<bits>\d+)(?P<packing>p32|a32|p|V1Packed)?(?P<planar>_Planar)?", decode_rgb),
    (r"(?:YUV|YCbCr)(?P<kind>601_|709_|2020_)?(?P<sub>4[124][012])?_?(?P<bits>\d+)(?P<packing>p)?"
     r"(?:_(?P<order>UYVY|UYV|UYYVYY|CbYCrY|CbYCr|CbYYCrYY))?(?:_Planar|_YY_.*)?", decode_ycc),
]


def decode(name, data):
    for pattern, function in GRAMMAR:
        match = re.fullmatch(pattern, name)
        if match and (function == decode_rgb or int(match["bits"]) <= 16 or match["packing"] == "f"):
            return function(name, match.groupdict() | {"axes": match.groupdict().get("axes") or ""}, data)
    return None


def with_depth(v, source, target):
    if target <= source:
        return v >> (source - target)
    result, bits = v, source
    while bits < target:
        result, bits = result << source | v, bits + source
    return result >> (bits - target)


def spread_reals(reals):
    finite = np.isfinite(reals)
    reals = reals.astype(np.float64)
    least, greatest = reals[finite].min(), reals[finite].max()
    with np.errstate(invalid="ignore", over="ignore"):
        scaled = np.floor(np.clip(1.5 + (reals - least) * (65534 / (greatest - least)), 1, 65535))
    return np.where(finite, scaled, 0).astype(np.int64)


def rgb_of_ycc(image):
    y, u, v = image.channels
    unit, most = 1 << (image.bits - 8), (1 << image.bits) - 1
    red, blue = {"601_": (0.299, 0.114), "": (0.299, 0.114), "709_": (0.2126, 0.0722), "2020_": (0.2627, 0.0593)}[
        image.family[3:]]
    full = image.family == "ycc"
    luma, chroma = (1, 2) if full else (most / (219 * unit), 2 * most / (224 * unit))
    green = 1 - red - blue

    def fixed(factor):
        return int(np.floor(factor * 65536 + 0.5))

    light = (y - (0 if full else 16 * unit)) * fixed(luma) + 32768
    u, v = u - 128 * unit, v - 128 * unit
    sums = [light + v * fixed((1 - red) * chroma),
            light + u * -fixed((1 - blue) * blue / green * chroma) + v * -fixed((1 - red) * red / green * chroma),
            light + u * fixed((1 - blue) * chroma)]
    return [np.clip(s >> 16, 0, most) for s in sums], np.clip(light >> 16, 0, most)


def expected(image, bits, is_color):
    if image.family == "real":
        grey, source = spread_reals(image.channels[0]), 16
    else:
        grey, source = image.channels[0], image.bits
    if image.family in ("real", "mono"):
        grey = with_depth(grey, source, bits)
        return np.stack([grey] * 3, axis=2) if is_color else grey[:, :, None]
    if image.family.startswith("ycc"):
        rgb, luma = rgb_of_ycc(image)
    else:
        rgb = image.channels
        if bits < source:  # only moved, so that the low bits are cut first
            rgb, source = [with_depth(c, source, bits) for c in rgb], bits
        luma = (9798 * rgb[0] + 19235 * rgb[1] + 3735 * rgb[2] + 16384) >> 15
    result = rgb if is_color else [luma]
    return np.stack([with_depth(c, source, bits) for c in result], axis=2)


def main():
    kx, formats = sys.argv[1:3]
    random = np.random.default_rng(1)
    failures = checked = 0
    with tempfile.TemporaryDirectory() as folder:
        source, target = os.path.join(folder, "in.kxraw"), os.path.join(folder, "out.kxraw")
        for row in open(formats, encoding="ascii"):
            if row.startswith("#"):
                continue
            name, code = row.split("\t")[:2]
            data = random.integers(0, 256, WIDTH * HEIGHT * 24, dtype=np.uint8)
            if re.search(r"(32|64)f", name):  # numbers of one size, and some that are none
                kind = "<f4" if "32f" in name else "<f8"
                reals = random.normal(1000, 50, WIDTH * HEIGHT * 3).astype(kind)
                reals[::17], reals[::23] = np.inf, np.nan
                data[:] = np.resize(np.frombuffer(reals.tobytes(), np.uint8), data.size)
            decoded = decode(name, data)
            results = []
            for destination, (wanted, bits) in DESTINATIONS.items():
                pitch, image = decoded or (WIDTH, None)
                planes = np.frombuffer(data.tobytes(), np.uint8)
                size = int(pitch * HEIGHT * plane_factor(name))
                write_raw(source, int(code, 16), pitch, planes[:size].tobytes())
                run = subprocess.run([kx, "convert", source, target, "--format", destination, "--bayer", "off"],
                                     capture_output=True, text=True, check=False)
                if run.returncode != 0:
                    results.append("refused")
                    failures += decoded is not None and "can't be converted" not in run.stderr
                    continue
                color = destination.startswith("RGB")
                found, pixels = read_raw(target, 3 if color else 1, np.uint8 if bits == 8 else "<u2")
                differing = int((pixels != expected(image, bits, color)).sum()) if image else -1
                checked += 1
                failures += differing != 0 or found != wanted
                results.append("equal" if differing == 0 else f"{differing} differ")
            print(f"{name:34} {' '.join(f'{r:10}' for r in results)}")
    print(f"{checked} conversions compared, {failures} failures")
    return failures != 0


def plane_factor(name):
    if "Semiplanar" in name:
        return 1.5 if "420" in name else 2
    if name == "YUV420_8_Planar":
        return 1.5
    if name.endswith("_Planar"):
        return 2 if "_AC" in name else 3
    return 1


if __name__ == "__main__":
    sys.exit(main())
