#!/usr/bin/env python3
"""Checks how the shipped 32-bit program meets the addon library, from the binaries of a win32
build: the addon double Corvanite.dll is a 32-bit library exporting addon_process_query and
addon_free undecorated, as the C calling convention (__cdecl) names them (__stdcall would export
addon_free@4); and CVHControlPanel.exe is a 32-bit program that looks both up by exactly those
names through GetProcAddress.

    python3 scripts/check-addon-abi.py build/win32
"""
import pathlib
import re
import subprocess
import sys

OBJDUMP = "i686-w64-mingw32-objdump"
EXPORTS = ("addon_process_query", "addon_free")


def objdump(*arguments):
    return subprocess.run([OBJDUMP, *arguments], capture_output=True, text=True, check=True).stdout


def is_32bit(binary):
    return "file format pei-i386" in objdump("-f", str(binary))


def exported_names(library):
    table = re.search(r"\[Ordinal/Name Pointer\] Table\n(.*?)\n\n", objdump("-p", str(library)) + "\n\n",
                      re.DOTALL)
    return re.findall(r"\]\s+(\S+)", table.group(1)) if table else []


def imported_names(program):
    return set(re.findall(r"^\s+[0-9a-f]+\s+\d+\s+(\w+)$", objdump("-p", str(program)), re.M))


def names_looked_up(program):
    """The export names that appear in the program's data as whole C strings."""
    data = program.read_bytes()
    return {name for name in EXPORTS if re.search(rb"(?<![\w@])" + name.encode() + rb"\x00", data)}


def problems(build):
    library = build / "tools" / "Corvanite.dll"
    program = build / "core" / "CVHControlPanel.exe"
    found = []
    for binary in (library, program):
        if not binary.is_file():
            return [f"{binary}: missing"]
        if not is_32bit(binary):
            found.append(f"{binary}: not a 32-bit binary")
    exported = exported_names(library)
    for name in EXPORTS:
        if name not in exported:
            decorated = [export for export in exported if export.lstrip("_").startswith(name + "@")]
            found.append(f"{library}: does not export {name} undecorated"
                         + (f" (exports {', '.join(decorated)}, __stdcall)" if decorated else ""))
    if "GetProcAddress" not in imported_names(program):
        found.append(f"{program}: does not import GetProcAddress")
    for name in sorted(set(EXPORTS) - names_looked_up(program)):
        found.append(f"{program}: does not look up {name} by that name")
    return found


def main():
    build = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "build/win32")
    found = problems(build)
    for problem in found:
        print(problem)
    print(f"addon library and program: {'FAILED' if found else 'the exports and the lookups meet, __cdecl'}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
