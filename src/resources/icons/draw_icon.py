#!/usr/bin/env python3
"""Draws pixelgrove.png, the program's icon, from the grid below: one character a block of pixels."""
import pathlib
import struct
import zlib

GRID = """
..ssssssssssss..
.ssssssssssssss.
sssssssssssssyys
ssssssGGGsssyYYy
sssssGGgGGssyYYy
ssssGGgGGgGssyys
sssGGGGgGGGGssss
sssGgGGGGgGGsGGs
sssGGgGGgGGGGGgG
ssssGGGGGGGsGgGG
sGGssGbBGssssGGs
GgGGssbBsssssbBs
sbBsssbBsssssbBs
hhhhhhbBhhhhhbBh
.hhHhhbBhhHhhhh.
..hhhhhhhHhhhh..
""".split()
COLOURS = {
    ".": (0, 0, 0, 0),
    "s": (38, 48, 84, 255),
    "y": (240, 196, 92, 255),
    "Y": (255, 226, 140, 255),
    "G": (70, 160, 92, 255),
    "g": (120, 206, 122, 255),
    "b": (128, 88, 60, 255),
    "B": (98, 66, 46, 255),
    "h": (36, 92, 62, 255),
    "H": (58, 122, 78, 255),
}
BLOCK = 8


def chunk(kind: bytes, data: bytes) -> bytes:
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def main() -> None:
    side = len(GRID) * BLOCK
    rows = b""
    for line in GRID:
        row = b"\0" + b"".join(bytes(COLOURS[c]) * BLOCK for c in line)
        rows += row * BLOCK
    png = b"\x89PNG\r\n\x1a\n"
    png += chunk(b"IHDR", struct.pack(">IIBBBBB", side, side, 8, 6, 0, 0, 0))
    png += chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b"")
    pathlib.Path(__file__).with_name("pixelgrove.png").write_bytes(png)


if __name__ == "__main__":
    main()
