"""The Python module against the library that was built: module_test.py, with the module in PYTHONPATH and TVXHTML_LIBRARY."""

import ast
import datetime
import gc
import os
import pathlib
import resource
import sys
import tempfile
import threading
import unittest
import weakref

import tvxhtml
from tvxhtml import Closed, Error, HTMLed, _abi, _members


def started(**initial):
    editor = HTMLed(**initial)
    editor.start()
    return editor


class Properties(unittest.TestCase):
    def test_are_attributes_of_their_types(self):
        with HTMLed() as editor:
            editor.FTPHost = "files.example.org"
            editor.FTPPort = 2121
            editor.EditorEnabled = False
            editor.BorderStyle = tvxhtml.EdBorderStyle.None_
            self.assertEqual(editor.FTPHost, "files.example.org")
            self.assertEqual(editor.FTPPort, 2121)
            self.assertIs(editor.EditorEnabled, False)
            self.assertIs(editor.BorderStyle, tvxhtml.EdBorderStyle.None_)

    def test_have_the_defaults_that_are_described(self):
        with HTMLed() as editor:
            self.assertEqual(editor.FTPPort, 21)
            self.assertEqual(editor.BaseURL, "http://")
            self.assertIs(editor.EditorEnabled, True)
            self.assertIsNone(editor.DOM)

    def test_each_can_be_read(self):
        with started() as editor:
            for _, name, *_ in _members.PROPERTIES:
                getattr(editor, name)

    def test_can_be_given_at_once(self):
        with started(DocumentHTML="<P>one</P>", EditorEnabled=False) as editor:
            self.assertEqual(editor.DocumentHTML, "<P>one</P>")
            self.assertIs(editor.EditorEnabled, False)
        with self.assertRaises(TypeError):
            HTMLed(allHTML="")

    def test_texts_keep_every_character(self):
        text = "zero \0, beyond \U0001F600, half \ud800, end"
        with HTMLed() as editor:
            editor.FTPUser = text
            self.assertEqual(editor.FTPUser, text)

    def test_a_misspelt_one_is_no_attribute(self):
        with HTMLed() as editor:
            with self.assertRaises(AttributeError):
                editor.DocumentHtml = ""
            with self.assertRaises(AttributeError):
                print(editor.DocumentHtml)

    def test_go_into_a_dictionary_and_come_back(self):
        with HTMLed(FTPPort=2121, FTPHost="a", DocumentHTML="<P>one</P>") as editor:
            saved = editor.write_properties()
        self.assertEqual(saved["FTPPort"], 2121)
        self.assertNotIn("FTPUser", saved)
        with HTMLed(properties=saved) as editor:
            editor.start()
            self.assertEqual((editor.FTPPort, editor.FTPHost, editor.DocumentHTML), (2121, "a", "<P>one</P>"))

    def test_tell_the_program_of_what_has_changed(self):
        with started() as editor:
            told = []
            editor.property_changed.connect(told.append)
            editor.DocumentHTML = "<P>one</P>"
            editor.pump()
            self.assertIn("DocumentHTML", told)


class Operations(unittest.TestCase):
    def test_act_on_the_document(self):
        with started(DocumentHTML="<P>Hello world</P>") as editor:
            self.assertEqual(editor.selectText(6, 5), "world")
            editor.bold_document()
            self.assertEqual(editor.DocumentHTML, "<P>Hello <B>world</B></P>")

    def test_take_arguments_by_position_and_by_name(self):
        with started(DocumentHTML="<P>one</P>") as editor:
            editor.selectText(SelStartPos=0, SelLength=3)
            editor.InsertAtCursor("<I>two</I>", insertWhere=tvxhtml.ed_InsertType.ed_InsertAfterSelection)
            self.assertEqual(editor.DocumentHTML, "<P>one<I>two</I></P>")
            with self.assertRaises(TypeError):
                editor.selectText(0)
            with self.assertRaises(TypeError):
                editor.selectText(0, 1, 2)

    def test_give_what_they_bring_back(self):
        with started(DocumentHTML="<P>one</P>") as editor, tempfile.TemporaryDirectory() as folder:
            self.assertIs(editor.InCodeView(), False)
            editor.show_Code()
            self.assertIs(editor.InCodeView(), True)
            path = pathlib.Path(folder, "page.html")
            path.write_text("<p>two")
            editor.show_Code()
            self.assertEqual(editor.Open_document(str(path), False), str(path))
            self.assertEqual(editor.DocumentText, "two")

    def test_numbers_and_switches_come_back_as_such(self):
        with started(DocumentHTML="<P>one two one</P>") as editor:
            self.assertEqual(editor.FindText("one"), 2)
            self.assertIs(editor.ReplaceText("three"), True)
            self.assertEqual(editor.DocumentHTML, "<P>three two one</P>")


