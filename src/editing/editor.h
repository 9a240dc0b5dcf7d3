#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "tvx/dom/document.h"
#include "tvx/editing/selection.h"

namespace tvx::editing {

class ClipboardDoor;
struct CommandDefinition;

/// State and value overrides: what the next typed character shall look like, set by a command on a caret.
/// Editing commands standard, "state override" and "value override". Keys are command names in small letters;
/// "backcolor" and "hilitecolor" share one, see `override_key`.
struct Overrides {
  std::map<std::u16string, bool, std::less<>> states;
  std::map<std::u16string, std::u16string, std::less<>> values;
  bool empty() const { return states.empty() && values.empty(); }
  void clear() {
    states.clear();
    values.clear();
  }
};

/// What was typed without a pause, a move or another gesture between: undo takes it back in one, and
/// Backspace takes back accents that were typed one by one.
struct TypingRun {
  std::u16string text;
  dom::NodeId node{};  // where the caret stood after it
  Offset offset = 0;
  std::chrono::steady_clock::time_point last;
  std::size_t length = 0;  // of all of the run
};

/// The key of a command's override: its name in small letters, for "backColor" that of "hiliteColor".
std::u16string override_key(std::u16string_view command);

/// Editing of one document: its selection, the modes that outlive a command, and the commands.
/// Everything that changes the document here is one undo step of its journal.
class Editor final : private SelectionObserver {
 public:
  explicit Editor(dom::Document& document);
  ~Editor() override;
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;

  dom::Document& document() const { return *document_; }
  Selection& selection() { return selection_; }
  const Selection& selection() const { return selection_; }

  /// On: the whole body is the editing host. Off: what has `contenteditable` is.
  bool design_mode() const { return design_mode_; }
  void set_design_mode(bool on);

  /// Off: commands make `<B>`, `<I>`, `<FONT>` (tag mode). On: inline styles.
  bool style_with_css() const { return style_with_css_; }
  void set_style_with_css(bool on) { style_with_css_ = on; }
  /// "div" or "p": what Enter makes.
  const std::u16string& paragraph_separator() const { return paragraph_separator_; }
  void set_paragraph_separator(std::u16string_view name) { paragraph_separator_ = name; }

  // --- commands; names compare without regard to case; editing commands standard, section "Methods". What
  //     they do stands in commands/editor_commands.cpp, above all rooms that it calls. ---

  bool supported(std::u16string_view command) const;
  bool enabled(std::u16string_view command);
  bool indeterminate(std::u16string_view command);
  bool state(std::u16string_view command);
  std::u16string value(std::u16string_view command);
  /// Runs a command as one undo step. False if it is unknown, not enabled, or refused its value.
  bool execute(std::u16string_view command, std::u16string_view value = {});

  /// Where Copy and Paste lead; null: nowhere. The door outlives the editor or is taken away first.
  ClipboardDoor* clipboard() const { return clipboard_; }
  void set_clipboard(ClipboardDoor* clipboard) { clipboard_ = clipboard; }

  /// What the next typed character shall look like. Empty again as soon as the selection stands elsewhere,
  /// wherever that came from.
  Overrides& overrides();

  TypingRun& typing_run() { return typing_run_; }

  /// A mode of the keyboard: typed text takes the place of the character after the caret.
  bool overwrite() const { return overwrite_; }
  void set_overwrite(bool on) { overwrite_ = on; }
  /// The platform's modes: a dropped or dragged element may be placed freely.
  bool absolute_position() const { return absolute_position_; }
  void set_absolute_position(bool on) { absolute_position_ = on; }
  bool two_d_position() const { return two_d_position_; }
  void set_two_d_position(bool on) { two_d_position_ = on; }

  /// The range that a command works on: the selection's, in document order; none without a selection.
  std::optional<dom::Range> active_range() const;

 private:
  struct KnownPosition {
    dom::NodeId node{};
    Offset offset = 0;
    friend bool operator==(const KnownPosition&, const KnownPosition&) = default;
  };
  void selection_changed() override;
  static KnownPosition position_of(const dom::Boundary& boundary);
  bool is_enabled(const CommandDefinition& command) const;
  bool act(const CommandDefinition& command, std::u16string_view value);

  dom::Ref<dom::Document> document_;
  Selection selection_;
  ClipboardDoor* clipboard_ = nullptr;
  bool design_mode_ = false;
  bool style_with_css_ = false;
  bool overwrite_ = false;
  bool absolute_position_ = false;
  bool two_d_position_ = false;
  std::u16string paragraph_separator_ = u"p";
  Overrides overrides_;
  TypingRun typing_run_;
  KnownPosition overrides_anchor_,
      overrides_focus_;  // where the selection stood when they were last asked for
};

/// A host may set the selection into a comment or a BR, where nothing can be put: its ends step out of it.
void leave_comments(Editor& editor);

}  // namespace tvx::editing
