#include "tvx/qt/forms/mnemonics.h"

#include <QSet>
#include <algorithm>

#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

using platform::ControlKind;
using platform::Form;
using platform::FormControl;

/// Where the marked letter of a caption is; -1: none is marked.
qsizetype marked_letter(const QString& caption) {
  for (qsizetype i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != u'&') continue;
    if (caption[i + 1] != u'&') return i + 1;
    ++i;
  }
  return -1;
}

bool is_typed_by_a_key(QChar letter) {
  switch (letter.script()) {
    case QChar::Script_Latin:
    case QChar::Script_Greek:
    case QChar::Script_Cyrillic:
    case QChar::Script_Arabic: return letter.isLetter();
    default: return false;
  }
}

QChar::JoiningType joining_of_next(const QString& caption, qsizetype from, int step) {
  qsizetype i = from + step;
  while (i >= 0 && i < caption.size() && caption[i].joiningType() == QChar::Joining_Transparent) i += step;
  return i >= 0 && i < caption.size() ? caption[i].joiningType() : QChar::Joining_None;
}

/// Whether no stroke leads from a letter to those beside it, as in Arabic. One that is underlined is drawn by
/// itself, and a word whose letters don't meet is hard to read.
bool stands_alone(const QString& caption, qsizetype place) {
  const QChar::JoiningType own = caption[place].joiningType(), before = joining_of_next(caption, place, -1),
                           after = joining_of_next(caption, place, 1);
  const bool takes_before = own == QChar::Joining_Dual || own == QChar::Joining_Right,
             takes_after = after == QChar::Joining_Dual || after == QChar::Joining_Right;
  return !(takes_before && before == QChar::Joining_Dual) && !(own == QChar::Joining_Dual && takes_after);
}

bool names_a_field(const Form& form, const FormControl& label) {
  for (const platform::FormRow& row : form.rows())
    for (std::size_t i = 0; i + 1 < row.controls.size(); ++i)
      if (row.controls[i] == &label) return row.controls[i + 1]->kind() != ControlKind::Label;
  return false;
}

bool is_reached_by_its_caption(const Form& form, const FormControl& control) {
  if (&control == form.default_button() || &control == form.cancel_button()) return false;
  if (control.kind() == ControlKind::Label) return names_a_field(form, control);
  return control.kind() == ControlKind::CheckBox ||
         (control.kind() == ControlKind::CommandButton && !control.colour_field());
}

/// The first letter of a word that is free, else any that is; -1: none.
qsizetype free_letter(const QString& caption, const QSet<QChar>& taken) {
  const auto is_free = [&](qsizetype i) {
    return is_typed_by_a_key(caption[i]) && !taken.contains(caption[i].toLower()) && stands_alone(caption, i);
  };
  for (qsizetype i = 0; i < caption.size(); ++i)
    if ((i == 0 || caption[i - 1].isSpace()) && is_free(i)) return i;
  for (qsizetype i = 0; i < caption.size(); ++i)
    if (is_free(i)) return i;
  return -1;
}

/// Another of its letters may be free in a caption whose letters don't join; else one is added to it.
bool has_single_letters_of_keys(const QString& caption) {
  return std::any_of(caption.begin(), caption.end(), [](QChar letter) {
    return is_typed_by_a_key(letter) && letter.script() != QChar::Script_Arabic;
  });
}

QString with_mark(QString caption, QSet<QChar>& taken) {
  if (const qsizetype place = free_letter(caption, taken); place >= 0) {
    taken.insert(caption[place].toLower());
    return caption.insert(place, u'&');
  }
  const bool has_letters = std::any_of(caption.begin(), caption.end(), [](QChar c) { return c.isLetter(); });
  if (!has_letters || has_single_letters_of_keys(caption)) return caption;
  for (char16_t letter = u'a'; letter <= u'z'; ++letter) {
    if (taken.contains(letter)) continue;
    taken.insert(letter);
    return caption + QStringLiteral("(&%1)").arg(QChar(letter).toUpper());
  }
  return caption;
}

}  // namespace

QHash<const FormControl*, QString> captions_with_mnemonics(const Form& form) {
  QHash<const FormControl*, QString> captions;
  QSet<QChar> taken;
  for (const auto& control : form.controls()) {
    if (!control->has_caption()) continue;
    const QString caption = to_qt(control->Caption());
    captions.insert(control.get(), caption);
    if (const qsizetype marked = marked_letter(caption); marked >= 0) taken.insert(caption[marked].toLower());
  }
  for (const auto& control : form.controls()) {
    if (!control->has_caption() || !is_reached_by_its_caption(form, *control)) continue;
    QString& caption = captions[control.get()];
    if (!caption.contains(u'&')) caption = with_mark(caption, taken);
  }
  return captions;
}

}  // namespace tvx::qt
