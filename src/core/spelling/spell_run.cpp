#include "tvx/core/spelling/spell_run.h"

#include <optional>

#include "tvx/base/error.h"
#include "tvx/base/failure_of.h"
#include "tvx/base/strings.h"
#include "tvx/base/text.h"
#include "tvx/browser/browser.h"
#include "tvx/browser/input/gesture.h"
#include "tvx/core/events.h"
#include "tvx/core/observer.h"
#include "tvx/core/spelling/run_pace.h"
#include "tvx/core/spelling/speller.h"
#include "tvx/core/spelling/word_range.h"
#include "tvx/core/spelling/word_surroundings.h"
#include "tvx/core/spelling/wrapper.h"
#include "tvx/dom/inner_text.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/ranges/control_range.h"
#include "tvx/editing/tree/surgery.h"
#include "tvx/editing/walk/content_walk.h"
#include "tvx/spelling/spell.h"
#include "tvx/spelling/spelling_dialog.h"
#include "tvx/spelling/string_tokens.h"

namespace tvx::core {

using editing::TextRange;
using spelling::clsSpell;

namespace {

constexpr std::u16string_view section = u"SpellingSettings";
constexpr int arrow = 1, arrow_and_hourglass = 13;
constexpr std::int32_t no_custom_dictionary = 12765, walk_failed = 4001;

}  // namespace

/// One run, from its dialog's loading to its unloading.
class SpellRun::Run {
 public:
  Run(SpellRun& owner, std::shared_ptr<browser::HTMLDocument> document)
      : owner_(owner), document_(std::move(document)), pointer_(owner.pointer_) {}
  ~Run() {
    owner_.engine_ = nullptr;
    owner_.set_pointer(pointer_);
  }

  /// Whether the user has quit it.
  bool cancelled() const { return cancelled_; }
  void go();
  void take_out_wrapper() { wrapper_.take_out(); }

 private:
  void walk();
  /// False: there is no word of this number.
  bool deal_with(std::int32_t number);
  void ask_user(const dom::Range& word, const std::u16string& text, bool add);
  bool is_right(const dom::Range& word, const std::u16string& text);
  void find_custom_dictionary();
  void replace(TextRange& range, const std::u16string& text);
  void require_document() const;
  bool is_over() const { return cancelled_ || owner_.cancelled_; }

