#include "tvx/qt/reading/element_accessible.h"

#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <array>

#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/browser/view/messages.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/editing/reading/accessible_kind.h"
#include "tvx/qt/reading/attribute_text.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/words.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::qt {

using editing::AccessibleContent;
using editing::AccessibleKind;

namespace {

QAccessible::Role role_of(AccessibleKind kind) {
  switch (kind) {
    case AccessibleKind::Document: return QAccessible::Document;
    case AccessibleKind::Form: return QAccessible::Form;
    case AccessibleKind::Group: return QAccessible::Grouping;
    case AccessibleKind::Paragraph:
    case AccessibleKind::Preformatted:
    case AccessibleKind::Caption: return QAccessible::Paragraph;
    case AccessibleKind::Heading: return QAccessible::Heading;
    case AccessibleKind::List: return QAccessible::List;
    case AccessibleKind::Item: return QAccessible::ListItem;
    case AccessibleKind::Table: return QAccessible::Table;
    case AccessibleKind::Cell: return QAccessible::Cell;
    case AccessibleKind::ColumnHeader: return QAccessible::ColumnHeader;
    case AccessibleKind::RowHeader: return QAccessible::RowHeader;
    case AccessibleKind::Link: return QAccessible::Link;
    case AccessibleKind::Rule: return QAccessible::Separator;
    case AccessibleKind::Image: return QAccessible::Graphic;
    case AccessibleKind::Embedded: return QAccessible::Pane;
    case AccessibleKind::Button: return QAccessible::Button;
    case AccessibleKind::CheckBox: return QAccessible::CheckBox;
    case AccessibleKind::RadioButton: return QAccessible::RadioButton;
    case AccessibleKind::TextField:
    case AccessibleKind::PasswordField:
    case AccessibleKind::TextArea: return QAccessible::EditableText;
    case AccessibleKind::Choice: return QAccessible::ComboBox;
    case AccessibleKind::Choices: return QAccessible::List;
    case AccessibleKind::None:
    case AccessibleKind::Section:
    case AccessibleKind::Quotation: break;
  }
  return QAccessible::Section;
}

}  // namespace

ElementAccessible::ElementAccessible(PageReading& page, dom::Element& element)
    : page_(&page), element_(&element) {}

ElementAccessible::ElementAccessible(PageReading& page, QWidget& widget) : page_(&page), widget_(&widget) {}

ElementAccessible::~ElementAccessible() {
  if (page_ && element_) page_->forget(*element_);
}

dom::Element* ElementAccessible::element() const {
  if (element_ || !page_) return element_.get();
  editing::AccessibleTree* tree = page_->tree();
  return tree ? tree->root() : nullptr;
}

const AccessibleContent* ElementAccessible::content() const {
  dom::Element* const read = element();
  editing::AccessibleTree* tree = page_ ? page_->tree() : nullptr;
  return read && tree ? &tree->content(*read) : nullptr;
}

bool ElementAccessible::is_editable() const {
  const dom::Element* read = element();
  return read && page_->document()->user_may_edit() && editing::editing_host_of_children(*read);
}

// --- the tree ---

bool ElementAccessible::isValid() const {
  if (!page_) return false;
  if (!element_) return widget_;
  return left_ || (page_->document() && element_->document() == &page_->document()->tree() &&
                   dom::is_connected(*element_));
}

QObject* ElementAccessible::object() const { return widget_; }

QWindow* ElementAccessible::window() const {
  const QWidget* widget = widget_ ? widget_.data() : page_ ? page_->view().input_widget() : nullptr;
  return widget ? widget->window()->windowHandle() : nullptr;
}

QAccessibleInterface* ElementAccessible::parent() const {
  if (left_) return left_;
  if (widget_) return QAccessible::queryAccessibleInterface(widget_->parentWidget());
  if (!isValid()) return nullptr;
  dom::Element* const above = page_->tree()->parent(*element_);
  return above ? page_->interface_of(*above) : nullptr;
}

