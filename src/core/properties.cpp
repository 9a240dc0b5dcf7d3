#include "tvx/core/properties.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <variant>
#include <vector>

#include "tvx/base/error.h"
#include "tvx/platform/property_bag.h"

namespace tvx::core {
namespace {

using platform::as_bool;
using platform::as_int32;
using platform::as_text;
using platform::PropertyBag;
using platform::PropertyValue;

/// Where a key's value lives. FTPDirectoryItem has no place as long as no directory list is held.
using Member =
    std::variant<std::monostate, SharedText Properties::*, std::u16string Properties::*, bool Properties::*,
                 std::int32_t Properties::*, EdBorderStyle Properties::*, ed_FTPTransferType Properties::*>;

struct Key {
  std::u16string_view name;
  Member member;
  PropertyValue standard;
};

// Stores that are around tell "true unless told otherwise" in two ways: as the number 1 and as -1.
const PropertyValue one = std::int16_t(1), minus_one = std::int16_t(-1), off = false;
const PropertyValue no_text = std::u16string();

using P = Properties;

const std::vector<Key>& keys() {
  static const std::vector<Key> table{
      {u"DocumentHTML", &P::DocumentHTML, no_text},
      {u"FullToolBar", &P::FullToolBar, minus_one},
      {u"FTPHost", &P::FTPHost, no_text},
      {u"FTPUser", &P::FTPUser, no_text},
      {u"FTPPassword", &P::FTPPassword, no_text},
      {u"FTPInitDir", &P::FTPInitDir, no_text},
      {u"FTPSaveToURL", &P::FTPSaveToURL, no_text},
      {u"FTPPassive", &P::FTPPassive, off},
      {u"CustomDictionaryFilename", &P::CustomDictionaryFilename, no_text},
      {u"BaseURL", &P::BaseURL, std::u16string(u"http://")},
      {u"CSSText", &P::CSSText, no_text},
      {u"CSShttp", &P::CSShttp, one},
      {u"showFormToolbar", &P::showFormToolbar, off},
      {u"showFormattingToolbar1", &P::showFormattingToolbar1, one},
      {u"showFormattingToolbar2", &P::showFormattingToolbar2, one},
      {u"showCSSDropDown", &P::showCSSDropDown, off},
      {u"isAccessContained", &P::isAccessContained, off},
      {u"showDocumentBackgroundImage", &P::showDocumentBackgroundImage, one},
      {u"FTPActionInProgress", &P::FTPActionInProgress, off},
      {u"EditorEnabled", &P::EditorEnabled, one},
      {u"showDOMToolbar", &P::showDOMToolbar, one},
      {u"BorderStyle", &P::BorderStyle, std::int32_t(1)},
      {u"useEnterAsBR", &P::useEnterAsBR, off},
      {u"SelectionBorderStyle", &P::SelectionBorderStyle, std::u16string(u"Dashed")},
      {u"SelectionBorderColor", &P::SelectionBorderColor, std::u16string(u"RED")},
      {u"SelectionBorderWidth", &P::SelectionBorderWidth, std::u16string(u"1")},
      {u"HighlightDOMSelection", &P::HighlightDOMSelection, one},
      {u"HighlightDOMSelectionOnClick", &P::HighlightDOMSelectionOnClick, off},
      {u"UploadImages", &P::UploadImages, off},
      {u"LocalizationFile", &P::LocalizationFile, no_text},
      {u"HiddenButtons", &P::HiddenButtons, no_text},
      {u"HiddenContextMenus", &P::HiddenContextMenus, no_text},
      {u"LocalImageStore", &P::LocalImageStore, no_text},
      {u"DocumentText", &P::DocumentText, no_text},
      {u"DocumentTitle", &P::DocumentTitle, no_text},
      {u"ShowFTPDialog", &P::ShowFTPDialog, minus_one},
      {u"FTPPort", &P::FTPPort, std::int32_t(21)},
      {u"FTPTransferType", &P::FTPTransferType, std::int32_t(2)},
      {u"FTPProxyServer", &P::FTPProxyServer, no_text},
      {u"FTPProxyBypassList", &P::FTPProxyBypassList, no_text},
      {u"allHTML", &P::allHTML, no_text},
      {u"FTPDirectoryItem", std::monostate{}, std::int32_t(0)},
      {u"IsDirty", &P::IsDirty, off},
      {u"relativeURLs", &P::relativeURLs, off},
      {u"AlwaysConvertUnicodeCharacters", &P::AlwaysConvertUnicodeCharacters, off},
      {u"FTPBlockSize", &P::FTPBlockSize, std::int32_t(100)},
      {u"SpellingLanguage", &P::SpellingLanguage, no_text},
      {u"CheckSpellingAsYouType", &P::CheckSpellingAsYouType, off},
      {u"RemoteContent", &P::RemoteContent, remote_content_on},
      {u"AutoFormat", &P::AutoFormat, off}};
  return table;
}

/// The order in which containers have always been handed the keys; reading goes in the order of the table.
/// RemoteContent and AutoFormat, the youngest, are written after them and only where they aren't the default:
/// a container that knows nothing of them gets what it always got.
// clang-format off
constexpr std::u16string_view writing_order[] = {
    u"DocumentHTML", u"FullToolBar", u"FTPHost", u"FTPUser", u"FTPPassword", u"FTPInitDir", u"FTPSaveToURL",
    u"FTPPassive", u"BaseURL", u"showFormToolbar", u"showFormattingToolbar1", u"showFormattingToolbar2",
    u"CSSText", u"showCSSDropDown", u"isAccessContained", u"showDocumentBackgroundImage",
    u"FTPActionInProgress", u"EditorEnabled", u"CSShttp", u"BorderStyle", u"showDOMToolbar",
    u"useEnterAsBR", u"SelectionBorderStyle", u"SelectionBorderColor", u"SelectionBorderWidth",
    u"HighlightDOMSelection", u"HighlightDOMSelectionOnClick", u"UploadImages", u"LocalizationFile",
    u"HiddenButtons", u"HiddenContextMenus", u"LocalImageStore", u"DocumentText", u"DocumentTitle",
    u"ShowFTPDialog", u"FTPPort", u"FTPTransferType", u"FTPProxyServer", u"FTPProxyBypassList", u"allHTML",
    u"FTPDirectoryItem", u"IsDirty", u"relativeURLs", u"CustomDictionaryFilename",
    u"AlwaysConvertUnicodeCharacters", u"FTPBlockSize", u"SpellingLanguage", u"CheckSpellingAsYouType"};
// clang-format on

void assign(SharedText& target, const PropertyValue& value) { target = share(as_text(value)); }
void assign(std::u16string& target, const PropertyValue& value) { target = as_text(value); }
void assign(bool& target, const PropertyValue& value) { target = as_bool(value); }
void assign(std::int32_t& target, const PropertyValue& value) { target = as_int32(value); }
template <class Enumeration>
requires std::is_enum_v<Enumeration>
void assign(Enumeration& target, const PropertyValue& value) { target = Enumeration(as_int32(value)); }

PropertyValue value_of(const SharedText& text) { return *text; }
PropertyValue value_of(const std::u16string& text) { return text; }
PropertyValue value_of(bool value) { return value; }
PropertyValue value_of(std::int32_t value) { return value; }
template <class Enumeration>
requires std::is_enum_v<Enumeration> PropertyValue value_of(Enumeration value) { return std::int32_t(value); }

void read_key(Properties& properties, const Key& key, const PropertyBag& bag) {
  const PropertyValue value = bag.ReadProperty(key.name, key.standard);
  std::visit(
      [&](auto member) {
        if constexpr (!std::is_same_v<decltype(member), std::monostate>) assign(properties.*member, value);
      },
      key.member);
}

void write_key(const Properties& properties, const Key& key, PropertyBag& bag) {
  const PropertyValue value = std::visit(
      [&](auto member) -> PropertyValue {
        if constexpr (std::is_same_v<decltype(member), std::monostate>)
          return key.standard;
        else
          return value_of(properties.*member);
      },
      key.member);
  bag.WriteProperty(key.name, value, key.standard);
}

constexpr std::u16string_view highlight_styles[] = {u"none",   u"solid", u"dashed", u"dotted", u"double",
                                                    u"groove", u"Ridge", u"inset",  u"outset"};

}  // namespace

SharedText share(std::u16string_view text) { return std::make_shared<const std::u16string>(text); }

void read_properties(Properties& properties, TableLabels& labels, const PropertyBag& bag) {
  for (const Key& key : keys()) {
    attempt([&] { read_key(properties, key, bag); });
    if (key.name == u"HiddenContextMenus") labels = {u"Cell", u"Row", u"Delete Row", u"Delete Cell"};
  }
}

void write_properties(const Properties& properties, PropertyBag& bag) {
  const auto write = [&](std::u16string_view name) {
    attempt([&] { write_key(properties, *std::ranges::find(keys(), name, &Key::name), bag); });
  };
  for (std::u16string_view name : writing_order) write(name);
  if (properties.RemoteContent != remote_content_on) write(u"RemoteContent");
  if (properties.AutoFormat) write(u"AutoFormat");
}

std::u16string_view text_of(EdHighLightStyle style) {
  const auto number = std::int32_t(style);
  return number >= 1 && number <= 8 ? highlight_styles[number] : highlight_styles[0];
}

EdHighLightStyle highlight_style_of(std::u16string_view text) {
  const auto found = std::ranges::find(highlight_styles, text);
  return found == std::end(highlight_styles)
             ? EdHighLightStyle::edNone
             : EdHighLightStyle(std::int32_t(std::distance(std::begin(highlight_styles), found)));
}

}  // namespace tvx::core
