// Random sequences of tree operations, some of them grouped in steps, with undo and redo between them. The
// tree stays sound, ranges and collections follow, and going all the way back and forth gives the same trees.

#include <memory>
#include <vector>

#include "fuzz_choices.h"
#include "tree_laws.h"
#include "tvx/base/error.h"
#include "tvx/dom/builder.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/objects/element_content.h"
#include "tvx/dom/objects/table.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/style/inline_style.h"

namespace {

using namespace tvx;
using namespace tvx::dom;

constexpr std::u16string_view page =
    u"<!DOCTYPE html><body><p id=a>one <b>two</b> three</p><ul><li>4<li>5</ul>"
    u"<table><tr><td>6<td>7<tr><td>8</table><template><p>9</p></template><svg><g>10</g></svg>";

class Walk {
 public:
  Walk(const std::uint8_t* data, std::size_t size) : choices_(data, size), document_(parse_document(page)) {
    collect();
    for (int i = 0; i < 3; ++i) {
      const Range whole{{document_.get(), 0}, {document_.get(), document_->child_count()}};
      ranges_.push_back(std::make_unique<LiveRange>(*document_, whole));
    }
  }

  void go() {
    const std::u16string first = tree();
    for (int step = 0; step < 200 && choices_.left(); ++step) {
      // What can't be done is refused, and has then changed nothing that undo doesn't know.
      attempt([&] { act(); });
      if (step % 8 == 0) look();
    }
    while (open_ > 0) close();
    // What the last decisions took back comes first.
    while (journal().redo()) {
    }
    look();
    const std::u16string last = tree();
    while (journal().undo()) fuzz::require_sound_links(*document_);
    fuzz::require(tree() == first, "undoing all gives the first tree");
    look();
    while (journal().redo()) fuzz::require_sound_links(*document_);
    fuzz::require(tree() == last, "redoing all gives the last tree");
    look();
  }

 private:
  using Act = void (Walk::*)();

  Journal& journal() { return document_->journal(); }
  std::u16string tree() const { return print_tree(*document_); }
  void act() {
    static constexpr Act acts[] = {&Walk::insert_node, &Walk::remove_node, &Walk::replace, &Walk::split,
                                   &Walk::attribute,   &Walk::set_range,   &Walk::undo,    &Walk::redo,
                                   &Walk::open,        &Walk::close,       &Walk::content, &Walk::style,
                                   &Walk::table,       &Walk::clear_all,   &Walk::overlay, &Walk::copy};
    (this->*acts[choices_.below(std::size(acts))])();
  }

  void look() {
    fuzz::require_sound_links(*document_);
    fuzz::require_sound_order(*document_);
    for (const auto& range : ranges_) fuzz::require_sound_range(*range);
  }

  // Nodes of the tree and nodes taken out of it, which may come back.
  void collect() {
    for (Node* node = document_.get(); node; node = next_in_order(*node)) nodes_.emplace_back(*node);
  }
  Node& any() { return *nodes_[choices_.below(nodes_.size())]; }
  Element& any_element() {
    for (std::size_t i = 0, at = choices_.below(nodes_.size()); i < nodes_.size(); ++i)
      if (auto* element = as<Element>(nodes_[(at + i) % nodes_.size()])) return *element;
    return *document_->document_element();
  }

  Ref<Node> fresh() {
    constexpr Tag tags[] = {Tag::P, Tag::B, Tag::Div, Tag::Table, Tag::Tr, Tag::Td, Tag::Li, Tag::Style};
    switch (choices_.below(4)) {
      case 0: return document_->create_text(choices_.text(8));
      case 1: return document_->create_comment(choices_.text(8));
      default: return document_->create_element(tags[choices_.below(std::size(tags))]);
    }
  }
  Ref<Node> kept(Ref<Node> node) {
    if (nodes_.size() < 2000) nodes_.push_back(node);
    return node;
  }

