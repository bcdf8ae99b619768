"""The broken layouts of layout/check/broken-cases.json, shared by check-layout-broken.py and
check-layout-schema.py: each case is the shipped layout changed by a JSON Patch (RFC 6902), or the
raw text of a file that no patch can make (one that is no JSON at all).

A JSON Patch is applied here with the standard library alone, so that the checks need nothing
beyond what scripts/install-deps.sh installs.
"""
import copy
import json
import pathlib


class PatchError(Exception):
    """A patch that can't be applied: a path that leads nowhere, or a test that fails."""


def _tokens(pointer: str) -> list[str]:
    """The reference tokens of a JSON Pointer (RFC 6901): "" is the whole document."""
    if pointer == "":
        return []
    if not pointer.startswith("/"):
        raise PatchError(f"{pointer!r} is no JSON Pointer: it must start with '/'")
    return [token.replace("~1", "/").replace("~0", "~") for token in pointer[1:].split("/")]


def _index(array: list, token: str, pointer: str, *, past_end: bool) -> int:
    """The array index a token names; past_end allows len(array) and "-" (where add appends)."""
    if token == "-" and past_end:
        return len(array)
    if not token.isdigit() or (len(token) > 1 and token.startswith("0")):
        raise PatchError(f"{pointer}: {token!r} is no array index")
    index = int(token)
    if index > len(array) or (index == len(array) and not past_end):
        raise PatchError(f"{pointer}: index {index} is past the array's end")
    return index


def _parent(document, pointer: str):
    """The container that holds the pointer's last token, and that token."""
    tokens = _tokens(pointer)
    if not tokens:
        raise PatchError("the whole document has no parent")
    return _resolve(document, tokens[:-1], pointer), tokens[-1]


def _resolve(document, tokens: list[str], pointer: str):
    value = document
    for token in tokens:
        if isinstance(value, dict):
            if token not in value:
                raise PatchError(f"{pointer}: no member {token!r}")
            value = value[token]
        elif isinstance(value, list):
            value = value[_index(value, token, pointer, past_end=False)]
        else:
            raise PatchError(f"{pointer}: {token!r} leads into a value that holds nothing")
    return value


def _get(document, pointer: str):
    return _resolve(document, _tokens(pointer), pointer)


def _add(document, pointer: str, value):
    if pointer == "":
        return value
    parent, token = _parent(document, pointer)
    if isinstance(parent, dict):
        parent[token] = value
    elif isinstance(parent, list):
        parent.insert(_index(parent, token, pointer, past_end=True), value)
    else:
        raise PatchError(f"{pointer}: the parent holds nothing")
    return document


def _remove(document, pointer: str):
    """Returns the document without the value, and the value."""
    if pointer == "":
        raise PatchError("the whole document can't be removed")
    parent, token = _parent(document, pointer)
    if isinstance(parent, dict):
        if token not in parent:
            raise PatchError(f"{pointer}: no member {token!r}")
        return document, parent.pop(token)
    if isinstance(parent, list):
        return document, parent.pop(_index(parent, token, pointer, past_end=False))
    raise PatchError(f"{pointer}: the parent holds nothing")


def _same(left, right) -> bool:
    """JSON equality: unlike Python's ==, true is not 1, and the order of an object's members
    doesn't matter."""
    if isinstance(left, bool) or isinstance(right, bool):
        return isinstance(left, bool) and isinstance(right, bool) and left == right
    if isinstance(left, (int, float)) and isinstance(right, (int, float)):
        return left == right
    if type(left) is not type(right):
        return False
    if isinstance(left, dict):
        return left.keys() == right.keys() and all(_same(left[k], right[k]) for k in left)
    if isinstance(left, list):
        return len(left) == len(right) and all(_same(a, b) for a, b in zip(left, right))
    return left == right


def apply_patch(document, operations: list[dict]):
    """The document changed by the operations, in order; the document given stays as it was.
    Raises PatchError when an operation can't be applied, as RFC 6902 has a patch fail whole."""
    result = copy.deepcopy(document)
    for number, operation in enumerate(operations):
        try:
            op, path = operation["op"], operation["path"]
            if op == "add":
                result = _add(result, path, copy.deepcopy(operation["value"]))
            elif op == "remove":
                result, _ = _remove(result, path)
            elif op == "replace":
                _get(result, path)  # the target must exist
                if path == "":
                    result = copy.deepcopy(operation["value"])
                else:
                    result, _ = _remove(result, path)
                    result = _add(result, path, copy.deepcopy(operation["value"]))
            elif op == "move":
                source = operation["from"]
                if path != source and path.startswith(source + "/"):
                    raise PatchError(f"{source} can't be moved into itself ({path})")
                result, value = _remove(result, source)
                result = _add(result, path, value)
            elif op == "copy":
                result = _add(result, path, copy.deepcopy(_get(result, operation["from"])))
            elif op == "test":
                if not _same(_get(result, path), operation["value"]):
                    raise PatchError(f"{path}: is {json.dumps(_get(result, path))}, "
                                     f"not {json.dumps(operation['value'])}")
            else:
                raise PatchError(f"unknown operation {op!r}")
        except KeyError as missing:
            raise PatchError(f"operation {number} lacks the member {missing}") from None
        except PatchError as failure:
            raise PatchError(f"operation {number} ({operation.get('op')}): {failure}") from None
    return result


def broken_cases(layout_folder: pathlib.Path) -> list[dict]:
    """The cases of check/broken-cases.json, each with its file's text ("contents") made."""
    shipped = json.loads((layout_folder / "CVHControlPanel.json").read_text(encoding="utf-8"))
    listed = json.loads((layout_folder / "check" / "broken-cases.json").read_text(encoding="utf-8"))
    cases = []
    for case in listed["cases"]:
        if ("patch" in case) == ("text" in case):
            raise PatchError(f"{case['name']}: give either a patch or the text, not both or none")
        if "text" in case:
            contents = case["text"]
        else:
            try:
                contents = json.dumps(apply_patch(shipped, case["patch"]), indent=4,
                                      ensure_ascii=False) + "\n"
            except PatchError as failure:
                raise PatchError(f"{case['name']}: {failure}") from None
        cases.append(dict(case, contents=contents))
    return cases
