#!/usr/bin/env python3
"""Does what docs/embedding.md says, to the letter: writes its files, runs its commands, uses its programs' windows.

    follow.py GUIDE FOLDER [--only cpp,c,python] [--root ROOT --install] [--pictures FOLDER]

Each block of code in the guide has a comment above it that says what it is; a block without one is an error:

    <!-- install -->        packages, as root; only with --install
    <!-- file PATH -->      a file below FOLDER
    <!-- run FOLDER -->     commands in a folder below FOLDER
    <!-- window FOLDER -->  one command that opens a window: "Hello " is typed into it, its button for underlining is
                            pressed, and it is closed
    <!-- prints -->         what the last command printed

The first part of a PATH or FOLDER is a language. With --root, everything happens in that system, and DISPLAY is a screen
of this one.
"""

import argparse
import os
import re
import subprocess
import sys
import time
from pathlib import Path

PATIENCE = 60  # seconds for anything that happens in a window


class Failure(Exception):
    pass


def blocks_of(guide):
    """(line, kind, argument, text) of each block of code."""
    found, comment, start, text = [], None, None, []
    for number, line in enumerate(guide.read_text().splitlines(), 1):
        if line.startswith("```"):
            if start is None:
                if comment is None:
                    raise Failure(f"{guide}:{number}: nobody tries this block")
                start, text = number, []
            else:
                found.append((start, *comment, "\n".join(text) + "\n"))
                start, comment = None, None
        elif start is not None:
            text.append(line)
        elif match := re.fullmatch(r"<!-- (install|file|run|window|prints)(?: (\S+))? -->", line):
            comment = (match[1], match[2] or "")
        elif line and comment:
            raise Failure(f"{guide}:{number}: a comment on no block")
    return found


class Screen:
    """The keyboard and the mouse of a screen, and what its windows show."""

    def tool(self, *words, check=True):
        return subprocess.run(["xdotool", *map(str, words)], check=check, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              text=True, timeout=PATIENCE).stdout.split()

    def wait(self, what, words):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            if answer := what():
                return answer
            time.sleep(0.2)
        raise Failure(f"not in time: {words}")

    def window(self):
        return self.wait(lambda: self.tool("search", "--onlyvisible", "--name", "^(A letter|HTMLed)$", check=False), "a window")[-1]

    def use(self, program, output, picture):
        """As a newcomer does who has just read the guide."""
        window = self.window()
        time.sleep(3)
        self.tool("windowactivate", "--sync", window, check=False)
        self.tool("type", "--delay", 60, "Hello ")
        time.sleep(1)
        self.tool("mousemove", "--window", window, 286, 14, "click", 1)
        self.wait(lambda: "No underlining here." in output.read_text() or program.poll() is not None, "the veto")
        time.sleep(1)
        if picture:
            subprocess.run(["import", "-window", window, str(picture)], check=True, timeout=PATIENCE)
        self.tool("key", "alt+F4")
        self.wait(lambda: program.poll() is not None, "the program's end after its window was closed")


class Follower:
    def __init__(self, options):
        self.options = options
        self.folder = options.folder.resolve()
        self.said = ""
        self.environment = dict(os.environ)
        if options.root:  # a bare system has nothing of this one's surroundings
            kept = {"DISPLAY": os.environ["DISPLAY"], "HOME": "/root", "LANG": "C.UTF-8", "TERM": "dumb",
                    "PATH": "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"}
            self.environment = kept

    def start(self, commands, folder, output):
        script = "set -e\n" + commands
        words = ["bash", "-c", script]
        if self.options.root:
            inside = "/" + str(folder.relative_to(self.options.root.resolve()))
            words = ["chroot", str(self.options.root), "bash", "-c", f"cd '{inside}'\n{script}"]
        return subprocess.Popen(words, cwd=folder, env=self.environment, stdin=subprocess.DEVNULL, stdout=output.open("w"),
                                stderr=(self.folder / "complaints").open("w"))

    def run(self, commands, folder, use=None):
        folder.mkdir(parents=True, exist_ok=True)
        output = self.folder / "said"
        program = self.start(commands, folder, output)
        try:
            if use:
                use(program, output)
            program.wait(timeout=1800)
        except BaseException:
            sys.stderr.write((self.folder / "complaints").read_text())
            raise
        finally:
            if program.poll() is None:
                program.kill()
        self.said = output.read_text()
        if program.returncode:
            raise Failure(f"ended with {program.returncode}:\n{commands}{self.said}{(self.folder / 'complaints').read_text()}")

    def do(self, kind, argument, text):
        language = argument.split("/")[0]
        if kind == "install":
            if self.options.install:
                self.run(text, self.folder)
        elif kind == "file":
            path = self.folder / argument
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        elif kind == "run":
            self.run(text, self.folder / argument)
        elif kind == "window":
            picture = self.options.pictures and self.options.pictures / f"embedding-{language}.png"
            screen = Screen()
            self.run(text, self.folder / argument, lambda program, output: screen.use(program, output, picture))
        elif self.said != text:
            raise Failure(f"prints\n{self.said}and not\n{text}")

    def follow(self):
        blocks = blocks_of(self.options.guide)
        wanted, tried = True, set()
        for line, kind, argument, text in blocks:
            if kind in ("file", "run", "window"):
                language = argument.split("/")[0]
                wanted = not self.options.only or language in self.options.only
                if wanted:
                    tried.add(language)
            if not wanted and kind != "install":
                continue
            left_out = " (left out)" if kind == "install" and not self.options.install else ""
            print(f"{self.options.guide.name}:{line}: {kind} {argument}{left_out}", flush=True)
            try:
                self.do(kind, argument, text)
            except (Failure, subprocess.SubprocessError) as failure:
                raise Failure(f"{self.options.guide}:{line}: {failure}") from None
        missing = set(self.options.only or []) - tried
        if missing or not tried:
            raise Failure(f"the guide has nothing of {missing or 'anything'}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("guide", type=Path)
    parser.add_argument("folder", type=Path)
    parser.add_argument("--only", type=lambda text: text.split(","))
    parser.add_argument("--root", type=Path)
    parser.add_argument("--install", action="store_true")
    parser.add_argument("--pictures", type=Path)
    options = parser.parse_args()
    options.folder.mkdir(parents=True, exist_ok=True)
    try:
        Follower(options).follow()
    except Failure as failure:
        sys.exit(str(failure))


if __name__ == "__main__":
    main()
