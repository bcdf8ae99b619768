#!/usr/bin/env python3
"""Fails when a Windows program or library of the build imports a DLL that Windows does not ship,
or when the shipped program imports one that the system may take from the program's own folder.

The panel must run from its installation folder alone, so every runtime is linked statically. That
folder is one the user can write: a DLL imported by the shipped program is taken from the system
folder only when it is one of the system's known DLLs, so the others are loaded at run time.
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
# The KnownDLLs of Windows 7 and later that the program may import. comctl32.dll is not among them,
# but the manifest's dependency on the common controls 6 makes the system take it side by side.
KNOWN_DLLS = {
    "advapi32.dll", "comdlg32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll",
    "oleaut32.dll", "shell32.dll", "shlwapi.dll", "user32.dll", "ws2_32.dll", "psapi.dll",
    "ntdll.dll", "comctl32.dll",
}
SHIPPED_PROGRAM = "cvhcontrolpanel.exe"
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
            imported = imports(binary)
            foreign = [dll for dll in imported if dll not in WINDOWS_DLLS]
            if foreign:
                failed = True
                print(f"{binary}: imports {', '.join(foreign)}")
            if binary.name.lower() == SHIPPED_PROGRAM:
                unknown = [dll for dll in imported if dll not in KNOWN_DLLS]
                if unknown:
                    failed = True
                    print(f"{binary}: imports {', '.join(unknown)}, not known DLLs of the system")
    print(f"checked {checked} Windows binaries: {'FAILED' if failed else 'only Windows DLLs'}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
