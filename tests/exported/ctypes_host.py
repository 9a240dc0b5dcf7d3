"""A host in Python by ctypes alone: ctypes_host.py LIBRARY

Nothing of the header is compiled here; the functions are called by their position in the tables.
"""
import ctypes
import sys
from ctypes import (CFUNCTYPE, POINTER, Structure, Union, byref, c_double, c_int16, c_int32, c_ssize_t, c_uint16, c_uint32,
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
EXCEPTION = -2147352567
CLASS = bytes.fromhex("04C657AA8E4F4912B967DCEC43DE5A5C")
FACTORY = bytes.fromhex("92FC1579742549AE814BFEBEC3F5AD40")
CONTROL = bytes.fromhex("9B25E5F37BCB482E997A2EEEEDB65871")
DISPATCH = bytes.fromhex("2BD9E0BE6EDE4E57AD4468886DED63BA")
EVENTS = bytes.fromhex("BBE2F064F1C14606BF761F611A4F8013")
LIBRARY = bytes.fromhex("CE94C0C8551B44919A78E8E015027833")
TIMER_CLASS = bytes.fromhex("B05C5549D1F2442DB097578465AE6615")
TIMER = bytes.fromhex("05823329ADD34501A81502E27E50A80B")
SUBCLASSING_CLASS = bytes.fromhex("9193FD64EB744AB4B7F1A8763A3CDF7E")
SUBCLASSING = bytes.fromhex("A2011F1E81FB43338D60DC6CC3EBCB70")


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


def create(library, class_id, identifier):
    factory, made = c_void_p(), c_void_p()
    assert library.DllGetClassObject(create_string_buffer(class_id, 16), create_string_buffer(FACTORY, 16), byref(factory)) == 0
    assert call(factory.value, 3, None, create_string_buffer(identifier, 16), byref(made),
                types=(c_void_p, c_void_p, c_void_p)) == 0
    release(factory.value)
    return made


def use_timer(library):
    timer = create(library, TIMER_CLASS, TIMER).value
    events, common = query(timer, EVENTS), query(timer, LIBRARY)
    heard, connection = [], c_uint32()
    sink = Sink(lambda number, arguments: heard.append((number, arguments)))
    assert call(events, 3, sink.object, byref(connection), types=(c_void_p, c_void_p)) == 0
    assert call(timer, 6, 5, types=(c_int32,)) == 0  # SetInterval
    for _ in range(2000):
        if len(heard) >= 3:
            break
        call(common, 4, 5, types=(c_int32,))
    assert len(heard) >= 3 and heard[0] == (1, []), heard
    assert call(timer, 6, 0, types=(c_int32,)) == 0
    for pointer in (events, common, timer):
        release(pointer)
    assert sink.references == 1


class Watcher:
    """An object of ours with the functions of tvx_subclass."""

    def __init__(self, response, answer):
        self.told = []

        def asked(_, value):
            value[0] = response
            return 0

        def told(_, hwnd, message, first, second, result):
            self.told.append((hwnd, message, first, second))
            result[0] = answer
            return 0

        none = CFUNCTYPE(c_int32, c_void_p)(lambda _: 1)
        self.functions = [none, none, none, CFUNCTYPE(c_int32, c_void_p, POINTER(c_int32))(asked), none,
                          CFUNCTYPE(c_int32, c_void_p, c_int32, c_int32, c_ssize_t, c_ssize_t, POINTER(c_int32))(told)]
        self.table = (c_void_p * 6)(*(cast(function, c_void_p) for function in self.functions))
        self.pointer = c_void_p(ctypes.addressof(self.table))
        self.object = ctypes.addressof(self.pointer)


def use_watcher(library, hwnd):
    kit, watcher, result = create(library, SUBCLASSING_CLASS, SUBCLASSING).value, Watcher(0, 7), c_int32()
    assert call(kit, 3, watcher.object, hwnd, 1025, types=(c_void_p, c_int32, c_int32)) == 0
    message = dict(types=(c_int32, c_int32, c_ssize_t, c_ssize_t, c_void_p))
    assert call(kit, 7, hwnd, 1025, 3, -4, byref(result), **message) == 0 and result.value == 7
    assert watcher.told == [(hwnd, 1025, 3, -4)], watcher.told
    assert call(kit, 3, watcher.object, hwnd, 1025, types=(c_void_p, c_int32, c_int32)) == EXCEPTION
    assert call(kit, 4, watcher.object, hwnd, 1025, types=(c_void_p, c_int32, c_int32)) == 0
    assert call(kit, 7, hwnd, 1025, 0, 0, byref(result), **message) == 0 and result.value == 0
    release(kit)


def main():
    library = ctypes.CDLL(sys.argv[1])
    control = create(library, CLASS, CONTROL)
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
    use_timer(library)
    use_watcher(library, invoke(members, "hwnd", GET))
    for pointer in (members, events, common, control.value):
        release(pointer)
    assert sink.references == 1
    print("well")


main()
