#include "tvx/dom/style/style_sheet.h"

#include "tvx/base/error.h"
#include "tvx/base/text.h"
#include "tvx/base/text_file.h"
#include "tvx/base/url.h"
#include "tvx/core/chrome/menus.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/style_engine.h"

/// CSSText and its three roads: an address elsewhere, a local file, or the text itself. All end in the
/// document's first style sheet, which is the template's link.
namespace tvx::core {
namespace {

constexpr std::uint32_t unescape = 0x10000000;

std::u16string with_slashes(std::u16string_view path) { return ReplaceAll(u"\\", u"/", path, true); }

}  // namespace

void HTMLed::set_CSSText(std::u16string_view text) {
  properties_.CSSText = text;
  if (run_time() && docHTML_) ApplyStyleSheet();
  PropertyChanged(u"CSSText");
}

void HTMLed::ApplyStyleSheet() {
  if (!run_time()) return;
  const std::u16string text = properties_.CSSText;
  if (!properties_.CSShttp || text.empty())
    apply_style_text();
  else if (ascii_lower(std::u16string_view(text).substr(0, 8)) != u"file:///")
    apply_remote_style_sheet();
  else
    apply_local_style_sheet();
  watch_download_ = false;
  attempt([&] { LoadStyleClasses(); });
}

// A sheet that can't be had ends the wait like one that can: the download is over in both cases.
void HTMLed::apply_remote_style_sheet() {
  watch_download_ = true;
  if (!attempt([&] { set_sheet_address(properties_.CSSText); })) return;
  attempt([&] {
    while (!download_done_) Wait();
  });
}

// A copy, so that the browser sees a new file each time.
void HTMLed::apply_local_style_sheet() {
  const std::u16string source = DecodeURL(std::u16string_view(properties_.CSSText).substr(8));
  const std::u16string copy = temporary_file(style_sheet_file);
  const std::u16string text = ReadTextFile(source).text;
  write_printed_line(copy, text);
  watch_download_ = true;
  attempt([&] { set_sheet_file(CanonicalURL(u"file:///" + with_slashes(copy), unescape), text); });
}

void HTMLed::apply_style_text() {
  const std::u16string path = temporary_file(style_sheet_file);
  write_printed_line(path, properties_.CSSText);
  watch_download_ = true;
  attempt([&] { set_sheet_file(u"file:///" + with_slashes(path), properties_.CSSText); });
}

std::shared_ptr<dom::style::StyleSheet> HTMLed::first_sheet() const {
  const auto& sheets = dom::style::style_of(document().tree()).sheets();
  if (sheets.empty()) throw RuntimeError(errors::invalid_call, u"The document has no style sheet");
  return sheets.front();
}

void HTMLed::set_sheet_address(std::u16string_view address) {
  const auto kept = docHTML_;
  const auto sheet = first_sheet();
  // How the document looks is no edit of it.
  const dom::MutationScope scope(document().tree(), dom::MutationKind::Load);
  sheet->set_href(address);
}

// The browser will load the file in a turn of its own. What stands in it counts at once, so that its classes
// are in the menus when the caller looks.
void HTMLed::set_sheet_file(std::u16string_view address, std::u16string_view text) {
  set_sheet_address(address);
  first_sheet()->set_css_text(text);
}

void HTMLed::LoadStyleClasses() {
  style_classes_.clear();
  active_style_sheet_.reset();
  const auto& sheets = dom::style::style_of(document().tree()).sheets();
  if (!sheets.empty()) {
    active_style_sheet_ = sheets.front();
    style_classes_ = style_classes_of(*active_style_sheet_);
  }
  menus_->show_classes(style_classes_);
}

}  // namespace tvx::core
