#include "tvx/editing/clipboard/pasted_content.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include "tvx/dom/builder.h"
#include "tvx/dom/parse.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/clipboard/copied_content.h"
#include "tvx/editing/clipboard/foreign_attributes.h"
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
  Cleaning(dom::Document& document, Node& source)
      : document_(document), source_(source), result_(document.create_fragment()) {
    find_marks();
  }

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
    }
    if (!start_) end_ = nullptr;
    for (Node* node = start_ ? start_->parent() : nullptr; node && node != &source_; node = node->parent())
      around_start_.insert(node);
  }

  /// Whether to go into the element; then `holder` is where its content goes and outer_holder_ where it went.
  bool take(Element& element, Node*& holder) {
    outer_holder_ = holder;
    const Fate fate = fate_of(element);
    if (fate != Fate::Unwrap) ends_line_ = is_line_end(element);
    if (fate == Fate::Drop) return false;
    if (fate == Fate::Keep) {
      if (const Ref<Element> copy = copy_of(element)) {
        Builder::insert(*holder, copy);
        holder = copy.get();
      }
    }
    return true;
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
      if (auto value = kept_value(element, attribute))
        Builder::add_attribute(*copy, {attribute.name, std::move(*value), attribute.name_space});
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
    if (const auto* text = dom::as<dom::Text>(&node)) {
      if (!is_layout_of_source(text->data())) ends_line_ = false;
      // Where an element was taken away its neighbours meet.
      auto* before = dom::as<dom::Text>(holder.last_child());
      if (before)
        Builder::append_data(*before, text->data());
      else
        Builder::insert(holder, document_.create_text(text->data()));
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
  Ref<dom::DocumentFragment> result_;
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

Ref<dom::DocumentFragment> pasted_content(dom::Document& document, std::u16string_view html) {
  const Ref<dom::Document> workshop = dom::Document::create();
  workshop->set_compatibility_mode(document.compatibility_mode());
  dom::FragmentContext context;
  context.compatibility_mode = document.compatibility_mode();
  const Ref<dom::DocumentFragment> source = dom::parse_fragment(*workshop, context, with_table(html));
  return Cleaning(document, *source).run();
}

}  // namespace tvx::editing
