"""Without a window manager: the splash follows a press that comes through late, and windows get the keys.

usage: no_manager.py PROGRAM SCREENSHOT_FOLDER
"""

from desktop import Screen, script, wait_for


def main(program, shots):
    with Screen(1366, 768) as screen:
        manager = screen.processes.pop()
        manager.terminate()
        manager.wait()
        screen._start([program], env=screen.env)
        splash = wait_for(lambda: screen.windows("--class", "fento"), "the splash").pop()
        x, y, _, _ = screen.place(splash)
        screen.move(x + 300, y + 60)
        screen.press()
        screen.move(x + 340, y + 90)
        wait_for(lambda: screen.place(splash)[:2] == (x + 40, y + 30), "the splash to follow the pointer")
        screen.screenshot(shots + "/splash-dragged.png")
        screen.release()
        wait_for(lambda: splash not in screen.windows("--class", "fento"), "the splash to go")
        for keys, title in ("F10 Right Right Up Return", "Sobre o"), ("F1", "Como Jogar"):
            screen.key(*keys.split())
            wait_for(lambda: screen.windows("--name", title), f"the window '{title}'")
            screen.key("Escape")
            wait_for(lambda: not screen.windows("--name", title), f"the window '{title}' to close")
    print("the splash followed the pointer, and Esc closed the small windows")


if __name__ == "__main__":
    script(main)
