#include "tvx/platform/loaded_dialogs.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

std::vector<const LoadedDialog*>& loaded() {
  static std::vector<const LoadedDialog*> dialogs;
  return dialogs;
}

}  // namespace

LoadedDialog::LoadedDialog(std::u16string name) : name_(std::move(name)) { loaded().push_back(this); }
LoadedDialog::~LoadedDialog() { std::erase(loaded(), this); }

bool IsDialogLoaded(std::u16string_view name) {
  return std::ranges::any_of(
      loaded(), [&](const LoadedDialog* dialog) { return equals_ignoring_ascii_case(dialog->Name(), name); });
}

}  // namespace tvx::platform
