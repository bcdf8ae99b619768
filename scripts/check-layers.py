#!/usr/bin/env python3
"""Fails when a source includes against the order of the tree's folders.

The product's folders stand one above the other, and a source includes only from its own folder
and the folders below it:

    foundation -> host -> diagnostics -> panel -> core

foundation includes foundation only; host includes host and foundation; diagnostics adds host;
panel adds diagnostics; core may include everything. A sub-folder (host/detector, panel/windows,
foundation/messages) stands on its folder's floor. Besides, the native half stands above the
portable one: only a platform file (*_windows.*, *_posix.*, anything in a windows/ folder) includes
a platform header. Every offending include is listed as file:line with the include itself.
"""
import pathlib
import re
import sys

FLOORS = ["foundation", "host", "diagnostics", "panel", "core"]
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')


def is_platform_file(path: str) -> bool:
    parts = path.split("/")
    stem = parts[-1].rsplit(".", 1)[0]
    return stem.endswith("_windows") or stem.endswith("_posix") or "windows" in parts[:-1]


def problem(source: str, included: str) -> str:
    """Why the include runs against the order, or an empty text when it doesn't."""
    floor = FLOORS.index(source.split("/", 1)[0])
    target = included.split("/", 1)[0]
    if target not in FLOORS:
        return "includes from outside the product's folders"
    if FLOORS.index(target) > floor:
        return f"{FLOORS[floor]} stands below {target}"
    if is_platform_file(included) and not is_platform_file(source):
        return "a portable source includes a platform header"
    return ""


def main() -> int:
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
    bad = []
    for folder in FLOORS:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            source = path.relative_to(root).as_posix()
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                match = INCLUDE.match(line)
                if match:
                    why = problem(source, match.group(1))
                    if why:
                        bad.append(f"{source}:{number}: #include \"{match.group(1)}\": {why}")
    for line in bad:
        print(line)
    print(f"folder order {' -> '.join(FLOORS)}: "
          f"{f'{len(bad)} include(s) against it' if bad else 'kept'}")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
