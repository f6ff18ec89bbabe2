"""Odd files in odd folders under the real program.

Each odd picture is chosen: a game comes of it, a box, or nothing, and then the game on the board is as it was. Then a
folder with all that is huge, one of odd names and things that are no files, one of 50,000 files that change, and a
player without rights. Nothing may take much memory or keep the player waiting.

usage: hostile.py PROGRAM SCREENSHOT_FOLDER
"""

import shutil
import socket
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
        ("text as a picture", lambda f: open(f + "/a.jpg", "wb").write(b"no picture\n" * 50), ""),
        ("1 x 1", lambda f: run("convert", "-size", "1x1", "xc:red", f + "/a.gif"), "box"),
        ("30000 x 30000 photograph", lambda f: flat_jpeg(f + "/a.jpg", 30000, 30000), "game"),
        ("30000 x 30000 progressive", lambda f: flat_jpeg(f + "/a.jpg", 30000, 30000, True), ""),
        ("65500 x 65500 photograph", lambda f: flat_jpeg(f + "/a.jpg", 65500, 65500), ""),
        ("65500 x 16 photograph", lambda f: flat_jpeg(f + "/a.jpg", 65500, 16), "any"),
        ("20,000 passes of 100 megapixels", lambda f: flat_jpeg(f + "/a.jpg", 11648, 8736, True, 20000), "any"),
        ("a bitmap's header, 30000 x 30000", lambda f: bmp(f + "/a.bmp", 30000, 30000), ""),
        ("a bitmap's header, 2147483647 x 1", lambda f: bmp(f + "/a.bmp", 2147483647, 1), ""),
        ("a bitmap's header, upside down", lambda f: bmp(f + "/a.bmp", 700, -2147483648), ""),
        ("a bitmap's header, 1 bit, 30000 x 30000", lambda f: bmp(f + "/a.bmp", 30000, 30000, 1), "any"),
        ("a GIF's header, 65535 x 65535", lambda f: gif(f + "/a.gif", 65535, 65535), ""),
        ("a GIF's header, 11648 x 8736", lambda f: gif(f + "/a.gif", 11648, 8736), ""),
        ("a GIF of 31 megapixels", lambda f: shutil.copy(good + ".gif", f + "/a.gif"), "game"),
        ("half a photograph", lambda f: open(f + "/a.jpg", "wb").write(open(good, "rb").read()[:9000]), "any"),
        ("another program's format", lambda f: run("convert", good, "png:" + f + "/a.jpg"), ""),
        ("a photograph of 100 megapixels", lambda f: flat_jpeg(f + "/a.jpg", 11648, 8736), "game"),
        ("a progressive one", lambda f: flat_jpeg(f + "/a.jpg", 11648, 8736, True), "game"),
        ("a bitmap of 100 megapixels", lambda f: bmp(f + "/a.bmp", 11648, 8736, whole=True), "game"),
        ("one of 32 bits", lambda f: bmp(f + "/a.bmp", 11648, 8736, 32, whole=True), "game")]


