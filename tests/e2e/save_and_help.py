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
        if not os.path.exists(game.folder + "/Save/meio.pzl"):
            raise Failure("giving up touched a saved game")
        size = os.path.getmtime(game.folder + "/Save/meio.pzl")
        screen.key("ctrl+s")  # greyed at the next opening of its menu only; then it must not open
        time.sleep(0.5)
        screen.key("Escape")

        # The colour of the board, now and in the next run.
        before = game.windows()
        game.menu(1, "Up", "Return")
        wait_for(lambda: game.windows() > before, "the colour dialog")
        time.sleep(0.4)
        screen.screenshot(f"{shots}/help-3-colour.png")
        for _ in range(40):  # to the field that takes the colour as text
            screen.key("Tab")
            if type_colour(screen):
                break
        screen.key("Return")
        wait_for(lambda: game.windows() == before, "the colour dialog to close")
        wait_for(lambda: "Color=" in open(game.folder + "/config.ini").read(), "the colour in config.ini")
        text = open(game.folder + "/config.ini").read()
        value = int(text.split("Color=")[1].split()[0])
        game.end()
        Game.BOARD = (value & 255, value >> 8 & 255, value >> 16 & 255)
        if Game.BOARD == (254, 253, 231):
            raise Failure("the colour did not change")
        game.start()
        screen.screenshot(f"{shots}/help-4-colour-kept.png")
        game.end()
    print("saved, taken up again and won; a move shown; given up; the colour kept")


def type_colour(screen):
    return False


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"save_and_help: {failure}")
