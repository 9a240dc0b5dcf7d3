#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "tvx/automation/expectations.h"
#include "tvx/automation/stage.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/forms.h"
#include "tvx/headless/menus.h"
#include "tvx/library/members/event_relay.h"

namespace tvx::platform {
class Clipboard;
class MessageLoop;
}  // namespace tvx::platform

namespace tvx::automation {

struct ScriptKit;
struct ScriptSpelling;

/// One control on its stage, with dialogs and menus that expectations answer and a host that tells what it
/// hears.
class Instance final : public ObjectResolver {
 public:
  using Notify = std::function<void(std::string_view method, Json params)>;
  /// Carries out the requests that an expectation holds.
  using Run = std::function<Json(const Json& request)>;

  Instance(int number, const InstanceOptions& options, platform::MessageLoop& loop,
           const StageFactory& make_stage, Notify notify, Run run);
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

  Stage& stage() { return *stage_; }
  headless::Menus& menus() { return menus_; }
  headless::Forms& forms() { return forms_; }
  /// A key of the user's: to the code view where that is in front, else on its way through the view.
  void key(browser::KeyInput key, bool down);
  /// Whether the document's input has all been dealt with.
  bool settled() const { return stage_->settled(); }

  /// An element that a client names by its place.
  library::Value resolve(const Json& object) const override;

  /// Where document.load puts its content.
  dom::Ref<dom::Element> host;
  /// Made when a script first asks.
  std::unique_ptr<ScriptSpelling> spelling;
  std::unique_ptr<ScriptKit> kit;
  /// Tells of an event that is none of the control's.
  void tell_event(std::string_view name, Json args) const;

 private:
  void on_event(const library::EventMember& event, library::Values& arguments);

  const int number_;
  std::optional<CodePage> code_page_;
  std::optional<std::u16string> folder_;
  Notify notify_;
  headless::Dialogs dialogs_;
  headless::Menus menus_;
  headless::Forms forms_;
  Expectations expectations_;
  EventAnswers answers_;
  library::EventRelay relay_;
  std::unique_ptr<Stage> stage_;
  std::shared_ptr<core::HTMLed> control_;
  bool terminated_ = false;
};

}  // namespace tvx::automation
