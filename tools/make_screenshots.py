"""Makes the screenshots of the README from the real program, its shipped pictures and a screen of its own.

usage: python3 tools/make_screenshots.py [PROGRAM]      (build/release/fento-lira-master)
"""

import os
import shutil
import sys

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


def main():
    program = sys.argv[1] if len(sys.argv) > 1 else os.path.join(ROOT, "build/release/fento-lira-master")
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
            solve(game, saved, left=len(saved.pieces) * 3 // 4)
            take(screen, f"game-{width}x{height}.jpg")
            game.end()


def listed(folder):
    """The pictures of a folder in the file system's own order."""
    with os.scandir(folder) as entries:
        return [entry.name for entry in entries if entry.name[-4:].lower() in (".jpg", ".gif", ".bmp")]


if __name__ == "__main__":
    main()
