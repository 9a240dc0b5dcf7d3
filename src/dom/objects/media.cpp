#include "tvx/dom/objects/media.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/url.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/address.h"
#include "tvx/dom/objects/reflection.h"

namespace tvx::dom {

namespace {

void expect_tag(const Element& element, std::initializer_list<Tag> tags) {
  for (const Tag tag : tags)
    if (element.is(tag)) return;
  throw RuntimeError(errors::type_mismatch, u"The element is of another kind");
}

std::u16string address(const Element& element, Name name, std::u16string_view document_address) {
  return absolute_address(document_of(element), document_address, element.attribute_or_empty(name));
}

}  // namespace

// --- images ---

ImageObject::ImageObject(Element& image, std::u16string_view document_address,
                         std::optional<PixelSize> natural)
    : element_(image), document_address_(document_address), natural_(natural) {
  expect_tag(image, {Tag::Img, Tag::Input});
}

std::u16string ImageObject::src() const { return address(*element_, names::src, document_address_); }
void ImageObject::set_src(std::u16string_view value) { set_reflected_text(*element_, names::src, value); }
std::u16string ImageObject::protocol() const { return protocol_of(src()); }

std::int32_t ImageObject::size(Name name, std::int32_t PixelSize::*side) const {
  const std::int32_t own = natural_ ? (*natural_).*side : 0;
  if (trimmed(element_->attribute_or_empty(name)).ends_with(u'%')) return own;
  return reflected_number(*element_, name, 0, own);
}
std::int32_t ImageObject::width() const { return size(names::width, &PixelSize::width); }
std::int32_t ImageObject::height() const { return size(names::height, &PixelSize::height); }
void ImageObject::set_width(std::int32_t pixels) { set_reflected_number(*element_, names::width, pixels, 0); }
void ImageObject::set_height(std::int32_t pixels) {
  set_reflected_number(*element_, names::height, pixels, 0);
}

std::u16string ImageObject::alt() const { return reflected_text(*element_, names::alt); }
void ImageObject::set_alt(std::u16string_view value) { set_reflected_text(*element_, names::alt, value); }
std::u16string ImageObject::border() const { return reflected_text(*element_, names::border); }
void ImageObject::set_border(std::u16string_view value) { set_or_remove(*element_, names::border, value); }
std::u16string ImageObject::align() const { return reflected_text(*element_, names::align); }
void ImageObject::set_align(std::u16string_view value) {
  set_enumerated(*element_, names::align, value,
                 {u"absbottom", u"absmiddle", u"baseline", u"bottom", u"center", u"left", u"middle", u"right",
                  u"texttop", u"top"});
}
std::u16string ImageObject::name() const { return reflected_text(*element_, names::name); }
void ImageObject::set_name(std::u16string_view value) { set_reflected_text(*element_, names::name, value); }

// --- links ---

LinkObject::LinkObject(Element& link, std::u16string_view document_address)
    : element_(link), document_address_(document_address) {
  expect_tag(link, {Tag::A, Tag::Area, Tag::Link});
}

std::u16string LinkObject::href() const { return address(*element_, names::href, document_address_); }
void LinkObject::set_href(std::u16string_view value) { set_reflected_text(*element_, names::href, value); }

std::u16string LinkObject::hash() const {
  const std::u16string whole = href();
  const std::size_t mark = whole.find(u'#');
  return mark == whole.npos || mark + 1 == whole.size() ? std::u16string() : whole.substr(mark);
}

void LinkObject::set_hash(std::u16string_view value) {
  std::u16string written(element_->attribute_or_empty(names::href));
  written.resize(std::min(written.find(u'#'), written.size()));
  if (!value.empty() && !value.starts_with(u'#')) written += u'#';
  set_href(written.append(value));
}

std::u16string LinkObject::protocol() const { return protocol_of(href()); }
std::u16string LinkObject::target() const { return reflected_text(*element_, names::target); }
void LinkObject::set_target(std::u16string_view value) { set_or_remove(*element_, names::target, value); }
std::u16string LinkObject::name() const { return reflected_text(*element_, names::name); }
void LinkObject::set_name(std::u16string_view value) { set_reflected_text(*element_, names::name, value); }

// --- the base ---

BaseObject::BaseObject(Element& base) : element_(base) { expect_tag(base, {Tag::Base}); }

std::u16string BaseObject::href() const {
  const std::u16string written = reflected_text(*element_, names::href);
  return resolve_url(trimmed(written), u"").value_or(written);
}
void BaseObject::set_href(std::u16string_view value) { set_reflected_text(*element_, names::href, value); }
std::u16string BaseObject::target() const { return reflected_text(*element_, names::target); }
void BaseObject::set_target(std::u16string_view value) { set_or_remove(*element_, names::target, value); }

}  // namespace tvx::dom
