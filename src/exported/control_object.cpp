#include "tvx/exported/control_object.h"

#include <utility>

#include "tvx/base/error.h"
#include "tvx/core/htmled.h"
#include "tvx/exported/control_faces.h"
#include "tvx/exported/host_store.h"
#include "tvx/exported/off_screen_stage.h"
#include "tvx/exported/window_part.h"
#include "tvx/headless/property_bag.h"
#include "tvx/platform/window.h"

namespace tvx::exported {

ControlObject::ControlObject()
    : control_face_(control_functions, *this),
      dispatch_face_(control_dispatch_functions, *this),
      events_face_(events_functions, *this),
      frame_face_(frame_functions, *this),
      stage_(make_off_screen_stage(*this, Module::only().loop())) {
  const auto tell = [this](const library::EventMember& event, library::Values& arguments) {
    const Module::UnderWay under_way;
    sinks_.tell(event, arguments);
  };
  const auto document = [this] { return stage_ ? stage_->control().DOM() : nullptr; };
  window_ = ControlWindow::make(platform::WindowHandle{stage_->control().hwnd()});
  relay_ = std::make_shared<library::EventRelay>(tell, document);
  stage_->control().set_events(relay_.get());
}

ControlObject::~ControlObject() { close(); }

void* ControlObject::face(const tvx_id& id) {
  if (id == tvx_id_control || id == tvx_id_unknown) return &control_face_;
  if (id == tvx_id_dispatch) return &dispatch_face_;
  if (id == tvx_id_events) return &events_face_;
  if (id == tvx_id_library) return &library_face_;
  if (id == tvx_id_frame) return &frame_face_;
  return nullptr;
}

core::HTMLed& ControlObject::control() const {
  if (!stage_) throw RuntimeError(errors::object_not_set, u"The control has been closed");
  return stage_->control();
}

bool ControlObject::may_close() {
  const Module::UnderWay under_way;
  return !window_ || window_->may_close();
}

void ControlObject::resized(std::int32_t width, std::int32_t height) {
  const Module::UnderWay under_way;
  if (window_) window_->resized(width, height);
}

void ControlObject::focus_changed(bool has_focus) {
  const Module::UnderWay under_way;
  if (window_) window_->focus_changed(has_focus);
}

bool ControlObject::user_mode() const {
  std::int16_t mode = TVX_TRUE;
  tvx_container* container = container_.get();
  if (!container || container->functions->GetUserMode(container, &mode) != TVX_OK) return true;
  return mode != 0;
}

void ControlObject::property_changed(std::u16string_view key) {
  const Module::UnderWay under_way;
  const Held<tvx_container> container = container_;
  if (!container) return;
  const tvx_text name = {reinterpret_cast<const tvx_char*>(key.data()),
                         static_cast<std::uint32_t>(key.size())};
  container.get()->functions->PropertyChanged(container.get(), &name);
}

void ControlObject::window_closed() {
  const Module::UnderWay under_way;
  const Held<tvx_container> container = container_;
  if (container) container.get()->functions->WindowClosed(container.get());
}

tvx_result ControlObject::read(tvx_store& store) {
  if (shown_) return TVX_STARTED;
  control().UserControl_ReadProperties(HostStore(store));
  return TVX_OK;
}

tvx_result ControlObject::write(tvx_store& store) {
  HostStore bag(store);
  control().UserControl_WriteProperties(bag);
  return TVX_OK;
}

tvx_result ControlObject::show(const Position& position, bool has_box) {
  if (shown_ && position.where != position_.where) return TVX_STARTED;
  if (!shown_) {
    Position first = position;
    if (!has_box) first.box = position_.box;
    show_first(first);
  } else if (has_box) {
    resize(position.box);
  }
  if (!stage_) return TVX_CLOSED;  // by the host, within an event of the start
  stage_->show();
  return TVX_OK;
}

void ControlObject::show_first(const Position& position) {
  const bool runs = user_mode();
  const Position before = std::exchange(position_, position);
  headless::PropertyBag properties;
  stage_->control().UserControl_WriteProperties(properties);
  try {
    if (position.where != TVX_OFF_SCREEN) move_to_window(position, properties);
    shown_ = true;
    stage_->resize(position.box);
    stage_->start(runs);
  } catch (...) {
    if (shown_ && position.where != TVX_OFF_SCREEN) move_off_screen(properties);
    shown_ = shown_ && position.where == TVX_OFF_SCREEN;
    if (!shown_) position_ = before;
    throw;
  }
}

tvx_result ControlObject::resize(const tvx_box& box) {
  position_.box = box;
  stage_->resize(box);
  return TVX_OK;
}

void ControlObject::set_title(std::u16string_view title) {
  title_ = title;
  stage_->set_title(title_);
}

void ControlObject::move_to_window(const Position& position, const headless::PropertyBag& properties) {
  Position there = position;
  there.handle = stage_->control().hwnd();
  std::unique_ptr<Stage> next;
  try {
    next = Module::only().windows().make_stage(*this, there);
  } catch (const RuntimeError& error) {
    throw NoWindows{error};
  }
  next->set_title(title_);
  go_on_in(std::move(next), properties);
}

// Where it can't start in the window. A host may have closed it meanwhile.
void ControlObject::move_off_screen(const headless::PropertyBag& properties) {
  if (!stage_) return;
  platform::set_next_window_handle(platform::WindowHandle{stage_->control().hwnd()});
  std::unique_ptr<Stage> next = make_off_screen_stage(*this, Module::only().loop());
  platform::set_next_window_handle(std::nullopt);
  go_on_in(std::move(next), properties);
}

// The stage before ends first: its temporary files have the same names.
void ControlObject::go_on_in(std::unique_ptr<Stage> next, const headless::PropertyBag& properties) {
  next->control().UserControl_ReadProperties(properties);
  next->control().set_events(relay_.get());
  bury_stage();
  stage_ = std::move(next);
}

void ControlObject::bury_stage() {
  const std::shared_ptr<Stage> old = std::move(stage_);
  old->control().set_events(nullptr);
  old->end();
  Module::only().bury(old);
}

void ControlObject::close() {
  if (!stage_) return;
  bury_stage();
  window_.reset();  // its watchers hear of the end
  sinks_.clear();
  container_ = {};
}

}  // namespace tvx::exported
