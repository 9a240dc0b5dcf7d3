#include "tvx/editing/clipboard/foreign_lists.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "tvx/base/strings.h"
#include "tvx/dom/document.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/declarations.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/clipboard/foreign_source.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

std::u16string style_value(const Element& element, std::u16string_view name) {
  const std::u16string_view style = element.attribute_or_empty(dom::names::style);
  if (!contains(style, name)) return {};
  const dom::style::Declarations declarations(style);
  for (const dom::style::Declaration* declaration : declarations.list())
    if (declaration->name == name) return declaration->value;
  return {};
}

bool is_list_element(const Node& node) { return node.is(Tag::Ul) || node.is(Tag::Ol); }

void move_children(Node& from, Node& to) {
  while (Node* child = from.first_child()) dom::insert(to, dom::remove(*child));
}

void set_style(Element& element, const dom::style::Declarations& declarations) {
  if (declarations.empty())
    dom::remove_attribute(element, dom::names::style);
  else
    dom::set_attribute(element, dom::names::style, declarations.css_text());
}

void remove_indents(Element& element) {
  const std::u16string_view style = element.attribute_or_empty(dom::names::style);
  if (style.empty()) return;
  dom::style::Declarations declarations(style);
  for (std::u16string_view name : {u"margin-left", u"margin-right", u"text-indent"})
    declarations.remove(name);
  set_style(element, declarations);
}

bool has_blocks(const Node& node) {
  for (const Node* child = node.first_child(); child; child = child->next_sibling())
    if (is_block_piece(*child)) return true;
  return false;
}

// --- numbers as they are drawn ---

int roman_value(char16_t c) {
  switch (c) {
    case u'i': return 1;
    case u'v': return 5;
    case u'x': return 10;
    case u'l': return 50;
    case u'c': return 100;
    case u'd': return 500;
    case u'm': return 1000;
    default: return 0;
  }
}

std::optional<int> roman_number(std::u16string_view letters) {
  int sum = 0, before = 0;
  for (std::size_t i = letters.size(); i-- > 0;) {
    const int value = roman_value(letters[i]);
    if (value == 0) return std::nullopt;
    sum += value < before ? -value : value;
    before = std::max(before, value);
  }
  return sum > 0 ? std::optional(sum) : std::nullopt;
}

std::optional<int> letter_number(std::u16string_view letters) {
  // "aa" comes after "z", "bb" after that: word processors double the letter.
  if (letters.empty() || letters.size() > 5) return std::nullopt;
  for (char16_t c : letters)
    if (c != letters[0]) return std::nullopt;
  return int(letters.size() - 1) * 26 + (letters[0] - u'a') + 1;
}

/// The kind of a list, as OL's type has it: "1", "a", "A", "i", "I"; "" for bullets.
std::u16string type_of_format(std::u16string_view format) {
  if (format == u"bullet" || format == u"image" || format == u"none") return {};
  if (format.starts_with(u"alpha-lower")) return u"a";
  if (format.starts_with(u"alpha-upper")) return u"A";
  if (format.starts_with(u"roman-lower")) return u"i";
  if (format.starts_with(u"roman-upper")) return u"I";
  return u"1";
}

/// The last run of letters or digits in a marker: "1.2.b)" says "b".
std::u16string counted_part(std::u16string_view marker) {
  const auto is_counted = [](char16_t c) { return is_ascii_alpha(c) || is_ascii_digit(c); };
  std::size_t end = marker.size();
  while (end > 0 && !is_counted(marker[end - 1])) --end;
  std::size_t start = end;
  while (start > 0 && is_counted(marker[start - 1]) &&
         is_ascii_digit(marker[start - 1]) == is_ascii_digit(marker[end - 1]))
    --start;
  return std::u16string(marker.substr(start, end - start));
}

/// What kind of list a marker is of, where no style sheet says it.
std::u16string type_of_marker(std::u16string_view marker) {
  const std::u16string part = counted_part(marker);
  if (part.empty()) return {};
  if (is_ascii_digit(part[0])) return u"1";
  // A letter alone is a bullet that is drawn with a letter.
  if (part.size() == marker.size()) return {};
  const std::u16string small = ascii_lower(part);
  const bool upper = small != part;
  const bool roman = roman_number(small) && (part.size() > 1 || small == u"i");
  if (roman) return upper ? u"I" : u"i";
  return letter_number(small) ? (upper ? u"A" : u"a") : u"";
}

