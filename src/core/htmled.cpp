#include "tvx/core/htmled.h"

#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/core/chrome/toolbars.h"
#include "tvx/core/keep_alive.h"
#include "tvx/dom/style/style_sheet.h"
#include "tvx/dom/tree.h"
#include "tvx/platform/common_dialogs.h"
#include "tvx/platform/container.h"
#include "tvx/services/wait.h"

namespace tvx::core {

std::shared_ptr<HTMLed> HTMLed::create(const Surroundings& surroundings) {
  return std::shared_ptr<HTMLed>(new HTMLed(surroundings));
}

HTMLed::HTMLed(const Surroundings& surroundings)
    : loop_(surroundings.loop),
      container_(surroundings.container),
      dialogs_(surroundings.dialogs),
      clipboard_(surroundings.clipboard),
      clip_(clipboard_),
      popups_(surroundings.popups),
      forms_(surroundings.forms),
      hwnd_(surroundings.hwnd == platform::WindowHandle::none ? platform::next_window_handle()
                                                              : surroundings.hwnd),
      geometry_(surroundings.geometry),
      browser_(std::make_unique<browser::Browser>(loop_)),
      toolbars_(std::make_unique<Toolbars>()),
      menus_(std::make_unique<ContextMenus>()),
      highlight_(std::make_unique<SelectionHighlight>()) {
  browser_->set_geometry(geometry_);
  browser_->set_window(surroundings.window);
  browser_->set_events(this);
  browser_->add_observer(*this);
  toolbars_->Toolbar1.set_handler(this);
  toolbars_->Toolbar2.set_handler(this);
  toolbars_->tlbDOM.set_handler(this);
  menus_->set_handler(this);
  connect_code_view();
}

HTMLed::~HTMLed() {
  if (!terminated_) UserControl_Terminate();
  browser_->set_events(nullptr);
  browser_->remove_observer(*this);
}

void HTMLed::add_observer(HTMLedObserver& observer) { observers_.push_back(&observer); }
void HTMLed::remove_observer(HTMLedObserver& observer) { std::erase(observers_, &observer); }

platform::Toolbar& HTMLed::Toolbar1() { return toolbars_->Toolbar1; }
platform::Toolbar& HTMLed::Toolbar2() { return toolbars_->Toolbar2; }
platform::Toolbar& HTMLed::tlbDOM() { return toolbars_->tlbDOM; }
dom::Element* HTMLed::highlightElement() const { return highlight_->element(); }

platform::Clipboard& HTMLed::clipboard() const {
  if (!clipboard_) throw RuntimeError(errors::object_not_set, u"There is no clipboard");
  return *clipboard_;
}

// --- code of the host ---

void HTMLed::call_outside(const std::function<void()>& call) {
  const KeepAlive alive(*this);
  try {
    call();
  } catch (...) {
    // A host's own failure is the host's: an event that fails has been raised all the same.
  }
}

void HTMLed::raise(const std::function<void(HTMLedEvents&)>& event) {
  if (host_) call_outside([&] { event(*host_); });
}

void HTMLed::raise_error(std::int32_t number, std::u16string text) {
  raise([&](HTMLedEvents& host) { host.Error(number, text); });
}

void HTMLed::PropertyChanged(std::u16string_view key) {
  call_outside([&] { container_.property_changed(key); });
}

bool HTMLed::run_time() const { return container_.user_mode(); }

void HTMLed::mark_changed() {
  PropertyChanged(u"DocumentHTML");
  properties_.IsDirty = true;
}

// --- the document ---

browser::HTMLDocument& HTMLed::document() const {
  if (!docHTML_) throw RuntimeError(errors::object_not_set, u"There is no document");
  return *docHTML_;
}

browser::HTMLDocument& HTMLed::browser_document() const {
  if (!browser_->Document()) throw RuntimeError(errors::object_not_set, u"There is no document");
  return *browser_->Document();
}

dom::Element& HTMLed::body_of(browser::HTMLDocument& document) const {
  dom::Element* body = document.body();
  if (!body) throw RuntimeError(errors::object_not_set, u"The document has no body");
  return *body;
}

void HTMLed::set_docHTML(std::shared_ptr<browser::HTMLDocument> document) {
  if (docHTML_ == document) return;
  if (docHTML_) docHTML_->connect(nullptr);
  // Nothing of an older document is kept.
  highlight_->set_element({});
  base_element_ = {};
  active_style_sheet_.reset();
  docHTML_ = std::move(document);
  if (docHTML_) {
    docHTML_->connect(this);
    connect_clipboard(*docHTML_);
  }
}

void HTMLed::connect_clipboard(browser::HTMLDocument& document) {
  document.set_clipboard(clipboard_);
  document.set_image_folder([weak = weak_from_this()] {
    const auto self = weak.lock();
    return self ? self->LocalImageStore() : std::u16string();
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
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->document_replaced(document);
}

std::optional<std::u16string> HTMLed::ask_link(const std::u16string& address) {
  const KeepAlive alive(*this);
  return dialogs_.ask_link({.address = address, .owner = hwnd_});
}

// --- waiting ---

void HTMLed::Wait() {
  const KeepAlive alive(*this);
  services::Wait(loop_, 5);
  // A host that allows no window but modal ones would otherwise be waited for without the loop running.
  if (!loop_.non_modal_allowed()) loop_.pump(5);
  if (terminated_) throw RuntimeError(errors::object_not_set, u"The control is closed");
}

void HTMLed::wait_for_browser() {
  while (browser_->ReadyState() != browser::ReadyState::Complete) Wait();
}

void HTMLed::wait_for_document() {
  while (document().readyState() != u"complete") Wait();
}

void HTMLed::wait_until_complete() {
  document();  // before the start there is nothing to wait for: throws
  wait_for_browser();
  wait_for_document();
}

// --- what the parts of the control share ---

// Both references usually name one document. Writing it twice gives what writing it once gives, so the second
// is for the case that they don't: a document that has just been replaced.
void HTMLed::write_body(std::u16string_view html) {
  const auto first = docHTML_, second = browser_->Document();
  attempt([&] { document().load_body(html); });
  if (second != first) attempt([&] { browser_document().load_body(html); });
  const dom::Element* current = highlight_->element();
  if (current && !dom::is_connected(*current)) highlight_->set_element({});
}

void HTMLed::set_design_mode_of_browser() {
  browser_document().set_designMode(properties_.EditorEnabled && run_time() ? u"On" : u"Off");
}

}  // namespace tvx::core
