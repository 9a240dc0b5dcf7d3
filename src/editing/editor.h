#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "dom/document.h"
#include "editing/selection.h"

namespace tvx::editing {

struct CommandDefinition;

/// State and value overrides: what the next typed character shall look like, set by a command on a caret.
/// Editing commands standard, "state override" and "value override". Keys are command names in small letters.
struct Overrides {
  std::map<std::u16string, bool, std::less<>> states;
  std::map<std::u16string, std::u16string, std::less<>> values;
  bool empty() const { return states.empty() && values.empty(); }
  void clear() {
    states.clear();
    values.clear();
  }
};

/// Editing of one document: its selection, the modes that outlive a command, and the commands.
/// Everything that changes the document here is one undo step of its journal.
class Editor {
 public:
  explicit Editor(dom::Document& document);
  ~Editor();
  Editor(const Editor&) = delete;
  Editor& operator=(const Editor&) = delete;

  dom::Document& document() const { return *document_; }
  Selection& selection() { return selection_; }
  const Selection& selection() const { return selection_; }

  /// On: the whole body is the editing host. Off: what has `contenteditable` is.
  bool design_mode() const { return design_mode_; }
  void set_design_mode(bool on) { design_mode_ = on; }

  /// Off: commands make `<B>`, `<I>`, `<FONT>` (tag mode). On: inline styles.
  bool style_with_css() const { return style_with_css_; }
  void set_style_with_css(bool on) { style_with_css_ = on; }
  /// "div" or "p": what Enter makes.
  const std::u16string& paragraph_separator() const { return paragraph_separator_; }
  void set_paragraph_separator(std::u16string_view name) { paragraph_separator_ = name; }

  // --- commands; names compare without regard to case; editing commands standard, section "Methods" ---

  bool supported(std::u16string_view command) const;
  bool enabled(std::u16string_view command);
  bool indeterminate(std::u16string_view command);
  bool state(std::u16string_view command);
  std::u16string value(std::u16string_view command);
  /// Runs a command as one undo step. False if it is unknown, not enabled, or refused its value.
  bool execute(std::u16string_view command, std::u16string_view value = {});

  /// What the next typed character shall look like. Dropped when the selection is set elsewhere.
  Overrides& overrides() { return overrides_; }
  const Overrides& overrides() const { return overrides_; }

  /// The range that a command works on: the selection's, in document order; none without a selection.
  std::optional<dom::Range> active_range() const;

 private:
  struct OverrideGuard;
  dom::Document* document_;
  Selection selection_;
  bool design_mode_ = false;
  bool style_with_css_ = false;
  std::u16string paragraph_separator_ = u"p";
  Overrides overrides_;
  std::unique_ptr<OverrideGuard> override_guard_;
};

}  // namespace tvx::editing
