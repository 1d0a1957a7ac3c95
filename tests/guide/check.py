"""Compares what the pages of the guide show with what the programs print.

usage: check.py PROGRAM TOOL SOURCE_DIRECTORY PAGE

- What the C++ examples of the page print, run by PROGRAM (see extract.py), has to be the `output`
  blocks of the page, one after the other.
- In a `console` block, lines that begin with "$ " are commands, which bash runs in a folder that has
  a copy of examples/; the lines after a command are what it prints, also to standard error, where a
  line "..." stands for any number of lines. A command has to exit with 0 or 1, unless `echo $?`
  follows. The blocks of a page share the folder.
- A `text FILE` or `python FILE` block is the contents of a file of that folder.
- Each line of a `cmake` block has to occur in a project that the tests of installations build.
- Links to files of the project have to lead to one.
"""
import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from pages import blocks, has_program

PROJECTS = ["examples/client", "tests/install/*"]
END_OF_COMMAND = re.compile(r"\x1e(\d+)\x1e\n")
LINK = re.compile(r"\]\(([^)#:]+)(?:#[^)]*)?\)|src(?:set)?=\"([^\":]+)\"")


def matches(expected, actual):
    """Returns whether lines are the expected ones, of which "..." is any number."""
    parts = [[]]
    for line in expected:
        if line == "...":
            parts.append([])
        else:
            parts[-1].append(line)
    if len(parts) == 1:
        return expected == actual
    first, last = parts[0], parts[-1]
    end = len(actual) - len(last)
    if end < len(first) or actual[: len(first)] != first or actual[end:] != last:
        return False
    position = len(first)
    for part in parts[1:-1]:
        while position + len(part) <= end and actual[position : position + len(part)] != part:
            position += 1
        position += len(part)
        if position > end:
            return False
    return True


class Page:
    def __init__(self, program, tool, source, path):
        self.program = program
        self.tool = tool
        self.source = source
        self.path = path
        self.name = path.relative_to(source)
        self.blocks = blocks(path)
        self.failures = 0

    def fail(self, line, message):
        self.failures += 1
        print(f"{self.name}:{line}: {message}")

    def compare(self, line, what, expected, actual):
        """Reports a difference between numbered lines of the page and printed ones."""
        texts = [text.rstrip() for _, text in expected]
        actual = [text.rstrip() for text in actual]
        if matches(texts, actual):
            return
        wrong = [number for number, text in expected if text.rstrip() not in [*actual, "..."]]
        self.fail(wrong[0] if wrong else line, f"{what} prints something else")
        print(*difflib.unified_diff(texts, actual, str(self.name), "printed", lineterm=""), sep="\n")

    def check_program(self):
        expected = [pair for block in self.blocks if block.info == "output"
                    for pair in enumerate(block.lines, block.line)]
        if not has_program(self.path):
            if expected:
                self.fail(expected[0][0], "an output without a cpp block")
            return
        result = subprocess.run([self.program, self.path.stem], stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True, encoding="utf-8", timeout=60)
        if result.returncode != 0:
            self.fail(1, f"the examples exit with {result.returncode}")
        self.compare(1, "the program", expected, result.stdout.splitlines())

    def check_console(self, block, folder, environment):
        commands = []  # line, text, and the numbered lines of what it prints
        for number, line in enumerate(block.lines, block.line):
            if line.startswith("$ "):
                commands.append((number, line[2:], []))
            elif commands:
                commands[-1][2].append((number, line))
            else:
                self.fail(number, "a console block begins with a command")
                return
        mark = "status=$?; printf '\\036%d\\036\\n' $status; (exit $status)"
        script = "".join(f"{{ {text}\n}} 2>&1; {mark}\n" for _, text, _ in commands)
        result = subprocess.run(["bash", "-c", script], cwd=folder, env=environment,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                stdin=subprocess.DEVNULL, timeout=120)
        pieces = END_OF_COMMAND.split(result.stdout.decode("utf-8"))
        for index, (line, text, expected) in enumerate(commands):
            if 2 * index + 1 >= len(pieces):
                self.fail(line, "bash has not run this command: " + pieces[-1])
                return
            self.compare(line, text, expected, pieces[2 * index].splitlines())
            following = commands[index + 1][1] if index + 1 < len(commands) else ""
            if int(pieces[2 * index + 1]) > 1 and following != "echo $?":
                self.fail(line, f"the command exits with {pieces[2 * index + 1]}")

    def check_consoles(self):
        with tempfile.TemporaryDirectory() as folder:
            shutil.copytree(self.source / "examples", pathlib.Path(folder) / "examples")
            # With Debian's Python, for which the package is built.
            path = f"{pathlib.Path(self.tool).parent}:/usr/bin:{os.environ['PATH']}"
            environment = {"PATH": path, "HOME": folder, "LC_ALL": "C.UTF-8",
                           "PYTHONPATH": os.environ.get("PYTHONPATH", "")}
            for block in self.blocks:
                kind, _, file = block.info.partition(" ")
                if kind in ("text", "python") and file:
                    contents = "".join(f"{line}\n" for line in block.lines)
                    pathlib.Path(folder, file).write_text(contents, encoding="utf-8")
                elif kind == "console":
                    self.check_console(block, folder, environment)

    def check_cmake(self):
        files = [file for project in PROJECTS for file in self.source.glob(f"{project}/CMakeLists.txt")]
        known = {line.strip() for file in files for line in file.read_text().splitlines()}
        for block in self.blocks:
            for number, line in enumerate(block.lines, block.line):
                if block.info == "cmake" and line.strip() not in known:
                    self.fail(number, f"no project of the tests has this line: {line}")

    def check_links(self):
        code = {number for block in self.blocks for number, _ in enumerate(block.lines, block.line)}
        for number, line in enumerate(self.path.read_text(encoding="utf-8").splitlines(), 1):
            if number in code:
                continue
            for target in (link or source for link, source in LINK.findall(line)):
                if not (self.path.parent / target).exists():
                    self.fail(number, f"there is no {target}")


def main():
    program, tool, source, path = sys.argv[1:]
    page = Page(program, str(pathlib.Path(tool).resolve()), pathlib.Path(source).resolve(),
                pathlib.Path(path).resolve())
    page.check_program()
    page.check_consoles()
    page.check_cmake()
    page.check_links()
    sys.exit(1 if page.failures else 0)


main()
