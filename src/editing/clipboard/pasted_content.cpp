#include "tvx/editing/clipboard/pasted_content.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "tvx/dom/builder.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/style/declarations.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/clipboard/copied_content.h"
#include "tvx/editing/clipboard/foreign_attributes.h"
#include "tvx/editing/clipboard/foreign_lists.h"
#include "tvx/editing/clipboard/foreign_source.h"
#include "tvx/editing/clipboard/foreign_style.h"
#include "tvx/editing/clipboard/given_style.h"
#include "tvx/editing/clipboard/style_elements.h"
#include "tvx/editing/clipboard/tidy_content.h"
#include "tvx/editing/clipboard/tidy_tables.h"
#include "tvx/editing/facts/tag_set.h"

namespace tvx::editing {

using dom::Builder;
using dom::Element;
using dom::Node;
using dom::Ref;
using dom::Tag;

namespace {

/// What becomes of an element that comes from elsewhere.
enum class Fate : std::uint8_t { Keep, Unwrap, Drop };

bool acts_or_belongs_to_its_page(const Element& element) {
  static const TagSet tags{Tag::Script,   Tag::Style,    Tag::Meta,     Tag::Link,
                           Tag::Base,     Tag::Title,    Tag::Applet,   Tag::Embed,
                           Tag::Frame,    Tag::Frameset, Tag::Noscript, Tag::Noembed,
                           Tag::Noframes, Tag::Template, Tag::Bgsound,  Tag::Basefont};
  return tags.has(element);
}

Fate fate_of_foreign(const Element& element) {
  const std::u16string name = ascii_lower(element.name().text());
  if (name == u"script" || name == u"style" || name == u"handler" || name == u"listener") return Fate::Drop;
  // These change attributes as time goes by, addresses among them.
  return name == u"set" || name.starts_with(u"animate") ? Fate::Drop : Fate::Keep;
}

/// With this browsers mark that a line's end was copied along.
bool is_line_end(const Element& element) {
  return element.is(Tag::Br) &&
         element.attribute_or_empty(dom::Name(u"class")) == u"Apple-interchange-newline";
}

Fate fate_of(const Element& element) {
  if (!element.is_html()) return fate_of_foreign(element);
  if (acts_or_belongs_to_its_page(element)) return Fate::Drop;
  if (element.tag() != Tag::Unknown) return is_line_end(element) ? Fate::Drop : Fate::Keep;
  const std::u16string& name = element.name().text();
  if (name == u"xml" || name.starts_with(u"v:")) return Fate::Drop;
  return contains(name, u":") ? Fate::Unwrap : Fate::Keep;
}

bool is_layout_of_source(std::u16string_view text) {
  return text.find_first_of(u"\r\n") != text.npos && trimmed(text).empty();
}

/// With this a word processor on the web ends each paragraph.
bool is_end_mark(const Element& element) {
  return element.is(Tag::Span) && element.attribute_or_empty(dom::names::class_).starts_with(u"EOP");
}

/// What is drawn for a picture: the picture's own element is in it.
const Element* picture_in_drawing(const Element& element) {
  if (!element.name().text().starts_with(u"v:")) return nullptr;
  for (const Node* node = &element; node; node = dom::next_in_order(*node, &element)) {
    const auto* inner = dom::as<Element>(node);
    if (inner && inner->name().text() == u"v:imagedata" && inner->has_attribute(dom::names::src))
      return inner;
  }
  return nullptr;
}

bool is_comment_with(const Node& node, std::u16string_view beginning) {
  const auto* comment = dom::as<dom::Comment>(&node);
  return comment && trimmed(comment->data()).starts_with(beginning);
}

std::u16string drawn_text(std::u16string_view text) {
  std::u16string drawn;
  for (char16_t c : text)
    if (!is_ascii_space(c) && c != u'\u00A0') drawn += c;
  return drawn;
}

/// A browser writes a blank beside an element as a hard one in an element of its own.
bool is_converted_blank(const dom::Text& text) {
  const Element* holder = text.parent_element();
  if (text.data() != u"\u00A0" || !holder || !holder->is(Tag::Span) || text.next_sibling()) return false;
  return holder->attributes().empty() ||
         holder->attribute_or_empty(dom::names::class_) == u"Apple-converted-space";
}

bool is_mark(const Node& node, std::u16string_view name) {
  const auto* comment = dom::as<dom::Comment>(&node);
  return comment && trimmed(comment->data()) == name;
}

bool is_kept_comment(const dom::Comment& comment) {
  const std::u16string_view data = trimmed(comment.data());
  return !data.starts_with(u"[if") && !data.starts_with(u"[endif") && data != u"StartFragment" &&
         data != u"EndFragment";
}

/// What around a part of a page is needed for the part to be what it is.
bool gives_structure(const Node& node) {
  static const TagSet tags{Tag::Ul,    Tag::Ol,    Tag::Dl, Tag::Table, Tag::Tbody,
                           Tag::Thead, Tag::Tfoot, Tag::Tr, Tag::Pre};
  return tags.has(node);
}

/// Copies what is wanted of a parsed text into a document, in one walk with no recursion.
class Cleaning {
 public:
  Cleaning(dom::Document& document, Node& source, const ForeignSource& program)
      : document_(document), source_(source), program_(program), result_(document.create_fragment()) {
    find_marks();
  }

