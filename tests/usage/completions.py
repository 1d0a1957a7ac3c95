"""Completes lines in bash, zsh and fish by the scripts of the tool.

Usage: completions.py TOOL SCRIPTS
"""
import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time

tool, scripts = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
END = "<end>"


def table():
    text = pathlib.Path(__file__).with_name("completions.txt").read_text()
    for row in text.splitlines():
        if not row.startswith("#"):
            line, expected, unexpected = row.split("|")
            yield "tvtypes " + line, set(expected.split()) - {"nothing"}, set(unexpected.split())


def lists(output):
    """The candidates of each line, without what some shells put around them."""
    return [{re.sub(r"^--[a-z-]+=(?=.)|(?<=.)[/=]$", "", word.split("\t")[0].replace("\\", ""))
             for word in part.splitlines() if word}
            for part in output.split(END + "\n")[:-1]]


def run(*command):
    done = subprocess.run(command, capture_output=True, text=True, timeout=120)
    if done.stderr:
        failures.append(f"{command[0]}: {done.stderr}")
    return done.stdout


def quoted(word):
    return "'" + word.replace("'", "'\\''") + "'"


def bash(lines):
    calls = []
    for line in lines:
        words = re.findall(r"=|[^\s=]+", line) + ([""] if line.endswith(" ") else [])
        calls.append(f"COMP_WORDS=({' '.join(map(quoted, words))}); COMP_CWORD={len(words) - 1}; "
                     f"_tvtypes; printf '%s\\n' \"${{COMPREPLY[@]}}\" '{END}'")
    return run("bash", "--norc", "-c",
               f"source {scripts}/tvtypes.bash\n" + "\n".join(calls))


def fish(lines):
    calls = ["complete -C " + "'" + line.replace("\\", "\\\\").replace("'", "\\'") + f"'; echo '{END}'"
             for line in lines]
    return run("fish", "--no-config", "-c",
               f"source {scripts}/tvtypes.fish\n" + "\n".join(calls))


ZSH_SETUP = r"""
fpath=({folder} $fpath); autoload -U compinit; compinit -D -u
compadd() {{
    if [[ " $* " == *' -'[OAD]' '* ]]; then
        builtin compadd "$@"; return
    fi
    local -a found
    builtin compadd -A found "$@"
    print -rl -- $found >>{out}
    builtin compadd "$@"
}}
capture() {{ _main_complete; compstate[insert]=; compstate[list]=; print -r -- '{end}' >>{out} }}
zle -C capture complete-word capture; bindkey '^I' capture; bindkey '^U' kill-whole-line
print -r -- '{end}' >>{out}
"""


def zsh(lines):
    """Types the lines into an interactive shell, whose completions are written to a file."""
    folder = pathlib.Path(tempfile.mkdtemp(dir=work, prefix="."))
    shutil.copy(scripts / "tvtypes.zsh", folder / "_tvtypes")
    out, setup = folder / "out", folder / "setup"
    out.touch()
    setup.write_text(ZSH_SETUP.format(folder=folder, out=out, end=END))
    process, terminal = pty.fork()
    if process == 0:
        os.execvp("zsh", ["zsh", "-f", "-i"])

    def type_and_wait(text, count):
        os.write(terminal, text.encode())
        limit = time.monotonic() + 30
        while out.read_text().count(END) < count:
            if select.select([terminal], [], [], 0.02)[0]:
                os.read(terminal, 65536)
            if time.monotonic() > limit:
                raise TimeoutError(f"zsh does not complete {text!r}")

    type_and_wait(f"source {setup}\n", 1)
    for number, line in enumerate(lines, 2):
        type_and_wait("\x15" + line + "\t", number)
    os.kill(process, 9)
    os.waitpid(process, 0)
    return out.read_text().split(END + "\n", 1)[1]


failures = []
shells = {"bash": bash, "zsh": zsh, "fish": fish}
missing = [name for name in shells if shutil.which(name) is None]
if missing:
    sys.exit(f"The shells are not installed: apt-get install {' '.join(missing)}")
rows = list(table())
with tempfile.TemporaryDirectory() as work:
    for name in ("model.xml", "model.fmu", "system.ssd", "system.ssp", "samples.npy", "notes.txt",
                 "sizes.facts", "picture.svg", "page.html"):
        pathlib.Path(work, name).touch()
    pathlib.Path(work, "folder").mkdir()
    os.chdir(work)
    os.environ.update(HOME=work, LC_ALL="C.UTF-8", TERM="xterm",
                      PATH=f"{tool.parent}:{os.environ['PATH']}")
    for shell, complete in shells.items():
        found = lists(complete([line for line, _, _ in rows]))
        if len(found) != len(rows):
            failures.append(f"{shell}: {len(found)} of {len(rows)} lines are completed")
        for (line, expected, unexpected), candidates in zip(rows, found):
            for word in expected - candidates:
                failures.append(f"{shell}: {line!r}: {word} is missing")
            for word in unexpected & candidates:
                failures.append(f"{shell}: {line!r}: {word} is offered")
            if not expected and candidates:
                failures.append(f"{shell}: {line!r}: {sorted(candidates)[:5]} are offered")
print("\n".join(failures))
sys.exit(1 if failures else 0)
