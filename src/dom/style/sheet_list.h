#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "tvx/dom/document.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/rule_index.h"
#include "tvx/dom/style/style_sheet.h"

namespace tvx::dom::style {

class LinkObserver;

/// The sheets of a document, and their rules as the cascade needs them. Hears of every mutation and notes
/// what it leaves to be done; the work is done when somebody asks.
class SheetList {
 public:
  SheetList(Document& document, StyleEngine& engine) : document_(document), engine_(engine) {}
  ~SheetList();

  /// Whether the mutation, or anything else since the last rules(), can have changed the rules. `in_tree`:
  /// its parent is known to stand in the document.
  void note(const Mutation& mutation, bool in_tree);
  bool rules_changed() const { return rules_changed_; }

  const std::vector<StyleSheetHandle>& sheets();
  StyleSheetHandle sheet_of(const Element& element);
  const RuleIndex& rules();

  void set_link_text(Element& link, std::optional<std::u16string> text);
  void set_extra_sheets(const std::vector<std::u16string>& texts);
  /// The sheet's text was changed past the tree.
  void text_changed() { rules_changed_ = true; }
  /// A link is to be loaded again though its address is the same.
  void reload(const Element& link);
  void set_imports(Element& owner, const std::vector<std::u16string>& texts);
  std::vector<Ref<Element>> take_sheets_to_load();
  void set_observer(LinkObserver* observer) { observer_ = observer; }

 private:
  void note_coming(const Node& node);
  void note_leaving(const Node& node, bool in_tree);
  bool may_own_sheet_below(const Node& node);
  bool held_a_sheet(const Node& node);
  void note_text();
  void note_attribute(const Mutation& mutation, const Element& element);
  void links_changed();
  bool wants_loading(StyleSheet& sheet);
  void refresh();

  Document& document_;
  StyleEngine& engine_;
  LinkObserver* observer_ = nullptr;
  bool list_changed_ = true, rules_changed_ = true;
  /// By NodeId: with this number a node has no element below it, nor is one, that may own a sheet.
  std::vector<std::uint32_t> without_;
  std::uint32_t without_epoch_ = 1;  // another one for each sheet that comes
  std::vector<StyleSheetHandle> sheets_;
  std::vector<std::weak_ptr<StyleSheet>> dropped_;  // may still be held by somebody
  std::vector<std::vector<Rule>> extra_sheets_;
  /// By NodeId: of a link its address, of a `style` element what it imports.
  std::unordered_map<std::uint32_t, std::u16string> known_addresses_;
  std::unordered_set<std::uint32_t> reloads_;
  RuleIndex index_;
};

}  // namespace tvx::dom::style
