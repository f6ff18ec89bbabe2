"""Files that a player should never meet: huge, broken, lying about their size, or no files at all."""

import struct


def flat_jpeg(path, width, height, progressive=False, passes=1):
    """A JPEG of one colour, 4:2:0, of any size, in few bytes: each block of it is one or two bits."""
    segment = lambda marker, body: b"\xff" + bytes((marker,)) + struct.pack(">H", len(body) + 2) + body
    one_code = bytes((1,) + (0,) * 15) + b"\0"  # a single code, the bit 0: the value 0
    head = b"\xff\xd8" + segment(0xDB, b"\0" + bytes((16,)) * 64)
    frame = struct.pack(">BHHB", 8, height, width, 3) + bytes((1, 0x22, 0, 2, 0x11, 0, 3, 0x11, 0))
    head += segment(0xC2 if progressive else 0xC0, frame)
    head += segment(0xC4, b"\x00" + one_code) + segment(0xC4, b"\x10" + one_code)
    one_pass = segment(0xDA, bytes((3, 1, 0, 2, 0, 3, 0, 0, 0 if progressive else 63, 0)))
    bits = ((width + 15) // 16) * ((height + 15) // 16) * 6 * (1 if progressive else 2)
    with open(path, "wb") as file:
        file.write(head)
        if passes == 1:
            file.write(one_pass + b"\0" * ((bits + 7) // 8))
        file.write(one_pass * (passes - 1) + b"\xff\xd9")


def bmp(path, width, height, bits=24, whole=False):
    """A bitmap of that header; grey if `whole`, without the pixels that it promises if not."""
    row = b"\x55" * ((width * bits + 31) // 32 * 4)
    with open(path, "wb") as file:
        file.write(b"BM" + struct.pack("<IHHI", 0x7FFFFFFF, 0, 0, 54))
        file.write(struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, 0, 0, 3780, 3780, 0, 0))
        for _ in range(height if whole else 0):
            file.write(row)


def gif(path, width, height):
    """A GIF whose first frame is that large and ends after a few pixels."""
    with open(path, "wb") as file:
        file.write(b"GIF89a" + struct.pack("<HHBBB", width, height, 0x80, 0, 0) + b"\0\0\0\xff\xff\xff")
        file.write(b"," + struct.pack("<HHHHB", 0, 0, width, height, 0) + b"\x02\x02\x4c\x01\0;")
