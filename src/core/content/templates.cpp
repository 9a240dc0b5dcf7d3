#include "tvx/core/content/templates.h"

#include "tvx/base/code_page.h"
#include "tvx/base/error.h"
#include "tvx/base/text.h"

namespace tvx::core {
namespace {

#define TVX_TEMPLATE(body)                                                             \
  "<head>\r\n"                                                                         \
  "<title>tvxHTMLEdit</title>\r\n"                                                     \
  "<BASE HREF=\"locahost\">\r\n"                                                       \
  "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\r\n"        \
  "<link href=\"file:///tvxStyleSheetFile\" rel=\"stylesheet\" type=\"text/css\">\r\n" \
  "</HEAD>\r\n" body                                                                   \
  "\r\n"                                                                               \
  "<DIV></DIV>\r\n"                                                                    \
  "</body>\r\n"                                                                        \
  "</html>"

constexpr std::string_view plain = TVX_TEMPLATE("<body>");
constexpr std::string_view without_background = TVX_TEMPLATE("<body style=\"background-image: none;\">");
#undef TVX_TEMPLATE

// Markers, never addresses: the misspelling keeps them from being replaced in anything real.
constexpr std::u16string_view base_marker = u"locahost";
constexpr std::u16string_view sheet_marker = u"tvxStyleSheetFile";
constexpr std::u16string_view sheet_address_marker = u"file:///tvxStyleSheetFile";

}  // namespace

std::string_view template_bytes(int resource) {
  if (resource == template_plain) return plain;
  if (resource == template_without_background) return without_background;
  throw RuntimeError(errors::invalid_call, u"No such template");
}

std::u16string path_in_address(std::u16string_view path) {
  struct Escape {
    std::u16string_view character, escaped;
  };
  std::u16string result = ReplaceAll(u"\\", u"/", path, true);
  for (const auto& [character, escaped] : {Escape{u"%", u"%25"}, Escape{u"#", u"%23"}, Escape{u"?", u"%3F"}})
    result = ReplaceAll(character, escaped, result, true);
  return result;
}

std::u16string expand_template(int resource, const TemplateValues& values) {
  std::u16string text = CodePage::system().decode(template_bytes(resource));
  text = ReplaceAll(base_marker, values.base_url, text, true);
  return values.style_sheet_is_address ? ReplaceAll(sheet_address_marker, values.style_sheet, text, false)
                                       : ReplaceAll(sheet_marker, values.style_sheet, text, true);
}

}  // namespace tvx::core
