#!/usr/bin/python3
"""A reading program: asks htmled, over the desktop's own bus, what a blind user is told of its window.

reading_client.py STEP: plays one step and says nothing if all was as it should be.
"""
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 60  # seconds; nothing here is about time


def turn():
    context = GLib.MainContext.default()
    while context.pending():
        context.iteration(False)
    time.sleep(0.02)


def until(condition, what):
    """Waits for a condition; what it asks of objects that are just going doesn't count."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        turn()
        try:
            found = condition()
        except GLib.Error:
            found = None
        if found:
            return found
    raise AssertionError("waited in vain for " + (what() if callable(what) else what))


def same(is_, wanted):
    if is_ != wanted:
        raise AssertionError(f"{is_!r} instead of {wanted!r}")


def children(node):
    return [node.get_child_at_index(i) for i in range(node.get_child_count())]


def all_of(node):
    waiting = [node]
    while waiting:
        node = waiting.pop()
        if node is None:
            continue
        yield node
        waiting.extend(reversed(children(node)))


def shown_of(top):
    """What is to be seen: what is in a menu that isn't open is left out."""
    waiting = [top]
    while waiting:
        node = waiting.pop()
        if node is None or (node.get_role_name() != "application" and "showing" not in states(node)):
            continue
        yield node
        waiting.extend(reversed(children(node)))


def text(node):
    return Atspi.Text.get_text(node, 0, -1) if "Text" in node.get_interfaces() else None


def states(node):
    return {state.value_nick for state in node.get_state_set().get_states()}


def program():
    desktop = Atspi.get_desktop(0)
    return next((each for each in children(desktop) if each and each.get_name() == "htmled"), None)


def page():
    """The document, once it is there with its caret."""
    def found():
        documents = [each for each in shown_of(program()) if each.get_role_name() == "document frame"]
        shown = [each for each in documents if "showing" in states(each) and each.get_child_count() > 0]
        return shown[0] if shown and focused(shown[0]) else None

    return until(found, "the document")


def focused(top):
    return next((each for each in all_of(top) if each.get_role_name() != "document frame" and "focused" in states(each)), None)


def find(top, role, name=None):
    return next(each for each in all_of(top) if each.get_role_name() == role and name in (None, each.get_name(), text(each)))


class Ears:
    """All that is heard, in its order: the kind of event, who told it, and what it carries."""

    def __init__(self, *kinds):
        self.heard = []
        self.listener = Atspi.EventListener.new(self.hear)
        for kind in (*kinds, "object:text-caret-moved"):
            self.listener.register(kind)
        self.prick_up()

    def prick_up(self):
        """The program hears later that somebody listens, and says nothing before that."""
        line = focused(page())
        for offset in range(1000):
            Atspi.Text.set_caret_offset(line, offset % 2)
            end = time.monotonic() + 0.5
            while time.monotonic() < end:
                turn()
            if self.heard:
                break
        assert self.heard, "nothing is heard"
        self.heard.clear()

    def hear(self, event):
        try:
            data = event.any_data
        except GLib.Error:
            data = None  # gone already
        try:
            self.heard.append((event.type, event.source.get_role_name(), text(event.source), event.detail1, data))
        except GLib.Error:
            pass  # the same

    def hears(self, kind, *facts):
        """Facts: what is written (None: anything), at which offset, with which letters."""
        def known():
            for type_, role, written, offset, data in self.heard:
                if type_.startswith(kind) and all(fact in (None, value) for fact, value in zip(facts, (written, offset, data))):
                    return True
            return False

        until(known, lambda: f"{kind} {facts}; heard were {self.heard}")


def keys(*names):
    subprocess.run(["xdotool", "key", "--delay", "30", *names], check=True)


def write(letters):
    subprocess.run(["xdotool", "type", "--delay", "30", letters], check=True)


# --- the steps ---


def read():
    top = page()
    same(top.get_name(), "A trial page")
    headings = [(each.get_name(), each.get_description()) for each in all_of(top) if each.get_role_name() == "heading"]
    same(headings, [("The tour", "Level 1"), ("Things", "Level 2")])
    link = find(top, "link")
    same((link.get_name(), link.get_description(), text(link)), ("the other page", "https://example.org/x", "the other page"))
    same(text(link.get_parent()), "See the other page for more and Wetter.")
    outer = find(top, "list")
    same([text(item) for item in children(outer)], ["One", "Two\ufffc"])
    same([each.get_role_name() for each in children(children(outer)[1])], ["list"])
    same(children(outer)[1].get_index_in_parent(), 1)
    image = find(top, "image")
    same((image.get_name(), text(image.get_parent())), ("A dog", "An image \ufffc and a field \ufffc."))
    same(find(top, "text").get_name(), "city")
    quotation = next(each for each in all_of(top) if each.get_description() == "Quotation")
    same([text(each) for each in children(quotation)], ["Quoted words."])
    same(find(top, "paragraph", "one\n  two").get_role_name(), "paragraph")
    same([each.get_role_name() for each in children(top)].count("separator"), 1)


