"""The whole program on one screen: choosing, playing, saving, switches, small windows, giving up, the next run, the
picture on the board, sound, and all of it without a window manager.

usage: whole_game.py PROGRAM SCREENSHOT_FOLDER
"""

from desktop import Screen, check, run, script, wait_for
from game import Game, solve

BOUND = 6.0  # of 255: what filters and conversions may make of a colour; another picture is more than 20 apart


def mean_difference(pairs):
    return sum(abs(a - b) for one, other in pairs for a, b in zip(one, other)) / (3 * max(1, len(pairs)))


def choose(game):
    """The dialog: a key that does nothing, another folder, its one thumbnail, a game of its picture."""
    screen = game.screen
    dialog = game.new_game(3)
    screen.key("Escape")
    check(screen.has_window("Busca Imagens"), "Esc closed the picture dialog")
    screen.click(*game.thumbnail(dialog, 1))
    x, y, _, _ = screen.place(dialog)
    frame = x + 195, y + 24  # of the first thumbnail
    wait_for(lambda: screen.pixels()(*frame) == (0, 0, 0), "the black frame round the chosen thumbnail")
    screen.screenshot(game.shots + "/1-chosen.png")
    pixel, rows = screen.pixels(), range(y + 28, y + 200)
    entries = [row for row in rows if any(sum(pixel(column, row)) < 200 for column in range(x + 38, x + 138))]
    screen.click(x + 68, entries[-1] - 4, times=2)  # "mais" stands lowest
    wait_for(lambda: screen.pixels()(*frame) == (0xC0, 0xC0, 0xC0), "the thumbnail of the folder")
    screen.click(*game.thumbnail(dialog, 1), times=2)
    screen.gone("Busca Imagens")


def around_the_board(game):
    screen = game.screen
    x, y, width, height = screen.place(game.window)

    def panel():
        pixel = screen.pixels()
        return sum(pixel(x + width - dx, y + height - dy) != game.BOARD for dx in range(40, 180, 4) for dy in range(40, 150, 4))

    def toggle(*steps, leaves):
        game.menu(1, *steps, "Return")
        wait_for(lambda: game.settings() == "[SETUP]\n" + leaves, f"{leaves} written")
        return panel()

    toggle("Up", "Up", "Up", leaves="Som=False\n")
    shown, hidden = panel(), toggle("Up", "Up", leaves="Som=False\nNavegador=False\n")
    check(shown - hidden > 500, "the panel did not go")
    toggle("Up", "Up", leaves="Som=False\nNavegador=True\n")
    screen.drag(x + width - 100, y + height - 110, x + width - 400, y + height - 260, steps=10)
    check(panel() < shown - 500, "the panel did not move")

    # A window that opens in a drag: the piece is let go first and does not stick to the pointer.
    saved = game.save("antes")
    piece = saved.pieces[-1]
    x1, y1 = game.center(saved, piece)
    screen.move(x1, y1)
    screen.press()
    for step in range(1, 5):
        screen.move(x1 - 20 * step, y1 + 11 * step)
    screen.key("F1")
    screen.window("Como Jogar")
    screen.screenshot(game.shots + "/2-help-in-mid-drag.png")
    screen.release()
    screen.key("alt+F4")
    screen.gone("Como Jogar")
    screen.move(x1 - 300, y1 + 150)
    after = {p["id"]: p for p in game.save("depois").pieces}[piece["id"]]
    moved = after["x"] - piece["x"], after["y"] - piece["y"]
    check(moved == (-77, 44), f"the piece moved by {moved}: the lattice point nearest to -80, 44 is -77, 44")
    for _ in range(2):
        game.menu(2, "Up", "Return")
        screen.window(" Sobre o Fento-Lira Master")
        screen.screenshot(game.shots + "/3-about.png")
        screen.key("ctrl+o")
        check(len(game.windows()) == 2, "a command reached the main window behind the About box")
        screen.key("alt+F4")
        screen.gone(" Sobre o Fento-Lira Master")
    game.answer_restart("Escape", game.shots + "/4-question.png")  # No leaves everything as it is
    check(game.save("igual").pieces == game.save("depois").pieces, "answering No moved pieces")