  void insert_node() {
    Node& parent = any();
    const Ref<Node> child = choices_.below(2) ? kept(fresh()) : Ref<Node>(any());
    dom::insert(parent, child, child_at(parent, choices_.below(parent.child_count() + 1)));
  }
  void remove_node() { dom::remove(any()); }
  void replace() {
    auto* data = as<CharacterData>(&any());
    if (data) replace_data(*data, choices_.below(12), choices_.below(12), choices_.text(6));
  }
  void split() {
    auto* text = as<Text>(&any());
    if (text) kept(split_text(*text, choices_.below(12)));
  }
  void attribute() {
    constexpr std::u16string_view names[] = {u"id", u"class", u"style", u"href", u"colspan"};
    Element& element = any_element();
    const Name name(names[choices_.below(std::size(names))]);
    if (choices_.below(3) == 0) return remove_attribute(element, name);
    set_attribute(element, name, choices_.text(6));
  }
  void set_range() {
    LiveRange& range = *ranges_[choices_.below(ranges_.size())];
    Node& node = any();
    const Boundary place{&node, choices_.below(length_of(node) + 1)};
    choices_.below(2) ? range.set_start(place) : range.set_end(place);
  }
  void undo() {
    const std::size_t before = journal().depth();
    const bool done = journal().undo();
    fuzz::require(!done || journal().depth() + 1 == before, "undo takes one step back");
  }
  void redo() { journal().redo(); }
  void open() {
    if (open_ > 3) return;
    journal().open(u"Step", static_cast<StepJoin>(choices_.below(2)));
    ++open_;
  }
  void close() {
    if (open_ == 0) return;
    journal().close();
    --open_;
  }
  void content() {
    Element& element = any_element();
    switch (choices_.below(4)) {
      case 0: return assign_inner_html(element, choices_.text(24));
      case 1: return assign_outer_html(element, choices_.text(24));
      case 2: return assign_inner_text(element, choices_.text(12));
      default: return assign_outer_text(element, choices_.text(12));
    }
  }
  void style() {
    constexpr std::u16string_view names[] = {u"border", u"borderStyle", u"color", u"width"};
    style::InlineStyle inline_style(any_element());
    inline_style.set(names[choices_.below(std::size(names))], choices_.text(8));
  }
  void table() {
    Element& element = any_element();
    const auto index = static_cast<std::int32_t>(choices_.below(5)) - 1;
    switch (choices_.below(6)) {
      case 0: kept(TableObject(element).insertRow(index)); return;
      case 1: return TableObject(element).deleteRow(index);
      case 2: kept(TableRowObject(element).insertCell(index)); return;
      case 3: return TableRowObject(element).deleteCell(index);
      case 4: kept(TableObject(element).createTHead()); return;
      default: return TableObject(element).deleteCaption();
    }
  }
  void clear_all() { dom::clear(any()); }
  // A border drawn and taken off again: nothing that undo knows of.
  void overlay() {
    const MutationScope scope(*document_, MutationKind::Overlay);
    Element& element = any_element();
    const std::u16string* had = element.attribute(names::style);
    const std::optional<std::u16string> before = had ? std::optional(*had) : std::nullopt;
    set_attribute(element, names::style, u"border: 1px solid red");
    before ? set_attribute(element, names::style, *before) : remove_attribute(element, names::style);
  }
  // A copy of what holds a copy doubles: a few deep ones are enough.
  void copy() {
    const bool deep = deep_copies_ < 4 && choices_.below(2);
    if (deep) ++deep_copies_;
    kept(clone(any(), *document_, deep ? Deep::Yes : Deep::No));
  }

  fuzz::Choices choices_;
  Ref<Document> document_;
  std::vector<Ref<Node>> nodes_;
  std::vector<std::unique_ptr<LiveRange>> ranges_;
  int open_ = 0, deep_copies_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Walk(data, size).go();
  return 0;
}
