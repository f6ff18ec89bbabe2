"""Odd files, spoilt saved games and odd places under the real program, one after the other in one run.

After each the game on the board must be as it was: it is saved and compared, and a piece is moved. Prints how long
each took and how much memory it needed at most.

usage: hostile.py PROGRAM SCREENSHOT_FOLDER
"""

import os
import re
import shutil
import socket
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))
from desktop import Failure, Game, Saved, Screen, run, wait_for  # noqa: E402
from odd_files import bmp_claiming, cut, flat_jpeg, gif_claiming, gradient_bmp  # noqa: E402

MOST_MEMORY = 400  # MiB, at any moment
LONGEST = 25  # seconds for one file
SMALL = "A imagem selecionada é muito pequena!"


def check(true, what):
    if not true:
        raise Failure(what)


def memory(game):
    """The most memory since the last call, in MiB."""
    with open(f"/proc/{game.process.pid}/status") as file:
        peak = int(re.search(r"VmHWM:\s+(\d+)", file.read()).group(1)) // 1024
    with open(f"/proc/{game.process.pid}/clear_refs", "w") as file:
        file.write("5")
    return peak


def alive(game, what):
    check(game.process.poll() is None, f"{what}: the program ended with {game.process.returncode}")


def game_pieces(game):
    return Saved(game.save("agora")).pieces


def move_a_piece(game, pieces):
    """A piece is carried a little, next time back; everything else stays where it is."""
    game.way = -getattr(game, "way", -1)
    saved = Saved(game.folder + "/Save/agora.pzl")
    piece = max(pieces, key=lambda p: p["id"])
    half = saved.tile // 2
    x, y = game.to_screen(piece["x"] + half, piece["y"] + half)
    game.screen.drag(x, y, x + 11 * game.way, y + 11 * game.way)
    after = game_pieces(game)
    changed = [(a, b) for a, b in zip(pieces, after) if a != b]
    check(len(changed) == 1 and changed[0][1]["y"] - changed[0][0]["y"] == 11 * game.way, f"a drag changed {changed}")
    return after


def boxes(game, seconds=1.0):
    """Closes what message boxes there are; how many there were."""
    count, end = 0, time.monotonic() + seconds
    while time.monotonic() < end:
        if game.windows() > 1 and not game.screen.has_window("Busca Imagens"):
            game.screen.key("Return")
            count += 1
            time.sleep(0.3)
        time.sleep(0.1)
    return count


def cell_shown(game, dialog):
    """Whether the first thumbnail has its grey frame."""
    x, y, _, _ = game.screen.place(dialog)
    at = 3 * (game.screen.width * (y + 22) + x + 193)
    return game.screen.bytes()[at:at + 3] == b"\xc0" * 3


def scan_ends(game, dialog, name):
    """Until the one thumbnail is there, the wait text at the lower left has gone and all is at rest."""
    def area():
        data, width = game.screen.bytes(), game.screen.width
        x, y, w, h = game.screen.place(dialog)
        return b"".join(data[3 * (width * row + x):3 * (width * row + x + w)] for row in range(y, y + h, 3))

    begin = time.monotonic()
    wait_for(lambda: cell_shown(game, dialog), f"{name}: its thumbnail", LONGEST)
    before, still = area(), 0
    while still < 3:
        check(time.monotonic() - begin < LONGEST, f"{name}: the scan does not end")
        time.sleep(0.2)
        now = area()
        still, before = (still + 1 if now == before else 0), now
    return time.monotonic() - begin


