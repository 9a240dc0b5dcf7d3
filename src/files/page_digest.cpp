#include "tvx/files/page_digest.h"

#include <cstring>
#include <string_view>
#include <vector>

#include "tvx/dom/document.h"

namespace tvx::files {
namespace {

using dom::Node;

std::uint64_t mixed(std::uint64_t state, std::uint64_t word) {
  state = (state ^ word) * 0x9E37'79B9'7F4A'7C15;
  return state ^ (state >> 29);
}

/// Two streams: all letters one after the other, so that it doesn't matter into how many nodes a text is
/// divided, and what stands between them, each with the number of letters before it.
class Digest {
 public:
  void letters(std::u16string_view text) {
    written_ += text.size();
    for (; waiting_ % letters_of_a_word != 0 && !text.empty(); text.remove_prefix(1)) add(text.front());
    for (; text.size() >= letters_of_a_word; text.remove_prefix(letters_of_a_word)) {
      std::uint64_t word;
      std::memcpy(&word, text.data(), sizeof word);
      letters_ = mixed(letters_, word);
    }
    for (const char16_t c : text) add(c);
  }

  void mark(std::uint64_t what) { marks_ = mixed(mixed(marks_, written_), what); }

  std::uint64_t value() const { return mixed(mixed(letters_, mixed(word_, waiting_)), marks_); }

 private:
  static constexpr std::size_t letters_of_a_word = sizeof(std::uint64_t) / sizeof(char16_t);

  void add(char16_t c) {
    word_ |= static_cast<std::uint64_t>(c) << (16 * waiting_);
    if (++waiting_ < letters_of_a_word) return;
    letters_ = mixed(letters_, word_);
    word_ = waiting_ = 0;
  }

  std::uint64_t letters_ = 1, marks_ = 2, word_ = 0;
  std::size_t waiting_ = 0;  // letters in `word_`
  std::uint64_t written_ = 0;
};

constexpr std::uint64_t end = 1, contents = 2, kinds = 3;

void mark_text(Digest& digest, std::u16string_view text) {
  digest.letters(text);
  digest.mark(text.size());
}

void open(Digest& digest, const Node& node) {
  if (const auto* text = dom::as<dom::Text>(&node)) return digest.letters(text->data());
  digest.mark(kinds + static_cast<std::uint64_t>(node.type()));
  if (const auto* data = dom::as<dom::CharacterData>(&node)) return mark_text(digest, data->data());
  if (const auto* type = dom::as<dom::DocumentType>(&node)) {
    for (const auto& part : {type->name(), type->public_id(), type->system_id()}) mark_text(digest, part);
    return;
  }
  const auto* element = dom::as<dom::Element>(&node);
  if (!element) return;
  digest.mark(reinterpret_cast<std::uintptr_t>(element->name().key()));
  digest.mark(static_cast<std::uint64_t>(element->name_space()));
  for (const dom::Attribute& attribute : element->attributes()) {
    digest.mark(reinterpret_cast<std::uintptr_t>(attribute.name.key()));
    mark_text(digest, attribute.value);
  }
}

// A text without letters is written as nothing.
void close(Digest& digest, const Node& node) {
  if (!node.is_text()) digest.mark(end);
}

}  // namespace

std::uint64_t page_digest(const dom::Document& document) {
  Digest digest;
  std::vector<const Node*> trees{&document};  // contents of templates hang on trees of their own
  for (std::size_t i = 0; i < trees.size(); ++i) {
    const Node* const root = trees[i];
    digest.mark(contents);
    for (const Node* node = root; node;) {
      open(digest, *node);
      if (const auto* element = dom::as<dom::Element>(node); element && element->template_content())
        trees.push_back(element->template_content());
      if (node->first_child()) {
        node = node->first_child();
        continue;
      }
      close(digest, *node);
      while (node != root && !node->next_sibling()) close(digest, *(node = node->parent()));
      node = node == root ? nullptr : node->next_sibling();
    }
  }
  return digest.value();
}

}  // namespace tvx::files
