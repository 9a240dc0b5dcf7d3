#include "tvx/core/dialogs/image_settings.h"

#include "tvx/base/error.h"
#include "tvx/base/numbers.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/natural_size.h"
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
  if (const auto size = browser::natural_size(ImageObject(element, document.url()).src()))
    natural = {size->width, size->height};
  return ImageObject(element, document.url(), natural);
}

void fill(dialogs::ImageDialog& dialog, const ImageObject& image, const std::u16string& base) {
  platform::Form& form = dialog.form();
  const auto show = [&form](std::u16string_view box, const std::u16string& text) {
    attempt([&] { form.Controls(box).set_Text(text); });
  };
  show(u"txtHeight", to_text(image.height()));
  show(u"txtWidth", to_text(image.width()));
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
void write(const platform::Form& form, ImageObject& image) {
  const auto text = [&form](std::u16string_view box) { return form.Controls(box).Text(); };
  attempt([&] {
    const std::int32_t height = rounded_to_32_bits(number_of(text(u"txtHeight")));
    if (height != image.height()) image.set_height(height);
  });
  attempt([&] {
    const std::int32_t width = rounded_to_32_bits(number_of(text(u"txtWidth")));
    if (width != image.width()) image.set_width(width);
  });
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
  const auto find_picture = [&](std::u16string_view address) -> dialogs::ImageDialog::Picture {
    const std::u16string whole = shown->absolute_url(address);
    return {browser::picture_path(whole), browser::natural_size(whole)};
  };
  dialogs::ImageDialog dialog(surroundings().dialogs, find_picture);
  attempt([&] {
    fill(dialog, image_of(*element, *shown),
         properties_.relativeURLs ? properties_.BaseURL : std::u16string());
  });
  if (!attempt([&] { context_.show_dialog(dialog.form(), u"ImageSettings"); })) return true;
  const bool joins = depth != before && journal.depth() == depth;
  const dom::UndoStep step(journal, u"Image Settings",
                           joins ? dom::StepJoin::LastStep : dom::StepJoin::Never);
  if (dialog.form().Controls(u"txtHeight").Text() == u"Reset") return reset_size(*element), true;
  if (dialog.form().Controls(u"txtWidth").Text() == u"-1") return true;
  attempt([&] {
    ImageObject image = image_of(*element, *shown);
    write(dialog.form(), image);
  });
  return false;
}

}  // namespace tvx::core
