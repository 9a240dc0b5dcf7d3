"""How does a script write one page for each row of a table? With one editor, which is never shown.

    merge.py PAGE TABLE FOLDER

The page has fields such as {name}, also half in bold letters or in a link; the table is a CSV file whose first line names
its columns. FOLDER gets 1.html, 2.html and so on.
"""

import csv
import pathlib
import sys

import tvxhtml


def main(page, table, folder):
    folder.mkdir(parents=True, exist_ok=True)
    with tvxhtml.HTMLed() as editor, open(table, newline="", encoding="utf-8") as rows:
        editor.start()
        for number, row in enumerate(csv.DictReader(rows), 1):
            editor.DocumentHTML = page.read_text(encoding="utf-8")
            for name, text in row.items():
                editor.FindText("{" + name + "}")
                editor.ReplaceAllText(text)
            editor.FindEnd()
            (folder / f"{number}.html").write_text(editor.DocumentHTML, encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(*map(pathlib.Path, sys.argv[1:]))
