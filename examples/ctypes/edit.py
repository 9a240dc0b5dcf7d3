#!/usr/bin/env python3
"""The editor from Python by ctypes alone, as from any language that can call C: edit.py [LIBRARY]

Makes the headings of the HTML on standard input one level lower, without a window. The functions of an object stand in
a table; their positions, and all numbers here, are those of tvx/tvxhtml.h. (For Python itself there is the module
tvxhtml, with which this is three lines.)
"""
import ctypes
import sys
from ctypes import CFUNCTYPE, POINTER, Structure, byref, c_int32, c_uint16, c_uint32, c_uint64, c_void_p, cast

CLASS = bytes.fromhex("04C657AA8E4F4912B967DCEC43DE5A5C")
FACTORY = bytes.fromhex("92FC1579742549AE814BFEBEC3F5AD40")
CONTROL = bytes.fromhex("9B25E5F37BCB482E997A2EEEEDB65871")
DISPATCH = bytes.fromhex("2BD9E0BE6EDE4E57AD4468886DED63BA")
LIBRARY = bytes.fromhex("CE94C0C8551B44919A78E8E015027833")
RELEASE, CREATE, SHOW, INVOKE, CLEAR = 2, 3, 6, 4, 10  # positions in the tables
GET, SET, OFF_SCREEN, TEXT, DOCUMENT_HTML = 2, 4, 0, 8, 4


class Value(Structure):  # a tvx_value that holds a text
    _fields_ = [("type", c_uint16), ("reserved", c_uint16 * 3), ("characters", c_void_p), ("length", c_uint32)]


def call(thing, position, types, *arguments):
    table = cast(cast(thing, POINTER(c_void_p))[0], POINTER(c_void_p))
    result = CFUNCTYPE(c_int32, c_void_p, *types)(table[position])(thing, *arguments)
    if position != RELEASE and position != CLEAR and result != 0:
        raise RuntimeError(f"the call failed: {result & 0xFFFFFFFF:#x}")


def face(thing, identifier):
    found = c_void_p()
    call(thing, 0, (ctypes.c_char_p, c_void_p), identifier, byref(found))
    return found


factory, control = c_void_p(), c_void_p()
library = ctypes.CDLL(sys.argv[1] if len(sys.argv) > 1 else "libtvxHTML.so.1")
if library.DllGetClassObject(CLASS, FACTORY, byref(factory)) != 0:
    sys.exit("no class")
call(factory, CREATE, (c_void_p, ctypes.c_char_p, c_void_p), None, CONTROL, byref(control))
call(control, SHOW, (c_uint32, c_uint64, c_void_p), OFF_SCREEN, 0, None)
members, common = face(control, DISPATCH), face(control, LIBRARY)
invoke = (c_int32, c_uint16, c_void_p, c_uint32, c_void_p, c_void_p)

html = sys.stdin.read()
for level in range(5, 0, -1):
    html = html.replace(f"<h{level}>", f"<h{level + 1}>").replace(f"</h{level}>", f"</h{level + 1}>")
data = html.encode("utf-16-le")
given = Value(TEXT, (0, 0, 0), cast(ctypes.c_char_p(data), c_void_p), len(data) // 2)
call(members, INVOKE, invoke, DOCUMENT_HTML, SET, byref(given), 1, None, None)
answer = Value()
call(members, INVOKE, invoke, DOCUMENT_HTML, GET, None, 0, byref(answer), None)
print(ctypes.string_at(answer.characters, answer.length * 2).decode("utf-16-le"))

call(common, CLEAR, (c_void_p,), byref(answer))
for thing in (members, common, control, factory):
    call(thing, RELEASE, ())
