#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "tvx/core/enumerations.h"
#include "tvx/core/properties.h"

namespace tvx::core {

// One line a property: the getter, and the setter that stores the value and has it take effect.
#define TVX_FLAG(name)                           \
  bool name() const { return properties_.name; } \
  void set_##name(bool on) { store(&Properties::name, on, u## #name); }
#define TVX_TEXT(name)                                            \
  const std::u16string& name() const { return properties_.name; } \
  void set_##name(std::u16string_view text) { store(&Properties::name, text, u## #name); }
#define TVX_VALUE(type, name)                    \
  type name() const { return properties_.name; } \
  void set_##name(type value) { store(&Properties::name, value, u## #name); }

/// The properties as hosts read and set them. What they are is in properties.h; a setter that has something
/// to do beside storing has its row in property_effects.cpp. Setters end with the container's
/// PropertyChanged. Those that are [[noreturn]] refuse: the property is read alone.
class PropertyFace {
 public:
  // --- the document ---
  TVX_TEXT(DocumentTitle)
  bool IsDirty() const { return properties_.IsDirty; }
  [[noreturn]] void set_IsDirty(bool) { refuse_read_only(); }
  const std::u16string& BaseURL() const { return properties_.BaseURL; }
  TVX_FLAG(relativeURLs)
  TVX_FLAG(AlwaysConvertUnicodeCharacters)
  std::int32_t RemoteContent() const { return properties_.RemoteContent; }
  /// 0 nothing, 1 images and style sheets, 2 the host asks, 3 all; any other number raises 380.
  void set_RemoteContent(std::int32_t which);
  TVX_TEXT(CSSText)
  TVX_FLAG(CSShttp)
  bool showDocumentBackgroundImage() const { return properties_.showDocumentBackgroundImage; }
  /// Raises 382 at run time.
  void set_showDocumentBackgroundImage(bool on);
  TVX_FLAG(EditorEnabled)
  TVX_FLAG(useEnterAsBR)
  TVX_FLAG(AutoFormat)
  TVX_FLAG(isAccessContained)

  // --- how the control looks ---
  TVX_VALUE(EdBorderStyle, BorderStyle)
  TVX_FLAG(showFormToolbar)
  TVX_FLAG(showFormattingToolbar1)
  TVX_FLAG(showFormattingToolbar2)
  TVX_FLAG(showDOMToolbar)
  TVX_FLAG(showCSSDropDown)
  TVX_TEXT(HiddenButtons)
  TVX_TEXT(HiddenContextMenus)
  TVX_TEXT(LocalizationFile)
  EdHighLightStyle SelectionBorderStyle() const;
  void set_SelectionBorderStyle(EdHighLightStyle style);
  TVX_TEXT(SelectionBorderColor)
  TVX_TEXT(SelectionBorderWidth)
  bool HighlightDOMSelection() const { return properties_.HighlightDOMSelection; }
  /// Raises 382 at run time.
  void set_HighlightDOMSelection(bool on);
  TVX_FLAG(HighlightDOMSelectionOnClick)

  // --- images, spelling and transfer ---
  TVX_FLAG(UploadImages)
  const std::u16string& LocalImageStore() const { return properties_.LocalImageStore; }
  /// Folder and address get their last bar where it is missing.
  void set_LocalImageStore(std::u16string_view folder);
  TVX_TEXT(CustomDictionaryFilename)
  TVX_TEXT(SpellingLanguage)
  TVX_FLAG(CheckSpellingAsYouType)
  TVX_TEXT(FTPHost)
  TVX_TEXT(FTPUser)
  TVX_TEXT(FTPPassword)
  TVX_TEXT(FTPInitDir)
  const std::u16string& FTPSaveToURL() const { return properties_.FTPSaveToURL; }
  void set_FTPSaveToURL(std::u16string_view url);
  TVX_FLAG(FTPPassive)
  TVX_VALUE(std::int32_t, FTPPort)
  TVX_VALUE(ed_FTPTransferType, FTPTransferType)
  TVX_TEXT(FTPProxyServer)
  TVX_TEXT(FTPProxyBypassList)
  TVX_VALUE(std::int32_t, FTPBlockSize)
  bool FTPActionInProgress() const { return properties_.FTPActionInProgress; }
  [[noreturn]] void set_FTPActionInProgress(bool) { refuse_read_only(); }
  TVX_FLAG(ShowFTPDialog)

 protected:
  ~PropertyFace() = default;

  virtual bool run_time() const = 0;
  /// A property has been set: it takes effect, and the container hears of it.
  virtual void property_set(std::u16string_view key) = 0;

  template <class T, class V>
  void store(T Properties::*member, V&& value, std::u16string_view key) {
    properties_.*member = T(std::forward<V>(value));
    property_set(key);
  }
  [[noreturn]] void refuse_read_only() const;
  void refuse_at_run_time() const;

  Properties properties_;
};

#undef TVX_FLAG
#undef TVX_TEXT
#undef TVX_VALUE

}  // namespace tvx::core
