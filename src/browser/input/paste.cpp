#include "tvx/browser/input/paste.h"

#include "tvx/base/url.h"
#include "tvx/browser/input/gesture.h"
#include "tvx/browser/input/pasted_addresses.h"
#include "tvx/browser/input/pasted_files.h"
#include "tvx/browser/input/pasted_pictures.h"
#include "tvx/dom/journal.h"
#include "tvx/editing/clipboard/paste.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/platform/clipboard.h"
#include "tvx/platform/html_block.h"

namespace tvx::browser {
namespace {

// Other programs take a page without a declared character set for whatever they think best.
constexpr std::u16string_view declaration =
    u"<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">";
constexpr std::string_view block_target = "HTML Format";

bool takes_only_text(editing::Editor& editor) {
  const dom::Node* host = editing::editing_host_of(*editor.selection().range().start.node);
  return host && editing::is_plain_text_host(*host);
}

/// Addresses that mean something else here than in the page they come from are written out.
void keep_addresses(const HTMLDocument& document, dom::DocumentFragment& content,
                    const platform::TransferSource& source) {
  if (!platform::offers(source, block_target)) return;
  const std::u16string base = platform::source_of_html_block(source.read(block_target));
  if (base.empty()) return;
  rewrite_relative_addresses(content, [&](const std::u16string& written) {
    const std::u16string meant = resolve_url(written, base).value_or(written);
    return document.absolute_url(written) == meant ? written : meant;
  });
}

/// `pictures` gets the addresses of the local ones.
bool paste_as_html(HTMLDocument& document, const platform::TransferData& data,
                   const platform::TransferSource* source, std::vector<std::u16string>& pictures) {
  editing::Editor& editor = document.editor();
  const auto fit_to_document = [&](dom::DocumentFragment& content) {
    if (source) keep_addresses(document, content, *source);
    pictures = take_named_pictures(content, data, source, document.bytes_folder());
  };
  if (!data.html.empty() && editing::paste_html(editor, data.html, fit_to_document)) return true;
  if (!data.image.empty()) {
    const std::u16string address = address_of_picture(data, document.bytes_folder());
    if (local_path(address)) pictures.push_back(address);
    return editing::paste_html(editor,
                               u"<!--StartFragment--><IMG src=\"" + address + u"\"><!--EndFragment-->");
  }
  if (data.uris.empty()) return false;
  PastedFiles files = html_of_addresses(data.uris, document.image_folder());
  pictures = std::move(files.pictures);
  return editing::paste_html(editor, files.html);
}

bool paste_data(HTMLDocument& document, const platform::TransferData& data,
                const platform::TransferSource* source, std::vector<std::u16string>& pictures) {
  if (!takes_only_text(document.editor()) && paste_as_html(document, data, source, pictures)) return true;
  pictures.clear();
  // An address that came alone is meant as one; of a formatted text it would be known to be none.
  const bool alone = data.html.empty() && data.image.empty() && data.uris.empty();
  return !data.text.empty() &&
         editing::paste_plain_text(document.editor(), data.text,
                                   alone ? editing::Addresses::AsLinks : editing::Addresses::AsText);
}

/// Everything that the clipboard has, the block's exact fragment before the page.
platform::TransferData fetch_from(const platform::TransferSource& source) {
  platform::TransferData data = platform::fetch(source);
  if (!platform::offers(source, block_target)) return data;
  if (auto page = platform::page_of_html_block(source.read(block_target))) data.html = std::move(*page);
  return data;
}

}  // namespace

bool can_paste(const platform::TransferData& data) { return !data.empty(); }

bool paste_into(HTMLDocument& document, const platform::TransferData& data, std::u16string_view step,
                const platform::TransferSource* source) {
  const auto self = document.shared_from_this();
  const dom::Boundary place = document.editor().selection().range().start;
  if (data.empty() || !place || !editing::editing_host_of(*place.node)) return false;
  std::vector<std::u16string> pictures;
  bool pasted = false;
  {
    const HTMLDocument::Gesture gesture(document);
    const dom::UndoStep undo(document.tree().journal(), step);
    pasted = paste_data(document, data, source, pictures);
  }
  document.tell_local_pictures(pictures);
  return pasted;
}

platform::TransferItems transfer_items(const editing::CopiedContent& content, std::u16string_view base) {
  platform::TransferItems items;
  const bool leads_on = resolve_url(u"x", base).has_value();
  items.emplace_back(block_target, platform::html_block(content.html, leads_on ? base : u""));
  items.emplace_back(platform::targets::html,
                     to_utf8(std::u16string(declaration) + with_absolute_addresses(content.html, base)));
  if (!content.text.empty()) items.emplace_back(platform::targets::text, to_utf8(content.text));
  return items;
}

bool DocumentClipboard::put(const editing::CopiedContent& content) {
  return clipboard_.put(transfer_items(content, document_.absolute_url(u"")));
}

bool DocumentClipboard::paste(editing::Editor&) {
  return paste_into(document_, fetch_from(clipboard_), u"Paste", &clipboard_);
}

bool DocumentClipboard::paste_text(editing::Editor& editor) {
  const platform::TransferData data = platform::fetch(clipboard_);
  const dom::Boundary place = editor.selection().range().start;
  if (data.text.empty() || !place || !editing::editing_host_of(*place.node)) return false;
  const HTMLDocument::Gesture gesture(document_);
  const dom::UndoStep undo(document_.tree().journal(), u"Paste as text");
  return editing::paste_plain_text(editor, data.text, editing::Addresses::AsText);
}

}  // namespace tvx::browser
