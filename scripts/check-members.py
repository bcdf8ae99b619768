#!/usr/bin/env python3
"""Fails when a private or protected data member of a class does not end with "_".

The tree's naming: a class keeps its state in members named like `handle_`; a struct's public
fields, and public members of a class, are named without the underscore. Test fixtures whose
members the test bodies use are structs, or name their members with the underscore.

The check reads the sources the way a person skims them, not the way a compiler does: comments,
string literals and preprocessor lines are dropped, then the braces are followed to find the
bodies of classes, structs and unions (local ones inside functions too), and in each body the
declarations at its own level under `private:` or `protected:` (or before any label, in a class)
that declare no function. Class constants (`static constexpr`, `static const`) are not state and
are left out. Not seen: a class defined inside a function body that is itself written inside a
class, and declarations that only exist behind an #if. The sources are those of
tree_sources.cpp_sources, as for the format check.

usage: check-members.py <tree>
"""
import pathlib
import re
import sys

from tree_sources import cpp_sources

TOKEN = re.compile(r"""
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<string>(?:u8|u|U|L)?R"(?P<delim>[^(\s]*)\(.*?\)(?P=delim)"
              |(?:u8|u|U|L)?"(?:\\.|[^"\\\n])*"
              |(?:u8|u|U|L)?'(?:\\.|[^'\\\n])*')
  | (?P<preprocessor>^[ \t]*\#(?:\\\n|[^\n])*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<number>\d[\w'.]*)
  | (?P<punct>::|->|[^\sA-Za-z_0-9])
""", re.VERBOSE | re.DOTALL | re.MULTILINE)

TYPE_HEAD = re.compile(
    r"^(?:template\s*<>\s*)?(?P<kind>class|struct|union)\s*(?:\[\[.*?\]\]\s*)?"
    r"(?:alignas\s*\(\)\s*)?(?P<name>\w+(?:\s*::\s*\w+)*)?\s*(?:<>\s*)?(?:final\s*)?(?::.*)?$")
FUNCTION_POINTER = re.compile(r"\(\s*[\w:]*\s*\*\s*(\w+)\s*\)")
SKIPPED_STARTS = ("using", "typedef", "friend", "static_assert", "template", "enum", "operator")
QUALIFIERS = {"static", "mutable", "const", "volatile", "inline", "constexpr", "constinit",
              "thread_local", "extern", "unsigned", "signed"}


def tokens(text: str):
    """(kind, text, line) of each token; comments and preprocessor lines are left out, and a
    string or character literal stands as `""`."""
    line_starts = [0] + [m.end() for m in re.finditer("\n", text)]
    line = 0
    for match in TOKEN.finditer(text):
        kind = match.lastgroup
        if kind in ("comment", "preprocessor", "delim"):
            continue
        while line + 1 < len(line_starts) and line_starts[line + 1] <= match.start():
            line += 1
        if kind == "string":
            yield "string", '""', line + 1
        else:
            yield kind, match.group(), line + 1


def without_angles(words: list[str]) -> list[str]:
    """The tokens with every template argument list dropped: `<...>` becomes the token `<>`."""
    out, depth = [], 0
    for word in words:
        if word == "<":
            depth += 1
        elif word in (">", ">>") and depth:
            depth = max(0, depth - len(word))
            if depth == 0:
                out.append("<>")
        elif depth == 0:
            out.append(word)
    return out


def top_level_split(words: list[str], separator: str) -> list[list[str]]:
    parts, current, depth = [], [], 0
    for word in words:
        if word in ("(", "["):
            depth += 1
        elif word in (")", "]"):
            depth -= 1
        if word == separator and depth == 0:
            parts.append(current)
            current = []
        else:
            current.append(word)
    parts.append(current)
    return parts


