"""What surrounds a game, with the real program: switches, dialog manners, panel, a hold cut short.

usage: around_the_board.py PROGRAM SCREENSHOT_FOLDER [WIDTHxHEIGHT]
"""

from desktop import Screen, check, script, wait_for
from game import Game


def differences(before, after, area):
    x0, y0, x1, y1 = area
    return sum(before(x, y) != after(x, y) for y in range(y0, y1, 2) for x in range(x0, x1, 2))


def dialog_manners(game):
    """A key that does nothing, another folder, closing and coming again."""
    screen = game.screen
    dialog = game.new_game(3)
    wait_for(lambda: thumbnails(game, dialog) == 3, "three thumbnails")
    screen.key("Escape")
    check(screen.has_window("Busca Imagens"), "Esc closed the picture dialog")
    x, y, _, _ = screen.place(dialog)

    # The folder "mais" stands below Imagens in the list: a double click opens it.
    screen.click(*game.thumbnail(dialog, 1))
    corner = (round(x + (2835 + 90) / 15), round(y + (60 + 10 + 200 + 90) / 15))
    wait_for(lambda: screen.pixels()(*corner) == (0, 0, 0), "the black frame round the chosen thumbnail")
    screen.screenshot(game.shots + "/1-selected.png")
    open_last_folder(game, dialog)
    wait_for(lambda: thumbnails(game, dialog) == 1, "the thumbnail of the sub-folder")
    screen.click(x + 8700 // 15, y + 3710 // 15)
    screen.gone("Busca Imagens")
    wait_for(lambda: game.windows() == {game.window}, "the main window to be the only one")


def thumbnails(game, dialog):
    """How many frames show in the first row of the sheet."""
    x, y, _, _ = game.screen.place(dialog)
    pixel = game.screen.pixels()
    row = round(y + (60 + 10 + 200 + 1640) / 15)
    grey = lambda k: pixel(round(x + (2835 + 20 + (k - 1) * 1835 + 800) / 15), row) in ((0xC0, 0xC0, 0xC0), (0, 0, 0))
    return sum(grey(k) for k in range(1, 5))


def open_last_folder(game, dialog):
    """The last entry of the folder list: found as the lowest row that holds text."""
    x, y, _, _ = game.screen.place(dialog)
    pixel = game.screen.pixels()
    left, top = x + 115 // 15, y + 420 // 15
    dark = [row for row in range(top, y + 3000 // 15)
            if any(sum(pixel(column, row)) < 200 for column in range(left + 30, left + 130))]
    check(dark, "the folder list is empty")
    game.screen.click(left + 60, dark[-1] - 4, times=2)


def switches(game):
    """Sound and miniature act at once and are written at once."""
    screen = game.screen
    x, y, width, height = screen.place(game.window)
    panel = (x + width - 190, y + height - 160, x + width - 32, y + height - 35)

    def toggle(*steps, leaves):
        game.menu(1, *steps, "Return")
        wait_for(lambda: game.settings() == "[SETUP]\n" + leaves, f"{leaves} written")

    toggle("Up", "Up", "Up", leaves="Som=False\n")
    before = screen.pixels()
    toggle("Up", "Up", leaves="Som=False\nNavegador=False\n")
    check(differences(before, screen.pixels(), panel) > 500, "the panel did not go")
    toggle("Up", "Up", leaves="Som=False\nNavegador=True\n")


def panel_moves(game):
    """The panel by its miniature."""
    screen = game.screen
    x, y, width, height = screen.place(game.window)
    start = screen.pixels()
    px, py = x + width - 100, y + height - 110
    screen.drag(px, py, px - 300, py - 150, steps=10)
    check(differences(start, screen.pixels(), (px - 340, py - 190, px - 260, py - 110)) > 200, "the panel did not move")
    screen.screenshot(game.shots + "/2-panel-moved.png")


def hold_cut_short(game):
    """A box that opens while a piece is held: the piece is let go first and does not stick to the pointer."""
    screen = game.screen
    saved = game.save("antes")
    piece = saved.pieces[-1]
    x1, y1 = game.center(saved, piece)
    screen.move(x1, y1)
    screen.press()
    for step in range(1, 5):
        screen.move(x1 - 20 * step, y1 + 11 * step)
    screen.key("F1")
    screen.window("Como Jogar")
    screen.screenshot(game.shots + "/3-help-in-mid-drag.png")
    screen.release()
    screen.key("alt+F4")
    screen.gone("Como Jogar")
    screen.move(x1 - 300, y1 + 150)
    after = {p["id"]: p for p in game.save("depois").pieces}[piece["id"]]
    moved = after["x"] - piece["x"], after["y"] - piece["y"]
    check(moved == (-77, 44), f"the piece moved by {moved}: the lattice point nearest to -80, 44 is -77, 44")


def small_windows(game):
    """Help and About are modal, say what they should and come again."""
    screen = game.screen
    for _ in range(2):
        game.menu(2, "Up", "Return")
        screen.window(" Sobre o Fento-Lira Master")
        screen.screenshot(game.shots + "/4-about.png")
        screen.key("ctrl+o")
        check(len(game.windows()) == 2, "a command reached the main window behind the About box")
        screen.key("alt+F4")
        screen.gone(" Sobre o Fento-Lira Master")
    before = game.save("antes").pieces
    game.answer_restart("Escape", game.shots + "/5-question.png")  # No leaves everything as it is
    check(game.save("igual").pieces == before, "answering No moved pieces")


def main(program, shots, size="1366x768"):
    width, height = map(int, size.split("x"))
    with Screen(width, height) as screen:
        game = Game(screen, program)
        game.shots = shots
        for name, colours in (("a.jpg", "red-blue"), ("b.gif", "green-white"), ("c.BMP", "orange-navy"),
                              ("mais/d.jpg", "pink-black")):
            game.picture(name, "400x300", "plasma:" + colours, "-seed", "5")
        game.start()
        dialog_manners(game)
        game.start_picture(3, 2)
        switches(game)
        panel_moves(game)
        hold_cut_short(game)
        small_windows(game)
        game.end()
    print("dialog, switches, panel, a hold cut short and small windows are as they should be")


if __name__ == "__main__":
    script(main)
