#!/usr/bin/env python3
"""Validates the layout file against its JSON Schema (draft 2020-12): the shipped file must pass, and
each broken layout of check/broken-cases.json that the schema rejects (schemaRejects: a wrong type,
a missing key) must fail.

usage: check-layout-schema.py <layout folder>
"""
import json
import pathlib
import sys

import jsonschema

# The shared module is read from the source tree, which a test run leaves as it found it: no
# __pycache__ beside the scripts.
sys.dont_write_bytecode = True
from layout_cases import PatchError, broken_cases  # noqa: E402


def errors(validator: jsonschema.Draft202012Validator, document) -> list[str]:
    return [f"/{'/'.join(str(part) for part in error.absolute_path)}: {error.message}"
            for error in validator.iter_errors(document)]


def main() -> int:
    folder = pathlib.Path(sys.argv[1])
    schema = json.loads((folder / "CVHControlPanel.schema.json").read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    failed = False
    shipped = errors(validator,
                     json.loads((folder / "CVHControlPanel.json").read_text(encoding="utf-8")))
    if shipped:
        failed = True
        print("CVHControlPanel.json is rejected:\n  " + "\n  ".join(shipped))
    try:
        matters = [case for case in broken_cases(folder) if case["schemaRejects"]]
    except PatchError as failure:
        print(f"broken-cases.json: {failure}")
        return 1
    for case in matters:
        if not errors(validator, json.loads(case["contents"])):
            failed = True
            print(f"{case['name']} is accepted, but the schema should reject it")
    print(f"shipped file and {len(matters)} broken layouts: {'FAILED' if failed else 'as expected'}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