def table():
    whole = find(page(), "table")
    same((Atspi.Table.get_n_rows(whole), Atspi.Table.get_n_columns(whole)), (3, 2))
    same(Atspi.Table.get_caption(whole).get_role_name(), "paragraph")
    cell = Atspi.Table.get_accessible_at(whole, 1, 1)
    same((cell.get_role_name(), cell.get_name()), ("table cell", "36"))
    same(Atspi.Table.get_accessible_at(whole, 0, 1).get_role_name(), "table column header")
    same(Atspi.Table.get_column_description(whole, 1), "Age")
    index = cell.get_index_in_parent()
    same((Atspi.Table.get_row_at_index(whole, index), Atspi.Table.get_column_at_index(whole, index)), (1, 1))
    wide = Atspi.Table.get_accessible_at(whole, 2, 1)
    same((wide.get_name(), Atspi.Table.get_column_extent_at(whole, 2, 1)), ("both", 2))


def caret():
    top = page()
    ears = Ears("object:text-caret-moved", "object:state-changed:focused", "object:text-selection-changed")
    keys("ctrl+Home", "Right", "Right")
    ears.hears("object:text-caret-moved", "The tour", 2)
    keys("Down", "Home")
    line = "See the other page for more and Wetter."
    ears.hears("object:state-changed:focused", line, 1)
    ears.hears("object:text-caret-moved", line, 0)
    same(text(until(lambda: focused(top), "the focus")), line)
    keys("shift+ctrl+Right")
    ears.hears("object:text-selection-changed", line)
    paragraph = find(top, "paragraph", line)
    until(lambda: Atspi.Text.get_n_selections(paragraph) == 1, "the selection")
    selected = Atspi.Text.get_selection(paragraph, 0)
    same((selected.start_offset, selected.end_offset), (0, Atspi.Text.get_caret_offset(paragraph)))
    keys("ctrl+End")
    ears.hears("object:text-caret-moved", "Last line here.", 15)


def lines():
    whole = next(each for each in all_of(page()) if each.get_role_name() == "paragraph" and text(each).startswith("1 2 3 "))
    letters = text(whole)

    def line():
        found = Atspi.Text.get_text_at_offset(whole, Atspi.Text.get_caret_offset(whole), Atspi.TextBoundaryType.LINE_START)
        return found.start_offset, found.end_offset, found.content

    assert Atspi.Text.set_caret_offset(whole, 0)
    until(lambda: line()[1] < len(letters), "the window's first line")
    read = [line()]
    while read[-1][1] < len(letters):
        keys("Down")
        until(lambda: line()[0] == read[-1][1], lambda: f"the line after {read[-1]}, not {line()}")
        read.append(line())
    same("".join(content for _, _, content in read), letters)
    assert len(read) > 2, read
    keys("Up", "End")
    until(lambda: line() == read[-2], lambda: f"the line before the last, not {line()}")


def hear():
    page()
    # Qt 6.4 tells of children that go only where states are listened to.
    ears = Ears("object:text-changed", "object:children-changed", "object:state-changed")
    keys("ctrl+Home", "End")
    # Keys that come in one turn are one change, so each is waited for.
    write("!")
    ears.hears("object:text-changed:insert", None, 8, "!")
    write("?")
    ears.hears("object:text-changed:insert", None, 9, "?")
    keys("BackSpace")
    ears.hears("object:text-changed:delete", None, 9, "?")
    keys("Return")
    ears.hears("object:children-changed:add")
    keys("ctrl+z")
    ears.hears("object:children-changed:remove")
    changed = [letters for kind, _, _, _, letters in ears.heard if kind.startswith("object:text-changed")]
    same([letters for letters in changed if len(letters) > 1], [])


def steer():
    top = page()
    last = find(top, "paragraph", "Last line here.")
    ears = Ears("object:text-caret-moved")
    assert Atspi.Text.set_caret_offset(last, 4)
    ears.hears("object:text-caret-moved", "Last line here.", 4)
    write("ing")
    until(lambda: text(last) == "Lasting line here.", "what was typed at the caret")
    assert Atspi.Text.add_selection(last, 0, 8)
    selected = Atspi.Text.get_selection(last, 0)
    same((selected.start_offset, selected.end_offset), (0, 8))
    keys("Delete")
    until(lambda: text(last) == "line here.", "what was selected to go")
    item = find(top, "list item", "One")
    assert Atspi.Component.grab_focus(item)
    until(lambda: "focused" in states(item), "the item to have the focus")


