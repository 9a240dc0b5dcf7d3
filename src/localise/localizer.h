#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace tvx::platform {
class Form;
}

namespace tvx::localise {

class XmlElement;

/// Gives a dialog the words of a language file. One instance a dialog:
///
///   clsLocalize localizer;
///   localizer.set_TheForm(&form);
///   localizer.set_LocalizationFile(path);
///   localizer.Localise(u"TableSettings");
class clsLocalize {
 public:
  using ErrorEvent = std::function<void(std::int32_t errNo, const std::u16string& errDesc)>;

  const std::u16string& LocalizationFile() const { return path_; }
  void set_LocalizationFile(std::u16string_view path) { path_ = path; }
  /// The dialog, which outlives the localising.
  void set_TheForm(platform::Form* form) { form_ = form; }
  /// Told of all that goes wrong; nothing of it is thrown.
  void set_Error(ErrorEvent error) { error_ = std::move(error); }

  /// Gives the captions of a section of the file to the dialog's controls, and the dialog its own. Does
  /// nothing where no file is set. A failure ends it; what was translated by then stays.
  void Localise(std::u16string_view section);

 private:
  void translate(const XmlElement& root, std::u16string_view section);
  void apply_entry(const XmlElement& entry);
  void apply_special(const XmlElement& first);
  void raise(std::int32_t number, const std::u16string& text);
  platform::Form& form() const;

  std::u16string path_;
  platform::Form* form_ = nullptr;
  ErrorEvent error_;
};

}  // namespace tvx::localise