QAccessibleInterface* ElementAccessible::child(int index) const {
  const AccessibleContent* read = content();
  if (!read || index < 0 || static_cast<std::size_t>(index) >= read->children().size()) return nullptr;
  return page_->interface_of(*read->children()[static_cast<std::size_t>(index)]);
}

int ElementAccessible::childCount() const {
  const AccessibleContent* read = content();
  return read ? static_cast<int>(read->children().size()) : 0;
}

int ElementAccessible::indexOfChild(const QAccessibleInterface* child) const {
  const auto* other = dynamic_cast<const ElementAccessible*>(child);
  if (!other || !other->element_ || !element() || !page_->tree()) return -1;
  return static_cast<int>(page_->tree()->index_of(*element(), *other->element_));
}

/// The page knows where things are, and isn't waited for.
QAccessibleInterface* ElementAccessible::childAt(int, int) const { return nullptr; }

QAccessibleInterface* ElementAccessible::focusChild() const {
  if (!page_ || !page_->has_focus()) return nullptr;
  const editing::AccessibleTree::Place caret = page_->caret();
  return caret.element ? page_->interface_of(*caret.element) : nullptr;
}

// --- what it is ---

QAccessible::Role ElementAccessible::role() const {
  if (widget_) return QAccessible::Document;
  return isValid() ? role_of(editing::accessible_kind(*element_)) : QAccessible::NoRole;
}

QString ElementAccessible::name() const {
  if (widget_) return page_->document() ? to_qt(page_->document()->title()) : QString();
  const std::u16string said = editing::accessible_name(*element_);
  if (!said.empty()) return to_qt(said);
  switch (editing::accessible_kind(*element_)) {
    case AccessibleKind::Heading:
    case AccessibleKind::Link:
    case AccessibleKind::Cell:
    case AccessibleKind::ColumnHeader:
    case AccessibleKind::RowHeader:
      if (content()->has_text()) return to_qt(content()->text()).remove(QChar(AccessibleContent::object));
      return to_qt(dom::text_content(*element_)).simplified();
    case AccessibleKind::Table:
      for (const dom::Element* child : content()->children())
        if (child->is(dom::Tag::Caption)) return to_qt(dom::text_content(*child)).simplified();
      return {};
    default: return {};
  }
}

/// A page of one line, in which nothing stands.
bool ElementAccessible::is_empty_page() const {
  const AccessibleContent* read = content();
  if (!read || !is_editable() || !read->text().empty() || read->children().size() > 1) return false;
  if (read->children().empty()) return true;
  dom::Element& line = *read->children().front();
  const auto kind = editing::accessible_kind(line);
  if (kind != AccessibleKind::Paragraph && kind != AccessibleKind::Heading) return false;
  const AccessibleContent& inner = page_->tree()->content(line);
  return inner.children().empty() && inner.text().empty();
}

/// What the toolkit has no other words for.
QString ElementAccessible::description() const {
  if (widget_) return is_empty_page() ? page_->view().placeholder_text() : QString();
  switch (editing::accessible_kind(*element_)) {
    case AccessibleKind::Heading: return translated(u"Level %1").arg(editing::heading_level(*element_));
    case AccessibleKind::Quotation: return translated(u"Quotation");
    case AccessibleKind::Preformatted: return translated(u"Preformatted");
    case AccessibleKind::Link: return to_qt(element_->attribute_or_empty(dom::names::href));
    default: return {};
  }
}

QString ElementAccessible::text(QAccessible::Text which) const {
  if (!isValid()) return {};
  if (which == QAccessible::Name) return name();
  if (which == QAccessible::Description) return description();
  if (which == QAccessible::Value && element_ &&
      editing::accessible_kind(*element_) != AccessibleKind::PasswordField)
    return to_qt(editing::field_value(*element_));
  return {};
}