class Events(unittest.TestCase):
    def test_tell_their_arguments(self):
        with started(DocumentHTML="<P>one</P>") as editor:
            told = []
            editor.BeforeGetDocumentHTML.connect(lambda event: told.append(event.CurrentDocumentHTML))
            editor.DocumentHTML
            self.assertEqual(told, ["<P>one</P>"])

    def test_a_handler_can_veto(self):
        with started() as editor:

            @editor.BeforeCodeViewChange
            def stop(event):
                event.cancel = event.CurrentlyWYSIWYG

            editor.show_Code()
            self.assertIs(editor.InCodeView(), False)
            editor.BeforeCodeViewChange.disconnect(stop)
            editor.show_Code()
            self.assertIs(editor.InCodeView(), True)

    def test_a_handler_can_set_a_text(self):
        with started(DocumentHTML="<P>one</P>") as editor:

            @editor.BeforeGetDocumentHTML
            def change(event):
                event.CurrentDocumentHTML = event.CurrentDocumentHTML.replace("one", "tw\U0001F600 \0")

            self.assertEqual(editor.DocumentHTML, "<P>tw\U0001F600 \0</P>")

    def test_several_hear_in_turn_and_each_what_the_last_has_set(self):
        with started(DocumentHTML="<P>one</P>") as editor:
            for letter in "abc":

                @editor.BeforeGetDocumentHTML
                def add(event, letter=letter):
                    event.CurrentDocumentHTML += letter

            self.assertEqual(editor.DocumentHTML, "<P>one</P>abc")

    def test_what_is_only_told_cant_be_set(self):
        with started() as editor:
            seen = []

            @editor.BeforeCodeViewChange
            def look(event):
                for name in ("CurrentlyWYSIWYG", "nothing"):
                    try:
                        setattr(event, name, False)
                    except AttributeError as failure:
                        seen.append(str(failure))

            editor.show_Code()
            self.assertEqual(len(seen), 2)

    def test_what_a_handler_raises_comes_out_of_the_call(self):
        with started(DocumentHTML="<P>one</P>") as editor:

            @editor.BeforeGetDocumentHTML
            def fail(event):
                raise ZeroDivisionError("in the handler")

            with self.assertRaisesRegex(ZeroDivisionError, "in the handler"):
                editor.DocumentHTML
            editor.BeforeGetDocumentHTML.disconnect(fail)
            self.assertEqual(editor.DocumentHTML, "<P>one</P>")

    def test_a_handler_can_call_the_editor(self):
        with started(DocumentHTML="<P>one</P>") as editor:
            texts = []
            editor.BeforeCodeViewChange.connect(lambda event: texts.append(editor.DocumentText))
            editor.show_Code()
            self.assertEqual(texts, ["one"])

    def test_a_handler_can_close_the_editor(self):
        with started(DocumentHTML="<P>one</P>") as editor:
            editor.BeforeGetDocumentHTML.connect(lambda event: editor.close())
            editor.DocumentHTML
            self.assertTrue(editor.is_closed)


