#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "tvx/core/enumerations.h"

namespace tvx::platform {
class PropertyBag;
}

namespace tvx::core {

/// RemoteContent: nothing; images and style sheets; as nothing, and the host asks its user; all, frames
/// included.
constexpr std::int32_t remote_content_off = 0, remote_content_on = 1, remote_content_ask = 2,
                       remote_content_all = 3;

/// One large text, held by many and never changed.
using SharedText = std::shared_ptr<const std::u16string>;
SharedText share(std::u16string_view text);

/// The values of the control's properties, with the defaults of a new control.
struct Properties {
  SharedText DocumentHTML = share(u"");  // what the host last gave
  std::u16string allHTML, DocumentText, DocumentTitle;
  bool IsDirty = false;
  std::u16string BaseURL = u"http://";
  bool relativeURLs = false;
  bool AlwaysConvertUnicodeCharacters = false;
  std::int32_t RemoteContent = remote_content_on;
  std::u16string CSSText;
  bool CSShttp = true;
  bool showDocumentBackgroundImage = true;
  bool EditorEnabled = true;
  bool useEnterAsBR = false;
  bool AutoFormat = false;
  bool isAccessContained = false;
  EdBorderStyle BorderStyle = EdBorderStyle::Solid;
  bool FullToolBar = true;  // stored for hosts that know it, read by nobody
  bool showFormToolbar = false;
  bool showFormattingToolbar1 = true;
  bool showFormattingToolbar2 = true;
  bool showDOMToolbar = true;
  bool showCSSDropDown = false;
  std::u16string HiddenButtons, HiddenContextMenus, LocalizationFile;
  std::u16string SelectionBorderStyle = u"Dashed";  // the text that goes into the element's style
  std::u16string SelectionBorderColor = u"RED";
  std::u16string SelectionBorderWidth = u"1";
  bool HighlightDOMSelection = true;
  bool HighlightDOMSelectionOnClick = false;
  bool UploadImages = false;
  std::u16string LocalImageStore, CustomDictionaryFilename, SpellingLanguage;
  bool CheckSpellingAsYouType = false;
  std::u16string FTPHost, FTPUser, FTPPassword, FTPInitDir, FTPSaveToURL;
  bool FTPPassive = false;
  std::int32_t FTPPort = 21;
  ed_FTPTransferType FTPTransferType = ed_FTPTransferType::ov_Binary;
  std::u16string FTPProxyServer, FTPProxyBypassList;
  std::int32_t FTPBlockSize = 100;
  bool FTPActionInProgress = false;
  bool ShowFTPDialog = true;
};

/// Captions that the branch toolbar's menu takes from the control. A new control has none.
struct TableLabels {
  std::u16string cell, row, delete_row, delete_cell;
};

/// Fills the values from a saved control, key by key in the order of the store. A key that fails keeps what
/// it had.
void read_properties(Properties& properties, TableLabels& labels, const platform::PropertyBag& bag);
void write_properties(const Properties& properties, platform::PropertyBag& bag);

/// The border style's number as the text that goes into a style, and back; 0 for a text that is none.
std::u16string_view text_of(EdHighLightStyle style);
EdHighLightStyle highlight_style_of(std::u16string_view text);

}  // namespace tvx::core
