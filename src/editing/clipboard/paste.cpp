#include "tvx/editing/clipboard/paste.h"

#include <string>

#include "tvx/dom/inner_text.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/clipboard/block_paste.h"
#include "tvx/editing/clipboard/cell_paste.h"
#include "tvx/editing/clipboard/copied_content.h"
#include "tvx/editing/clipboard/pasted_content.h"
#include "tvx/editing/deletion/comment_keeper.h"
#include "tvx/editing/deletion/deletion.h"
#include "tvx/editing/deletion/islands.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/between_blocks.h"
#include "tvx/editing/facts/lines.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/facts/tag_set.h"
#include "tvx/editing/tables/selected_cells.h"
#include "tvx/editing/tree/clone_contents.h"
#include "tvx/editing/tree/lines.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/editing/walk/whitespace.h"

namespace tvx::editing {

using dom::Boundary;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

bool is_cell_or_above(const Node& node) {
  static const TagSet tags{Tag::Td, Tag::Th, Tag::Caption, Tag::Body, Tag::Html};
  return tags.has(node) || is_editing_host(node);
}

/// The one line that the content is, if it is one: what of it goes into a line.
Element* only_line(const Node& content, bool in_list) {
  Element* only = nullptr;
  for (Node* node = content.first_child(); node; node = node->next_sibling()) {
    if (is_filling(*node)) continue;
    if (only || !is_block_piece(*node)) return nullptr;
    only = dom::as<Element>(node);
  }
  if (!only) return nullptr;
  if (is_list_of_any_kind(*only)) return in_list ? only_line(*only, false) : nullptr;
  if (!is_text_block(*only)) return nullptr;
  for (const Node* child = only->first_child(); child; child = child->next_sibling())
    if (is_block_piece(*child)) return nullptr;
  return only;
}

bool has_blocks(const Node& content) {
  for (const Node* node = content.first_child(); node; node = node->next_sibling())
    if (is_block_piece(*node)) return true;
  return false;
}

/// The rows and cells of content and what they stand beside, to be compared.
std::u16string shape_of_tables(const Node& content) {
  static const TagSet tags{Tag::Table, Tag::Tr, Tag::Td, Tag::Th};
  std::u16string shape;
  for (const Node* node = content.first_child(); node; node = dom::next_in_order(*node, &content)) {
    const bool outermost = node->parent() == &content && node->is_element();
    if (!tags.has(*node) && !outermost) continue;
    const auto& element = static_cast<const Element&>(*node);
    shape += element.name().text();
    shape += element.attribute_or_empty(dom::Name(u"colspan"));
    shape += u'/';
    shape += element.attribute_or_empty(dom::Name(u"rowspan"));
    shape += u' ';
  }
  return shape;
}

/// Whether an end of a range is in a table that the range goes beyond.
bool cuts_table(const dom::Range& range) {
  static const TagSet parts{Tag::Table, Tag::Tbody, Tag::Thead, Tag::Tfoot,
                            Tag::Tr,    Tag::Td,    Tag::Th,    Tag::Caption};
  const Node* ancestor = dom::common_ancestor(*range.start.node, *range.end.node);
  if (ancestor->is_element() && parts.has(*ancestor) && !is_cell_or_above(*ancestor)) return true;
  for (const Node* end : {range.start.node, range.end.node})
    for (const Node* node = end; node != ancestor; node = node->parent())
      if (parts.has(*node)) return true;
  return false;
}

/// The range as it is taken out: with the blocks whose content is all in it.
dom::Range with_covered_blocks(const dom::Range& seen, bool lists_too) {
  dom::Range range = seen;
  const Node* ancestor = dom::common_ancestor(*seen.start.node, *seen.end.node);
  const auto covered = [&](Node* node) {
    auto* element = dom::as<Element>(node);
    return element && covers_content_of(seen, *element);
  };
  for (Node* node = seen.start.node; node && node != ancestor; node = node->parent())
    if (covered(node)) range.start = dom::before(*node);
  for (Node* node = seen.end.node; node && node != ancestor; node = node->parent())
    if (covered(node)) range.end = dom::after(*node);
  // What holds both ends as well, up to a block of lines or a whole table.
  bool structure = false;
  for (Node* node = const_cast<Node*>(ancestor); node && !is_cell_or_above(*node); node = node->parent()) {
    if (node->is_text()) continue;
    if (!covered(node)) break;
    static const TagSet parts{Tag::Table, Tag::Tbody, Tag::Thead, Tag::Tfoot, Tag::Tr};
    if (parts.has(*node)) {
      structure = true;
      if (!node->is(Tag::Table)) continue;
    } else if (structure ||
               !(is_look(*node) || is_text_block(*node) || (lists_too && is_list_of_any_kind(*node)))) {
      break;
    }
    range = {dom::before(*node), dom::after(*node)};
    if (is_text_block(*node) && !node->is(Tag::Li)) break;
  }
  return range;
}

/// A host may put the selection into what can't hold a text: an image, a field.
Boundary out_of_things(Boundary place) {
  while (place.node->parent() && is_object(*place.node)) place = dom::before(*place.node);
  return place;
}

/// Where the next text begins, if nothing that is seen comes before it.
std::optional<Boundary> text_behind(Boundary place) {
  ContentWalk walk(place, Direction::Forward);
  for (;;) {
    const Content met = walk.next();
    if (met.kind == ContentKind::Text) return Boundary{met.node, met.from};
    if (met.kind == ContentKind::End || met.is_substance()) return std::nullopt;
  }
}

/// One paste, from the selection to the caret after the content.
class Pasting {
 public:
  Pasting(Editor& editor, const Ref<dom::DocumentFragment>& content)
      : editor_(editor), content_(content), gap_(editor.document(), {}) {}

