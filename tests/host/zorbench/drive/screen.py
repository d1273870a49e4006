"""Pictures of the screen that Xvfb keeps in a file."""

import struct
import zlib

from waiting import wait_for

# So many looks in a row, some hundredths of a second apart, show the same when a window has been painted.
LOOKS_ALIKE = 8


def read_xwd(path):
    """Width, height and red, green and blue bytes of an X window dump with 32 bits a pixel, blue first."""
    with open(path, "rb") as file:
        content = file.read()
    header = struct.unpack_from(">25I", content)
    size, width, height, pixel_bits, line_bytes, colours = (header[i] for i in (0, 4, 5, 11, 12, 19))
    if pixel_bits != 32:
        raise ValueError(f"a screen of {pixel_bits} bits a pixel")
    start = size + 12 * colours
    rgb = bytearray(3 * width * height)
    for y in range(height):
        line = content[start + y * line_bytes:start + y * line_bytes + 4 * width]
        row = slice(3 * width * y, 3 * width * (y + 1))
        out = bytearray(3 * width)
        out[0::3], out[1::3], out[2::3] = line[2::4], line[1::4], line[0::4]
        rgb[row] = out
    return width, height, bytes(rgb)


def read_png(path):
    """Width, height and red, green and blue bytes of a PNG file of such bytes, with or without opacity."""
    with open(path, "rb") as file:
        content = file.read()
    width, height, bits, kind, _, _, interlace = struct.unpack_from(">2I5B", content, 16)
    if (bits, interlace) != (8, 0) or kind not in (2, 6):
        raise ValueError(f"{path} has no red, green and blue bytes")
    packed, place = b"", 8
    while place < len(content):
        size, name = struct.unpack_from(">I4s", content, place)
        if name == b"IDAT":
            packed += content[place + 8:place + 8 + size]
        place += 12 + size
    return width, height, unfiltered(zlib.decompress(packed), width, height, 3 if kind == 2 else 4)


def unfiltered(lines, width, height, channels):
    """Red, green and blue bytes of the lines of a PNG file, which hold differences to the neighbours."""
    size = channels * width
    above = bytearray(size)
    rgb = bytearray(3 * width * height)
    for y in range(height):
        kind, *line = lines[(size + 1) * y:(size + 1) * (y + 1)]
        for x in range(size):
            left, corner = (line[x - channels], above[x - channels]) if x >= channels else (0, 0)
            up = above[x]
            if kind == 1:
                guess = left
            elif kind == 2:
                guess = up
            elif kind == 3:
                guess = (left + up) // 2
            elif kind == 4:
                guess = min((left, up, corner), key=lambda near: abs(left + up - corner - near))
            else:
                break
            line[x] = (line[x] + guess) & 255
        above = line
        for channel in range(3):
            rgb[3 * width * y + channel:3 * width * (y + 1):3] = bytes(line[channel::channels])
    return bytes(rgb)


def write_png(path, width, height, pixels, palette=None):
    """The pixels are red, green and blue bytes, or the numbers of colours in a palette of such bytes."""
    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
    kind, size = (3, width) if palette else (2, 3 * width)
    lines = b"".join(b"\0" + pixels[size * y:size * (y + 1)] for y in range(height))
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">2I5B", width, height, 8, kind, 0, 0, 0)) +
                   (chunk(b"PLTE", palette) if palette else b"") + chunk(b"IDAT", zlib.compress(lines, 9)) +
                   chunk(b"IEND", b""))


def seen(screen, place):
    """Width, height and red, green and blue bytes of a place on the screen: left, top, width and height."""
    width, _, rgb = read_xwd(screen)
    left, top, columns, rows = place
    lines = (rgb[3 * (width * y + left):3 * (width * y + left + columns)] for y in range(top, top + rows))
    return columns, rows, b"".join(lines)


def still(screen, place):
    """What is seen of a place when nothing there changes any more."""
    alike = 0
    last = None

    def is_still():
        nonlocal alike, last
        now = seen(screen, place)
        alike = alike + 1 if now == last else 0
        last = now
        return alike >= LOOKS_ALIKE
    wait_for(is_still, f"the screen at {place} to be still")
    return last


def take_picture(screen, path):
    """Keeps what the screen shows as a PNG file."""
    write_png(path, *read_xwd(screen))
