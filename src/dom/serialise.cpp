#include "tvx/dom/serialise.h"

#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <memory>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "tvx/dom/tree.h"

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

// What is written as a reference, by its character; '"' in values only.
enum class Escape : std::uint8_t { Never, InValue, Always };
constexpr auto escapes = [] {
  std::array<Escape, 0xA1> table{};
  table[u'&'] = table[u'<'] = table[u'>'] = table[0xA0] = Escape::Always;
  table[u'"'] = Escape::InValue;
  return table;
}();

constexpr std::u16string_view reference_of(char16_t c) {
  switch (c) {
    case u'&': return u"&amp;";
    case u'<': return u"&lt;";
    case u'>': return u"&gt;";
    case u'"': return u"&quot;";
    default: return u"&nbsp;";
  }
}

constexpr std::size_t longest_reference = 6;

// Eight units that are compared at once, on any processor that can.
using Eight = std::uint16_t __attribute__((vector_size(16)));

bool holds_escape(Eight units) {
  // Compared with eight of each: not every compiler compares eight with one.
  const auto all = [](std::uint16_t c) { return Eight{} + c; };
  const auto found = (units == all(u'&')) | (units == all(u'<')) | (units == all(u'>')) |
                     (units == all(u'"')) | (units == all(0xA0));
#ifdef __SSE2__
  return _mm_movemask_epi8(std::bit_cast<__m128i>(found)) != 0;
#else
  const auto halves = std::bit_cast<std::array<std::uint64_t, 2>>(found);
  return (halves[0] | halves[1]) != 0;
#endif
}

// Memory of a large text that is about to be written from its start to its end: given at once where a large
// page fits in, and not in 512 pieces, which takes as long as to write the text.
void ask_for_large_pages(const std::u16string& text) {
  constexpr std::size_t large = std::size_t(2) << 20;
  void* from = const_cast<char16_t*>(text.data());
  std::size_t bytes = text.capacity() * sizeof(char16_t);
  if (std::align(large, large, from, bytes)) madvise(from, bytes / large * large, MADV_HUGEPAGE);
}

/// Text that grows at its end. It is put together in a small piece of memory that stays in the processor's
/// cache, so that each page of the whole is written once, from its start to its end, and none for nothing.
class Writer {
 public:
  /// About as many as there will be.
  void reserve(std::size_t units) {
    if (units <= buffer_.size()) return;
    text_.reserve(units);
    ask_for_large_pages(text_);
  }

  void write(char16_t c) {
    if (at_ == limit_) flush();
    *at_++ = c;
  }

  void write(std::u16string_view piece) {
    if (room() < piece.size()) {
      flush();
      if (piece.size() > buffer_.size()) {
        text_.append(piece);
        return;
      }
    }
    if (piece.size() > 16) {
      at_ = std::copy(piece.begin(), piece.end(), at_);
    } else {
      for (const char16_t c : piece) *at_++ = c;  // most are names, and too short for a call
    }
  }

  void write_escaped(std::u16string_view text, Escape least) {
    const char16_t *from = text.data(), *const end = from + text.size();
    for (; end - from >= 8; from += 8) {
      Eight units;
      std::memcpy(&units, from, sizeof units);
      if (holds_escape(units)) {
        write_few(from, from + 8, least);
        continue;
      }
      if (room() < 8) flush();
      std::memcpy(at_, &units, sizeof units);
      at_ += 8;
    }
    write_few(from, end, least);
  }

  std::u16string take() {
    flush();
    return std::move(text_);
  }

 private:
  std::size_t room() const { return static_cast<std::size_t>(limit_ - at_); }

  // No more than eight.
  void write_few(const char16_t* from, const char16_t* end, Escape least) {
    if (room() < 8 * longest_reference) flush();
    char16_t* at = at_;
    for (; from != end; ++from) {
      if (*from >= escapes.size() || escapes[*from] < least) {
        *at++ = *from;
      } else {
        for (const char16_t c : reference_of(*from)) *at++ = c;
      }
    }
    at_ = at;
  }

  void flush() {
    text_.append(buffer_.data(), at_);
    at_ = buffer_.data();
  }

  std::u16string text_;
  std::array<char16_t, 4096> buffer_;
  char16_t* at_ = buffer_.data();
  char16_t* const limit_ = at_ + buffer_.size();
};

