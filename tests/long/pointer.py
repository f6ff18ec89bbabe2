"""The mouse and the pixels of a private screen without a program in between, so that moments are known.

xdotool takes some milliseconds to start; a request to the X server takes some microseconds.
"""

import ctypes
import ctypes.util
import time

ALL_PLANES, Z_PIXMAP = 0xFFFFFFFF, 2


class Pointer:
    def __init__(self, display):
        self.x11 = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
        self.xtst = ctypes.CDLL(ctypes.util.find_library("Xtst") or "libXtst.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x11.XGetImage.restype = ctypes.c_void_p
        self.x11.XGetPixel.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(display.encode()))
        if not self.display.value:
            raise OSError(f"no display {display}")
        self.root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.display))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.x11.XCloseDisplay(self.display)

    def _fake(self, kind, *what):
        """Returns the moment; then the server has it."""
        getattr(self.xtst, f"XTestFake{kind}Event")(self.display, *what, ctypes.c_ulong(0))
        self.x11.XFlush(self.display)
        moment = time.monotonic()
        self.x11.XSync(self.display, 0)
        return moment

    def move(self, x, y):
        return self._fake("Motion", -1, round(x), round(y))

    def press(self, button=1):
        return self._fake("Button", button, 1)

    def release(self, button=1):
        return self._fake("Button", button, 0)

    def click(self, button):
        moment = self.press(button)
        self.release(button)
        return moment

    def pixel(self, x, y):
        image = self.x11.XGetImage(self.display, self.root, round(x), round(y), 1, 1, ctypes.c_ulong(ALL_PLANES),
                                   Z_PIXMAP)
        if not image:
            raise OSError(f"no pixel at {x}, {y}")
        value = self.x11.XGetPixel(ctypes.c_void_p(image), 0, 0) & 0xFFFFFF
        self.x11.XFree(ctypes.c_void_p(ctypes.c_void_p.from_address(image + 16).value))  # XImage.data
        self.x11.XFree(ctypes.c_void_p(image))
        return value

    def seconds_until_changed(self, x, y, before, since, limit=5.0):
        """How long after `since` the pixel is another than `before`; None after `limit`."""
        while time.monotonic() - since < limit:
            if self.pixel(x, y) != before:
                return time.monotonic() - since
        return None
