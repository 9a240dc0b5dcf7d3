#pragma once

#include <string_view>
#include <vector>

#include "tvx/core/part.h"
#include "tvx/platform/form.h"

namespace tvx::core {

class Words;

/// Shows the control's own dialogs, one over the other.
class DialogHost final : public Part, private platform::FormObserver {
 public:
  DialogHost(Context& context, const Words& words) : Part(context), words_(words) {}
  ~DialogHost();

  /// In the words of a section of the language file; returns when it is hidden. Where nobody shows dialogs it
  /// counts as cancelled. Throws where the host has replaced the document's content meanwhile: nothing of
  /// what was confirmed is for the new one, and a user who has confirmed is told.
  void show(platform::Form& dialog, std::u16string_view section);
  /// The same beside what goes on; returns at once. Where nobody shows dialogs nothing is seen of it.
  void open_beside(platform::Form& dialog, std::u16string_view section);
  /// The innermost first: each lets the operation that opened it come to its end.
  void cancel_all();

 private:
  void control_changed(platform::FormControl&) override {}
  void caption_changed(platform::Form&) override {}
  void form_hidden(platform::Form& form) override;
  void tell_replaced() const;
  /// To pick from, beside the fields for colours.
  void offer_used_colours(platform::Form& dialog) const;

  const Words& words_;
  std::vector<platform::Form*> open_;    // the one in front last
  std::vector<platform::Form*> beside_;  // those that nobody waits for
};

}  // namespace tvx::core
