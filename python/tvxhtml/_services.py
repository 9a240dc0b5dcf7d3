"""What the library has beside the control: timers, and watching messages of windows."""

import ctypes
import inspect
import weakref
from ctypes import POINTER, c_int32, c_ssize_t, c_void_p

from . import _abi, _members
from ._control import Event, EventArguments
from ._library import Library

_TYPES = {"int32": c_int32, "pointer": c_ssize_t, "variant": _abi.Value}


def _argument(kind, out):
    plain = _TYPES.get(kind) or (c_void_p if kind in _SERVICES else c_int32)
    return POINTER(plain) if out or plain is _abi.Value else plain


_SERVICES = {name: rest for name, *rest in _members.SERVICES}


def _table(name):
    functions = _SERVICES[name][2]
    return _abi.table(f"{name}Table", *((each, c_int32, *(_argument(kind, out) for _, kind, out in arguments))
                                        for each, arguments in functions))


_TABLES = {name: _table(name) for name in _SERVICES}


def _docs(name):
    """A class decorator: what the description says of the class and of its members."""
    def add(cls):
        _, _, _, doc, members = _SERVICES[name]
        cls.__doc__ = doc
        for member, text in members.items():
            described = cls.__dict__[member]
            if isinstance(described, property):
                setattr(cls, member, property(described.fget, described.fset, doc=text))
            elif inspect.isfunction(described):
                described.__doc__ = text
        return cls
    return add


def _create(name):
    """A new object of the class, with the interface of its name."""
    interface, class_id = (_abi.identifier(each) for each in _SERVICES[name][:2])
    return Library.only().create(interface, _TABLES[name], class_id)


def _call(face, name, *arguments):
    Library.only().check(getattr(face.functions, name)(face.address, *arguments))


def pump(milliseconds=0):
    """Deals with messages for that long, also where there is no editor; 0: with those that are there now."""
    library = Library.only()
    library.check(library.face.functions.Pump(library.face.address, milliseconds))


# --- timers ---


class _TimerSink(_abi.Exported):
    """Hears of a timer's event. It doesn't keep the timer: its handlers may refer to that, and the library to this."""

    table_type = _abi.DispatchTable

    def __init__(self, timer):
        super().__init__()
        self.timer = weakref.ref(timer)

    @staticmethod
    def GetIDsOfNames(_address, _names, _count, _numbers):  # the library doesn't call it
        return _abi.NO_NAME

    @staticmethod
    def Invoke(address, _number, _how, _arguments, _count, _result, _error):
        timer = _TimerSink.of(address).timer()
        try:
            for handler in list(timer.ThatTime.handlers) if timer else ():
                handler(EventArguments({}, ()))
        except BaseException as raised:  # none may enter the library: it is raised when the library has returned
            Library.only().raised.append(raised)
        return _abi.OK


def _end_timer(face, events, connection):
    events.functions.Unadvise(events.address, connection)
    face.functions.SetInterval(face.address, 0)


@_docs("CTimer")
class CTimer:
    __slots__ = ("item", "_face", "_that_time", "_finalizer", "__weakref__")

    _running = set()  # a timer that runs stays

    def __init__(self, Interval=0, *, item=None):
        library = Library.only()
        self.item = item
        self._face = _create("CTimer")
        self._that_time = Event("ThatTime", "The time is over.")
        events = self._face.query(_abi.ID_EVENTS, _abi.EventsTable)
        connection = ctypes.c_uint32()
        with _TimerSink(self) as sink:
            library.check(events.functions.Advise(events.address, sink, connection))
        self._finalizer = weakref.finalize(self, _end_timer, self._face, events, connection.value)
        if Interval:
            self.Interval = Interval

    @property
    def Interval(self):
        value = c_int32()
        _call(self._face, "GetInterval", value)
        return value.value

    @Interval.setter
    def Interval(self, milliseconds):
        try:
            _call(self._face, "SetInterval", milliseconds)
        except BaseException:
            CTimer._running.discard(self)
            raise
        (CTimer._running.add if milliseconds > 0 else CTimer._running.discard)(self)

    @property
    def ThatTime(self):
        return self._that_time

    def PulseTimer(self):
        _call(self._face, "PulseTimer")

    def __repr__(self):
        return f"<CTimer, {self.Interval} ms>"


