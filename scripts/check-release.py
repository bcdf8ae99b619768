#!/usr/bin/env python3
"""Checks a release archive CVHControlPanel-<version>-win32.zip: it is a sound ZIP by unzip and by
Python's zipfile, it holds the program, its layout file and the README, the program imports only
Windows' own DLLs, its version resource carries the archive's version, and the .sha256 beside the
archive, where there is one, matches it.

usage: check-release.py <archive>
"""
import hashlib
import pathlib
import re
import runpy
import struct
import subprocess
import sys
import tempfile
import types
import zipfile

CONTENTS = {"CVHControlPanel.exe", "CVHControlPanel.json", "README.txt"}
# VS_FIXEDFILEINFO starts with this signature, then the structure's version, then the file's and
# the product's versions as two 32-bit halves each.
FIXED_INFO_SIGNATURE = struct.pack("<I", 0xFEEF04BD)


def load_import_check():
    # The import check is a script of its own; its functions are taken from it, not copied.
    path = pathlib.Path(__file__).with_name("check-imports.py")
    return types.SimpleNamespace(**runpy.run_path(str(path)))


def resource_versions(program: bytes) -> tuple[str, str]:
    # The signature may stand in the code too; the resource's is followed by structure version 1.0.
    start = program.find(FIXED_INFO_SIGNATURE)
    while start >= 0 and struct.unpack_from("<I", program, start + 4)[0] != 0x00010000:
        start = program.find(FIXED_INFO_SIGNATURE, start + 1)
    if start < 0:
        return ("none", "none")
    file_ms, file_ls, product_ms, product_ls = struct.unpack_from("<4I", program, start + 8)
    text = lambda ms, ls: f"{ms >> 16}.{ms & 0xFFFF}.{ls >> 16}.{ls & 0xFFFF}"
    return (text(file_ms, file_ls), text(product_ms, product_ls))


def check(archive: pathlib.Path) -> list[str]:
    problems = []
    name = re.fullmatch(r"CVHControlPanel-(\d+\.\d+\.\d+)-win32\.zip", archive.name)
    if not name:
        problems.append(f"{archive.name}: not named CVHControlPanel-<version>-win32.zip")
    if subprocess.run(["unzip", "-tq", str(archive)], capture_output=True).returncode != 0:
        problems.append("unzip -t finds the archive damaged")
    with zipfile.ZipFile(archive) as zip_file:
        damaged = zip_file.testzip()
        if damaged:
            problems.append(f"zipfile finds {damaged} damaged")
        names = set(zip_file.namelist())
        if names != CONTENTS:
            problems.append(f"holds {sorted(names)}, expected {sorted(CONTENTS)}")
        if "CVHControlPanel.exe" not in names:
            return problems
        program = zip_file.read("CVHControlPanel.exe")
    with tempfile.TemporaryDirectory() as folder:
        binary = pathlib.Path(folder) / "CVHControlPanel.exe"
        binary.write_bytes(program)
        check_imports = load_import_check()
        foreign = [dll for dll in check_imports.imports(binary)
                   if dll not in check_imports.WINDOWS_DLLS]
    if foreign:
        problems.append(f"CVHControlPanel.exe imports {', '.join(foreign)}")
    if name:
        wanted = name.group(1) + ".0"
        for kind, version in zip(("file", "product"), resource_versions(program)):
            if version != wanted:
                problems.append(f"the {kind} version of the resource is {version}, not {wanted}")
    checksum = archive.with_name(archive.name + ".sha256")
    if checksum.exists():
        digest = hashlib.sha256(archive.read_bytes()).hexdigest()
        if checksum.read_text().split()[0].lower() != digest:
            problems.append(f"{checksum.name} doesn't match the archive")
    return problems


def main() -> int:
    archive = pathlib.Path(sys.argv[1])
    problems = check(archive)
    for problem in problems:
        print(f"{archive.name}: {problem}")
    print(f"{archive.name}: {'FAILED' if problems else 'sound, only Windows DLLs, version matches'}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