def attributes():
    top = page()
    paragraph = find(top, "paragraph", "See the other page for more and Wetter.")

    def at(letters):
        run = Atspi.Text.get_attribute_run(paragraph, text(paragraph).index(letters), True)
        return run[0], text(paragraph)[run[1]:run[2]]

    bold, stretch = at("more")
    same((bold["weight"], bold["language"], bold["family-name"], stretch), ("700", "en", "serif", "more"))
    plain, stretch = at("See")
    same((plain.get("weight"), plain["underline"], plain["size"], stretch), (None, "none", "12", "See "))
    link, stretch = at("other")
    same((link["underline"], stretch), ("single", "the other page"))
    italic, stretch = at("Wetter")
    same((italic["style"], italic["language"], stretch), ("italic", "de", "Wetter"))
    coloured = Atspi.Text.get_attribute_run(find(top, "heading", "Things"), 0, True)[0]
    same((coloured["fg-color"], coloured["justification"]), ("0,128,0", "center"))
    keys("ctrl+Home", "End")
    write(" wrnog now")
    heading = find(top, "heading", "The tour wrnog now")

    def marked():
        run = Atspi.Text.get_attribute_run(heading, 11, True)
        return run[0].get("invalid") == "spelling" and (run[1], run[2]) == (9, 14)

    until(marked, "the wrong word to be marked")


def edit():
    top = page()
    last = find(top, "paragraph", "Last line here.")
    assert Atspi.EditableText.insert_text(last, 4, "ing\u00fc", 4)
    until(lambda: text(last) == "Lasting\u00fc line here.", "the insertion")
    assert Atspi.EditableText.delete_text(last, 0, 8)
    until(lambda: text(last) == "line here." or text(last) == "\u00a0line here.", "the deletion")
    window = next(each for each in children(program()) if "page.html" in each.get_name())
    until(lambda: "*" in window.get_name(), "the window to say that the document has changed")
    keys("ctrl+z")
    until(lambda: text(last) == "Lasting\u00fc line here.", "the deletion to be undone")
    keys("ctrl+z")
    until(lambda: text(last) == "Last line here.", "the insertion to be undone")


def empty():
    top = page()
    same(top.get_description(), "")
    keys("ctrl+a", "Delete")
    until(lambda: top.get_description() == "Start writing, or choose File > New from template.", "the empty page to say how to begin")
    write("x")
    until(lambda: top.get_description() == "", "the sentence to go")


def code():
    top = page()
    button = find(program(), "push button", "Toggle Design / Code view")
    actions = [Atspi.Action.get_action_name(button, i) for i in range(Atspi.Action.get_n_actions(button))]
    assert Atspi.Action.do_action(button, actions.index("Press"))
    until(lambda: "showing" not in states(top), "the page to be covered")
    boxes = lambda: [each for each in all_of(program()) if each.get_role_name() == "text" and "showing" in states(each)]
    until(lambda: [each for each in boxes() if each.get_name() == "Source" and "<H1>The tour</H1>" in text(each)], "the code")


SPEAKING = {"push button", "check box", "radio button", "combo box", "menu item", "page tab", "text", "menu", "toggle button",
            "spin button", "list", "table", "tool bar", "dialog"}


def silent(top):
    """What can be used and says nothing of itself; of the page, its author says what he likes."""
    found = []
    for each in shown_of(top):
        if each.get_role_name() not in SPEAKING or each.get_name().strip():
            continue
        above = []
        parent = each.get_parent()
        while parent is not None and parent.get_role_name() != "application":
            above.append((parent.get_role_name(), parent.get_name()))
            parent = parent.get_parent()
        # The list that a combo box opens, and where a number is written, are named as a whole.
        if not any(role in ("document frame", "combo box", "spin button") for role, _ in above):
            found.append((each.get_role_name(), each.get_description(), above[:4]))
    return found


def names():
    page()
    same(silent(program()), [])
    found = {each.get_name() for each in shown_of(program())}
    for wanted in ("Insert Image", "Element H1", "Bold", "Format bar"):
        assert wanted in found, wanted + " is not among " + repr(found)
    keys("ctrl+f")
    until(lambda: [each for each in shown_of(program()) if each.get_name() == "Next hit"], "the find bar")
    same(silent(program()), [])


def dialogs():
    page()
    for opener in ("Insert / Edit Hyperlink", "Insert / Edit Table", "Insert Image", "Change selected text font and color"):
        button = next(each for each in shown_of(program()) if each.get_name() == opener)
        actions = [Atspi.Action.get_action_name(button, i) for i in range(Atspi.Action.get_n_actions(button))]
        try:
            Atspi.Action.do_action(button, actions.index("Press"))
        except GLib.Error:
            pass  # the program answers when the dialog is closed

        def opened():
            return [each for each in children(program()) if each.get_role_name() == "dialog" and "showing" in states(each)]

        dialog = until(opened, "the dialog of " + opener)[0]
        assert dialog.get_name(), opener + " opens a dialog without a name"
        same(silent(dialog), [])
        keys("Escape")
        until(lambda: not opened(), "the dialog of " + opener + " to go")


if __name__ == "__main__":
    globals()[sys.argv[1]]()
