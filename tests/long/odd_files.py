"""Files that a player should never meet: huge, broken, lying about their size, or no files at all."""

import struct


def flat_jpeg(path, width, height, progressive=False):
    """A JPEG of one colour, 4:2:0, of any size, in few bytes: each block of it is one or two bits."""
    segment = lambda marker, body: b"\xff" + bytes((marker,)) + struct.pack(">H", len(body) + 2) + body
    one_code = bytes((1,) + (0,) * 15) + b"\0"  # a single code, the bit 0: the value 0
    head = b"\xff\xd8" + segment(0xDB, b"\0" + bytes((16,)) * 64)
    frame = struct.pack(">BHHB", 8, height, width, 3) + bytes((1, 0x22, 0, 2, 0x11, 0, 3, 0x11, 0))
    head += segment(0xC2 if progressive else 0xC0, frame)
    head += segment(0xC4, b"\x00" + one_code) + segment(0xC4, b"\x10" + one_code)
    head += segment(0xDA, bytes((3, 1, 0, 2, 0, 3, 0, 0, 0 if progressive else 63, 0)))
    units = ((width + 15) // 16) * ((height + 15) // 16)
    bits = units * 6 * (1 if progressive else 2)
    with open(path, "wb") as file:
        file.write(head)
        left = (bits + 7) // 8
        while left:
            part = min(left, 1 << 20)
            file.write(b"\0" * part)
            left -= part
        file.write(b"\xff\xd9")
    return path


def bmp_claiming(path, width, height, bits=24):
    """A bitmap's header without the pixels that it promises."""
    with open(path, "wb") as file:
        file.write(b"BM" + struct.pack("<IHHI", 0x7FFFFFFF, 0, 0, 54))
        file.write(struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, 0, 3780, 3780, 0, 0) + b"\x55" * 4000)
    return path


def gif_claiming(path, width, height):
    """A GIF whose first frame is that large and ends after a few pixels."""
    with open(path, "wb") as file:
        file.write(b"GIF89a" + struct.pack("<HHBBB", width, height, 0x80, 0, 0) + b"\0\0\0\xff\xff\xff")
        file.write(b"," + struct.pack("<HHHHB", 0, 0, width, height, 0) + b"\x02\x02\x4c\x01\0;")
    return path


def gradient_bmp(path, width, height, bits=24):
    """A whole bitmap of 24 or 32 bits, written row by row."""
    beside = (0,) * (bits // 8 - 3)
    across = bytes(value for x in range(width) for value in (x * 255 // width, 128, 255 - x * 255 // width, *beside))
    across += b"\0" * (-len(across) % 4)
    with open(path, "wb") as file:
        file.write(b"BM" + struct.pack("<IHHI", 54 + len(across) * height, 0, 0, 54))
        file.write(struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, len(across) * height, 3780, 3780, 0, 0))
        for _ in range(height):
            file.write(across)
    return path


def cut(source, target, bytes_kept):
    with open(source, "rb") as file:
        data = file.read(bytes_kept)
    with open(target, "wb") as file:
        file.write(data)
    return target
