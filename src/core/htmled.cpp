#include "tvx/core/htmled.h"

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/interruption.h"
#include "tvx/core/parts.h"
#include "tvx/platform/common_dialogs.h"
#include "tvx/platform/container.h"
#include "tvx/services/wait.h"

/// What the control itself does: it owns its parts and the document, and calls the host.
namespace tvx::core {
namespace {

Surroundings with_handle(Surroundings surroundings) {
  if (surroundings.hwnd == platform::WindowHandle::none) surroundings.hwnd = platform::next_window_handle();
  return surroundings;
}

}  // namespace

std::shared_ptr<HTMLed> HTMLed::create(const Surroundings& surroundings) {
  return std::shared_ptr<HTMLed>(new HTMLed(surroundings));
}

HTMLed::HTMLed(const Surroundings& surroundings)
    : surroundings_(with_handle(surroundings)),
      browser_(std::make_unique<browser::Browser>(surroundings_.loop)),
      parts_(new Parts(*this)) {
  browser_->set_geometry(surroundings_.geometry);
  browser_->set_window(surroundings_.window);
  browser_->set_events(&parts_->navigation);
  browser_->add_observer(*this);
}

HTMLed::~HTMLed() {
  if (!terminated_) UserControl_Terminate();
  browser_->set_events(nullptr);
  browser_->remove_observer(*this);
}

void HTMLed::add_observer(HTMLedObserver& observer) { observers_.push_back(&observer); }
void HTMLed::remove_observer(HTMLedObserver& observer) { std::erase(observers_, &observer); }

// --- code of the host ---

namespace {

/// How deep calls of hosts stand within one another on this thread, whichever control they are of: they share
/// its stack. A host that does in an event what raises the event would else take all of it.
class HostNesting {
 public:
  HostNesting() { ++depth_; }
  ~HostNesting() {
    if (--depth_ == 0) refusing_ = false;
  }
  HostNesting(const HostNesting&) = delete;
  HostNesting& operator=(const HostNesting&) = delete;

  /// Once it has gone too deep, all of the nest comes to its end: calls on the way back could be as many
  /// again on every level.
  static bool refuses() { return refusing_; }
  static bool goes_too_deep() { return refusing_ = depth_ > deepest; }

 private:
  static constexpr int deepest = 64;
  static thread_local int depth_;
  static thread_local bool refusing_;
};

thread_local int HostNesting::depth_ = 0;
thread_local bool HostNesting::refusing_ = false;

// A host's own failure is the host's: an event that fails has been raised all the same.
void call_safely(const std::function<void()>& call) {
  try {
    call();
  } catch (...) {
  }
}

}  // namespace

void HTMLed::call_outside(const std::function<void()>& call) {
  const KeepAlive alive(*this);
  const Uninterrupted host;
  const HostNesting nesting;
  if (HostNesting::refuses()) return;
  if (!HostNesting::goes_too_deep()) return call_safely(call);
  std::int32_t number = 28;
  std::u16string text = u"Out of stack space: the host's events call one another without end";
  if (host_) call_safely([&] { host_->Error(number, text); });
}

void HTMLed::raise(const std::function<void(HTMLedEvents&)>& event) {
  if (host_) call_outside([&] { event(*host_); });
}

void HTMLed::PropertyChanged(std::u16string_view key) {
  call_outside([&] { surroundings_.container.property_changed(key); });
}

// One of them may add another.
void HTMLed::tell(const std::function<void(HTMLedObserver&)>& news) {
  for (std::size_t i = 0; i < observers_.size(); ++i) news(*observers_[i]);
}

bool HTMLed::run_time() const { return surroundings_.container.user_mode(); }

void HTMLed::state_changed() {
  parts_->command_state.show();
  tell([](HTMLedObserver& observer) { observer.state_changed(); });
}

void HTMLed::Wait() {
  const KeepAlive alive(*this);
  services::Wait(surroundings_.loop, 5);
  // A host that allows no window but modal ones would otherwise be waited for without the loop running.
  if (!surroundings_.loop.non_modal_allowed()) surroundings_.loop.pump(5);
  if (terminated_) throw RuntimeError(errors::object_not_set, u"The control is closed");
}

void HTMLed::show_dialog(platform::Form& dialog, std::u16string_view section) {
  parts_->dialogs.show(dialog, section);
}

// --- the document ---

void HTMLed::set_DOM() {
  if (run_time()) throw RuntimeError(errors::set_not_supported_at_runtime, u"Set not supported at runtime");
  throw RuntimeError(errors::set_not_permitted_here, u"Set not supported (read-only property)");
}

void HTMLed::set_DOM(std::shared_ptr<browser::HTMLDocument> document) {
  if (docHTML_ == document) return;
  if (docHTML_) docHTML_->connect(nullptr);
  parts_->highlight.set_element({});
  parts_->content.forget_document();
  parts_->style_sheet.forget_document();
  docHTML_ = std::move(document);
  if (docHTML_) {
    docHTML_->connect(&parts_->input);
    connect_clipboard(*docHTML_);
  }
  parts_->spelling_marks.apply();
  parts_->finder.apply();
  parts_->side.apply();
}

void HTMLed::connect_clipboard(browser::HTMLDocument& document) {
  document.set_clipboard(surroundings_.clipboard);
  document.set_image_folder([weak = weak_from_this()] {
    const auto self = weak.lock();
    return self ? self->LocalImageStore() : std::u16string();
  });
  document.set_bytes_folder([weak = weak_from_this()] {
    const auto self = weak.lock();
    return self ? self->parts_->picture_uploads.folder() : std::u16string();
  });
  document.set_on_local_pictures([weak = weak_from_this(), shown = document.weak_from_this()](
                                     const std::vector<std::u16string>& addresses) {
    if (const auto self = weak.lock()) self->parts_->picture_uploads.pictures_came(shown, addresses);
  });
}

void HTMLed::document_replaced(const std::shared_ptr<browser::HTMLDocument>& document) {
  const KeepAlive alive(*this);
  if (document) {
    connect_clipboard(*document);
    document->set_link_dialog([weak = weak_from_this()](const std::u16string& address) {
      const auto control = weak.lock();
      return control ? control->ask_link(address) : std::nullopt;
    });
  }
  tell([&](HTMLedObserver& observer) { observer.document_replaced(document); });
}

std::optional<std::u16string> HTMLed::ask_link(const std::u16string& address) {
  const KeepAlive alive(*this);
  return surroundings_.dialogs.ask_link({.address = address, .owner = surroundings_.hwnd});
}

}  // namespace tvx::core
