"""validate.py SCHEMA FILE...: whether each JSON text of the files is valid: a line each, or a whole file.

Prints a line for each text: "valid", or "invalid" and why.
"""
import json
import sys

import jsonschema


def texts(path):
    with open(path, encoding="utf-8") as file:
        whole = file.read()
    try:
        return [json.loads(whole)]
    except json.JSONDecodeError:
        return [json.loads(line) for line in whole.splitlines()]


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    for path in sys.argv[2:]:
        for text in texts(path):
            error = jsonschema.exceptions.best_match(validator.iter_errors(text))
            print("valid" if error is None else f"invalid: {error.json_path}: {error.message}")


main()