def play_on(game, picture):
    """Half played, saved, closed, taken up again and won. The board then shows the picture."""
    screen = game.screen
    solve(game, game.save("inicio"), left=3)
    first = game.save("meio")
    game.end()
    heard = screen.home + "/heard"
    game.env.update(SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=heard)
    with open(game.folder + "/config.ini", "w") as settings:
        settings.write("[SETUP]\nSom=True\n")
    game.start()
    game.load("meio.pzl")
    again = game.save("outra vez")
    check(again.pieces == first.pieces and again.picture == first.picture, "the loaded game is not the saved one")
    check(first.seconds <= again.seconds <= first.seconds + 30, f"the clock went from {first.seconds} to {again.seconds}")
    solve(game, again, done=len(again.pieces) - 3)
    game.won(game.shots + "/5-won.png")
    with open(heard, "rb") as file:
        check(any(file.read()), "nothing was heard of the game")

    width, height = again.size
    ref = run("convert", picture, "-filter", "Triangle", "-resize", f"{width}x{height}!", "-depth", "8", "rgb:-", binary=True)
    cols, rows = (1 + max(p[way] for p in again.pieces) for way in ("col", "row"))
    x, y = game.home()
    left, top = game.to_screen(x + (again.tile - again.cell + cols * again.cell - width) // 2,
                               y + (again.tile - again.cell + rows * again.cell - height) // 2)
    pixel = screen.pixels()
    apart = mean_difference([(pixel(int(left) + x, int(top) + y), ref[3 * (y * width + x):][:3])
                             for y in range(5, height - 5, 3) for x in range(5, width - 5, 3)])
    check(apart < BOUND, f"the board is {apart:.1f} apart from the picture")


def give_up(game):
    """A move is framed in yellow; giving up brings the picture together."""
    screen = game.screen
    game.start_picture(3)
    game.refresh_menu(1)
    screen.key("ctrl+m")
    pixel = screen.pixels()
    yellow = sum(pixel(x, y) == (255, 255, 0) for y in range(60, screen.height - 60) for x in range(screen.width))
    check(yellow >= 3 * 66, f"only {yellow} yellow pixels frame the move shown")
    screen.screenshot(game.shots + "/6-move.png")
    game.menu(1, "Down", "Down", "Return")

    def whole():
        shown = screen.pixels()
        row = "".join("x" if shown(x, 130) != Game.BOARD else " " for x in range(15, 260))
        return max(map(len, row.split()), default=0) >= 190

    wait_for(whole, "giving up to bring the picture together")


def colour(game):
    """The colour of the board, now and in the next run."""
    screen = game.screen
    game.menu(1, "Up", "Return")
    screen.window("Cor")
    screen.screenshot(game.shots + "/7-colour.png")
    screen.key("alt+h", "ctrl+a")  # the field that takes the colour as text
    screen.type("#a0c8b4")
    screen.key("Return")
    screen.gone("Cor")
    wait_for(lambda: f"Color={0xB4C8A0}" in game.settings(), "the colour in config.ini")
    game.end()
    Game.BOARD = (0xA0, 0xC8, 0xB4)  # start() looks for a board of this colour
    game.start()
    icons = run("xprop", "-id", str(game.window), "_NET_WM_ICON", env=screen.env)
    check(game.for_windows or all(f"({side} x {side})" in icons for side in (16, 32, 48, 64, 96)), "the window lacks icons")
    game.end()


def without_a_manager(game):
    """The splash follows a press that comes through late, and windows get the keys."""
    screen = game.screen
    manager = screen.processes.pop()
    manager.terminate()
    manager.wait()
    screen._start(game.command, env=game.env)
    splash = wait_for(game.windows, "the splash").pop()
    x, y, _, _ = screen.place(splash)
    screen.move(x + 300, y + 60)
    screen.press()
    screen.move(x + 340, y + 90)
    wait_for(lambda: screen.place(splash)[:2] == (x + 40, y + 30), "the splash to follow the pointer")
    screen.screenshot(game.shots + "/8-splash.png")
    screen.release()
    wait_for(lambda: splash not in game.windows(), "the splash to go")
    for keys, title in ("F10 Right Right Up Return", "Sobre o"), ("F1", "Como Jogar"):
        screen.key(*keys.split())
        wait_for(lambda: screen.windows("--name", title), f"the window '{title}'")
        screen.key("Escape")
        wait_for(lambda: not screen.windows("--name", title), f"the window '{title}' to close")


def main(program, shots):
    with Screen(1366, 768) as screen:
        game = Game(screen, program)
        game.shots = shots
        game.picture("a.gif", "400x300", "plasma:red-blue", "-seed", "5")
        game.picture("mais/flor, d.jpg", "280x120", "plasma:gold-purple", "-seed", "3", "-interlace", "JPEG")
        game.start()
        choose(game)
        around_the_board(game)
        play_on(game, game.folder + "/Imagens/mais/flor, d.jpg")
        give_up(game)
        colour(game)
        if not game.for_windows:
            without_a_manager(game)
    print("chosen, played, saved, taken up again, won, given up; seen, heard and kept")


if __name__ == "__main__":
    script(main)
