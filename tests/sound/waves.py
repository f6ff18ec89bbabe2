"""The four waves as they must come out, and what a recording consists of."""

import os
import struct

NAMES = ("CLICK", "GIRO", "COMPLETE", "ROTATE")


def read_wave(path):
    """(rate, samples as 16-bit numbers) of a mono wave file of 8 or 16 bits."""
    with open(path, "rb") as file:
        data = file.read()
    at, rate, bits, body = 12, 0, 0, b""
    while at + 8 <= len(data):
        name, length = data[at:at + 4], struct.unpack_from("<I", data, at + 4)[0]
        if name == b"fmt ":
            _, channels, rate, _, _, bits = struct.unpack_from("<HHIIHH", data, at + 8)
            assert channels == 1
        elif name == b"data":
            body = data[at + 8:at + 8 + length]
        at += 8 + length + length % 2
    if bits == 16:
        return rate, list(struct.unpack(f"<{len(body) // 2}h", body))
    return rate, [(value - 128) * 256 for value in body]


def at_rate(samples, rate, wanted):
    """The same sound at another rate: straight lines between neighbours."""
    result = []
    for i in range(len(samples) * wanted // rate):
        place = i * rate / wanted
        left = min(int(place), len(samples) - 1)
        right = min(left + 1, len(samples) - 1)
        result.append(samples[left] + (samples[right] - samples[left]) * (place - left))
    return result


def references(folder, rate):
    files = {name: read_wave(os.path.join(folder, name.lower() + ".wav")) for name in NAMES}
    return {name: at_rate(samples, own, rate) for name, (own, samples) in files.items()}


class Heard:
    """A wave found in a recording, or a part of it: `length` of its samples, all of them if `whole`."""

    def __init__(self, name, length=0, whole=False):
        self.name, self.length, self.whole = name, length, whole

    def __repr__(self):
        return f"{self.name}{'' if self.whole else f' cut off after {self.length} samples'}"


def agreement(samples, at, reference, skipped, tolerance):
    """How many samples from `at` on are those of the reference behind its first `skipped`."""
    count = min(len(samples) - at, len(reference) - skipped)
    return next((i for i in range(count) if abs(samples[at + i] - reference[skipped + i]) > tolerance), count)


def find(samples, known, tolerance=4):
    """The waves in a recording, in order; what is none of them is named "?".

    A wave is found by its samples, all of them, not by its loudness. Silence before its first and behind its last
    sound belongs to it and to the pause alike.
    """
    heard, at = [], 0
    quiet = {name: next(i for i, s in enumerate(wave) if abs(s) > tolerance) for name, wave in known.items()}
    while at < len(samples):
        if abs(samples[at]) <= tolerance:
            at += 1
            continue
        count, name = max((agreement(samples, at, wave, quiet[name], tolerance), name) for name, wave in known.items())
        if count >= 20:
            length = quiet[name] + count
            heard.append(Heard(name, length, length >= len(known[name])))
            at += count
        else:
            heard.append(Heard("?"))
            while at < len(samples) and abs(samples[at]) > tolerance:
                at += 1
    return heard
