#pragma once

#include "tvx/core/htmled.h"

namespace tvx::core {

/// The way into a control for scripts and tests: its private members and internal routines. Nothing of the
/// control itself uses it.
struct Inside {
  // --- members ---
  static const std::u16string& selectedHTML(const HTMLed& control) { return control.selected_html_; }
  static std::int32_t selectedSourceIndex(const HTMLed& control) { return control.selected_source_index_; }
  static std::int32_t codeSelectionStart(const HTMLed& control) { return control.code_selection_start_; }
  static dom::Element* baseElement(const HTMLed& control) { return control.base_element_.get(); }
  static const std::shared_ptr<dom::style::StyleSheet>& activeStyleSheet(const HTMLed& control) {
    return control.active_style_sheet_;
  }
  static bool terminated(const HTMLed& control) { return control.terminated_; }
  static const std::u16string& pendingContextCommand(const HTMLed& control) {
    return control.pending_context_command_;
  }
  static bool downloadDone(const HTMLed& control) { return control.download_done_; }
  static bool watchDownload(const HTMLed& control) { return control.watch_download_; }
  static bool baseHrefSet(const HTMLed& control) { return control.base_href_set_; }
  static SelectionHighlight& highlight(const HTMLed& control) { return *control.highlight_; }
  static const std::u16string& storedDocumentHTML(const HTMLed& control) {
    return *control.properties_.DocumentHTML;
  }
  /// The text that goes into the style of the current element's border.
  static const std::u16string& selectionBorderText(const HTMLed& control) {
    return control.properties_.SelectionBorderStyle;
  }

  static const clipboard::clsClip& clip(const HTMLed& control) { return control.clip_; }

  // --- routines ---
  static void StartEditor(HTMLed& control) { control.StartEditor(); }
  static void BootstrapDocument(HTMLed& control) { control.BootstrapDocument(); }
  static void LoadStoredDocumentHTML(HTMLed& control) { control.LoadStoredDocumentHTML(); }
  static std::u16string WriteTemplateDocument(HTMLed& control, const std::u16string& path, int resource) {
    return control.WriteTemplateDocument(path, resource);
  }
  static void ApplyToolbarState(HTMLed& control, bool enabled) { control.ApplyToolbarState(enabled); }
  static void ApplyContextMenuState(HTMLed& control) { control.ApplyContextMenuState(); }
  static void BuildBranchToolbar(HTMLed& control) { control.BuildBranchToolbar(); }
  static std::u16string ConvertUnicodeCharacters(HTMLed& control, std::u16string_view text) {
    return control.ConvertUnicodeCharacters(text);
  }
  static std::u16string RelativeDocumentHTML(HTMLed& control, std::u16string_view base) {
    return control.RelativeDocumentHTML(base);
  }
  static void ApplyStyleSheet(HTMLed& control) { control.ApplyStyleSheet(); }
  static void LoadStyleClasses(HTMLed& control) { control.LoadStyleClasses(); }
  static void FindEditWindow(HTMLed& control) { control.FindEditWindow(); }
  static void ShowEditCaret(HTMLed& control) { control.ShowEditCaret(); }

  // --- the faces that the browser and the document see ---
  static browser::BrowserEvents& browser_events(HTMLed& control) { return control; }
  static browser::DocumentHandler& document_events(HTMLed& control) { return control; }
};

}  // namespace tvx::core
