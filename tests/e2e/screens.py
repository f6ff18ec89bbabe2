"""Games on small and large screens, at whole and broken scales, and on a monitor beside the primary one.

usage: screens.py PROGRAM SCREENSHOT_FOLDER
"""

import re

from desktop import Screen, check, run, script
from game import Game, check_same, solve

# Name, screen, scale, level, the cell of that level there, the primary monitor if it is not the whole screen.
GAMES = [
    ("small", (800, 600), 1, 3, 55, None),
    ("dense", (3840, 2160), 2, 0, 88, None),
    ("broken", (1920, 1080), 1.5, 3, 66, None),
    ("monitors", (2720, 1080), 1, 3, 55, (800, 600)),
]


def no_trails(game, piece):
    """A piece carried about and back leaves the board as it was."""
    game.screen.click(*piece)  # on top from here on
    game.screen.move(game.origin[0] + 5, 3)
    before = game.shown()
    game.screen.move(*piece)
    game.screen.press()
    for dx, dy in ((-37, 21), (-83, 55), (-40, 130), (31, 97), (90, 33), (51, -7), (13, 5), (0, 0)):
        game.screen.move(piece[0] + dx * game.scale, piece[1] + dy * game.scale)
    game.screen.release()
    game.screen.move(game.origin[0] + 5, 3)
    # At a broken scale the stretch of a part rounds its shades a little differently.
    check_same(before, game.shown(), "a drag left trails", 0 if game.scale == int(game.scale) else 4)


def one_decoder(game):
    """The toolkit has many plug-ins for images and asks all it knows about its own icons; a JPEG needs one."""
    with open(f"/proc/{game.process.pid}/maps", encoding="utf-8") as file:
        loaded = set(re.findall(r"/imageformats/(\w+)", file.read()))
    check(loaded == {"libqjpeg"}, f"decoders: {loaded}")


def main(program, shots):
    for name, size, scale, level, cell, primary in GAMES:
        with Screen(*size) as screen:
            if primary:  # to the right of a larger one
                run("xrandr", "--setmonitor", "big", "1920/500x1080/280+0+0", "screen", env=screen.env)
                run("xrandr", "--setmonitor", "*small", "800/210x600/160+1920+200", "none", env=screen.env)
            game = Game(screen, program, scale=scale, primary=primary)
            game.picture("foto pequena.jpg", f"{3 * cell - 8}x{2 * cell - 8}", "plasma:tomato-steelblue", "-seed", "7")
            game.start()
            check(screen.place(game.window)[0] == size[0] - game.primary[0], "the window beside the primary monitor")
            game.start_picture(level)
            saved = game.save("jogo")
            check((len(saved.pieces), saved.cell) == (6, cell), f"{len(saved.pieces)} pieces of {saved.cell}")
            one_decoder(game)
            no_trails(game, game.center(saved, max(saved.pieces, key=lambda p: p["id"])))
            solve(game, saved)
            game.won(f"{shots}/{name}.png")
            game.end()
        print(f"{name}: won")


if __name__ == "__main__":
    script(main)
