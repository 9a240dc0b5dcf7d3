"""A host in Python by ctypes alone: ctypes_host.py LIBRARY

Nothing of the header is compiled here; the functions are called by their position in the tables.
"""
import ctypes
import sys
from ctypes import (CFUNCTYPE, POINTER, Structure, Union, byref, c_double, c_int16, c_int32, c_uint16, c_uint32,
                    c_uint64, c_void_p, cast, create_string_buffer)


class Text(Structure):
    _fields_ = [("characters", c_void_p), ("length", c_uint32)]

    def read(self):
        return ctypes.string_at(self.characters, self.length * 2).decode("utf-16-le") if self.length else ""


class Content(Union):
    _fields_ = [("boolean", c_int16), ("integer16", c_int16), ("integer32", c_int32), ("number", c_double),
                ("text", Text), ("object", c_void_p), ("reference", c_void_p)]


class Value(Structure):
    _fields_ = [("type", c_uint16), ("reserved", c_uint16 * 3), ("content", Content)]


class Error(Structure):
    _fields_ = [("number", c_int32), ("reserved", c_uint32), ("text", Text)]


EMPTY, INTEGER32, TEXT, OBJECT, BOOLEAN, REFERENCE = 0, 3, 8, 9, 11, 12
CALL, GET, SET = 1, 2, 4
CLASS = bytes.fromhex("04C657AA8E4F4912B967DCEC43DE5A5C")
FACTORY = bytes.fromhex("92FC1579742549AE814BFEBEC3F5AD40")
CONTROL = bytes.fromhex("9B25E5F37BCB482E997A2EEEEDB65871")
DISPATCH = bytes.fromhex("2BD9E0BE6EDE4E57AD4468886DED63BA")
EVENTS = bytes.fromhex("BBE2F064F1C14606BF761F611A4F8013")
LIBRARY = bytes.fromhex("CE94C0C8551B44919A78E8E015027833")


def call(pointer, place, *arguments, types=()):
    """The function at that place of an object's table."""
    table = cast(cast(pointer, POINTER(c_void_p))[0], POINTER(c_void_p))
    return CFUNCTYPE(c_int32, c_void_p, *types)(table[place])(pointer, *arguments)


def query(pointer, identifier):
    found = c_void_p()
    assert call(pointer, 0, create_string_buffer(identifier, 16), byref(found), types=(c_void_p, c_void_p)) == 0
    return found.value


def release(pointer):
    call(pointer, 2)


kept = []  # what values point to


def text(content):
    data = content.encode("utf-16-le")
    buffer = create_string_buffer(data, len(data) or 1)
    kept.append(buffer)
    return Text(cast(buffer, c_void_p), len(data) // 2)


def value(content):
    made = Value()
    if isinstance(content, bool):
        made.type, made.content.boolean = BOOLEAN, -1 if content else 0
    elif isinstance(content, int):
        made.type, made.content.integer32 = INTEGER32, content
    elif isinstance(content, str):
        made.type, made.content.text = TEXT, text(content)
    return made


def content_of(made):
    return {EMPTY: lambda: None, BOOLEAN: lambda: made.content.boolean != 0,
            INTEGER32: lambda: made.content.integer32, TEXT: made.content.text.read,
            OBJECT: lambda: made.content.object}[made.type]()


def invoke(members, name, how, *arguments):
    number = c_int32()
    assert call(members, 3, byref(text(name)), 1, byref(number), types=(c_void_p, c_uint32, c_void_p)) == 0, name
    given = (Value * max(len(arguments), 1))(*map(value, arguments))
    result, error = Value(), Error()
    answer = call(members, 4, number, how, given, len(arguments), byref(result), byref(error),
                  types=(c_int32, c_uint16, c_void_p, c_uint32, c_void_p, c_void_p))
    if answer != 0:
        raise RuntimeError(error.number, error.text.read())
    return content_of(result)


class Sink:
    """An object of ours with the functions of tvx_dispatch."""

    def __init__(self, hear):
        self.references = 1
        count = CFUNCTYPE(c_uint32, c_void_p)
        invoked = CFUNCTYPE(c_int32, c_void_p, c_int32, c_uint16, POINTER(Value), c_uint32, c_void_p, c_void_p)

        def changed(by):
            self.references += by
            return self.references

        def heard(_, number, how, arguments, count, result, error):
            assert how == CALL
            hear(number, [cast(arguments[i].content.reference, POINTER(Value))[0] for i in range(count)])
            return 0

        self.functions = [CFUNCTYPE(c_int32, c_void_p, c_void_p, c_void_p)(lambda *_: -2147467262),
                          count(lambda _: changed(1)), count(lambda _: changed(-1)),
                          CFUNCTYPE(c_int32, c_void_p, c_void_p, c_uint32, c_void_p)(lambda *_: -2147352570),
                          invoked(heard)]
        self.table = (c_void_p * 5)(*(cast(function, c_void_p) for function in self.functions))
        self.pointer = c_void_p(ctypes.addressof(self.table))
        self.object = ctypes.addressof(self.pointer)


def main():
    library = ctypes.CDLL(sys.argv[1])
    factory, control = c_void_p(), c_void_p()
    assert library.DllGetClassObject(create_string_buffer(CLASS, 16), create_string_buffer(FACTORY, 16), byref(factory)) == 0
    assert call(factory.value, 3, None, create_string_buffer(CONTROL, 16), byref(control),
                types=(c_void_p, c_void_p, c_void_p)) == 0
    release(factory.value)
    members, events, common = (query(control.value, face) for face in (DISPATCH, EVENTS, LIBRARY))
    def set_text(target, new):
        made = text(new)
        return call(common, 9, byref(target), made.characters, made.length, types=(c_void_p, c_void_p, c_uint32))

    heard = []

    def hear(number, arguments):
        heard.append(number)
        if number == 10:  # BeforeCodeViewChange: no
            arguments[1].content.boolean = -1
        if number == 14:  # BeforeGetDocumentHTML
            assert set_text(arguments[0], arguments[0].content.text.read() + "<!--read-->") == 0

    sink, connection = Sink(hear), c_uint32()
    assert call(events, 3, sink.object, byref(connection), types=(c_void_p, c_void_p)) == 0
    invoke(members, "BaseURL", SET, "https://example.org/")
    assert call(control.value, 6, 0, 0, None, types=(c_uint32, c_uint64, c_void_p)) == 0

    invoke(members, "DocumentHTML", SET, "<p>Grüße 😀</p>")
    html = invoke(members, "DocumentHTML", GET)
    assert html == "<P>Grüße 😀</P><!--read-->", html
    assert invoke(members, "DocumentText", GET) == "Grüße 😀"
    assert invoke(members, "IsDirty", GET) is False and invoke(members, "FTPPort", GET) == 21
    invoke(members, "show_Code", CALL)
    assert 10 in heard and 14 in heard
    body = invoke(invoke(members, "DOM", GET), "body", GET)
    assert invoke(body, "innerText", GET) == "Grüße 😀"
    release(body)
    try:
        invoke(members, "IsDirty", SET, True)
        raise SystemExit("IsDirty could be set")
    except RuntimeError as failure:
        assert failure.args[0] == 382 and failure.args[1], failure
    for pointer in (members, events, common, control.value):
        release(pointer)
    assert sink.references == 1
    print("well")


main()