class Errors(unittest.TestCase):
    def test_are_exceptions_with_number_and_text(self):
        with HTMLed() as editor:
            with self.assertRaises(Error) as raised:
                editor.RemoteContent = 7
            self.assertEqual(raised.exception.number, 380)
            self.assertTrue(raised.exception.text)
            with self.assertRaises(Error) as raised:
                editor.allHTML = ""
            self.assertEqual(raised.exception.number, 387)
            editor.start()
            with self.assertRaises(Error) as raised:
                editor.allHTML = ""
            self.assertEqual(raised.exception.number, 382)

    def test_what_cant_be_converted(self):
        with HTMLed() as editor:
            with self.assertRaises(Error) as raised:
                editor.FTPPort = "no number"
            self.assertEqual(raised.exception.number, 13)
            with self.assertRaises(TypeError):
                editor.FTPHost = object()
            with self.assertRaises(Error) as raised:
                editor.FTPPort = 2**40
            self.assertEqual(raised.exception.number, 6)

    def test_another_thread_is_refused(self):
        with HTMLed() as editor:
            raised = []

            def work():
                try:
                    editor.FTPPort
                except Error as error:
                    raised.append(error.number)

            thread = threading.Thread(target=work)
            thread.start()
            thread.join()
            self.assertEqual(raised, [_abi.WRONG_THREAD])


class Objects(unittest.TestCase):
    def test_members_of_the_document(self):
        with started(DocumentHTML='<P id="a">one</P><P>two</P>') as editor:
            document = editor.DOM
            self.assertEqual(document.body.innerText, "one\n\ntwo")
            element = document.getElementById("a")
            element.innerHTML = "<B>three</B>"
            element.style.color = "red"
            self.assertEqual(editor.DocumentHTML.count("three"), 1)
            self.assertEqual(element.tagName, "P")
            self.assertEqual(element.STYLE.Color, "red")

    def test_what_does_something_is_called(self):
        with started(DocumentHTML="<P>one two</P>") as editor:
            selected = editor.DOM.selection.createRange()
            selected.moveToElementText(editor.DOM.body)
            self.assertEqual(selected.text, "one two")
            method = selected.select
            self.assertNotEqual(editor.GetCurrentSelection(False), "one two", "reading a method does nothing")
            method()
            self.assertEqual(editor.GetCurrentSelection(False), "one two")

    def test_collections(self):
        with started(DocumentHTML='<P>one</P><P id="b">two</P>') as editor:
            paragraphs = editor.DOM.getElementsByTagName("P")
            self.assertEqual(len(paragraphs), 2)
            self.assertEqual([each.innerText for each in paragraphs], ["one", "two"])
            self.assertEqual(paragraphs[1].innerText, "two")
            self.assertEqual(paragraphs["b"].innerText, "two")
            with self.assertRaises(IndexError):
                paragraphs[2]

    def test_what_there_isnt_is_no_attribute(self):
        with started() as editor:
            self.assertFalse(hasattr(editor.DOM, "nonsense"))
            with self.assertRaises(AttributeError):
                editor.DOM.nonsense = 1
            with self.assertRaises(Error) as raised:
                editor.DOM.url = ""
            self.assertEqual(raised.exception.number, 383)

    def test_helper_classes(self):
        with HTMLed() as editor:
            entry = editor.DirectoryItem
            self.assertIsInstance(entry, tvxhtml.clsDirectoryItem)
            entry.Filename, entry.FileSize, entry.Directory = "a.gif", 12, True
            entry.LastWriteTime = datetime.datetime(2001, 2, 3, 4, 5, 6)
            self.assertEqual((entry.Filename, entry.FileSize, entry.Directory), ("a.gif", 12, True))
            self.assertEqual(entry.LastWriteTime, datetime.datetime(2001, 2, 3, 4, 5, 6))


class Frame(unittest.TestCase):
    def test_a_title_can_be_set_before_there_is_a_window(self):
        with HTMLed() as editor:
            self.assertEqual(editor.title, "HTMLed")
            editor.title = "A letter \U0001F600"
            self.assertEqual(editor.title, "A letter \U0001F600")
        with self.assertRaises(Closed):
            editor.title


