#!/usr/bin/env python3
"""Checks the spelling of a page with no screen, and writes it mended.

check.py HTMLED_CLI PAGE MENDED

Each wrong word is told with its sentence and what became of it: the first suggestion takes its place. Words without a
suggestion stay. Ends with 1 where words were wrong, with 0 where none were.
"""
import json
import subprocess
import sys


class Editor:
    """A conversation with htmled-cli: one message a line."""

    def __init__(self, program):
        self.process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        encoding="utf-8")
        self.last = 0

    def ask(self, method, **params):
        """The result, and the notifications that came before it."""
        self.last += 1
        request = {"jsonrpc": "2.0", "id": self.last, "method": method, "params": params}
        print(json.dumps(request), file=self.process.stdin, flush=True)
        told = []
        for line in self.process.stdout:
            message = json.loads(line)
            if "id" not in message:
                told.append(message)
            elif "error" in message:
                sys.exit(f"{method}: {message['error']['message']}")
            else:
                return message["result"], told
        sys.exit("The editor has ended")


def main(program, page, mended):
    editor = Editor(program)
    editor.ask("call", name="Open_document", args=[page, True])
    # Whenever the dialog opens: Change. An untouched box takes the suggestion that is chosen, the first one.
    editor.ask("expect", on="dialog:frmSpelling", press="OKButton", times=100000)
    _, told = editor.ask("call", name="SpellCheck")
    wrong = 0
    for message in told:
        if message["method"] == "event" and message["params"]["name"] == "Error":
            print(message["params"]["args"]["errDesc"], file=sys.stderr)
        if message["method"] != "seen":
            continue
        wrong += 1
        seen = message["params"]["seen"]
        word, suggestions = seen["texts"]["txtOriginal"], seen["items"]["lstSuggestions"]
        became = "stays" if suggestions == ["(No Suggestions)"] else f"is now {suggestions[0]}"
        print(f"{word} {became}: {seen['texts']['txtSentence']}")
    editor.ask("call", name="Save_document", args=[mended, True])
    return 1 if wrong else 0


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
