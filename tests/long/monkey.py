"""A monkey at mouse and keyboard of the real program: nothing dies, no piece stays glued to the pointer.

usage: monkey.py PROGRAM SCREENSHOT_FOLDER [EVENTS [SEED]]
"""

import random

from rough import *  # noqa: F403

KEYS = ("F3 F4 F5 ctrl+s ctrl+o ctrl+m Return Escape Escape space Tab Down Up Left Right alt+j alt+o alt+a Delete a 1").split()


def nothing_follows(game):
    """Every button up, every dialog closed: the pointer moves alone."""
    screen = game.screen
    for button in (1, 2, 3):
        screen.release(button, settle=False)
    for _ in range(20):
        screen.key("Escape")
        shown = game.windows()
        if shown == {game.window}:
            break
        screen.act("windowmap", game.window)
        for window in shown - {game.window}:
            screen.act("windowactivate", window)
            screen.key("Return" if screen.has_window("Parabéns!!") else "alt+F4")
    check(shown == {game.window}, "there is always one more window")
    screen.move(683, 384)
    before = game.shown()
    screen.move(883, 284)
    # What is under the pointer lights up.
    check(sum(a != b for a, b in zip(before, game.shown())) < 60, "something follows the pointer")


def main(program, shots, events=20000, seed=None):
    seed = int(seed or random.randrange(1 << 24))
    print(f"seed {seed}", flush=True)
    chance = random.Random(seed)
    with Screen(1366, 768) as screen:
        game, down = Game(screen, program), set()
        for number in range(12):
            game.picture(f"{number}.jpg", "600x400", "plasma:tomato-steelblue", "-seed", str(number))
        game.start()
        game.start_picture(3)
        for number in range(1, int(events) + 1):
            what = chance.random()
            if what < 0.55:
                screen.move(chance.randrange(1366), chance.randrange(22, 768), settle=False)  # below the title bar
            elif what < 0.75:
                button = chance.choice((1, 1, 1, 3, 2))
                (screen.release if button in down else screen.press)(button, settle=False)
                down ^= {button}
            elif what < 0.95:
                button = chance.choice((1, 1, 3, 4, 5))
                screen.press(button, settle=False)
                screen.release(button, settle=False)
            elif what < 0.998:
                screen.xdo("key", chance.choice(KEYS))
            elif game.windows() != {game.window}:
                screen.xdo("key", "alt+F4")
            if game.process.poll() is not None:
                check(game.process.returncode == 0, f"the program ended with {game.process.returncode} at {number}")
                screen.processes.remove(game.process)
                game.start()
            if number % 2000 == 0 or number == int(events):
                down.clear()
                nothing_follows(game)
                print(f"{number} events, {memory(game):.0f} MiB", flush=True)
        screen.screenshot(f"{shots}/end.png")
        game.end()


if __name__ == "__main__":
    script(main)
