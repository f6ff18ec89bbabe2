"""Saving, taking up again, giving up and the board's colour, with the real program.

Saves with Ctrl+S by typing a name, restarts the program, loads with Ctrl+O and plays on to the end; gives up; chooses a
colour and finds it again after a restart.

usage: save_and_help.py PROGRAM SCREENSHOT_FOLDER [WIDTHxHEIGHT]
"""

import os
import sys
import time

from desktop import Failure, Game, Saved, Screen, run, solve, wait_for


def start_game(game, level=3):
    dialog = game.new_game(level)
    time.sleep(1.0)
    game.screen.click(*game.thumbnail(dialog, 1), times=2)
    game.screen.gone("Busca Imagens")
    time.sleep(0.6)


def whole_picture(screen):
    """The width of the longest unbroken stretch of picture in a row through the solved board; None if it is short."""
    pixel = screen.pixels()
    row = [pixel(x, 130) != Game.BOARD for x in range(15, 260)]
    longest = max(map(len, "".join("x" if picture else " " for picture in row).split()), default=0)
    return longest if longest >= 190 else None


def main():
    program, shots = sys.argv[1], sys.argv[2]
    width, height = map(int, (sys.argv[3] if len(sys.argv) > 3 else "1366x768").split("x"))
    with Screen(width, height) as screen:
        game = Game(screen, program)
        os.makedirs(game.folder + "/Imagens")
        run("convert", "-size", "180x120", "plasma:gold-purple", "-seed", "3", game.folder + "/Imagens/flor, a.jpg")
        game.start()
        start_game(game)

        # Half played, saved, closed, taken up again, won.
        solve(game, Saved(game.save("inicio")), until=3)
        first = Saved(game.save("meio"))
        game.end()
        game.start()
        game.load("meio.pzl")
        again = Saved(game.save("outra vez"))
        if again.pieces != first.pieces or again.picture != first.picture:
            raise Failure("the loaded game is not the saved one")
        screen.screenshot(f"{shots}/save-1-taken-up.png")
        if again.seconds > first.seconds + 30 or again.seconds < first.seconds:
            raise Failure(f"the clock went from {first.seconds} to {again.seconds}")
        solve(game, again)
        screen.window("Parabéns!!")
        screen.key("Return")
        screen.gone("Parabéns!!")

        # A move is framed in yellow.
        start_game(game)
        game.refresh_menu(1)
        screen.key("ctrl+m")
        time.sleep(0.3)
        pixel = screen.pixels()
        yellow = sum(pixel(x, y) == (255, 255, 0) for y in range(60, height - 60) for x in range(0, width))
        if yellow < 3 * 66:
            raise Failure(f"only {yellow} yellow pixels frame the move shown")
        screen.screenshot(f"{shots}/help-1-move.png")

        # Giving up solves the board; nothing can be picked up then.
        game.menu(1, "Down", "Down", "Return")
        time.sleep(1.5)
        screen.screenshot(f"{shots}/help-2-given-up.png")
        if whole_picture(screen) is None:
            raise Failure("giving up did not bring the picture together")

        # The colour of the board, now and in the next run.
        before = game.windows()
        game.menu(1, "Up", "Return")
        wait_for(lambda: game.windows() > before, "the colour dialog")
        time.sleep(0.4)
        screen.screenshot(f"{shots}/help-3-colour.png")
        screen.key("alt+h")  # the field that takes the colour as text
        screen.key("ctrl+a")
        screen.type("#a0c8b4")
        screen.key("Return")
        wait_for(lambda: game.windows() == before, "the colour dialog to close")
        wait_for(lambda: f"Color={0xB4C8A0}" in open(game.folder + "/config.ini").read(), "the colour in config.ini")
        game.end()
        Game.BOARD = (0xA0, 0xC8, 0xB4)  # start() looks for a board of this colour
        game.start()
        screen.screenshot(f"{shots}/help-4-colour-kept.png")
        game.end()
    print("saved, taken up again and won; a move shown; given up; the colour kept")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"save_and_help: {failure}")
