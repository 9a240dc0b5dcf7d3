#include <unistd.h>

#include <QApplication>
#include <QUrl>
#include <QWebEngineView>
#include <optional>

#include "tvx/qt/web/way_to_draw.h"

/// The least that the toolkit and its engine can start with: a window with one page, which makes itself
/// editable. What it takes to the first letter is what no program in this engine can do without
/// (bench/window/start.sh).
int main(int count, char** arguments) {
  if (count < 2) return 2;
  if (::getuid() == 0) qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--no-sandbox");
  QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  auto drawing = std::make_optional<tvx::qt::WayToDraw>();
  QApplication application(count, arguments);
  drawing.reset();
  QWebEngineView view;
  QObject::connect(&view, &QWebEngineView::titleChanged, &view, &QWidget::setWindowTitle);
  view.setWindowTitle(QStringLiteral("bare"));
  view.resize(1000, 740);
  view.load(QUrl::fromLocalFile(QString::fromLocal8Bit(arguments[1])));
  view.show();
  view.setFocus();
  return QApplication::exec();
}
