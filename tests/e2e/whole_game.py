"""The whole program on one screen: choosing, playing, saving, small windows, the next run, sound.

usage: whole_game.py PROGRAM SCREENSHOT_FOLDER
"""

from desktop import Screen, check, script, wait_for
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
    game.end()


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
    print("chosen, played, saved, taken up again and won; seen, heard and kept")


if __name__ == "__main__":
    script(main)