void ElementAccessible::setText(QAccessible::Text, const QString&) {}

QRect ElementAccessible::rect() const {
  const QWidget* widget = widget_ ? widget_.data() : page_ ? page_->view().input_widget() : nullptr;
  return widget ? QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size()) : QRect();
}

QAccessible::State ElementAccessible::state() const {
  QAccessible::State state;
  if (!isValid()) {
    state.invalid = true;
    return state;
  }
  const QWidget* widget = page_->view().input_widget();
  state.invisible = !widget || !widget->isVisible() || page_->covered();
  state.focusable = true;
  const dom::Element* caret = page_->caret().element;
  state.focused = page_->has_focus() && caret && caret == element();
  if (const AccessibleContent* read = content(); read && read->has_text()) {
    state.multiLine = state.selectableText = true;
    is_editable() ? state.editable = true : state.readOnly = true;
  }
  if (!widget_) add_states_of_kind(state);
  return state;
}

void ElementAccessible::add_states_of_kind(QAccessible::State& state) const {
  static const dom::Name disabled(u"disabled");
  const AccessibleKind kind = editing::accessible_kind(*element_);
  if (kind == AccessibleKind::Link) state.linked = true;
  if (kind == AccessibleKind::PasswordField) state.passwordEdit = true;
  if (kind == AccessibleKind::CheckBox || kind == AccessibleKind::RadioButton) {
    state.checkable = true;
    state.checked = element_->has_attribute(dom::names::checked);
  }
  if (editing::is_thing(kind)) {
    state.disabled = element_->has_attribute(disabled);
    state.selectable = true;
    state.selected = page_->document()->editor().selection().control() == element_.get();
  }
}

void* ElementAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (!isValid()) return nullptr;
  switch (type) {
    case QAccessible::TextInterface:
      return content() && content()->has_text() ? static_cast<QAccessibleTextInterface*>(this) : nullptr;
    case QAccessible::EditableTextInterface:
      return content() && content()->has_text() && is_editable()
                 ? static_cast<QAccessibleEditableTextInterface*>(this)
                 : nullptr;
    case QAccessible::ActionInterface: return static_cast<QAccessibleActionInterface*>(this);
    case QAccessible::HyperlinkInterface:
      return role() == QAccessible::Link ? static_cast<QAccessibleHyperlinkInterface*>(this) : nullptr;
    default: return nullptr;
  }
}

QStringList ElementAccessible::actionNames() const { return {setFocusAction()}; }

void ElementAccessible::doAction(const QString& name) {
  if (name != setFocusAction() || !isValid()) return;
  if (QWidget* input = page_->view().input_widget()) input->setFocus(Qt::OtherFocusReason);
  if (!element_) return;
  const bool has_text = content()->has_text();
  dom::Element& whole = *element_;
  if (has_text) return setCursorPosition(0);
  if (editing::is_thing(editing::accessible_kind(whole)) && !whole.is(dom::Tag::Hr))
    page_->document()->select([&](editing::Selection& selection) { selection.select_control(whole); });
}

// --- links ---

QString ElementAccessible::anchor() const { return element_ ? name() : QString(); }

QString ElementAccessible::anchorTarget() const {
  if (!element_ || !isValid()) return {};
  return to_qt(page_->document()->absolute_url(element_->attribute_or_empty(dom::names::href)));
}

int ElementAccessible::startIndex() const {
  dom::Element* const block = element_ && isValid() ? page_->tree()->block_at(*element_) : nullptr;
  return block ? static_cast<int>(page_->tree()->content(*block).offset_of({element_.get(), 0})) : -1;
}

int ElementAccessible::endIndex() const {
  dom::Element* const block = element_ && isValid() ? page_->tree()->block_at(*element_) : nullptr;
  return block ? static_cast<int>(page_->tree()->content(*block).offset_of(dom::after(*element_))) : -1;
}

}  // namespace tvx::qt
