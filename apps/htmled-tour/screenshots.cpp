#include "htmled-tour/screenshots.h"

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <functional>
#include <iostream>
#include <optional>

#include "htmled-tour/dialog_pictures.h"
#include "htmled-tour/sample_pictures.h"
#include "htmled/window.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/tree.h"
#include "tvx/htmled_widget.h"
#include "tvx/platform/message_loop.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::htmled {
namespace {

constexpr std::u16string_view left_to_right =
    u"<H1>A page of your own</H1><P>Write as in a letter: <B>bold</B>, <I>italic</I>, <U>underlined</U>, "
    u"with "
    u"<A href=\"https://example.org/\">links</A> where you want them. The line at the foot of the window "
    u"shows "
    u"where the caret stands.</P><TABLE border=\"1\" cellpadding=\"6\" "
    u"width=\"80%\"><TBODY><TR><TD>Apples</TD>"
    u"<TD>12</TD></TR><TR><TD>Pears</TD><TD>7</TD></TR></TBODY></TABLE><UL><LI>one thing</LI><LI>and another"
    u"</LI></UL>";
constexpr std::u16string_view right_to_left =
    u"<DIV dir=\"rtl\"><H1>דף משלך</H1><P>כותבים כמו במכתב: <B>מודגש</B>, <I>נטוי</I>, "
    u"<U>קו תחתון</U>, עם <A href=\"https://example.org/\">קישורים</A>.</P><UL><LI>דבר אחד</LI><LI>ודבר "
    u"נוסף</LI></UL><P>اكتب كما في رسالة، بخط <B>عريض</B> أو <I>مائل</I>.</P></DIV>";

QPalette dark_palette() {
  const QColor window(0x2b, 0x2d, 0x30), text(0xdf, 0xe1, 0xe5), base(0x1e, 0x1f, 0x22);
  QPalette palette(window, window);
  palette.setColor(QPalette::Base, base);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
    palette.setColor(role, text);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(0x6f, 0x73, 0x7a));
  palette.setColor(QPalette::Highlight, QColor(0x35, 0x74, 0xf0));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

class Photographer {
 public:
  Photographer(Window& window, platform::MessageLoop& loop, const QString& folder)
      : window_(window), loop_(loop), folder_(folder) {}

  bool run() {
    window_.resize(940, 600);
    QApplication::setCursorFlashTime(0);
    show(left_to_right);
    window_.activateWindow();
    if (QWidget* page = window_.editor().view().input_widget()) page->setFocus();  // for the caret
    in_text(dom::Tag::Td);
    bool done = take("light");
    done = take_drag_of_a_column() && done;
    done = take_menu("context-menu", [this] { right_press(dom::Tag::P); }) && done;
    show(u"<P lang=\"en\">Wrold news: two words of this sentance are marked as wrong.</P>");
    wait(500);
    done = take_menu("spelling", [this] { right_press(dom::Tag::P); }) && done;
    show(left_to_right);
    in_text(dom::Tag::Td);
    done = take_menu("element-menu", [this] { press_path(); }) && done;
    done = take_dialogs(QString()) && done;
    const QPalette light = QApplication::palette();
    QApplication::setPalette(dark_palette());
    in_text(dom::Tag::B);
    done = take("dark") && done;
    done = take_dialogs(QStringLiteral("-dark")) && done;
    QApplication::setPalette(light);
    window_.resize(430, 600);
    window_.editor().control().set_showFormToolbar(true);
    in_text(dom::Tag::Td);
    done = take("narrow") && done;
    window_.editor().control().set_showFormToolbar(false);
    window_.resize(940, 600);
    show(right_to_left);
    in_text(dom::Tag::B);
    done = take("right-to-left") && done;
    // The page's style sheet is the sample's from here on.
    return (window_.devicePixelRatioF() != 1 || take_sample_pictures(window_, loop_, folder_)) && done;
  }

