#pragma once

#include <memory>

#include "tvx/library/objects/object.h"
#include "tvx/spelling/spell.h"
#include "tvx/spelling/string_tokens.h"

namespace tvx::automation {

class Instance;

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

}  // namespace tvx::automation
