"""Validates the JSON of all commands against docs/schema: of each call of tests/tools/calls, with
--json, of inspect and layout for each description of tests/inputs and examples, and of check for
each system of tests/systems and examples.

usage: validate.py TOOL SOURCE_DIRECTORY
"""
import copy
import json
import pathlib
import subprocess
import sys
import tempfile

import jsonschema

tool, source = str(pathlib.Path(sys.argv[1]).resolve()), pathlib.Path(sys.argv[2]).resolve()
schemas = {path.name: json.loads(path.read_text()) for path in (source / "docs/schema").glob("*.json")}
members = {name: set() for name in schemas}  # those that were printed
shapes = set()
failures = []


def check(name, condition):
    if not condition:
        failures.append(name)


def validator(name):
    resolver = jsonschema.RefResolver(name, schemas[name], store=schemas)
    return jsonschema.Draft202012Validator(schemas[name], resolver=resolver)


validators = {name: validator(name) for name in schemas}


def objects(value):
    if isinstance(value, dict):
        yield value
    for part in value.values() if isinstance(value, dict) else value if isinstance(value, list) else ():
        yield from objects(part)


def rejects_changes(validate, report):
    """Returns whether no object of a report may lack a member or have another one."""
    for index, original in enumerate(objects(report)):
        for change in (lambda changed: changed.update(other=1), lambda changed: changed.popitem()):
            changed = copy.deepcopy(report)
            change(list(objects(changed))[index])
            if validate.is_valid(changed) and list(original)[-1] != "error":
                return False
    return True


def validate(arguments, text=""):
    with tempfile.TemporaryDirectory() as folder:
        result = subprocess.run([tool, *arguments], input=text, capture_output=True, text=True, cwd=folder)
    call = " ".join(arguments)[:200]
    lines = result.stdout.splitlines()
    check(f"{call}: prints nothing", lines)
    for line in lines:
        report = json.loads(line)
        name = f"{report['command'] or 'common'}.schema.json"
        for error in validators[name].iter_errors(report):
            best = jsonschema.exceptions.best_match([error])
            failures.append(f"{call}: {best.json_path}: {best.message[:300]}")
        printed = {member for part in objects(report) for member in part}
        members[name] |= printed
        members["common.schema.json"] |= printed
        shape = (name, *sorted(report))
        if shape not in shapes and len(line) < 5000:
            shapes.add(shape)
            check(f"{call}: the schema is not closed", rejects_changes(validators[name], report))


def calls():
    for path in sorted((source / "tests/tools/calls").iterdir()):
        arguments, text = None, ""
        for line in [*path.read_text().splitlines(), "$ end"]:
            if line.startswith("$ "):
                if arguments is not None:
                    yield arguments, text
                arguments, text = line[2:].split(), ""
            elif line.startswith("<"):
                text += line[2:] + "\n"


def properties(schema):
    for part in objects(schema):
        yield from part.get("properties", {}).items()


for name, schema in schemas.items():
    jsonschema.Draft202012Validator.check_schema(schema)
    check(f"{name}: its $id is another", schema["$id"] == name)
    for member, description in properties(schema):
        check(f"{name}: {member} is not described", description.get("description", "").endswith("."))

for arguments, text in calls():
    if not {"help", "-h", "--help", "-V", "--version", "--html", "--svg"} & set(arguments):
        validate([*arguments[:1], "--json", *arguments[1:]] if arguments else ["--json"], text)
files = [str(file) for folder in ("tests/inputs/*", "examples") for file in sorted(source.glob(folder + "/*"))
         if file.suffix in (".xml", ".fmu")]
for file in files:
    validate(["inspect", "--json", "--variables", "all", file])
    validate(["layout", "--json", file])
validate(["inspect", "--json", *files[:3], "/no/such/file"])
validate(["inspect", "--json", str(source / "examples")])
validate(["dims", "--json", "[2,N+N]", "1/(N-N)", "2*N", "N+N"])
validate(["unit", "--json", "--complete", "newt"])
validate(["dims", "--json", "--facts", str(source / "examples/filter_bank.facts")])

systems = [str(file) for folder in ("tests/systems/*", "examples")
           for file in sorted(source.glob(folder + "/*.ssd"))]
for system in systems:
    validate(["check", "--json", system])
validate(["check", "--json", *systems[:2], "/no/such/file"])

for name, schema in schemas.items():
    for member in {member for member, _ in properties(schema)} - members[name]:
        failures.append(f"{name}: no report has {member}")
for failure in failures:
    print(failure)
sys.exit(1 if failures else 0)
