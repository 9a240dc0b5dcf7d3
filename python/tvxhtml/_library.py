"""Finding and loading the library, and what its functions answer."""

import contextlib
import ctypes
import os
import pathlib
import threading

from . import _abi


class Error(Exception):
    """What the editor, or one of its objects, has failed with: docs/reference.md names the numbers."""

    def __init__(self, number, text):
        super().__init__(text)
        self.number = number
        self.text = text

    def __str__(self):
        return f"{self.text} ({self.number})" if self.text else str(self.number)


class Closed(Error):
    """The editor has been closed."""


_WORDS = {
    _abi.WRONG_THREAD: "the editor lives in another thread",
    _abi.CLOSED: "the editor has been closed",
    _abi.STARTED: "too late: the editor has been shown",
    _abi.NO_WINDOWS: "there can be no windows",
}


def _folders():
    own = os.environ.get("XDG_DATA_HOME", "")
    yield pathlib.Path(own) if own.startswith("/") else pathlib.Path.home() / ".local/share"
    for folder in (os.environ.get("XDG_DATA_DIRS") or "/usr/local/share:/usr/share").split(":"):
        if folder.startswith("/"):
            yield pathlib.Path(folder)


def _registered(class_name):
    """Where the library of a class is, as the registry says: its path and the class's identifier."""
    for folder in _folders():
        with contextlib.suppress(OSError), open(folder / "tvxHTML/classes", encoding="utf-8", errors="replace") as lines:
            for line in lines:
                fields = line.rstrip("\r\n").split("\t")
                if len(fields) >= 3 and not line.startswith("#") and fields[0].lower() == class_name.lower():
                    return str(folder / "tvxHTML" / fields[2]), _abi.identifier(fields[1])
    return None


class Library:
    """The one library of the process."""

    _lock = threading.Lock()
    _only = None

    @classmethod
    def only(cls):
        with cls._lock:
            if cls._only is None:
                cls._only = cls()
            return cls._only

    def __init__(self):
        path = os.environ.get("TVXHTML_LIBRARY")
        class_id = _abi.CLASS_HTMLED
        if not path:
            path, class_id = _registered("tvxHTML.HTMLed") or ("libtvxHTML.so.1", class_id)
        self.path = path
        try:
            self.entry = ctypes.CDLL(path).DllGetClassObject
        except OSError as failure:
            raise OSError(f"{failure}; the package libtvxhtml1 has it, and TVXHTML_LIBRARY may name another") from None
        self.entry.restype = ctypes.c_int32
        self.entry.argtypes = [ctypes.POINTER(_abi.Identifier), ctypes.POINTER(_abi.Identifier),
                               ctypes.POINTER(ctypes.c_void_p)]
        self.factory = self.factory_of(class_id)
        self.face = self.factory.query(_abi.ID_LIBRARY, _abi.LibraryTable)
        self.raised = []  # what handlers of events have raised, for the call that led to them

    def factory_of(self, class_id):
        found = ctypes.c_void_p()
        result = self.entry(class_id, _abi.ID_FACTORY, found)
        if result != _abi.OK:
            raise Error(result, _WORDS.get(result) or f"{self.path} has no such class")
        return _abi.Interface(found.value, _abi.FactoryTable)

    def create(self, identifier, table, class_id=None):
        """A new object by one of its interfaces: a control, or one of that class."""
        factory = self.factory_of(class_id) if class_id else self.factory
        found = ctypes.c_void_p()
        self.check(factory.functions.CreateInstance(factory.address, None, identifier, found))
        return _abi.Interface(found.value, table)

    # --- texts ---

    @staticmethod
    def string(text):
        if not text.length:
            return ""
        return ctypes.string_at(text.characters, 2 * text.length).decode("utf-16-le", "surrogatepass")

    def take(self, text):
        """A text that the library has given, taken over."""
        words = self.string(text)
        self.face.functions.FreeText(self.face.address, text)
        return words

    def set_text(self, value, words):
        characters = words.encode("utf-16-le", "surrogatepass")
        self.check(self.face.functions.SetText(self.face.address, value, characters, len(characters) // 2))

    def clear(self, value):
        self.face.functions.ClearValue(self.face.address, value)

    # --- failures ---

    def check(self, result, error=None):
        """Raises what a call has failed with, and what handlers of events raised while it ran."""
        number, text = result, _WORDS.get(result, "")
        if error is not None and error.text.length:
            text = self.take(error.text)
        if result == _abi.EXCEPTION and error is not None:
            number = error.number
        elif result in (_abi.EXCEPTION, _abi.FAILED, _abi.NO_WINDOWS):
            last = _abi.ErrorInformation()
            if self.face.functions.GetError(self.face.address, last) == _abi.OK:
                number = last.number if result == _abi.EXCEPTION else result
                text = self.take(last.text)
        if self.raised:
            raised, self.raised[:] = self.raised[0], []
            raise raised
        if result < 0:
            raise (Closed if result == _abi.CLOSED else Error)(number, text)
        return result == _abi.OK
