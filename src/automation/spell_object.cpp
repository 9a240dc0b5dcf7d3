#include <array>

#include "tvx/automation/inside.h"
#include "tvx/automation/instance.h"
#include "tvx/automation/script_objects.h"
#include "tvx/base/error.h"
#include "tvx/core/spelling/word_range.h"
#include "tvx/library/objects/document_object.h"
#include "tvx/library/objects/members_of.h"
#include "tvx/library/objects/range_object.h"

namespace tvx::automation {

using core::Inside;
using library::expect_arguments;
using library::MemberOf;
using library::Value;
using library::Values;
using spelling::clsSpell;
using spelling::clsString;
using spelling::SpellingApplication;

namespace {

ScriptSpelling& spelling_of(Instance& instance) {
  if (!instance.spelling) instance.spelling = std::make_unique<ScriptSpelling>();
  return *instance.spelling;
}

clsSpell& engine_of(Instance& instance) {
  core::Parts& parts = Inside::parts(instance.control());
  if (clsSpell* running = parts.spelling.engine()) return *running;
  std::unique_ptr<clsSpell>& own = spelling_of(instance).engine;
  if (!own) {
    own = std::make_unique<clsSpell>(parts.speller.application());
    if (own->application()) own->application()->set_language(parts.speller.language());
  }
  return *own;
}

/// An array that counts from 1, without its first entry.
Value list_from_one(const std::vector<std::u16string>& texts) {
  Values list;
  for (std::size_t number = 1; number < texts.size(); ++number) list.emplace_back(texts[number]);
  return list;
}

// --- the application ---

class ApplicationObject final : public library::Object {
 public:
  explicit ApplicationObject(Instance& instance) : instance_(instance) {}
  std::u16string_view kind() const override { return u"application"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  SpellingApplication& operator*() const {
    SpellingApplication* application = engine_of(instance_).application();
    if (!application) throw RuntimeError(errors::object_not_set, u"There is no speller");
    return *application;
  }

 private:
  Instance& instance_;
};

/// `Documents`: how many are open, and one more.
class DocumentsObject final : public library::Object {
 public:
  explicit DocumentsObject(SpellingApplication& application) : application_(application) {}
  std::u16string_view kind() const override { return u"documents"; }
  Value invoke(std::u16string_view name, Values& arguments) override {
    expect_arguments(arguments, 0, 0);
    if (equals_ignoring_ascii_case(name, u"count")) return std::int32_t{application_.Documents_count()};
    if (!equals_ignoring_ascii_case(name, u"Add")) library::unknown_member(name);
    application_.Documents_Add();
    return {};
  }

