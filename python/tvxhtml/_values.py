"""Values of Python's as values of the library, and the other way round."""

import ctypes
import datetime
import enum

from . import _abi

_DAY_0 = datetime.datetime(1899, 12, 30)


class Arguments:
    """What is passed to a call, and what it has left behind references. What was made for it goes with it."""

    def __init__(self, library, count):
        self.tools = library
        self.count = count
        self.values = (_abi.Value * count)()
        self.referred = (_abi.Value * count)()
        self._kept = []

    def put(self, index, value, by_reference=False):
        if not by_reference:
            return self.fill(self.values[index], value)
        referred = self.referred[index]
        if isinstance(value, str):  # the callee takes it back
            self.tools.set_text(referred, value)
        else:
            self.fill(referred, value)
        self.values[index].type = _abi.REFERENCE
        self.values[index].as_.reference = ctypes.pointer(referred)

    def fill(self, target, value):
        """Lends a value: a text stays Python's."""
        if value is None:
            target.type = _abi.EMPTY
        elif isinstance(value, bool):
            target.type, target.as_.boolean = _abi.BOOLEAN, -1 if value else 0
        elif isinstance(value, (int, enum.IntEnum)):
            if -(2**31) <= value < 2**31:
                target.type, target.as_.integer32 = _abi.INTEGER32, value
            else:
                target.type, target.as_.number = _abi.DOUBLE, float(value)
        elif isinstance(value, float):
            target.type, target.as_.number = _abi.DOUBLE, value
        elif isinstance(value, datetime.datetime):
            target.type, target.as_.number = _abi.DATE, (value - _DAY_0) / datetime.timedelta(days=1)
        elif isinstance(value, str):
            characters = value.encode("utf-16-le", "surrogatepass")
            buffer = ctypes.create_string_buffer(characters, max(len(characters), 1))
            self._kept.append(buffer)
            target.type = _abi.TEXT
            target.as_.text = _abi.Text(ctypes.addressof(buffer), len(characters) // 2)
        elif (dispatch := getattr(value, "_dispatch", None)) is not None:
            self._kept.append(dispatch)
            target.type, target.as_.object = _abi.OBJECT, dispatch.address
        else:
            raise TypeError(f"the editor takes no {type(value).__name__}")

    def left(self, index, wrap):
        """What the call has left behind a reference."""
        return value_of(self.tools, self.referred[index], wrap)

    def free(self):
        for value in self.referred:
            if value.type == _abi.TEXT or value.type == _abi.OBJECT:
                self.tools.clear(value)


def value_of(library, value, wrap):
    """A copy; what the value holds stays its own. `wrap` makes an object of a dispatch interface that is taken over."""
    kind, held = value.type, value.as_
    if kind == _abi.BOOLEAN:
        return held.boolean != 0
    if kind == _abi.INTEGER32:
        return held.integer32
    if kind == _abi.INTEGER16:
        return held.integer16
    if kind == _abi.DOUBLE:
        return held.number
    if kind == _abi.DATE:
        return _DAY_0 + datetime.timedelta(days=held.number)
    if kind == _abi.TEXT:
        return library.string(held.text)
    if kind == _abi.OBJECT and held.object:
        dispatch = _abi.Interface(held.object, _abi.DispatchTable)
        dispatch.add_reference()
        return wrap(dispatch)
    return None
