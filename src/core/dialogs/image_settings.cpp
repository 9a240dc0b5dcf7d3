#include "tvx/core/dialogs/image_settings.h"

#include "tvx/base/error.h"
#include "tvx/base/numbers.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/natural_size.h"
#include "tvx/core/dialogs/fetched_picture.h"
#include "tvx/core/observer.h"
#include "tvx/core/views/selection_highlight.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/objects/media.h"
#include "tvx/dom/objects/reflection.h"

namespace tvx::core {
namespace {

using dom::ImageObject;

/// An image as its properties read: with the size that the picture has by itself where none is written.
ImageObject image_of(dom::Element& element, const browser::HTMLDocument& document) {
  std::optional<dom::PixelSize> natural;
  if (const auto size = document.natural_size(element)) natural = {size->width, size->height};
  return ImageObject(element, document.url(), natural);
}

using Side = dialogs::ImageDialog::Side;

struct SizeField {
  Side side;
  std::u16string_view box;
  dom::Name attribute;
  std::int32_t (ImageObject::*read)() const;
  void (ImageObject::*write)(std::int32_t);
};

const SizeField& height_field() {
  static const SizeField field{Side::Height, u"txtHeight", dom::names::height, &ImageObject::height,
                               &ImageObject::set_height};
  return field;
}
const SizeField& width_field() {
  static const SizeField field{Side::Width, u"txtWidth", dom::names::width, &ImageObject::width,
                               &ImageObject::set_width};
  return field;
}

/// What the attribute says in percent; nothing where it doesn't.
std::optional<std::int32_t> percentage(const dom::Element& element, dom::Name attribute) {
  const std::u16string_view text = trimmed(element.attribute_or_empty(attribute));
  if (!text.ends_with(u'%')) return {};
  return rounded_to_32_bits(typed_number(text));
}

void show_size(dialogs::ImageDialog& dialog, const SizeField& field, const dom::Element& element,
               const ImageObject& image) {
  const auto part = percentage(element, field.attribute);
  dialog.show_size(field.side, part.value_or((image.*field.read)()), part.has_value());
}

void fill(dialogs::ImageDialog& dialog, const dom::Element& element, const ImageObject& image,
          const std::u16string& base) {
  platform::Form& form = dialog.form();
  const auto show = [&form](std::u16string_view box, const std::u16string& text) {
    attempt([&] { form.Controls(box).set_Text(text); });
  };
  attempt([&] { show_size(dialog, height_field(), element, image); });
  attempt([&] { show_size(dialog, width_field(), element, image); });
  show(u"txtAltText", image.alt());
  attempt([&] { dialog.SetProp(image.width(), image.height()); });
  show(u"txtBorder", image.border());
  const std::u16string src = image.src();
  show(u"txtSrc", base.empty() ? src : ReplaceAll(base, u"", src, false));
  form.set_Caption(form.Caption() + u"(" + src + u")");
  show(u"cboAlign", image.align());
}

// What reads already as it stands in its box isn't written: a size that the picture has by itself stays its
// own, and an address keeps its form.
void write_size(dialogs::ImageDialog& dialog, const SizeField& field, dom::Element& element,
                ImageObject& image) {
  const std::int32_t number = rounded_to_32_bits(number_of(dialog.form().Controls(field.box).Text()));
  const auto part = percentage(element, field.attribute);
  if (dialog.is_of_the_room(field.side)) {
    if (number != part) dom::set_attribute(element, field.attribute, to_text(number) + u"%");
  } else if (part || number != (image.*field.read)()) {
    (image.*field.write)(number);
  }
}

void write(dialogs::ImageDialog& dialog, dom::Element& element, ImageObject& image) {
  const platform::Form& form = dialog.form();
  const auto text = [&form](std::u16string_view box) { return form.Controls(box).Text(); };
  attempt([&] { write_size(dialog, height_field(), element, image); });
  attempt([&] { write_size(dialog, width_field(), element, image); });
  attempt([&] {
    if (text(u"txtSrc") != image.src()) image.set_src(text(u"txtSrc"));
  });
  attempt([&] { image.set_alt(text(u"txtAltText")); });
  attempt([&] { image.set_border(text(u"txtBorder")); });
  attempt([&] { image.set_align(text(u"cboAlign")); });
}

void reset_size(dom::Element& element) {
  dom::remove_attribute_named(element, u"width");
  dom::remove_attribute_named(element, u"height");
}

}  // namespace

// The inline style goes before the dialog is shown, and stays gone whatever the user does. With what is
// confirmed it is one step, unless something else has come in between.
bool ImageSettings::EditImageProperties() {
  const KeepAlive alive(context_);
  const dom::Ref<dom::Element> element = highlight_.element();
  if (!element) return true;
  const auto shown = DOM();
  dom::Journal& journal = dom::document_of(*element).journal();
  const std::size_t before = journal.depth();
  attempt([&] {
    const dom::UndoStep step(journal, u"Image Settings");
    dom::remove_attribute(*element, dom::names::style);
  });
  highlight_.set_element(element);
  const std::size_t depth = journal.depth();
  FetchedPicture fetched(context_);
  const auto find_picture = [&](std::u16string_view address) -> dialogs::ImageDialog::Picture {
    const std::u16string whole = shown->absolute_url(address), path = browser::picture_path(whole);
    if (whole != ImageObject(*element, shown->url()).src()) return {path, browser::natural_size(whole)};
    return {path.empty() ? fetched.path() : path, shown->natural_size(*element)};
  };
  dialogs::ImageDialog dialog(surroundings().dialogs, find_picture);
  // Only what the view has had is asked for: what may not be loaded isn't, and no server hears anything new.
  if (shown->natural_size(*element))
    fetched.fetch(ImageObject(*element, shown->url()).src(), [&dialog] { dialog.show_picture(); });
  attempt([&] {
    fill(dialog, *element, image_of(*element, *shown),
         properties_.relativeURLs ? properties_.BaseURL : std::u16string());
  });
  if (!attempt([&] { context_.show_dialog(dialog.form(), u"ImageSettings"); })) return false;
  const bool joins = depth != before && journal.depth() == depth;
  const dom::UndoStep step(journal, u"Image Settings",
                           joins ? dom::StepJoin::LastStep : dom::StepJoin::Never);
  if (dialog.form().Controls(u"txtHeight").Text() == u"Reset") return reset_size(*element), true;
  if (dialog.form().Controls(u"txtWidth").Text() == u"-1") return true;
  attempt([&] {
    ImageObject image = image_of(*element, *shown);
    write(dialog, *element, image);
  });
  context_.tell([](HTMLedObserver& observer) { observer.document_changed(); });
  return false;
}

}  // namespace tvx::core
