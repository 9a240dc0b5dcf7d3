"""The control HTMLed: its properties, operations and events are made of the description in _members."""

import ctypes
import inspect
import time
import weakref

from . import _abi, _members
from ._library import Closed, Library
from ._objects import Object, invoke, lent
from ._values import Arguments, value_of

_CLASSES = {name: type(name, (Object,), {"__slots__": (), "__doc__": doc}) for name, doc in _members.CLASSES}
_ENUMERATIONS = {each.__name__: each for each in _members.ENUMERATIONS}


def _wrapper(kind):
    return _CLASSES.get(kind, Object)


def _typed(kind, value):
    """A number of an enumeration as one of its members, where it is one."""
    enumeration = _ENUMERATIONS.get(kind)
    if enumeration is None or value is None:
        return value
    try:
        return enumeration(value)
    except ValueError:
        return value


# --- events ---


class EventArguments:
    """What an event tells. Arguments that go by reference can be set: `event.cancel = True`."""

    __slots__ = ("_values", "_settable")

    def __init__(self, values, settable):
        object.__setattr__(self, "_values", values)
        object.__setattr__(self, "_settable", settable)

    def __getattr__(self, name):
        try:
            return self._values[name]
        except KeyError:
            raise AttributeError(f"the event tells no {name!r}") from None

    def __setattr__(self, name, value):
        if name not in self._settable:
            raise AttributeError(f"{name!r} can't be set" if name in self._values else f"the event tells no {name!r}")
        self._values[name] = value

    def __dir__(self):
        return list(self._values)

    def __repr__(self):
        return f"{type(self).__name__}({', '.join(f'{name}={value!r}' for name, value in self._values.items())})"


_ARGUMENTS = {name: type(f"{name}Arguments", (EventArguments,), {"__slots__": (), "__doc__": doc})
              for _, name, _, doc in _members.EVENTS}


class Event:
    """An event of a control. Connected is who hears of it: `@editor.ToolButtonClick`, or `.connect(handler)`."""

    def __init__(self, name, doc):
        self.name = name
        self.handlers = []
        self.__doc__ = doc

    def connect(self, handler):
        """The handler is called with what the event tells. Gives it back."""
        self.handlers.append(handler)
        return handler

    __call__ = connect

    def disconnect(self, handler):
        self.handlers.remove(handler)

    def __repr__(self):
        return f"<event {self.name}, heard by {len(self.handlers)}>"


class _Sink(_abi.Exported):
    """Hears of a control's events. It doesn't keep the control: its handlers may refer to that, and the library to this."""

    table_type = _abi.DispatchTable

    def __init__(self, control):
        super().__init__()
        self.control = weakref.ref(control)

    @staticmethod
    def GetIDsOfNames(_address, _names, _count, _numbers):  # the library doesn't call it
        return _abi.NO_NAME

    @staticmethod
    def Invoke(address, number, _how, arguments, _count, _result, _error):
        library = Library.only()
        try:
            _Sink.of(address).tell(library, number, arguments)
        except BaseException as raised:  # none may enter the library: it is raised when the library has returned
            library.raised.append(raised)
        return _abi.OK

    def tell(self, library, number, references):
        name, parameters = _members.EVENTS_BY_NUMBER[number]
        control = self.control()
        handlers = list(control._events[name].handlers) if control is not None else ()
        if not handlers:
            return
        held = [references[index].as_.reference.contents for index in range(len(parameters))]
        values = {each: _typed(kind, value_of(library, value, Object)) for (each, kind, _), value in zip(parameters, held)}
        before = dict(values)
        told = _ARGUMENTS[name](values, {each for each, _, settable in parameters if settable})
        try:
            for handler in handlers:
                handler(told)
        finally:
            for (each, kind, settable), value in zip(parameters, held):
                if settable and values[each] is not before[each]:
                    _put_back(library, kind, value, values[each])


def _put_back(library, kind, value, new):
    if kind == "boolean":
        value.as_.boolean = -1 if new else 0
    elif kind == "string":
        library.set_text(value, str(new))
    elif kind == "int16":
        value.as_.integer16 = int(new)
    else:
        value.as_.integer32 = int(new)


# --- what stands around a control ---


class _Container(_abi.Exported):
    table_type = _abi.ContainerTable

    def __init__(self, control, design):
        super().__init__()
        self.control = weakref.ref(control)
        self.design = design

    @staticmethod
    def GetUserMode(address, user_mode):
        user_mode[0] = 0 if _Container.of(address).design else -1
        return _abi.OK

    @staticmethod
    def PropertyChanged(address, key):
        return _Container.of(address).tell("_property_changed", Library.string(key.contents))

    @staticmethod
    def WindowClosed(address):
        return _Container.of(address).tell("_window_closed")

    def tell(self, what, *values):
        control = self.control()
        try:
            if control is not None:
                getattr(control, what)(*values)
        except BaseException as raised:
            Library.only().raised.append(raised)
        return _abi.OK


