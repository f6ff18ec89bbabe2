"""Pictures that a player should never meet: huge, or lying about their size."""

import struct

from rough import run


def flat_jpeg(path, width, height, progressive=False, passes=1):
    """A JPEG of one colour, 4:2:0, of any size, in few bytes: each block of it is one or two bits."""
    def segment(marker, body):
        return b"\xff" + bytes((marker,)) + struct.pack(">H", len(body) + 2) + body

    code = bytes((1,) + (0,) * 15) + b"\0"  # a single one, the bit 0: the value 0
    frame = struct.pack(">BHHB", 8, height, width, 3) + bytes((1, 0x22, 0, 2, 0x11, 0, 3, 0x11, 0))
    one_pass = segment(0xDA, bytes((3, 1, 0, 2, 0, 3, 0, 0, 0 if progressive else 63, 0)))
    bits = ((width + 15) // 16) * ((height + 15) // 16) * 6 * (1 if progressive else 2)
    with open(path, "wb") as file:
        file.write(b"\xff\xd8" + segment(0xDB, b"\0" + bytes((16,)) * 64))
        file.write(segment(0xC2 if progressive else 0xC0, frame) + segment(0xC4, b"\0" + code) + segment(0xC4, b"\x10" + code))
        file.write(one_pass + b"\0" * ((bits + 7) // 8) if passes == 1 else one_pass * passes)
        file.write(b"\xff\xd9")


def claim(path, kind, width, height, whole=False):
    """A picture of one pixel that says it is larger; as long as that, too, if `whole`."""
    at, form = {"bmp3": (18, "<ii"), "gif": (6, "<HH")}[kind]
    run("convert", "-size", "1x1", "xc:red", "-type", "TrueColor", f"{kind}:{path}")
    with open(path, "r+b") as file:
        file.seek(at)
        file.write(struct.pack(form, width, height))
        if whole:
            file.truncate(54 + (3 * width + 3) // 4 * 4 * height)
