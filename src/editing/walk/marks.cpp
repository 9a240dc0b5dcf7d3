#include "tvx/editing/walk/marks.h"

#include <optional>
#include <vector>

#include "tvx/dom/builder.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"

namespace tvx::editing {

using dom::Boundary;
using dom::CharacterData;
using dom::Element;
using dom::Name;
using dom::Node;
using dom::Ref;

namespace {

constexpr std::u16string_view all_marks = u"[]{}";

bool is_mark(char16_t c) { return all_marks.find(c) != std::u16string_view::npos; }
bool only_marks(std::u16string_view text) {
  return text.find_first_not_of(all_marks) == std::u16string_view::npos;
}
bool is_brace(char16_t c) { return c == u'{' || c == u'}'; }
bool is_start(char16_t c) { return c == u'[' || c == u'{'; }

/// Finds the marks below a host, takes them away and tells where they stood.
class MarkReader {
 public:
  MarkReader(dom::Document& document, Element& host) : range_(document, {}), host_(host) {}

  void read() {
    for (Node* node = host_.first_child(); node; node = dom::next_in_order(*node, &host_)) {
      if (auto* element = dom::as<Element>(node)) read_attributes(*element);
      if (auto* data = dom::as<CharacterData>(node)) read_text(*data);
    }
    // The range follows while what held nothing but braces goes.
    for (const Ref<Node>& node : emptied_) dom::remove(*node);
  }
  Boundary start() const { return range_.start(); }
  Boundary end() const { return range_.end(); }

 private:
  void found(bool start, Boundary place) {
    range_.set_unordered(start ? place : range_.start(), start ? range_.end() : place);
  }

  void read_attributes(Element& element) {
    for (const bool start : {true, false}) {
      const Name name(start ? u"data-start" : u"data-end");
      const std::u16string* value = element.attribute(name);
      if (!value) continue;
      found(start, {&element, Offset(parse_integer(*value).value_or(0))});
      dom::remove_attribute(element, name);
    }
  }

  void read_text(CharacterData& node) {
    const std::u16string text = node.data();
    if (text.find_first_of(all_marks) == std::u16string::npos) return;
    bool had_brace = false;
    std::u16string rest;
    std::vector<std::pair<char16_t, Boundary>> places;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (!is_mark(text[i])) {
        rest += text[i];
        continue;
      }
      had_brace |= is_brace(text[i]);
      places.emplace_back(text[i], place_of(node, text, i, rest.size()));
    }
    dom::replace_data(node, 0, node.length(), rest);
    for (const auto& [mark, place] : places) found(is_start(mark), place);
    if (rest.empty() && had_brace) emptied_.emplace_back(node);
  }

  // Braces at an edge of the text stand beside it.
  static Boundary place_of(CharacterData& node, std::u16string_view text, std::size_t at, Offset offset) {
    if (!is_brace(text[at])) return {&node, offset};
    if (only_marks(text.substr(0, at))) return before(node);
    if (only_marks(text.substr(at + 1))) return after(node);
    return {&node, offset};
  }

  dom::LiveRange range_;
  Element& host_;
  std::vector<Ref<Node>> emptied_;
};

}  // namespace

void load_marked(Editor& editor, Element& host, std::u16string_view marked_html) {
  dom::Document& document = editor.document();
  editor.selection().clear();
  editor.overrides().clear();
  const dom::MutationScope scope(document, dom::MutationKind::Load);
  dom::replace_children(host, dom::parse_fragment(document, dom::context_of(host), marked_html));
  MarkReader marks(document, host);
  marks.read();
  document.journal().clear();
  if (marks.start() && marks.end()) editor.selection().set(marks.start(), marks.end());
}

namespace {

/// A copy of a host with the selection written into its text. The tree itself is only read.
class MarkWriter {
 public:
  explicit MarkWriter(const Element& host)
      : host_(host), document_(dom::document_of(host)), copy_(dom::clone(host, document_, dom::Deep::Yes)) {}

  void write(const dom::Range& range) {
    if (!is_below(range.start) || !is_below(range.end)) return;
    Node *const start = twin(*range.start.node), *const end = twin(*range.end.node);
    if (range.collapsed()) return mark(*start, range.start.offset, u"[]", u"{}");
    // The end first: marks put at the start would move it.
    mark(*end, range.end.offset, u"]", u"}");
    mark(*start, range.start.offset, u"[", u"{");
  }
  const Node& copy() const { return *copy_; }

 private:
  bool is_below(const Boundary& place) const {
    return place && dom::is_inclusive_ancestor(host_, *place.node);
  }

  // The node of the copy at the same position.
  Node* twin(const Node& node) const {
    std::vector<Offset> path;
    for (const Node* current = &node; current != &host_; current = current->parent()) {
      path.push_back(dom::index_of(*current));
    }
    Node* current = copy_.get();
    for (auto index = path.rbegin(); index != path.rend(); ++index) current = dom::child_at(*current, *index);
    return current;
  }

  void write_into(CharacterData& node, Offset at, std::u16string_view mark) {
    const dom::MutationScope scope(document_, dom::MutationKind::Load);
    dom::replace_data(node, at, 0, mark);
  }

  void mark(Node& node, Offset offset, std::u16string_view bracket, std::u16string_view brace) {
    if (auto* data = dom::as<CharacterData>(&node)) return write_into(*data, offset, bracket);
    Node* behind = dom::child_at(node, offset);
    if (auto* text = dom::as<dom::Text>(behind)) return write_into(*text, 0, brace);
    Node* previous = behind ? behind->previous_sibling() : node.last_child();
    if (auto* text = dom::as<dom::Text>(previous)) return write_into(*text, text->length(), brace);
    dom::Builder::insert(node, document_.create_text(std::u16string(brace)), behind);
  }

  const Element& host_;
  dom::Document& document_;
  Ref<Node> copy_;
};

}  // namespace

std::u16string dump_marked(const Editor& editor, const Element& host, dom::Letters letters) {
  const auto range = editor.active_range();
  if (!range) return dom::serialise_children(host, letters);
  MarkWriter writer(host);
  writer.write(*range);
  return dom::serialise_children(writer.copy(), letters);
}

}  // namespace tvx::editing