  void run() {
    ends_line_ = remove_line_end(*content_);
    Element* block = nullptr;
    if (Element* control = editor_.selection().control()) {
      gap_.set({dom::before(*control), dom::before(*control)});
      dom::remove(*control);
      block = block_around(gap_.start());
    } else {
      leave_comments(editor_);
      const dom::Range selected = editor_.selection().range();
      const dom::Range range{out_of_things(selected.start), out_of_things(selected.end)};
      seen_ = shrunk_to_characters(range);
      if (!seen_.start) seen_ = range;
      // One line's end in the place of another.
      if (ends_line_ && !seen_.collapsed() && takes_line_end(range, seen_)) ends_line_ = false;
      block = block_around(seen_.start);
    }
    note_spaces();
    if (goes_into_line(block))
      paste_line();
    else
      paste_blocks();
  }

 private:
  /// How the white space stands on both sides of what goes, while it is still there.
  void note_spaces() {
    const dom::Range range = seen_.start ? seen_ : gap_.range();
    spaces_before_ = spaces_beside(range.start);
    spaces_behind_ = spaces_beside(range.end);
  }

  /// Content of a single line goes into the line where it is pasted, and keeps its block where that is empty.
  bool goes_into_line(Element* block) {
    if (ends_line_) return false;
    if (!has_blocks(*content_)) return true;
    const bool in_list = block && block->is(Tag::Li);
    Element* line = only_line(*content_, in_list);
    if (!line) return false;
    if (block && is_text_block(*block) && (is_empty_line(*block) || replaces_all_of(*block))) {
      if (!in_list) return false;
    } else if (block && !is_text_block(*block) && is_empty_line(*block)) {
      return false;
    }
    NodeList inside = children_of(*line);
    dom::clear(*content_);
    insert_all({Ref<Node>(content_), {}}, inside);
    return true;
  }

  bool replaces_all_of(Element& block) const {
    return seen_.start && !seen_.collapsed() && dom::is_inclusive_ancestor(block, *seen_.end.node) &&
           covers_content_of(seen_, block);
  }

  // --- taking out what was selected ---

  void take_out(const dom::Range& range) {
    gap_.set(range);
    if (range.collapsed()) return;
    delete_contents(range);
    const Boundary end = without_empty_looks(gap_.end());
    if (end != gap_.end()) gap_.set_end(end);
    const Boundary start = without_empty_looks(gap_.start());
    if (start != gap_.start()) gap_.set_start(start);
  }

