"""The whole program on one screen: choosing, playing, saving, small windows, the next run, sound.

Where another program is given, that of another system, it takes up what the first one saved: the same pieces, the same
pixels.

usage: whole_game.py PROGRAM SCREENSHOT_FOLDER [OTHER_PROGRAM]
"""

from desktop import Screen, check, script
from game import Game, check_same, solve

PICTURE = "flor, maçã.bmp"  # JPEGs are not the same to the last bit on every system


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
    """A window that opens in a drag: the piece is let go first and does not stick to the pointer."""
    screen = game.screen
    piece = game.save("antes").pieces[-1]
    x, y = game.to_screen(piece["x"] + 44, piece["y"] + 44)
    screen.move(x, y)
    screen.press()
    screen.move(x - 80, y + 44)
    screen.key("F1")
    screen.window("Como Jogar")
    screen.screenshot(game.shots + "/2-help-in-mid-drag.png")
    screen.release()
    screen.key("alt+F4")
    screen.gone("Como Jogar")
    screen.move(x - 300, y + 150)
    after = {p["id"]: p for p in game.save("depois").pieces}[piece["id"]]
    moved = after["x"] - piece["x"], after["y"] - piece["y"]
    check(moved == (-77, 44), f"the piece moved by {moved}: the lattice point nearest to -80, 44 is -77, 44")


def hand_over(game, program):
    """The picture's path is the one thing that must be put right."""
    game.install(program)
    picture, path = f"{game.folder}/Imagens/{PICTURE}", game.folder + "/Save/meio.pzl"
    with open(path, "r+", encoding="cp1252", newline="") as file:
        lines = file.read().split("\r\n")
        lines[1] = "Z:" + picture.replace("/", "\\") if game.for_windows else picture
        file.seek(0)
        file.truncate()
        file.write("\r\n".join(lines))


def play_on(game, other):
    """Half played, saved, closed, taken up again and won."""
    solve(game, game.save("inicio"), left=3)
    game.save("meio")
    game.load("meio")
    first, board = game.save("agora"), game.shown()
    game.end()
    if other:
        hand_over(game, other)
    heard = game.screen.home + "/heard"
    game.env.update(SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=heard)
    game.start()
    game.load("meio.pzl")
    again = game.save("outra vez")
    check(again.pieces == first.pieces, "the loaded game is not the saved one")
    check(first.seconds <= again.seconds <= first.seconds + 30, f"from {first.seconds} to {again.seconds} seconds")
    check_same(board, game.shown(), "the board is another")
    solve(game, again, done=len(again.pieces) - 3)
    game.won(game.shots + "/4-won.png")
    with open(heard, "rb") as file:
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
    game.end()
    with open(game.folder + "/config.ini", encoding="cp1252") as file:
        check(f"Color={0xB4C8A0}\n" in file.read(), "the colour is not in config.ini")
    Game.BOARD = (0xA0, 0xC8, 0xB4)  # start() looks for a board of this colour
    game.start()
    game.end()


def main(program, shots, other=None):
    with Screen(1366, 768) as screen:
        game = Game(screen, program)
        game.shots = shots
        game.picture(PICTURE, "280x120", "-seed", "3", "plasma:gold-purple", "-type", "TrueColor")
        game.start()
        choose(game)
        around_the_board(game)
        play_on(game, other)
        colour(game)
    print("chosen, played, saved, taken up again and won; seen, heard and kept")


if __name__ == "__main__":
    script(main)
