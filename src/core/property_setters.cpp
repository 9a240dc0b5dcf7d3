#include <utility>

#include "tvx/base/error.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/journal.h"

/// What setting a property does, where that is little. Those that move content are in content.cpp.
namespace tvx::core {
namespace {

std::u16string ending_with(std::u16string_view text, char16_t end) {
  std::u16string result(text);
  if (!result.empty() && result.back() != end) result += end;
  return result;
}

}  // namespace

template <class T, class V>
void HTMLed::store(T Properties::*member, V&& value, std::u16string_view key) {
  properties_.*member = T(std::forward<V>(value));
  PropertyChanged(key);
}

void HTMLed::refuse_read_only() const {
  if (run_time()) throw RuntimeError(errors::set_not_supported_at_runtime, u"Set not supported at runtime");
  throw RuntimeError(errors::set_not_permitted, u"Set not permitted");
}

void HTMLed::refuse_at_run_time() const {
  if (run_time()) throw RuntimeError(errors::set_not_supported_at_runtime, u"Set not supported at runtime");
}

void HTMLed::set_DOM() {
  if (run_time()) throw RuntimeError(errors::set_not_supported_at_runtime, u"Set not supported at runtime");
  throw RuntimeError(errors::set_not_permitted_here, u"Set not supported (read-only property)");
}

void HTMLed::set_allHTML(std::u16string_view) { refuse_read_only(); }
void HTMLed::set_DocumentText(std::u16string_view) { refuse_read_only(); }
void HTMLed::set_IsDirty(bool) { refuse_read_only(); }
void HTMLed::set_FTPActionInProgress(bool) { refuse_read_only(); }

// --- stored, and read where they take effect ---

#define TVX_STORED(name, type) \
  void HTMLed::set_##name(type value) { store(&Properties::name, value, u## #name); }

TVX_STORED(relativeURLs, bool)
TVX_STORED(AlwaysConvertUnicodeCharacters, bool)
TVX_STORED(CSShttp, bool)
TVX_STORED(useEnterAsBR, bool)
TVX_STORED(isAccessContained, bool)
TVX_STORED(showCSSDropDown, bool)
TVX_STORED(SelectionBorderColor, std::u16string_view)
TVX_STORED(SelectionBorderWidth, std::u16string_view)
TVX_STORED(HighlightDOMSelectionOnClick, bool)
TVX_STORED(UploadImages, bool)
TVX_STORED(CustomDictionaryFilename, std::u16string_view)
TVX_STORED(FTPHost, std::u16string_view)
TVX_STORED(FTPUser, std::u16string_view)
TVX_STORED(FTPPassword, std::u16string_view)
TVX_STORED(FTPInitDir, std::u16string_view)
TVX_STORED(FTPPassive, bool)
TVX_STORED(FTPPort, std::int32_t)
TVX_STORED(FTPTransferType, ed_FTPTransferType)
TVX_STORED(FTPProxyServer, std::u16string_view)
TVX_STORED(FTPProxyBypassList, std::u16string_view)
TVX_STORED(ShowFTPDialog, bool)
#undef TVX_STORED

void HTMLed::set_FTPSaveToURL(std::u16string_view url) {
  store(&Properties::FTPSaveToURL, ending_with(url, u'/'), u"FTPSaveToURL");
}

void HTMLed::set_LocalImageStore(std::u16string_view folder) {
  store(&Properties::LocalImageStore, ending_with(folder, u'\\'), u"LocalImageStore");
}

EdHighLightStyle HTMLed::SelectionBorderStyle() const {
  return highlight_style_of(properties_.SelectionBorderStyle);
}

void HTMLed::set_SelectionBorderStyle(EdHighLightStyle style) {
  store(&Properties::SelectionBorderStyle, text_of(style), u"SelectionBorderStyle");
}

// --- for the form designer alone ---

void HTMLed::set_showDocumentBackgroundImage(bool on) {
  refuse_at_run_time();
  store(&Properties::showDocumentBackgroundImage, on, u"showDocumentBackgroundImage");
}

void HTMLed::set_HighlightDOMSelection(bool on) {
  refuse_at_run_time();
  store(&Properties::HighlightDOMSelection, on, u"HighlightDOMSelection");
}

// --- the look of the running control ---

void HTMLed::set_BorderStyle(EdBorderStyle style) {
  properties_.BorderStyle = style;
  for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->border_changed(style);
  PropertyChanged(u"BorderStyle");
}

void HTMLed::set_toolbar_property(bool Properties::*member, bool on, std::u16string_view key) {
  properties_.*member = on;
  if (run_time()) {
    ApplyToolbarState(properties_.EditorEnabled);
    UserControl_Resize();
  }
  PropertyChanged(key);
}

void HTMLed::set_showFormToolbar(bool on) {
  set_toolbar_property(&Properties::showFormToolbar, on, u"showFormToolbar");
}
void HTMLed::set_showFormattingToolbar1(bool on) {
  set_toolbar_property(&Properties::showFormattingToolbar1, on, u"showFormattingToolbar1");
}
void HTMLed::set_showFormattingToolbar2(bool on) {
  set_toolbar_property(&Properties::showFormattingToolbar2, on, u"showFormattingToolbar2");
}

void HTMLed::set_showDOMToolbar(bool on) {
  properties_.showDOMToolbar = on;
  if (run_time()) UserControl_Resize();
  PropertyChanged(u"showDOMToolbar");
}

void HTMLed::set_HiddenButtons(std::u16string_view keys) {
  properties_.HiddenButtons = keys;
  if (run_time()) ApplyToolbarState(properties_.EditorEnabled);
  PropertyChanged(u"HiddenButtons");
}

void HTMLed::set_HiddenContextMenus(std::u16string_view keys) {
  properties_.HiddenContextMenus = keys;
  if (run_time()) ApplyContextMenuState();
  PropertyChanged(u"HiddenContextMenus");
}

void HTMLed::set_LocalizationFile(std::u16string_view path) {
  properties_.LocalizationFile = path;
  if (run_time()) apply_language_file();
  PropertyChanged(u"LocalizationFile");
}

void HTMLed::set_DocumentTitle(std::u16string_view title) {
  properties_.DocumentTitle = title;
  attempt([&] {
    const dom::UndoStep step(document().tree().journal(), u"Title");
    document().set_title(title);
  });
  PropertyChanged(u"DocumentTitle");
}

}  // namespace tvx::core
