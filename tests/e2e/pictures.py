"""Pictures of every kind: thumbnails and boards against what another decoder makes of the files.

usage: pictures.py PROGRAM SCREENSHOT_FOLDER
"""

import os
import shutil

from desktop import Screen, check, run, script
from game import Game

PLASMA = ["-seed", "11", "plasma:red-blue"]
# The mean difference of a colour, 0 to 255, that filters and colour conversions may make; another picture, or one
# turned otherwise, is more than 20 apart.
BOUND = 6.0


def make_pictures(folder):
    os.makedirs(folder)
    to = lambda name: f"{folder}/{name}"
    photo = lambda size, *more: run("convert", "-size", size, *PLASMA, *more)
    photo("640x420", "-quality", "92", to("baseline.jpg"))
    photo("640x420", "-quality", "92", "-interlace", "JPEG", to("progressive.jpg"))
    photo("420x640", "-colorspace", "Gray", "-quality", "92", to("grey.jpg"))
    photo("640x420", "-colorspace", "CMYK", "-quality", "92", to("cmyk.jpg"))
    photo("320x240", "-colors", "200", to("plain.gif"))
    photo("320x240", "-colors", "200", "-interlace", "GIF", to("interlaced.gif"))
    run("convert", "-size", "320x240", "plasma:green-yellow", "xc:black", "xc:red", "-loop", "0", to("animated.gif"))
    run("convert", "-size", "320x240", "xc:navy", "-fill", "orange", "-draw", "circle 160,120 160,20",
        "-transparent", "navy", to("holes.gif"))
    photo("320x240", "-monochrome", "BMP3:" + to("bits1.bmp"))
    photo("320x240", "-colors", "16", "-type", "Palette", "-compress", "None", "BMP3:" + to("bits4.bmp"))
    photo("320x240", "-colors", "200", "-type", "Palette", "-compress", "None", "BMP3:" + to("bits8.bmp"))
    photo("320x240", "-colors", "200", "-type", "Palette", "-compress", "RLE", "BMP3:" + to("runs8.bmp"))
    photo("320x240", "-type", "TrueColor", "BMP3:" + to("bits24.bmp"))


def reference(path, width, height):
    """The picture at that size as the other decoder has it, as bytes."""
    return run("convert", path + "[0]", "-background", "white", "-alpha", "remove", "-alpha", "off",
               "-colorspace", "sRGB", "-type", "TrueColor", "-filter", "box" if width < 400 else "Triangle",
               "-resize", f"{width}x{height}!", "-depth", "8", "rgb:-", binary=True)


def natural(path):
    return tuple(map(int, run("convert", path + "[0]", "-format", "%w %h", "info:").split()))


def mean_difference(pairs):
    """Of the colours of pairs of pixels."""
    pairs = list(pairs)
    return sum(abs(a - b) for one, other in pairs for a, b in zip(one, other)) / (3 * len(pairs))


def apart(pixel, left, top, ref, width, height, bottom):
    """The mean difference over the rectangle, its border and what lies below `bottom` left out; the best of nine
    places inside the sheet's frame."""
    inset, seen = 3, min(height - 3, bottom - top)
    return min(mean_difference((pixel(left + dx + x, top + dy + y), ref[3 * (y * width + x):][:3])
                               for y in range(inset, seen, 2) for x in range(inset, width - inset, 2))
               for dy in (1, 2, 3) for dx in (1, 2, 3))


def thumbnail_size(width, height):
    """Inside 1635 by 1500 twips, touching it on one side."""
    if width > height and height * 1635 <= 1500 * width:
        return 1635, 1635 * height / width
    return 1500 * width / height, 1500


def offer(game, files):
    """Makes these the only pictures there are."""
    folder = game.folder + "/Imagens"
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    for file in files:
        shutil.copy(file, folder)
    return folder


def check_thumbnails(game, files, shots, page):
    screen = game.screen
    folder = offer(game, files)
    dialog = game.new_game(3)
    screen.move(5, screen.height - 5)
    pixel = screen.pixels()
    screen.screenshot(f"{shots}/thumbnails-{page}.png")
    wrong = []
    bottom = screen.place(dialog)[1] + 3460 // 15 - 5  # the second row is cut off by the sheet's frame
    names = os.listdir(folder)  # the file system's own order, as the dialog's
    for number, name in enumerate(sorted(names, key=str.lower) if game.for_windows else names, 1):
        w, h = thumbnail_size(*natural(f"{folder}/{name}"))
        x, y = game.thumbnail(dialog, number)
        width, height = round(w / 15), round(h / 15)
        difference = apart(pixel, round(x - w / 30), round(y - h / 30), reference(f"{folder}/{name}", width, height),
                           width, height, bottom)
        print(f"thumbnail of {name}: {difference:.1f} of 255")
        if difference > BOUND:
            wrong.append(f"{name} by {difference:.1f}")
    screen.key("alt+F4")
    screen.gone("Busca Imagens")
    return wrong


