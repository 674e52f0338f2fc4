#!/usr/bin/env python3
"""Draws pixelgrove-SIZE.png and pixelgrove.svg, the program's icon, from the grid below: one character a block
of pixels."""
import math
import pathlib
import re
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
SIZES = (16, 24, 32, 48, 64, 128, 256, 512)


def chunk(kind: bytes, data: bytes) -> bytes:
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def pixel(x: int, y: int, size: int) -> bytes:
    """The mean colour of what the pixel covers of the grid, in points that divide both evenly."""
    points = math.lcm(size, len(GRID))
    step, block = points // size, points // len(GRID)
    covered = [COLOURS[GRID[v // block][u // block]]
               for v in range(y * step, (y + 1) * step) for u in range(x * step, (x + 1) * step)]
    alpha = sum(c[3] for c in covered)
    if alpha == 0:
        return bytes(4)
    return bytes([*(round(sum(c[i] * c[3] for c in covered) / alpha) for i in range(3)),
                  round(alpha / len(covered))])


def svg() -> str:
    """A rectangle for each run of equal blocks; they overlap by nothing, so no seam shows at whole sizes."""
    side = len(GRID)
    rows = []
    for y, line in enumerate(GRID):
        for run in re.finditer(r"(.)\1*", line):
            red, green, blue, alpha = COLOURS[run[1]]
            if alpha:
                rows.append(f'<path fill="#{red:02x}{green:02x}{blue:02x}" '
                            f'd="M{run.start()} {y}h{len(run[0])}v1H{run.start()}z"/>')
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {side} {side}" shape-rendering="crispEdges">\n'
            + "\n".join(rows) + "\n</svg>\n")


def main() -> None:
    pathlib.Path(__file__).with_name("pixelgrove.svg").write_text(svg())
    for size in SIZES:
        rows = b"".join(b"\0" + b"".join(pixel(x, y, size) for x in range(size)) for y in range(size))
        png = b"\x89PNG\r\n\x1a\n"
        png += chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0))
        png += chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b"")
        pathlib.Path(__file__).with_name(f"pixelgrove-{size}.png").write_bytes(png)


if __name__ == "__main__":
    main()
