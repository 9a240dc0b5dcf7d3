#include "tvx/dom/style/sheet_list.h"

#include <algorithm>
#include <utility>

#include "tvx/base/strings.h"
#include "tvx/dom/style/media.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::style {
namespace {

const Name disabled_attribute(u"disabled");

std::uint32_t key_of(const Node& node) { return std::uint32_t(node.id()); }

bool has_relation(const Element& link, std::u16string_view wanted) {
  for (const std::u16string_view word : split_on_space(link.attribute_or_empty(names::rel))) {
    if (equals_ignoring_ascii_case(word, wanted)) return true;
  }
  return false;
}

bool owns_sheet(const Element& element) {
  return element.is(Tag::Style) || (element.is(Tag::Link) && has_relation(element, u"stylesheet"));
}

constexpr std::size_t few_sheets = 8;

/// Whether the sheet has a say in what the document looks like.
bool applies(const StyleSheet& sheet) {
  const Element& owner = sheet.owner();
  const std::u16string_view type = trimmed(owner.attribute_or_empty(names::type));
  if (!type.empty() && !equals_ignoring_ascii_case(type, u"text/css")) return false;
  if (owner.is(Tag::Link)) {
    if (owner.has_attribute(disabled_attribute)) return false;
    if (has_relation(owner, u"alternate") && owner.has_attribute(names::title)) return false;
  }
  return matches_screen(owner.attribute_or_empty(names::media));
}

}  // namespace

SheetList::~SheetList() {
  for (const StyleSheetHandle& sheet : sheets_) sheet->engine_ = nullptr;
  for (const auto& held : dropped_) {
    if (const StyleSheetHandle sheet = held.lock()) sheet->engine_ = nullptr;
  }
}

void SheetList::note(const Mutation& mutation, bool in_tree) {
  const Element* parent = as<Element>(mutation.parent);
  switch (mutation.type) {
    case Mutation::Type::ReplaceData:
      if (mutation.node->parent() && mutation.node->parent()->is(Tag::Style)) note_text();
      break;
    case Mutation::Type::Insert:
      if (parent && parent->is(Tag::Style)) note_text();
      note_coming(*mutation.node);
      break;
    case Mutation::Type::Remove:
      if (parent && parent->is(Tag::Style)) note_text();
      note_leaving(*mutation.node, in_tree);
      break;
    case Mutation::Type::SetAttribute: note_attribute(mutation, *as<Element>(mutation.node)); break;
  }
}

void SheetList::note_coming(const Node& node) {
  if (!may_own_sheet_below(node)) return;
  ++without_epoch_;
  list_changed_ = rules_changed_ = true;
  links_changed();
}

// What leaves a tree of its own, a fragment, may bring sheets that nobody knows yet.
void SheetList::note_leaving(const Node& node, bool in_tree) {
  if (!(in_tree ? held_a_sheet(node) : may_own_sheet_below(node))) return;
  list_changed_ = rules_changed_ = true;
  links_changed();
}

// Each node is gone through once until a sheet comes: nested elements are moved level by level, each with all
// that is below it.
bool SheetList::may_own_sheet_below(const Node& node) {
  const auto is_known = [&](const Node& at) {
    const auto id = std::size_t(at.id());
    return id < without_.size() && without_[id] == without_epoch_;
  };
  std::vector<std::size_t> without;
  for (const Node* current = &node; current;) {
    if (is_known(*current)) {
      current = next_skipping_children(*current, &node);
      continue;
    }
    if (current->is(Tag::Link) || current->is(Tag::Style)) return true;
    without.push_back(std::size_t(current->id()));
    current = next_in_order(*current, &node);
  }
  for (const std::size_t id : without) {
    if (id >= without_.size()) without_.resize(id + id / 2 + 1);
    without_[id] = without_epoch_;
  }
  return false;
}

// A few sheets are asked where they stand, which is mostly not deep.
bool SheetList::held_a_sheet(const Node& node) {
  if (list_changed_ || sheets_.size() > few_sheets) return may_own_sheet_below(node);
  return std::any_of(sheets_.begin(), sheets_.end(), [&](const StyleSheetHandle& sheet) {
    return is_inclusive_ancestor(node, sheet->owner());
  });
}

