#include <filesystem>

#include "tvx/base/error.h"
#include "tvx/base/text_file.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/content/templates.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/mutation.h"
#include "tvx/platform/special_folders.h"

/// How the first document comes about: a template, expanded into a file that the browser loads.
namespace tvx::core {
namespace {

std::u16string with_final_slash(std::u16string folder) {
  if (!folder.empty() && folder.back() != u'/' && folder.back() != u'\\') folder += u'/';
  return folder;
}

std::u16string folder_of_application() {
  std::error_code ignored;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", ignored);
  return with_final_slash(from_utf8(program.parent_path().string()));
}

}  // namespace

std::u16string HTMLed::temporary_folder() const {
  return with_final_slash(platform::GetSpecialFolder(hwnd_, platform::CSIDL_INTERNET_CACHE));
}

// The window handle in front keeps two controls apart, and lets navigations to these files be told from
// others.
std::u16string HTMLed::temporary_file(std::u16string_view name) const {
  return temporary_folder() + to_text(hwnd()) + std::u16string(name);
}

void HTMLed::BootstrapDocument() {
  attempt([&] {
    selected_html_.clear();
    std::u16string url = u"about:blank";
    if (run_time()) {
      set_docHTML(nullptr);
      set_docHTML(browser::Browser::placeholder());
      txtCode_.set_Enabled(true);
      app_path_ = folder_of_application();
      if (!properties_.CSShttp) {
        style_sheet_path_ = temporary_file(style_sheet_file);
        write_printed_line(style_sheet_path_, properties_.CSSText);
      }
      const int resource =
          properties_.showDocumentBackgroundImage ? template_plain : template_without_background;
      url = WriteTemplateDocument(temporary_file(document_file), resource);
    }
    browser_->set_Silent(true);
    browser_->Navigate(url);
    wait_until_complete();
    if (run_time()) apply_base_url(document());
    set_design_mode_of_browser();
    browser_document().execCommand(u"AbsolutePosition", false, u"true");
    browser_document().execCommand(u"2D-Position", false, u"true");
  });
}

std::u16string HTMLed::WriteTemplateDocument(const std::u16string& path, int resource) {
  TemplateValues values;
  values.base_url = properties_.BaseURL;
  values.style_sheet_is_address = properties_.CSShttp;
  values.style_sheet = properties_.CSShttp ? properties_.CSSText : style_sheet_path_;
  write_printed_line(path, expand_template(resource, values));
  return path;
}

void HTMLed::apply_base_url(browser::HTMLDocument& document) {
  base_element_ = document.first(dom::Tag::Base);
  if (!base_element_) throw RuntimeError(errors::object_not_set, u"The document has no base element");
  dom::set_attribute(*base_element_, dom::names::href, properties_.BaseURL);
}

}  // namespace tvx::core
