#include "tvx/htmled.h"

#include <utility>

#include "tvx/core/htmled.h"
#include "tvx/core/views/shown_document.h"
#include "tvx/headless/clipboard.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/message_loop.h"
#include "tvx/headless/page_window.h"
#include "tvx/library/objects/buttons.h"
#include "tvx/library/objects/host_object.h"
#include "tvx/library/objects/object_path.h"
#include "tvx/library/objects/parts.h"
#include "tvx/platform/container.h"
#include "tvx/platform/empty_store.h"
#include "tvx/platform/toolbar.h"
#include "tvx/windowless/host_events.h"

namespace tvx {

namespace {

constexpr float initial_width = 640 * 15, initial_height = 480 * 15;

}  // namespace

/// What stands around the control. Nobody sees it, so nobody is told of changed properties.
class HTMLed::Parts final : public platform::Container {
 public:
  explicit Parts(platform::MessageLoop* loop)
      : own_loop_(loop ? nullptr : std::make_unique<headless::MessageLoop>()),
        loop_(loop ? *loop : *own_loop_),
        page_(loop_),
        control_(core::HTMLed::create({.loop = loop_,
                                       .container = *this,
                                       .dialogs = dialogs_,
                                       .geometry = &page_.geometry(),
                                       .window = &page_,
                                       .clipboard = &clipboard_})),
        shown_(*control_, page_.document_view()),
        events_(*control_) {
    control_->set_events(&events_);
    control_->UserControl_Initialize();
    control_->set_size(initial_width, initial_height);
    // Reading an empty store gives a control more than the defaults: the captions of its own.
    control_->UserControl_ReadProperties(platform::EmptyStore());
  }
  ~Parts() override {
    control_->UserControl_Terminate();
    control_->set_events(nullptr);
  }

  // platform::Container
  // Until the start, properties are what a designer sets: kept, and used then.
  bool user_mode() const override { return started_; }
  void property_changed(std::u16string_view) override {}

 private:
  std::unique_ptr<headless::MessageLoop> own_loop_;

 public:
  platform::MessageLoop& loop_;
  bool started_ = false;

 private:
  headless::Dialogs dialogs_;
  headless::Clipboard clipboard_;
  headless::PageWindow page_;

 public:
  const std::shared_ptr<core::HTMLed> control_;

 private:
  core::ShownDocument shown_;

 public:
  windowless::HostEvents events_;
};

HTMLed::HTMLed() : parts_(std::make_unique<Parts>(nullptr)) {}
HTMLed::HTMLed(platform::MessageLoop& loop) : parts_(std::make_unique<Parts>(&loop)) {}
HTMLed::~HTMLed() = default;

core::HTMLed& HTMLed::control() const { return *parts_->control_; }

void HTMLed::set_events(HTMLedEvents* events) { parts_->events_.set_host(events); }

void HTMLed::set_size(float width, float height) {
  control().set_size(width, height);
  if (started()) control().UserControl_Resize();
}

void HTMLed::start() {
  if (std::exchange(parts_->started_, true)) return;
  control().UserControl_Resize();
  control().UserControl_Show();
}

bool HTMLed::started() const { return parts_->started_; }

void HTMLed::pump(std::int64_t milliseconds) {
  platform::MessageLoop& loop = parts_->loop_;
  const std::int64_t end = loop.now() + milliseconds;
  loop.pump(0);
  for (std::int64_t left; (left = end - loop.now()) > 0;) loop.pump(left);
}

void HTMLed::read_properties(const platform::PropertyBag& store) {
  control().UserControl_ReadProperties(store);
}
void HTMLed::write_properties(platform::PropertyBag& store) const {
  control().UserControl_WriteProperties(store);
}

// --- parts of the face ---

HTMLed::ButtonState HTMLed::button_state(std::u16string_view toolbar, std::u16string_view button) const {
  const platform::Button* found = library::find_button(control(), toolbar, button);
  if (!found) return {};
  return {
      true, found->Enabled(), found->Visible(), found->Value() == 1, found->Caption(), found->ToolTipText()};
}

bool HTMLed::press_button(std::u16string_view toolbar, std::u16string_view button) {
  return library::press_button(control(), toolbar, button);
}

Value HTMLed::part(std::u16string_view path) const { return Object(library::face_of(control())).get(path); }

void HTMLed::set_part(std::u16string_view path, const Value& value) {
  Object(library::face_of(control())).set(path, value);
}

}  // namespace tvx