 private:
  SpellingApplication& application_;
};

Value check_spelling(ApplicationObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 5);
  std::vector<SpellingApplication::Argument> given;
  for (const Value& argument : arguments)
    given.push_back(argument.is_null() ? SpellingApplication::Argument() : argument.to_text());
  return (*self).CheckSpelling(given);
}

Value suggestions(ApplicationObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  Values list;
  for (std::u16string& text : (*self).GetSpellingSuggestions(arguments[0].to_text()))
    list.emplace_back(std::move(text));
  return list;
}

constexpr MemberOf<ApplicationObject> application_rows[] = {
    {.name = u"Documents",
     .get = [](ApplicationObject& self) -> Value {
       return library::ObjectHandle(std::make_shared<DocumentsObject>(*self));
     }},
    {.name = u"CheckSpelling", .call = check_spelling},
    {.name = u"GetSpellingSuggestions", .call = suggestions},
};

Value ApplicationObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<ApplicationObject>(application_rows, name, *this, arguments);
}

void ApplicationObject::set(std::u16string_view name, const Value& value) {
  if (equals_ignoring_ascii_case(name, u"Language")) return (**this).set_language(value.to_text());
  library::set_named<ApplicationObject>(application_rows, name, *this, value);
}

// --- clsSpell ---

class SpellObject final : public library::Object {
 public:
  explicit SpellObject(Instance& instance) : instance_(instance) {}
  std::u16string_view kind() const override { return u"spell"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  clsSpell& operator*() const { return engine_of(instance_); }
  Instance& instance() const { return instance_; }

 private:
  Instance& instance_;
};

/// The array and its count go back with the arguments.
Value spell_check_word(SpellObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 3);
  arguments.resize(3);
  std::vector<std::u16string> found;
  std::int32_t count = arguments[2].is_null() ? 0 : arguments[2].to_integer32();
  const bool right = (*self).SpellCheckWord(arguments[0].to_text(), found, count);
  if (!found.empty() || arguments[1].is_null()) arguments[1] = list_from_one(found);
  arguments[2] = count;
  return right;
}

template <auto Routine>
Value one_word(SpellObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return library::result_of([&] { return ((*self).*Routine)(arguments[0].to_text()); });
}

template <auto Routine>
Value two_texts(SpellObject& self, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  ((*self).*Routine)(arguments[0].to_text(), arguments[1].to_text());
  return {};
}

template <auto Routine>
Value clear(SpellObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  ((*self).*Routine)();
  return {};
}

template <auto Getter>
Value get(SpellObject& self) {
  return ((*self).*Getter)();
}

template <auto Setter>
void set_text(SpellObject& self, const Value& value) {
  ((*self).*Setter)(value.to_text());
}

template <auto Setter>
void set_flag(SpellObject& self, const Value& value) {
  ((*self).*Setter)(value.to_boolean());
}

Value file_exists(SpellObject&, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return clsSpell::DoesFileExists(arguments[0].to_text());
}

Value append_to_file(SpellObject&, Values& arguments) {
  expect_arguments(arguments, 2, 2);
  clsSpell::AppendToAddWordsFile(arguments[0].to_text(), arguments[1].to_text());
  return {};
}

/// The script's own one quits its application; the next use starts another.
Value terminate(SpellObject& self, Values& arguments) {
  expect_arguments(arguments, 0, 0);
  spelling_of(self.instance()).engine.reset();
  return {};
}

Value application(SpellObject& self) {
  if (!(*self).application()) return {};
  return library::ObjectHandle(std::make_shared<ApplicationObject>(self.instance()));
}

constexpr MemberOf<SpellObject> spell_rows[] = {
    {.name = u"SpellCheckWord", .call = spell_check_word},
    {.name = u"ClearIgnoredWords", .call = clear<&clsSpell::ClearIgnoredWords>},
    {.name = u"IsWordIgnored", .call = one_word<&clsSpell::IsWordIgnored>},
    {.name = u"AddWordToIgnoredList", .call = one_word<&clsSpell::AddWordToIgnoredList>},
    {.name = u"ClearChangedWords", .call = clear<&clsSpell::ClearChangedWords>},
    {.name = u"IsWordChanged", .call = one_word<&clsSpell::IsWordChanged>},
    {.name = u"AddWordToChangedList", .call = two_texts<&clsSpell::AddWordToChangedList>},
    {.name = u"GetChangedWord", .call = one_word<&clsSpell::GetChangedWord>},
    {.name = u"DoesFileExists", .call = file_exists},
    {.name = u"AppendToAddWordsFile", .call = append_to_file},
    {u"NameOfCustomDict", get<&clsSpell::NameOfCustomDict>, set_text<&clsSpell::set_NameOfCustomDict>},
    {u"UseMainDictionaryOnly", get<&clsSpell::UseMainDictionaryOnly>,
     set_flag<&clsSpell::set_UseMainDictionaryOnly>},
    {u"NameOfAddWordsDict", get<&clsSpell::NameOfAddWordsDict>, set_text<&clsSpell::set_NameOfAddWordsDict>},
    {u"WordNotInstalled", get<&clsSpell::WordNotInstalled>, set_flag<&clsSpell::set_WordNotInstalled>},
    {.name = u"Terminate", .call = terminate},
    {.name = u"application", .get = application},
};

Value SpellObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<SpellObject>(spell_rows, name, *this, arguments);
}

