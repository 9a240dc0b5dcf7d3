#include "tvx/exported/control_object.h"

#include <utility>

#include "tvx/base/error.h"
#include "tvx/core/htmled.h"
#include "tvx/exported/control_faces.h"
#include "tvx/exported/host_store.h"
#include "tvx/exported/off_screen_stage.h"
#include "tvx/exported/window_part.h"
#include "tvx/headless/property_bag.h"

namespace tvx::exported {

ControlObject::ControlObject()
    : control_face_(control_functions, *this),
      dispatch_face_(control_dispatch_functions, *this),
      events_face_(events_functions, *this),
      stage_(make_off_screen_stage(*this, Module::only().loop())) {
  const auto tell = [this](const library::EventMember& event, library::Values& arguments) {
    const Module::UnderWay under_way;
    sinks_.tell(event, arguments);
  };
  const auto document = [this] { return stage_ ? stage_->control().DOM() : nullptr; };
  relay_ = std::make_shared<library::EventRelay>(tell, document);
  stage_->control().set_events(relay_.get());
}

ControlObject::~ControlObject() { close(); }

void* ControlObject::face(const tvx_id& id) {
  if (id == tvx_id_control || id == tvx_id_unknown) return &control_face_;
  if (id == tvx_id_dispatch) return &dispatch_face_;
  if (id == tvx_id_events) return &events_face_;
  if (id == tvx_id_library) return &library_face_;
  return nullptr;
}

core::HTMLed& ControlObject::control() const {
  if (!stage_) throw RuntimeError(errors::object_not_set, u"The control has been closed");
  return stage_->control();
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
  const tvx_box box = has_box ? position.box : position_.box;
  const bool is_first = !shown_;
  if (is_first) {
    const bool runs = user_mode();
    Position first = position;
    first.box = box;
    if (position.where != TVX_OFF_SCREEN) move_to_window(first);
    position_ = first;
    shown_ = true;
    stage_->resize(box);
    stage_->start(runs);
  }
  if (!stage_) return TVX_CLOSED;  // by the host, within an event of the start
  if (!is_first && has_box) resize(box);
  if (stage_) stage_->show();
  return TVX_OK;
}

tvx_result ControlObject::resize(const tvx_box& box) {
  position_.box = box;
  stage_->resize(box);
  return TVX_OK;
}

void ControlObject::move_to_window(const Position& position) {
  Position there = position;
  there.handle = stage_->control().hwnd();
  std::unique_ptr<Stage> next;
  try {
    next = Module::only().windows().make_stage(*this, there);
  } catch (const RuntimeError& error) {
    throw NoWindows{error};
  }
  headless::PropertyBag properties;
  stage_->control().UserControl_WriteProperties(properties);
  next->control().UserControl_ReadProperties(properties);
  next->control().set_events(relay_.get());
  bury_stage();
  stage_ = std::move(next);
}

void ControlObject::bury_stage() {
  const std::shared_ptr<Stage> old = std::move(stage_);
  old->end();
  Module::only().bury(old);
}

void ControlObject::close() {
  if (!stage_) return;
  stage_->control().set_events(nullptr);
  bury_stage();
  sinks_.clear();
  container_ = {};
}

}  // namespace tvx::exported