  SpellRun& owner_;
  const std::shared_ptr<browser::HTMLDocument> document_;
  const int pointer_;  // as it was
  spelling::SpellingDialog dialog_;
  SpellingWrapper wrapper_{*document_};
  std::optional<clsSpell> speller_;
  std::optional<WordRanges> words_;
  RunPace pace_{owner_.context_, owner_.dialogs_, [this] { cancelled_ = true; }};
  std::u16string language_;  // where the document names none
  std::vector<std::u16string> suggestions_;
  std::int32_t count_ = 0;
  bool cancelled_ = false;
};

void SpellRun::set_pointer(int pointer) {
  if (pointer_ == pointer) return;
  pointer_ = pointer;
  context_.tell([&](HTMLedObserver& observer) { observer.mouse_pointer_changed(pointer); });
}

void SpellRun::add_word(const std::u16string& word) {
  clsSpell::AppendToAddWordsFile(properties_.CustomDictionaryFilename, word);
  words_added_();
}

void SpellRun::SpellCheck() {
  const KeepAlive alive(context_);
  cancelled_ = false;
  if (running_ || !DOM()) return;
  running_ = true;
  const struct Over {
    bool& running;
    ~Over() { running = false; }
  } over{running_};
  Run run(*this, DOM());
  attempt([&] { run.go(); });
  attempt([&] { run.take_out_wrapper(); });
  bool cancelled = run.cancelled();
  raise([&](HTMLedEvents& host) { host.SpellCheckComplete(cancelled); });
}

void SpellRun::Run::go() {
  // What the steps from word to word do to the selection is one piece of news.
  const browser::HTMLDocument::Gesture quiet(*document_);
  editing::AnyRange kept = editing::create_range(document_->editor());
  browser::HTMLDocument& shown = owner_.browser_document();
  if (dom::inner_text(body_of(shown)).empty()) return;
  wrapper_.put_in();
  speller_.emplace(owner_.speller_.application());
  owner_.engine_ = &*speller_;
  find_custom_dictionary();
  owner_.set_pointer(arrow_and_hourglass);
  language_ = owner_.speller_.language();
  words_.emplace(*document_);
  walk();
  wrapper_.take_out();
  if (!cancelled_) std::visit([](auto& range) { range.select(); }, kept);
}

void SpellRun::Run::find_custom_dictionary() {
  const std::u16string& file = owner_.properties_.CustomDictionaryFilename;
  if (file.empty()) return;
  if (clsSpell::DoesFileExists(file)) return speller_->set_NameOfCustomDict(file);
  speller_->set_NameOfCustomDict(u"");
  owner_.raise_error(no_custom_dictionary,
                     u"Cant find custom dictionary, spelling will continue. File not found Error");
}

void SpellRun::Run::require_document() const {
  if (owner_.context_.terminated() || owner_.DOM() != document_)
    throw RuntimeError(errors::object_not_set, u"The document is another one");
}

void SpellRun::Run::walk() {
  for (std::int32_t number = 0;; ++number) {
    require_document();
    const bool found = deal_with(number);
    owner_.set_pointer(arrow_and_hourglass);
    if (!found || is_over()) return;
  }
}

bool SpellRun::Run::deal_with(std::int32_t number) {
  auto word = words_->word(number);
  if (word && pace_.reach(word->end)) {
    require_document();
    if (is_over()) return true;
    word = words_->word(number);
  }
  if (!word) return false;
  std::u16string text = dom::inner_text(editing::shrunk_to_characters(*word));
  document_->editor().selection().collapse(word->start);
  if (text.empty()) return true;
  // The host's code may do anything to the document.
  std::optional<TextRange> range;
  bool skip = false, add = false;
  std::u16string new_word;
  if (!trimmed(text).empty()) {
    range.emplace(document_->editor(), *word);
    std::u16string old_word = text;
    owner_.raise([&](HTMLedEvents& host) { host.SpellCheckWord(skip, old_word, new_word, add); });
    require_document();
  }
  if (!new_word.empty()) {
    replace(*range, new_word);
  } else if (!skip) {
    const dom::Range present = range ? range->range() : *word;
    if (range) text = range->text();
    if (!is_right(present, text)) {
      ask_user(present, text, add);
      return true;
    }
  }
  if (!add || !range) return true;
  text = range->text();
  if (text.empty()) return true;
  owner_.add_word(text);
  speller_->AddWordToIgnoredList(text);
  return true;
}

bool SpellRun::Run::is_right(const dom::Range& word, const std::u16string& text) {
  if (is_in_address(word)) return true;
  if (speller_->application())
    speller_->application()->set_language(Speller::language_of(*word.start.node, language_));
  count_ = 0;
  if (speller_->SpellCheckWord(text, suggestions_, count_)) return true;
  return is_right_with_hyphen(word, [&](const std::u16string& form) {
    bool right = false;
    attempt([&] { right = speller_->application() && speller_->check(form); });
    return right;
  });
}

void SpellRun::Run::ask_user(const dom::Range& word, const std::u16string& text, bool add) {
  TextRange range(document_->editor(), word);
  range.select();
  owner_.set_pointer(arrow);
  dialog_.skip = dialog_.quit = dialog_.addWord = false;
  dialog_.set_sentence(sentence_around(word));
  dialog_.set_word(text, suggestions_, count_);
  dialog_.set_can_add(!speller_->NameOfCustomDict().empty());
  pace_.restart();
  owner_.context_.show_dialog(dialog_.form(), section);
  pace_.restart();
  require_document();
  if (dialog_.addWord || add) owner_.add_word(dialog_.text());
  if (dialog_.quit) {
    cancelled_ = true;
  } else if (!dialog_.skip && !dialog_.addWord) {
    replace(range, dialog_.text());
  }
}

namespace {

/// The elements that a range begins outside of and ends in, the innermost first.
editing::NodeList entered_by(const dom::Range& range) {
  editing::NodeList entered;
  dom::Node* common = dom::common_ancestor(*range.start.node, *range.end.node);
  for (dom::Node* node = range.end.node; node != common; node = node->parent())
    if (node->is_element()) entered.emplace_back(node);
  return entered;
}

bool holds_nothing(const dom::Node& element) {
  for (const dom::Node* child = element.first_child(); child; child = child->next_sibling()) {
    const auto* text = dom::as<dom::Text>(child);
    if (!text || text->length() > 0) return false;
  }
  return true;
}

}  // namespace

// Between two words nothing is open in the journal: each change is a step of its own, but for those within
// the wrapper, which go with it.
void SpellRun::Run::replace(TextRange& range, const std::u16string& text) {
  wrapper_.begin_change();
  const auto join = wrapper_.stands() ? dom::StepJoin::LastStep : dom::StepJoin::Never;
  const dom::UndoStep step(document_->tree().journal(), u"Spelling", join);
  if (range.text() == text) return;
  // The word takes the style of its first letter; of the elements that its rest stood in none is left empty.
  const editing::NodeList entered = entered_by(editing::shrunk_to_characters(range.range()));
  range.set_text(text);
  for (const dom::Ref<dom::Node>& element : entered)
    if (holds_nothing(*element) && element->parent()) dom::remove(*element);
  owner_.mark_changed();
}

// --- the other walk ---

namespace {

/// The texts below a node, in their order.
std::vector<dom::Ref<dom::CharacterData>> texts_below(dom::Node& top) {
  std::vector<dom::Ref<dom::CharacterData>> texts;
  for (dom::Node* node = top.first_child(); node;) {
    if (auto* data = dom::as<dom::CharacterData>(node)) texts.emplace_back(*data);
    if (node->first_child()) {
      node = node->first_child();
      continue;
    }
    while (node != &top && !node->next_sibling()) node = node->parent();
    if (node == &top) break;
    node = node->next_sibling();
  }
  return texts;
}

void replace_once(dom::CharacterData& data, const std::u16string& word, const std::u16string& text) {
  const std::size_t at = FirstOccurrence(word, data.data());
  if (at != std::u16string::npos) dom::replace_data(data, at, word.size(), text);
}

}  // namespace

void SpellRun::recurs_document(dom::Node& node, clsSpell& speller, bool& result) {
  const KeepAlive alive(context_);
  const auto failure = failure_of([&] {
    spelling::SpellingDialog dialog;
    spelling::clsString string;
    string.set_UserDelim(u" ");
    result = true;
    for (const dom::Ref<dom::CharacterData>& data : texts_below(node)) {
      std::vector<std::int32_t> positions;
      std::vector<std::u16string> words, suggestions;
      std::int32_t words_found = 0;
      string.TokenizeStr(data->data(), positions, words, words_found);
      for (const std::u16string& word : words) {
        std::int32_t count = 0;
        if (speller.SpellCheckWord(word, suggestions, count)) continue;
        result = false;
        dialog.skip = dialog.quit = dialog.addWord = false;
        dialog.set_word(word, suggestions, count);
        dialog.set_can_add(!speller.NameOfCustomDict().empty());
        context_.show_dialog(dialog.form(), section);
        if (dialog.addWord) add_word(dialog.text());
        if (!dialog.skip) replace_once(*data, word, dialog.text());
        if (dialog.quit) return;
      }
    }
  });
  if (failure) raise_error(walk_failed, u"There was error during spell checking - source recurs_document");
}

}  // namespace tvx::core
