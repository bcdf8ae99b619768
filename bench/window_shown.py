#!/usr/bin/env python3
"""Waits for a window whose title holds TEXT to be mapped on the X display, and prints the wall
clock of that moment in nanoseconds (as `date +%s%N`).

It prints "ready" once it listens, so that the program can be started after it. It listens to the
display's map events instead of asking the display again and again: a poller started every few
milliseconds takes the processor and the display server from the very start it times.

Usage: window_shown.py TEXT [SECONDS]; exits with 1 when no such window came within SECONDS (60).
"""
import ctypes
import select
import sys
import time

MAP_NOTIFY = 19
SUBSTRUCTURE_NOTIFY_MASK = 1 << 19
ANY_PROPERTY_TYPE = 0


class MapEvent(ctypes.Structure):
    _fields_ = [
        ("type", ctypes.c_int),
        ("serial", ctypes.c_ulong),
        ("send_event", ctypes.c_int),
        ("display", ctypes.c_void_p),
        ("event", ctypes.c_ulong),
        ("window", ctypes.c_ulong),
        ("override_redirect", ctypes.c_int),
    ]


class Event(ctypes.Union):
    _fields_ = [("type", ctypes.c_int), ("map", MapEvent), ("pad", ctypes.c_long * 24)]


def load_x11():
    x11 = ctypes.cdll.LoadLibrary("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XOpenDisplay.argtypes = [ctypes.c_char_p]
    x11.XDefaultRootWindow.restype = ctypes.c_ulong
    x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
    x11.XSelectInput.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_long]
    x11.XConnectionNumber.argtypes = [ctypes.c_void_p]
    x11.XPending.argtypes = [ctypes.c_void_p]
    x11.XNextEvent.argtypes = [ctypes.c_void_p, ctypes.POINTER(Event)]
    x11.XFlush.argtypes = [ctypes.c_void_p]
    x11.XInternAtom.restype = ctypes.c_ulong
    x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    x11.XGetWindowProperty.argtypes = [
        ctypes.c_void_p, ctypes.c_ulong, ctypes.c_ulong, ctypes.c_long, ctypes.c_long,
        ctypes.c_int, ctypes.c_ulong, ctypes.POINTER(ctypes.c_ulong),
        ctypes.POINTER(ctypes.c_int), ctypes.POINTER(ctypes.c_ulong),
        ctypes.POINTER(ctypes.c_ulong), ctypes.POINTER(ctypes.c_void_p)]
    x11.XFree.argtypes = [ctypes.c_void_p]
    return x11


def window_title(x11, display, window, atoms):
    """The window's _NET_WM_NAME, else its WM_NAME, as bytes; empty when it has neither."""
    for atom in atoms:
        kind, size = ctypes.c_ulong(), ctypes.c_int()
        count, left, data = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_void_p()
        status = x11.XGetWindowProperty(display, window, atom, 0, 1024, 0, ANY_PROPERTY_TYPE,
                                        ctypes.byref(kind), ctypes.byref(size),
                                        ctypes.byref(count), ctypes.byref(left),
                                        ctypes.byref(data))
        if status == 0 and data.value:
            text = ctypes.string_at(data.value, count.value) if size.value == 8 else b""
            x11.XFree(data)
            if text:
                return text
    return b""


def main():
    text = sys.argv[1].encode()
    deadline = time.monotonic() + (float(sys.argv[2]) if len(sys.argv) > 2 else 60.0)
    x11 = load_x11()
    display = x11.XOpenDisplay(None)
    if not display:
        print("no display", file=sys.stderr)
        return 1
    x11.XSelectInput(display, x11.XDefaultRootWindow(display), SUBSTRUCTURE_NOTIFY_MASK)
    x11.XFlush(display)
    atoms = [x11.XInternAtom(display, b"_NET_WM_NAME", 0), x11.XInternAtom(display, b"WM_NAME", 0)]
    print("ready", flush=True)
    event = Event()
    connection = x11.XConnectionNumber(display)
    while time.monotonic() < deadline:
        if not x11.XPending(display):
            select.select([connection], [], [], max(0.0, deadline - time.monotonic()))
            continue
        x11.XNextEvent(display, ctypes.byref(event))
        if event.type != MAP_NOTIFY:
            continue
        shown = time.time_ns()
        if text in window_title(x11, display, event.map.window, atoms):
            print(shown, flush=True)
            return 0
    return 1


if __name__ == "__main__":
    sys.exit(main())
