#pragma once

#include <QDialog>
#include <QString>

class QAction;
class QListWidget;
class QSplitter;
class QTextBrowser;

namespace tvx::htmled {

/// The handbook: pages in Markdown, with their contents at the side. It stays open while the user writes.
class Handbook final : public QDialog {
  Q_OBJECT
 public:
  /// Where the pages are, beside the program or installed; where there are none, the place where they would
  /// be.
  static QString folder();
  /// The first page is index.md; what it links is the contents.
  Handbook(const QString& folder, QWidget* parent);

  QTextBrowser& page() { return *page_; }
  QListWidget& contents() { return *contents_; }

 private:
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;

  void make_contents();
  void make_actions();
  void show_words();
  void say_missing();
  QString path_of(const QString& name) const;
  void open(const QString& name);
  void zoom(int steps);
  void show_position(const QUrl& url);

  const QString folder_;
  QSplitter* parts_;
  QListWidget* contents_;
  QTextBrowser* page_;
  QAction *back_, *forward_, *home_;
  int zoomed_ = 0;
};

/// Shows the window's handbook, or brings it to the front.
void open_handbook(QWidget& window);

}  // namespace tvx::htmled