def check_board(game, file, shots):
    """Square pieces lie upright at "Kids A": each shows its cell of the picture. How far they are from it, and how
    far their darkest and lightest tenths are apart."""
    screen = game.screen
    offer(game, [file])
    game.start_picture(0)
    saved = game.save("jogo")
    pixel = screen.pixels()
    name = os.path.basename(file)
    screen.screenshot(f"{shots}/board-{name}.png")
    cols = 1 + max(p["col"] for p in saved.pieces)
    rows = 1 + max(p["row"] for p in saved.pieces)
    painted, (width, height) = reference(file, *saved.size), saved.size
    left, top = (cols * saved.cell - width) // 2, (rows * saved.cell - height) // 2
    margin = (saved.tile - saved.cell) // 2
    pairs = []
    for piece in saved.pieces:
        x0, y0 = game.to_screen(piece["x"] + margin, piece["y"] + margin)
        if x0 < 0 or x0 + saved.cell > screen.width - 240 or y0 < game.origin[1] or y0 + saved.cell > screen.height - 240:
            continue  # not wholly in view, or below the panel
        for y in range(8, saved.cell - 8, 2):
            for x in range(8, saved.cell - 8, 2):
                px, py = piece["col"] * saved.cell + x - left, piece["row"] * saved.cell + y - top
                if 2 <= px < width - 2 and 2 <= py < height - 2:
                    pairs.append((pixel(int(x0) + x, int(y0) + y), painted[3 * (py * width + px):][:3]))
    check(len(pairs) >= 1000, f"{name}: too little of the board is in view")
    shades = sorted(seen[1] for seen, _ in pairs)
    contrast = shades[len(shades) * 9 // 10] - shades[len(shades) // 10]
    difference = mean_difference(pairs)
    print(f"board of {name}: {len(saved.pieces)} pieces, {difference:.1f} of 255 apart, contrast {contrast}")
    return difference, contrast


def check_boards(game, pictures, shots):
    wrong = []
    for name in ("progressive.jpg", "cmyk.jpg", "grey.jpg", "holes.gif", "runs8.bmp", "bits24.bmp"):
        difference, _ = check_board(game, f"{pictures}/{name}", shots)
        if difference > BOUND:
            wrong.append(f"the board of {name} by {difference:.1f}")
    # A photograph of 24 megapixels: stripes that are still some pixels wide stay sharp, finer ones turn grey.
    for name, stripe in (("stripes.jpg", 40), ("grain.jpg", 2)):
        row = (b"\0" * stripe + b"\xff" * stripe) * (6000 // stripe)
        with open(f"{pictures}/stripes.pgm", "wb") as file:
            file.write(b"P5 6000 4000 255\n" + row[:6000] * 4000)
        run("convert", f"{pictures}/stripes.pgm", "-quality", "95", f"{pictures}/{name}")
        difference, contrast = check_board(game, f"{pictures}/{name}", shots)
        if name == "stripes.jpg" and (difference > BOUND + 2 or contrast < 220):
            wrong.append(f"stripes lose their contrast: {contrast}, {difference:.1f} apart")
        if name == "grain.jpg" and contrast > 24:
            wrong.append(f"fine stripes become grain: {contrast}")
    return wrong


def main(program, shots):
    with Screen(1366, 768) as screen:
        game = Game(screen, program)
        pictures = screen.home + "/pictures"
        make_pictures(pictures)
        files = sorted(f"{pictures}/{name}" for name in os.listdir(pictures))
        game.start()
        wrong = []
        for page in range(0, len(files), 8):
            wrong += check_thumbnails(game, files[page:page + 8], shots, page // 8 + 1)
        wrong += check_boards(game, pictures, shots)
        game.end()
    check(not wrong, "differ from the reference: " + "; ".join(wrong))
    print(f"{len(files)} thumbnails and 8 boards look as they should")


if __name__ == "__main__":
    script(main)
