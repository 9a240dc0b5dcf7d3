#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "tvx/base/text_pattern.h"
#include "tvx/browser/view/mark_display.h"
#include "tvx/core/part.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/range.h"
#include "tvx/editing/search/read_text.h"
#include "tvx/source/code_view.h"

namespace tvx::core {

class CodePane;
class SideSource;

/// What the numbers of FindText's options say, added up.
enum FindOption : std::int32_t {
  find_match_case = 1,
  find_whole_words = 2,
  find_regular_expression = 4,
  find_in_selection = 8
};

/// Finds and replaces in the view that is in front: in the document's text as a reader sees it, or in the
/// code; of a page and the source beside it in the one in which the user is, or was last. All hits are marked
/// in the view, the present one is selected; the marks are no part of the tree.
///
/// Where the text changes, the hits are found anew when the changes have paused, and whenever somebody asks.
/// While nothing is looked for, nothing is watched. Failures of a pattern are RuntimeError(5) with the texts
/// of TextPattern.
class Finder final : public Part, private dom::MutationObserver, private source::CodeViewObserver {
 public:
  Finder(Context& context, CodePane& code, SideSource& side);
  ~Finder();

  /// Looks for a text; selects the first hit from the start of the former selection on, and says how
  /// many there are. With an empty text nothing is looked for any more.
  std::int32_t FindText(std::u16string_view text, std::int32_t options);
  /// Selects the next hit or the one before, round the text's end; its number, counted from 1, or 0.
  std::int32_t FindNext() { return step(true); }
  std::int32_t FindPrevious() { return step(false); }
  /// How many hits there are, which one is selected (0: none), and how many may not be changed.
  std::int32_t FindCount();
  std::int32_t FindPosition();
  std::int32_t FindLocked();
  /// Puts a text in the place of the selected hit, as one step of undo, and selects the next one. False where
  /// no hit was selected or it may not be changed.
  bool ReplaceText(std::u16string_view replacement);
  /// In the place of all hits that may be changed, as one step of undo; how many.
  std::int32_t ReplaceAllText(std::u16string_view replacement);
  /// Nothing is looked for any more, and nothing marked.
  void FindEnd();

  /// The document may be another one.
  void apply();

 private:
  using Hit = TextPattern::Hit;
  using Stretches = std::vector<browser::MarkedStretch>;
  struct Shown {
    dom::Ref<dom::Text> text;
    Stretches hits, present;
    bool lost = false;  // the text has been edited since
  };
  using ShownTexts = std::unordered_map<const dom::Text*, Shown>;

  void mutated(const dom::Mutation& mutation) override;
  void code_view_changed() override { note_change(); }
  void text_changed() override { note_change(); }

  /// Whether a source is searched: the code view, or the one beside the page while the user is in that.
  bool in_code() const { return code_in_hand() != nullptr; }
  source::OrvelCV* code_in_hand() const;
  /// That the hits were found in.
  platform::TextBox& box() const;
  void note_change();
  void wait_for_pause();
  void follow_document();
  void note_origin();

  /// Finds the hits where they aren't known.
  void refresh();
  void keep_those_in_scope();
  /// The selection in the searched text.
  Hit selected();
  /// The place of the hit in the list; its end where the selection is none.
  std::size_t present();
  std::int32_t step(bool forward);
  void select(std::size_t number);
  bool may_replace(const Hit& hit) const;
  void replace(const std::vector<Hit>& hits, const std::vector<std::u16string>& texts);

  void show_marks();
  void show_in_page(std::size_t from, std::size_t to, std::size_t present);
  ShownTexts wanted_marks(std::size_t from, std::size_t to, std::size_t present) const;
  void clear_marks();

  CodePane& code_;
  SideSource& side_;
  std::u16string sought_;
  std::int32_t options_ = 0;
  std::optional<TextPattern> pattern_;
  std::shared_ptr<browser::HTMLDocument> document_;

  bool fresh_ = false;                   // the hits are those of the text as it is
  bool hits_in_code_ = false;            // what they were found in
  source::OrvelCV* searched_ = nullptr;  // the code then
  std::optional<editing::ReadText> page_;
  std::u16string code_text_;
  std::vector<Hit> hits_;

  // Where the selection was before a hit was selected: where the search begins, and what it stays in.
  std::unique_ptr<dom::LiveRange> origin_;
  Hit code_origin_;

  ShownTexts shown_;
  const void* display_ = nullptr;  // who was shown the marks; only compared
  bool marks_lost_ = false;        // the view may have dropped some
  std::int64_t changed_at_ = 0;
  bool waiting_ = false;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tvx::core
