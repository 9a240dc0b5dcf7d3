"""Objects that the editor gives: elements and ranges of the document, entries of folders, collections."""

import ctypes

from . import _abi
from ._library import Error, Library
from ._values import Arguments, value_of

NO_SUCH_MEMBER = 438
WRONG_NUMBER_OF_ARGUMENTS = 450


def invoke(dispatch, number, how, arguments=None, wrap=None):
    """Calls a member, gets or sets it; gives its result."""
    library = Library.only()
    result, error = _abi.Value(), _abi.ErrorInformation()
    answer = dispatch.functions.Invoke(dispatch.address, number, how, arguments.values if arguments else None,
                                       arguments.count if arguments else 0, result, error)
    try:
        value = value_of(library, result, wrap or Object)
    finally:
        library.clear(result)
    if answer == _abi.NO_MEMBER:
        raise Error(NO_SUCH_MEMBER, "Object doesn't support this property or method")
    library.check(answer, error)
    return value


def lent(values):
    arguments = Arguments(Library.only(), len(values))
    for index, value in enumerate(values):
        arguments.put(index, value)
    return arguments


class Method:
    """A member that is called."""

    __slots__ = ("_dispatch_", "_number", "_name")

    def __init__(self, dispatch, number, name):
        self._dispatch_, self._number, self._name = dispatch, number, name

    def __call__(self, *values):
        return invoke(self._dispatch_, self._number, _abi.CALL | _abi.GET, lent(values))

    def __repr__(self):
        return f"<method {self._name}>"


class Object:
    """An object of the editor's, whose members are reached by name: `editor.DOM.body.innerHTML`.

    Names are compared without regard to case. What takes arguments, or does something, is called as a method. A
    collection is indexed, by a position or by a name: `editor.DOM.images[0]`.
    """

    __slots__ = ("_dispatch",)

    def __init__(self, dispatch):
        object.__setattr__(self, "_dispatch", dispatch)

    def _number_of(self, name):
        characters = name.encode("utf-16-le", "surrogatepass")
        text = _abi.Text(ctypes.cast(ctypes.c_char_p(characters), ctypes.c_void_p), len(characters) // 2)
        number = ctypes.c_int32()
        result = self._dispatch.functions.GetIDsOfNames(self._dispatch.address, text, 1, number)
        if result == _abi.NO_NAME:
            raise AttributeError(f"the object has no {name!r}")
        Library.only().check(result)
        return number.value

    def __getattr__(self, name):
        if name.startswith("__"):
            raise AttributeError(name)
        number = self._number_of(name)
        library = Library.only()
        result, error = _abi.Value(), _abi.ErrorInformation()
        answer = self._dispatch.functions.Invoke(self._dispatch.address, number, _abi.GET, None, 0, result, error)
        try:
            value = value_of(library, result, Object)
        finally:
            library.clear(result)
        if answer == _abi.NO_MEMBER:
            return Method(self._dispatch, number, name)
        try:
            library.check(answer, error)
        except Error as failure:
            if failure.number == WRONG_NUMBER_OF_ARGUMENTS:
                return Method(self._dispatch, number, name)
            if failure.number == NO_SUCH_MEMBER:
                raise AttributeError(f"the object has no {name!r}") from None
            raise
        return value

    def __setattr__(self, name, value):
        try:
            invoke(self._dispatch, self._number_of(name), _abi.SET, lent([value]))
        except Error as failure:
            if failure.number == NO_SUCH_MEMBER:
                raise AttributeError(f"the object has no {name!r}") from None
            raise

    def __getitem__(self, key):
        value = invoke(self._dispatch, 0, _abi.CALL | _abi.GET, lent([key]))
        if value is None:
            raise (IndexError if isinstance(key, int) else KeyError)(key)
        return value

    def __len__(self):
        for name in ("length", "count"):
            number = getattr(self, name, None)
            if isinstance(number, Method):
                number = number()
            if number is not None:
                return number
        raise TypeError("the object is no collection")

    def __bool__(self):
        return True

    def __iter__(self):
        for index in range(len(self)):
            yield self[index]

    def __repr__(self):
        return f"<{type(self).__name__} of the editor>"
