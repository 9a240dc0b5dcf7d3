#pragma once

#include <string>
#include <string_view>

namespace tvx::platform {

/// A dialog in the collection of loaded dialogs of this process, from its loading to its unloading; shown or
/// not. A dialog holds one of these under its own name.
class LoadedDialog {
 public:
  explicit LoadedDialog(std::u16string name);
  ~LoadedDialog();
  LoadedDialog(const LoadedDialog&) = delete;
  LoadedDialog& operator=(const LoadedDialog&) = delete;

  const std::u16string& Name() const { return name_; }

 private:
  std::u16string name_;
};

/// Whether a dialog of that name is loaded anywhere in the process. Names compare without regard to case.
bool IsDialogLoaded(std::u16string_view name);

}  // namespace tvx::platform
