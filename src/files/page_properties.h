#pragma once

#include <string>
#include <vector>

namespace tvx::dom {
class Document;
class Element;
}  // namespace tvx::dom

namespace tvx::files {

/// What a page says of itself as a whole, in its head and on its body. Empty is not said at all.
struct PageProperties {
  struct Sheet {
    bool linked = false;
    std::u16string text;        // the address of a linked sheet, the rules of one that stands in the page
    std::size_t number = none;  // among the sheets of the page; none: it is new
    static constexpr std::size_t none = std::size_t(-1);
    friend bool operator==(const Sheet&, const Sheet&) = default;
  };

  std::u16string title, language, charset, base, description, keywords;
  std::u16string background, text, link, visited, background_image;
  std::vector<Sheet> sheets;
  friend bool operator==(const PageProperties&, const PageProperties&) = default;
};

PageProperties page_properties(const dom::Document& document);

/// Writes what is otherwise than the page has it, in one step of undo; nothing is written where all is the
/// same. Colours go where the page has them already, attribute or style. A page that is taken the last word
/// of something loses the element that said it.
void set_page_properties(dom::Document& document, const PageProperties& properties);

}  // namespace tvx::files
