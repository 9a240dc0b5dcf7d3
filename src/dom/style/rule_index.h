#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "tvx/dom/node.h"
#include "tvx/dom/style/property_values.h"
#include "tvx/dom/style/selectors.h"
#include "tvx/dom/style/style_sheet.h"

namespace tvx::dom::style {

/// What the selectors of an index look at: tells which mutations can change who matches.
struct SelectorUse {
  bool siblings = false;  // an element's match depends on its neighbours or its position among them
  bool empty = false;     // or on its content
  std::unordered_set<Name> attributes;
};

/// The rules of one origin that say anything of the computed properties, found by what their subject needs:
/// an id, a class, a name.
class RuleIndex {
 public:
  void add_sheet(const std::vector<Rule>& rules);
  bool empty() const { return entries_.empty(); }
  const SelectorUse& use() const { return use_; }

  struct Match {
    std::uint32_t specificity, order;
    const std::vector<PropertyValue>* values;
  };
  /// The rules that match, in the order in which they count, the strongest last.
  void collect(const Element& element, std::vector<Match>& matches) const;

 private:
  struct Entry {
    Selector selector;
    std::uint32_t order;
    std::shared_ptr<const std::vector<PropertyValue>> values;
  };
  using Bucket = std::vector<std::uint32_t>;

  void add_rule(const Rule& rule);
  void note_use(const Selector& selector);
  void file(const Selector& subject, std::uint32_t entry);
  void try_bucket(const Bucket& bucket, const Element& element, std::vector<Match>& matches) const;

  std::vector<Entry> entries_;
  std::unordered_map<std::u16string, Bucket> by_id_, by_class_;  // in small letters
  std::unordered_map<Name, Bucket> by_name_;
  Bucket others_;
  std::uint32_t order_ = 0;
  SelectorUse use_;
};

}  // namespace tvx::dom::style