std::optional<int> number_of(std::u16string_view marker, std::u16string_view type) {
  const std::u16string part = ascii_lower(counted_part(marker));
  if (part.empty()) return std::nullopt;
  if (is_ascii_digit(part[0])) {
    const auto number = part.size() < 9 ? parse_integer(part) : std::nullopt;
    return number ? std::optional(int(*number)) : std::nullopt;
  }
  if (type == u"i" || type == u"I") return roman_number(part);
  return type == u"a" || type == u"A" ? letter_number(part) : std::nullopt;
}

/// Makes the lists among the children of one node.
class ListMaker {
 public:
  ListMaker(Node& holder, const ForeignSource& source, const ListMarks& marks, const Indents& indents)
      : holder_(holder), source_(source), marks_(marks), indents_(indents) {}

  void run() {
    for (Ref<Node> child(holder_.first_child()); child;) {
      const Ref<Node> next(child->next_sibling());
      take(*child);
      child = next;
    }
  }

 private:
  struct Open {
    Ref<Element> list, item;
    std::u16string name, type;
    int level = 0, next = 1;
    double indent = 0;
  };

  void take(Node& child) {
    const auto mark = marks_.find(&child);
    if (mark != marks_.end()) return add_item(static_cast<Element&>(child), mark->second);
    if (open_.empty()) return;
    if (is_filling(child)) {
      if (child.is_text()) dom::remove(child);
      return;
    }
    if (!goes_on_in_item(child)) open_.clear();
  }

  std::u16string type_of(const ListMark& mark) const {
    if (const ListLevel* level = source_.list_level(mark.list, mark.level))
      return type_of_format(level->format);
    if (mark.from_list) return mark.ordered_list ? u"1" : u"";
    return type_of_marker(mark.marker);
  }

  void add_item(Element& block, const ListMark& mark) {
    const std::u16string type = type_of(mark);
    std::optional<int> number = type.empty() ? std::nullopt : number_of(mark.marker, type);
    if (mark.number && !type.empty()) number = mark.number;
    while (!open_.empty() && open_.back().level > mark.level) open_.pop_back();
    if (!open_.empty() && open_.back().level == mark.level) {
      const Open& last = open_.back();
      const bool goes_on = last.type == type && last.name == mark.list && (!number || *number >= last.next);
      if (!goes_on) open_.pop_back();
    }
    if (open_.empty() || open_.back().level < mark.level) open_list(block, mark, type, number.value_or(1));
    append(block, number, mark.indent);
  }

  void open_list(Element& block, const ListMark& mark, const std::u16string& type, int number) {
    Open opened;
    opened.list = block.document()->create_element(type.empty() ? Tag::Ul : Tag::Ol);
    if (!type.empty() && type != u"1") dom::set_attribute(*opened.list, dom::names::type, type);
    if (!type.empty() && number != 1) dom::set_attribute(*opened.list, dom::names::start, to_text(number));
    opened.name = mark.list;
    opened.type = type;
    opened.level = mark.level;
    opened.next = number;
    if (open_.empty()) {
      dom::insert(*block.parent(), opened.list, &block);
    } else {
      dom::insert(*open_.back().item, opened.list);
    }
    open_.push_back(std::move(opened));
  }

  void append(Element& block, std::optional<int> number, double indent) {
    Open& open = open_.back();
    const Ref<Element> held(block);
    Ref<Element> item = held;
    dom::remove(block);
    if (!block.is(Tag::Li)) {
      item = block.document()->create_element(Tag::Li);
      if ((block.is(Tag::P) || block.is(Tag::Div)) && !has_blocks(block)) {
        for (const dom::Attribute& attribute : block.attributes())
          dom::set_attribute(*item, attribute.name, attribute.value);
        move_children(block, *item);
      } else {
        dom::insert(*item, held);
        remove_indents(block);
      }
    }
    remove_indents(*item);
    if (number && *number != open.next) dom::set_attribute(*item, dom::names::value, to_text(*number));
    open.next = number.value_or(open.next) + 1;
    open.item = item;
    open.indent = indent;
    dom::insert(*open.list, item);
  }

  bool goes_on_in_item(Node& child) {
    const auto indent = indents_.find(&child);
    if (indent == indents_.end() || indent->second <= 0) return false;
    std::size_t depth = open_.size();
    while (depth > 0 && open_[depth - 1].indent > indent->second + 1) --depth;
    if (depth == 0) return false;
    open_.resize(depth);
    Element& item = *open_.back().item;
    put_line_into_paragraph(item);
    remove_indents(static_cast<Element&>(child));
    dom::insert(item, dom::remove(child));
    return true;
  }

