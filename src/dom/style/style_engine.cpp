#include "tvx/dom/style/style_engine.h"

#include <unordered_map>

#include "tvx/base/work_count.h"
#include "tvx/dom/style/cascade.h"
#include "tvx/dom/style/default_sheet.h"
#include "tvx/dom/style/known_values.h"
#include "tvx/dom/style/presentational_hints.h"
#include "tvx/dom/style/rule_index.h"
#include "tvx/dom/style/sheet_list.h"
#include "tvx/dom/tree.h"

namespace tvx::dom::style {
namespace {

constexpr std::size_t most_inline_texts = 1024;
/// A subtree with more nodes than this is not walked to forget its answers: all are forgotten.
constexpr std::size_t most_forgotten = 256;

const RuleIndex& default_rules(bool quirks) {
  const auto make = [](bool with_quirks) {
    RuleIndex index;
    index.add_sheet(parse_rules(default_sheet()));
    if (with_quirks) index.add_sheet(parse_rules(quirks_sheet()));
    return index;
  };
  static const RuleIndex standard = make(false), quirky = make(true);
  return quirks ? quirky : standard;
}

}  // namespace

/// Answers are kept for elements of the tree alone: one that stands elsewhere can change its chain without a
/// word, since nobody reports on trees that are being built.
class StyleEngine::Impl {
 public:
  Impl(Document& document, StyleEngine& engine) : sheets(document, engine), document_(document) {}

  const ComputedValues& values(const Element& element);
  void mutated(const Mutation& mutation);

  SheetList sheets;
  std::vector<std::u16string> families{u"serif"};

 private:
  void forget_all();
  void forget_subtree(const Node& root);
  void note_attribute(const Mutation& mutation);
  ComputedValues compute(const Element& element, const ComputedValues* parent);
  const std::vector<PropertyValue>& inline_values(const std::u16string& text);
  std::uint32_t family_number(const std::u16string& family);
  void refresh();

