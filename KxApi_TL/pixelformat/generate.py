#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Makes the tables of the pixel formats from formats.tsv.

usage: generate.py          write KxPixelFormat.h and FormatTable.inc
       generate.py --check  exit code 1 if they are not what would be written
"""
import math
import os
import sys

FOLDER = os.path.dirname(os.path.abspath(__file__))
ENUM_FILE = os.path.join(FOLDER, "../include/KxApi_TL/KxPixelFormat.h")
TABLE_FILE = os.path.join(FOLDER, "FormatTable.inc")

COMPONENTS = {"L": "Mono", "R": "R", "G": "G", "B": "B", "Y": "Y", "Cb": "Cb", "Cr": "Cr", "U": "U", "V": "V",
              "a": "Alpha", "Conf": "Confidence", "Data": "Data", "CFA": "Mosaic", "C0": "Mosaic", "C1": "G"}
COORDINATES = {"A": "CoordA", "B": "CoordB", "C": "CoordC"}
# Deprecated codes of 16-bit formats whose size field tells the 10 or 12 bits of the value.
WRONG_SIZE = ("R10_Deprecated", "R12_Deprecated", "G10_Deprecated", "G12_Deprecated", "B10_Deprecated",
              "B12_Deprecated")
# Cells of the four-by-four mosaics, counted from 1 line by line, that are not white.
SCF1 = {"WBWG": {"G": (4, 7, 10, 13), "B": (2, 5), "R": (12, 15)},
        "WGWB": {"G": (2, 5, 12, 15), "B": (4, 7), "R": (10, 13)},
        "WRWG": {"G": (4, 7, 10, 13), "R": (2, 5), "B": (12, 15)},
        "WGWR": {"G": (2, 5, 12, 15), "R": (4, 7), "B": (10, 13)}}
BAYER_X = {"GR": "RG", "RG": "GR", "GB": "BG", "BG": "GB"}  # pattern seen from the next column
BAYER_Y = {"GR": "BG", "RG": "GB", "GB": "RG", "BG": "GR"}  # from the next line
POLARIZERS = ((90, 45), (135, 0))  # lines of the tile that repeats


def bayer_cell(pattern, x, y):
    other = BAYER_Y[pattern]
    letter = (pattern if y % 2 == 0 else other)[x % 2]
    if letter != "G":
        return letter
    return "Gr" if "R" in (pattern if y % 2 == 0 else other) else "Gb"


class Format:
    def __init__(self, line):
        self.name, code, components, packing, self.family, sequence = line.rstrip("\n").split("\t")
        self.code = int(code, 16)
        self.packing, _, self.planar = packing.partition(";")
        self.sequence = sequence.split() if sequence != "-" else []
        self.components = []  # (name, bits, number)
        for text in components.split(","):
            name, _, bits = text.partition(":")
            number = {"s": "Signed", "f": "Float"}.get(bits[-1], "Unsigned")
            self.components.append((name, int(bits.rstrip("sf")), number))
        self.place()

    def storage(self, bits):
        if self.packing == "unpacked" or self.packing == "aligned-32":
            return max(8, 1 << (bits - 1).bit_length())
        if self.packing == "gev-packed":
            return 12
        return bits

    def place(self):
        """Sets places (one per component: plane, pixels per group, bits per group, line shift, split bits, high and low
        bit offsets of the pixels in the group), bits per pixel over all planes and in the first plane, planes."""
        names = [component[0] for component in self.components]
        depths = [component[1] for component in self.components]
        stored = [self.storage(bits) for bits in depths]
        self.planes, self.divisor = 1, 1
        if self.planar.startswith("planar"):
            self.place_planar(depths, stored)
        elif self.planar:
            self.place_semiplanar(names, stored)
        elif self.packing in ("gev-packed", "gev-v1packed"):
            self.place_gev(depths)
        elif self.family.split(":")[0].startswith(("yuv", "ycbcr")):
            self.place_yuv(names, stored)
        else:
            bits = 32 if self.packing in ("lsb-packed-32", "aligned-32") else sum(stored)
            self.places = [(0, 1, bits, 0, 0, [sum(stored[:k])], [0]) for k in range(len(names))]
            self.bits = self.plane_bits = bits
        self.stored = max(stored)
        if self.packing == "gev-v1packed":
            self.stored = max(depths)

    def place_planar(self, depths, stored):
        self.planes = len(depths)
        self.plane_bits = stored[0]
        if self.family.endswith("4:2:0"):
            self.divisor = 2
            self.places = [(0, 1, 8, 0, 0, [0], [0])] + [(k, 2, 8, 1, 0, [0, 0], [0]) for k in (1, 2)]
            self.bits = 12
        else:
            self.places = [(k, 1, stored[k], 0, 0, [0], [0]) for k in range(self.planes)]
            self.bits = sum(stored)

    def place_semiplanar(self, names, stored):
        shift = 1 if self.family.endswith("4:2:0") else 0
        self.planes, self.plane_bits, self.bits = 2, stored[0], 12 if shift else 16
        # "CbCr interleaved plane" or "CrCb ..."
        order = [name for name in sorted(names[1:], key="".join(self.sequence).split("plane+")[1].find)]
        self.places = [(0, 1, stored[0], 0, 0, [0], [0])]
        self.places += [(1, 2, 16, shift, 0, [8 * order.index(name)] * 2, [0]) for name in names[1:]]

    def place_gev(self, depths):
        count = len(depths)
        if self.packing == "gev-v1packed" and depths[0] == 10:
            # One byte with the two low bits of each colour, then a byte with the high bits of each.
            self.places = [(0, 1, 32, 0, 2, [8 + 8 * k], [2 * k]) for k in range(count)]
            self.bits = self.plane_bits = 32
            return
        # Two samples in three bytes: high bits, low bits of both in one byte, high bits.
        low_bits = depths[0] - 8
        self.places = []
        for k in range(count):
            samples = [k, count + k]
            high = [24 * (s // 2) + 16 * (s % 2) for s in samples]
            low = [24 * (s // 2) + 8 + 4 * (s % 2) for s in samples]
            self.places.append((0, 2, 24 * count, 0, low_bits, high, low))
        self.bits = self.plane_bits = 12 * count

    def place_yuv(self, names, stored):
        pixels = {"4:4:4": 1, "4:2:2": 2, "4:1:1": 4}[self.family.partition(":")[2]]
        size = stored[0]
        self.places = []
        for name in names:
            offsets = [size * i for i, other in enumerate(self.sequence) if other == name]
            if len(offsets) not in (1, pixels):
                sys.exit(f"{self.name}: the order in memory does not fit the components")
            self.places.append((0, pixels, size * len(self.sequence), 0, 0,
                                offsets if len(offsets) == pixels else offsets * pixels, [0]))
        self.bits = self.plane_bits = size * len(self.sequence) // pixels

    def is_color(self):
        return self.family.startswith(("rgb", "bgr", "bayer", "yuv", "ycbcr", "bicolor", "scf1", "polar-bayer"))

    def is_single(self):
        return self.family in ("mono", "data", "confidence")

    def types(self):
        """Per component: name of the type, bits, kind of number."""
        for name, bits, number in self.components:
            table = COORDINATES if self.family.startswith("coord3D") else COMPONENTS
            yield table[name], bits, number

    def mosaic(self):
        """(period, cells) of the component "Mosaic"; each cell is (component, angle or None)."""
        kind, _, pattern = self.family.rpartition("-")
        if kind == "bayer":
            return 2, [(bayer_cell(pattern, x, y), None) for y in range(2) for x in range(2)]
        if kind == "bicolor":
            return 2, [(pattern[2 * x if pattern[2 * x] != "G" else 2 * x + 1], None) for _ in range(2)
                       for x in range(2)]
        if kind == "scf1":
            cells = [("W", None)] * 16
            for color, places in SCF1[pattern].items():
                for place in places:
                    cells[place - 1] = (color, None)
            return 4, cells
        if kind == "polar" and pattern == "mono":
            return 2, [("Mono", POLARIZERS[y][x]) for y in range(2) for x in range(2)]
        if kind == "polar-bayer":
            return 4, [(bayer_cell(pattern, x // 2, y // 2), POLARIZERS[y % 2][x % 2]) for y in range(4)
                       for x in range(4)]
        return 1, []

    def shifted(self):
        """(pixels, name seen that many columns on, name seen that many lines on) of a format whose pattern other
        formats tell at an offset, else None."""
        kind, _, pattern = self.family.rpartition("-")
        if kind in ("bayer", "polar-bayer"):
            replace = lambda other: self.name.replace("Bayer" + pattern, "Bayer" + other)
            return 2 if kind == "polar-bayer" else 1, replace(BAYER_X[pattern]), replace(BAYER_Y[pattern])
        if kind == "bicolor":
            return 1, self.name.replace(pattern, {"RGBG": "BGRG", "BGRG": "RGBG"}[pattern]), self.name
        return None

    def increments(self):
        if self.shifted():
            x = y = self.shifted()[0]
        elif self.family.startswith("scf1"):
            x = y = 4
        elif self.family == "polar-mono":
            x = y = 2
        else:
            x = max(place[1] for place in self.places) if ":" in self.family else 1
            y = 1 << max(place[3] for place in self.places)
        bytes_step = 8 // math.gcd(8, self.plane_bits)
        if self.packing == "gev-packed":
            bytes_step = 2
        return math.lcm(x, bytes_step), y


def read_formats():
    with open(os.path.join(FOLDER, "formats.tsv"), encoding="utf-8") as file:
        formats = [Format(line) for line in file if line.strip() and not line.startswith("#")]
    return sorted(formats, key=lambda f: f.code)


def enum_text(formats):
    width = max(len(f.name) for f in formats)
    lines = ["// SPDX-License-Identifier: Apache-2.0",
             "// Codes of the pixel formats. Made by pixelformat/generate.py.",
             "#pragma once", "", "#include <cstdint>", "", "namespace KxApi", "{", "",
             "/// A pixel format by its code of the GenICam Pixel Format Naming Convention: bit 31 set for codes that are",
             "/// not of the convention, bits 24 to 30 one component (1) or several (2), bits 16 to 23 the bits of a pixel.",
             "enum EKxPixelFormatNamingConvention_t : uint32_t", "{", "    // clang-format off",
             f"    {'KxPixelFormat_None'.ljust(width + 14)} = 0xFFFFFFFF, ///< no format"]
    lines += [f"    {('KxPixelFormat_' + f.name).ljust(width + 14)} = 0x{f.code:08X}," for f in formats]
    lines += ["    // clang-format on", "};", "", "} // namespace KxApi", ""]
    return "\n".join(lines)


def table_text(formats):
    index = {f.name: i for i, f in enumerate(formats)}
    layouts, mosaics, rows = [], [], []
    for f in formats:
        layout = (f.places, f.planes, f.divisor)
        if layout not in layouts:
            layouts.append(layout)
        mosaic = f.mosaic()
        if mosaic not in mosaics:
            mosaics.append(mosaic)
        pixels, over_x, over_y = f.shifted() or (1, f.name, f.name)
        types = [f"{{KxPixelComponent_{'Mono' if name == 'Mosaic' else name}, {bits}, KxPixelNumber_{number}, "
                 f"{str(name == 'Mosaic' or f.family == 'polar-mono').lower()}}}" for name, bits, number in f.types()]
        flags = [flag for flag, on in (("kColor", f.is_color()), ("kSingle", f.is_single()),
                                       ("kPolarized", f.family.startswith("polar")),
                                       ("kSizeFieldWrong", f.name in WRONG_SIZE)) if on] or ["0"]
        x, y = f.increments()
        # A window of the planar 4:2:0 format is copied line by line without gaps, so its lines must not be filled up.
        alignment = 1 if f.divisor > 1 else 4
        rows.append(f'    {{0x{f.code:08X}, "{f.name}", {" | ".join(flags)}, {f.bits}, {f.plane_bits}, {f.stored}, '
                    f'{max(c[1] for c in f.components)}, {x}, {y}, {alignment}, {pixels}, {index[over_x]}, '
                    f'{index[over_y]}, {layouts.index(layout)}, {mosaics.index(mosaic)}, {len(types)}, '
                    f'{{{", ".join(types)}}}}},')
    lines = ["// SPDX-License-Identifier: Apache-2.0",
             "// Tables of the pixel formats; FormatTable.h tells their columns. Made by generate.py.",
             "// clang-format off", "", "inline constexpr CPixelLayout kLayouts[] = {"]
    for places, planes, divisor in layouts:
        texts = []
        for plane, pixels, bits, line_shift, split, high, low in places:
            # All four entries are filled so that the place of a pixel never depends on what the group's size is.
            high, low = (high * 4)[:4], (low * 4)[:4]
            texts.append(f"{{{plane}, {pixels.bit_length() - 1}, {line_shift}, {split}, {bits}, "
                         f"{{{', '.join(map(str, high))}}}, {{{', '.join(map(str, low))}}}}}")
        lines.append(f"    {{{planes}, {divisor}, {{{', '.join(texts)}}}}},")
    lines += ["};", "", "inline constexpr CPixelMosaic kMosaics[] = {"]
    for period, cells in mosaics:
        texts = [f"{{KxPixelComponent_{name}, KxPolarization_{'None' if angle is None else angle}}}"
                 for name, angle in cells]
        lines.append(f"    {{{period}, {{{', '.join(texts)}}}}},")
    lines += ["};", "", "inline constexpr CPixelFormatRow kFormats[] = {"] + rows + ["};", ""]
    return "\n".join(lines)


def main():
    if sys.argv[1:] not in ([], ["--check"]):
        sys.exit(__doc__)
    formats = read_formats()
    stale = 0
    for path, text in ((ENUM_FILE, enum_text(formats)), (TABLE_FILE, table_text(formats))):
        if sys.argv[1:]:
            with open(path, encoding="utf-8") as file:
                if file.read() != text:
                    print(f"{os.path.normpath(path)} is not what formats.tsv says; run generate.py", file=sys.stderr)
                    stale = 1
        else:
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
    return stale


if __name__ == "__main__":
    sys.exit(main())
