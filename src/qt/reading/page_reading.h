#pragma once

#include <QAccessible>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>
#include <unordered_map>

#include "tvx/editing/reading/accessible_tree.h"
#include "tvx/editing/selection.h"
#include "tvx/editing/tables/table_grid.h"
#include "tvx/qt/reading/caret_line.h"

class QWidget;

namespace tvx::browser {
class DocumentView;
class HTMLDocument;
}  // namespace tvx::browser
namespace tvx::platform {
class MessageLoop;
}

namespace tvx::qt {

class ElementAccessible;
class WebView;

/// Offers the document to reading programs in place of the page that shows it: the document is the truth, and
/// the page has it later. Interfaces are made as they are asked for, one for an element, and go with their
/// elements. What an edit or a move of the caret changed is told once, at the end of the loop's turn.
///
/// While no reading program is there, nothing of this exists but this object.
class PageReading final : public QObject,
                          private QAccessible::ActivationObserver,
                          private editing::SelectionObserver {
 public:
  struct Surroundings {
    WebView& view;
    browser::DocumentView& document_view;
    platform::MessageLoop& loop;
    /// Whether something else stands in front of the page, as the code does.
    std::function<bool()> covered;
  };
  /// What is named in it outlives this.
  explicit PageReading(Surroundings around);
  ~PageReading() override;

  /// Another document is shown, or none.
  void show(const std::shared_ptr<browser::HTMLDocument>& document);
  /// The keyboard is the page's now, or no more.
  void focus_changed(bool focused);
  /// Another view than before may be in front.
  void cover_changed();

  /// The interface of the engine's widget, and of the one in it that takes the keys; null for any other.
  QAccessibleInterface* interface_for(QWidget& widget);

  // --- for the interfaces ---
  /// Null while no document is there.
  editing::AccessibleTree* tree();
  const std::shared_ptr<browser::HTMLDocument>& document() const { return document_; }
  WebView& view() const { return around_.view; }
  browser::DocumentView& document_view() const { return around_.document_view; }
  bool covered() const { return around_.covered(); }
  QAccessibleInterface* interface_of(dom::Element& element);
  /// Of the body; null while the engine has no widget for it.
  QAccessibleInterface* root();
  void forget(const dom::Element& element) { interfaces_.erase(&element); }
  /// The line that the caret stands in, or what is selected as a whole.
  editing::AccessibleTree::Place caret();
  const CaretLine& caret_line() const { return line_; }
  bool has_focus() const;
  void select(const dom::Range& range);
  /// As a person types it, or takes it away: in its turn, with all that a host may say to it.
  void write(dom::Element& element, Offset from, Offset to, const QString& text);
  /// Good until the next change of the tree.
  const editing::TableGrid& grid(dom::Element& table);

 private:
  void accessibilityActiveChanged(bool active) override;
  void selection_changed() override { schedule(); }
  void start();
  void stop();
  void schedule();
  void tell();
  void tell_change(const editing::AccessibleChange& change);
  void tell_children(const editing::AccessibleChange& change);
  void tell_caret(bool text_changed);
  void send_caret();
  void tell_selection();
  void claim_widgets();
  QWidget* view_widget() const;
  bool eventFilter(QObject* watched, QEvent* event) override;
  ElementAccessible* known(const dom::Element& element) const;
  void remove(const dom::Element& element);
  void remove_all();

  Surroundings around_;
  std::shared_ptr<browser::HTMLDocument> document_;
  std::unique_ptr<editing::AccessibleTree> tree_;
  std::unordered_map<const dom::Element*, QAccessible::Id> interfaces_;
  QAccessible::Id root_ = 0;
  std::unique_ptr<editing::TableGrid> grid_;
  const dom::Element* grid_of_ = nullptr;  // only compared
  std::uint64_t grid_version_ = 0;
  CaretLine line_{around_.view, around_.loop};
  bool active_ = QAccessible::isActive();  // a reading program is there
  bool scheduled_ = false;
  // What was told last.
  editing::AccessibleTree::Place told_caret_;  // the element is only compared
  dom::Ref<dom::Element> told_focus_, told_selection_;
  Offset told_from_ = 0, told_to_ = 0;
  QString told_title_;
};

}  // namespace tvx::qt
