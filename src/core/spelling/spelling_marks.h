#pragma once

#include <chrono>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "tvx/browser/view/mark_display.h"
#include "tvx/core/part.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/range.h"
#include "tvx/editing/selection.h"
#include "tvx/spelling/application.h"

namespace tvx::core {

class Speller;

/// The wrong words of a document, underlined while the user types (the property CheckSpellingAsYouType).
///
/// Whatever changes is noted as a region and checked in later turns of the loop, a few milliseconds each; a
/// word that is being typed is checked when the caret leaves it. The marks are the view's: neither the tree
/// nor the journal knows of them.
class SpellingMarks final : public Part, private dom::MutationObserver, private editing::SelectionObserver {
 public:
  SpellingMarks(Context& context, Speller& speller);
  ~SpellingMarks();

  /// The document, the property or what it depends on may be another: begins, ends or goes on.
  void apply();
  /// The words that are right may be others: all is checked again.
  void check_again();
  /// Nothing of the document is kept.
  void forget_document();
  /// Whether everything is checked.
  bool settled() const { return regions_.empty(); }
  /// Of a text, in order.
  std::vector<browser::MarkedStretch> marks_of(const dom::Text& text) const;

  // --- the marked word that the caret stands in or touches ---
  struct MarkedWord {
    dom::Range range;
    std::u16string text;
  };
  std::optional<MarkedWord> word_at_caret() const;
  /// At most five, the best first.
  std::vector<std::u16string> suggestions(const MarkedWord& word);
  /// As one undo step.
  void change_word(const std::u16string& text);
  /// Into the user's own words, which all programs with this control share.
  void add_word();
  /// Until the control ends.
  void ignore_word();

 private:
  using Clock = std::chrono::steady_clock;
  using Stretches = std::vector<browser::MarkedStretch>;
  struct Entry {
    dom::Ref<dom::Text> text;
    Stretches stretches;
  };
  struct Region {
    Region(dom::Document& document, const dom::Range& range, bool is_typed)
        : place(document, range), typed(is_typed) {}
    dom::LiveRange place;
    bool typed;  // the word that the caret touches is still being typed
    bool begun = false;
    const dom::Text* entered = nullptr;  // the last text whose old marks are gone; only compared
  };

  /// What is checked without giving the loop a turn: something in any case, and no more after its end.
  struct Turn {
    Clock::time_point end;
    bool any = false;
  };

  void mutated(const dom::Mutation& mutation) override;
  void selection_changed() override;
  bool wanted() const;
  void follow(const std::shared_ptr<browser::HTMLDocument>& document);
  bool start_application();

  void note(const dom::Range& range, bool typed);
  void note_all();
  void schedule();
  void turn();
  bool check(Region& region, Turn& turn);
  void judge(Region& region, const dom::Range& word);
  void hold(const dom::Range& word);
  bool is_wrong(const dom::Range& word, const std::u16string& text);
  bool is_being_typed(const dom::Range& word) const;

  void drop_marks(const dom::Text& text, Offset from, Offset to);
  void drop_marks_below(dom::Node& top);
  void shift_marks(const dom::Mutation& mutation);
  void add_mark(const dom::Range& word);
  void show_changed();

  Speller& speller_;
  std::shared_ptr<browser::HTMLDocument> document_;
  std::unique_ptr<spelling::SpellingApplication> application_;
  std::u16string language_;  // where the document names none
  std::unordered_map<const dom::Text*, Entry> marks_;
  std::unordered_map<const dom::Text*, dom::Ref<dom::Text>> changed_;  // to be shown
  std::deque<std::unique_ptr<Region>> regions_;
  std::vector<std::unique_ptr<dom::LiveRange>> held_;  // words that are being typed: not asked about yet
  std::set<std::u16string, std::less<>> ignored_;
  const void* display_ = nullptr;  // who was shown the marks; only compared
  bool scheduled_ = false;
  bool more_waits_ = false;  // a turn has used up its time
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tvx::core
