#pragma once

#include <QAccessible>
#include <QPointer>

#include "tvx/dom/node.h"
#include "tvx/qt/reading/page_reading.h"

namespace tvx::qt {

/// An element of the document for reading programs, with the text that it holds.
class ElementAccessible : public QAccessibleInterface,
                          public QAccessibleTextInterface,
                          public QAccessibleEditableTextInterface,
                          public QAccessibleActionInterface,
                          public QAccessibleHyperlinkInterface {
 public:
  ElementAccessible(PageReading& page, dom::Element& element);
  /// Of the body, whichever that is: the interface of the widget that shows it.
  ElementAccessible(PageReading& page, QWidget& widget);
  ~ElementAccessible() override;

  /// It is told to go from what it stood in; null: it is where it stands.
  void leave(QAccessibleInterface* parent) { left_ = parent; }

  bool isValid() const override;
  QObject* object() const override;
  QWindow* window() const override;
  QAccessibleInterface* parent() const override;
  QAccessibleInterface* child(int index) const override;
  int childCount() const override;
  int indexOfChild(const QAccessibleInterface* child) const override;
  QAccessibleInterface* childAt(int x, int y) const override;
  QAccessibleInterface* focusChild() const override;
  QString text(QAccessible::Text which) const override;
  void setText(QAccessible::Text which, const QString& text) override;
  QRect rect() const override;
  QAccessible::Role role() const override;
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  // --- text ---
  void selection(int index, int* start, int* end) const override;
  int selectionCount() const override;
  void addSelection(int start, int end) override;
  void removeSelection(int index) override;
  void setSelection(int index, int start, int end) override;
  int cursorPosition() const override;
  void setCursorPosition(int position) override;
  QString text(int start, int end) const override;
  QString textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                           int* end) const override;
  QString textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* start,
                          int* end) const override;
  QString textAtOffset(int offset, QAccessible::TextBoundaryType type, int* start, int* end) const override;
  int characterCount() const override;
  QRect characterRect(int offset) const override;
  int offsetAtPoint(const QPoint& point) const override;
  void scrollToSubstring(int start, int end) override;
  QString attributes(int offset, int* start, int* end) const override;

  // --- editable text ---
  void deleteText(int start, int end) override;
  void insertText(int offset, const QString& text) override;
  void replaceText(int start, int end, const QString& text) override;

  // --- actions ---
  QStringList actionNames() const override;
  void doAction(const QString& name) override;
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

  // --- links ---
  QString anchor() const override;
  QString anchorTarget() const override;
  int startIndex() const override;
  int endIndex() const override;

 protected:
  PageReading& page() const { return *page_; }
  /// Null: none is there.
  dom::Element* element() const;

 private:
  const editing::AccessibleContent* content() const;
  bool is_editable() const;
  std::pair<Offset, Offset> clamped(int start, int end) const;
  std::pair<Offset, Offset> selected() const;
  std::pair<Offset, Offset> line_around(int offset) const;
  QString line(Offset from, Offset to, int* start, int* end) const;
  QString name() const;
  QString description() const;
  bool is_empty_page() const;
  void add_states_of_kind(QAccessible::State& state) const;

  QPointer<PageReading> page_;
  dom::Ref<dom::Element> element_;  // null: the body
  QPointer<QWidget> widget_;        // of the body
  QAccessibleInterface* left_ = nullptr;
};

}  // namespace tvx::qt
