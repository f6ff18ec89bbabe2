"""Games on small and large screens, at whole and broken scales, and on a monitor beside the primary one.

usage: screens.py PROGRAM SCREENSHOT_FOLDER
"""

from desktop import Screen, check, run, script, wait_for
from game import Game, check_same, solve

# Name, screen, scale, level, the cell of that level there. All pictures make three columns and two rows.
GAMES = [
    ("small", (800, 600), 1, 3, 55),
    ("dense", (3840, 2160), 2, 0, 88),
    ("broken", (1920, 1080), 1.5, 3, 66),
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


def start(game, cell):
    game.picture("foto pequena.jpg", f"{3 * cell - 8}x{2 * cell - 8}", "plasma:tomato-steelblue", "-seed", "7",
                 "-quality", "92")
    return game.start()


def play(game, name, level, cell, shots):
    game.start_picture(level)
    saved = game.save("jogo")
    check((len(saved.pieces), saved.cell) == (6, cell), f"{len(saved.pieces)} pieces of {saved.cell}, not 6 of {cell}")
    no_trails(game, game.center(saved, max(saved.pieces, key=lambda p: p["id"])))
    solve(game, saved)
    game.won(f"{shots}/{name}.png")
    game.end()
    print(f"{name}: won")


def main(program, shots):
    for name, size, scale, level, cell in GAMES:
        with Screen(*size) as screen:
            play(start(Game(screen, program, scale=scale), cell), name, level, cell, shots)
    # The primary monitor lies to the right of a larger one: windows open on it, and the board is that of the primary
    # screen, also where the window fills the other one.
    with Screen(2720, 1080) as screen:
        run("xrandr", "--setmonitor", "big", "1920/500x1080/280+0+0", "screen", env=screen.env)
        run("xrandr", "--setmonitor", "*small", "800/210x600/160+1920+200", "none", env=screen.env)
        game = start(Game(screen, program, primary=(800, 600)), 55)
        check(screen.place(game.window)[0] == 1920, "the window opened beside the primary monitor")
        screen.click(2220, screen.place(game.window)[1] - 10, times=2)  # the title
        wait_for(lambda: screen.place(game.window)[2] < 800, "the window to be restored")
        screen.xdo("windowmove", game.window, 200, 100)
        wait_for(lambda: screen.place(game.window)[0] <= 201, "the window on the other monitor")
        screen.click(500, screen.place(game.window)[1] - 10, times=2)
        wait_for(lambda: screen.place(game.window)[2] >= 1918, "the window to fill the other monitor")
        game.find_board()
        play(game, "monitors", 3, 55, shots)


if __name__ == "__main__":
    script(main)
