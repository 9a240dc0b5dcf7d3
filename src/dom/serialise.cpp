#include "dom/serialise.h"

#include "dom/tree.h"

namespace tvx::dom {
namespace {

bool holds_raw_text(const Node* parent) {
  const auto* element = as<Element>(parent);
  if (!element) return false;
  switch (element->tag()) {
    case Tag::Style:
    case Tag::Script:
    case Tag::Xmp:
    case Tag::Iframe:
    case Tag::Noembed:
    case Tag::Noframes:
    case Tag::Plaintext: return true;
    default: return false;
  }
}

bool drops_first_line_break(const Node* parent) {
  return parent && (parent->is(Tag::Pre) || parent->is(Tag::Textarea) || parent->is(Tag::Listing));
}

/// Writes a subtree without recursion: one walk that opens on the way down and closes on the way up.
class Serialiser {
 public:
  explicit Serialiser(Letters letters) : letters_(letters) {}

  std::u16string take() { return std::move(out_); }

  void children(const Node& root) {
    const auto* element = as<Element>(&root);
    const Node* container = element && element->template_content() ? element->template_content() : &root;
    walk(container->first_child(), nullptr, container);
  }

  void node(const Node& root) {
    if (root.type() == NodeType::Document || root.type() == NodeType::DocumentFragment) return children(root);
    walk(&root, &root, root.parent());
  }

 private:
  // Writes `first` and what follows it under `container`; `only` stops after that one node. Contents of
  // templates hang on another tree, so a template on the way is remembered as the place to come back to.
  void walk(const Node* first, const Node* only, const Node* container) {
    std::vector<const Element*> templates;
    const Node* current = first;
    while (current) {
      if (const Node* inside = open(*current)) {
        if (inside->type() == NodeType::DocumentFragment)
          templates.push_back(static_cast<const Element*>(current));
        if (inside->first_child()) {
          current = inside->first_child();
          continue;
        }
        current = leave(*inside, templates);
      }
      current = next(*current, only, container, templates);
    }
  }

  // Closes upwards until something follows.
  const Node* next(const Node& node, const Node* only, const Node* container,
                   std::vector<const Element*>& templates) {
    const Node* current = &node;
    for (;;) {
      if (current == only) return nullptr;
      if (current->next_sibling()) return current->next_sibling();
      const Node* parent = current->parent();
      if (!parent || (parent == container && templates.empty())) return nullptr;
      current = leave(*parent, templates);
    }
  }

  // Writes the end tag of an element, or of the template whose contents `container` is.
  const Node* leave(const Node& container, std::vector<const Element*>& templates) {
    const Node* node = &container;
    if (container.type() == NodeType::DocumentFragment && !templates.empty()) {
      node = templates.back();
      templates.pop_back();
    }
    out_ += u"</";
    out_ += tag_name(static_cast<const Element&>(*node));
    out_ += u'>';
    return node;
  }

  // Writes a start tag or a whole leaf. Returns what holds the children, null for leaves.
  const Node* open(const Node& node) {
    switch (node.type()) {
      case NodeType::Element: return open_element(static_cast<const Element&>(node));
      case NodeType::Text: text(static_cast<const Text&>(node)); return nullptr;
      case NodeType::Comment:
        out_ += u"<!--";
        out_ += static_cast<const Comment&>(node).data();
        out_ += u"-->";
        return nullptr;
      case NodeType::DocumentType: document_type(static_cast<const DocumentType&>(node)); return nullptr;
      default: return nullptr;
    }
  }

  void document_type(const DocumentType& type) {
    out_ += u"<!DOCTYPE ";
    out_ += type.name();
    // OURS: with its identifiers, or a page written for quirks would be read back without them.
    if (letters_ == Letters::Upper && !(type.public_id().empty() && type.system_id().empty())) {
      out_ += type.public_id().empty() ? u" SYSTEM" : u" PUBLIC";
      if (!type.public_id().empty()) identifier(type.public_id());
      if (!type.system_id().empty()) identifier(type.system_id());
    }
    out_ += u'>';
  }

  void identifier(std::u16string_view id) {
    const char16_t quote = id.find(u'"') == id.npos ? u'"' : u'\'';
    out_ += u' ';
    out_ += quote;
    out_ += id;
    out_ += quote;
  }

  const Node* open_element(const Element& element) {
    out_ += u'<';
    out_ += tag_name(element);
    for (const Attribute& attribute : element.attributes()) {
      out_ += u' ';
      out_ += attribute.name.text();
      out_ += u"=\"";
      escape(attribute.value, true);
      out_ += u'"';
    }
    out_ += u'>';
    if (is_void(element)) return nullptr;
    return element.template_content() ? element.template_content() : &element;
  }

  void text(const Text& node) {
    // OURS: the parser drops a line break right behind these start tags; a second one keeps the text whole.
    if (letters_ == Letters::Upper && node.data().starts_with(u'\n') && !node.previous_sibling() &&
        drops_first_line_break(node.parent())) {
      out_ += u'\n';
    }
    if (holds_raw_text(node.parent())) {
      out_ += node.data();
    } else {
      escape(node.data(), false);
    }
  }

  const std::u16string& tag_name(const Element& element) const {
    return letters_ == Letters::Upper ? element.display_name() : element.name().text();
  }

  void escape(std::u16string_view text, bool in_value) {
    std::size_t copied = 0;
    const auto write = [&](std::size_t at, std::u16string_view reference) {
      out_.append(text, copied, at - copied);
      out_ += reference;
      copied = at + 1;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
      switch (text[i]) {
        case u'&': write(i, u"&amp;"); break;
        case u'\u00A0': write(i, u"&nbsp;"); break;
        case u'<': write(i, u"&lt;"); break;
        case u'>': write(i, u"&gt;"); break;
        case u'"':
          if (in_value) write(i, u"&quot;");
          break;
        default: break;
      }
    }
    out_.append(text, copied, text.npos);
  }

  Letters letters_;
  std::u16string out_;
};

}  // namespace

bool is_void(const Element& element) {
  switch (element.tag()) {
    case Tag::Area:
    case Tag::Base:
    case Tag::Basefont:
    case Tag::Bgsound:
    case Tag::Br:
    case Tag::Col:
    case Tag::Embed:
    case Tag::Frame:
    case Tag::Hr:
    case Tag::Img:
    case Tag::Input:
    case Tag::Keygen:
    case Tag::Link:
    case Tag::Meta:
    case Tag::Param:
    case Tag::Source:
    case Tag::Track:
    case Tag::Wbr: return true;
    default: return false;
  }
}

std::u16string serialise_children(const Node& node, Letters letters) {
  Serialiser serialiser(letters);
  serialiser.children(node);
  return serialiser.take();
}

std::u16string serialise_node(const Node& node, Letters letters) {
  Serialiser serialiser(letters);
  serialiser.node(node);
  return serialiser.take();
}

}  // namespace tvx::dom
