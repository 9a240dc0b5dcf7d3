#include "tvx/core/property_face.h"

#include "tvx/base/error.h"

namespace tvx::core {
namespace {

std::u16string ending_with(std::u16string_view text, char16_t end) {
  std::u16string result(text);
  if (!result.empty() && result.back() != end) result += end;
  return result;
}

}  // namespace

void PropertyFace::refuse_read_only() const {
  refuse_at_run_time();
  throw RuntimeError(errors::set_not_permitted, u"Set not permitted");
}

void PropertyFace::refuse_at_run_time() const {
  if (run_time()) throw RuntimeError(errors::set_not_supported_at_runtime, u"Set not supported at runtime");
}

void PropertyFace::set_FTPSaveToURL(std::u16string_view url) {
  store(&Properties::FTPSaveToURL, ending_with(url, u'/'), u"FTPSaveToURL");
}

void PropertyFace::set_RemoteContent(std::int32_t which) {
  if (which < remote_content_off || which > remote_content_all)
    throw RuntimeError(errors::invalid_property_value, u"Invalid property value");
  store(&Properties::RemoteContent, which, u"RemoteContent");
}

void PropertyFace::set_LocalImageStore(std::u16string_view folder) {
  store(&Properties::LocalImageStore, ending_with(folder, u'\\'), u"LocalImageStore");
}

EdHighLightStyle PropertyFace::SelectionBorderStyle() const {
  return highlight_style_of(properties_.SelectionBorderStyle);
}

void PropertyFace::set_SelectionBorderStyle(EdHighLightStyle style) {
  store(&Properties::SelectionBorderStyle, text_of(style), u"SelectionBorderStyle");
}

}  // namespace tvx::core
