#pragma once

#include <optional>
#include <string>

#include "tvx/dom/document.h"
#include "tvx/dom/journal.h"

namespace tvx::core {

/// The three properties of an inline border, as texts of a `style`; empty where none is set.
struct BorderLook {
  std::u16string style, width, color;
  bool operator==(const BorderLook&) const = default;
};

/// The current element, on which the branch toolbar, the class menu and the dialogs work, and the border that
/// may mark it.
///
/// The border stands in the tree as an overlay: views, serialiser and undo know it as no change of the
/// document. Besides the values of the three properties the whole `style` text is kept, so that taking the
/// border off gives back the very text, "border-left: 3px solid blue" included. If the style has changed
/// otherwise in between, the three properties go back and the rest stays.
class SelectionHighlight final : private dom::OverlayKeeper {
 public:
  SelectionHighlight() = default;
  ~SelectionHighlight() override;
  SelectionHighlight(const SelectionHighlight&) = delete;
  SelectionHighlight& operator=(const SelectionHighlight&) = delete;

  dom::Element* element() const { return element_.get(); }
  /// Makes an element (or none) the current one and saves its style. The one before keeps what it has;
  /// callers restore() first where it is to lose its border.
  void set_element(dom::Ref<dom::Element> element);
  /// Gives the current element its saved look back. It stays the current one.
  void restore();
  /// Draws the border on the current element.
  void draw(const BorderLook& border);
  bool is_drawn() const { return drawn_.has_value(); }
  /// What the current element's inline border was before.
  const BorderLook& saved() const { return saved_; }

 private:
  void take_off() override;
  void put_back() override;
  void save_look();
  void watch(dom::Document* document);

  dom::Ref<dom::Element> element_;
  dom::Ref<dom::Document> document_;  // whose journal knows us
  BorderLook saved_;
  std::optional<std::u16string> saved_text_;  // the style attribute; none: absent
  std::optional<BorderLook> drawn_;
  bool taken_off_ = false;     // while a step is open; what is drawn_ then is still to be drawn
  std::u16string drawn_text_;  // the style attribute as drawing left it
};

}  // namespace tvx::core
