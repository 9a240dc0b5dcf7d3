#pragma once

#include <string_view>
#include <vector>

#include "tvx/core/part.h"

namespace tvx::core {

class Words;

/// Shows the control's own dialogs, one over the other.
class DialogHost final : public Part {
 public:
  DialogHost(Context& context, const Words& words) : Part(context), words_(words) {}

  /// In the words of a section of the language file; returns when it is hidden. Where nobody shows dialogs it
  /// counts as cancelled.
  void show(platform::Form& dialog, std::u16string_view section);
  /// The innermost first: each lets the operation that opened it come to its end.
  void cancel_all();

 private:
  const Words& words_;
  std::vector<platform::Form*> open_;  // the one in front last
};

}  // namespace tvx::core
