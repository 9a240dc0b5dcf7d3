#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "tvx/core/part.h"

namespace tvx::spelling {
class clsSpell;
class SpellingDialog;
}  // namespace tvx::spelling

namespace tvx::core {

class DialogHost;
class Speller;

/// Goes through the document word by word, asks the host and then the speller about each, and the user about
/// each wrong one. One run at a time.
class SpellRun final : public Part {
 public:
  /// `dialogs`: who shows how far a long run has come; null: nobody. `words_added` is called when more words
  /// are right than before.
  SpellRun(
      Context& context, Speller& speller, DialogHost* dialogs = nullptr,
      std::function<void()> words_added = [] {})
      : Part(context), speller_(speller), dialogs_(dialogs), words_added_(std::move(words_added)) {}

  /// Returns when the run is over.
  void SpellCheck();
  /// The run ends after the word in hand.
  void SpellingCancel() { cancelled_ = true; }
  /// Another walk, over the texts of a node one by one, for any caller. A replacement is made in the
  /// text itself, where the wrong word first occurs in it.
  void recurs_document(dom::Node& node, spelling::clsSpell& speller, bool& result);

  bool running() const { return running_; }
  bool cancelled() const { return cancelled_; }
  /// What the present run asks; null where none has begun to ask.
  spelling::clsSpell* engine() const { return engine_; }
  /// The pointer's form while a run lasts, as hosts count them: 1 an arrow, 13 an arrow with an hourglass; 0
  /// else.
  int MousePointer() const { return pointer_; }

 private:
  class Run;
  void set_pointer(int pointer);
  void add_word(const std::u16string& word);

  Speller& speller_;
  DialogHost* dialogs_;
  std::function<void()> words_added_;
  spelling::clsSpell* engine_ = nullptr;
  bool cancelled_ = false, running_ = false;
  int pointer_ = 0;
};

}  // namespace tvx::core
