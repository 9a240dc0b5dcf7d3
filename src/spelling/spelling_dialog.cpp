#include "tvx/spelling/spelling_dialog.h"

namespace tvx::spelling {

using platform::FormControl;

namespace {

constexpr std::u16string_view no_suggestions = u"(No Suggestions)";

struct ButtonRow {
  std::u16string_view name;
  void (*act)(SpellingDialog& dialog);
};

constexpr ButtonRow buttons[] = {
    {u"OKButton", [](SpellingDialog& dialog) { dialog.skip = dialog.quit = false; }},
    {u"CancelButton", [](SpellingDialog& dialog) { dialog.skip = true; }},
    {u"IgnoreAll", [](SpellingDialog& dialog) { dialog.ignoreAll = dialog.skip = true; }},
    {u"cmdAddWord",
     [](SpellingDialog& dialog) {
       dialog.addWord = true;
       dialog.quit = dialog.skip = false;
     }},
    {u"cmdQuitSpelling", [](SpellingDialog& dialog) { dialog.quit = dialog.skip = true; }},
};

}  // namespace

SpellingDialog::SpellingDialog() {
  form_.add_text_box(u"txtSentence").set_passage();
  form_.begin_row();
  form_.add_text_box(u"txtOriginal");
  form_.begin_row();
  form_.add_label(u"lblSuggestions", u"Suggestions");
  form_.begin_row();
  form_.add_list_box(u"lstSuggestions");
  FormControl& change = form_.add_closing_button(u"OKButton", u"Change");
  change.set_ToolTipText(u"Make a selection from the list and press 'change");
  form_.set_default_button(change);
  form_.set_cancel_button(form_.add_closing_button(u"CancelButton", u"Ignore"));
  form_.add_closing_button(u"IgnoreAll", u"Ignore All");
  form_.add_closing_button(u"cmdAddWord", u"Add Word");
  form_.add_closing_button(u"cmdQuitSpelling", u"Quit Spelling");
  form_.leave_selection_in_sight();
  form_.set_handler(this);
}

void SpellingDialog::set_word(const std::u16string& word, const std::vector<std::u16string>& suggestions,
                              std::int32_t count) {
  word_ = word;
  FormControl& box = form_.Controls(u"txtOriginal");
  box.set_Text(word);
  box.select(0, static_cast<int>(word.size()));
  FormControl& list = form_.Controls(u"lstSuggestions");
  list.Clear();
  for (std::size_t number = 1; number <= static_cast<std::size_t>(count); ++number)
    list.AddItem(suggestions[number]);
  if (count == 0) list.AddItem(no_suggestions);
  if (count != 0) list.set_ListIndex(0);
}

void SpellingDialog::set_sentence(const Sentence& sentence) {
  FormControl& box = form_.Controls(u"txtSentence");
  box.set_Text(sentence.text);
  box.select(static_cast<int>(sentence.from), static_cast<int>(sentence.length));
  box.set_Visible(!sentence.text.empty());
}

void SpellingDialog::set_can_add(bool can) { form_.Controls(u"cmdAddWord").set_Enabled(can); }

const std::u16string& SpellingDialog::text() const { return form_.Controls(u"txtOriginal").Text(); }

void SpellingDialog::take_chosen() {
  const std::u16string& chosen = form_.Controls(u"lstSuggestions").Text();
  if (!chosen.empty() && chosen != no_suggestions) form_.Controls(u"txtOriginal").set_Text(chosen);
}

void SpellingDialog::Click(FormControl& control) {
  if (control.Name() == u"lstSuggestions") return take_chosen();
  for (const ButtonRow& button : buttons) {
    if (control.Name() != button.name) continue;
    // The first suggestion is chosen as the dialog opens: who changes nothing and confirms means that one.
    if (&control == form_.default_button() && text() == word_) take_chosen();
    button.act(*this);
    return form_.Hide();
  }
}

void SpellingDialog::DblClick(FormControl& control) {
  if (control.Name() != u"lstSuggestions") return;
  skip = quit = false;
  if (control.Text() == no_suggestions) return;
  take_chosen();
  form_.Hide();
}

}  // namespace tvx::spelling
