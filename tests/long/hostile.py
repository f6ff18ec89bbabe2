"""Odd files in odd folders under the real program.

Folders fill the dialog while somebody clicks: one for each odd picture, which is then chosen, one of odd names and things
that are no files, one of 50,000 files that change. Then a player without rights. Nothing may take much memory or keep the
player waiting, and nothing of the program can be reached from outside.

usage: hostile.py PROGRAM SCREENSHOT_FOLDER
"""

import shutil
import threading

from odd_files import claim, flat_jpeg
from rough import *  # noqa: F403

MOST_MEMORY = 400  # MiB, at any moment
LONGEST = 25  # seconds from the choice of a picture to what comes of it

# How it is made, and what comes of it when it is chosen.
PICTURES = {
    "text as a picture": (lambda path: shutil.copy(__file__, path), "silence"),
    "1 x 1": (lambda path: run("convert", "-size", "1x1", "xc:red", "gif:" + path), "box"),
    "30000 x 30000": (lambda path: flat_jpeg(path, 30000, 30000), "game"),
    "30000 x 30000 in passes": (lambda path: flat_jpeg(path, 30000, 30000, True), "silence"),
    "100 megapixels in passes": (lambda path: flat_jpeg(path, 11648, 8736, True), "game"),
    "100 megapixels in 20,000 passes": (lambda path: flat_jpeg(path, 11648, 8736, True, 20000), "any"),
    "a bitmap of 100 megapixels": (lambda path: claim(path, "bmp3", 11648, 8736, whole=True), "game"),
    "a bitmap's header, 2147483647 x 1": (lambda path: claim(path, "bmp3", 2147483647, 1), "silence"),
    "a GIF's header, 65535 x 65535": (lambda path: claim(path, "gif", 65535, 65535), "silence"),
    "a GIF of 31 megapixels": (
        lambda path: run("convert", "-size", "5600x5600", "xc:red", "-dispose", "Previous", "gif:" + path), "game")}


def boxes(game):
    """Closes what message boxes there are; how many there were."""
    count = 0
    while game.windows() != {game.window}:
        game.screen.key("Return")
        count += 1
        check(count < 10, "there is always one more box")
    return count


def scan(game, what, fill, changes=lambda folder: None):
    """The dialog full of a folder, and the seconds that clicks were answered in meanwhile."""
    folder = game.folder + "/Imagens"
    shutil.rmtree(folder)
    os.makedirs(folder)
    fill(folder)
    dialog = open_dialog(game)
    other = threading.Thread(target=changes, args=(folder,))
    other.start()
    answers = probe(game, dialog)
    other.join()
    game.screen.screenshot(f"{game.shots}/{what}.png")
    return dialog, answers


def bounded(game, what):
    peak = memory(game, "VmHWM")
    print(f"{what}: {peak:.0f} MiB", flush=True)
    check(peak < MOST_MEMORY, f"{what} take {peak:.0f} MiB")


def odd_pictures(game):
    pieces, all_answers = game.save("agora").pieces, []
    for name, (make, comes) in PICTURES.items():
        def some(folder):  # two of them must be there to be clicked at
            make(folder + "/0.jpg")
            for number in range(1, 8):
                os.link(folder + "/0.jpg", f"{folder}/{number}.jpg")

        dialog, answers = scan(game, name, some)
        all_answers += answers
        x, y, _, _ = game.screen.place(dialog)
        begin = time.monotonic()
        game.screen.click(x + 9900 // 15, y + 3710 // 15)  # OK
        game.screen.gone("Busca Imagens")
        box, took, now = boxes(game), time.monotonic() - begin, game.save("agora").pieces
        outcome, pieces = "box" if box else "silence" if now == pieces else "game", now
        bounded(game, f"{name}: {outcome} after {took:.1f} s")
        check(comes in ("any", outcome), f"{name}: {outcome} instead of {comes}")
        check(took < LONGEST, f"{name} took {took:.0f} s")
    in_time(sorted(all_answers))


def watched(game, what, fill, changes=lambda folder: None):
    _, answers = scan(game, what, fill, changes)
    close_dialog(game)
    check(boxes(game) == 0, f"{what}: a box came")
    bounded(game, what)
    in_time(answers)


def odd_names(folder):
    for name in (b"quebra\nde linha", b"aspas \"'`$(x)", b".oculta", b"\xff\xfe\x80", b"n" * 251, b"&amp <b>x &b", b"%s%n",
                 "dir \u202egpj.\u202d".encode(), b"\x1b[31m", b".", b"a\\b"):
        shutil.copy(folder + "/../boa.jpg", folder.encode() + b"/" + name + b".jpg")
    os.symlink(".", folder + "/volta")
    os.symlink("/dev/zero", folder + "/zero.bmp")
    os.mkfifo(folder + "/fifo.jpg")
    os.mkdir(folder + "/pasta.jpg")


def many(folder):
    for number in range(50000):
        good = number % 500 == 0
        os.symlink("../boa.jpg" if good else "/dev/null", f"{folder}/{number}.{'jpg' if good else 'txt'}")


def changing(folder):
    """Files come, shrink, grow and go while they are listed and read."""
    for number in range(0, 50000, 500):
        path = f"{folder}/{number}.jpg"
        os.remove(path)
        if number % 1000 == 0:
            with open(path, "wb") as file:
                file.write(b"\xff\xd8\xff" + os.urandom(5000))
            os.rename(path, path + ".jpg")


def doors(game):
    """Nothing of the program can be reached from outside, and nothing else was started by it."""
    check(f"pid={game.process.pid}," not in run("ss", "-tuxlnp"), "a socket of its own")
    check(not run("pgrep", "-P", str(game.process.pid)), "it has started a program")


def without_rights(screen, program):
    """A program folder and a home that may not be written, pictures that may not be read."""
    if os.getuid() != 0 or not shutil.which("setpriv"):
        return print("skipped: only root can become a player without rights")
    game = Game(screen, program)
    os.makedirs(game.folder + "/Imagens/fechada.jpg", 0)
    shutil.copy(__file__, game.folder + "/Imagens/fechado.bmp")
    for path, mode in ("/Imagens/fechado.bmp", 0), ("/Imagens", 0o755), ("", 0o755), ("/..", 0o711):
        os.chmod(game.folder + path, mode)
    game.env.update(HOME=game.folder, XDG_RUNTIME_DIR=game.folder)
    game.command[:0] = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
    game.start()
    dialog = game.new_game(3)
    screen.click(*game.thumbnail(dialog, 2), times=2)
    screen.gone("Busca Imagens")
    game.menu(1, "Up", "Up", "Return")
    check(boxes(game) == 0, "a box came for what can't be read or written")
    check(not os.path.exists(game.folder + "/config.ini"), "it wrote where it may not")
    game.end()
    print("without rights: plays on, settings hold for the run")


def main(program, shots):
    with Screen(1366, 768) as screen:
        game = Game(screen, program, terminal=screen.home + "/terminal.txt")
        game.shots = shots
        game.picture("boa.jpg", "600x400", "plasma:tomato-steelblue", "-seed", "7", "-quality", "90")
        shutil.copy(game.folder + "/Imagens/boa.jpg", game.folder)
        game.start()
        game.start_picture(3)
        odd_pictures(game)
        watched(game, "odd names", odd_names)
        watched(game, "50,000 files that change", many, changing)
        doors(game)
        game.end()
        with open(game.terminal, "rb") as file:
            check(not file.read(), "the terminal got something")
        without_rights(screen, program)


if __name__ == "__main__":
    script(main)