  const ListMarks& list_marks() const { return list_marks_; }
  const Indents& indents() const { return indents_; }

  Ref<dom::DocumentFragment> run() {
    Node* holder = result_.get();
    std::vector<Open> open;
    bool inside = !start_;
    for (Node* node = source_.first_child(); node;) {
      if (node == end_) break;
      bool enter = false;
      if (node == start_) {
        inside = true;
      } else if (auto* element = dom::as<Element>(node)) {
        enter = inside ? take(*element, holder)
                       : around_start_.contains(element) && take_around(*element, holder);
      } else if (inside) {
        copy_data(*node, *holder);
      }
      if (enter && node->first_child()) {
        open.push_back({node, outer_holder_});
        node = node->first_child();
        continue;
      }
      if (enter) holder = outer_holder_;
      while (!node->next_sibling() && !open.empty()) {
        node = open.back().node;
        holder = open.back().holder;
        open.pop_back();
      }
      node = node->next_sibling();
    }
    if (!start_) trim_edges();
    if (ends_line_ && result_->has_children()) append_line_end(*result_);
    return result_;
  }

 private:
  struct Open {
    Node* node;
    Node* holder;  // of its siblings' copies
  };

  void find_marks() {
    for (Node* node = source_.first_child(); node; node = dom::next_in_order(*node, &source_)) {
      if (!start_ && is_mark(*node, u"StartFragment")) start_ = node;
      if (is_mark(*node, u"EndFragment")) end_ = node;
      if (is_comment_with(*node, u"[if !vml]")) has_other_picture_ = true;
    }
    if (!start_) end_ = nullptr;
    for (Node* node = start_ ? start_->parent() : nullptr; node && node != &source_; node = node->parent())
      around_start_.insert(node);
  }

  /// Whether to go into the element; then `holder` is where its content goes and outer_holder_ where it went.
  bool take(Element& element, Node*& holder) {
    outer_holder_ = holder;
    if (program_.is_known() && take_habit(element, *holder)) return false;
    const Fate fate = is_box_of_program(element) ? Fate::Unwrap : fate_of(element);
    if (fate != Fate::Unwrap) ends_line_ = is_line_end(element);
    if (fate == Fate::Drop) return false;
    if (fate == Fate::Keep) {
      if (const Ref<Element> copy = copy_of(element)) {
        Builder::insert(*holder, copy);
        holder = copy.get();
        if (program_.is_known()) note_block(element, *copy);
      }
    }
    return true;
  }

  /// What a known program writes in its own manner; true: it is done with.
  bool take_habit(const Element& element, Node& holder) {
    if (in_marker_ || (program_.is_office() && is_drawn_marker(element))) {
      note_marker(dom::text_content(element));
      return true;
    }
    if (const Element* picture = has_other_picture_ ? nullptr : picture_in_drawing(element)) {
      Builder::insert(holder, picture_of(element, *picture));
      return true;
    }
    return program_.is_web_word_processor() && is_end_mark(element);
  }

  /// Its content tells all that it would.
  bool is_box_of_program(const Element& element) const {
    if (!program_.is_known()) return false;
    if (is_list_of_marked_items(program_, element)) return true;
    if (contains(element.name().text(), u"-html-origin")) return true;
    if (!program_.is_web_word_processor() || !element.is(Tag::Div)) return false;
    const Element* only = dom::first_child_element(element);
    return only && (only->is(Tag::Ul) || only->is(Tag::Ol)) && !dom::next_element_sibling(*only);
  }