  void take_out_as_typing_does(const dom::Range& range, bool join_blocks) {
    editor_.selection().set(range);
    delete_selection(editor_, {.block_merging = join_blocks});
    const Boundary start = editor_.selection().range().start;
    gap_.set({start, start});
  }

  // --- a line ---

  void paste_line() {
    if (seen_.start) {
      if (block_around(seen_.start) == block_around(seen_.end))
        take_out(seen_);
      else
        take_out_as_typing_does(seen_, true);
    }
    make_line_between_blocks();
    Element* block = block_around(gap_.start());
    const Ref<Node> holder(block && is_empty_line(*block) ? line_break_in(*block)
                                                          : break_of_empty_line(gap_.start()));
    const HeldGap gap = zip_looks();
    const NodeList nodes = children_of(*content_);
    insert_all(gap, nodes);
    HeldPosition caret = right_end_;
    if (!caret) caret = nodes.empty() ? left_end_ : end_of_lines(*nodes.back());
    if (holder && holder->parent()) {
      const Ref<Node> around(holder->parent());
      dom::remove(*holder);
      if (around != block) without_empty_looks({around.get(), 0});
    }
    finish(caret ? caret.place() : gap_.start());
  }

  /// Between two blocks there is no line: the content gets a paragraph, as what is typed there does.
  void make_line_between_blocks() {
    const Between between = gap_.collapsed() ? between_blocks(gap_.start()) : Between{};
    const dom::Name name{std::u16string_view(editor_.paragraph_separator())};
    if (!between.before && !between.after) return;
    if (is_list(*between.holder) || !is_allowed_child_name(name, *between.holder)) return;
    const Ref<Element> paragraph = editor_.document().create_element(name);
    dom::insert(*between.holder, paragraph, between.new_block_before());
    append_line_break(*paragraph);
    gap_.set({{paragraph.get(), 0}, {paragraph.get(), 0}});
  }

  static Node* line_break_in(const Node& block) {
    for (Node* node = block.first_child(); node; node = dom::next_in_order(*node, &block))
      if (node->is(Tag::Br)) return node;
    return nullptr;
  }

  /// The break that holds an empty line open beside others of its block, or beside blocks.
  static Node* break_of_empty_line(const Boundary& place) {
    const auto ends_line = [](ContentKind kind) {
      return kind != ContentKind::Text && kind != ContentKind::Object;
    };
    const Content next = content_beside(place, Direction::Forward);
    if (next.kind != ContentKind::LineBreak) return nullptr;
    const ContentKind after = content_beside(dom::after(*next.node), Direction::Forward).kind;
    const bool is_last = ends_line(after) && after != ContentKind::LineBreak;
    return is_last && ends_line(content_beside(place, Direction::Backward).kind) ? next.node : nullptr;
  }

  /// Styles that both sides of the gap are in are taken off the content; where only one side is in a style,
  /// the first or the last node goes on in it if it has the same. Gives the gap for all else.
  HeldGap zip_looks() {
    Node* both = dom::common_ancestor(*gap_.start().node, *gap_.end().node);
    if (gap_.collapsed() && both->is_text()) both = both->parent();
    std::vector<const Element*> around;
    for (Node* node = both; node && is_look(*node); node = node->parent())
      around.push_back(static_cast<Element*>(node));
    for (std::size_t i = around.size(); i-- > 0;)
      unwrap_look(*around[i]);  // the outermost first, as it is written
    if (dom::enclosing(*both, Tag::A)) unwrap_links();
    const std::vector<Element*> left = looks_between(*both, gap_.start().node),
                                right = looks_between(*both, gap_.end().node);
    if (!right.empty()) right_end_ = zip_right(right, *content_);
    if (!left.empty()) left_end_ = zip_left(left, *content_);
    return gap_at(right.empty() ? gap_.end() : dom::before(*right.front()));
  }

