"""Makes the screenshots of the documents from the real program, its shipped pictures and a screen of its own.

usage: python3 tools/make_screenshots.py [PROGRAM]      (build/release/fento-lira-master)
"""

import os
import shutil
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(ROOT, "tests", "e2e"))
from desktop import Screen, run  # noqa: E402
from game import Game, solve  # noqa: E402

COLOURFUL = ("Aquário", "Balões", "Casario", "Jardim")


def take(screen, name):
    path = os.path.join(ROOT, "docs", "screenshots", name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    screen.move(screen.width - 1, screen.height // 2)
    run("import", "-window", "root", "-quality", "88", path, env=screen.env)


def scales(program):
    """The same part of one game on screens of several scales, cut out in the screen's own pixels."""
    with tempfile.TemporaryDirectory() as folder:
        saved, cuts = folder + "/jogo.pzl", []
        shutil.copy(os.path.join(ROOT, "Imagens", "Tucano em mosaico.jpg"), folder + "/a.jpg")
        for scale in (1, 1.25, 1.5, 2):
            with Screen(round(1280 * scale), round(720 * scale)) as screen:
                game = Game(screen, program, scale=scale)
                os.makedirs(game.folder + "/Save")
                if scale == 1:
                    shutil.copytree(folder, game.folder + "/Imagens")
                game.start()
                if scale == 1:
                    game.start_picture(4)
                    game.save("jogo")
                    with open(game.folder + "/Save/jogo.pzl", "rb") as file, open(saved, "wb") as copy:
                        lines = file.read().split(b"\r\n")
                        copy.write(b"\r\n".join([lines[0], (folder + "/a.jpg").encode(), *lines[2:]]))
                shutil.copy(saved, game.folder + "/Save/jogo.pzl")
                game.load("jogo")
                cuts.append(f"{folder}/{scale}.png")
                place = f"{round(240 * scale)}x{round(160 * scale)}+{round(620 * scale)}+{round(300 * scale)}"
                run("import", "-window", "root", "-crop", place, "+repage", cuts[-1], env=screen.env)
                game.end()
        run("convert", *cuts, "-gravity", "south", "-background", "white", "+append", "-quality", "92",
            os.path.join(ROOT, "docs", "screenshots", "scales.jpg"))


def main():
    program = sys.argv[1] if len(sys.argv) > 1 else os.path.join(ROOT, "build/release/fento-lira-master")
    scales(program)
    for width, height, level in ((1366, 768, 3), (1920, 1080, 4)):
        with Screen(width, height) as screen:
            game = Game(screen, program)
            shutil.copytree(os.path.join(ROOT, "Imagens"), game.folder + "/Imagens")
            game.start()
            dialog = game.new_game(level)
            screen.click(*game.thumbnail(dialog, 2))
            take(screen, f"dialog-{width}x{height}.jpg")
            visible = listed(game.folder + "/Imagens")[:8]
            wanted = next((i for i, name in enumerate(visible) if name.startswith(COLOURFUL)), 0)
            screen.click(*game.thumbnail(dialog, wanted + 1), times=2)
            screen.gone("Busca Imagens")
            saved = game.save("inicio")
            show_miniature(game)  # or it would be dragged where it lies over a piece
            solve(game, saved, left=len(saved.pieces) * 3 // 4)
            show_miniature(game)
            take(screen, f"game-{width}x{height}.jpg")
            game.end()


def show_miniature(game):
    """Shows it or takes it away, by the menu."""
    game.menu(1, "Up", "Up", "Return")


def listed(folder):
    """The pictures of a folder in the file system's own order."""
    with os.scandir(folder) as entries:
        return [entry.name for entry in entries if entry.name[-4:].lower() in (".jpg", ".gif", ".bmp")]


if __name__ == "__main__":
    main()
