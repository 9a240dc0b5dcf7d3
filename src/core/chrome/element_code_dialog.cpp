#include "tvx/core/chrome/element_code_dialog.h"

#include <algorithm>

#include "tvx/base/relative_address.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/dom/mutation.h"

namespace tvx::core {

using platform::FormControl;

namespace {

constexpr std::u16string_view refused[] = {u"caption", u"col",   u"tbody",    u"colgroup", u"html",
                                           u"head",    u"body",  u"frameset", u"td",       u"tfoot",
                                           u"th",      u"thead", u"tr"};

std::u16string on_one_line(std::u16string_view text) {
  const std::u16string joined = ReplaceAll(u"\r\n", u"", text, true);
  return ReplaceAll(u"\n", u"", joined, true);
}

/// The attribute with the address; null for elements that are edited without one.
const dom::Name* address_of(const dom::Element& element) {
  if (element.is(dom::Tag::A)) return &dom::names::href;
  if (element.is(dom::Tag::Img) || element.is(dom::Tag::Script)) return &dom::names::src;
  const bool is_image_field =
      element.is(dom::Tag::Input) &&
      equals_ignoring_ascii_case(element.attribute_or_empty(dom::names::type), u"image");
  return is_image_field ? &dom::names::src : nullptr;
}

/// The name in a tag: "P" of "<P id=x>".
std::u16string_view name_in(std::u16string_view tag) {
  return tag.starts_with(u'<') ? tag.substr(1, tag.find_first_of(u" \t\r\n/>") - 1) : std::u16string_view();
}

/// What follows the start tag, with the end tag of the new name: an old one would make an element of its own.
std::u16string with_end_tag(std::u16string_view remainder, std::u16string_view old_name,
                            std::u16string_view new_name) {
  const std::size_t end = remainder.rfind(u"</");
  const bool is_own = end != remainder.npos && !new_name.empty() &&
                      equals_ignoring_ascii_case(remainder.substr(end + 2), std::u16string(old_name) + u">");
  if (!is_own || equals_ignoring_ascii_case(old_name, new_name)) return std::u16string(remainder);
  return std::u16string(remainder.substr(0, end)) + u"</" + std::u16string(new_name) + u">";
}

}  // namespace

ElementCodeDialog::ElementCodeDialog() {
  form_.add_text_box(u"txtEleCode");
  form_.set_default_button(form_.add_closing_button(u"OKButton", u"OK"));
  form_.set_cancel_button(form_.add_closing_button(u"CancelButton", u"Cancel"));
  form_.set_handler(this);
}

void ElementCodeDialog::set_outerHTML(std::u16string_view html) {
  const std::size_t end = std::min(html.find(u'>'), html.size() - 1) + 1;
  tag_ = html.substr(0, end);
  remainder_ = html.substr(end);
  shown_ = on_one_line(tag_);
  form_.Controls(u"txtEleCode").set_Text(shown_);
}

std::u16string ElementCodeDialog::outerHTML() const {
  const std::u16string& text = form_.Controls(u"txtEleCode").Text();
  if (text == shown_) return tag_ + remainder_;
  return text + with_end_tag(remainder_, name_in(tag_), name_in(text));
}

void ElementCodeDialog::Click(FormControl& button) {
  if (&button == form_.cancel_button()) booCancel_ = true;
  form_.Hide();
}

bool refuses_new_tag(std::u16string_view tag) { return std::ranges::find(refused, tag) != std::end(refused); }

void make_address_relative(dom::Element& element, std::u16string_view base) {
  const dom::Name* name = address_of(element);
  const std::u16string* address = name ? element.attribute(*name) : nullptr;
  if (!address || address->empty()) return;
  if (const auto rest = without_base(*address, base)) dom::set_attribute(element, *name, *rest);
}

}  // namespace tvx::core
