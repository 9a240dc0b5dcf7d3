#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "automation/event_relay.h"
#include "automation/expectations.h"
#include "base/code_page.h"
#include "browser/html_document.h"
#include "core/htmled.h"
#include "headless/container.h"
#include "headless/dialogs.h"
#include "headless/property_bag.h"

namespace tvx::platform {
class MessageLoop;
}

namespace tvx::automation {

/// How a control begins.
struct InstanceOptions {
  bool design_mode = false;
  /// What it reads its properties from; none: it begins as a new control.
  std::optional<headless::PropertyBag> store = headless::PropertyBag();
  std::optional<CodePage> code_page;     // none: the process's
  std::optional<std::u16string> folder;  // of its temporary files; none: the system's
  platform::WindowHandle hwnd = platform::WindowHandle::none;
  float width = 12000, height = 9000;  // twips
};

/// One control with all that surrounds it: a container, dialogs that nobody sees, and a host that tells
/// what it hears.
class Instance {
 public:
  using Notify = std::function<void(std::string_view method, Json params)>;
  /// Carries out the requests that an expectation holds.
  using Run = std::function<Json(const Json& request)>;

  Instance(int number, const InstanceOptions& options, platform::MessageLoop& loop, Notify notify, Run run);
  ~Instance();
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

  /// Where document.load puts its content.
  dom::Ref<dom::Element> host;

 private:
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
  std::shared_ptr<core::HTMLed> control_;
};

}  // namespace tvx::automation
