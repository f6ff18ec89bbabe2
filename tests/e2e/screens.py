"""Games on small and large screens, at whole and broken scales, and on a monitor beside the primary one.

usage: screens.py PROGRAM SCREENSHOT_FOLDER [NAME...]
"""

from concurrent.futures import ThreadPoolExecutor

from desktop import Failure, Screen, check, run, script, wait_for
from game import Game, solve

# Name, screen, scale, level, the cell of that level there. All pictures make three columns and two rows.
GAMES = [
    ("small", (800, 600), 1, 3, 55),
    ("dense", (3840, 2160), 2, 0, 88),
    ("broken", (1920, 1080), 1.5, 3, 66),
]


def without(screen, skip):
    data, width = screen.bytes(), screen.width
    left, top, right, bottom = (round(v) for v in skip)
    rows = [data[3 * width * y:3 * width * (y + 1)] for y in range(screen.height)]
    return [row if not top <= y < bottom else row[:3 * left] + row[3 * right:] for y, row in enumerate(rows)]


def changed(before, after, scale):
    """The rows that differ. At a broken scale the stretch of a part rounds its shades a little differently."""
    bound = 0 if scale == int(scale) else 4
    return [y for y, (a, b) in enumerate(zip(before, after))
            if a != b and max(abs(p - q) for p, q in zip(a, b)) > bound]


def no_trails(game, saved):
    """A piece carried about and back leaves the screen as it was, and as a fresh paint shows it."""
    screen, s = game.screen, game.scale
    x, y, width, height = screen.place(game.window)
    panel = (x + width - 200 * s, y + height - 180 * s, x + width, y + height)
    piece = max(saved.pieces, key=lambda p: p["id"])
    at = game.center(saved, piece)
    screen.click(*at)  # on top from here on
    screen.move(x + 5, y + 3)
    before = without(screen, panel)
    screen.move(*at)
    screen.press()
    for dx, dy in ((-37, 21), (-83, 55), (-40, 130), (31, 97), (90, 33), (51, -7), (13, 5), (0, 0)):
        screen.move(at[0] + dx * s, at[1] + dy * s)
    screen.release()
    screen.move(x + 5, y + 3)
    after = without(screen, panel)
    rows = changed(before, after, s)
    check(not rows, f"a drag left trails in the rows {rows[:20]}")
    if height > game.primary[1]:
        return  # the bar's range is shorter than the way there and back
    screen.click(*at, button=5)
    screen.click(*at, button=4)
    screen.move(x + 5, y + 3)
    rows = changed(after, without(screen, panel), s)
    check(not rows, f"a fresh paint differs in the rows {rows[:20]}")


def start(game, cell):
    game.picture("foto pequena.jpg", f"{3 * cell - 8}x{2 * cell - 8}", "plasma:tomato-steelblue", "-seed", "7",
                 "-quality", "92")
    return game.start()


def touching(saved):
    """Whether neighbours lie a cell apart and turned alike: on small screens the scatter can join two by chance, and a
    player who carries one carries both."""
    def apart(p, q, across, down):
        return sorted((abs(p[across] - q[across]), abs(p[down] - q[down])))

    return any(p["rotation"] == q["rotation"] and apart(p, q, "col", "row") == [0, 1] and
               apart(p, q, "x", "y") == [0, saved.cell] for p in saved.pieces for q in saved.pieces)


def play(game, name, level, cell, shots):
    screen = game.screen
    game.start_picture(level, shot=f"{shots}/{name}-1-dialog.png")
    saved = game.save("jogo")
    while touching(saved):
        game.answer_restart("alt+s")
        saved = game.save("jogo")
    check((len(saved.pieces), saved.cell) == (6, cell), f"{len(saved.pieces)} pieces of {saved.cell}, not 6 of {cell}")
    no_trails(game, saved)
    screen.screenshot(f"{shots}/{name}-2-scattered.png")
    solve(game, saved, left=1)
    check(not screen.has_window("Parabéns!!"), "won with a piece still out of place")
    solve(game, saved, done=5)
    game.won(f"{shots}/{name}-3-complete.png")
    game.end()


def two_monitors(program, shots):
    """The primary monitor lies to the right of a larger one: windows open on it, and the board is that of the primary
    screen, also where the window fills the other one."""
    with Screen(2720, 1080) as screen:
        run("xrandr", "--setmonitor", "big", "1920/500x1080/280+0+0", "screen", env=screen.env)
        run("xrandr", "--setmonitor", "*small", "800/210x600/160+1920+200", "none", env=screen.env)
        game = start(Game(screen, program, primary=(800, 600)), 55)
        check(screen.place(game.window)[0] == 1920, "the window opened beside the primary monitor")
        title = lambda: (screen.place(game.window)[0] + 300, screen.place(game.window)[1] - 10)
        screen.click(*title(), times=2)
        wait_for(lambda: screen.place(game.window)[2] < 800, "the window to be restored")
        screen.xdo("windowmove", game.window, 200, 100)
        wait_for(lambda: screen.place(game.window)[0] <= 201, "the window on the other monitor")
        screen.click(*title(), times=2)
        wait_for(lambda: screen.place(game.window)[2] >= 1918, "the window to fill the other monitor")
        screen.screenshot(f"{shots}/monitors-0-before.png")
        game.find_board()
        play(game, "monitors", 3, 55, shots)


def one_screen(program, shots, name, size, scale, level, cell):
    with Screen(*size) as screen:
        play(start(Game(screen, program, scale=scale), cell), name, level, cell, shots)


def main(program, shots, *wanted):
    games = [(f"{name}: {size[0]}x{size[1]}, scale {scale}, level {level}", one_screen, (name, size, scale, level, cell))
             for name, size, scale, level, cell in GAMES] + [("monitors: 800x600 beside 1920x1080", two_monitors, ())]
    wrong = []
    with ThreadPoolExecutor(3) as pool:  # most of a game is waiting
        running = [(title, pool.submit(game, program, shots, *more)) for title, game, more in games
                   if not wanted or title.split(":")[0] in wanted]
        for title, game in running:
            try:
                game.result()
                print(f"{title}: won")
            except Failure as failure:
                wrong.append(f"{title}: {failure}")
    check(not wrong, "\n".join(wrong))


if __name__ == "__main__":
    script(main)
