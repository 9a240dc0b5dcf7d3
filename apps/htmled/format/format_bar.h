#pragma once

#include <QPointer>
#include <QToolBar>

class QComboBox;

namespace tvx::qt {
class HTMLedWidget;
}

namespace tvx::htmled {

class ColourButton;

/// Paragraph style, font, size and colours of the selection, shown and set. A choice gives the keyboard back
/// to the page, which keeps its selection; so does Escape.
class FormatBar final : public QToolBar {
  Q_OBJECT
 public:
  explicit FormatBar(QWidget* parent);

  void set_editor(qt::HTMLedWidget& editor);
  /// Another language may be spoken by now.
  void show_words();
  void take_focus();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QComboBox* add_box(const char* name, int letters);
  bool has_words_of_editor() const;
  void fill_styles();
  void fill_fonts();
  void fill_classes();
  void show_format();
  void show_font(const QString& families);
  /// Does it after what was typed before, and gives the keyboard back.
  template <class Set>
  void set(const Set& set);

  QPointer<qt::HTMLedWidget> editor_;
  QComboBox *styles_, *fonts_, *sizes_, *classes_;
  QAction *before_classes_ = nullptr, *classes_shown_ = nullptr;
  QAction* clear_ = nullptr;  // the editor's
  ColourButton *text_, *highlight_;
};

}  // namespace tvx::htmled
