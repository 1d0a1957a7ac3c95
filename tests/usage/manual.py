"""Formats the manual pages, and compares them with the help.

Usage: manual.py TOOL GENERATOR FOLDER
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

tool, generator, folder = sys.argv[1:4]
if shutil.which("man") is None or shutil.which("groff") is None:
    print("Skipped, since man is not installed: apt-get install man-db groff")
    sys.exit(77)
environment = {**os.environ, "LC_ALL": "C.UTF-8", "MANROFFSEQ": "", "MANWIDTH": "80"}
failures = []


def output(*command, **changes):
    done = subprocess.run(command, capture_output=True, text=True,
                          env={**environment, **changes})
    if done.returncode != 0 or done.stderr:
        failures.append(f"{' '.join(command)}: status {done.returncode}, {done.stderr}")
    return done.stdout


def page(path):
    return output("man", "--warnings", "-E", "UTF-8", "-l", str(path))


def text(words):
    return " ".join(words.split())


commands = re.findall(r"^  ([a-z]+) ", output(tool, "help").split("Commands:")[1], re.MULTILINE)
for command in ["", *commands]:
    name = "-".join(["tvtypes", *command.split()])
    help_text = output(tool, "help", *command.split())
    formatted = page(pathlib.Path(folder, "man1", name + ".1"))
    for heading in ("NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS", "SEE ALSO"):
        if f"\n{heading}\n" not in formatted:
            failures.append(f"{name}: {heading} is missing")
    options = re.findall(r"^  (-\S+(?: [^a-z ]\S*)?)", help_text, re.MULTILINE)
    for option in [each for names in options for each in re.split("[, ]", names)]:
        if not re.search(rf"(?m)^ .*{re.escape(option)}(?![a-z-])", formatted):
            failures.append(f"{name}: {option} is missing")
    if not options:
        failures.append(f"{name}: the help has no options")
    for line in re.findall(r"^  .*tvtypes .*", help_text, re.MULTILINE):
        if text(line) not in text(formatted) or line.strip() not in formatted:
            failures.append(f"{name}: an example differs: {line}")
pages = {path.stem for path in pathlib.Path(folder, "man1").iterdir()}
if pages != {"tvtypes", *("tvtypes-" + command for command in commands)}:
    failures.append(f"the pages are {pages}")
with tempfile.TemporaryDirectory() as dated:
    output(generator, dated, SOURCE_DATE_EPOCH="86400")
    if "1970-01-02" not in page(pathlib.Path(dated, "man1", "tvtypes.1")):
        failures.append("the date is not that of the build")
print("\n".join(failures))
sys.exit(1 if failures else 0)
