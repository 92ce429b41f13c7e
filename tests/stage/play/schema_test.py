"""schema_test.py SCHEMA BROKEN SESSION...: the schema accepts every session and no broken file."""

import json
import pathlib
import sys

try:
    import jsonschema
except ImportError:
    print("python3-jsonschema is not installed")
    sys.exit(77)


def text_of(case):
    if "text" in case:
        return "\n".join(case["text"])
    return ('{ "format": "kestrel-stage-session", "version": 1, "steps": [\n' + case["step"] + "\n] }")


def main():
    schema = json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    failures = []
    sessions = sys.argv[3:]
    for name in sessions:
        for error in validator.iter_errors(json.loads(pathlib.Path(name).read_text(encoding="utf-8"))):
            failures.append(f"{name}: {list(error.absolute_path)}: {error.message[:200]}")
    cases = json.loads(pathlib.Path(sys.argv[2]).read_text(encoding="utf-8"))
    seen = [case for case in cases if case.get("schema", True)]
    for case in seen:
        if validator.is_valid(json.loads(text_of(case))):
            failures.append(f"{case['name']}: is accepted")
    # A schema that refuses everything would pass the cases above.
    if not sessions or not seen:
        failures.append("there is nothing to test")
    for failure in failures:
        print(failure)
    print(f"{len(sessions)} sessions, {len(seen)} broken files, {len(failures)} failures")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
