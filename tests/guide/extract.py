"""Writes one C++ source with the examples of all pages.

usage: extract.py OUT.cpp PAGE...

The `cpp` blocks of a page become, in their order, the body of one function, which the program runs
if it is called with the name of the page. Where a block begins with includes, these are moved to the
top of the source. Two kinds of block are not in the function: `cpp global`, for declarations, is in
a namespace of the page before it; `cpp program` is a complete program, whose main the function calls.
"""
import pathlib
import re
import sys

from pages import blocks, function_name, has_program

MAIN = re.compile(r"\bint main\(\)")


def split(block):
    """Returns the includes at the beginning of a block, and the number and text of its other lines."""
    includes = []
    rest = list(enumerate(block.lines, block.line))
    while rest and (not rest[0][1] or rest[0][1].startswith("#include")):
        if rest[0][1]:
            includes.append(rest[0][1])
        rest.pop(0)
    return includes, rest


def located(page, lines):
    """Returns lines with the directive that has compilers report errors in the page."""
    return [f'#line {lines[0][0]} "{page}"', *(text for _, text in lines)] if lines else []


def page_source(page, includes):
    """Returns the source of a page, and adds its includes."""
    declarations = []
    body = []
    programs = 0
    for block in blocks(page):
        if block.info.split(" ")[0] != "cpp":
            continue
        added, lines = split(block)
        includes.update(dict.fromkeys(added))
        if block.info == "cpp":
            body += located(page, lines)
        elif block.info == "cpp global":
            declarations += located(page, lines)
        elif block.info == "cpp program":
            if block.lines[-1] != "}":
                raise SystemExit(f"{page}:{block.line}: the block has to end with that of main")
            programs += 1
            name = f"program{programs}"
            lines = [(number, MAIN.sub(f"int {name}()", text)) for number, text in lines]
            declarations += [*located(page, lines[:-1]), "return 0;", "}"]  # as main has it
            body += [f"if (const int status = {name}(); status != 0) {{", "return status;", "}"]
        else:
            raise SystemExit(f"{page}:{block.line}: cpp blocks are global, program or neither")
    name = function_name(page)
    return [f"namespace {name} {{", *declarations, "int run() {", *body, "return 0;", "}",
            f"}} // namespace {name}", ""]


def main():
    out, *names = sys.argv[1:]
    pages = [page for page in map(pathlib.Path, names) if has_program(page)]
    includes = dict.fromkeys(["#include <cstring>"])
    sources = [line for page in pages for line in page_source(page, includes)]
    calls = []
    for page in pages:
        calls += [f'if (argc == 2 && std::strcmp(argv[1], "{page.stem}") == 0) {{',
                  f"return {function_name(page)}::run();", "}"]
    lines = [*includes, "", *sources, f'#line 1 "{out}"', "int main(int argc, char** argv) {", *calls,
             "return 2;", "}", ""]
    pathlib.Path(out).write_text("\n".join(lines), encoding="utf-8")


main()
