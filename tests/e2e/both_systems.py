"""A game saved by the program of one system is taken up by that of the other: the same pieces, the same pixels.

usage: both_systems.py PROGRAM_FOR_WINDOWS SCREENSHOT_FOLDER
"""

import os

from desktop import Screen, check, script
from game import Game, check_same, solve

HERE = os.path.abspath(os.path.join(os.path.dirname(__file__), "../../build/dev/fento-lira-master"))


def play(program, shots, name, saved=None):
    """Plays half a game, or takes up the one `saved` by the other system; what was saved then, and its board."""
    with Screen(1366, 768) as screen:
        game = Game(screen, program)
        game.picture("maçã.bmp", "240x180", "-seed", "3", "plasma:gold-purple", "-type", "TrueColor")
        game.start()
        if saved:
            # The path is the one thing that must be put right.
            picture = ("Z:" * game.for_windows) + game.folder + "/Imagens/maçã.bmp"
            lines = saved.decode("cp1252").split("\r\n")
            lines[1] = picture.replace("/", "\\") if game.for_windows else picture
            os.mkdir(game.folder + "/Save")
            with open(game.folder + "/Save/veio.pzl", "wb") as file:
                file.write("\r\n".join(lines).encode("cp1252"))
            game.load("veio.pzl")
        else:
            game.start_picture(3)
            solve(game, game.save("inicio"), left=2)
            game.save("meio")
            game.load("meio.pzl")
        after = game.save("agora")
        screen.move(screen.width - 5, screen.height - 5)
        screen.screenshot(f"{shots}/{name}.png")
        with open(game.folder + "/Save/agora.pzl", "rb") as file:
            whole = file.read()
        board = game.shown()
        game.end()
        return after, whole, board


def main(program, shots):
    for first, second in ((HERE, program), (program, HERE)):
        name = "from-windows" if first == program else "to-windows"
        before, saved, board = play(first, shots, name + "-1")
        again, _, same = play(second, shots, name + "-2", saved)
        check(again.pieces == before.pieces, f"{name}: other pieces")
        check_same(board, same, f"{name}: the boards differ")
    print("taken up on the other system, both ways: equal pieces, equal pixels")


if __name__ == "__main__":
    script(main)
