#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>
#include <cstdio>
#include <cstdlib>
#include <utility>

/// Another program from which files are dragged, as from a file manager: drag_source X Y FILE... has a small
/// window there, and says "ready" when it can be seen, "taken" when the window below answers that it would
/// take them, and "dropped" when it has.
namespace {

class Source final : public QWidget {
 public:
  explicit Source(QList<QUrl> files) : files_(std::move(files)) {
    setWindowFlags(Qt::X11BypassWindowManagerHint);
    resize(60, 60);
  }

 protected:
  void mouseMoveEvent(QMouseEvent*) override {
    if (drags_) return;
    drags_ = true;
    auto* data = new QMimeData;
    data->setUrls(files_);
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    connect(drag, &QDrag::actionChanged, [](Qt::DropAction action) {
      if (action != Qt::IgnoreAction) say("taken");
    });
    if (drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction) != Qt::IgnoreAction) say("dropped");
    drags_ = false;
  }
  void paintEvent(QPaintEvent*) override { say("ready"); }

 private:
  static void say(const char* word) {
    std::puts(word);
    std::fflush(stdout);
  }
  const QList<QUrl> files_;
  bool drags_ = false;
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  if (argc < 4) return 1;
  QList<QUrl> files;
  for (int i = 3; i < argc; ++i) files << QUrl::fromLocalFile(QString::fromLocal8Bit(argv[i]));
  Source source(files);
  source.move(std::atoi(argv[1]), std::atoi(argv[2]));
  source.show();
  return QApplication::exec();
}
