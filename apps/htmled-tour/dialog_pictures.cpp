#include "htmled-tour/dialog_pictures.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QKeyEvent>
#include <QLinearGradient>
#include <QMenu>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <functional>
#include <iostream>
#include <string_view>
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

constexpr char16_t form_page[] =
    u"<FORM name=\"order\" method=\"post\" action=\"order.php\"><P style=\"color: #1d4e89\">How many? "
    u"<SELECT name=\"size\"><OPTION value=\"s\">Small</OPTION><OPTION value=\"m\">Medium</OPTION>"
    u"<OPTION value=\"l\">Large</OPTION></SELECT></P><P><IMG src=\"%1\" width=\"160\" height=\"100\" "
    u"alt=\"A garden\" border=\"1\" align=\"left\"></P></FORM>";

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

constexpr char16_t words_page[] = u"<P lang=\"en\">Apples and pears grow in every gardn of the valley.</P>";

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
  void show_table() { show(page, dom::Tag::Td); }
  void show_form() { show(to_u16(QString::fromUtf16(form_page).arg(picture_)), dom::Tag::P); }
  void show_words() { show(words_page, dom::Tag::P); }
  /// As the mouse does it on the first element of that tag.
  void double_click(dom::Tag tag) {
    const auto document = window_.editor().control().DOM();
    browser::MouseInput mouse;
    mouse.element = document->first(tag);
    document->mouse_press(mouse);
    document->double_click(mouse);
  }
  void choose_image_in_path() {
    const auto document = window_.editor().control().DOM();
    browser::MouseInput mouse;
    mouse.element = document->first(dom::Tag::Img);
    document->mouse_press(mouse);
    choose_in_path({"", 0, "mnuToolProperties"});
  }

 private:
  static std::u16string to_u16(const QString& text) { return text.toStdU16String(); }
  void show(std::u16string_view html, dom::Tag tag) {
    core::HTMLed& control = window_.editor().control();
    control.set_DocumentHTML(html);
    const auto document = control.DOM();
    dom::Element* element = document->first(tag);
    document->select([&](editing::Selection& selection) { selection.collapse({element->first_child(), 1}); });
    for (int i = 0; i < 20; ++i) loop_.pump(10);
  }
  /// A picture for the dialog of images, in a place that is called the same everywhere.
  static QString draw_picture() {
    QImage image(320, 200, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, 0, 200);
    sky.setColorAt(0, QColor(0x8f, 0xc7, 0xf2));
    sky.setColorAt(1, QColor(0xf3, 0xf8, 0xd8));
    painter.fillRect(image.rect(), sky);
    painter.fillRect(QRect(0, 140, 320, 60), QColor(0x5a, 0x9a, 0x4a));
    painter.setBrush(QColor(0xf6, 0xc3, 0x3c));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QRect(220, 30, 60, 60));
    painter.end();
    const QString path = QDir::temp().filePath(QStringLiteral("garden.png"));
    image.save(path);
    return QUrl::fromLocalFile(path).toString();
  }

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
  const QString picture_ = draw_picture();
};

/// Which shows the dialog in its own language alone.
bool in_handbook(std::string_view name) {
  return name == "dialog-table" || name == "dialog-form" || name == "dialog-field" || name == "dialog-image";
}

/// In rows of two, as wide as the widest of each column.
QPixmap sheet_of(const std::vector<QPixmap>& pictures, const QColor& ground) {
  int widths[2] = {}, heights[2] = {};
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    widths[i % 2] = std::max(widths[i % 2], pictures[i].width());
    heights[i / 2] = std::max(heights[i / 2], pictures[i].height());
  }
  const int columns = pictures.size() > 1 ? 2 : 1, rows = pictures.size() > 2 ? 2 : 1;
  QPixmap sheet(widths[0] + widths[1] + (columns + 1) * margin,
                heights[0] + heights[1] + (rows + 1) * margin);
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
    const auto file = [&](const QString& kind) {
      return QDir(folder).filePath(QLatin1String(name) + kind + QStringLiteral(".png"));
    };
    const bool alone = !in_handbook(name) || !suffix.isEmpty() ||
                       save(sheet_of({pictures.front()}, ground), file(QStringLiteral("-english")));
    return save(sheet_of(pictures, ground), file(suffix)) && alone;
  };
  photographer.show_table();
  bool done = take_all("dialog-table", [&] { window.editor().Table_Document(); });
  for (const Way& way : ways) {
    photographer.show_table();
    done = take_all(way.name, [&] { photographer.choose_in_path(way); }) && done;
  }
  photographer.show_form();
  done = take_all("dialog-font", [&] { window.editor().change_Font(); }) && done;
  done = take_all("dialog-form", [&] { window.editor().insert_Form(); }) && done;
  done = take_all("dialog-field", [&] { photographer.double_click(dom::Tag::Select); }) && done;
  done = take_all("dialog-image", [&] { photographer.choose_image_in_path(); }) && done;
  photographer.show_words();
  done = take_all("dialog-spelling", [&] { window.editor().SpellCheck(); }) && done;
  window.editor().set_LocalizationFile(QString());
  return done;
}

}  // namespace tvx::htmled
