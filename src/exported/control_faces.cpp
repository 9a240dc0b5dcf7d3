#include "tvx/exported/control_faces.h"

#include "tvx/exported/control_members.h"
#include "tvx/exported/control_object.h"

namespace tvx::exported {

namespace {

/// A call of one that hasn't been closed.
template <class Interface, class Call>
tvx_result called(Interface* self, Call&& call) noexcept {
  return guarded([&]() -> tvx_result {
    ControlObject& object = owner_of<ControlObject>(self);
    return object.is_closed() ? TVX_CLOSED : call(object);
  });
}

// --- tvx_control ---

tvx_result set_container(tvx_control* self, tvx_container* container) {
  return called(self, [&](ControlObject& object) {
    object.set_container(container);
    return TVX_OK;
  });
}

tvx_result read_properties(tvx_control* self, tvx_store* store) {
  if (!store) return TVX_POINTER;
  return called(self, [&](ControlObject& object) { return object.read(*store); });
}

tvx_result write_properties(tvx_control* self, tvx_store* store) {
  if (!store) return TVX_POINTER;
  return called(self, [&](ControlObject& object) { return object.write(*store); });
}

tvx_result show(tvx_control* self, std::uint32_t where, std::uint64_t window, const tvx_box* box) {
  return called(self, [&](ControlObject& object) -> tvx_result {
    if (where > TVX_IN_WINDOW) throw RuntimeError(errors::invalid_call, u"There is no such way to show it");
    Position position;
    position.where = where;
    position.window = window;
    if (box) position.box = *box;
    try {
      return object.show(position, box != nullptr);
    } catch (const NoWindows& none) {
      Module::only().set_failure(none.why.number(), none.why.text());
      return TVX_NO_WINDOWS;
    }
  });
}

tvx_result hide(tvx_control* self) {
  return called(self, [](ControlObject& object) {
    object.stage().hide();
    return TVX_OK;
  });
}

tvx_result resize(tvx_control* self, const tvx_box* box) {
  if (!box) return TVX_POINTER;
  return called(self, [&](ControlObject& object) { return object.resize(*box); });
}

tvx_result set_focus(tvx_control* self) {
  return called(self, [](ControlObject& object) {
    object.stage().take_focus();
    return TVX_OK;
  });
}

tvx_result get_window(tvx_control* self, std::uint64_t* window) {
  if (!window) return TVX_POINTER;
  *window = 0;
  return called(self, [&](ControlObject& object) {
    *window = object.stage().window();
    return *window != 0 ? TVX_OK : TVX_NOTHING;
  });
}

tvx_result close(tvx_control* self) {
  return called(self, [](ControlObject& object) {
    object.close();
    return TVX_OK;
  });
}

// --- tvx_dispatch ---

tvx_result get_numbers(tvx_dispatch*, const tvx_text* names, std::uint32_t count, std::int32_t* numbers) {
  return numbers_of_names(names, count, numbers,
                          [](std::u16string_view name) { return number_of_member(name); });
}

tvx_result invoke_member(tvx_dispatch* self, std::int32_t number, std::uint16_t how, tvx_value* arguments,
                         std::uint32_t count, tvx_value* result, tvx_error* error) {
  if (!arguments && count > 0) return TVX_POINTER;
  return invoke(result, error, [&](tvx_value& value) -> tvx_result {
    ControlObject& object = owner_of<ControlObject>(self);
    if (object.is_closed()) return TVX_CLOSED;
    return call_member(object.control(), number, how, Arguments(arguments, count), value);
  });
}

// --- tvx_events ---

tvx_result advise(tvx_events* self, tvx_dispatch* sink, std::uint32_t* connection) {
  if (!sink || !connection) return TVX_POINTER;
  *connection = 0;
  return called(self, [&](ControlObject& object) {
    *connection = object.sinks().add(sink);
    return TVX_OK;
  });
}

tvx_result unadvise(tvx_events* self, std::uint32_t connection) {
  return called(self, [&](ControlObject& object) {
    return object.sinks().remove(connection) ? TVX_OK : TVX_NO_CONNECTION;
  });
}

// --- tvx_frame ---

tvx_result set_title(tvx_frame* self, const tvx_text* title) {
  if (!title) return TVX_POINTER;
  return called(self, [&](ControlObject& object) {
    object.set_title(view_of(*title));
    return TVX_OK;
  });
}

tvx_result get_title(tvx_frame* self, tvx_text* title) {
  if (!title) return TVX_POINTER;
  *title = {};
  return called(self, [&](ControlObject& object) {
    *title = new_text(object.title());
    return TVX_OK;
  });
}

}  // namespace

const tvx_control_functions control_functions = {query_interface<tvx_control>,
                                                 add_reference<tvx_control>,
                                                 release_reference<tvx_control>,
                                                 set_container,
                                                 read_properties,
                                                 write_properties,
                                                 show,
                                                 hide,
                                                 resize,
                                                 set_focus,
                                                 get_window,
                                                 close};

const tvx_dispatch_functions control_dispatch_functions = {
    query_interface<tvx_dispatch>, add_reference<tvx_dispatch>, release_reference<tvx_dispatch>, get_numbers,
    invoke_member};

const tvx_events_functions events_functions = {query_interface<tvx_events>, add_reference<tvx_events>,
                                               release_reference<tvx_events>, advise, unadvise};

const tvx_frame_functions frame_functions = {query_interface<tvx_frame>, add_reference<tvx_frame>,
                                             release_reference<tvx_frame>, set_title, get_title};

}  // namespace tvx::exported
