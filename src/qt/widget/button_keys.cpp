#include "tvx/qt/widget/button_keys.h"

#include <QAction>
#include <QString>
#include <QWidget>
#include <algorithm>

#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

struct Row {
  std::u16string_view button, action;
  const char* of_page = "";  // without any action
};

constexpr Row rows[] = {
    {u"toggle", u"Source"},
    {u"Print", u"Print"},
    {u"Copy", u"Copy", "Ctrl+C"},
    {u"Cut", u"Cut", "Ctrl+X"},
    {u"Paste", u"Paste", "Ctrl+V"},
    {u"Align Left", u"AlignLeft"},
    {u"Center", u"AlignCenter"},
    {u"Align Right", u"AlignRight"},
    {u"Bold", u"Bold", "Ctrl+B"},
    {u"Italic", u"Italic", "Ctrl+I"},
    {u"Underline", u"Underline", "Ctrl+U"},
    {u"Strike Through", u"Strike"},
    {u"indent", u"Indent"},
    {u"unindent", u"Outdent"},
    {u"Text", u"Font"},
    {u"Spell Check", u"Spelling"},
    {u"Undo", u"Undo", "Ctrl+Z"},
    {u"Redo", u"Redo", "Ctrl+Y"},
    {u"link", u"Link"},
    {u"Image", u"Image"},
    {u"RemoteImage", u"RemoteImage"},
    {u"orderedlist", u"NumberedList"},
    {u"unorderedlist", u"BulletedList"},
    {u"table", u"Table"},
    {u"HR", u"Rule"},
};

}  // namespace

QKeySequence keys_of_button(const QWidget& widget, std::u16string_view button) {
  const Row* row = std::ranges::find(rows, button, &Row::button);
  if (row == std::end(rows)) return {};
  const QString name = to_qt(row->action);
  for (const QWidget* owner : {&widget, static_cast<const QWidget*>(widget.window())})
    for (const QAction* action : owner->findChildren<QAction*>(Qt::FindDirectChildrenOnly))
      if (action->objectName().compare(name, Qt::CaseInsensitive) == 0) return action->shortcut();
  return QKeySequence(QString::fromLatin1(row->of_page), QKeySequence::PortableText);
}

}  // namespace tvx::qt