  void note_block(const Element& element, Element& copy) {
    static const TagSet blocks{Tag::P,  Tag::Div, Tag::Li, Tag::H1, Tag::H2,
                               Tag::H3, Tag::H4,  Tag::H5, Tag::H6, Tag::Blockquote};
    if (!blocks.has(element)) return;
    block_ = &copy;
    in_marker_ = false;
    if (auto mark = list_mark_of(program_, element)) list_marks_[&copy] = *mark;
    const auto own = indent_of(element.attribute_or_empty(dom::names::style));
    indents_[&copy] = own.value_or(program_.class_indent(element));
  }

  void note_marker(std::u16string_view text) {
    if (!block_) return;
    auto mark = list_marks_.find(block_);
    if (mark == list_marks_.end()) {
      // A marker without the name of its list: how far it is indented says its level.
      ListMark unnamed;
      unnamed.indent = indents_[block_];
      unnamed.level = std::clamp(int(unnamed.indent / 36 + 0.5), 1, 9);
      mark = list_marks_.emplace(block_, unnamed).first;
    }
    mark->second.marker += drawn_text(text);
  }

  Ref<Element> picture_of(const Element& drawing, const Element& picture) {
    Ref<Element> image = document_.create_element(Tag::Img);
    const std::u16string_view address = picture.attribute_or_empty(dom::names::src);
    if (!is_acting_address(address))
      Builder::add_attribute(*image, {dom::names::src, std::u16string(address), {}});
    std::u16string_view text = drawing.attribute_or_empty(dom::names::alt);
    if (text.empty()) text = picture.attribute_or_empty(dom::Name(u"o:title"));
    if (!text.empty()) Builder::add_attribute(*image, {dom::names::alt, std::u16string(text), {}});
    const dom::style::Declarations style(drawing.attribute_or_empty(dom::names::style));
    for (const dom::Name name : {dom::names::width, dom::names::height}) {
      const double pixels = points_of(style.get(name.text())) / 0.75;
      if (pixels >= 1 && pixels < 100000)
        Builder::add_attribute(*image, {name, to_text(std::int64_t(pixels + 0.5)), {}});
    }
    return image;
  }

  bool take_around(Element& element, Node*& holder) {
    if (gives_structure(element)) return take(element, holder);
    outer_holder_ = holder;
    return fate_of(element) != Fate::Drop;
  }

  /// Nothing for an element that has nothing left to say.
  Ref<Element> copy_of(const Element& element) {
    Ref<Element> copy = document_.create_element(element.name(), element.name_space());
    for (const dom::Attribute& attribute : element.attributes()) {
      if (program_.is_known() && element.is_html() &&
          (attribute.name == dom::names::style || is_residue(program_, element, attribute.name.text())))
        continue;
      if (auto value = kept_value(element, attribute))
        Builder::add_attribute(*copy, {attribute.name, std::move(*value), attribute.name_space});
    }
    if (program_.is_known() && element.is_html()) {
      std::u16string style = kept_declarations(foreign_style(program_, element));
      if (!style.empty()) Builder::add_attribute(*copy, {dom::names::style, std::move(style), {}});
    }
    if (is_wrapper(element, *copy)) return {};
    return copy;
  }

  static bool is_wrapper(const Element& element, const Element& copy) {
    static const TagSet tags{Tag::Span, Tag::Font};
    if (tags.has(element)) return copy.attributes().empty() && !element.attributes().empty();
    // A word processor on the web wraps all it copies so, and means nothing by it.
    return element.is(Tag::B) &&
           element.attribute_or_empty(dom::Name(u"id")).starts_with(u"docs-internal-guid");
  }

  void copy_data(const Node& node, Node& holder) {
    if (program_.is_office() && is_comment_with(node, u"[if !supportLists]")) {
      in_marker_ = true;
    } else if (is_comment_with(node, u"[endif]")) {
      in_marker_ = false;
    } else if (in_marker_) {
      if (const auto* text = dom::as<dom::Text>(&node)) note_marker(text->data());
    } else if (const auto* text = dom::as<dom::Text>(&node)) {
      if (!is_layout_of_source(text->data())) ends_line_ = false;
      // Where an element was taken away its neighbours meet.
      auto* before = dom::as<dom::Text>(holder.last_child());
      const bool is_blank = program_.is_known() && is_converted_blank(*text);
      const std::u16string data = is_blank ? u" " : text->data();
      if (before)
        Builder::append_data(*before, data);
      else
        Builder::insert(holder, document_.create_text(data));
    } else if (const auto* comment = dom::as<dom::Comment>(&node); comment && is_kept_comment(*comment)) {
      Builder::insert(holder, document_.create_comment(comment->data()));
    }
  }

