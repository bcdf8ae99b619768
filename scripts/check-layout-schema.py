#!/usr/bin/env python3
"""Validates the layout file against its JSON Schema (draft 2020-12): the shipped file must pass, and
each broken copy in check/broken that is a matter of the schema (types, missing keys) must fail.

usage: check-layout-schema.py <layout folder>
"""
import json
import pathlib
import sys

import jsonschema


def errors(validator: jsonschema.Draft202012Validator, path: pathlib.Path) -> list[str]:
    document = json.loads(path.read_text(encoding="utf-8"))
    return [f"/{'/'.join(str(part) for part in error.absolute_path)}: {error.message}"
            for error in validator.iter_errors(document)]


def main() -> int:
    folder = pathlib.Path(sys.argv[1])
    schema = json.loads((folder / "CVHControlPanel.schema.json").read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    failed = False
    shipped = errors(validator, folder / "CVHControlPanel.json")
    if shipped:
        failed = True
        print("CVHControlPanel.json is rejected:\n  " + "\n  ".join(shipped))
    broken = folder / "check" / "broken"
    expected = json.loads((broken / "expected.json").read_text(encoding="utf-8"))
    matters = [name for name, facts in expected.items() if facts["schemaMatter"]]
    for name in matters:
        if not errors(validator, broken / name):
            failed = True
            print(f"{name} is accepted, but the schema should reject it")
    print(f"shipped file and {len(matters)} broken copies: {'FAILED' if failed else 'as expected'}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
