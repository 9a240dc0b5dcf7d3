#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/dom/document.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/color.h"
#include "tvx/dom/style/computed.h"
#include "tvx/dom/style/inline_style.h"
#include "tvx/dom/style/style_sheet.h"

/// What elements of a document look like, as far as commands and texts need to know: the cascade of the
/// default sheet, presentational attributes, the document's sheets and inline style. No view is asked.
namespace tvx::dom::style {

/// Hears that a link or an import may ask for (another) sheet. Called inside a mutation: must not change the
/// tree.
class LinkObserver {
 public:
  virtual ~LinkObserver() = default;
  virtual void links_changed() = 0;
};

/// Owned by its document; get it with style_of(). Answers are kept and dropped by what a mutation can
/// touch, so asking for every element of a document costs one walk, and asking after an edit next to nothing.
class StyleEngine final : public DocumentExtension, private MutationObserver {
 public:
  explicit StyleEngine(Document& document);
  ~StyleEngine() override;

  // --- computed values ---
  /// All at once, good until the next question or change. An element outside the tree has values by the chain
  /// it stands in.
  const ComputedValues& values(const Element& element);
  /// The resolved value as a text: "700", "16px", "rgb(0, 0, 0)", "underline line-through", "none".
  std::u16string computed(const Element& element, Property property);
  /// The families of these values, one after the other: "Arial, sans-serif".
  std::u16string_view font_family(const ComputedValues& values) const;
  Display display(const Element& element) { return values(element).display; }

  // --- sheets ---
  /// Every `style` element and every stylesheet `link`, in document order, with a dead address too.
  const std::vector<StyleSheetHandle>& sheets();
  /// The sheet of an element; null if it is none.
  StyleSheetHandle sheet_of(const Element& element);
  /// The text of a link's sheet, from whoever loads it. None: it could not be loaded.
  void set_link_text(Element& link, std::optional<std::u16string> text);
  /// The texts that a sheet imports, those that the imported ones import among them, in the order of the
  /// cascade.
  void set_imports(Element& owner, const std::vector<std::u16string>& texts);
  /// The links that are new or have another address since the last call, those asked for again, and the
  /// `style` elements that import something else.
  std::vector<Ref<Element>> take_sheets_to_load();
  /// Null: nobody.
  void set_link_observer(LinkObserver* observer);
  /// Sheets of the author kept outside the tree, before those in it.
  void set_extra_sheets(const std::vector<std::u16string>& texts);

 private:
  friend class StyleSheet;
  class Impl;
  void mutated(const Mutation& mutation) override;
  void reload(const Element& link);
  void text_changed();

  Document& document_;
  std::unique_ptr<Impl> impl_;
};

StyleEngine& style_of(Document& document);

/// Of a lone element: style_of() its document. Throws RuntimeError(91) when the document is gone.
std::u16string computed_value(const Element& element, Property property);
const ComputedValues& computed_values(const Element& element);
Display display_of(const Element& element);
/// Outside block and inline stand "none" and "contents"; a table's parts count as blocks, as the editing
/// commands have it: anything but inline, inline-block, inline-table, inline-flex, inline-grid, none,
/// contents.
bool is_block_display(Display display);

}  // namespace tvx::dom::style