  /// A link holds no links.
  void unwrap_links() {
    NodeList links;
    for (Node* node = content_->first_child(); node; node = dom::next_in_order(*node, content_.get()))
      if (node->is(Tag::A)) links.emplace_back(node);
    for (const Ref<Node>& link : links) {
      insert_all({Ref<Node>(link->parent()), link}, children_of(*link));
      dom::remove(*link);
    }
  }

  void unwrap_look(const Element& look) {
    for (Node* child = content_->first_child(); child;) {
      Node* next = child->next_sibling();
      if (same_look(child, look)) {
        const Ref<Node> gone(child);
        insert_all({Ref<Node>(content_), gone}, children_of(*child));
        dom::remove(*gone);
      }
      child = next;
    }
  }

  // --- blocks ---

  void paste_blocks() {
    bool same_tables = false;
    if (seen_.start && !seen_.collapsed()) {
      dom::Range range = with_covered_blocks(seen_, !is_list_only());
      if (cuts_table(range)) {
        same_tables = shape_of_tables(*copied_nodes(seen_)) == shape_of_tables(*content_);
        if (same_tables)
          take_out(range);
        else
          take_out_as_typing_does(range, false);
      } else {
        take_out(range);
      }
      wrap_last_line();
    } else if (seen_.start) {
      gap_.set(seen_);
    }
    BlockPaste paste(editor_, gap_.range(), {.tables = same_tables, .ends_line = ends_line_});
    const Boundary caret = paste.run(content_);
    breaks_line_ = paste.breaks_line();
    finish(caret);
  }

  /// Where the last block has gone whole, the content's last line has none to come into: it gets a paragraph.
  void wrap_last_line() {
    const Node* around = dom::common_ancestor(*gap_.start().node, *gap_.end().node);
    const dom::Name name{std::u16string_view(editor_.paragraph_separator())};
    const Element* block = block_around(gap_.end());
    const bool is_emptied = block && !block->has_children() && !is_text_block(*block);
    if ((!is_emptied && !between_blocks(gap_.end()).holder) || !is_allowed_child_name(name, *around)) return;
    Node* first = nullptr;
    bool seen = false;
    for (Node* node = content_->last_child(); node && !is_block_piece(*node);
         node = node->previous_sibling()) {
      first = node;
      seen = seen || !is_filling(*node);
    }
    if (!seen) return;
    NodeList line;
    for (Node* node = first; node; node = node->next_sibling()) line.emplace_back(node);
    const Ref<Element> paragraph = editor_.document().create_element(name);
    dom::insert(*content_, paragraph, first);
    insert_all({Ref<Node>(paragraph), {}}, line);
  }

  bool is_list_only() const {
    for (const Node* node = content_->first_child(); node; node = node->next_sibling())
      if (!is_filling(*node) && !is_list_of_any_kind(*node)) return false;
    return true;
  }

  void finish(Boundary caret) {
    dom::LiveRange kept(editor_.document(), {caret, caret});
    settle_spaces(join_texts_at(gap_.start()), spaces_before_);
    kept.set({join_texts_at(kept.start()), kept.end()});
    settle_spaces(kept.start(), spaces_behind_);
    if (const auto rest = breaks_line_ ? text_behind(kept.start()) : std::nullopt)
      settle_spaces(*rest, spaces_behind_);
    editor_.selection().collapse(normalized_caret_place(kept.start()));
  }

