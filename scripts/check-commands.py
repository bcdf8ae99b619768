#!/usr/bin/env python3
"""Every command that the project's scripts call exists on a fresh Debian machine once
scripts/install-deps.sh has run: each must come from a package that the script installs, or from
one that every Debian system has (essential or of required priority). A command that only happens
to be on this machine (say Wine's `wineserver` wrapper, which comes with another package than the
one installed) fails the check.

    python3 scripts/check-commands.py [ROOT]
"""
import functools
import glob
import os
import re
import shutil
import subprocess
import sys

SHELL_WORDS = {
    # keywords and builtins of bash
    "if", "then", "else", "elif", "fi", "for", "while", "until", "do", "done", "case", "esac",
    "in", "function", "return", "exit", "local", "export", "unset", "shift", "set", "source",
    ".", "cd", "echo", "printf", "read", "trap", "wait", "kill", "true", "false", "test", "[",
    "[[", "]]", "]", "command", "exec", "eval", "declare", "readonly", "break", "continue",
    "pwd", "type", "hash", "let", "shopt", "time", "{", "}", "!", ":", "jobs", "disown",
}
# Commands that run the command after them (with their own options first).
WRAPPERS = {"exec", "setsid", "timeout", "time", "!", "nice", "then", "do", "else", "sudo"}
SEPARATORS = re.compile(r"\$\(|&&|\|\||[;|&(){}`]")
HEREDOC = re.compile(r"<<-?\s*['\"]?(\w+)['\"]?")
ARRAY = re.compile(r"\b\w+=\([^)]*\)", re.DOTALL)
# Where a fresh Debian system finds its commands: /usr/local holds nothing there.
SYSTEM_PATH = "/usr/sbin:/usr/bin:/sbin:/bin"


def script_files(root):
    names = glob.glob(os.path.join(root, "scripts", "*.sh"))
    names += glob.glob(os.path.join(root, "bench", "*.sh"))
    names.append(os.path.join(root, ".ci", "run"))
    return sorted(name for name in names if os.path.isfile(name))


def without_heredocs(text):
    lines = text.splitlines()
    kept = []
    index = 0
    while index < len(lines):
        kept.append(lines[index])
        heredoc = HEREDOC.search(lines[index])
        index += 1
        if heredoc:
            while index < len(lines) and lines[index].strip() != heredoc.group(1):
                index += 1
            index += 1
    return "\n".join(kept)


def code_of(text):
    """The script's code without comments, here-documents, array lists and quoted words: what is
    left are commands and their arguments, and the commands of $(...) inside double quotes."""
    text = ARRAY.sub("", without_heredocs(text))
    code = []
    contexts = ["code"]  # "code", or "double" inside double quotes
    index = 0
    while index < len(text):
        char = text[index]
        if contexts[-1] == "double":
            if char == "\\":
                index += 1
            elif char == '"':
                contexts.pop()
                code.append('"')
            elif text.startswith("$((", index):
                end = text.find("))", index)
                index = len(text) if end < 0 else end + 1
            elif text.startswith("$(", index):
                contexts.append("code")
                code.append("$(")
                index += 1
        elif char == "#" and (index == 0 or text[index - 1] in " \t\n;"):
            while index < len(text) and text[index] != "\n":
                index += 1
            continue
        elif text.startswith("$((", index):
            end = text.find("))", index)
            index = len(text) if end < 0 else end + 1
            code.append("0")
        elif char == "'":
            end = text.find("'", index + 1)
            index = len(text) if end < 0 else end
            code.append("''")
        elif char == '"':
            contexts.append("double")
            code.append('"')
        elif char == "\\":
            index += 1
        elif char == ")" and len(contexts) > 1:
            contexts.pop()
            code.append(")")
        else:
            code.append(char)
        index += 1
    return "".join(code)


def functions_of(texts):
    names = set()
    for text in texts:
        names.update(re.findall(r"^\s*([A-Za-z_][\w-]*)\s*\(\)", text, re.MULTILINE))
    return names