  Document& document_;
  bool quirks_ = false;
  bool uses_text_direction_ = false;  // some answer came from an element's text
  const RuleIndex* rules_ = nullptr;
  KnownValues known_;
  std::unordered_map<std::u16string, std::vector<PropertyValue>> inline_texts_;
  std::unordered_map<std::u16string, std::uint32_t> family_numbers_{{u"serif", 0}};
  double root_font_size_ = 16;
  ComputedValues loose_;  // the last answer for an element outside the tree
  std::vector<RuleIndex::Match> matches_;
  std::vector<PropertyValue> hints_;
  std::vector<const Element*> chain_;
};

void StyleEngine::Impl::forget_all() {
  if (!known_.empty()) known_.forget_all();
  uses_text_direction_ = false;
}

// Answers are kept from the root downwards: below an element without one there is none.
void StyleEngine::Impl::forget_subtree(const Node& root) {
  std::size_t count = 0;
  for (const Node* node = &root; node && !known_.empty();) {
    if (!known_.find(*node)) {
      node = next_skipping_children(*node, &root);
      continue;
    }
    if (++count > most_forgotten) return forget_all();
    known_.forget(*node);
    node = next_in_order(*node, &root);
  }
}

void StyleEngine::Impl::mutated(const Mutation& mutation) {
  // Only of elements in the tree something is known.
  sheets.note(mutation, mutation.parent && known_.find(*mutation.parent));
  if (known_.empty()) return;
  const SelectorUse& use = rules_->use();
  switch (mutation.type) {
    case Mutation::Type::ReplaceData:
      if (uses_text_direction_ || use.empty) forget_all();
      break;
    case Mutation::Type::Insert:
    case Mutation::Type::Remove:
      if (uses_text_direction_ || use.empty || (use.siblings && mutation.node->is_element())) {
        forget_all();
      } else if (mutation.type == Mutation::Type::Remove) {
        forget_subtree(*mutation.node);
      }
      break;
    case Mutation::Type::SetAttribute: note_attribute(mutation); break;
  }
}

void StyleEngine::Impl::note_attribute(const Mutation& mutation) {
  const SelectorUse& use = rules_->use();
  if (!is_presentational(mutation.attribute) && mutation.attribute != names::href &&
      !use.attributes.contains(mutation.attribute))
    return;
  if (use.siblings || (uses_text_direction_ && mutation.attribute == names::dir)) return forget_all();
  forget_subtree(*mutation.node);
}

void StyleEngine::Impl::refresh() {
  const bool quirks = document_.compatibility_mode() == CompatibilityMode::Quirks;
  if (rules_ && !sheets.rules_changed() && quirks == quirks_) return;
  quirks_ = quirks;
  rules_ = &sheets.rules();
  forget_all();
}

const std::vector<PropertyValue>& StyleEngine::Impl::inline_values(const std::u16string& text) {
  const auto found = inline_texts_.find(text);
  if (found != inline_texts_.end()) return found->second;
  if (inline_texts_.size() >= most_inline_texts) inline_texts_.clear();
  return inline_texts_[text] = property_values(Declarations(text));
}

std::uint32_t StyleEngine::Impl::family_number(const std::u16string& family) {
  const auto [entry, added] = family_numbers_.try_emplace(family, std::uint32_t(families.size()));
  if (added) families.push_back(family);
  return entry->second;
}

ComputedValues StyleEngine::Impl::compute(const Element& element, const ComputedValues* parent) {
  static const std::vector<PropertyValue> nothing;
  const std::u16string* text = element.attribute(names::style);
  const std::vector<PropertyValue>& own = text ? inline_values(*text) : nothing;
  matches_.clear();
  hints_.clear();
  if (element.is_html()) default_rules(quirks_).collect(element, matches_);
  const std::size_t defaults = matches_.size();
  append_presentational_hints(element, hints_);
  rules_->collect(element, matches_);

  Cascade cascade;
  for (std::size_t i = 0; i < defaults; ++i) cascade.take(*matches_[i].values, false);
  cascade.end_of_defaults();
  cascade.take(hints_, false);
  for (std::size_t i = defaults; i < matches_.size(); ++i) cascade.take(*matches_[i].values, false);
  cascade.take(own, false);
  for (std::size_t i = defaults; i < matches_.size(); ++i) cascade.take(*matches_[i].values, true);
  cascade.take(own, true);
  for (std::size_t i = 0; i < defaults; ++i) cascade.take(*matches_[i].values, true);

  const std::u16string* dir = element.attribute(names::dir);
  if (element.is(Tag::Bdi) || (dir && dir->size() == 4)) uses_text_direction_ = true;
  ComputedValues values =
      cascade.compute({parent, root_font_size_, quirks_,
                       [this](const std::u16string& family) { return family_number(family); }});
  if (is_block_display(values.display) || values.display == Display::Contents)
    values.scripts = script::none;
  else if (element.is(Tag::Sub))
    values.scripts |= script::lowered;
  else if (element.is(Tag::Sup))
    values.scripts |= script::raised;
  if (element.is(Tag::A) && element.has_attribute(names::href)) values.link = &element;
  return values;
}

const ComputedValues& StyleEngine::Impl::values(const Element& element) {
  count_work();
  refresh();
  if (const ComputedValues* found = known_.find(element)) return *found;
  chain_.clear();
  const ComputedValues* parent = nullptr;
  const Element* top = &element;
  for (const Element* current = &element; current; current = current->parent_element()) {
    parent = known_.find(*current);
    if (parent) break;
    chain_.push_back(current);
    top = current;
  }
  const bool connected = parent || (top->parent() && top->parent()->type() == NodeType::Document);
  // Answers are kept from the root downwards: where there is one, there is one of the root.
  const Element* root = parent ? document_.document_element() : nullptr;
  const ComputedValues* known_root = root ? known_.find(*root) : nullptr;
  root_font_size_ = known_root ? known_root->font_size : 16;
  for (auto current = chain_.rbegin(); current != chain_.rend(); ++current) {
    count_work();
    ComputedValues values = compute(**current, parent);
    if (!parent) root_font_size_ = values.font_size;
    if (connected) {
      parent = &known_.keep(**current, values);
    } else {
      loose_ = values;
      parent = &loose_;
    }
  }
  return *parent;
}

// --- the face ---

StyleEngine::StyleEngine(Document& document)
    : document_(document), impl_(std::make_unique<Impl>(document, *this)) {
  document.add_observer(*this);
}

StyleEngine::~StyleEngine() { document_.remove_observer(*this); }

const ComputedValues& StyleEngine::values(const Element& element) { return impl_->values(element); }

std::u16string_view StyleEngine::font_family(const ComputedValues& values) const {
  return impl_->families[values.font_family];
}

std::u16string StyleEngine::computed(const Element& element, Property property) {
  const ComputedValues& values = impl_->values(element);
  if (property == Property::FontFamily) return std::u16string(font_family(values));
  return value_text(values, property);
}

const std::vector<StyleSheetHandle>& StyleEngine::sheets() { return impl_->sheets.sheets(); }

StyleSheetHandle StyleEngine::sheet_of(const Element& element) { return impl_->sheets.sheet_of(element); }

void StyleEngine::set_link_text(Element& link, std::optional<std::u16string> text) {
  impl_->sheets.set_link_text(link, std::move(text));
}

void StyleEngine::set_imports(Element& owner, const std::vector<std::u16string>& texts) {
  impl_->sheets.set_imports(owner, texts);
}

std::vector<Ref<Element>> StyleEngine::take_sheets_to_load() { return impl_->sheets.take_sheets_to_load(); }

void StyleEngine::set_link_observer(LinkObserver* observer) { impl_->sheets.set_observer(observer); }

void StyleEngine::set_extra_sheets(const std::vector<std::u16string>& texts) {
  impl_->sheets.set_extra_sheets(texts);
}

void StyleEngine::mutated(const Mutation& mutation) { impl_->mutated(mutation); }

void StyleEngine::reload(const Element& link) { impl_->sheets.reload(link); }

void StyleEngine::text_changed() { impl_->sheets.text_changed(); }

StyleEngine& style_of(Document& document) {
  auto& slot = document.extension(ExtensionSlot::Style);
  if (!slot) slot = std::make_unique<StyleEngine>(document);
  return static_cast<StyleEngine&>(*slot);
}

std::u16string computed_value(const Element& element, Property property) {
  return style_of(document_of(element)).computed(element, property);
}

const ComputedValues& computed_values(const Element& element) {
  return style_of(document_of(element)).values(element);
}

Display display_of(const Element& element) { return computed_values(element).display; }

bool is_block_display(Display display) {
  switch (display) {
    case Display::Inline:
    case Display::InlineBlock:
    case Display::InlineTable:
    case Display::InlineFlex:
    case Display::InlineGrid:
    case Display::None:
    case Display::Contents:
    case Display::Ruby:
    case Display::RubyText: return false;
    default: return true;
  }
}

}  // namespace tvx::dom::style