// About as many units as the text of these nodes will have. Attributes aren't read: most of the time would be
// spent on waiting for their memory, and what is reserved for nothing is never touched.
constexpr std::size_t usual_attribute = 40;
std::size_t estimated_length(const Node& root) {
  std::size_t length = 64;
  for (const Node* node = &root; node; node = next_in_order(*node, &root)) {
    if (const auto* data = as<CharacterData>(node)) {
      length += data->length() + data->length() / 32 + 8;
    } else if (const auto* element = as<Element>(node)) {
      length += 2 * element->name().text().size() + 5 + usual_attribute * element->attributes().size();
    }
  }
  return length;
}

/// Writes a subtree without recursion: one walk that opens on the way down and closes on the way up.
class Serialiser {
 public:
  explicit Serialiser(Letters letters) : letters_(letters) {}

  std::u16string take() { return out_.take(); }

  void children(const Node& root) {
    const auto* element = as<Element>(&root);
    const Node* container = element && element->template_content() ? element->template_content() : &root;
    out_.reserve(estimated_length(*container));
    walk(container->first_child(), nullptr, container);
  }

  void node(const Node& root) {
    if (root.type() == NodeType::Document || root.type() == NodeType::DocumentFragment) return children(root);
    out_.reserve(estimated_length(root));
    walk(&root, &root, root.parent());
  }

 private:
  // Writes `first` and what follows it under `container`; `only` stops after that one node. Contents of
  // templates hang on another tree, so a template on the way is remembered as the position to come back to.
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
    out_.write(u"</");
    out_.write(tag_name(static_cast<const Element&>(*node)));
    out_.write(u'>');
    return node;
  }

  // Writes a start tag or a whole leaf. Returns what holds the children, null for leaves.
  const Node* open(const Node& node) {
    switch (node.type()) {
      case NodeType::Element: return open_element(static_cast<const Element&>(node));
      case NodeType::Text: text(static_cast<const Text&>(node)); return nullptr;
      case NodeType::Comment:
        out_.write(u"<!--");
        out_.write(static_cast<const Comment&>(node).data());
        out_.write(u"-->");
        return nullptr;
      case NodeType::DocumentType: document_type(static_cast<const DocumentType&>(node)); return nullptr;
      default: return nullptr;
    }
  }

  void document_type(const DocumentType& type) {
    out_.write(u"<!DOCTYPE ");
    out_.write(type.name());
    // OURS: with its identifiers, or a page written for quirks would be read back without them.
    if (letters_ != Letters::Lower && !(type.public_id().empty() && type.system_id().empty())) {
      out_.write(type.public_id().empty() ? u" SYSTEM" : u" PUBLIC");
      if (!type.public_id().empty()) identifier(type.public_id());
      if (!type.system_id().empty()) identifier(type.system_id());
    }
    out_.write(u'>');
  }

  void identifier(std::u16string_view id) {
    const char16_t quote = id.find(u'"') == id.npos ? u'"' : u'\'';
    out_.write(u' ');
    out_.write(quote);
    out_.write(id);
    out_.write(quote);
  }

  const Node* open_element(const Element& element) {
    out_.write(u'<');
    out_.write(tag_name(element));
    for (const Attribute& attribute : element.attributes()) {
      out_.write(u' ');
      out_.write(attribute.name.text());
      out_.write(u"=\"");
      out_.write_escaped(attribute.value, Escape::InValue);
      out_.write(u'"');
    }
    out_.write(u'>');
    if (is_void(element)) return nullptr;
    return element.template_content() ? element.template_content() : &element;
  }

  void text(const Text& node) {
    // OURS: the parser drops a line break right after these start tags; a second one keeps the text whole.
    if (letters_ != Letters::Lower && node.data().starts_with(u'\n') && !node.previous_sibling() &&
        drops_first_line_break(node.parent())) {
      out_.write(u'\n');
    }
    if (holds_raw_text(node.parent())) {
      out_.write(node.data());
    } else {
      out_.write_escaped(node.data(), Escape::Always);
    }
  }

  const std::u16string& tag_name(const Element& element) const {
    return letters_ == Letters::Upper ? element.display_name() : element.name().text();
  }

  Letters letters_;
  Writer out_;
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
