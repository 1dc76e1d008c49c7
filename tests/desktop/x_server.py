"""What the window server knows of its windows and shows on its screen, asked directly: a program that is
started for each look would take more of the processor than what it looks at."""

import ctypes
import os
import re

WHOLE = ctypes.c_ulong(-1)
Z_PIXMAP = 2
VIEWABLE = 2
ICONIC = 3
NUMBER = ctypes.c_ulong  # of windows and names


class Image(ctypes.Structure):
    """The beginning of what the window server's library calls an image."""
    _fields_ = [('width', ctypes.c_int), ('height', ctypes.c_int), ('offset', ctypes.c_int),
                ('format', ctypes.c_int), ('data', ctypes.c_void_p)]


class Attributes(ctypes.Structure):
    """What it calls the attributes of a window."""
    _fields_ = [*((name, ctypes.c_int) for name in
                  ('x', 'y', 'width', 'height', 'border', 'depth')),
                ('visual', ctypes.c_void_p), ('root', NUMBER),
                *((name, ctypes.c_int) for name in ('kind', 'bits', 'gravity', 'backing')),
                ('planes', NUMBER), ('pixel', NUMBER), ('below', ctypes.c_int),
                ('colours', NUMBER), ('installed', ctypes.c_int), ('map_state', ctypes.c_int),
                ('all_events', ctypes.c_long), ('events', ctypes.c_long),
                ('kept_events', ctypes.c_long), ('override', ctypes.c_int),
                ('screen', ctypes.c_void_p)]


def library():
    x = ctypes.CDLL('libX11.so.6')
    x.XOpenDisplay.restype = ctypes.c_void_p
    x.XDefaultRootWindow.restype = NUMBER
    x.XInternAtom.restype = NUMBER
    x.XGetImage.restype = ctypes.POINTER(Image)
    return x


@ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
def pass_over(_server, _error):
    """A window may go while it is asked for. By itself the library would end the process."""
    return 0


class Server:
    """A connection to the display `name`. Places are in pixels of the screen."""

    def __init__(self, name):
        self.x = library()
        self.x.XSetErrorHandler(pass_over)
        self.server = ctypes.c_void_p(self.x.XOpenDisplay(name.encode()))
        if not self.server:
            raise OSError(f'no window server at {name}')
        self.root = self.x.XDefaultRootWindow(self.server)

    def close(self):
        """Once or more often."""
        # By itself the library would ask the server, and end the process where that has gone.
        if self.server:
            os.close(self.x.XConnectionNumber(self.server))
        self.server = None

    def look(self, left, top, width, height):
        """Blue, green, red and a byte without meaning for each pixel, row by row."""
        image = self.x.XGetImage(self.server, NUMBER(self.root), left, top, width, height, WHOLE,
                                 Z_PIXMAP)
        if not image:
            raise OSError('the window server shows nothing')
        pixels = ctypes.string_at(image.contents.data, width * height * 4)
        self.x.XDestroyImage(image)
        return pixels

    def colours(self, left, top, width, height):
        """Red, green, blue for each pixel."""
        pixels = self.look(left, top, width, height)
        found = bytearray(width * height * 3)
        for channel in range(3):
            found[channel::3] = pixels[2 - channel::4]
        return bytes(found)

    def attributes(self, window):
        """None if there is no such window."""
        found = Attributes()
        known = self.x.XGetWindowAttributes(self.server, NUMBER(window), ctypes.byref(found))
        return found if known else None

    def geometry(self, window):
        """Left, top, width, height on the screen; None if there is no such window."""
        found = self.attributes(window)
        if not found:
            return None
        left, top, child = ctypes.c_int(), ctypes.c_int(), NUMBER()
        self.x.XTranslateCoordinates(
            self.server, NUMBER(window), NUMBER(self.root), -found.border, -found.border,
            ctypes.byref(left), ctypes.byref(top), ctypes.byref(child))
        return left.value, top.value, found.width, found.height

    def children(self, window):
        root, parent, count = NUMBER(), NUMBER(), ctypes.c_uint()
        numbers = ctypes.POINTER(NUMBER)()
        self.x.XQueryTree(self.server, NUMBER(window), ctypes.byref(root), ctypes.byref(parent),
                          ctypes.byref(numbers), ctypes.byref(count))
        found = numbers[:count.value]
        if numbers:
            self.x.XFree(numbers)
        return found

    def visible(self, window=None):
        """All windows that can be seen, from the lowest to the topmost."""
        for child in self.children(window or self.root):
            found = self.attributes(child)
            if found and found.map_state == VIEWABLE:
                yield child
                yield from self.visible(child)

    def property(self, window, name):
        """Its bytes, or its numbers; None if there is no such property."""
        atom = self.x.XInternAtom(self.server, name.encode(), 0)
        kind, shape, count, rest = NUMBER(), ctypes.c_int(), NUMBER(), NUMBER()
        data = ctypes.POINTER(ctypes.c_ubyte)()
        failed = self.x.XGetWindowProperty(
            self.server, NUMBER(window), NUMBER(atom), ctypes.c_long(0), ctypes.c_long(65536), 0,
            NUMBER(0), ctypes.byref(kind), ctypes.byref(shape), ctypes.byref(count),
            ctypes.byref(rest), ctypes.byref(data))
        if failed or not kind.value:
            return None
        if shape.value == 32:  # each of them takes a long here
            numbers = ctypes.cast(data, ctypes.POINTER(NUMBER))[:count.value]
        else:
            numbers = ctypes.string_at(data, count.value * shape.value // 8)
        self.x.XFree(data)
        return numbers

    def title(self, window):
        name = self.property(window, '_NET_WM_NAME') or self.property(window, 'WM_NAME') or b''
        return name.decode(errors='replace')

    def titled(self, title):
        """Those that can be seen and have a title that is the expression's."""
        return [window for window in self.visible() if re.fullmatch(title, self.title(window))]

    def windows_of(self, process, kind):
        """Those of a process, by its number, that can be seen and are of that class."""
        wanted = kind.encode()
        return [window for window in self.visible()
                if self.property(window, '_NET_WM_PID') == [process] and
                wanted in (self.property(window, 'WM_CLASS') or b'').split(b'\0')]

    def listed(self):
        """Those in the lists that the window manager shows; None before it is ready."""
        return self.property(self.root, '_NET_CLIENT_LIST')

    def active(self):
        """The window that is the active one to the window manager."""
        return (self.property(self.root, '_NET_ACTIVE_WINDOW') or [0])[0]

    def focused(self):
        """The window that has the keyboard."""
        window, reverts = NUMBER(), ctypes.c_int()
        self.x.XGetInputFocus(self.server, ctypes.byref(window), ctypes.byref(reverts))
        return window.value

    def is_iconic(self, window):
        return (self.property(window, 'WM_STATE') or [0])[0] == ICONIC
