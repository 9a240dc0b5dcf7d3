#include "tvx/dom/style/rule_index.h"

#include <algorithm>

#include "tvx/base/strings.h"
#include "tvx/dom/style/media.h"

namespace tvx::dom::style {

void RuleIndex::add_sheet(const std::vector<Rule>& rules) {
  // Nested rules are walked with a stack of places, in writing order.
  std::vector<std::pair<const std::vector<Rule>*, std::size_t>> open{{&rules, 0}};
  while (!open.empty()) {
    auto& [list, at] = open.back();
    if (at == list->size()) {
      open.pop_back();
      continue;
    }
    const Rule& rule = (*list)[at++];
    if (rule.kind == RuleKind::Style) {
      add_rule(rule);
    } else if (!rule.child_rules.empty() && (rule.kind != RuleKind::Media || matches_screen(rule.prelude)) &&
               !(rule.kind == RuleKind::Supports && ascii_lower(rule.prelude).starts_with(u"not"))) {
      open.push_back({&rule.child_rules, 0});
    }
  }
}

void RuleIndex::add_rule(const Rule& rule) {
  auto values = std::make_shared<const std::vector<PropertyValue>>(property_values(Declarations(rule.block)));
  ++order_;
  if (values->empty()) return;
  const auto list = SelectorList::parse(rule.selector_text);
  if (!list) return;
  for (const Selector& selector : list->selectors()) {
    note_use(selector);
    file(selector, std::uint32_t(entries_.size()));
    entries_.push_back({selector, order_, values});
  }
}

void RuleIndex::note_use(const Selector& selector) {
  for (const CompoundSelector& compound : selector.compounds) {
    use_.siblings |=
        compound.combinator == Combinator::NextSibling || compound.combinator == Combinator::LaterSibling;
    for (const SimpleSelector& simple : compound.simples) {
      switch (simple.type) {
        case SimpleType::Nth:
        case SimpleType::NthLast:
        case SimpleType::NthOfType:
        case SimpleType::NthLastOfType: use_.siblings = true; break;
        case SimpleType::Empty: use_.empty = true; break;
        case SimpleType::Attribute: use_.attributes.insert(simple.name); break;
        case SimpleType::State:
          for (const char16_t* name :
               {u"disabled", u"required", u"selected", u"open", u"readonly", u"checked"}) {
            use_.attributes.insert(Name(name));
          }
          break;
        case SimpleType::Not:
        case SimpleType::Is:
          for (const Selector& choice : simple.choices->selectors()) note_use(choice);
          break;
        default: break;
      }
    }
  }
}

void RuleIndex::file(const Selector& selector, std::uint32_t entry) {
  const CompoundSelector& subject = selector.compounds.back();
  const auto find = [&](SimpleType type) -> const SimpleSelector* {
    for (const SimpleSelector& simple : subject.simples) {
      if (simple.type == type) return &simple;
    }
    return nullptr;
  };
  if (const auto* id = find(SimpleType::Id)) {
    by_id_[ascii_lower(id->value)].push_back(entry);
  } else if (const auto* word = find(SimpleType::Class)) {
    by_class_[ascii_lower(word->value)].push_back(entry);
  } else if (const auto* type = find(SimpleType::Type)) {
    by_name_[type->name].push_back(entry);
    const Name foreign(type->value);
    if (foreign != type->name) by_name_[foreign].push_back(entry);
  } else {
    others_.push_back(entry);
  }
}

void RuleIndex::try_bucket(const Bucket& bucket, const Element& element, std::vector<Match>& matches) const {
  for (const std::uint32_t index : bucket) {
    const Entry& entry = entries_[index];
    if (entry.selector.matches(element)) {
      matches.push_back({entry.selector.specificity, entry.order, entry.values.get()});
    }
  }
}

void RuleIndex::collect(const Element& element, std::vector<Match>& matches) const {
  const std::size_t first = matches.size();
  try_bucket(others_, element, matches);
  if (const auto found = by_name_.find(element.name()); found != by_name_.end()) {
    try_bucket(found->second, element, matches);
  }
  const std::u16string* id = by_id_.empty() ? nullptr : element.attribute(names::id);
  if (id) {
    if (const auto found = by_id_.find(ascii_lower(*id)); found != by_id_.end()) {
      try_bucket(found->second, element, matches);
    }
  }
  const std::u16string* classes = by_class_.empty() ? nullptr : element.attribute(names::class_);
  if (classes) {
    for (const std::u16string_view word : split_on_space(*classes)) {
      if (const auto found = by_class_.find(ascii_lower(word)); found != by_class_.end()) {
        try_bucket(found->second, element, matches);
      }
    }
  }
  std::sort(matches.begin() + first, matches.end(), [](const Match& a, const Match& b) {
    return a.specificity != b.specificity ? a.specificity < b.specificity : a.order < b.order;
  });
}

}  // namespace tvx::dom::style
