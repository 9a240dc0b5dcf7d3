"""The binary interface of libtvxHTML.so, as tvx/tvxhtml.h declares it."""

import ctypes
from ctypes import CFUNCTYPE, POINTER, c_double, c_int16, c_int32, c_int64, c_uint16, c_uint32, c_uint64, c_void_p

OK = 0
NOTHING = 1
WRONG_THREAD = -2147417842
NO_MEMBER = -2147352573
NO_NAME = -2147352570
EXCEPTION = -2147352567
FAILED = -2147467259
CLOSED = -2147220991
STARTED = -2147220990
NO_WINDOWS = -2147220989

EMPTY, INTEGER16, INTEGER32, DOUBLE, DATE, TEXT, OBJECT, BOOLEAN, REFERENCE = 0, 2, 3, 5, 7, 8, 9, 11, 12
CALL, GET, SET = 1, 2, 4
OFF_SCREEN, OWN_WINDOW, IN_WINDOW = 0, 1, 2


class Text(ctypes.Structure):
    _fields_ = [("characters", c_void_p), ("length", c_uint32)]


class Value(ctypes.Structure):
    pass


class _As(ctypes.Union):
    _fields_ = [("boolean", c_int16), ("integer16", c_int16), ("integer32", c_int32), ("number", c_double), ("text", Text),
                ("object", c_void_p), ("reference", POINTER(Value))]


Value._fields_ = [("type", c_uint16), ("reserved", c_uint16 * 3), ("as_", _As)]


class ErrorInformation(ctypes.Structure):
    _fields_ = [("number", c_int32), ("reserved", c_uint32), ("text", Text)]


class Identifier(ctypes.Structure):
    _fields_ = [("bytes", ctypes.c_uint8 * 16)]


class Box(ctypes.Structure):
    _fields_ = [("left", c_int32), ("top", c_int32), ("width", c_int32), ("height", c_int32)]


def identifier(text):
    """Of 32 digits, in braces, with hyphens anywhere."""
    return Identifier((ctypes.c_uint8 * 16)(*bytes.fromhex(text.strip("{}").replace("-", ""))))


CLASS_HTMLED = identifier("{04C657AA-8E4F-4912-B967-DCEC43DE5A5C}")
ID_FACTORY = identifier("{92FC1579-7425-49AE-814B-FEBEC3F5AD40}")
ID_LIBRARY = identifier("{CE94C0C8-551B-4491-9A78-E8E015027833}")
ID_DISPATCH = identifier("{2BD9E0BE-6EDE-4E57-AD44-68886DED63BA}")
ID_EVENTS = identifier("{BBE2F064-F1C1-4606-BF76-1F611A4F8013}")
ID_FRAME = identifier("{510DE99C-2904-4C9A-BE4E-F6CE73AA50F9}")
ID_CONTROL = identifier("{9B25E5F3-7BCB-482E-997A-2EEEEDB65871}")


def table(name, *functions):
    """The table of functions of an interface: each takes the object first, then these."""
    unknown = [("QueryInterface", c_int32, POINTER(Identifier), POINTER(c_void_p)), ("AddRef", c_uint32), ("Release", c_uint32)]
    fields = [(each, CFUNCTYPE(result, c_void_p, *arguments)) for each, result, *arguments in unknown + list(functions)]
    return type(name, (ctypes.Structure,), {"_fields_": fields})


LibraryTable = table(
    "LibraryTable",
    ("GetVersion", c_uint32),
    ("Pump", c_int32, c_int32),
    ("NewText", c_int32, c_void_p, c_uint32, POINTER(Text)),
    ("NewTextFromUTF8", c_int32, ctypes.c_char_p, c_int64, POINTER(Text)),
    ("TextToUTF8", c_uint64, POINTER(Text), ctypes.c_char_p, c_uint64),
    ("FreeText", None, POINTER(Text)),
    ("SetText", c_int32, POINTER(Value), ctypes.c_char_p, c_uint32),
    ("ClearValue", None, POINTER(Value)),
    ("GetError", c_int32, POINTER(ErrorInformation)))
