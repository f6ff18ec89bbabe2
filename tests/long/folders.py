"""A folder of 2,000 photographs: how soon the first thumbnail comes, how quickly the dialog answers while it fills,
how much memory the thumbnails take and give back.

usage: folders.py PROGRAM SCREENSHOT_FOLDER PHOTOGRAPHS_FOLDER [COUNT]
"""

from rough import *  # noqa: F403

FIRST_WITHIN = 0.5  # seconds from the dialog's appearing
BYTES_PER_THUMBNAIL = 109 * 100 * 4 + 4000  # the largest one, its path, tooltip and cell


def main(program, shots, photographs, count=2000):
    count = int(count)
    originals = sorted(os.path.join(photographs, name) for name in os.listdir(photographs))
    with Screen(1366, 768) as screen, Pointer(screen.env["DISPLAY"]) as pointer:
        game = Game(screen, program)
        os.makedirs(game.folder + "/Imagens")
        for number in range(count):
            os.symlink(os.path.abspath(originals[number % len(originals)]), f"{game.folder}/Imagens/foto {number:05}.jpg")
        game.start()
        before = memory(game)
        dialog = open_dialog(game)
        shown = time.monotonic()
        corner = frame_corner(game, dialog, 1)
        wait_for(lambda: pointer.pixel(*corner) == GREY, "the first thumbnail")
        first = time.monotonic() - shown
        answers = probe(game, pointer, dialog, 1.0 * count)
        after = memory(game)
        screen.screenshot(f"{shots}/folder.png")
        screen.key("alt+F4")
        screen.gone("Busca Imagens")
        left = memory(game)
        # Closing in mid-scan: the dialog goes at once and nothing goes on behind it.
        corner = frame_corner(game, open_dialog(game), 2)
        wait_for(lambda: pointer.pixel(*corner) == GREY, "the second thumbnail")
        screen.xdo("key", "alt+F4")
        since = time.monotonic()
        screen.gone("Busca Imagens")
        screen.settle()
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
