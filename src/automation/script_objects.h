#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "tvx/library/objects/object.h"
#include "tvx/localise/localizer.h"
#include "tvx/services/timer.h"
#include "tvx/spelling/spell.h"
#include "tvx/spelling/string_tokens.h"

/// Objects of the kit that scripts have of their own, one set a control.
namespace tvx::automation {

class Instance;
class ScriptWatcher;

/// The speller of a script's own, and its tokeniser. While a run goes on, the run's speller is meant instead.
struct ScriptSpelling {
  std::unique_ptr<spelling::clsSpell> engine;  // null until it is asked for
  spelling::clsString tokeniser;
};

library::ObjectHandle spell_object(Instance& instance);   // spell_object.cpp: `clsSpell`
library::ObjectHandle string_object(Instance& instance);  // spell_object.cpp: `clsString`

// Routines of a run that have a name of their own.
library::Value get_word_range(Instance& instance, library::Values& arguments);
library::Value recurs_document(Instance& instance, library::Values& arguments);
/// The words that have a wave, in the document's order.
library::Value marked_words(Instance& instance);

/// What a script has of dialogs' words, timers and watched messages.
struct ScriptKit {
  ScriptKit();
  ~ScriptKit();
  /// A timer that runs keeps itself alive: all are stopped, and tell nobody any more.
  void stop();

  localise::clsLocalize localizer;
  std::u16string form;  // the name of the dialog that it is for
  struct Timer {
    std::shared_ptr<services::CTimer> timer;
    library::Value item;
  };
  std::map<std::int32_t, Timer> timers;  // by the script's numbers
  std::map<std::int32_t, std::unique_ptr<ScriptWatcher>> watchers;
};

// kit_objects.cpp. What they raise is told as events named after them: "clsLocalize_Error",
// "CTimer_ThatTime", "ISubclass_WindowProc".
library::ObjectHandle localizer_object(Instance& instance);                            // `clsLocalize`
library::ObjectHandle timers_object(Instance& instance, platform::MessageLoop& loop);  // `CTimer`
library::ObjectHandle watchers_object(Instance& instance);                             // `ISubclass`
library::ObjectHandle subclass_object(Instance& instance);                             // `GSubclass`

}  // namespace tvx::automation
