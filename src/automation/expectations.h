#pragma once

#include <functional>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/automation/json.h"
#include "tvx/headless/dialogs.h"
#include "tvx/headless/forms.h"
#include "tvx/headless/menus.h"
#include "tvx/library/members/member_table.h"

namespace tvx::automation {

/// Values for some of an event's arguments, by their place.
using ArgumentValues = std::vector<std::pair<std::size_t, library::Value>>;

/// Reads {"cancel":true} for an event. Throws RuntimeError(438) for a name that is no argument of it and
/// RuntimeError(13) for a value that it can't have.
ArgumentValues argument_values(const library::EventMember& event, const Params& set);
/// The arguments by name.
Json named_arguments(const library::EventMember& event, const library::Values& arguments);

/// What the host writes back for events, each time, until it is taken away.
class EventAnswers {
 public:
  void set(const library::EventMember& event, ArgumentValues values) {
    values_[event.number] = std::move(values);
  }
  void clear(const library::EventMember& event) { values_.erase(event.number); }
  void apply(const library::EventMember& event, library::Values& arguments) const;

 private:
  std::map<int, ArgumentValues> values_;
};

/// What is to happen when something is raised or opened: events of the control, dialogs of the
/// desktop and of the control, popup menus. Each expectation is used as often as it says, the oldest first,
/// and every use is told.
class Expectations {
 public:
  using Notify = std::function<void(std::string_view method, Json params)>;
  using Run = std::function<Json(const Json& request)>;

  Expectations(headless::Dialogs& dialogs, headless::Menus& menus, headless::Forms& forms, Notify notify,
               Run run);

  /// Reads the parameters of `expect`. Returns the number by which its uses are told.
  int add(const Params& params);
  /// An event is being raised: what is expected of it happens.
  void use(const library::EventMember& event, library::Values& arguments);
  /// The document is to be printed: what is expected of that happens.
  void print(bool with_dialog);

 private:
  struct ExpectedPrint {
    int id;
    std::vector<Json> requests;
    int times;
  };

  struct ExpectedEvent {
    int id;
    const library::EventMember* event;
    ArgumentValues set;
    std::vector<Json> requests;
    int times;
  };

  void add_event(int id, std::u16string_view name, const Params& params);
  void add_dialog(int id, headless::DialogKind kind, const Params& params);
  void add_form(int id, std::u16string_view form, const Params& params);
  void add_popup(int id, std::u16string_view menu, const Params& params);
  Json run_all(const std::vector<Json>& requests) const;
  void opened(const headless::ShownDialog& dialog) const;
  void closed(const headless::ShownDialog& dialog, const headless::ExpectedDialog* expected);

  void popup_opened(platform::Menu& menu);
  void popup_closed(const headless::ExpectedPopup* expected, const platform::Menu* chosen);
  void form_opened(platform::Form& form);
  void form_closed(const platform::Form& form, const headless::ExpectedForm* expected,
                   const std::optional<RuntimeError>& failure);
  Json taken(std::map<int, Json>& from, int id) const;

  headless::Dialogs& dialogs_;
  headless::Menus& menus_;
  headless::Forms& forms_;
  Notify notify_;
  Run run_;
  int last_id_ = 0;
  std::list<ExpectedEvent> events_;
  std::list<ExpectedPrint> prints_;
  std::map<int, Json> did_;  // by dialogs and popups that are open, or have just been closed
  std::vector<Json> seen_;   // what stood in the popups that are open, the innermost last
  std::map<const platform::Form*, Json> seen_in_forms_;
};

}  // namespace tvx::automation
