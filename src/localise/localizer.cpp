#include "tvx/localise/localizer.h"

#include <optional>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/base/failure_of.h"
#include "tvx/base/strings.h"
#include "tvx/localise/language_file.h"
#include "tvx/platform/form.h"

namespace tvx::localise {
namespace {

[[noreturn]] void fail(std::u16string text) { throw RuntimeError(errors::object_not_set, std::move(text)); }

}  // namespace

void clsLocalize::raise(std::int32_t number, const std::u16string& text) {
  if (error_) error_(number, text);
}

platform::Form& clsLocalize::form() const {
  if (!form_) fail(u"There is no dialog");
  return *form_;
}

void clsLocalize::Localise(std::u16string_view section) {
  if (path_.empty()) return;
  if (!language_file_exists(path_))
    return raise(language_failure, u"Can not find UI language file at " + path_);
  XmlDocument document;
  if (const auto failure = failure_of([&] { document = read_language_file(path_); }))
    return raise(failure->number(), failure->text());
  if (const auto failure = failure_of([&] { translate(*document.documentElement(), section); }))
    raise(language_failure, u"Language UI error : " + failure->text());
}

void clsLocalize::translate(const XmlElement& root, std::u16string_view section) {
  const XmlElement* node = root.name() == u"languageUI" ? root.child_named(section) : nullptr;
  if (!node) fail(u"There is no section " + std::u16string(section));
  for (const XmlElement* entry : node->children()) apply_entry(*entry);
}

void clsLocalize::apply_entry(const XmlElement& entry) {
  const XmlElement* first = entry.child(0);
  if (!first) fail(u"An entry is empty");
  if (!first->attributes().empty()) return apply_special(*first);
  const XmlElement* second = entry.child(1);
  if (!second) fail(u"There is no text for " + first->text());
  form().Controls(first->text()).set_Caption(second->text());
}

// An attribute of another name is passed over: such an entry is for somebody else.
void clsLocalize::apply_special(const XmlElement& first) {
  const XmlAttribute& attribute = first.attributes().front();
  if (attribute.name != u"special") return;
  if (ascii_lower(attribute.value) == u"form")
    form().set_Caption(first.text());
  else
    raise(language_failure, u"Attribute invalid : " + attribute.name);
}

}  // namespace tvx::localise
