"""Pictures of the screen that Xvfb keeps in a file."""

import struct
import zlib


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


def write_png(path, width, height, rgb):
    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
    lines = b"".join(b"\0" + rgb[3 * width * y:3 * width * (y + 1)] for y in range(height))
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">2I5B", width, height, 8, 2, 0, 0, 0)) +
                   chunk(b"IDAT", zlib.compress(lines)) + chunk(b"IEND", b""))


def take_picture(screen, path):
    """Keeps what the screen shows as a PNG file."""
    write_png(path, *read_xwd(screen))