  Editor& editor_;
  Ref<dom::DocumentFragment> content_;
  dom::Range seen_{};
  dom::LiveRange gap_;
  SpacesBeside spaces_before_, spaces_behind_;
  bool ends_line_ = false;             // the content's last line ends with it
  bool breaks_line_ = false;           // the rest of the line stands after the content, in a block of its own
  HeldPosition left_end_, right_end_;  // of what went on in looks
};

/// Blanks that would show as one become blanks and no-break spaces; a tab is four.
std::u16string with_all_blanks(std::u16string_view text) {
  std::u16string result;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t space = std::min(text.find_first_of(u" \t", at), text.size());
    result += text.substr(at, space - at);
    Offset length = 0;
    std::size_t end = space;
    for (; end < text.size() && (text[end] == u' ' || text[end] == u'\t'); ++end)
      length += text[end] == u'\t' ? 4 : 1;
    const bool at_begin = space == 0 || text[space - 1] == u'\n' || text[space - 1] == u'\r';
    const bool at_end = end == text.size() || text[end] == u'\n' || text[end] == u'\r';
    if (length > 1)
      result += canonical_spaces(length, at_begin, at_end);
    else if (length == 1)
      result += (at_begin || at_end) && space != 0 && end != text.size() ? u'\u00A0' : u' ';
    at = end;
  }
  return result;
}

bool keeps_lines(Editor& editor) {
  const Boundary place = editor.selection().range().start;
  const auto* text = dom::as<dom::Text>(place.node);
  if (text) return !collapses(*text);
  for (const Node* node = place.node; node; node = node->parent())
    if (node->is(Tag::Pre) || node->is(Tag::Listing)) return true;
  return false;
}

}  // namespace

namespace {

/// Within preformatted text each line of what comes is a line; there are no blocks in it.
void flatten_to_lines(Editor& editor, const Ref<dom::DocumentFragment>& content) {
  if (!has_blocks(*content)) return;
  const Ref<Element> box = editor.document().create_element(Tag::Div);
  insert_all({Ref<Node>(box), {}}, children_of(*content));
  std::u16string text = dom::inner_text(dom::Range{{box.get(), 0}, {box.get(), dom::length_of(*box)}});
  // Paragraphs stand one below the other.
  for (std::size_t at = text.find(u"\n\n"); at != text.npos; at = text.find(u"\n\n", at)) text.erase(at, 1);
  dom::insert(*content, editor.document().create_text(std::move(text)));
}

/// Preformatted text that goes into a line of other text keeps its lines.
void break_lines_of_single_pre(const Ref<dom::DocumentFragment>& content) {
  Element* pre = only_line(*content, false);
  if (!pre || !pre->is(Tag::Pre)) return;
  std::vector<Ref<dom::Text>> texts;
  for (Node* node = pre->first_child(); node; node = dom::next_in_order(*node, pre))
    if (auto* text = dom::as<dom::Text>(node); text && contains(text->data(), u"\n"))
      texts.emplace_back(text);
  for (const Ref<dom::Text>& text : texts) {
    const Ref<dom::DocumentFragment> lines = dom::lines_of(*text->document(), with_all_blanks(text->data()));
    insert_all({Ref<Node>(text->parent()), text}, children_of(*lines));
    dom::remove(*text);
  }
}

/// What was copied from parts of cells, over parts of as many cells: each text takes the place of its own.
bool goes_over_its_own_shape(Editor& editor, const Node& content) {
  const dom::Range range = editor.selection().range();
  if (range.collapsed()) return false;
  const dom::Range seen = shrunk_to_characters(range);
  if (!seen.start || seen.collapsed() || !cuts_table(seen)) return false;
  Element* first = cell_around(seen.start.node);
  Element* last = cell_around(seen.end.node);
  // Of whole cells the contents are replaced.
  if (first && last && covers_content_of(seen, *first) && covers_content_of(seen, *last)) return false;
  return shape_of_tables(*copied_nodes(seen)) == shape_of_tables(content);
}

bool takes_its_block(Editor& editor) {
  const Element* block = block_around(editor.selection().range().start);
  return block && is_empty_line(*block);
}

}  // namespace