def command_of(words):
    """The command that a list of words runs, skipping assignments and wrappers' options."""
    position = 0
    while position < len(words):
        word = words[position]
        if re.match(r"^[A-Za-z_]\w*=", word):
            position += 1
        elif word in WRAPPERS:
            position += 1
            while position < len(words) and (words[position].startswith("-")
                                             or re.match(r"^\d+[smh]?$", words[position])):
                position += 1
        else:
            return word
    return None


def commands_of(text, functions):
    found = set()
    for line in code_of(text).splitlines():
        for segment in SEPARATORS.split(line):
            word = command_of(segment.split())
            if word is None or word in SHELL_WORDS or word in functions:
                continue
            if re.match(r"^[A-Za-z][\w.+-]*$", word) or word.startswith("/usr/"):
                found.add(word)
        found.update(re.findall(r"(/usr/(?:s?bin|lib)/[\w./+-]+)", line))
    return found


def installed_packages(root):
    text = open(os.path.join(root, "scripts", "install-deps.sh")).read()
    # Every list of packages the script can install: the default one and those of its options.
    return {package for listed in re.findall(r"packages=\((.*?)\)", text, re.DOTALL)
            for package in listed.split()}


def installed_closure(packages):
    """The packages that installing these brought: their installed dependencies, all the way down."""
    listing = subprocess.run(
        ["dpkg-query", "-W", "-f=${Package}\t${Status}\t${Pre-Depends}, ${Depends}\t${Provides}\n"],
        capture_output=True, text=True).stdout
    depends, providers = {}, {}
    for row in listing.splitlines():
        name, status, needs, provides = (row.split("\t") + ["", "", ""])[:4]
        if not status.endswith("installed"):
            continue
        depends[name] = [[re.split(r"[\s:(]", choice.strip())[0] for choice in need.split("|")]
                         for need in needs.split(",") if need.strip()]
        providers.setdefault(name, set()).add(name)
        for virtual in provides.split(","):
            if virtual.strip():
                providers.setdefault(re.split(r"[\s(]", virtual.strip())[0], set()).add(name)
    closure, queue = set(), list(packages)
    while queue:
        name = queue.pop()
        for real in providers.get(name, set()):
            if real not in closure:
                closure.add(real)
                for need in depends.get(real, []):
                    queue.extend(need)
    return closure


@functools.lru_cache(maxsize=None)
def owners():
    """Every installed file and the package it came from, as dpkg records them."""
    index = {}
    for listing in glob.glob("/var/lib/dpkg/info/*.list"):
        package = os.path.basename(listing)[:-len(".list")].split(":")[0]
        with open(listing, encoding="utf-8", errors="replace") as paths:
            for path in paths:
                index.setdefault(path.rstrip("\n"), package)
    return index


def owner_of(path):
    candidates = [path, os.path.realpath(path)]
    for candidate in list(candidates):
        for merged, split in (("/usr/bin/", "/bin/"), ("/usr/sbin/", "/sbin/")):
            if candidate.startswith(merged):
                candidates.append(split + candidate[len(merged):])
    for candidate in candidates:
        if candidate in owners():
            return owners()[candidate]
    return None


@functools.lru_cache(maxsize=None)
def is_basic(package):
    result = subprocess.run(["dpkg-query", "-W", "-f=${Essential} ${Priority}", package],
                            capture_output=True, text=True)
    return result.stdout.split() and (result.stdout.split()[0] == "yes"
                                      or result.stdout.split()[-1] == "required")


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..")
    files = script_files(root)
    texts = {name: open(name).read() for name in files}
    functions = functions_of(texts.values())
    installed = installed_closure(installed_packages(root))
    problems = []
    for name, text in texts.items():
        relative = os.path.relpath(name, root)
        for command in sorted(commands_of(text, functions)):
            path = command if command.startswith("/") else shutil.which(command, path=SYSTEM_PATH)
            if path is None or not os.path.exists(path):
                problems.append(f"{relative}: {command}: command not found")
                continue
            package = owner_of(path)
            if package is None:
                problems.append(f"{relative}: {command} ({path}) belongs to no package")
            elif package not in installed and not is_basic(package):
                problems.append(f"{relative}: {command} comes from {package}, "
                                "which scripts/install-deps.sh doesn't install")
    for problem in problems:
        print(problem)
    print(f"{len(files)} scripts checked, {len(problems)} commands without a package")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
