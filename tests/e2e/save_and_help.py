"""Saving, taking up again, giving up and the board's colour, with the real program.

Saves with Ctrl+S by typing a name, restarts the program, loads with Ctrl+O and plays on to the end; gives up; chooses a
colour and finds it again after a restart.

usage: save_and_help.py PROGRAM SCREENSHOT_FOLDER [WIDTHxHEIGHT]
"""

from desktop import Screen, check, script, wait_for
from game import Game, solve


def whole_picture(screen):
    """The width of the longest unbroken stretch of picture in a row through the solved board."""
    pixel = screen.pixels()
    row = "".join("x" if pixel(x, 130) != Game.BOARD else " " for x in range(15, 260))
    return max(map(len, row.split()), default=0)


def main(program, shots, size="1366x768"):
    width, height = map(int, size.split("x"))
    with Screen(width, height) as screen:
        game = Game(screen, program)
        game.picture("flor, a.jpg", "180x120", "plasma:gold-purple", "-seed", "3")
        game.start()
        game.start_picture(3)

        # Half played, saved, closed, taken up again, won.
        solve(game, game.save("inicio"), left=3)
        first = game.save("meio")
        game.end()
        game.start()
        game.load("meio.pzl")
        again = game.save("outra vez")
        check(again.pieces == first.pieces and again.picture == first.picture, "the loaded game is not the saved one")
        screen.screenshot(f"{shots}/save-1-taken-up.png")
        check(first.seconds <= again.seconds <= first.seconds + 30,
              f"the clock went from {first.seconds} to {again.seconds}")
        solve(game, again)
        game.won()

        # A move is framed in yellow.
        game.start_picture(3)
        game.refresh_menu(1)
        screen.key("ctrl+m")
        pixel = screen.pixels()
        yellow = sum(pixel(x, y) == (255, 255, 0) for y in range(60, height - 60) for x in range(0, width))
        check(yellow >= 3 * 66, f"only {yellow} yellow pixels frame the move shown")
        screen.screenshot(f"{shots}/help-1-move.png")

        # Giving up solves the board.
        game.menu(1, "Down", "Down", "Return")
        wait_for(lambda: whole_picture(screen) >= 190, "giving up to bring the picture together")
        screen.screenshot(f"{shots}/help-2-given-up.png")

        # The colour of the board, now and in the next run.
        game.menu(1, "Up", "Return")
        screen.window("Cor")
        screen.screenshot(f"{shots}/help-3-colour.png")
        screen.key("alt+h")  # the field that takes the colour as text
        screen.key("ctrl+a")
        screen.type("#a0c8b4")
        screen.key("Return")
        screen.gone("Cor")
        wait_for(lambda: f"Color={0xB4C8A0}" in game.settings(), "the colour in config.ini")
        game.end()
        Game.BOARD = (0xA0, 0xC8, 0xB4)  # start() looks for a board of this colour
        game.start()
        game.end()
    print("saved, taken up again and won; a move shown; given up; the colour kept")


if __name__ == "__main__":
    script(main)