def declared_members(words: list[str]) -> list[str]:
    """The data members a declaration at class level names, or [] for anything else."""
    if not words or words[0] in SKIPPED_STARTS or "operator" in words:
        return []
    words = without_angles(words)
    text = " ".join(words)
    if text.startswith(("class ", "struct ", "union ")) and len(words) == 2:
        return []  # a forward declaration
    # Attributes and alignas() say nothing about the name.
    text = re.sub(r"\[\s*\[.*?\]\s*\]", " ", text)
    text = re.sub(r"\b(alignas|decltype)\s*\((?:[^()]|\([^()]*\))*\)", " ", text)
    names = []
    for part in top_level_split(text.split(), ","):
        declarator = " ".join(top_level_split(part, "=")[0])
        pointer = FUNCTION_POINTER.search(declarator)
        if pointer:
            names.append(pointer.group(1))
            continue
        if "(" in declarator:
            return []  # a function
        declarator = re.sub(r"\[[^\]]*\]", " ", declarator)  # array bounds
        declarator = re.sub(r":\s*\w+\s*$", " ", declarator)  # a bit-field's width
        found = [w for w in re.findall(r"[A-Za-z_]\w*", declarator) if w not in QUALIFIERS]
        if found:
            names.append(found[-1])
    qualifiers = set(top_level_split(words, "=")[0])
    if "constexpr" in qualifiers or ("static" in qualifiers and "const" in qualifiers):
        return []  # class constants
    return names


class Scope:
    def __init__(self, kind: str, name: str, access: str):
        self.kind = kind  # "class", "struct", "union" or "other"
        self.name = name
        self.access = access


def check_file(path: pathlib.Path, shown: str) -> list[str]:
    text = path.read_text(encoding="utf-8", errors="replace")
    found = []
    stack = [Scope("other", "", "")]
    statement: list[str] = []
    start_line = 0
    stream = list(tokens(text))
    i = 0
    while i < len(stream):
        _, word, line = stream[i]
        scope = stack[-1]
        in_class = scope.kind in ("class", "struct", "union")
        if word == "{":
            head = TYPE_HEAD.match(" ".join(without_angles(statement)))
            if head and not (statement and statement[0] == "enum"):
                kind_word = head.group("kind")
                name = re.sub(r"\s+", "", head.group("name") or "(unnamed)")
                stack.append(Scope(kind_word, name,
                                   "private" if kind_word == "class" else "public"))
                statement = []
            elif in_class:
                # A function body or a brace initialiser: skip it and see what follows.
                depth, i = 1, i + 1
                while i < len(stream) and depth:
                    depth += {"{": 1, "}": -1}.get(stream[i][1], 0)
                    i += 1
                if i < len(stream) and stream[i][1] in (";", ","):
                    statement += ["{", "}"]
                else:
                    statement = []
                continue
            else:
                stack.append(Scope("other", "", ""))
                statement = []
        elif word == "}":
            if len(stack) > 1:
                stack.pop()
            statement = []
        elif word == ";":
            if in_class and scope.access in ("private", "protected"):
                for name in declared_members(statement):
                    if not name.endswith("_"):
                        found.append(f"{shown}:{start_line}: {scope.kind} {scope.name}: "
                                     f"{scope.access} member '{name}' does not end with '_'")
            statement = []
        elif (in_class and word in ("public", "private", "protected") and not statement
              and i + 1 < len(stream) and stream[i + 1][1] == ":"):
            scope.access = word
            i += 2
            continue
        else:
            if not statement:
                start_line = line
            statement.append(word)
        i += 1
    return found


def main() -> int:
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
    files = cpp_sources(root)
    if not files:
        print(f"no C++ sources under {root}")
        return 1
    found = []
    for name in files:
        found += check_file(root / name, name)
    for problem in found:
        print(problem)
    if found:
        print(f"{len(found)} private or protected data members in {len(files)} sources do not "
              "end with '_' (or make them public: a struct's fields have no '_')")
        return 1
    print(f"{len(files)} sources: every private and protected data member ends with '_'")
    return 0


if __name__ == "__main__":
    sys.exit(main())
