#pragma once

#include "tvx/browser/browser.h"
#include "tvx/core/part.h"

namespace tvx::core {

class Content;
class DocumentFiles;
class EditWindow;
class StyleSheetBinding;

/// What the browser tells: where it wants to go, and that a document is there.
class NavigationHandler final : public Part, public browser::BrowserEvents {
 public:
  NavigationHandler(Context& context, Content& content, StyleSheetBinding& sheet, const DocumentFiles& files,
                    EditWindow& edit_window)
      : Part(context), content_(content), sheet_(sheet), files_(files), edit_window_(edit_window) {}

  void BeforeNavigate2(const browser::Navigation& navigation, bool& cancel) override;
  void NavigateComplete2(bool top, const std::u16string& url) override;
  void DocumentComplete(bool top, const std::u16string& url) override;
  void DownloadBegin() override;
  void DownloadComplete() override;
  void ContentWithheld() override;
  void NavigateError(const browser::Navigation& navigation, std::int32_t status) override;

 private:
  Content& content_;
  StyleSheetBinding& sheet_;
  const DocumentFiles& files_;
  EditWindow& edit_window_;
};

}  // namespace tvx::core
