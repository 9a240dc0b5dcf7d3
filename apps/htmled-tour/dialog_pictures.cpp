#include "htmled-tour/dialog_pictures.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <iostream>
#include <vector>

#include "htmled/window.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/tree.h"
#include "tvx/htmled_widget.h"
#include "tvx/platform/message_loop.h"

namespace tvx::htmled {
namespace {

constexpr const char* languages_shown[] = {"en", "de", "ja", "ar"};
constexpr int margin = 18, title_height = 32;

constexpr char16_t page[] =
    u"<TABLE border=\"1\" width=\"80%\" bgcolor=\"#fff4d6\" bordercolor=\"teal\"><TBODY><TR "
    u"valign=\"top\" bgcolor=\"#e8f0fe\"><TD align=\"center\" width=\"120\" bgcolor=\"gold\" "
    u"bordercolor=\"navy\">Apples</TD><TD>12</TD></TR></TBODY></TABLE>";

/// The control's dialogs: how many steps of the element path lead up from the cell to the element whose menu
/// opens it, and by which item.
struct Way {
  const char* name;
  int up;
  const char* item;
};
constexpr Way ways[] = {{"dialog-table-settings", 3, "mnuToolProperties"},
                        {"dialog-cell", 0, "mnuToolProperties"},
                        {"dialog-row", 1, "mnuToolProperties"},
                        {"dialog-tag", 3, "mnuToolEditTag"}};

class DialogPhotographer {
 public:
  DialogPhotographer(Window& window, platform::MessageLoop& loop) : window_(window), loop_(loop) {}

  /// The dialog as it is open, under a bar with its title; null if none came.
  QPixmap take(const std::function<void()>& open) {
    QPixmap picture;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (!dialog || !dialog->isActiveWindow()) return;
      watch.stop();
      picture = with_title(*dialog);
      dialog->reject();
    });
    watch.start(50);
    open();
    return picture;
  }
  /// Presses the button of the element path, and the item in the menu that opens.
  void choose_in_path(const Way& way) {
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (!menu) return;
      watch.stop();
      menu->setActiveAction(menu->findChild<QAction*>(QLatin1String(way.item)));
      QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
      QApplication::sendEvent(menu, &enter);
    });
    watch.start(20);
    platform::Toolbar& path = window_.editor().control().tlbDOM();
    path.press(path.Item(path.Count() - way.up));
  }
  void show_table() {
    core::HTMLed& control = window_.editor().control();
    control.set_DocumentHTML(page);
    const auto document = control.DOM();
    dom::Element* cell = document->first(dom::Tag::Td);
    document->select([&](editing::Selection& selection) { selection.collapse({cell->first_child(), 1}); });
    for (int i = 0; i < 20; ++i) loop_.pump(10);
  }

 private:
  // Off screen no window has a frame, and the title is one of the words.
  static QPixmap with_title(const QDialog& dialog) {
    const QPixmap content = const_cast<QDialog&>(dialog).grab();
    const QColor ground = dialog.palette().color(QPalette::Window),
                 text = dialog.palette().color(QPalette::WindowText);
    QPixmap picture(dialog.width(), dialog.height() + title_height);
    picture.fill(ground.lightness() > 128 ? ground.darker(112) : ground.lighter(140));
    QPainter painter(&picture);
    painter.setPen(text);
    QFont bold = dialog.font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.drawText(QRect(0, 0, dialog.width(), title_height), Qt::AlignCenter, dialog.windowTitle());
    painter.drawPixmap(0, title_height, content);
    return picture;
  }

  Window& window_;
  platform::MessageLoop& loop_;
};

/// In rows of two, as wide as the widest of each column.
QPixmap sheet_of(const std::vector<QPixmap>& pictures, const QColor& ground) {
  int widths[2] = {}, heights[2] = {};
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    widths[i % 2] = std::max(widths[i % 2], pictures[i].width());
    heights[i / 2] = std::max(heights[i / 2], pictures[i].height());
  }
  QPixmap sheet(widths[0] + widths[1] + 3 * margin, heights[0] + heights[1] + 3 * margin);
  sheet.fill(ground);
  QPainter painter(&sheet);
  for (std::size_t i = 0; i < pictures.size(); ++i)
    painter.drawPixmap(margin + (i % 2 ? widths[0] + margin : 0), margin + (i / 2 ? heights[0] + margin : 0),
                       pictures[i]);
  return sheet;
}

bool save(const QPixmap& sheet, const QString& file) {
  // Without what can be seen through, and pressed as hard as the format does.
  if (!sheet.toImage().convertToFormat(QImage::Format_RGB888).save(file, "PNG", 0)) {
    std::cerr << "htmled-tour: can't write " << file.toStdString() << '\n';
    return false;
  }
  std::cout << file.toStdString() << '\n';
  return true;
}

}  // namespace

bool take_dialogs(Window& window, platform::MessageLoop& loop, const QString& languages,
                  const QString& folder, const QString& suffix) {
  DialogPhotographer photographer(window, loop);
  const QColor ground = QApplication::palette().color(QPalette::Window).lightness() > 128
                            ? QColor(0xc9, 0xd3, 0xdf)
                            : QColor(0x12, 0x14, 0x18);
  const auto take_all = [&](const char* name, const std::function<void()>& open) {
    std::vector<QPixmap> pictures;
    for (const char* language : languages_shown) {
      const QString file = QDir(languages).filePath(QLatin1String(language) + QStringLiteral(".xml"));
      window.editor().set_LocalizationFile(file);
      pictures.push_back(photographer.take(open));
      if (!pictures.back().isNull()) continue;
      std::cerr << "htmled-tour: no dialog for " << name << '\n';
      return false;
    }
    return save(sheet_of(pictures, ground),
                QDir(folder).filePath(QLatin1String(name) + suffix + QStringLiteral(".png")));
  };
  photographer.show_table();
  bool done = take_all("dialog-table", [&] { window.editor().Table_Document(); });
  for (const Way& way : ways) {
    photographer.show_table();
    done = take_all(way.name, [&] { photographer.choose_in_path(way); }) && done;
  }
  window.editor().set_LocalizationFile(QString());
  return done;
}

}  // namespace tvx::htmled