  void trim_edges() {
    for (auto* text = dom::as<dom::Text>(result_->first_child()); text && is_layout_of_source(text->data());
         text = dom::as<dom::Text>(result_->first_child()))
      Builder::remove(*text);
    for (auto* text = dom::as<dom::Text>(result_->last_child()); text && is_layout_of_source(text->data());
         text = dom::as<dom::Text>(result_->last_child()))
      Builder::remove(*text);
  }

  dom::Document& document_;
  Node& source_;
  const ForeignSource& program_;
  Ref<dom::DocumentFragment> result_;
  ListMarks list_marks_;
  Indents indents_;
  const Element* block_ = nullptr;  // the copy that was made last
  bool in_marker_ = false;          // between the comments around a drawn bullet
  bool has_other_picture_ = false;  // for programs that can't draw
  Node* start_ = nullptr;
  Node* end_ = nullptr;
  std::unordered_set<const Node*> around_start_;
  bool ends_line_ = false;  // nothing was taken after a line's end
  Node* outer_holder_ = nullptr;
};

/// The name of the tag that begins at that position, in small letters; empty if none does.
std::u16string tag_name_at(std::u16string_view html, std::size_t at) {
  if (at >= html.size() || html[at] != u'<') return {};
  std::size_t end = ++at;
  while (end < html.size() && is_ascii_alpha(html[end])) ++end;
  return ascii_lower(html.substr(at, end - at));
}

std::size_t skip_space(std::u16string_view html, std::size_t at) {
  while (at < html.size() && is_ascii_space(html[at])) ++at;
  return at;
}

bool is_part_of_table(std::u16string_view name) {
  static constexpr std::u16string_view names[] = {u"tr",    u"td",       u"th",  u"tbody",  u"thead",
                                                  u"tfoot", u"colgroup", u"col", u"caption"};
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

/// Rows and cells that come without their table would run together into their text: they get one.
std::u16string with_table(std::u16string_view html) {
  constexpr std::u16string_view mark = u"<!--StartFragment-->";
  const std::size_t marked = html.find(mark);
  std::size_t at = skip_space(html, marked == html.npos ? 0 : marked + mark.size());
  for (std::u16string name = tag_name_at(html, at);
       name == u"html" || name == u"head" || name == u"meta" || name == u"body";
       name = tag_name_at(html, at)) {
    const std::size_t end = html.find(u'>', at);
    at = skip_space(html, end == html.npos ? html.size() : end + 1);
  }
  std::u16string whole(html);
  const bool stands_in_one = contains(ascii_lower(html.substr(0, at)), u"<table");
  if (!stands_in_one && is_part_of_table(tag_name_at(html, at))) whole.insert(at, u"<table>");
  return whole;
}

}  // namespace

Ref<dom::DocumentFragment> pasted_content(dom::Document& document, std::u16string_view html,
                                          const Element* place) {
  const Ref<dom::Document> workshop = dom::Document::create();
  workshop->set_compatibility_mode(document.compatibility_mode());
  dom::FragmentContext context;
  context.compatibility_mode = document.compatibility_mode();
  const Ref<dom::DocumentFragment> source = dom::parse_fragment(*workshop, context, with_table(html));
  const ForeignSource program(*source);
  if (!program.is_known()) return Cleaning(document, *source, program).run();
  Cleaning cleaning(*workshop, *source, program);
  const Ref<dom::DocumentFragment> content = cleaning.run();
  drop_empty_paragraphs(*content);
  const GivenStyle given = with_font_of_source(program, *content, style_given_at(place));
  make_lists(*content, program, cleaning.list_marks(), cleaning.indents());
  put_lists_right(*content);
  drop_given_styles(*content, given);
  drop_link_styles(*content);
  drop_unused_names(*content);
  make_style_elements(*content);
  tidy_content(*content);
  tidy_tables(*content);
  const Ref<dom::DocumentFragment> result = document.create_fragment();
  for (const Node* child = content->first_child(); child; child = child->next_sibling())
    Builder::insert(*result, dom::clone(*child, document, dom::Deep::Yes));
  return result;
}

}  // namespace tvx::editing
