#pragma once

#include <cstdint>

#include "tvx/core/part.h"

namespace tvx::spelling {
class clsSpell;
class SpellingDialog;
}  // namespace tvx::spelling

namespace tvx::core {

class Speller;

/// Goes through the document word by word, asks the host and then the speller about each, and the user about
/// each wrong one. One run at a time.
class SpellRun final : public Part {
 public:
  SpellRun(Context& context, Speller& speller) : Part(context), speller_(speller) {}

  /// Returns when the run is over.
  void SpellCheck();
  /// The run ends after the word in hand.
  void SpellingCancel() { cancelled_ = true; }
  /// Another walk, over the texts of a node one by one, for whoever calls it. A replacement is made in the
  /// text itself, of the first place where the wrong word occurs in it.
  void recurs_document(dom::Node& node, spelling::clsSpell& speller, bool& result);

  bool running() const { return running_; }
  /// The pointer's form while a run lasts, as hosts count them: 1 an arrow, 13 an arrow with an hourglass; 0
  /// else.
  int MousePointer() const { return pointer_; }

 private:
  class Run;
  void set_pointer(int pointer);

  Speller& speller_;
  bool cancelled_ = false, running_ = false;
  int pointer_ = 0;
};

}  // namespace tvx::core
