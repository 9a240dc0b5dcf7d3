#include "tvx/editing/walk/hard_spaces.h"

#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"

namespace tvx::editing {

namespace {

constexpr char16_t hard_space = u'\u00A0';

bool is_space(char16_t c) { return is_ascii_space(c) || c == hard_space; }

bool stands_between_words(std::u16string_view text, Offset at) {
  return at > 0 && at + 1 < text.size() && !is_space(text[at - 1]) && !is_space(text[at + 1]);
}

}  // namespace

bool is_hard_space(std::u16string_view text, Offset at) {
  return text[at] == hard_space && stands_between_words(text, at);
}

HardSpaceKeeper::HardSpaceKeeper(const dom::Range& deleted) {
  note(deleted.start, true);
  note(deleted.end, false);
}

void HardSpaceKeeper::note(const dom::Boundary& place, bool before) {
  auto* text = dom::as<dom::Text>(place.node);
  if (!text || (before ? place.offset == 0 : place.offset >= text->length())) return;
  const Offset at = before ? place.offset - 1 : place.offset;
  if (is_hard_space(text->data(), at))
    kept_.push_back(
        std::make_unique<dom::LiveRange>(dom::document_of(*text), dom::Range{{text, at}, {text, at + 1}}));
}

void HardSpaceKeeper::put_back() {
  for (const auto& kept : kept_) {
    const dom::Boundary place = kept->start();
    auto* text = dom::as<dom::Text>(place.node);
    if (!text || kept->end() != dom::Boundary{text, place.offset + 1}) continue;
    if (text->data()[place.offset] != u' ' || !stands_between_words(text->data(), place.offset)) continue;
    // Written before what it replaces, so that a caret after that stays there.
    dom::replace_data(*text, place.offset, 0, std::u16string_view(&hard_space, 1));
    dom::replace_data(*text, place.offset + 1, 1, u"");
  }
}

}  // namespace tvx::editing
