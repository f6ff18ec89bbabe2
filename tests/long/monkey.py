"""A monkey at mouse and keyboard of the real program: nothing dies, no piece stays glued to the pointer, what is saved
at the end loads.

usage: monkey.py PROGRAM SCREENSHOT_FOLDER [EVENTS [SEED]]
"""

import random

from rough import *  # noqa: F403

KEYS = ("F3 F4 F5 ctrl+s ctrl+o ctrl+m Return Escape Escape space Tab Down Up Left Right alt+j alt+o alt+a Delete a 1").split()


def calm(game, pointer):
    """Every button up, every dialog closed, the main window in front."""
    for button in (1, 2, 3):
        pointer.release(button)
    for _ in range(20):
        game.screen.key("Escape")
        shown = game.windows()
        if shown == {game.window}:
            return
        game.screen.act("windowmap", game.window)
        for window in shown - {game.window}:
            game.screen.act("windowactivate", window)
            game.screen.key("Return" if game.screen.has_window("Parabéns!!") else "alt+F4")
    raise Failure(f"there is always one more window: {shown}")


def nothing_follows(game, pointer):
    calm(game, pointer)
    game.screen.move(683, 384)
    before = game.screen.pixels()
    game.screen.move(883, 284)
    after = game.screen.pixels()
    moved = sum(before(a, b) != after(a, b) for a in range(100, 1200, 7) for b in range(120, 700, 7))
    check(moved < 100, "something follows the pointer")  # the clock goes on, and what is under the pointer lights up


def main(program, shots, events=20000, seed=None):
    seed = int(seed or random.randrange(1 << 24))
    print(f"seed {seed}", flush=True)
    chance = random.Random(seed)
    with Screen(1366, 768) as screen, Pointer(screen.env["DISPLAY"]) as pointer:
        game = Game(screen, program)
        for number in range(12):
            game.picture(f"{number}.jpg", "600x400", "plasma:tomato-steelblue", "-seed", str(number))
        game.start()
        game.start_picture(3)
        down = set()
        for number in range(1, int(events) + 1):
            what = chance.random()
            if what < 0.55:
                pointer.move(chance.randrange(1366), chance.randrange(22, 768))  # below the title bar
            elif what < 0.75:
                button = chance.choice((1, 1, 1, 3, 2))
                pointer.release(button) if button in down else pointer.press(button)
                down ^= {button}
            elif what < 0.95:
                pointer.click(chance.choice((1, 1, 3, 4, 5)))
            elif what < 0.998:
                screen.xdo("key", chance.choice(KEYS))
            else:
                screen.xdo("key", "alt+F4") if game.windows() != {game.window} else pointer.move(60, 31)
            if game.process.poll() is not None:
                check(game.process.returncode == 0, f"the program ended with {game.process.returncode} at {number}")
                screen.processes.remove(game.process)
                game.start()
            if number % 2000 == 0:
                down.clear()
                nothing_follows(game, pointer)
                print(f"{number} events, {memory(game):.0f} MiB", flush=True)
        nothing_follows(game, pointer)
        screen.screenshot(f"{shots}/end.png")
        game.end()


if __name__ == "__main__":
    script(main)