class Lifetime(unittest.TestCase):
    def test_with_closes(self):
        with started() as editor:
            pass
        self.assertTrue(editor.is_closed)
        for act in (lambda: editor.FTPPort, editor.start, editor.bold_document, editor.pump):
            with self.assertRaises(Closed):
                act()
        editor.close()

    def test_with_closes_after_an_exception(self):
        with self.assertRaises(ZeroDivisionError):
            with started() as editor:
                raise ZeroDivisionError
        self.assertTrue(editor.is_closed)

    def test_who_forgets_to_close_leaves_nothing(self):
        editor = started()
        seen = weakref.ref(editor)
        editor.BeforeGetDocumentHTML.connect(lambda event, mine=editor: mine)
        del editor
        gc.collect()
        self.assertIsNone(seen())
        self.assertEqual(_abi.Exported._live, {})

    def test_objects_outlive_the_editor(self):
        with started(DocumentHTML="<P>one</P>") as editor:
            element = editor.DOM.body
        self.assertEqual(element.innerText, "one")

    @unittest.skipIf("asan" in os.environ.get("LD_PRELOAD", ""), "the sanitizer keeps what is freed for a while")
    def test_a_thousand_editors_take_no_more_than_a_hundred(self):
        def work(times):
            for _ in range(times):
                with started(DocumentHTML="<P>one</P>") as editor:
                    editor.BeforeGetDocumentHTML.connect(lambda event: setattr(event, "CurrentDocumentHTML", "two"))
                    self.assertEqual(editor.DocumentHTML, "two")
                    editor.DOM.body.style.color = "red"
            gc.collect()
            return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss

        first = work(100)
        self.assertLess(work(1000) - first, 8 * 1024)  # in KB; a leaked document alone takes more than 50
        self.assertEqual(_abi.Exported._live, {})


class Timers(unittest.TestCase):
    def pump_until(self, condition):
        for _ in range(2000):
            if condition():
                return
            tvxhtml.pump(5)
        self.fail("nothing happens")

    def test_raise_their_event_until_they_are_stopped(self):
        heard = []
        timer = tvxhtml.CTimer(5, item={"any": "thing"})
        timer.ThatTime.connect(lambda event: heard.append(timer.item["any"]))
        self.assertEqual(timer.Interval, 5)
        self.pump_until(lambda: len(heard) >= 3)
        timer.Interval = 0
        before = len(heard)
        tvxhtml.pump(30)
        self.assertEqual(heard, ["thing"] * before)
        timer.PulseTimer()
        self.assertEqual(len(heard), before + 1)

    def test_run_while_an_operation_waits(self):
        heard = []
        timer = tvxhtml.CTimer(1)
        timer.ThatTime.connect(heard.append)
        with started() as editor:
            for _ in range(1000):
                editor.DocumentHTML = "<P>one</P>"
                if heard:
                    break
        timer.Interval = 0
        self.assertTrue(heard)

    def test_stay_alive_while_they_run(self):
        heard = []
        timer = tvxhtml.CTimer(1)
        seen = weakref.ref(timer)

        def hear(event):
            heard.append(event)
            if len(heard) == 3:
                seen().Interval = 0

        timer.ThatTime.connect(hear)
        del timer
        gc.collect()
        self.pump_until(lambda: len(heard) == 3)
        gc.collect()
        self.assertIsNone(seen())
        self.assertEqual(_abi.Exported._live, {})

    def test_the_hundred_and_first_is_refused(self):
        timers = [tvxhtml.CTimer(1000) for _ in range(100)]
        with self.assertRaises(Error) as raised:
            tvxhtml.CTimer(1000)
        self.assertEqual(raised.exception.number & 0xFFFFFFFF, 0x80040000 | tvxhtml.EErrorTimer.eeTooManyTimers)
        self.assertEqual(raised.exception.text, "No more than 10 timers allowed per class")
        for timer in timers:
            timer.Interval = 0

    def test_what_a_handler_raises_comes_out_of_the_pump(self):
        timer = tvxhtml.CTimer(1)

        @timer.ThatTime
        def fail(event):
            timer.Interval = 0
            raise ZeroDivisionError("in the handler")

        with self.assertRaisesRegex(ZeroDivisionError, "in the handler"):
            tvxhtml.pump(1000)

    def test_a_thousand_leave_nothing(self):
        def work(times):
            for _ in range(times):
                timer = tvxhtml.CTimer(1)
                timer.ThatTime.connect(lambda event: None)
                timer.Interval = 0
            gc.collect()
            return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss

        first = work(1000)
        self.assertLess(work(10000) - first, 2048)  # in KB
        self.assertEqual(_abi.Exported._live, {})


PING = 1025


