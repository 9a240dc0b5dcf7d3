#pragma once

#include <cstddef>
#include <functional>

#include "tvx/platform/form.h"

namespace tvx::spelling {

/// `frmSpellingProgress`: how far a long run has come, with a button that ends it. Shown beside the work; no
/// input of the user's reaches the document meanwhile.
class SpellingProgress final : private platform::FormHandler {
 public:
  /// `quit` is called when the user ends the run.
  explicit SpellingProgress(std::function<void()> quit);

  platform::Form& form() { return form_; }
  /// `passed` of the `whole` text.
  void show(std::size_t passed, std::size_t whole);

 private:
  void Click(platform::FormControl& control) override;

  std::function<void()> quit_;
  platform::Form form_{u"frmSpellingProgress", u"Spelling"};
};

}  // namespace tvx::spelling