class _Store(_abi.Exported):
    """A dictionary as the store of a saved control."""

    table_type = _abi.StoreTable

    def __init__(self, properties):
        super().__init__()
        self.properties = properties

    @staticmethod
    def ReadProperty(address, key, value):
        library = Library.only()
        try:
            properties = _Store.of(address).properties
            name = library.string(key.contents)
            if name not in properties:
                return _abi.NOTHING
            library.clear(value)
            new = properties[name]
            if isinstance(new, str):
                library.set_text(value, new)
            else:
                Arguments(library, 0).fill(value.contents, new)
            return _abi.OK
        except BaseException as raised:
            library.raised.append(raised)
            return _abi.NOTHING

    @staticmethod
    def WriteProperty(address, key, value, is_default):
        library = Library.only()
        try:
            properties = _Store.of(address).properties
            name = library.string(key.contents)
            if is_default:
                properties.pop(name, None)
            else:
                properties[name] = value_of(library, value.contents, Object)
        except BaseException as raised:
            library.raised.append(raised)
        return _abi.OK


def _close(faces, sink_connection):
    """Ends a control that its program has forgotten, or that the program's end has reached."""
    control, events = faces["control"], faces["events"]
    if control is not None:
        events.functions.Unadvise(events.address, sink_connection)
        control.functions.Close(control.address)
    faces.clear()


