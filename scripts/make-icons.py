#!/usr/bin/env python3
"""Draws the menu's icons into assets/icons: 168 a folder, 169 a report, 170 a picture. 16 x 16 pixels, 32 bits."""
import os
import struct

SIZE = 16
CLEAR, EDGE, FOLDER, PAPER, INK, SKY, RING = (
    (0, 0, 0, 0), (96, 72, 16, 255), (248, 208, 96, 255), (255, 255, 255, 255), (72, 72, 72, 255),
    (24, 32, 72, 255), (96, 208, 255, 255))


def folder(x, y):
    if y == 3 and 1 <= x <= 6 or y == 4 and (x in (1, 6) or 7 <= x <= 14) or y == 13 and 1 <= x <= 14:
        return EDGE
    if 5 <= y <= 12 and x in (1, 14) or y == 6 and 1 <= x <= 14:
        return EDGE
    return FOLDER if 4 <= y <= 12 and 2 <= x <= 13 else CLEAR


def report(x, y):
    if not (2 <= x <= 13 and 1 <= y <= 14):
        return CLEAR
    if x in (2, 13) or y in (1, 14):
        return INK
    return INK if y % 3 == 1 and 4 <= x <= 11 else PAPER


def picture(x, y):
    if not (1 <= x <= 14 and 1 <= y <= 14):
        return CLEAR
    if x in (1, 14) or y in (1, 14):
        return INK
    distance = (x - 7.5) ** 2 + (y - 7.5) ** 2
    return RING if 4 < distance < 10 or 18 < distance < 28 else SKY


def icon(pixel):
    rows = b"".join(struct.pack("4B", b, g, r, a) for y in reversed(range(SIZE)) for x in range(SIZE)
                    for r, g, b, a in [pixel(x, y)])
    # One bit a pixel, set where nothing is drawn, rows of four bytes.
    mask = b"".join(struct.pack(">I", sum((pixel(x, y)[3] == 0) << (31 - x) for x in range(SIZE)))
                    for y in reversed(range(SIZE)))
    image = struct.pack("<IiiHHIIiiII", 40, SIZE, 2 * SIZE, 1, 32, 0, len(rows) + len(mask), 0, 0, 0, 0) + rows + mask
    return struct.pack("<HHHBBBBHHII", 0, 1, 1, SIZE, SIZE, 0, 0, 1, 32, len(image), 22) + image


folder_path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "assets", "icons")
for number, pixel in ((168, folder), (169, report), (170, picture)):
    with open(os.path.join(folder_path, "%d.ico" % number), "wb") as file:
        file.write(icon(pixel))
