"""The four waves as they must come out, and what a recording consists of."""

import os
import struct
from array import array

LONGEST_GAP = 8820  # samples: 0.2 s
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
    """A wave found in a recording: from `start` to `end`, `length` of its samples, all of them if `whole`.

    `gap`: silent samples between its own, put in where the machine was too busy to deliver in time.
    """

    def __init__(self, name, start, end, whole, gap=0):
        self.name, self.start, self.end, self.whole, self.gap = name, start, end, whole, gap
        self.length = end - start - gap

    def __repr__(self):
        return f"{self.name}{'' if self.whole else ' cut off'}"


def _agreement(samples, at, reference, skipped, tolerance):
    """How many samples from `at` on are those of the reference behind its first `skipped`."""
    count = min(len(samples) - at, len(reference) - skipped)
    for i in range(count):
        if abs(samples[at + i] - reference[skipped + i]) > tolerance:
            return i
    return count


def _resumes(samples, at, reference, done, tolerance):
    """Where the wave goes on behind a gap, with its last `done` samples before it; None if it does not."""
    loud = next((i for i in range(at, min(at + LONGEST_GAP, len(samples))) if abs(samples[i]) > tolerance), None)
    begin = next((i for i in range(done, len(reference)) if abs(reference[i]) > tolerance), None)
    if loud is None or begin is None or loud <= at:
        return None
    place = loud - (begin - done)
    count = _agreement(samples, place, reference, done, tolerance)
    return place if place > at and count >= min(20 + begin - done, len(reference) - done) else None


def find(samples, known, first=0, tolerance=4):
    """The waves in a recording, in order; what is none of them is named "?".

    A wave is found by its samples, all of them, not by its loudness. Silence before its first and behind its last
    sound belongs to it and to the pause alike.
    """
    heard, at = [], first
    quiet = {name: next(i for i, s in enumerate(wave) if abs(s) > tolerance) for name, wave in known.items()}
    while at < len(samples):
        if abs(samples[at]) <= tolerance:
            at += 1
            continue
        best, length = None, 0
        for name, wave in known.items():
            count = _agreement(samples, at, wave, quiet[name], tolerance)
            if count > length:
                best, length = name, count
        if not best or length < 20:
            end = at
            while end < len(samples) and abs(samples[end]) > tolerance:
                end += 1
            heard.append(Heard("?", at, end, False))
            at = end
            continue
        wave, start, end, gap = known[best], at - quiet[best], at + length, 0
        while (again := _resumes(samples, end, wave, end - start - gap, tolerance)) is not None:
            gap += again - end
            end = again + _agreement(samples, again, wave, end - start - (gap - (again - end)), tolerance)
        heard.append(Heard(best, start, end, end - start - gap >= len(wave), gap))
        at = end
    return heard


def rough_likeness(samples, reference):
    """Cross-correlation at no shift, 1 for the same sound at any volume."""
    pairs = list(zip(samples, reference))
    above = sum(a * b for a, b in pairs)
    below = (sum(a * a for a, _ in pairs) * sum(b * b for _, b in pairs)) ** 0.5
    return above / below if below else 0.0