class HTMLed:
    """The visual HTML editor.

    Properties can be set at once: they are what the editor starts with. It starts when it is shown, or by start() without
    a window, and has a document from then on. `with` closes it at the end.

        with HTMLed(DocumentHTML="<P>Hello</P>") as editor:
            editor.show()
            editor.run()
            print(editor.DocumentHTML)

    What goes wrong is an Error with its number. What a handler of an event raises is raised by the call that led to the
    event, when that is done; by run() and pump() where the user did.
    """

    __slots__ = ("_faces", "_dispatch", "_finalizer", "_events", "_closed_window", "_started", "closed", "property_changed",
                 "__weakref__")

    def __init__(self, *, design=False, properties=None, **initial):
        library = Library.only()
        control = library.create(_abi.ID_CONTROL, _abi.ControlTable)
        self._dispatch = control.query(_abi.ID_DISPATCH, _abi.DispatchTable)
        self._faces = {"control": control, "events": control.query(_abi.ID_EVENTS, _abi.EventsTable)}
        self._events = {name: Event(name, doc) for _, name, _, doc in _members.EVENTS}
        self._closed_window = self._started = False
        self.closed = Event("closed", "The user has closed the editor's own window.")
        self.property_changed = Event("property_changed", "A property that would be saved has another value, or may have.")
        connection = ctypes.c_uint32()
        with _Sink(self) as sink:
            library.check(self._events_face.functions.Advise(self._events_face.address, sink, connection))
        self._finalizer = weakref.finalize(self, _close, self._faces, connection.value)
        with _Container(self, design) as container:
            self._call("SetContainer", container)
        if properties is not None:
            self.read_properties(properties)
        for name, value in initial.items():
            if name not in _SETTABLE:
                raise TypeError(f"there is no property {name!r} that can be set")
            setattr(self, name, value)

    # --- life ---

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        """Ends the editor: its window and its temporary files go. A second time does nothing."""
        if self._finalizer.alive:
            self._finalizer()
            self._raise_what_handlers_raised()

    @property
    def is_closed(self):
        return not self._finalizer.alive

    @property
    def _events_face(self):
        return self._faces["events"]

    def _call(self, name, *arguments):
        control = self._faces.get("control")
        if control is None:
            raise Closed(_abi.CLOSED, "the editor has been closed")
        return Library.only().check(getattr(control.functions, name)(control.address, *arguments))

    @staticmethod
    def _raise_what_handlers_raised():
        Library.only().check(_abi.OK)

    # --- showing ---

    def start(self):
        """Starts the editor without a window, a desktop or the browser engine."""
        self._show(_abi.OFF_SCREEN, 0, None)

    def show(self, *, window=None, box=None, title=None):
        """Shows the editor: in a window of its own, or inside the window of that number in the X Window System.

        `box` is (left, top, width, height) in pixels; `title` is that of its own window.
        """
        if title is not None:
            self.title = title
        self._show(_abi.OWN_WINDOW if window is None else _abi.IN_WINDOW, window or 0, box)

    def _show(self, where, window, box):
        self._closed_window = False
        self._call("Show", where, window, _abi.Box(*box) if box else None)
        self._started = True

    def hide(self):
        self._call("Hide")

    def resize(self, left, top, width, height):
        self._call("Resize", _abi.Box(left, top, width, height))

    def focus(self):
        """Gives the editor the keyboard's focus."""
        self._call("SetFocus")

    @property
    def window(self):
        """The number of the editor's own window in the X Window System, None where it has none."""
        number = ctypes.c_uint64()
        return number.value if self._call("GetWindow", number) else None

    @property
    def title(self):
        """What the title of the editor's own window says."""
        text = _abi.Text()
        self._call_frame("GetTitle", text)
        return Library.only().take(text)

    @title.setter
    def title(self, words):
        characters = words.encode("utf-16-le", "surrogatepass")
        self._call_frame("SetTitle", _abi.Text(ctypes.cast(ctypes.c_char_p(characters), ctypes.c_void_p),
                                               len(characters) // 2))

    def _call_frame(self, name, text):
        control = self._faces.get("control")
        if control is None:
            raise Closed(_abi.CLOSED, "the editor has been closed")
        frame = control.query(_abi.ID_FRAME, _abi.FrameTable)
        Library.only().check(getattr(frame.functions, name)(frame.address, text))

    def pump(self, milliseconds=0):
        """Deals with messages for that long; 0: with those that are there now."""
        if self.is_closed:
            raise Closed(_abi.CLOSED, "the editor has been closed")
        library = Library.only()
        library.check(library.face.functions.Pump(library.face.address, milliseconds))

    def run(self):
        """Until the user has closed the editor's window, or close() was called."""
        while not self._closed_window and not self.is_closed:
            self.pump(20)

    def wait(self, condition, seconds=10.0):
        """Deals with messages until condition() holds; gives whether it did in time."""
        end = time.monotonic() + seconds
        while not condition():
            if time.monotonic() > end:
                return False
            self.pump(5)
        return True

    def _window_closed(self):
        self._closed_window = True
        for handler in list(self.closed.handlers):
            handler(EventArguments({}, ()))

    def _property_changed(self, key):
        for handler in list(self.property_changed.handlers):
            handler(key)

    # --- saving ---

    def read_properties(self, properties):
        """All properties from a dictionary, before the start."""
        with _Store(properties) as store:
            self._call("ReadProperties", store)

    def write_properties(self):
        """All properties that aren't the default, as a dictionary."""
        properties = {}
        with _Store(properties) as store:
            self._call("WriteProperties", store)
        return properties

    def __repr__(self):
        return f"<HTMLed, {'closed' if self.is_closed else 'started' if self._started else 'not started'}>"

    def _invoke(self, number, how, arguments=None, wrap=None):
        if self.is_closed:
            raise Closed(_abi.CLOSED, "the editor has been closed")
        return invoke(self._dispatch, number, how, arguments, wrap)


# --- members ---


def _make_property(number, _name, kind, _is_settable, doc):
    wrap = _wrapper(kind)

    def get(self):
        return _typed(kind, self._invoke(number, _abi.GET, wrap=wrap))

    def set_(self, value):
        self._invoke(number, _abi.SET, lent([value]))

    # A setter for all: the control says why it can't be set.
    return property(get, set_, doc=doc)


def _make_operation(number, name, parameters, result, returned, doc):
    omitted = object()
    signature = inspect.Signature(
        [inspect.Parameter("self", inspect.Parameter.POSITIONAL_ONLY)] +
        [inspect.Parameter(each, inspect.Parameter.POSITIONAL_OR_KEYWORD,
                           default=inspect.Parameter.empty if default is _members.REQUIRED else default)
         for each, _, _, out, default in parameters if not out])
    wrap = _wrapper(result)

    def call(self, *positional, **named):
        bound = signature.bind(self, *positional, **named)
        bound.apply_defaults()
        arguments = Arguments(Library.only(), len(parameters))
        try:
            for index, (each, kind, by_reference, out, _) in enumerate(parameters):
                value = None if out else bound.arguments.get(each, omitted)
                arguments.put(index, value, by_reference or out)
            answer = self._invoke(number, _abi.CALL, arguments, wrap)
            if returned is not None:
                return arguments.left(returned, Object)
            return _typed(result, answer)
        finally:
            arguments.free()

    call.__name__ = name
    call.__qualname__ = f"HTMLed.{name}"
    call.__doc__ = doc
    call.__signature__ = signature
    return call


def _make_event(name, doc):
    return property(lambda self: self._events[name], doc=doc)


_SETTABLE = {name for _, name, _, is_settable, _ in _members.PROPERTIES if is_settable}
for _number, _name, *_rest in _members.PROPERTIES:
    setattr(HTMLed, _name, _make_property(_number, _name, *_rest))
for _number, _name, *_rest in _members.OPERATIONS:
    setattr(HTMLed, _name, _make_operation(_number, _name, *_rest))
for _number, _name, _, _doc in _members.EVENTS:
    setattr(HTMLed, _name, _make_event(_name, _doc))
