"""A folder of 2,000 photographs: how soon the first thumbnail comes, how quickly the dialog answers while it fills,
how much memory the thumbnails take and give back.

usage: folders.py PROGRAM SCREENSHOT_FOLDER PHOTOGRAPHS_FOLDER [COUNT]
"""

from rough import *  # noqa: F403

FIRST_WITHIN = 0.5  # seconds from the dialog's appearing
BYTES_PER_THUMBNAIL = 109 * 100 * 4 + 4000  # the largest one, its path, tooltip and cell


def begin_scan(game, number):
    """The dialog with so many thumbnails; the seconds that took."""
    dialog, shown = open_dialog(game), time.monotonic()
    corner = frame_corner(game, dialog, number)
    wait_for(lambda: game.screen.pixel(*corner) == GREY, "a thumbnail")
    return dialog, time.monotonic() - shown


def main(program, shots, photographs, count=2000):
    count, originals = int(count), sorted(os.listdir(photographs))
    with Screen(1366, 768) as screen:
        game = Game(screen, program)
        os.makedirs(game.folder + "/Imagens")
        for number in range(count):
            original = os.path.abspath(f"{photographs}/{originals[number % len(originals)]}")
            os.symlink(original, f"{game.folder}/Imagens/foto {number:05}.jpg")
        game.start()
        before = memory(game)
        dialog, first = begin_scan(game, 1)
        answers = probe(game, dialog, 1.0 * count)
        after = memory(game)
        screen.screenshot(f"{shots}/folder.png")
        close_dialog(game)
        left = memory(game)
        begin_scan(game, 2)
        since = time.monotonic()
        close_dialog(game)  # in mid-scan: nothing goes on behind it
        closed = time.monotonic() - since
        game.end()
    bound = count * BYTES_PER_THUMBNAIL / 2**20 + 16
    print(f"{count} photographs, {len(originals)} of them different; first thumbnail {1000 * first:.0f} ms after the "
          f"dialog\nmemory {before:.0f} MiB, with all thumbnails {after:.0f} MiB (at most {before + bound:.0f}), closed "
          f"{left:.0f} MiB; closed in mid-scan and at rest within {1000 * closed:.0f} ms")
    in_time(answers)
    check(first <= FIRST_WITHIN, "the first thumbnail is late")
    check(after - before <= bound, "memory grows by more than the thumbnails")
    check(left - before <= 10, "the closed dialog keeps memory")
    check(closed <= 2.0, "the dialog does not close at once, or the scan goes on behind it")


if __name__ == "__main__":
    script(main)
