"""The whole program on one screen: choosing, playing, saving, small windows, the next run, sound, and the start without a
window manager.

usage: whole_game.py PROGRAM SCREENSHOT_FOLDER
"""

from desktop import Screen, check, run, script, wait_for
from game import Game, solve


def choose(game):
    screen = game.screen
    dialog = game.new_game(3)
    screen.key("Escape")
    check(screen.has_window("Busca Imagens"), "Esc closed the picture dialog")
    screen.click(*game.thumbnail(dialog, 1))
    screen.screenshot(game.shots + "/1-chosen.png")
    screen.click(*game.thumbnail(dialog, 1), times=2)
    screen.gone("Busca Imagens")


def around_the_board(game):
    screen = game.screen
    # A window that opens in a drag: the piece is let go first and does not stick to the pointer.
    saved = game.save("antes")
    piece = saved.pieces[-1]
    x1, y1 = game.center(saved, piece)
    screen.move(x1, y1)
    screen.press()
    screen.move(x1 - 80, y1 + 44)
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
    game.menu(2, "Up", "Return")
    screen.window(" Sobre o Fento-Lira Master")
    screen.screenshot(game.shots + "/3-about.png")
    screen.key("ctrl+o")
    check(len(game.windows()) == 2, "a command reached the main window behind the About box")
    screen.key("alt+F4")
    screen.gone(" Sobre o Fento-Lira Master")


def play_on(game):
    """Half played, saved, closed, taken up again and won."""
    screen = game.screen
    solve(game, game.save("inicio"), left=3)
    first = game.save("meio")
    game.end()
    game.env.update(SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=screen.home + "/heard")
    game.start()
    game.load("meio.pzl")
    again = game.save("outra vez")
    check(again.pieces == first.pieces and again.picture == first.picture, "the loaded game is not the saved one")
    check(first.seconds <= again.seconds <= first.seconds + 30, f"from {first.seconds} to {again.seconds} seconds")
    solve(game, again, done=len(again.pieces) - 3)
    game.won(game.shots + "/4-won.png")
    with open(screen.home + "/heard", "rb") as file:
        check(any(file.read()), "nothing was heard of the game")


def colour(game):
    """The colour of the board, now and in the next run."""
    screen = game.screen
    game.menu(1, "Up", "Return")
    screen.window("Cor")
    screen.screenshot(game.shots + "/5-colour.png")
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
        game.picture("flor, a.jpg", "280x120", "plasma:gold-purple", "-seed", "3", "-interlace", "JPEG")
        game.start()
        choose(game)
        around_the_board(game)
        play_on(game)
        colour(game)
        if not game.for_windows:
            without_a_manager(game)
    print("chosen, played, saved, taken up again and won; seen, heard and kept")


if __name__ == "__main__":
    script(main)
