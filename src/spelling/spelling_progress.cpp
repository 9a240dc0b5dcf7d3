#include "tvx/spelling/spelling_progress.h"

#include <algorithm>

#include "tvx/base/strings.h"

namespace tvx::spelling {

SpellingProgress::SpellingProgress(std::function<void()> quit) : quit_(std::move(quit)) {
  form_.add_label(u"lblPercent", u"");
  form_.set_cancel_button(form_.add_closing_button(u"cmdQuitSpelling", u"Quit Spelling"));
  form_.take_input();
  form_.set_handler(this);
}

void SpellingProgress::show(std::size_t passed, std::size_t whole) {
  const std::size_t percent = whole == 0 ? 0 : std::min<std::size_t>(100, passed * 100 / whole);
  form_.Controls(u"lblPercent").set_Caption(to_text(static_cast<std::int64_t>(percent)) + u" %");
}

void SpellingProgress::Click(platform::FormControl&) {
  form_.Hide();
  quit_();
}

}  // namespace tvx::spelling
