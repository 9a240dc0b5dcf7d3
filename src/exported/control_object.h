#pragma once

#include <memory>
#include <string>

#include "tvx/exported/event_sinks.h"
#include "tvx/exported/library_face.h"
#include "tvx/exported/object_faces.h"
#include "tvx/exported/services/control_window.h"
#include "tvx/exported/stage.h"
#include "tvx/library/members/event_relay.h"

namespace tvx::headless {
class PropertyBag;
}

namespace tvx::exported {

/// A control as a host has it. It lives off screen until it is shown; where it is first shown in a window,
/// its properties go over to a control there.
class ControlObject final : public Counted, private StageOwner {
 public:
  ControlObject();
  ~ControlObject() override;

  void* face(const tvx_id& id) override;

  /// Throws RuntimeError(91) once it has been closed.
  core::HTMLed& control() const;
  bool is_closed() const { return !stage_; }
  EventSinks& sinks() { return sinks_; }

  void set_container(tvx_container* container) { container_ = Held(container); }
  tvx_result read(tvx_store& store);
  tvx_result write(tvx_store& store);
  tvx_result show(const Position& position, bool has_box);
  tvx_result resize(const tvx_box& box);
  Stage& stage() const { return *stage_; }
  const std::u16string& title() const { return title_; }
  void set_title(std::u16string_view title);
  void close();

 private:
  // StageOwner
  void property_changed(std::u16string_view key) override;
  bool may_close() override;
  void window_closed() override;
  void resized(std::int32_t width, std::int32_t height) override;
  void focus_changed(bool has_focus) override;

  bool user_mode() const;
  /// What fails leaves the control as it was, to be shown elsewhere.
  void show_first(const Position& position);
  /// The control goes on elsewhere, under its number and with its properties.
  void move_to_window(const Position& position, const headless::PropertyBag& properties);
  void move_off_screen(const headless::PropertyBag& properties);
  void go_on_in(std::unique_ptr<Stage> next, const headless::PropertyBag& properties);
  void bury_stage();

  Face<tvx_control> control_face_;
  Face<tvx_dispatch> dispatch_face_;
  Face<tvx_events> events_face_;
  Face<tvx_library> library_face_{library_functions, *this};
  Face<tvx_frame> frame_face_;
  Held<tvx_container> container_;
  EventSinks sinks_;
  std::unique_ptr<ControlWindow> window_;  // before what tells it
  std::unique_ptr<Stage> stage_;
  std::shared_ptr<library::EventRelay> relay_;
  Position position_;
  std::u16string title_ = u"HTMLed";
  bool shown_ = false;
};

}  // namespace tvx::exported