class Watchers(unittest.TestCase):
    def test_hear_of_messages(self):
        told = []
        kit = tvxhtml.GSubclass()
        with started() as editor:
            watcher = tvxhtml.ISubclass(lambda *message: told.append((kit.CurrentMessage, *message)) or 5,
                                        tvxhtml.EMsgResponse.emrConsume)
            kit.AttachMessage(watcher, editor.hwnd, PING)
            self.assertEqual(kit.SendMessage(editor.hwnd, PING, 3, -4), 5)
            self.assertEqual(told, [(PING, editor.hwnd, PING, 3, -4)])
            watcher.MsgResponse = tvxhtml.EMsgResponse.emrPostProcess
            self.assertEqual(kit.SendMessage(editor.hwnd, PING), 0)
            self.assertEqual(kit.CallOldWindowProc(editor.hwnd, PING, 0, 0), 0)
            kit.DetachMessage(watcher, editor.hwnd, PING)
            kit.SendMessage(editor.hwnd, PING)
            self.assertEqual(len(told), 2)

    def test_can_be_a_class(self):
        class Size(tvxhtml.ISubclass):
            seen = None

            def WindowProc(self, hwnd, iMsg, wParam, lParam):
                self.seen = (lParam & 0xFFFF, lParam >> 16)

        size = Size()
        with started() as editor:
            tvxhtml.GSubclass().AttachMessage(size, editor.hwnd, 5)
            editor.resize(0, 0, 320, 200)
            self.assertEqual(size.seen, (320, 200))

    def test_who_is_forgotten_is_detached(self):
        told = []
        kit = tvxhtml.GSubclass()
        with started() as editor:
            watcher = tvxhtml.ISubclass(lambda *message: told.append(message) or 5, tvxhtml.EMsgResponse.emrConsume)
            kit.AttachMessage(watcher, editor.hwnd, PING)
            del watcher
            gc.collect()
            self.assertEqual(kit.SendMessage(editor.hwnd, PING), 0)
        self.assertEqual(told, [])
        gc.collect()
        self.assertEqual(_abi.Exported._live, {})

    def test_what_cant_be_watched(self):
        kit, watcher = tvxhtml.GSubclass(), tvxhtml.ISubclass()
        with started() as editor:
            for hwnd, number in ((1, 13083), (editor.hwnd, 13082)):
                with self.assertRaises(Error) as raised:
                    kit.AttachMessage(watcher, hwnd, PING)
                    kit.AttachMessage(watcher, hwnd, PING)
                self.assertEqual(raised.exception.number & 0xFFFFFFFF, 0x80040000 | number)

    def test_what_one_raises_comes_out_of_the_call(self):
        def fail(*message):
            raise ZeroDivisionError("in the watcher")

        kit, watcher = tvxhtml.GSubclass(), tvxhtml.ISubclass(fail)
        with started() as editor:
            kit.AttachMessage(watcher, editor.hwnd, PING)
            with self.assertRaisesRegex(ZeroDivisionError, "in the watcher"):
                kit.SendMessage(editor.hwnd, PING)


class Stub(unittest.TestCase):
    def test_says_what_the_module_has(self):
        stub = ast.parse(pathlib.Path(tvxhtml.__file__).with_name("__init__.pyi").read_text())
        classes = {each.name: each for each in stub.body if isinstance(each, ast.ClassDef)}
        for name in tvxhtml.__all__:
            self.assertTrue(name in classes or name in ("__version__", "pump"), name)
        for each in (tvxhtml.CTimer, tvxhtml.ISubclass, tvxhtml.GSubclass):
            described = {part.name if isinstance(part, ast.FunctionDef) else part.target.id
                         for part in classes[each.__name__].body if isinstance(part, (ast.FunctionDef, ast.AnnAssign))}
            self.assertEqual({name for name in described if not name.startswith("_")},
                             {name for name in dir(each) if not name.startswith("_")})
        told = {each.name for each in classes["HTMLed"].body if isinstance(each, ast.FunctionDef)}
        told |= {each.target.id for each in classes["HTMLed"].body if isinstance(each, ast.AnnAssign)}
        has = {name for name in dir(HTMLed) if not name.startswith("_")}
        self.assertEqual({name for name in told if not name.startswith("_")}, has)


if __name__ == "__main__":
    unittest.main(verbosity=2 if "-v" in sys.argv else 1)