  // Text doesn't stand beside blocks.
  static void put_line_into_paragraph(Element& item) {
    if (!item.first_child() || is_block_piece(*item.first_child())) return;
    const Ref<Element> paragraph = item.document()->create_element(Tag::P);
    while (item.first_child() && !is_block_piece(*item.first_child()))
      dom::insert(*paragraph, dom::remove(*item.first_child()));
    dom::insert(item, paragraph, item.first_child());
  }

  Node& holder_;
  const ForeignSource& source_;
  const ListMarks& marks_;
  const Indents& indents_;
  std::vector<Open> open_;
};

std::optional<ListMark> mark_by_attributes(const Element& element) {
  const std::u16string_view level = element.attribute_or_empty(dom::Name(u"data-aria-level"));
  if (!element.is(Tag::Li) || level.empty()) return std::nullopt;
  ListMark mark;
  mark.level = int(std::clamp<std::int64_t>(parse_integer(level).value_or(1), 1, 99));
  mark.list = element.attribute_or_empty(dom::Name(u"data-listid"));
  const auto number = parse_integer(element.attribute_or_empty(dom::Name(u"data-aria-posinset")));
  if (number && *number > 0 && *number < 100000) mark.number = int(*number);
  return mark;
}

std::optional<ListMark> mark_by_style(const Element& element) {
  const std::u16string value = style_value(element, u"mso-list");
  ListMark mark;
  bool has_level = false;
  for (std::u16string_view word : split_on_space(value)) {
    if (word.starts_with(u"level")) {
      const auto level = parse_integer(word.substr(5));
      has_level = level.has_value();
      mark.level = int(std::clamp<std::int64_t>(level.value_or(1), 1, 99));
    } else if (word.starts_with(u"lfo")) {
      continue;
    } else if (word.size() > 1 && word[0] == u'l') {
      mark.list = word;
    }
  }
  if (!has_level) return std::nullopt;
  return mark;
}

}  // namespace

std::optional<ListMark> list_mark_of(const ForeignSource& source, const Element& element) {
  static const TagSet blocks{Tag::P,  Tag::Div, Tag::Li, Tag::H1, Tag::H2,
                             Tag::H3, Tag::H4,  Tag::H5, Tag::H6, Tag::Blockquote};
  if (!blocks.has(element)) return std::nullopt;
  std::optional<ListMark> mark;
  if (source.is_office()) mark = mark_by_style(element);
  if (!mark && source.is_web_word_processor()) mark = mark_by_attributes(element);
  if (!mark) return mark;
  if (element.is(Tag::Li) && element.parent() && is_list_element(*element.parent())) {
    mark->from_list = true;
    mark->ordered_list = element.parent()->is(Tag::Ol);
  }
  const ListLevel* level = source.list_level(mark->list, mark->level);
  if (const auto own = indent_of(element.attribute_or_empty(dom::names::style)); own && *own != 0)
    mark->indent = *own;
  else if (const double by_class = source.class_indent(element); by_class != 0)
    mark->indent = by_class;
  else
    mark->indent = level && level->indent != 0 ? level->indent : 36.0 * mark->level;
  return mark;
}

bool is_list_of_marked_items(const ForeignSource& source, const Element& list) {
  if (!is_list_element(list) || !(source.is_office() || source.is_web_word_processor())) return false;
  bool any = false;
  for (const Node* child = list.first_child(); child; child = child->next_sibling()) {
    const auto* element = dom::as<Element>(child);
    if (!element || is_list_element(*element)) continue;
    if (!list_mark_of(source, *element)) return false;
    any = true;
  }
  if (any) return true;
  // A list that only holds such lists.
  for (const Node* child = list.first_child(); child; child = child->next_sibling()) {
    const auto* inner = dom::as<Element>(child);
    if (!inner) continue;
    const Element* item = dom::first_child_element(*inner);
    while (item && is_list_element(*item)) item = dom::first_child_element(*item);
    if (!item || !list_mark_of(source, *item)) return false;
    any = true;
  }
  return any;
}

bool is_drawn_marker(const Element& element) {
  return equals_ignoring_ascii_case(style_value(element, u"mso-list"), u"ignore");
}

