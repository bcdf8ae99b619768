#!/usr/bin/env python3
"""Prints the make targets of Wine's build tree that a set of modules needs: the modules named,
everything they import or delay-import (as their Makefile.in says), for every architecture, and
the loader, the server and the fonts.

    python3 scripts/wine32-modules.py TREE "ntdll kernel32 ..." ALL_TARGETS_FILE
"""
import os
import re
import sys


def modules_of(tree):
    """Each module's folder and the modules it imports, by the module's name without .dll."""
    modules = {}
    for base in ("dlls", "programs"):
        for folder in os.listdir(os.path.join(tree, base)):
            makefile = os.path.join(tree, base, folder, "Makefile.in")
            if not os.path.exists(makefile):
                continue
            text = open(makefile).read().replace("\\\n", " ")
            values = dict(re.findall(r"^(\w+)\s*=\s*(.*)$", text, re.M))
            name = values.get("MODULE", "").strip().lower()
            if name:
                imports = (values.get("IMPORTS", "") + " " + values.get("DELAYIMPORTS", "")).split()
                modules[name.removesuffix(".dll")] = (f"{base}/{folder}/", imports)
    return modules


def closure(modules, roots):
    seen, todo = set(), [root.lower() for root in roots]
    while todo:
        name = todo.pop()
        if name in seen or name not in modules:
            continue
        seen.add(name)
        todo.extend(i.lower() for i in modules[name][1] if not i.startswith("$"))
    return seen


def main():
    tree, roots, targets_file = sys.argv[1], sys.argv[2].split(), sys.argv[3]
    modules = modules_of(tree)
    folders = tuple(modules[name][0] for name in closure(modules, roots))
    for target in open(targets_file):
        target = target.strip()
        support = target.startswith(("fonts/", "loader/", "server/")) and not target.endswith((".man", ".plist"))
        if target.startswith(folders) or support:
            print(target)


if __name__ == "__main__":
    main()