def chosen(game, good):
    folder, pieces = game.folder + "/Imagens", game.save("agora").pieces
    for name, make, comes in pictures(good):
        clear(folder)
        make(folder)
        memory(game, "VmHWM")
        begin = time.monotonic()
        dialog = game.new_game(3)
        corner = frame_corner(game, dialog, 1)
        wait_for(lambda: game.screen.pixels()(*corner) == (0xC0, 0xC0, 0xC0), "the frame of its thumbnail")
        scan, begin = time.monotonic() - begin, time.monotonic()
        game.screen.click(*game.thumbnail(dialog, 1))  # or its frame, where the thumbnail is thinner than a pixel
        x, y, _, _ = game.screen.place(dialog)
        game.screen.click(x + 9900 // 15, y + 3710 // 15)
        game.screen.gone("Busca Imagens")
        count, choice = boxes(game), time.monotonic() - begin
        now, peak = game.save("agora").pieces, bounded(game, name)
        outcome = "box" if count else "" if now == pieces else "game"
        print(f"{name}: {outcome or 'silence'}, scan {scan:.1f} s, choice {choice:.1f} s, {peak:.0f} MiB")
        check(comes in ("any", outcome), f"{name}: {outcome or 'silence'} instead of {comes or 'silence'}")
        check(max(scan, choice) < LONGEST, f"{name}: the scan took {scan:.0f} s, the choice {choice:.0f} s")
        pieces = now


def huge(folder, good):
    """Three of each, so that nearly all are decoded while the answers are watched."""
    flat_jpeg(folder + "/passes 0.jpg", 11648, 8736, True)
    flat_jpeg(folder + "/photo 0.jpg", 11648, 8736)
    flat_jpeg(folder + "/bomb 0.jpg", 11648, 8736, True, 20000)
    bmp(folder + "/bands 0.bmp", 11648, 8736, whole=True)
    gif(folder + "/claim 0.gif", 11648, 8736)
    shutil.copy(good + ".gif", folder + "/flat 0.gif")
    for name in os.listdir(folder):
        for number in "12":
            os.link(f"{folder}/{name}", f"{folder}/{name.replace('0', number)}")


def odd_names(folder, good):
    for name in (b"quebra\nde linha.jpg", b"aspas \"'`$(x).jpg", b".oculta.jpg", b"\xff\xfe\x80.jpg", b"n" * 251 + b".jpg",
                 "dir \u202egpj.\u202d.jpg".encode(), b"&amp <b>x &b.jpg", b"%s%n.jpg", b"\x1b[31m.jpg", b"..jpg", b"a\\b.jpg"):
        shutil.copy(good, os.path.join(folder.encode(), name))
    os.symlink(".", folder + "/volta")
    os.symlink("b.jpg", folder + "/a.jpg"), os.symlink("a.jpg", folder + "/b.jpg")
    os.symlink("/dev/zero", folder + "/zero.bmp"), os.symlink("/dev/tty", folder + "/tty.gif")
    os.mkfifo(folder + "/fifo.jpg"), os.mkdir(folder + "/pasta.jpg")
    with socket.socket(socket.AF_UNIX) as listener:
        os.chdir(folder)
        listener.bind("tomada.jpg")


def many(folder, good):
    for number in range(50000):
        os.symlink(good if number % 500 == 0 else "/dev/null", f"{folder}/{number}." + ("jpg" if number % 500 == 0 else "txt"))


def watched(game, pointer, what, fill, good, changes=lambda folder: None):
    """The dialog fills from a folder while somebody clicks, and is closed."""
    folder = game.folder + "/Imagens"
    clear(folder)
    fill(folder, good)
    memory(game, "VmHWM")
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
            open(path, "ab").truncate(100)
            os.rename(path, path + ".jpg")


def without_rights(screen, program, shots):
    """A program folder and a home that may not be written, pictures that may not be read or listed."""
    if os.getuid() != 0 or not shutil.which("setpriv"):
        return print("skipped: only root can become a player without rights")
    for listed in (True, False):
        game = Game(screen, program)
        pictures = game.folder + "/Imagens"
        os.makedirs(pictures + "/fechada.jpg", 0)
        shutil.copy(__file__, pictures + "/fechado.bmp")
        os.chmod(pictures + "/fechado.bmp", 0)
        for path, mode in ((pictures, 0o755 if listed else 0), (game.folder, 0o755), (screen.home, 0o711)):
            os.chmod(path, mode)
        game.env.update(HOME=game.folder, XDG_RUNTIME_DIR=game.folder)
        start = screen._start
        screen._start = lambda command, **more: start(["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"] +
                                                      command, **more)
        try:
            game.start()
        finally:
            screen._start = start
        dialog = game.new_game(3)
        screen.click(*game.thumbnail(dialog, 2), times=2) if listed else screen.key("alt+F4")
        screen.gone("Busca Imagens")
        game.menu(1, "Up", "Up", "Return")
        check(boxes(game) == 0, "a box came for what can't be read or written")
        made = [name for _, _, names in os.walk(game.folder) for name in names]
        check("config.ini" not in made, f"config.ini among {made}")
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
        print(f"{memory(game):.0f} MiB with a game on the board")
        chosen(game, good)
        watched(game, pointer, "odd names", odd_names, good)
        watched(game, pointer, "huge", huge, good)
        watched(game, pointer, "50,000 files that change", many, good, changing)
        doors(game)
        game.end()
        check(not open(game.terminal, "rb").read(), "the terminal got something")
        without_rights(screen, program, shots)


if __name__ == "__main__":
    script(main)
