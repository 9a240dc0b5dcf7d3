#pragma once

#include <string>

#include "tvx/core/part.h"

namespace tvx::core {

class CodePane;
class Content;
class StyleSheetBinding;

/// How the first document comes about: a template, expanded into a file that the browser loads.
class Bootstrap final : public Part {
 public:
  Bootstrap(Context& context, Content& content, StyleSheetBinding& sheet, CodePane& code)
      : Part(context), content_(content), sheet_(sheet), code_(code) {}

  void BootstrapDocument();
  /// Writes a template with the properties' values into a file; its path.
  std::u16string WriteTemplateDocument(const std::u16string& path, int resource);
  /// The folder of the program, known once the first document is there.
  const std::u16string& app_path() const { return app_path_; }

 private:
  Content& content_;
  StyleSheetBinding& sheet_;
  CodePane& code_;
  std::u16string app_path_;
};

}  // namespace tvx::core
