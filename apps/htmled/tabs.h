#pragma once

#include <QTabWidget>
#include <vector>

namespace tvx::htmled {

class DocumentPage;

/// The pages of a window, one in front. A bar with their names shows while there are several; it is ordered
/// by dragging; a press with the middle button closes, one with the right button offers to.
class Tabs final : public QTabWidget {
  Q_OBJECT
 public:
  explicit Tabs(QWidget* parent = nullptr);

  /// Null: there is none yet.
  DocumentPage* front() const;
  /// In the order of the bar.
  std::vector<DocumentPage*> pages() const;
  /// After the one in front.
  void add(DocumentPage& page) { add(page, currentIndex() + 1); }
  void append(DocumentPage& page) { add(page, count()); }
  void bring_to_front(DocumentPage& page);
  /// The next one, or the one before, round about.
  void step(int direction);
  /// The names as they are now. Two files of one name are told apart by their folders.
  void show_names();

 signals:
  void front_changed();
  void close_asked(tvx::htmled::DocumentPage* page);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void tabInserted(int index) override;
  void tabRemoved(int index) override;

 private:
  void add(DocumentPage& page, int index);
  void close_others(DocumentPage& page);
  void offer_closing(int index, const QPoint& at);
};

}  // namespace tvx::htmled
