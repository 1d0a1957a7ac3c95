"""The code blocks of Markdown pages.

A block is fenced by lines that begin with ```; the first of them has the info string, such as
"cpp" or "cpp global".
"""
import dataclasses
import pathlib


@dataclasses.dataclass
class Block:
    page: pathlib.Path
    line: int  # number of the first line of the contents, from 1
    info: str
    lines: list


def blocks(page):
    """Returns the blocks of a page in order."""
    found = []
    current = None
    for number, line in enumerate(page.read_text(encoding="utf-8").splitlines(), 1):
        if current is None and line.startswith("```"):
            current = Block(page, number + 1, line[3:].strip(), [])
        elif current is not None and line == "```":
            found.append(current)
            current = None
        elif current is not None:
            current.lines.append(line)
    if current is not None:
        raise SystemExit(f"{page}:{current.line}: the block has no end")
    return found


def has_program(page):
    return any(block.info.split(" ")[0] == "cpp" for block in blocks(page))


def function_name(page):
    return "page_" + page.stem.replace("-", "_").lower()
