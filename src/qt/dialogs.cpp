#include "qt/dialogs.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>

namespace tvx::qt {
namespace {

QString text_of(const std::u16string& text) { return QString::fromStdU16String(text); }

QMessageBox::Icon icon_of(platform::MessageIcon icon) {
  switch (icon) {
    case platform::MessageIcon::critical: return QMessageBox::Critical;
    case platform::MessageIcon::question: return QMessageBox::Question;
    case platform::MessageIcon::exclamation: return QMessageBox::Warning;
    case platform::MessageIcon::information: return QMessageBox::Information;
    case platform::MessageIcon::none: break;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButton button_of(platform::MessageAnswer answer) {
  switch (answer) {
    case platform::MessageAnswer::ok: return QMessageBox::Ok;
    case platform::MessageAnswer::cancel: return QMessageBox::Cancel;
    case platform::MessageAnswer::yes: return QMessageBox::Yes;
    case platform::MessageAnswer::no: return QMessageBox::No;
  }
  return QMessageBox::NoButton;
}

void set_up(QFileDialog& dialog, const platform::FileDialog& asked) {
  dialog.setWindowTitle(text_of(asked.title));
  QStringList filters;
  for (const platform::FileFilter& filter : asked.filters) {
    filters << QStringLiteral("%1 (%2)").arg(text_of(filter.name).section(u'(', 0, 0).trimmed(),
                                             text_of(filter.pattern).section(u'|', 0, 0).replace(u';', u' '));
  }
  filters << QFileDialog::tr("All files (*)");
  dialog.setNameFilters(filters);
  if (!asked.preset.empty() && asked.preset.find(u'*') == asked.preset.npos) {
    dialog.selectFile(text_of(asked.preset));
  }
}

std::u16string choice(QFileDialog& dialog) {
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return dialog.selectedFiles().constFirst().toStdU16String();
}

}  // namespace

Colour Dialogs::ShowColor(Colour colour, platform::WindowHandle) {
  const QColor before(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
  const QColor chosen = QColorDialog::getColor(before, &owner_);
  if (!chosen.isValid()) return no_colour;
  return chosen.red() | chosen.green() << 8 | chosen.blue() << 16;
}

std::u16string Dialogs::ShowOpen(const platform::FileDialog& asked) {
  QFileDialog dialog(&owner_);
  set_up(dialog, asked);
  dialog.setFileMode(QFileDialog::ExistingFile);
  return choice(dialog);
}

std::u16string Dialogs::ShowSave(const platform::FileDialog& asked) {
  QFileDialog dialog(&owner_);
  set_up(dialog, asked);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QStringLiteral("html"));
  return choice(dialog);
}

platform::MessageAnswer Dialogs::show_message(const platform::MessageBox& asked) {
  QMessageBox box(icon_of(asked.icon), text_of(asked.title), text_of(asked.text), QMessageBox::NoButton,
                  &owner_);
  for (const platform::MessageAnswer answer : platform::answers_of(asked.buttons)) {
    box.addButton(button_of(answer));
  }
  const int pressed = box.exec();
  for (const platform::MessageAnswer answer : platform::answers_of(asked.buttons)) {
    if (button_of(answer) == pressed) return answer;
  }
  return platform::answer_when_closed(asked.buttons);
}

}  // namespace tvx::qt
