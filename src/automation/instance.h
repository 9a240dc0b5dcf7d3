#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "automation/event_relay.h"
#include "automation/expectations.h"
#include "base/code_page.h"
#include "browser/document_view.h"
#include "core/htmled.h"
#include "headless/container.h"
#include "headless/dialogs.h"
#include "headless/property_bag.h"
#include "headless/view.h"

namespace tvx::platform {
class Clipboard;
class MessageLoop;
}  // namespace tvx::platform

namespace tvx::automation {

/// How a control begins.
struct InstanceOptions {
  bool design_mode = false;
  /// What it reads its properties from; none: it begins as a new control.
  std::optional<headless::PropertyBag> store = headless::PropertyBag();
  std::optional<CodePage> code_page;     // none: the process's
  std::optional<std::u16string> folder;  // of its temporary files; none: the system's
  platform::WindowHandle hwnd = platform::WindowHandle::none;
  float width = 12000, height = 9000;        // twips
  platform::Clipboard* clipboard = nullptr;  // all controls of a session share one
};

/// One control with all that surrounds it: a container, dialogs and a view that nobody sees, and a host that
/// tells what it hears.
class Instance final : public ObjectResolver, private core::HTMLedObserver, private browser::BrowserWindow {
 public:
  using Notify = std::function<void(std::string_view method, Json params)>;
  /// Carries out the requests that an expectation holds.
  using Run = std::function<Json(const Json& request)>;

  Instance(int number, const InstanceOptions& options, platform::MessageLoop& loop, Notify notify, Run run);
  ~Instance() override;
  Instance(const Instance&) = delete;
  Instance& operator=(const Instance&) = delete;

  /// Makes this control's code page and folder those of the process, until another control's turn.
  void take_turn() const;

  int number() const { return number_; }
  core::HTMLed& control() { return *control_; }
  /// Throws RuntimeError(91) while there is none.
  browser::HTMLDocument& document();
  Expectations& expectations() { return expectations_; }
  EventAnswers& answers() { return answers_; }
  /// What the next saving would store.
  headless::PropertyBag stored() const;
  /// Ends the control's life. The instance itself must stay until none of the control's routines is open.
  void terminate();

  /// A key of the user's: to the code view where that is in front, else on its way through the view.
  void key(browser::KeyInput key, bool down);
  /// Whether the document's input has all been dealt with.
  bool settled() const { return document_view_.settled(); }
  const headless::FixedGeometry& geometry() const { return geometry_; }

  /// An element that a client names by its place.
  library::Value resolve(const Json& object) const override;

  /// Where document.load puts its content.
  dom::Ref<dom::Element> host;

 private:
  void document_replaced(const std::shared_ptr<browser::HTMLDocument>& document) override;
  void editor_enabled_changed(bool enabled) override;
  bool can_print() override { return true; }
  void print(bool with_dialog) override { expectations_.print(with_dialog); }
  void scroll_to(int x, int y) override { view_.scroll_to(x, y); }
  void on_event(const library::EventMember& event, library::Values& arguments);

  const int number_;
  std::optional<CodePage> code_page_;
  std::optional<std::u16string> folder_;
  Notify notify_;
  headless::Container container_;
  headless::Dialogs dialogs_;
  Expectations expectations_;
  EventAnswers answers_;
  EventRelay relay_;
  headless::View view_;
  browser::DocumentView document_view_;
  headless::FixedGeometry geometry_;
  std::shared_ptr<core::HTMLed> control_;
  bool terminated_ = false;
};

}  // namespace tvx::automation
