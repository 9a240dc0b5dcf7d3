#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/core/content/style_classes.h"
#include "tvx/core/part.h"

namespace tvx::dom::style {
class StyleSheet;
}

namespace tvx::core {

/// The style sheet of the properties CSSText and CSShttp, bound to the document's first one, which is the
/// template's link. It comes from an address elsewhere, from a local file, or is the text itself.
class StyleSheetBinding final : public Part {
 public:
  using ClassesListener = std::function<void(std::span<const StyleClass>)>;
  StyleSheetBinding(Context& context, ClassesListener listener)
      : Part(context), tell_classes_(std::move(listener)) {}

  void ApplyStyleSheet();
  /// Reads the classes of the document's first sheet anew.
  void LoadStyleClasses();
  /// The text of the properties as a file, for the document's first load. Nothing where they name an address.
  void write_first_file();
  /// Properties as the document has brought them: nothing is applied.
  void adopt_settings();

  const std::vector<StyleClass>& classes() const { return classes_; }
  /// Throws RuntimeError(5) for a number that no class has.
  std::u16string class_at(std::int16_t index) const;
  /// The document's sheet; null where it has none.
  const std::shared_ptr<dom::style::StyleSheet>& active() const { return active_; }
  /// The file that `write_first_file` has written.
  const std::u16string& path() const { return path_; }

  void download_started();
  void download_ended();
  bool download_done() const { return download_done_; }
  bool watches_download() const { return watch_download_; }

  /// Lets go of the sheet of the document.
  void forget_document() { active_.reset(); }
  void forget_classes() { classes_.clear(); }

 private:
  void apply_remote();
  void apply_local();
  void apply_text();
  void set_address(std::u16string_view address);
  void set_file(std::u16string_view address, std::u16string_view text);
  std::u16string own_file() const;

  ClassesListener tell_classes_;
  std::u16string path_;
  std::shared_ptr<dom::style::StyleSheet> active_;
  std::vector<StyleClass> classes_;
  bool download_done_ = false, watch_download_ = false;
};

}  // namespace tvx::core