namespace {

/// The table that is all that is selected, from before it to after it.
Element* table_selected_as_whole(Editor& editor) {
  const dom::Range range = editor.selection().range();
  if (editor.selection().type() != SelectionType::Text || range.start.node != range.end.node ||
      range.start.node->is_text())
    return nullptr;
  Element* table = nullptr;
  const Node* end = dom::child_at(*range.end.node, range.end.offset);
  for (Node* node = dom::child_at(*range.start.node, range.start.offset); node != end;
       node = node->next_sibling()) {
    if (is_filling(*node)) continue;
    if (table || !node->is(Tag::Table) || !is_editable(*node)) return nullptr;
    table = static_cast<Element*>(node);
  }
  return table;
}

bool stands_alone(const Node& node) {
  for (const Node* child = node.parent()->first_child(); child; child = child->next_sibling())
    if (child != &node && is_visible(*child)) return false;
  return true;
}

bool is_seen_line(const Node& content) {
  bool seen = false;
  for (const Node* child = content.first_child(); child; child = child->next_sibling()) {
    if (is_block_piece(*child)) return false;
    seen = seen || is_visible(*child);
  }
  return seen;
}

/// In a document without a line what is pasted has one of its own, as what is typed.
void start_first_line(Editor& editor) {
  const dom::Boundary caret = editor.selection().focus();
  if (editor.selection().type() != SelectionType::Text || !editor.selection().collapsed()) return;
  Node* host = editing_host_of(*caret.node);
  const dom::Name name{std::u16string_view(editor.paragraph_separator())};
  if (!host || has_visible_child(*host) || block_around(caret) != host || !is_allowed_child_name(name, *host))
    return;
  const Ref<Element> line = editor.document().create_element(name);
  append_line_break(*line);
  dom::insert(*host, line);
  editor.selection().collapse({line.get(), 0});
}

void paste_at_selection(Editor& editor, const Ref<dom::DocumentFragment>& content) {
  if (Element* table = table_selected_as_whole(editor)) {
    if (stands_alone(*table)) {
      editor.selection().collapse(dom::before(*table));
      dom::remove(*table);
    } else {
      editor.selection().select_control(*table);
    }
  }
  if (is_seen_line(*content)) start_first_line(editor);
  if (editor.selection().type() == SelectionType::Text) {
    const bool over_cells = !selected_cells(editor).empty();
    if ((over_cells || !goes_over_its_own_shape(editor, *content)) && paste_into_cells(editor, content))
      return;
    if (over_cells) empty_selected_cells(editor);
    const bool cells_too = only_table(*content) != nullptr;
    if (cells_too) unwrap_single_cell(content);
    if (keeps_lines(editor))
      flatten_to_lines(editor, content);
    else if (!takes_its_block(editor))
      break_lines_of_single_pre(content);
  }
  remove_islands(editor);
  Pasting(editor, content).run();
}

}  // namespace

void paste_nodes(Editor& editor, const Ref<dom::DocumentFragment>& content) {
  CommentKeeper comments(editor);
  paste_at_selection(editor, content);
  comments.put_back();
}

bool paste_html(Editor& editor, std::u16string_view html,
                const std::function<void(dom::DocumentFragment&)>& finish) {
  const Node* place = editor.selection().range().start.node;
  const auto* around = dom::as<Element>(place);
  if (place && !around) around = place->parent_element();
  const Ref<dom::DocumentFragment> content = pasted_content(editor.document(), html, around);
  if (!content->has_children()) return false;
  if (finish) finish(*content);
  paste_nodes(editor, content);
  return true;
}

bool paste_plain_text(Editor& editor, std::u16string_view text, Addresses addresses) {
  for (std::u16string_view end : {u"\r\n", u"\n", u"\r"})
    if (text.ends_with(end)) {
      text.remove_suffix(end.size());
      break;
    }
  if (text.empty()) return false;
  dom::Document& document = editor.document();
  Ref<dom::DocumentFragment> content;
  if (keeps_lines(editor)) {
    content = document.create_fragment();
    std::u16string lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;
      lines += text[i] == u'\r' ? u'\n' : text[i];
    }
    dom::insert(*content, document.create_text(std::move(lines)));
  } else {
    const Node* host = editing_host_of(*editor.selection().range().start.node);
    const bool plain = host && is_plain_text_host(*host);
    content = plain ? dom::lines_of(document, with_all_blanks(text))
                    : nodes_of_text(document, with_all_blanks(text), addresses);
  }
  paste_nodes(editor, content);
  return true;
}

}  // namespace tvx::editing
