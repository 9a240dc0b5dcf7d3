#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/platform/form.h"

namespace tvx::spelling {

/// A word within its sentence, as the dialog shows it.
struct Sentence {
  std::u16string text;
  std::size_t from = 0, length = 0;  // the word
};

/// `frmSpelling`: a word that is wrong, what it could be instead, and what is to become of it. Loaded for a
/// whole run, shown for each word.
class SpellingDialog final : private platform::FormHandler {
 public:
  SpellingDialog();

  platform::Form& form() { return form_; }
  /// Fills the dialog; `suggestions` counts from 1.
  void set_word(const std::u16string& word, const std::vector<std::u16string>& suggestions,
                std::int32_t count);
  void set_sentence(const Sentence& sentence);
  void set_can_add(bool can);
  /// What stands in the box for the word.
  const std::u16string& text() const;

  // --- what the user chose ---
  bool skip = false, quit = false, addWord = false, ignoreAll = false;

 private:
  void Click(platform::FormControl& control) override;
  void DblClick(platform::FormControl& control) override;
  void take_chosen();

  platform::Form form_{u"frmSpelling", u"Spelling"};
  std::u16string word_;
};

}  // namespace tvx::spelling
