#pragma once

#include <memory>
#include <string>

#include "tvx/core/part.h"

namespace tvx::browser {
struct Navigation;
}

namespace tvx::core {

class CodePane;
class Content;
class SelectionHighlight;
class StyleSheetBinding;

/// Documents from files and into files, and onto paper.
class DocumentFiles final : public Part {
 public:
  DocumentFiles(Context& context, Content& content, StyleSheetBinding& sheet, CodePane& code,
                SelectionHighlight& highlight)
      : Part(context), content_(content), sheet_(sheet), code_(code), highlight_(highlight) {}

  /// "" asks the user, and the choice is written back.
  void Open_document(std::u16string& strURL, bool openEntireDoc);
  /// "" asks the user.
  void Save_document(const std::u16string& strFilename, bool bEntireDocument);
  void print_Document(bool DontShowDialog);
  /// While a document is being opened nobody is asked about navigations.
  bool opening() const { return opening_document_; }
  /// Nor about the frames that a document brings along whose text was there before its sheets.
  bool brings_frame(const browser::Navigation& navigation) const;

 private:
  void open_entire_document(const std::u16string& url);
  void open_body(const std::u16string& url);
  std::u16string text_to_save(bool entire);

  Content& content_;
  StyleSheetBinding& sheet_;
  CodePane& code_;
  SelectionHighlight& highlight_;
  bool opening_document_ = false;
  std::weak_ptr<browser::HTMLDocument> opened_document_;  // with its head
};

}  // namespace tvx::core
