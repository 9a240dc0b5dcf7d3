#include "tvx/core/content/style_sheet.h"

#include <algorithm>
#include <filesystem>

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/base/text_file.h"
#include "tvx/base/url.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/content/templates.h"
#include "tvx/core/content/temporary_files.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/style/style_engine.h"
#include "tvx/dom/style/style_sheet.h"

namespace tvx::core {
namespace {

constexpr std::uint32_t unescape = 0x10000000;

/// Hosts know the address of a copied sheet in its canonical form. Of a path in which something is escaped
/// that form would be another path.
std::u16string canonical_address(std::u16string_view path) {
  const std::u16string plain = ReplaceAll(u"\\", u"/", path, true), escaped = path_in_address(path);
  return plain == escaped ? CanonicalURL(u"file:///" + plain, unescape) : u"file:///" + escaped;
}

std::shared_ptr<dom::style::StyleSheet> first_sheet(browser::HTMLDocument& document) {
  const auto& sheets = dom::style::style_of(document.tree()).sheets();
  if (sheets.empty()) throw RuntimeError(errors::invalid_call, u"The document has no style sheet");
  return sheets.front();
}

}  // namespace

void StyleSheetBinding::ApplyStyleSheet() {
  if (!run_time()) return;
  const std::u16string text = properties_.CSSText;
  if (!properties_.CSShttp || text.empty())
    apply_text();
  else if (ascii_lower(std::u16string_view(text).substr(0, 8)) != u"file:///")
    apply_remote();
  else
    apply_local();
  watch_download_ = false;
  attempt([&] { LoadStyleClasses(); });
}

// A sheet that can't be had ends the wait like one that can: the download is over in both cases. There is
// none to wait for where the document's first sheet is no link.
void StyleSheetBinding::apply_remote() {
  watch_download_ = true;
  if (!attempt([&] { set_address(properties_.CSSText); })) return;
  attempt([&] { context_.wait_while([&] { return !download_done_; }); });
}

// A copy, so that the browser sees a new file each time.
void StyleSheetBinding::apply_local() {
  const std::u16string source = DecodeURL(std::u16string_view(properties_.CSSText).substr(8));
  const std::u16string copy = own_file();
  const FileText read = ReadTextFile(source, largest_sheet);
  const std::u16string& text = read.text;
  // A sheet that isn't there is no error. One that is there and isn't read would be a riddle.
  std::error_code ignored;
  if (!read.complete() && std::filesystem::exists(file_system_path(source), ignored))
    raise_error(errors::path_access, u"Can't read " + source + u": " + from_utf8(read.failure));
  write_printed_line(copy, text);
  watch_download_ = true;
  attempt([&] { set_file(canonical_address(copy), text); });
}

void StyleSheetBinding::apply_text() {
  const std::u16string path = own_file();
  write_printed_line(path, properties_.CSSText);
  watch_download_ = true;
  attempt([&] { set_file(u"file:///" + path_in_address(path), properties_.CSSText); });
}

void StyleSheetBinding::set_address(std::u16string_view address) {
  const auto kept = DOM();
  const auto sheet = first_sheet(document());
  // How the document looks is no edit of it.
  const dom::MutationScope scope(document().tree(), dom::MutationKind::Load);
  sheet->set_href(address);
}

// The browser will load the file in a turn of its own. What stands in it counts at once, so that its classes
// are in the menus when the caller looks.
void StyleSheetBinding::set_file(std::u16string_view address, std::u16string_view text) {
  set_address(address);
  first_sheet(document())->set_css_text(text);
}

void StyleSheetBinding::LoadStyleClasses() {
  classes_.clear();
  active_.reset();
  const auto& sheets = dom::style::style_of(document().tree()).sheets();
  if (!sheets.empty()) {
    active_ = sheets.front();
    classes_ = style_classes_of(*active_);
  }
  if (tell_classes_) tell_classes_(classes_);
}

std::u16string StyleSheetBinding::own_file() const {
  return temporary_file(surroundings().hwnd, style_sheet_file);
}

void StyleSheetBinding::write_first_file() {
  if (properties_.CSShttp) return;
  path_ = own_file();
  write_printed_line(path_, properties_.CSSText);
}

void StyleSheetBinding::adopt_settings() {
  LoadStyleClasses();
  properties_.CSSText.clear();
  properties_.CSShttp = false;
  if (!active_) return;
  const std::u16string address = active_->href();
  properties_.CSShttp = !address.empty();
  properties_.CSSText = address.empty() ? active_->css_text() : address;
}

std::u16string StyleSheetBinding::class_at(std::int16_t index) const {
  const auto found = std::ranges::find(classes_, index, &StyleClass::index);
  if (found == classes_.end()) throw RuntimeError(errors::invalid_call, u"No such menu item");
  return found->name;
}

void StyleSheetBinding::download_started() {
  if (watch_download_) download_done_ = false;
}

void StyleSheetBinding::download_ended() {
  if (watch_download_) download_done_ = true;
}

}  // namespace tvx::core
