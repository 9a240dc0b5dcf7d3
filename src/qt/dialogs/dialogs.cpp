#include "tvx/qt/dialogs/dialogs.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>

#include "tvx/qt/dialogs/link_dialog.h"
#include "tvx/qt/dialogs/picture_preview.h"
#include "tvx/qt/support/modal.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/words.h"

namespace tvx::qt {
namespace {

using platform::MessageAnswer;
using platform::MessageIcon;

QColor to_qt_colour(Colour colour) {
  if (colour < 0) colour = white;
  return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

Colour from_qt_colour(const QColor& colour) {
  return Colour(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

QString patterns(QString list) {
  // Where names need no dot, "all files" is a star alone.
  return list.replace(u';', u' ').replace(QStringLiteral("*.*"), QStringLiteral("*"));
}

QMessageBox::Icon icon_of(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::critical: return QMessageBox::Critical;
    case MessageIcon::question: return QMessageBox::Question;
    case MessageIcon::exclamation: return QMessageBox::Warning;
    case MessageIcon::information: return QMessageBox::Information;
    case MessageIcon::none: break;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButton button_of(MessageAnswer answer) {
  switch (answer) {
    case MessageAnswer::cancel: return QMessageBox::Cancel;
    case MessageAnswer::yes: return QMessageBox::Yes;
    case MessageAnswer::no: return QMessageBox::No;
    case MessageAnswer::ok: break;
  }
  return QMessageBox::Ok;
}

}  // namespace

class Dialogs::FileChooser : public Modal<QFileDialog> {
 public:
  FileChooser(QWidget* window, const platform::FileDialog& dialog) : Modal(window, translated(dialog.title)) {
    (*this)->setNameFilters(name_filters(dialog.filters));
    (*this)->setOption(QFileDialog::HideNameFilterDetails);
    if (!dialog.of_pictures) return;
    // The desktop's own dialog has no room for more.
    (*this)->setOption(QFileDialog::DontUseNativeDialog);
    new PicturePreview(*operator->());
    (*this)->selectNameFilter((*this)->nameFilters().constLast());
  }
};

QStringList name_filters(const std::vector<platform::FileFilter>& filters) {
  QStringList result;
  for (const platform::FileFilter& filter : filters) {
    QStringList parts = to_qt(filter.pattern).split(u'|');
    parts.prepend(translated(filter.name));
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
      result << QStringLiteral("%1 (%2)").arg(parts[i], patterns(parts[i + 1]));
  }
  return result;
}

// One that a dialog of the control has opened stands over that one.
QWidget* Dialogs::owner() const { return owner_for_dialog(window_); }

std::u16string Dialogs::choose(FileChooser& chooser) {
  if (!folder_.isEmpty()) chooser->setDirectory(folder_);
  if (!chooser.run() || chooser->selectedFiles().isEmpty()) return {};
  const QString path = chooser->selectedFiles().constFirst();
  folder_ = QFileInfo(path).absolutePath();
  return from_qt(path);
}

std::u16string Dialogs::ShowOpen(const platform::FileDialog& dialog) {
  FileChooser chooser(owner(), dialog);
  chooser->setAcceptMode(QFileDialog::AcceptOpen);
  chooser->setFileMode(QFileDialog::ExistingFile);
  return choose(chooser);
}

std::u16string Dialogs::ShowSave(const platform::FileDialog& dialog) {
  FileChooser chooser(owner(), dialog);
  chooser->setAcceptMode(QFileDialog::AcceptSave);
  chooser->setFileMode(QFileDialog::AnyFile);
  const QString preset = to_qt(dialog.preset);
  // A pattern is no name to save under, but it tells the ending of one.
  if (preset.contains(u'*'))
    chooser->setDefaultSuffix(QFileInfo(preset).suffix());
  else if (!preset.isEmpty())
    chooser->selectFile(preset);
  return choose(chooser);
}

// Qt's own dialog shows everything at once, and keeps the user's sixteen colours for all that follow.
Colour Dialogs::ShowColor(Colour colour, platform::WindowHandle) {
  Modal<QColorDialog> dialog(to_qt_colour(colour), owner());
  dialog->setOption(QColorDialog::DontUseNativeDialog);
  return dialog.run() ? from_qt_colour(dialog->currentColor()) : no_colour;
}

MessageAnswer Dialogs::show_message(const platform::MessageBox& box) {
  Modal<QMessageBox> dialog(owner());
  const QString program = QGuiApplication::applicationDisplayName();
  dialog->setWindowTitle(box.asks && !program.isEmpty() ? program : translated(box.title));
  // What is shown may come from a document; markup in it is text.
  dialog->setTextFormat(Qt::PlainText);
  dialog->setText(translated(box.text));
  dialog->setIcon(icon_of(box.asks ? MessageIcon::question : box.icon));
  const MessageAnswer when_closed = platform::answer_when_closed(box.buttons);
  for (const MessageAnswer answer : platform::answers_of(box.buttons)) {
    QPushButton* button = dialog->addButton(button_of(answer));
    if (answer == when_closed) dialog->setEscapeButton(button);
  }
  dialog.run();
  if (dialog.is_gone()) return when_closed;
  for (const MessageAnswer answer : platform::answers_of(box.buttons))
    if (dialog->standardButton(dialog->clickedButton()) == button_of(answer)) return answer;
  return when_closed;
}

std::optional<std::u16string> Dialogs::ask_link(const platform::LinkDialog& asked) {
  Modal<LinkDialog> dialog(to_qt(asked.address), owner());
  if (!dialog.run()) return std::nullopt;
  return from_qt(dialog->address());
}

}  // namespace tvx::qt