 private:
  void wait(
      std::int64_t milliseconds, const std::function<bool()>& until = [] { return false; }) {
    const std::int64_t end = loop_.now() + milliseconds;
    while (loop_.now() < end && !until()) loop_.pump(10);
  }
  void settle() {
    for (int i = 0; i < 3; ++i) loop_.pump(0);
    wait(20'000, [this] { return window_.editor().document_view().settled(); });
    wait(400);  // the engine paints a frame after the layout
  }
  void show(std::u16string_view html) {
    window_.editor().control().set_DocumentHTML(html);
    settle();
  }
  void in_text(dom::Tag tag) {
    const auto document = window_.editor().control().DOM();
    dom::Element* element = document->first(tag);
    if (!element || !element->first_child()) return;
    document->select([&](editing::Selection& selection) { selection.collapse({element->first_child(), 1}); });
    settle();
  }
  void right_press(dom::Tag tag) {
    const auto document = window_.editor().control().DOM();
    browser::MouseInput mouse;
    mouse.button = browser::MouseButton::Right;
    mouse.element = document->first(tag);
    mouse.x = 200;
    mouse.y = 120;
    document->mouse_press(mouse);
  }
  void press_path() {
    platform::Toolbar& path = window_.editor().control().tlbDOM();
    if (path.Count() > 0) path.press(path.Item(path.Count()));
  }

  // The words of each language make as much of a dialog as its colours; scales don't.
  bool take_dialogs(const QString& suffix) {
    if (window_.devicePixelRatioF() != 1) return true;
    const bool done = htmled::take_dialogs(window_, loop_, QStringLiteral("languages"), folder_, suffix);
    show(left_to_right);
    return done;
  }

  QString file(const char* name) const {
    const qreal scale = window_.devicePixelRatioF();
    const QString suffix = scale == 1 ? QString() : QStringLiteral("@%1x").arg(scale);
    return QDir(folder_).filePath(QLatin1String(name) + suffix + QStringLiteral(".png"));
  }
  bool save(const QPixmap& picture, const char* name) const {
    if (picture.save(file(name))) {
      std::cout << file(name).toStdString() << '\n';
      return true;
    }
    std::cerr << "htmled-tour: can't write " << file(name).toStdString() << '\n';
    return false;
  }
  bool take(const char* name) {
    settle();
    return save(window_.grab(), name);
  }

  /// Where the first cell ends, in the page.
  QPoint end_of_first_cell() {
    std::optional<QPoint> place;
    window_.editor().view().page()->runJavaScript(
        QStringLiteral("(() => { const box = document.querySelector('td').getBoundingClientRect(); return "
                       "[box.right, box.top + box.height / 2]; })()"),
        QWebEngineScript::ApplicationWorld, [&place](const QVariant& answer) {
          const QVariantList numbers = answer.toList();
          place = numbers.size() == 2 ? QPoint(numbers[0].toInt(), numbers[1].toInt()) : QPoint();
        });
    wait(5000, [&place] { return place.has_value(); });
    return place.value_or(QPoint());
  }
  void mouse(QEvent::Type type, QPoint at, bool held) {
    QWidget* page = window_.editor().view().input_widget();
    const bool moves = type == QEvent::MouseMove;
    QMouseEvent event(type, at, page->mapToGlobal(at), moves ? Qt::NoButton : Qt::LeftButton,
                      held ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(page, &event);
  }
  bool take_drag_of_a_column() {
    const QPoint edge = end_of_first_cell(), to = edge - QPoint(90, 0);
    mouse(QEvent::MouseButtonPress, edge, true);
    mouse(QEvent::MouseMove, edge - QPoint(20, 0), true);
    mouse(QEvent::MouseMove, to, true);
    const bool done = take("column");
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(window_.editor().view().input_widget(), &escape);
    settle();
    mouse(QEvent::MouseButtonRelease, to, false);
    settle();
    return done;
  }

  /// The window with a popup open over it: off screen each window has a picture of its own.
  bool take_menu(const char* name, const std::function<void()>& open) {
    bool done = false;
    QTimer::singleShot(500, &window_, [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (!menu) return;
      QPixmap picture = window_.grab();
      QPainter painter(&picture);
      painter.drawPixmap(window_.mapFromGlobal(menu->pos()), menu->grab());
      painter.end();
      done = save(picture, name);
      menu->close();
    });
    open();
    if (!done) std::cerr << "htmled-tour: no menu for " << name << '\n';
    return done;
  }

  Window& window_;
  platform::MessageLoop& loop_;
  QString folder_;
};

}  // namespace

int run_screenshots(Window& window, platform::MessageLoop& loop, const QString& folder) {
  if (!QDir().mkpath(folder)) {
    std::cerr << "htmled-tour: can't make the folder " << folder.toStdString() << '\n';
    return 1;
  }
  return Photographer(window, loop, folder).run() ? 0 : 1;
}

}  // namespace tvx::htmled
