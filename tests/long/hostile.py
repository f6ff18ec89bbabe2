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
from desktop import Screen, check, run, script, wait_for  # noqa: E402
from game import Game, Saved  # noqa: E402
from odd_files import bmp_claiming, cut, flat_jpeg, gif_claiming, gradient_bmp  # noqa: E402

MOST_MEMORY = 400  # MiB, at any moment
LONGEST = 25  # seconds for one file


def memory(game):
    """The most memory since the last call, in MiB."""
    with open(f"/proc/{game.process.pid}/status") as file:
        peak = int(re.search(r"VmHWM:\s+(\d+)", file.read()).group(1)) // 1024
    with open(f"/proc/{game.process.pid}/clear_refs", "w") as file:
        file.write("5")
    return peak


def game_pieces(game):
    return game.save("agora").pieces


def move_a_piece(game, pieces):
    """A piece is carried a little, next time back; everything else stays where it is."""
    game.way = -getattr(game, "way", -1)
    saved = Saved(game.folder + "/Save/agora.pzl")
    piece = max(pieces, key=lambda p: p["id"])
    x, y = game.center(saved, piece)
    game.screen.drag(x, y, x + 11 * game.way, y + 11 * game.way)
    after = game_pieces(game)
    changed = [(a, b) for a, b in zip(pieces, after) if a != b]
    check(len(changed) == 1 and changed[0][1]["y"] - changed[0][0]["y"] == 11 * game.way, f"a drag changed {changed}")
    return after


def boxes(game):
    """Closes what message boxes there are; how many there were."""
    count = 0
    while game.windows() != {game.window}:
        game.screen.key("Return")
        count += 1
        check(count < 10, "there is always one more box")
    return count


def choose(game, make, after_scan=None):
    """Opens the dialog on a folder with the one odd entry and chooses it. How many boxes came; seconds of the scan and
    of the choice."""
    folder = game.folder + "/Imagens"
    shutil.rmtree(folder)
    os.makedirs(folder)
    make(folder)
    begin = time.monotonic()
    dialog = game.new_game(3)
    took = time.monotonic() - begin
    x, y, _, _ = game.screen.place(dialog)
    wait_for(lambda: game.screen.pixels()(x + 193, y + 22) == (0xC0, 0xC0, 0xC0), "the frame of its thumbnail")
    if after_scan:
        after_scan(folder)
    begin = time.monotonic()
    game.screen.click(*game.thumbnail(dialog, 1))  # or its frame, where the thumbnail is thinner than a pixel
    game.screen.click(x + 9900 // 15, y + 3710 // 15)
    game.screen.gone("Busca Imagens")
    count = boxes(game)
    choice = time.monotonic() - begin
    check(max(took, choice) < LONGEST, f"the scan took {took:.0f} s, the choice {choice:.0f} s")
    return count, took, choice


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
    game.start_picture(3)
    return game_pieces(game)


def odd_pictures(game, good):
    pieces = start_good_game(game, good)
    base = memory(game)
    print(f"{base} MiB with a game on the board")
    highest = 0
    for name, make, after_scan, comes in pictures(good):
        count, scan, choice = choose(game, make, after_scan)
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
        game.load("mau.pzl")
        if boxes(game):
            print(f"{name}: a message")
        check(game_pieces(game) == pieces, f"{name}: the pieces of the running game changed")
    # The picture is gone: the one message, and the running game goes on.
    with open(save, "wb") as file:
        file.write(text.replace(b"guardada.jpg", b"perdida.jpg"))
    game.load("mau.pzl")
    game.screen.screenshot(game.shots + "/message.png")
    check(boxes(game) == 1, "no message that the picture is gone")
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
              "Outra=" + "x" * 300 + "\r\n[Outro]\r\nSom=True")
    with open(game.folder + "/config.ini", "wb") as file:
        file.write(before.encode())
    game.start()
    game.menu(1, "Up", "Up", "Return")  # the navigator comes on
    wait_for(lambda: "navegador=True" in game.settings(), "the navigator in config.ini")
    after = game.settings()
    check(after == before.replace("navegador=0", "navegador=True"), f"config.ini: {after!r}")
    game.end()
    for odd in (b"\0" * 2000, b"[SETUP\nSom=\n=\n[]\nColor=99999999999999", os.urandom(3000)):
        with open(game.folder + "/config.ini", "wb") as file:
            file.write(odd)
        game.start()
        game.end()
    os.remove(game.folder + "/config.ini")
    os.mkdir(game.folder + "/config.ini")  # cannot be read nor written
    game.start()
    game.menu(1, "Up", "Up", "Return")
    check(game.windows() == {game.window}, "a box came for settings that cannot be written")
    game.end()
    print("odd settings are understood or passed over")


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
        screen.screenshot(f"{shots}/no-rights-{listed}.png")
        if listed:  # the two entries that cannot be read are in the list, and come to nothing
            screen.click(*game.thumbnail(dialog, 2), times=2)
        else:
            screen.key("alt+F4")
        screen.gone("Busca Imagens")
        check(boxes(game) == 0, "a box came for a file that cannot be read")
        game.menu(1, "Up", "Up", "Return")
        check(game.windows() == {game.window}, "a box came for settings that cannot be written")
        made = [name for at, _, names in os.walk(game.folder) for name in names]
        check("config.ini" not in made, f"config.ini among {made}")
        game.end()
    print("without rights: plays on, settings hold for the run")


def main(program, shots):
    with Screen(1366, 768) as screen:
        good = screen.home + "/boa.jpg"
        run("convert", "-size", "600x400", "plasma:tomato-steelblue", "-seed", "7", "-quality", "90", good)
        game = Game(screen, program)
        game.shots = shots
        game.start()
        pieces, highest = odd_pictures(game, good)
        odd_saves(game, good, pieces)
        highest = max(highest, memory(game))
        # As large as pictures come: 100 megapixels each.
        for name, make in (("a photograph of 100 megapixels", lambda f: flat_jpeg(f + "/a.jpg", 11648, 8736)),
                           ("a progressive one", lambda f: flat_jpeg(f + "/a.jpg", 11648, 8736, True)),
                           ("a bitmap of 100 megapixels", lambda f: gradient_bmp(f + "/a.bmp", 11648, 8736)),
                           ("one of 32 bits", lambda f: gradient_bmp(f + "/a.bmp", 11648, 8736, 32))):
            _, scan, choice = choose(game, make)
            peak = memory(game)
            print(f"{name}: scan {scan:.1f} s, choice {choice:.1f} s, {peak} MiB")
            now = game_pieces(game)
            check(now != pieces, f"{name}: no game came of it")
            check(peak < MOST_MEMORY, f"{name}: {peak} MiB")
            highest, pieces = max(highest, peak), now
        shutil.rmtree(game.folder + "/Imagens")
        game.end()
        odd_settings(screen, program, shots, good)
        another_player(screen, program, shots)
    print(f"no odd file took more than {highest} MiB")


if __name__ == "__main__":
    script(main)