FactoryTable = table("FactoryTable", ("CreateInstance", c_int32, c_void_p, POINTER(Identifier), POINTER(c_void_p)),
                     ("LockServer", c_int32, c_int32))
DispatchTable = table(
    "DispatchTable",
    ("GetIDsOfNames", c_int32, POINTER(Text), c_uint32, POINTER(c_int32)),
    ("Invoke", c_int32, c_int32, c_uint16, POINTER(Value), c_uint32, POINTER(Value), POINTER(ErrorInformation)))
EventsTable = table("EventsTable", ("Advise", c_int32, c_void_p, POINTER(c_uint32)), ("Unadvise", c_int32, c_uint32))
ContainerTable = table("ContainerTable", ("GetUserMode", c_int32, POINTER(c_int16)),
                       ("PropertyChanged", c_int32, POINTER(Text)), ("WindowClosed", c_int32))
StoreTable = table("StoreTable", ("ReadProperty", c_int32, POINTER(Text), POINTER(Value)),
                   ("WriteProperty", c_int32, POINTER(Text), POINTER(Value), c_int16))
ControlTable = table(
    "ControlTable",
    ("SetContainer", c_int32, c_void_p),
    ("ReadProperties", c_int32, c_void_p),
    ("WriteProperties", c_int32, c_void_p),
    ("Show", c_int32, c_uint32, c_uint64, POINTER(Box)),
    ("Hide", c_int32),
    ("Resize", c_int32, POINTER(Box)),
    ("SetFocus", c_int32),
    ("GetWindow", c_int32, POINTER(c_uint64)),
    ("Close", c_int32))


FrameTable = table("FrameTable", ("SetTitle", c_int32, POINTER(Text)), ("GetTitle", c_int32, POINTER(Text)))


class Interface:
    """A pointer to one of the library's objects, with one reference of its own."""

    __slots__ = ("address", "functions", "__weakref__")

    def __init__(self, address, functions):
        self.address = address
        pointer = ctypes.cast(address, POINTER(POINTER(functions)))
        self.functions = pointer.contents.contents

    def query(self, identifier_, functions):
        found = c_void_p()
        result = self.functions.QueryInterface(self.address, identifier_, found)
        if result != OK:
            raise TypeError(f"the library has no such interface ({result})")
        return Interface(found.value, functions)

    def add_reference(self):
        self.functions.AddRef(self.address)

    def __del__(self):
        if self.address:
            self.functions.Release(self.address)
            self.address = None


class Exported:
    """An object of Python's that the library calls: its address, and how many references the library has."""

    table_type = None  # of subclasses
    _live = {}  # the objects that the library refers to, by their addresses

    class _Face(ctypes.Structure):
        _fields_ = [("functions", c_void_p)]

    def __init_subclass__(cls):
        # One table for all objects of a class, whose functions find the object by its address.
        cls._table = cls.table_type(*(prototype(getattr(cls, name)) for name, prototype in cls.table_type._fields_))

    def __init__(self):
        self._references = 0
        self._face = Exported._Face(ctypes.addressof(self._table))
        self.address = ctypes.addressof(self._face)

    @staticmethod
    def of(address):
        return Exported._live[address]

    @staticmethod
    def QueryInterface(self, identifier_, found):  # the library doesn't call it
        found[0] = None
        return -2147467262

    @staticmethod
    def AddRef(address):
        exported = Exported._live[address]
        exported._references += 1
        return exported._references

    @staticmethod
    def Release(address):
        exported = Exported._live[address]
        exported._references -= 1
        if exported._references == 0:
            del Exported._live[address]
        return exported._references

    def __enter__(self):
        """Known to the library while it is given to it; and later for as long as the library has references."""
        Exported._live[self.address] = self
        self._references += 1
        return self.address

    def __exit__(self, *_):
        Exported.Release(self.address)