def choose(game, make, after_scan=None):
    """Opens the dialog on a folder with the one odd entry and chooses it. True if a box came."""
    folder = game.folder + "/Imagens"
    shutil.rmtree(folder)
    os.makedirs(folder)
    make(folder)
    dialog = game.new_game(3)
    game.screen.move(5, game.screen.height - 5)
    took = scan_ends(game, dialog, "scan")
    if after_scan:
        after_scan(folder)
    begin = time.monotonic()
    game.screen.click(*game.thumbnail(dialog, 1))  # or its frame, where the thumbnail is thinner than a pixel
    x, y, _, _ = game.screen.place(dialog)
    game.screen.click(x + 9900 // 15, y + 3710 // 15)
    game.screen.gone("Busca Imagens", LONGEST)
    count = boxes(game)
    wait_for(lambda: game.windows() == 1, "the boxes to close", LONGEST)
    # The pointer is the hourglass until the game stands: a menu opens only then.
    game.refresh_menu(0)
    return count, took, time.monotonic() - begin


def socket_file(path):
    with socket.socket(socket.AF_UNIX) as listener:
        listener.bind(path)


def pictures(good):
    """Name, how it is made, what happens after the scan, and what comes of it: "", "box", "game", or "any"."""
    write = lambda name, data: lambda folder: open(f"{folder}/{name}", "wb").write(data)
    return [
        ("text as a picture", write("a.jpg", b"no picture\n" * 50), None, ""),
        ("an empty file", write("a.gif", b""), None, ""),
        ("a folder named like a picture", lambda f: os.makedirs(f + "/a.jpg"), None, ""),
        ("a FIFO", lambda f: os.mkfifo(f + "/a.bmp"), None, ""),
        ("a socket", lambda f: socket_file(f + "/a.jpg"), None, ""),
        ("a link to itself", lambda f: os.symlink("a.jpg", f + "/a.jpg"), None, ""),
        ("a link to a device that never ends", lambda f: os.symlink("/dev/zero", f + "/a.bmp"), None, ""),
        ("a file that vanishes", lambda f: shutil.copy(good, f + "/a.jpg"), lambda f: os.remove(f + "/a.jpg"), ""),
        ("a folder that vanishes", lambda f: shutil.copy(good, f + "/a.jpg"), lambda f: shutil.rmtree(f) or
         os.makedirs(f), ""),
        ("a file that is emptied", lambda f: shutil.copy(good, f + "/a.jpg"), lambda f: open(f + "/a.jpg", "w"), ""),
        ("1 x 1", lambda f: run("convert", "-size", "1x1", "xc:red", f + "/a.gif"), None, "box"),
        ("60 x 300", lambda f: run("convert", "-size", "60x300", "xc:red", f + "/a.jpg"), None, "box"),
        ("30000 x 30000 photograph", lambda f: flat_jpeg(f + "/a.jpg", 30000, 30000), None, "game"),
        ("30000 x 30000 progressive", lambda f: flat_jpeg(f + "/a.jpg", 30000, 30000, True), None, ""),
        ("65500 x 65500 photograph", lambda f: flat_jpeg(f + "/a.jpg", 65500, 65500), None, ""),
        ("65500 x 16 photograph", lambda f: flat_jpeg(f + "/a.jpg", 65500, 16), None, "any"),
        ("a bitmap's header, 30000 x 30000", lambda f: bmp_claiming(f + "/a.bmp", 30000, 30000), None, ""),
        ("a bitmap's header, 2147483647 x 1", lambda f: bmp_claiming(f + "/a.bmp", 2147483647, 1), None, ""),
        ("a bitmap's header, upside down", lambda f: bmp_claiming(f + "/a.bmp", 700, -2147483648), None, ""),
        ("a bitmap's header, 1 bit, 30000 x 30000", lambda f: bmp_claiming(f + "/a.bmp", 30000, 30000, 1), None, "any"),
        ("a GIF's header, 65535 x 65535", lambda f: gif_claiming(f + "/a.gif", 65535, 65535), None, ""),
        ("half a photograph", lambda f: cut(good, f + "/a.jpg", os.path.getsize(good) // 2), None, "any"),
        ("two bytes of a photograph", lambda f: cut(good, f + "/a.jpg", 2), None, ""),
        ("another program's format", lambda f: run("convert", "-size", "300x200", "xc:red", "png:" + f + "/a.jpg"), None,
         ""),
    ]


def start_good_game(game, good):
    shutil.rmtree(game.folder + "/Imagens", ignore_errors=True)
    os.makedirs(game.folder + "/Imagens")
    shutil.copy(good, game.folder + "/Imagens/boa.jpg")
    dialog = game.new_game(3)
    time.sleep(0.8)
    game.screen.click(*game.thumbnail(dialog, 1), times=2)
    game.screen.gone("Busca Imagens")
    time.sleep(0.5)
    return game_pieces(game)


def odd_pictures(game, good):
    pieces = start_good_game(game, good)
    base = memory(game)
    print(f"{base} MiB with a game on the board")
    highest = 0
    for name, make, after_scan, comes in pictures(good):
        count, scan, choice = choose(game, make, after_scan)
        alive(game, name)
        peak = memory(game)
        highest = max(highest, peak)
        now = game_pieces(game)
        outcome = "box" if count else "" if now == pieces else "game"
        print(f"{name}: {outcome or 'silence'}, scan {scan:.1f} s, choice {choice:.1f} s, {peak} MiB")
        check(comes in ("any", outcome), f"{name}: {outcome or 'silence'} instead of {comes or 'silence'}")
        check(peak < MOST_MEMORY, f"{name}: {peak} MiB")
        if outcome == "game":
            pieces = start_good_game(game, good)
            memory(game)
        else:
            check(now == pieces, f"{name}: the pieces of the running game changed")
            pieces = move_a_piece(game, pieces)
    return pieces, highest


def spoilt_games(text, good):
    """Names and bytes of files that are no saved game of this program."""
    lines = text.split(b"\r\n")
    line = lambda number, value: b"\r\n".join(lines[:number - 1] + [value] + lines[number:])
    yield "nothing", b""
    for kept in (1, len(lines[0]) + 4, len(text) // 3, len(text) - 20):
        yield f"the first {kept} bytes", text[:kept]
    for number in (1, 3, 4, 6, 7, 10):
        for value in (b" abc ", b" 99999999999999999999 ", b"-1 "):
            yield f"{value.decode().strip()} in line {number}", line(number, value)
    yield "huge pieces", line(6, b" 32760 ").replace(lines[6], b" 18018 ").replace(lines[7], b" 1638 ")
    yield "a piece twice", line(12, lines[10])
    yield "32766 pieces", line(10, b" 32766 ") + (lines[10] + b"\r\n") * 32000
    yield "a megabyte of one line", b"1" * (1 << 20)
    yield "a picture", open(good, "rb").read()


def load(game):
    """Loads the spoilt game; the number of boxes that came."""
    screen = game.screen
    screen.key("ctrl+o")
    wait_for(lambda: game.windows() == 2, "the open dialog")
    time.sleep(0.4)
    screen.type("mau.pzl")
    screen.key("Return")
    time.sleep(0.5)
    if game.windows() == 1:
        return 0
    screen.screenshot(game.shots + "/message.png")
    screen.key("Return")
    wait_for(lambda: game.windows() == 1, "the message to close")
    return 1


def odd_saves(game, good, pieces):
    shutil.copy(good, game.folder + "/guardada.jpg")
    save = game.folder + "/Save/mau.pzl"
    with open(game.folder + "/Save/agora.pzl", "rb") as file:
        text = file.read().replace((game.folder + "/Imagens/boa.jpg").encode("cp1252"),
                                   (game.folder + "/guardada.jpg").encode("cp1252"))
    count = 0
    for name, data in spoilt_games(text, good):
        with open(save, "wb") as file:
            file.write(data)
        count += 1
        if load(game):
            print(f"{name}: a message")
        alive(game, name)
        check(game_pieces(game) == pieces, f"{name}: the pieces of the running game changed")
    # The picture is gone: the one message, and the running game goes on.
    with open(save, "wb") as file:
        file.write(text.replace(b"guardada.jpg", b"perdida.jpg"))
    check(load(game) == 1, "no message that the picture is gone")
    check(game_pieces(game) == pieces, "the pieces changed with a picture that is gone")
    move_a_piece(game, pieces)
    # And the whole game loads still.
    with open(save, "wb") as file:
        file.write(text)
    game.load("mau.pzl")
    check(game_pieces(game) == pieces, "the sound game does not load")
    print(f"{count + 1} spoilt saved games left the running game as it was")


def odd_settings(screen, program, shots, good):
    """Odd lines in config.ini are kept, what they say is understood."""
    game = Game(screen, program)
    game.shots = shots
    before = ("; minhas cores\r\n[setup]\r\nSOM = FALSO \r\nnavegador=0\r\nColor=\"15203838\"\r\n\r\nlixo sem igual\r\n"
              "Outra=" + "x" * 300 + "\r\n[Outro]\r\nSom=True").encode()
    with open(game.folder + "/config.ini", "wb") as file:
        file.write(before)
    start_without_board(game)
    game.menu(1, "Up", "Up", "Return")  # the navigator comes on
    wait_for(lambda: b"navegador=True" in open(game.folder + "/config.ini", "rb").read(), "the navigator in config.ini")
    after = open(game.folder + "/config.ini", "rb").read()
    check(after == before.replace(b"navegador=0", b"navegador=True"), f"config.ini: {after!r}")
    game.end()
    for odd in (b"\0" * 2000, b"[SETUP\nSom=\n=\n[]\nColor=99999999999999", os.urandom(3000)):
        with open(game.folder + "/config.ini", "wb") as file:
            file.write(odd)
        start_without_board(game)
        alive(game, "odd settings")
        game.end()
    os.remove(game.folder + "/config.ini")
    os.mkdir(game.folder + "/config.ini")  # cannot be read nor written
    start_without_board(game)
    game.menu(1, "Up", "Up", "Return")
    time.sleep(0.3)
    check(game.windows() == 1, "a box came for settings that cannot be written")
    game.end()
    print("odd settings are understood or passed over")


def start_without_board(game):
    """start(), for a board of any colour."""
    try:
        game.start()
    except Failure as failure:
        if "no board" not in str(failure):
            raise
        x, y, _, _ = game.screen.place(game.window)
        game.origin = (x, y + 29)


def another_player(screen, program, shots):
    """A player without rights: a program folder and a home that may not be written, pictures that may not be read."""
    if os.getuid() != 0 or not shutil.which("setpriv"):
        print("skipped: only root can become a player without rights")
        return
    for listed in (True, False):
        game = Game(screen, program)
        game.shots = shots
        home, pictures = game.folder + "/casa", game.folder + "/Imagens"
        os.mkdir(home)
        os.makedirs(pictures + "/fechada.jpg")
        os.chmod(pictures + "/fechada.jpg", 0)
        shutil.copy(__file__, pictures + "/fechado.bmp")
        os.chmod(pictures + "/fechado.bmp", 0)
        os.chmod(pictures, 0o755 if listed else 0)
        os.chmod(game.folder, 0o755)
        os.chmod(screen.home, 0o711)
        game.env.update(HOME=home, XDG_RUNTIME_DIR=home)
        start = screen._start
        wrapped = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
        screen._start = lambda command, **more: start(wrapped + command, **more)
        try:
            game.start()
        finally:
            screen._start = start
        dialog = game.new_game(3)
        time.sleep(1.5)
        alive(game, "a folder without rights")
        screen.screenshot(f"{shots}/no-rights-{listed}.png")
        if listed:  # the two entries that cannot be read are in the list, and come to nothing
            screen.click(*game.thumbnail(dialog, 2), times=2)
        else:
            screen.key("alt+F4")
        screen.gone("Busca Imagens")
        check(boxes(game) == 0, "a box came for a file that cannot be read")
        game.menu(1, "Up", "Up", "Return")
        time.sleep(0.5)
        check(game.windows() == 1, "a box came for settings that cannot be written")
        made = [name for at, _, names in os.walk(game.folder) for name in names]
        check("config.ini" not in made, f"config.ini among {made}")
        game.end()
        check(game.process.returncode == 0, f"the program ended with {game.process.returncode}")
    print("without rights: plays on, settings hold for the run")


def main():
    program, shots = sys.argv[1], sys.argv[2]
    os.makedirs(shots, exist_ok=True)
    with Screen(1366, 768) as screen:
        good = screen.home + "/boa.jpg"
        run("convert", "-size", "600x400", "plasma:tomato-steelblue", "-seed", "7", "-quality", "90", good)
        game = Game(screen, program)
        game.shots = shots
        game.start()
        try:
            pieces, highest = odd_pictures(game, good)
            odd_saves(game, good, pieces)
        except Failure:
            screen.screenshot(f"{shots}/failed.png")
            raise
        highest = max(highest, memory(game))
        # As large as pictures come: 100 megapixels each.
        for name, make in (("a photograph of 100 megapixels", lambda f: flat_jpeg(f + "/a.jpg", 11648, 8736)),
                           ("a progressive one", lambda f: flat_jpeg(f + "/a.jpg", 11648, 8736, True)),
                           ("a bitmap of 100 megapixels", lambda f: gradient_bmp(f + "/a.bmp", 11648, 8736)),
                           ("one of 32 bits", lambda f: gradient_bmp(f + "/a.bmp", 11648, 8736, 32))):
            _, scan, choice = choose(game, make)
            alive(game, name)
            peak = memory(game)
            print(f"{name}: scan {scan:.1f} s, choice {choice:.1f} s, {peak} MiB")
            now = game_pieces(game)
            check(now != pieces, f"{name}: no game came of it")
            check(peak < MOST_MEMORY, f"{name}: {peak} MiB")
            highest, pieces = max(highest, peak), now
        shutil.rmtree(game.folder + "/Imagens")
        game.end()
        check(game.process.returncode == 0, f"the program ended with {game.process.returncode}")
        odd_settings(screen, program, shots, good)
        another_player(screen, program, shots)
    print(f"no odd file took more than {highest} MiB")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"hostile: {failure}")
