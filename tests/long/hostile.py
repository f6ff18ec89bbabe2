"""Odd files in odd folders under the real program.

Each odd picture is chosen: a game comes of it, a box, or nothing, and then the game on the board is as it was. Then a
folder with all that is huge, one of odd names and things that are no files, one of 50,000 files that change, and a
player without rights. Nothing may take much memory or keep the player waiting.

usage: hostile.py PROGRAM SCREENSHOT_FOLDER
"""

import shutil
import threading

from odd_files import bmp, flat_jpeg, gif
from rough import *  # noqa: F403

MOST_MEMORY = 400  # MiB, at any moment
LONGEST = 25  # seconds for one file


def clear(folder):
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)


def boxes(game):
    """Closes what message boxes there are; how many there were."""
    count = 0
    while game.windows() != {game.window}:
        game.screen.key("Return")
        count += 1
        check(count < 10, "there is always one more box")
    return count


def bounded(game, what):
    peak = memory(game, "VmHWM")
    check(peak < MOST_MEMORY, f"{what}: {peak:.0f} MiB")
    return peak


def pictures(good):
    """Name, how it is made, and what comes of it: "", "box", "game", or "any"."""
    return [
        ("text as a picture", lambda f: shutil.copy(__file__, f + "/a.jpg"), ""),
        ("1 x 1", lambda f: run("convert", "-size", "1x1", "xc:red", f + "/a.gif"), "box"),
        ("30000 x 30000 photograph", lambda f: flat_jpeg(f + "/a.jpg", 30000, 30000), "game"),
        ("30000 x 30000 progressive", lambda f: flat_jpeg(f + "/a.jpg", 30000, 30000, True), ""),
        ("65500 x 16 photograph", lambda f: flat_jpeg(f + "/a.jpg", 65500, 16), "any"),
        ("20,000 passes of 100 megapixels", lambda f: flat_jpeg(f + "/a.jpg", 11648, 8736, True, 20000), "any"),
        ("a bitmap's header, 2147483647 x 1", lambda f: bmp(f + "/a.bmp", 2147483647, 1), ""),
        ("a GIF's header, 65535 x 65535", lambda f: gif(f + "/a.gif", 65535, 65535), ""),
        ("a GIF of 31 megapixels", lambda f: shutil.copy(good + ".gif", f + "/a.gif"), "game"),
        ("half a photograph", lambda f: open(f + "/a.jpg", "wb").write(open(good, "rb").read()[:9000]), "any"),
        ("a progressive photograph", lambda f: flat_jpeg(f + "/a.jpg", 11648, 8736, True), "game"),
        ("a bitmap of 100 megapixels", lambda f: bmp(f + "/a.bmp", 11648, 8736, whole=True), "game")]


def chosen(game, good):
    folder, pieces = game.folder + "/Imagens", game.save("agora").pieces
    for name, make, comes in pictures(good):
        clear(folder)
        make(folder)
        begin = time.monotonic()
        dialog = game.new_game(3)
        corner = frame_corner(game, dialog, 1)
        wait_for(lambda: game.screen.pixels()(*corner) == (0xC0, 0xC0, 0xC0), "the frame of its thumbnail")
        game.screen.click(*game.thumbnail(dialog, 1))  # or its frame, where the thumbnail is thinner than a pixel
        x, y, _, _ = game.screen.place(dialog)
        game.screen.click(x + 9900 // 15, y + 3710 // 15)
        game.screen.gone("Busca Imagens")
        outcome, took, now = "box" if boxes(game) else "", time.monotonic() - begin, game.save("agora").pieces
        outcome, pieces = outcome or ("" if now == pieces else "game"), now
        print(f"{name}: {outcome or 'silence'}, {took:.1f} s, {bounded(game, name):.0f} MiB")
        check(comes in ("any", outcome), f"{name}: {outcome or 'silence'} instead of {comes or 'silence'}")
        check(took < LONGEST, f"{name} took {took:.0f} s")


def huge(folder, good):
    """Three of each, so that nearly all are decoded while the answers are watched."""
    flat_jpeg(folder + "/passes 0.jpg", 11648, 8736, True)
    flat_jpeg(folder + "/photo 0.jpg", 11648, 8736)
    flat_jpeg(folder + "/bomb 0.jpg", 11648, 8736, True, 20000)
    bmp(folder + "/bands 0.bmp", 11648, 8736, whole=True)
    gif(folder + "/claim 0.gif", 11648, 8736)
    for name in os.listdir(folder):
        for number in "12":
            os.link(f"{folder}/{name}", f"{folder}/{name.replace('0', number)}")


def odd_names(folder, good):
    for name in (b"quebra\nde linha.jpg", b"aspas \"'`$(x).jpg", b".oculta.jpg", b"\xff\xfe\x80.jpg", b"n" * 251 + b".jpg",
                 "dir \u202egpj.\u202d.jpg".encode(), b"&amp <b>x &b.jpg", b"%s%n.jpg", b"\x1b[31m.jpg", b"..jpg", b"a\\b.jpg"):
        shutil.copy(good, os.path.join(folder.encode(), name))
    os.symlink(".", folder + "/volta")
    os.symlink("/dev/zero", folder + "/zero.bmp")
    os.mkfifo(folder + "/fifo.jpg"), os.mkdir(folder + "/pasta.jpg")


def many(folder, good):
    for number in range(50000):
        os.symlink(good if number % 500 == 0 else "/dev/null", f"{folder}/{number}." + ("jpg" if number % 500 == 0 else "txt"))


def watched(game, pointer, what, fill, good, changes=lambda folder: None):
    """The dialog fills from a folder while somebody clicks, and is closed."""
    folder = game.folder + "/Imagens"
    clear(folder)
    fill(folder, good)
    dialog = open_dialog(game)
    other = threading.Thread(target=changes, args=(folder,))
    other.start()
    answers = probe(game, pointer, dialog, 120)
    other.join()
    game.screen.screenshot(f"{game.shots}/{what}.png")
    game.screen.key("alt+F4")
    game.screen.gone("Busca Imagens")
    check(boxes(game) == 0, f"{what}: a box came")
    print(f"{what}: {bounded(game, what):.0f} MiB")
    in_time(answers)


def changing(folder):
    """Files come, shrink, grow and go while they are listed and read."""
    for number in range(0, 50000, 500):
        path = f"{folder}/{number}.jpg"
        os.remove(path)
        if number % 1000 == 0:
            open(path, "wb").write(b"\xff\xd8\xff" + os.urandom(5000))
            os.rename(path, path + ".jpg")


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
    with Screen(1366, 768) as screen, Pointer(screen.env["DISPLAY"]) as pointer:
        good = screen.home + "/boa.jpg"
        run("convert", "-size", "600x400", "plasma:tomato-steelblue", "-seed", "7", "-quality", "90", good)
        run("convert", "-size", "5600x5600", "xc:red", "-dispose", "Previous", good + ".gif")
        game = Game(screen, program, terminal=screen.home + "/terminal.txt")
        game.shots = shots
        os.makedirs(game.folder + "/Imagens")
        shutil.copy(good, game.folder + "/Imagens")
        game.start()
        game.start_picture(3)
        chosen(game, good)
        watched(game, pointer, "odd names", odd_names, good)
        watched(game, pointer, "huge", huge, good)
        watched(game, pointer, "50,000 files that change", many, good, changing)
        doors(game)
        game.end()
        check(not open(game.terminal, "rb").read(), "the terminal got something")
        without_rights(screen, program)


if __name__ == "__main__":
    script(main)
