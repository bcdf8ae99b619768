#!/usr/bin/env python3
"""Fails when a portable source reaches for the platform.

Platform calls live only in *_windows.cpp, *_posix.cpp and panel/windows/; every other source of the
product is free of <windows.h>, POSIX system headers and #ifdef _WIN32.
"""
import pathlib
import re
import sys

FOLDERS = ["core", "host", "panel", "diagnostics", "foundation"]
FORBIDDEN = re.compile(
    r'#\s*include\s*[<"](windows|winsock2|ws2tcpip|iphlpapi|shlobj|commctrl|unistd|dlfcn|spawn|'
    r'sys/[a-z_]+|signal|pwd|fcntl)\.h[>"]|#\s*if(def|ndef)?\s.*_WIN32', re.IGNORECASE)


def is_platform_file(path: pathlib.Path) -> bool:
    return (path.stem.endswith("_windows") or path.stem.endswith("_posix")
            or "windows" in path.parts)


def main() -> int:
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
    bad = []
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp") or is_platform_file(path.relative_to(root)):
                continue
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                if FORBIDDEN.search(line):
                    bad.append(f"{path.relative_to(root)}:{number}: {line.strip()}")
    for line in bad:
        print(line)
    print(f"portable sources: {'platform code found' if bad else 'clean'}")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