# --- watched messages ---


class _Watcher(_abi.Exported):
    """Stands before the library for an object of Python's, and lives as long as that."""

    table_type = _TABLES["ISubclass"]

    def __init__(self, subclass):
        super().__init__()
        self.subclass = weakref.ref(subclass)
        self.attached = []  # (window, message)

    @staticmethod
    def _ask(address, ask):
        watcher = _abi.Exported._live.get(address)
        subclass = watcher and watcher.subclass()
        try:
            if subclass is not None:
                ask(subclass)
        except BaseException as raised:
            Library.only().raised.append(raised)
        return _abi.OK

    @staticmethod
    def GetMsgResponse(address, value):
        def ask(subclass):
            value[0] = subclass.MsgResponse
        return _Watcher._ask(address, ask)

    @staticmethod
    def SetMsgResponse(address, value):
        return _Watcher._ask(address, lambda subclass: setattr(subclass, "MsgResponse", value))

    @staticmethod
    def WindowProc(address, hwnd, iMsg, wParam, lParam, result):
        def ask(subclass):
            result[0] = subclass.WindowProc(hwnd, iMsg, wParam, lParam) or 0
        return _Watcher._ask(address, ask)


def _end_watcher(watcher):
    for hwnd, message in list(watcher.attached):
        GSubclass().DetachMessage(watcher, hwnd, message)
    watcher.__exit__()


@_docs("ISubclass")
class ISubclass:
    def __init__(self, procedure=None, MsgResponse=_members.EMsgResponse.emrPostProcess):
        """`procedure(hwnd, iMsg, wParam, lParam)` is called for each message; or a class overrides WindowProc."""
        self._procedure = procedure
        self._response = MsgResponse

    @property
    def MsgResponse(self):
        return self._response

    @MsgResponse.setter
    def MsgResponse(self, response):
        self._response = response

    def WindowProc(self, hwnd, iMsg, wParam, lParam):
        return self._procedure(hwnd, iMsg, wParam, lParam) if self._procedure else 0

    def _watcher(self):
        watcher = self.__dict__.get("_exported")
        if watcher is None:
            watcher = self._exported = _Watcher(self)
            watcher.__enter__()
            weakref.finalize(self, _end_watcher, watcher)
        return watcher


@_docs("GSubclass")
class GSubclass:
    __slots__ = ("_face",)

    def __init__(self):
        self._face = _create("GSubclass")

    def AttachMessage(self, iwp, hwnd, iMsg):
        watcher = iwp._watcher()
        _call(self._face, "AttachMessage", watcher.address, hwnd, iMsg)
        watcher.attached.append((hwnd, iMsg))

    def DetachMessage(self, iwp, hwnd, iMsg):
        watcher = iwp if isinstance(iwp, _Watcher) else iwp._watcher()
        _call(self._face, "DetachMessage", watcher.address, hwnd, iMsg)
        if (hwnd, iMsg) in watcher.attached:
            watcher.attached.remove((hwnd, iMsg))

    @property
    def CurrentMessage(self):
        value = c_int32()
        _call(self._face, "GetCurrentMessage", value)
        return value.value

    def CallOldWindowProc(self, hwnd, iMsg, wParam, lParam):
        return self._answer("CallOldWindowProc", hwnd, iMsg, wParam, lParam)

    def SendMessage(self, hwnd, iMsg, wParam=0, lParam=0):
        return self._answer("SendMessage", hwnd, iMsg, wParam, lParam)

    def _answer(self, name, *arguments):
        result = c_int32()
        _call(self._face, name, *arguments, result)
        return result.value