void make_lists(Node& content, const ForeignSource& source, const ListMarks& marks, const Indents& indents) {
  std::vector<Ref<Node>> holders;
  std::unordered_set<const Node*> known;
  for (Node* node = content.first_child(); node; node = dom::next_in_order(*node, &content)) {
    if (!marks.contains(node)) continue;
    if (known.insert(node->parent()).second) holders.emplace_back(node->parent());
  }
  for (const Ref<Node>& holder : holders) ListMaker(*holder, source, marks, indents).run();
}

namespace {

Ref<Element> item_before(Node& child) {
  Node* before = child.previous_sibling();
  while (before && is_filling(*before)) before = before->previous_sibling();
  if (before && before->is(Tag::Li)) return Ref<Element>(static_cast<Element*>(before));
  const Ref<Element> item = child.document()->create_element(Tag::Li);
  // It has no text of its own to put a marker before.
  dom::set_attribute(*item, dom::names::style, u"list-style-type: none");
  dom::insert(*child.parent(), item, &child);
  return item;
}

void put_list_right(Element& list) {
  for (Ref<Node> child(list.first_child()); child;) {
    const Ref<Node> next(child->next_sibling());
    if (!child->is(Tag::Li) && !is_filling(*child)) {
      if (is_list_element(*child)) {
        const Ref<Element> item = item_before(*child);
        dom::insert(*item, dom::remove(*child));
      } else {
        const Ref<Element> item = list.document()->create_element(Tag::Li);
        dom::insert(list, item, child.get());
        dom::insert(*item, dom::remove(*child));
      }
    }
    child = next;
  }
}

// The paragraph that an item is alone gives its text to the item; one before a list in it as well.
void put_item_right(Element& item) {
  Element* paragraph = nullptr;
  for (Node* child = item.first_child(); child; child = child->next_sibling()) {
    if (is_filling(*child) || (paragraph && is_list_element(*child))) continue;
    if (paragraph || !child->is(Tag::P) || has_blocks(*child)) return;
    paragraph = static_cast<Element*>(child);
  }
  if (!paragraph) return;
  const Ref<Element> held(paragraph);
  if (const std::u16string* align = paragraph->attribute(dom::names::align))
    dom::set_attribute(item, dom::names::align, *align);
  const std::u16string_view own = paragraph->attribute_or_empty(dom::names::style);
  if (!own.empty()) {
    dom::style::Declarations declarations(item.attribute_or_empty(dom::names::style));
    const dom::style::Declarations inner(own);
    for (const dom::style::Declaration* declaration : inner.list())
      if (!declaration->name.starts_with(u"margin")) declarations.set(declaration->name, declaration->value);
    set_style(item, declarations);
  }
  while (Node* child = paragraph->first_child()) dom::insert(item, dom::remove(*child), paragraph);
  dom::remove(*held);
}

/// Letters and Roman numbers are the list's matter, not each item's.
void put_type_right(Element& list) {
  struct Kind {
    std::u16string_view value, type;
  };
  static constexpr Kind kinds[] = {{u"lower-alpha", u"a"}, {u"lower-latin", u"a"}, {u"upper-alpha", u"A"},
                                   {u"upper-latin", u"A"}, {u"lower-roman", u"i"}, {u"upper-roman", u"I"},
                                   {u"decimal", u"1"}};
  bool first = true;
  for (Node* child = list.first_child(); child; child = child->next_sibling()) {
    if (!child->is(Tag::Li)) continue;
    auto& item = static_cast<Element&>(*child);
    dom::style::Declarations declarations(item.attribute_or_empty(dom::names::style));
    const std::u16string value = declarations.get(u"list-style-type");
    if (value.empty() || value == u"none") continue;
    declarations.remove(u"list-style-type");
    set_style(item, declarations);
    for (const Kind& kind : kinds)
      if (first && list.is(Tag::Ol) && kind.value == value && kind.type != u"1")
        dom::set_attribute(list, dom::names::type, kind.type);
    first = false;
  }
}

}  // namespace

void put_lists_right(Node& content) {
  std::vector<Ref<Element>> lists, items;
  for (Node* node = content.first_child(); node; node = dom::next_in_order(*node, &content)) {
    if (is_list_element(*node)) lists.emplace_back(static_cast<Element*>(node));
    if (node->is(Tag::Li)) items.emplace_back(static_cast<Element*>(node));
  }
  for (const Ref<Element>& list : lists) {
    put_list_right(*list);
    put_type_right(*list);
  }
  for (const Ref<Element>& item : items) put_item_right(*item);
}

}  // namespace tvx::editing