/// The text of a `style` element is another: it may import something else.
void SheetList::note_text() {
  rules_changed_ = true;
  links_changed();
}

void SheetList::note_attribute(const Mutation& mutation, const Element& element) {
  if (element.is(Tag::Style)) rules_changed_ = true;
  if (!element.is(Tag::Link)) return;
  list_changed_ = rules_changed_ = true;
  if (mutation.attribute == names::href || mutation.attribute == names::rel) links_changed();
}

void SheetList::links_changed() {
  if (observer_) observer_->links_changed();
}

void SheetList::refresh() {
  if (!list_changed_) return;
  list_changed_ = false;
  std::unordered_map<const Element*, StyleSheetHandle> old;
  for (StyleSheetHandle& sheet : sheets_) old.emplace(&sheet->owner(), std::move(sheet));
  sheets_.clear();
  for (Element* element : document_.all()) {
    if (!owns_sheet(*element)) continue;
    auto kept = old.extract(element);
    sheets_.push_back(kept ? std::move(kept.mapped()) : std::make_shared<StyleSheet>(*element, &engine_));
  }
  std::erase_if(dropped_, [](const auto& sheet) { return sheet.expired(); });
  for (const auto& [owner, sheet] : old) {
    known_addresses_.erase(key_of(sheet->owner()));
    reloads_.erase(key_of(sheet->owner()));
    dropped_.push_back(sheet);
  }
}

const std::vector<StyleSheetHandle>& SheetList::sheets() {
  refresh();
  return sheets_;
}

StyleSheetHandle SheetList::sheet_of(const Element& element) {
  refresh();
  for (const StyleSheetHandle& sheet : sheets_) {
    if (&sheet->owner() == &element) return sheet;
  }
  return nullptr;
}

const RuleIndex& SheetList::rules() {
  refresh();
  if (!rules_changed_) return index_;
  rules_changed_ = false;
  index_ = RuleIndex();
  for (const std::vector<Rule>& sheet : extra_sheets_) index_.add_sheet(sheet);
  for (const StyleSheetHandle& sheet : sheets_) {
    if (!applies(*sheet)) continue;
    for (const std::vector<Rule>& imported : sheet->imported_) index_.add_sheet(imported);
    index_.add_sheet(sheet->rules());
  }
  return index_;
}

void SheetList::set_link_text(Element& link, std::optional<std::u16string> text) {
  const StyleSheetHandle sheet = sheet_of(link);
  if (!sheet) return;
  sheet->loaded_text_ = std::move(text);
  sheet->imported_.clear();
  rules_changed_ = true;
}

void SheetList::set_imports(Element& owner, const std::vector<std::u16string>& texts) {
  const StyleSheetHandle sheet = sheet_of(owner);
  if (!sheet) return;
  sheet->imported_.clear();
  for (const std::u16string& text : texts) sheet->imported_.push_back(parse_rules(text));
  rules_changed_ = true;
}

void SheetList::set_extra_sheets(const std::vector<std::u16string>& texts) {
  extra_sheets_.clear();
  for (const std::u16string& text : texts) extra_sheets_.push_back(parse_rules(text));
  rules_changed_ = true;
}

void SheetList::reload(const Element& link) {
  reloads_.insert(key_of(link));
  links_changed();
}

std::vector<Ref<Element>> SheetList::take_sheets_to_load() {
  refresh();
  std::vector<Ref<Element>> changed;
  for (const StyleSheetHandle& sheet : sheets_)
    if (wants_loading(*sheet)) changed.push_back(sheet->owner());
  return changed;
}

bool SheetList::wants_loading(StyleSheet& sheet) {
  const std::uint32_t key = key_of(sheet.owner());
  std::u16string wanted = sheet.href();
  if (!sheet.is_link())
    for (const Import& import : imports_of(sheet.rules())) wanted += import.url + u'\n';
  const auto known = known_addresses_.find(key);
  const bool again = reloads_.erase(key) > 0;
  const bool is_known =
      known == known_addresses_.end() ? !sheet.is_link() && wanted.empty() : known->second == wanted;
  if (is_known && !again) return false;
  known_addresses_[key] = wanted;
  if (sheet.is_link()) return true;
  rules_changed_ |= !sheet.imported_.empty();
  sheet.imported_.clear();
  return !wanted.empty();
}

}  // namespace tvx::dom::style
