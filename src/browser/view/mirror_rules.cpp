#include "tvx/browser/view/mirror_rules.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "tvx/base/strings.h"
#include "tvx/base/work_count.h"
#include "tvx/dom/tree.h"

namespace tvx::browser {
namespace {

using dom::Element;
using dom::Tag;
using SentAttribute = PatchOperation::Attribute;

/// What happens to an attribute, by its name alone.
enum class Fate : std::uint8_t {
  Send,
  Address,       // sent unless it is a script
  AnimatedName,  // SVG's attributeName: sent unless the attribute that it animates is an address
  LeaveOut
};

// Chromium checks names against XML's productions. Only plain ASCII names are let through here: what a
// page can style is there, and nothing depends on which version of Unicode a browser carries.
bool is_plain_name(std::u16string_view name) {
  const auto starts = [](char16_t c) { return is_ascii_alpha(c) || c == u'_' || c == u':'; };
  const auto goes_on = [&](char16_t c) { return starts(c) || is_ascii_digit(c) || c == u'-' || c == u'.'; };
  return !name.empty() && starts(name[0]) && std::all_of(name.begin(), name.end(), goes_on);
}

constexpr std::u16string_view address_attributes[] = {
    u"href",   u"src",      u"background", u"poster",     u"data",     u"cite",    u"longdesc", u"lowsrc",
    u"dynsrc", u"codebase", u"classid",    u"xlink:href", u"manifest", u"profile", u"icon",     u"srcset"};

constexpr std::u16string_view left_out_attributes[] = {
    u"action",     u"formaction",     u"autofocus",    u"contenteditable",
    u"inert",      u"tabindex",       u"accesskey",    u"draggable",
    u"autoplay",   u"ping",           u"crossorigin",  u"integrity",
    u"nonce",      u"srcdoc",         u"popover",      u"popovertarget",
    u"shadowroot", u"shadowrootmode", u"is",           u"http-equiv",
    u"manifest",   u"contextmenu",    u"autocomplete", u"virtualkeyboardpolicy"};

template <std::size_t N>
bool is_one_of(std::u16string_view name, const std::u16string_view (&list)[N]) {
  return std::find(std::begin(list), std::end(list), name) != std::end(list);
}

Fate judge(std::u16string_view lower_name) {
  if (!is_plain_name(lower_name) || lower_name.starts_with(u"on")) return Fate::LeaveOut;
  if (is_one_of(lower_name, left_out_attributes)) return Fate::LeaveOut;
  if (lower_name == u"attributename") return Fate::AnimatedName;
  return is_one_of(lower_name, address_attributes) ? Fate::Address : Fate::Send;
}

/// An attribute name as the view gets it. Judged once for each name of the process.
struct JudgedName {
  std::u16string html_name;  // setAttribute writes small letters on HTML elements
  Fate fate;
};

const JudgedName& judged(dom::Name name) {
  static auto& table = *new std::unordered_map<dom::Name, JudgedName>;
  const auto found = table.find(name);
  if (found != table.end()) return found->second;
  std::u16string lower = ascii_lower(name.text());
  const Fate fate = judge(lower);
  return table.emplace(name, JudgedName{std::move(lower), fate}).first->second;
}

/// Whether an address would run a script: URL standard, section 4.4, drops leading controls and blanks, and
/// tabs and line ends anywhere.
bool is_script_address(std::u16string_view address) {
  std::u16string scheme;
  for (const char16_t c : address) {
    if (c <= u' ' && (scheme.empty() || c == u'\t' || c == u'\n' || c == u'\r')) continue;
    if (c == u':') return scheme == u"javascript" || scheme == u"vbscript" || scheme == u"livescript";
    if (scheme.size() > 10) return false;
    scheme += ascii_lower(c);
  }
  return false;
}

bool is_box(const Element& element) {
  switch (element.tag()) {
    case Tag::Iframe:
    case Tag::Frame:
    case Tag::Object:
    case Tag::Embed:
    case Tag::Applet: return true;
    default: return false;
  }
}

bool is_script(const Element& element) { return ascii_lower(element.name().text()) == u"script"; }

bool is_stylesheet_link(const Element& element) {
  const std::u16string rel = ascii_lower(element.attribute_or_empty(dom::names::rel));
  const auto words = split_on_space(rel);
  return std::find(words.begin(), words.end(), u"stylesheet") != words.end();
}

bool may_send(const Element& element, const dom::Attribute& attribute, const JudgedName& name) {
  if (name.fate == Fate::LeaveOut) return false;
  if (name.fate == Fate::Send) return true;
  // An animation of an address gives it values that nobody has looked at, a script among them.
  if (name.fate == Fate::AnimatedName) return judge(ascii_lower(trimmed(attribute.value))) == Fate::Send;
  if (is_script(element) || is_box(element) || element.is(Tag::Base)) return false;
  if (element.is(Tag::Link) && !is_stylesheet_link(element)) return false;
  return !is_script_address(attribute.value);
}

/// A number of pixels or a percentage as a declaration; nothing for any other text.
std::u16string length_declaration(std::u16string_view property, std::u16string_view value) {
  value = trimmed(value);
  std::size_t digits = 0;
  while (digits < value.size() && is_ascii_digit(value[digits])) ++digits;
  if (digits == 0) return {};
  const bool percent = digits < value.size() && value[digits] == u'%';
  std::u16string text(property);
  return text.append(u":").append(value.substr(0, digits)).append(percent ? u"%;" : u"px;");
}

/// What a box says of itself: the kind of element, and what it would load.
std::u16string box_label(const Element& element) {
  std::u16string label = element.display_name();
  for (const dom::Name name : {dom::names::src, dom::names::data, dom::names::name}) {
    const std::u16string_view value = element.attribute_or_empty(name);
    if (!value.empty()) return label.append(u" ").append(value);
  }
  return label;
}

void add_box_attributes(const Element& element, std::vector<SentAttribute>& sent) {
  std::u16string style = length_declaration(u"width", element.attribute_or_empty(dom::names::width)) +
                         length_declaration(u"height", element.attribute_or_empty(dom::names::height));
  const auto own = std::find_if(sent.begin(), sent.end(), [](auto& a) { return a.name == u"style"; });
  if (own != sent.end()) {
    own->value = style + own->value;
  } else if (!style.empty()) {
    sent.push_back({u"style", std::move(style), {}});
  }
  sent.push_back({u"tvx-label", box_label(element), {}});
}

bool is_hidden_field(const Element& element) {
  return element.is(Tag::Input) &&
         equals_ignoring_ascii_case(element.attribute_or_empty(dom::names::type), u"hidden");
}

/// What a hidden field sends: its name, or what else it is known by, and its value.
std::u16string hidden_label(const Element& element) {
  std::u16string label(element.attribute_or_empty(dom::names::name));
  if (label.empty()) label = element.attribute_or_empty(dom::names::id);
  if (label.empty()) label = u"hidden";
  const std::u16string_view value = element.attribute_or_empty(dom::names::value);
  if (!value.empty()) label.append(u" = ").append(value);
  return label;
}

/// No rule makes the engine show a field of that type: it is sent as a button with its label on it.
void show_hidden_field(const Element& element, std::vector<SentAttribute>& sent) {
  std::erase_if(sent, [](const SentAttribute& attribute) {
    return attribute.name == u"type" || attribute.name == u"value" || attribute.name == u"disabled";
  });
  sent.push_back({u"type", u"button", {}});
  sent.push_back({u"value", hidden_label(element), {}});
  sent.push_back({u"tvx-hidden", u"", {}});
}

}  // namespace

bool is_mirrored(const dom::Node& node) { return node.type() != dom::NodeType::DocumentType; }

std::u16string_view mirrored_name(const Element& element) {
  if (is_box(element)) return u"tvx-box";
  if (element.is(Tag::Frameset)) return u"tvx-frameset";
  if (element.is(Tag::Base)) return u"tvx-base";
  const std::u16string& name = element.name().text();
  if (!is_plain_name(name)) return u"tvx-name";
  // A foreign element is made by its qualified name, where a colon would be a prefix.
  if (!element.is_html() && contains(name, u":")) return u"tvx-name";
  return name;
}

std::vector<SentAttribute> mirrored_attributes(const Element& element) {
  std::vector<SentAttribute> sent;
  sent.reserve(element.attributes().size());
  // No two names of an element are the same. They can only become so where capitals turn small.
  const bool html = element.is_html();
  const bool may_meet =
      html && std::ranges::any_of(element.attributes(), [](const dom::Attribute& attribute) {
        return attribute.name.text() != judged(attribute.name).html_name;
      });
  std::unordered_set<std::u16string_view> names;
  for (const dom::Attribute& attribute : element.attributes()) {
    const JudgedName& name = judged(attribute.name);
    count_work();
    if (!may_send(element, attribute, name)) continue;
    const std::u16string& text = html ? name.html_name : attribute.name.text();
    if (may_meet && !names.insert(text).second) continue;
    sent.push_back({text, attribute.value, attribute.name_space});
  }
  if (is_box(element)) add_box_attributes(element, sent);
  if (is_hidden_field(element)) show_hidden_field(element, sent);
  return sent;
}

bool attributes_depend_on_each_other(const Element& element) {
  return is_box(element) || element.is(Tag::Link) || element.is(Tag::Input);
}

bool mirrors_children(const Element& element) { return !is_box(element) && !is_script(element); }

namespace {

void append_quoted(std::u16string& out, std::u16string_view text) {
  out += u'"';
  for (const char16_t c : text) {
    if (c == u'\n') {
      out += u"\\n";
    } else {
      out += c;
    }
  }
  out += u'"';
}

bool shows_inside(const dom::Node& node) {
  const auto* element = dom::as<Element>(&node);
  return !element || mirrors_children(*element);
}

}  // namespace

void print_element_line(std::u16string& out, std::size_t depth, std::u16string_view name,
                        dom::Namespace name_space, std::vector<SentAttribute> attributes) {
  out.append(depth, u' ').append(u"<");
  if (name_space == dom::Namespace::Svg) out += u"svg ";
  if (name_space == dom::Namespace::MathMl) out += u"math ";
  out += name;
  std::sort(attributes.begin(), attributes.end(), [](auto& a, auto& b) { return a.name < b.name; });
  for (const SentAttribute& attribute : attributes) {
    out.append(u" ").append(attribute.name).append(u"=");
    append_quoted(out, attribute.value);
  }
  out += u">\n";
}

void print_text_line(std::u16string& out, std::size_t depth, bool comment, std::u16string_view data) {
  out.append(depth, u' ');
  if (comment) out += u"!";
  append_quoted(out, data);
  out += u'\n';
}

std::u16string print_mirrored(const dom::Document& document) {
  std::u16string out;
  std::size_t depth = 0;
  const dom::Node* node = document.first_child();
  while (node) {
    if (const auto* element = dom::as<Element>(node)) {
      print_element_line(out, depth, mirrored_name(*element), element->name_space(),
                         mirrored_attributes(*element));
    } else if (const auto* data = dom::as<dom::CharacterData>(node)) {
      print_text_line(out, depth, !node->is_text(), data->data());
    }
    if (node->first_child() && shows_inside(*node)) {
      node = node->first_child();
      ++depth;
      continue;
    }
    while (node && node != &document && !node->next_sibling()) {
      node = node->parent();
      --depth;
    }
    node = node == &document ? nullptr : node->next_sibling();
  }
  return out;
}

}  // namespace tvx::browser
