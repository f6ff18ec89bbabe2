"""One whole game with the real program: menu, dialog, photograph, drag, turn, join, win.

usage: play_a_game.py PROGRAM SCREENSHOT_FOLDER [WIDTHxHEIGHT]
"""

import os
import sys
import time

from desktop import Failure, Game, Saved, Screen, run, solve, wait_for


def main():
    program, shots = sys.argv[1], sys.argv[2]
    width, height = map(int, (sys.argv[3] if len(sys.argv) > 3 else "1366x768").split("x"))
    with Screen(width, height) as screen:
        game = Game(screen, program)
        os.makedirs(game.folder + "/Imagens")
        # Six pieces at "Fácil": cells of 66 pixels on screens over 800 wide.
        run("convert", "-size", "180x120", "plasma:tomato-steelblue", "-seed", "7", "-quality", "90",
            game.folder + "/Imagens/foto pequena.jpg")
        run("convert", "-size", "1600x1200", "plasma:green-yellow", "-seed", "8", game.folder + "/Imagens/campo.jpg")
        game.start()
        screen.screenshot(f"{shots}/1-empty-board.png")

        dialog = game.new_game(3)
        time.sleep(1.5)
        screen.screenshot(f"{shots}/2-dialog.png")
        names = [n for n in os.listdir(game.folder + "/Imagens")]  # the file system's own order, as the dialog's
        screen.click(*game.thumbnail(dialog, names.index("foto pequena.jpg") + 1), times=2)
        screen.gone("Busca Imagens")
        time.sleep(0.6)
        screen.screenshot(f"{shots}/3-scattered.png")

        saved = Saved(game.save("meu jogo"))
        if len(saved.pieces) != 6:
            raise Failure(f"{len(saved.pieces)} pieces instead of 6")
        solve(game, saved, until=1)
        screen.screenshot(f"{shots}/4-nearly-whole.png")
        if screen.has_window("Parabéns!!"):
            raise Failure("won with a piece still out of place")
        solve_last(game, saved)
        screen.window("Parabéns!!")
        time.sleep(0.3)
        screen.screenshot(f"{shots}/5-complete.png")
        screen.key("Return")
        screen.gone("Parabéns!!")

        # A finished game gives up its pieces to nobody: a press pans the board instead.
        before = screen.pixels()
        x, y = screen.width // 2, screen.height // 2 + 100
        screen.drag(x, y, x - 40, y - 30)
        wait_for(lambda: differs(before, screen.pixels()), "the view of a finished game to pan")
        game.end()
        if game.process.returncode != 0:
            raise Failure(f"the program ended with {game.process.returncode}")
    print("a whole game was played and won")


def differs(before, after):
    return any(before(a, b) != after(a, b) for a in range(60, 500, 3) for b in range(80, 400, 3))


def solve_last(game, saved):
    last = max(saved.pieces, key=lambda p: (p["row"], p["col"]))
    left, top = game.board_offset
    ref = (round((-left + 60) / 11) * 11, round((-top + 60) / 11) * 11)
    half = saved.tile // 2
    x1, y1 = game.to_screen(last["x"] + half, last["y"] + half)
    x2, y2 = game.to_screen(ref[0] + last["col"] * saved.cell + half, ref[1] + last["row"] * saved.cell + half)
    game.screen.drag(x1, y1, x2, y2, turns=(4 - last["rotation"]) % 4)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"play_a_game: {failure}")