void SpellObject::set(std::u16string_view name, const Value& value) {
  library::set_named<SpellObject>(spell_rows, name, *this, value);
}

// --- clsString ---

class StringObject final : public library::Object {
 public:
  explicit StringObject(clsString& string) : string_(string) {}
  std::u16string_view kind() const override { return u"string"; }
  Value invoke(std::u16string_view name, Values& arguments) override;
  void set(std::u16string_view name, const Value& value) override;
  clsString& operator*() const { return string_; }

 private:
  clsString& string_;
};

/// Positions, tokens and their count go back with the arguments.
Value tokenize(StringObject& self, Values& arguments) {
  expect_arguments(arguments, 1, 6);
  arguments.resize(6);
  const auto number = [](const Value& value) { return value.is_null() ? 0 : value.to_integer32(); };
  std::vector<std::int32_t> positions;
  std::vector<std::u16string> tokens;
  std::int32_t count = 0;
  const bool scanned = (*self).TokenizeStr(arguments[0].to_text(), positions, tokens, count,
                                           number(arguments[4]), number(arguments[5]));
  if (!scanned) return false;
  Values places, texts;
  for (const std::int32_t position : positions) places.emplace_back(position);
  for (std::u16string& token : tokens) texts.emplace_back(std::move(token));
  arguments[1] = std::move(places);
  arguments[2] = std::move(texts);
  arguments[3] = count;
  return true;
}

Value strip(StringObject&, Values& arguments) {
  expect_arguments(arguments, 1, 1);
  return clsString::StripCtrlCharsInStr(arguments[0].to_text());
}

constexpr MemberOf<StringObject> string_rows[] = {
    {.name = u"TokenizeStr", .call = tokenize},
    {.name = u"StripCtrlCharsInStr", .call = strip},
    {u"UserDelim", [](StringObject& self) -> Value { return (*self).UserDelim(); },
     [](StringObject& self, const Value& value) { (*self).set_UserDelim(value.to_text()); }},
};

Value StringObject::invoke(std::u16string_view name, Values& arguments) {
  return library::invoke_named<StringObject>(string_rows, name, *this, arguments);
}

void StringObject::set(std::u16string_view name, const Value& value) {
  library::set_named<StringObject>(string_rows, name, *this, value);
}

}  // namespace

library::ObjectHandle spell_object(Instance& instance) { return std::make_shared<SpellObject>(instance); }

library::ObjectHandle string_object(Instance& instance) {
  return std::make_shared<StringObject>(spelling_of(instance).tokeniser);
}

// --- the run's routines ---

Value get_word_range(Instance& instance, Values& arguments) {
  expect_arguments(arguments, 1, 2);
  const std::int32_t step = arguments.size() > 1 ? arguments[1].to_integer32() : 1;
  const auto range = core::GetWordRange(instance.document(), arguments[0].to_integer32(), step);
  if (!range) return {};
  return library::range_object(editing::TextRange(instance.document().editor(), *range),
                               instance.control().DOM());
}

Value recurs_document(Instance& instance, Values& arguments) {
  expect_arguments(arguments, 1, 2);
  const dom::Ref<dom::Element> element = library::element_of(arguments[0]);
  if (!element) throw RuntimeError(errors::object_not_set, u"There is no element");
  bool result = false;
  Inside::parts(instance.control()).spelling.recurs_document(*element, engine_of(instance), result);
  arguments.resize(2);
  arguments[1] = result;
  return result;
}

Value marked_words(Instance& instance) {
  Values words;
  dom::Node* const top = instance.document().body();
  const core::SpellingMarks& marks = Inside::parts(instance.control()).spelling_marks;
  for (dom::Node* node = top; node;) {
    if (const auto* text = dom::as<dom::Text>(node))
      for (const auto& [from, to] : marks.marks_of(*text))
        words.emplace_back(text->data().substr(from, to - from));
    dom::Node* next = node->first_child();
    while (!next && node != top) {
      next = node->next_sibling();
      if (!next) node = node->parent();
    }
    node = next;
  }
  return words;
}

}  // namespace tvx::automation
