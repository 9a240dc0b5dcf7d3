#include "tvx/core/content/bootstrap.h"

#include <filesystem>

#include "tvx/base/error.h"
#include "tvx/base/text.h"
#include "tvx/base/text_file.h"
#include "tvx/browser/browser.h"
#include "tvx/core/content/content.h"
#include "tvx/core/content/style_sheet.h"
#include "tvx/core/content/templates.h"
#include "tvx/core/content/temporary_files.h"
#include "tvx/core/views/code_pane.h"
#include "tvx/dom/mutation.h"
#include "tvx/platform/special_folders.h"

namespace tvx::core {
namespace {

std::u16string folder_of_application() {
  std::error_code ignored;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", ignored);
  return with_final_slash(from_utf8(program.parent_path().string()));
}

}  // namespace

void Bootstrap::BootstrapDocument() {
  attempt([&] {
    code_.selection().html.clear();
    std::u16string url = u"about:blank";
    if (run_time()) {
      context_.set_DOM(nullptr);
      context_.set_DOM(browser::Browser::placeholder());
      code_.box().set_Enabled(true);
      app_path_ = folder_of_application();
      sheet_.write_first_file();
      const std::u16string file = temporary_file(surroundings().hwnd, document_file);
      if (!file.empty()) {
        sweep_temporary_files(surroundings().hwnd);
        url = WriteTemplateDocument(
            file, properties_.showDocumentBackgroundImage ? template_plain : template_without_background);
      } else {
        raise_error(errors::path_access, u"No folder for temporary files can be used");
        // The window's number makes it the control's own navigation, as in the name of the file.
        url += u'#' + to_text(platform::number_of(surroundings().hwnd));
      }
    }
    browser().set_Silent(true);
    browser().Navigate(url);
    context_.wait_until_complete();
    if (run_time()) content_.apply_base_url(document());
    context_.set_design_mode_of_browser();
    browser_document().execCommand(u"AbsolutePosition", false, u"true");
    browser_document().execCommand(u"2D-Position", false, u"true");
  });
}

std::u16string Bootstrap::WriteTemplateDocument(const std::u16string& path, int resource) {
  TemplateValues values;
  values.base_url = properties_.BaseURL;
  values.style_sheet_is_address = properties_.CSShttp;
  const std::u16string sheet = properties_.CSShttp ? properties_.CSSText : path_in_address(sheet_.path());
  values.style_sheet = sheet;
  write_printed_line(path, expand_template(resource, values));
  return path;
}

}  // namespace tvx::core
