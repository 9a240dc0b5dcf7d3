#include "tvx/dom/print_tree.h"

#include <algorithm>

#include "tvx/dom/document.h"

namespace tvx::dom {
namespace {

std::u16string_view prefix_of(Namespace name_space) {
  switch (name_space) {
    case Namespace::Html: return u"";
    case Namespace::Svg: return u"svg ";
    case Namespace::MathMl: return u"math ";
  }
  return u"";
}

// "xlink:href" is printed "xlink href"; "xmlns" alone has no prefix of its own.
std::u16string printed_name(const Attribute& attribute) {
  std::u16string name = attribute.name.text();
  if (attribute.name_space == AttributeNamespace::None) return name;
  const std::size_t colon = name.find(u':');
  if (colon == name.npos) return u"xmlns " + name;
  name[colon] = u' ';
  return name;
}

class Printer {
 public:
  void children_of(const Node& root) {
    // Places to go on at: a node, and its level. A list of our own, since trees may be deep.
    push_children(root, 0);
    while (!open_.empty()) {
      const auto [node, level] = open_.back();
      open_.pop_back();
      if (const Node* next = node->next_sibling()) open_.emplace_back(next, level);
      print(*node, level);
      push_children(*node, level + 1);
      const auto* element = as<Element>(node);
      if (!element || !element->template_content()) continue;
      line(level + 1, u"content");
      push_children(*element->template_content(), level + 2);
    }
  }

  std::u16string take() {
    if (!out_.empty()) out_.pop_back();
    return std::move(out_);
  }

 private:
  void push_children(const Node& node, std::size_t level) {
    if (node.first_child()) open_.emplace_back(node.first_child(), level);
  }

  void line(std::size_t level, std::u16string_view text) {
    out_ += u"| ";
    out_.append(2 * level, u' ');
    out_ += text;
    out_ += u'\n';
  }

  void print(const Node& node, std::size_t level) {
    switch (node.type()) {
      case NodeType::Element: element(static_cast<const Element&>(node), level); break;
      case NodeType::Text: line(level, u'"' + static_cast<const Text&>(node).data() + u'"'); break;
      case NodeType::Comment:
        line(level, u"<!-- " + static_cast<const Comment&>(node).data() + u" -->");
        break;
      case NodeType::DocumentType: document_type(static_cast<const DocumentType&>(node), level); break;
      case NodeType::Document:
      case NodeType::DocumentFragment: break;
    }
  }

  void element(const Element& element, std::size_t level) {
    line(level, u'<' + std::u16string(prefix_of(element.name_space())) + element.name().text() + u'>');
    std::vector<std::pair<std::u16string, const std::u16string*>> attributes;
    for (const Attribute& attribute : element.attributes())
      attributes.emplace_back(printed_name(attribute), &attribute.value);
    std::sort(attributes.begin(), attributes.end());
    for (const auto& [name, value] : attributes) line(level + 1, name + u"=\"" + *value + u'"');
  }

  void document_type(const DocumentType& type, std::size_t level) {
    std::u16string text = u"<!DOCTYPE " + type.name();
    if (!type.public_id().empty() || !type.system_id().empty())
      text += u" \"" + type.public_id() + u"\" \"" + type.system_id() + u'"';
    line(level, text + u'>');
  }

  std::u16string out_;
  std::vector<std::pair<const Node*, std::size_t>> open_;
};

}  // namespace

std::u16string print_tree(const Node& node) {
  Printer printer;
  printer.children_of(node);
  return printer.take();
}

}  // namespace tvx::dom
