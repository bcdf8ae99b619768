#!/usr/bin/env python3
"""Fails when a Windows program or library of the build imports a DLL that Windows does not ship.

The panel must run from its installation folder alone, so every runtime is linked statically.
"""
import pathlib
import re
import subprocess
import sys

WINDOWS_DLLS = {
    "advapi32.dll", "comctl32.dll", "comdlg32.dll", "crypt32.dll", "dnsapi.dll", "gdi32.dll",
    "iphlpapi.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll", "shell32.dll",
    "shlwapi.dll", "user32.dll", "version.dll", "ws2_32.dll", "wsock32.dll", "secur32.dll",
    "bcrypt.dll", "ntdll.dll", "userenv.dll", "psapi.dll", "wtsapi32.dll", "uxtheme.dll",
}
OBJDUMP = {"x86-64": "x86_64-w64-mingw32-objdump", "i386": "i686-w64-mingw32-objdump"}


def imports(binary: pathlib.Path) -> list[str]:
    header = subprocess.run(["x86_64-w64-mingw32-objdump", "-f", str(binary)],
                            capture_output=True, text=True).stdout
    tool = OBJDUMP["i386"] if "pei-i386" in header else OBJDUMP["x86-64"]
    out = subprocess.run([tool, "-p", str(binary)], capture_output=True, text=True).stdout
    return [name.lower() for name in re.findall(r"DLL Name: (\S+)", out)]


def main() -> int:
    failed = False
    checked = 0
    for folder in sys.argv[1:]:
        for binary in sorted(pathlib.Path(folder).rglob("*")):
            if binary.suffix.lower() not in (".exe", ".dll") or "wineprefix" in binary.parts:
                continue
            if "CMakeFiles" in binary.parts:
                continue
            checked += 1
            foreign = [dll for dll in imports(binary) if dll not in WINDOWS_DLLS]
            if foreign:
                failed = True
                print(f"{binary}: imports {', '.join(foreign)}")
    print(f"checked {checked} Windows binaries: {'FAILED' if failed else 'only Windows DLLs'}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
