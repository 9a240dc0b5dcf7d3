"""The visual HTML editor tvxHTML, from Python.

    import tvxhtml

    with tvxhtml.HTMLed() as editor:
        editor.start()
        editor.DocumentHTML = "<p>Hello world</p>"
        editor.selectText(6, 5)
        editor.bold_document()
        print(editor.DocumentHTML)

Properties, operations and events have the names that the reference lists. Everything happens in the thread that made the
first editor.
"""

from . import _members
from ._control import _ARGUMENTS, _CLASSES, Event, EventArguments, HTMLed
from ._library import Closed, Error
from ._objects import Method, Object
from ._services import CTimer, GSubclass, ISubclass, pump
from ._version import __version__

globals().update({each.__name__: each for each in _members.ENUMERATIONS})
globals().update(_CLASSES)
globals().update({each.__name__: each for each in _ARGUMENTS.values()})
__all__ = ["HTMLed", "Object", "Method", "Event", "EventArguments", "CTimer", "GSubclass", "ISubclass", "pump", "Error",
           "Closed", "__version__",
           *(each.__name__ for each in _members.ENUMERATIONS), *_CLASSES,
           *(each.__name__ for each in _ARGUMENTS.values())]
