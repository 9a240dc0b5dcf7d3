#include "tvx/exported/services/subclassing_object.h"

#include "tvx/exported/library_face.h"
#include "tvx/exported/services/host_watchers.h"
#include "tvx/services/subclass.h"

namespace tvx::exported {

namespace {

extern const tvx_subclassing_functions subclassing_functions;

class SubclassingObject final : public Counted {
 public:
  void* face(const tvx_id& id) override {
    if (id == tvx_id_subclassing || id == tvx_id_unknown) return &face_;
    return id == tvx_id_library ? &library_face_ : nullptr;
  }

 private:
  Face<tvx_subclassing> face_{subclassing_functions, *this};
  Face<tvx_library> library_face_{library_functions, *this};
};

platform::WindowHandle window_of(std::int32_t hwnd) { return platform::WindowHandle{hwnd}; }
platform::Message message_of(std::int32_t number) { return static_cast<platform::Message>(number); }

tvx_result attach_message(tvx_subclassing*, tvx_subclass* watcher, std::int32_t hwnd, std::int32_t message) {
  if (!watcher) return TVX_POINTER;
  return guarded([&] {
    HostWatchers::only().attach(*watcher, window_of(hwnd), message_of(message));
    return TVX_OK;
  });
}

tvx_result detach_message(tvx_subclassing*, tvx_subclass* watcher, std::int32_t hwnd, std::int32_t message) {
  if (!watcher) return TVX_POINTER;
  return guarded([&] {
    HostWatchers::only().detach(*watcher, window_of(hwnd), message_of(message));
    return TVX_OK;
  });
}

tvx_result get_current_message(tvx_subclassing*, std::int32_t* value) {
  if (!value) return TVX_POINTER;
  return guarded([&] {
    *value = static_cast<std::int32_t>(services::GSubclass::CurrentMessage());
    return TVX_OK;
  });
}

tvx_result call_old_window_proc(tvx_subclassing*, std::int32_t hwnd, std::int32_t message,
                                std::intptr_t wParam, std::intptr_t lParam, std::int32_t* result) {
  return guarded([&] {
    const platform::MessageResult answer =
        services::GSubclass::CallOldWindowProc(window_of(hwnd), message_of(message), wParam, lParam);
    if (result) *result = static_cast<std::int32_t>(answer);
    return TVX_OK;
  });
}

tvx_result send_message(tvx_subclassing*, std::int32_t hwnd, std::int32_t message, std::intptr_t wParam,
                        std::intptr_t lParam, std::int32_t* result) {
  return guarded([&] {
    const platform::MessageResult answer =
        platform::SendMessage(window_of(hwnd), message_of(message), wParam, lParam);
    if (result) *result = static_cast<std::int32_t>(answer);
    return TVX_OK;
  });
}

const tvx_subclassing_functions subclassing_functions = {query_interface<tvx_subclassing>,
                                                         add_reference<tvx_subclassing>,
                                                         release_reference<tvx_subclassing>,
                                                         attach_message,
                                                         detach_message,
                                                         get_current_message,
                                                         call_old_window_proc,
                                                         send_message};

}  // namespace

Counted* make_subclassing() { return new SubclassingObject; }

}  // namespace tvx::exported
