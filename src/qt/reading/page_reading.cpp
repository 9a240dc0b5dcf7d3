#include "tvx/qt/reading/page_reading.h"

#include <QAccessibleWidget>
#include <QStackedWidget>
#include <algorithm>

#include "tvx/browser/html_document.h"
#include "tvx/browser/view/document_view.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/reading/accessible_kind.h"
#include "tvx/platform/message_loop.h"
#include "tvx/qt/reading/element_accessible.h"
#include "tvx/qt/reading/table_accessible.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::qt {
namespace {

using editing::AccessibleKind;

/// A paste of a book is not told paragraph by paragraph: who wants to know asks.
constexpr std::size_t most_children_told = 50;

std::vector<PageReading*>& pages() {
  static std::vector<PageReading*> all;
  return all;
}

QAccessibleInterface* make_interface(const QString&, QObject* object) {
  if (!object || !object->isWidgetType()) return nullptr;
  for (PageReading* page : pages())
    if (QAccessibleInterface* made = page->interface_for(*static_cast<QWidget*>(object))) return made;
  return nullptr;
}

/// Who came last is asked first, and the engine's parts install makers of their own when they are made.
void be_asked_first() {
  QAccessible::removeFactory(make_interface);
  QAccessible::installFactory(make_interface);
}

/// The engine's widget for the page offers the engine's tree; this in its place offers what is in it, the
/// widget that takes the keys.
class PageFrame final : public QAccessibleWidget {
 public:
  explicit PageFrame(QWidget* view) : QAccessibleWidget(view, QAccessible::Client) {}
};

/// The widget's interface, another instead of it if it has one that isn't ours.
template <class Ours>
QAccessibleInterface* claim(QWidget& widget) {
  QAccessibleInterface* const known = QAccessible::queryAccessibleInterface(&widget);
  if (!known || dynamic_cast<Ours*>(known)) return known;
  QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
  return QAccessible::queryAccessibleInterface(&widget);
}

browser::KeyInput delete_key() {
  browser::KeyInput key;
  key.key = u"Delete";
  key.key_code = 46;
  return key;
}

}  // namespace

PageReading::PageReading(Surroundings around) : around_(std::move(around)) {
  pages().push_back(this);
  be_asked_first();
  around_.view.widget()->installEventFilter(this);
  QAccessible::installActivationObserver(this);
}

PageReading::~PageReading() {
  QAccessible::removeActivationObserver(this);
  stop();
  std::erase(pages(), this);
  if (root_ && QAccessible::accessibleInterface(root_)) QAccessible::deleteAccessibleInterface(root_);
  if (pages().empty()) QAccessible::removeFactory(make_interface);
}

void PageReading::accessibilityActiveChanged(bool active) {
  active_ = active;
  if (!active) return stop();
  start();
  claim_widgets();
}

void PageReading::show(const std::shared_ptr<browser::HTMLDocument>& document) {
  stop();
  document_ = document;
  if (active_) start();
}

void PageReading::start() {
  if (tree_ || !document_) return;
  tree_ = std::make_unique<editing::AccessibleTree>(document_->tree());
  tree_->set_on_change([this] { schedule(); });
  document_->editor().selection().add_observer(*this);
  schedule();
}

void PageReading::stop() {
  line_.forget();
  remove_all();
  if (tree_) document_->editor().selection().remove_observer(*this);
  tree_.reset();
  grid_.reset();
  told_caret_ = {};
  told_focus_ = told_selection_ = {};
  told_from_ = told_to_ = 0;
}

editing::AccessibleTree* PageReading::tree() {
  start();
  return tree_.get();
}

// --- interfaces ---

QAccessibleInterface* PageReading::interface_for(QWidget& widget) {
  QWidget* const view = view_widget();
  if (!view) return nullptr;
  if (&widget == view) return new PageFrame(view);
  const bool takes_keys = &widget == around_.view.input_widget() && widget.parentWidget() == view;
  return takes_keys ? new ElementAccessible(*this, widget) : nullptr;
}

/// The engine's; null while there is none.
QWidget* PageReading::view_widget() const {
  auto* stack = qobject_cast<QStackedWidget*>(around_.view.widget());
  return stack ? stack->widget(0) : nullptr;
}

/// The engine comes late, and makes a widget for each of its processes. One that was asked for its interface
/// before anybody knew whose it is has one of the engine's.
void PageReading::claim_widgets() {
  QWidget *const view = view_widget(), *const input = around_.view.input_widget();
  if (!view || !input) return;
  be_asked_first();
  claim<PageFrame>(*view);
  QAccessibleInterface* const interface = claim<ElementAccessible>(*input);
  root_ = interface ? QAccessible::uniqueId(interface) : 0;
}

bool PageReading::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ChildAdded) schedule();
  return QObject::eventFilter(watched, event);
}

QAccessibleInterface* PageReading::root() {
  claim_widgets();
  return root_ ? QAccessible::accessibleInterface(root_) : nullptr;
}

ElementAccessible* PageReading::known(const dom::Element& element) const {
  const auto found = interfaces_.find(&element);
  if (found == interfaces_.end()) return nullptr;
  return static_cast<ElementAccessible*>(QAccessible::accessibleInterface(found->second));
}

QAccessibleInterface* PageReading::interface_of(dom::Element& element) {
  editing::AccessibleTree* const all = tree();
  if (!all) return nullptr;
  all->follow(element);
  if (&element == all->root()) return root();
  if (ElementAccessible* made = known(element)) return made;
  ElementAccessible* const made = make_accessible(*this, element);
  interfaces_[&element] = QAccessible::registerAccessibleInterface(made);
  return made;
}

void PageReading::remove(const dom::Element& element) {
  const auto found = interfaces_.find(&element);
  if (found == interfaces_.end()) return;
  const QAccessible::Id id = found->second;
  interfaces_.erase(found);
  QAccessible::deleteAccessibleInterface(id);
}

/// All but the one of the page itself, whichever document that shows.
void PageReading::remove_all() {
  for (const auto& [element, id] : std::exchange(interfaces_, {})) QAccessible::deleteAccessibleInterface(id);
}

const editing::TableGrid& PageReading::grid(dom::Element& table) {
  const std::uint64_t version = tree_->document().version();
  if (!grid_ || grid_of_ != &table || grid_version_ != version)
    grid_ = std::make_unique<editing::TableGrid>(table);
  grid_of_ = &table;
  grid_version_ = version;
  return *grid_;
}

// --- what changes ---

void PageReading::schedule() {
  if (std::exchange(scheduled_, true)) return;
  around_.loop.post([page = QPointer<PageReading>(this)] {
    if (page) page->tell();
  });
}

void PageReading::focus_changed(bool focused) {
  if (!tree_) return;
  told_focus_ = {};
  if (focused) schedule();
}

void PageReading::cover_changed() {
  if (!tree_ || !root()) return;
  QAccessibleEvent event(root(), covered() ? QAccessible::ObjectHide : QAccessible::ObjectShow);
  QAccessible::updateAccessibility(&event);
}

void PageReading::tell() {
  scheduled_ = false;
  be_asked_first();
  if (!tree_ || !active_ || !root()) return;
  if (dom::Element* body = tree_->root()) tree_->follow(*body);
  const QString title = to_qt(document_->title());
  if (std::exchange(told_title_, title) != title) {
    QAccessibleEvent event(root(), QAccessible::NameChanged);
    QAccessible::updateAccessibility(&event);
  }
  const dom::Ref<dom::Element> caret_before = told_focus_;
  bool at_caret = false;
  const editing::AccessibleChanges all = tree_->take_changes();
  for (const editing::AccessibleChange& change : all.changes) {
    at_caret |= change.element == caret_before;
    tell_change(change);
  }
  for (const dom::Ref<dom::Element>& element : all.left) remove(*element);
  tell_caret(at_caret);
  tell_selection();
}

void PageReading::tell_change(const editing::AccessibleChange& change) {
  const bool is_root = change.element.get() == tree_->root();
  QAccessibleInterface* interface = is_root ? root() : known(*change.element);
  if (!interface) return;
  const int at = static_cast<int>(change.at);
  if (interface->textInterface() && !change.removed.empty()) {
    QAccessibleTextRemoveEvent event(interface, at, to_qt(change.removed));
    QAccessible::updateAccessibility(&event);
  }
  if (interface->textInterface() && !change.inserted.empty()) {
    QAccessibleTextInsertEvent event(interface, at, to_qt(change.inserted));
    QAccessible::updateAccessibility(&event);
  }
  tell_children(change);
}

void PageReading::tell_children(const editing::AccessibleChange& change) {
  QAccessibleInterface* const parent = interface_of(*change.element);
  for (const dom::Ref<dom::Element>& child : change.gone) {
    ElementAccessible* const gone = known(*child);
    if (!gone) continue;
    gone->leave(parent);
    QAccessibleEvent event(gone, QAccessible::ObjectDestroyed);
    QAccessible::updateAccessibility(&event);
    gone->leave(nullptr);
  }
  const std::size_t count = std::min(change.come.size(), most_children_told);
  for (std::size_t i = 0; i < count; ++i) {
    QAccessibleEvent event(interface_of(*change.come[i]), QAccessible::ObjectCreated);
    QAccessible::updateAccessibility(&event);
  }
}

editing::AccessibleTree::Place PageReading::caret() {
  editing::AccessibleTree* const all = tree();
  if (!all) return {};
  const editing::Selection& selection = document_->editor().selection();
  if (dom::Element* control = selection.control()) return {all->at(*control), 0};
  return selection.type() == editing::SelectionType::Text ? all->place_of(selection.focus())
                                                          : editing::AccessibleTree::Place();
}

bool PageReading::has_focus() const {
  const QWidget* widget = around_.view.input_widget();
  return widget && widget->hasFocus();
}

/// A move is told once it is known which line of the window it has led to: that is what will be read. What is
/// typed is told at once.
void PageReading::tell_caret(bool text_changed) {
  const editing::AccessibleTree::Place place = caret();
  if (!place.element) return;
  const bool moved = place.element != told_caret_.element || place.offset != told_caret_.offset;
  const bool takes_focus = has_focus() && told_focus_.get() != place.element;
  if (!moved && !text_changed && !takes_focus) return;
  told_caret_ = place;
  if (text_changed) {
    line_.forget();
    return send_caret();
  }
  line_.ask(*tree_, place, document_->editor().selection().focus(), [this] { send_caret(); });
}

void PageReading::send_caret() {
  const editing::AccessibleTree::Place place = caret();
  QAccessibleInterface* const interface = place.element ? interface_of(*place.element) : nullptr;
  if (!interface) return;
  if (has_focus() && told_focus_.get() != place.element) {
    told_focus_ = place.element;
    QAccessibleEvent event(interface, QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
  }
  if (!interface->textInterface()) return;
  QAccessibleTextCursorEvent event(interface, static_cast<int>(place.offset));
  QAccessible::updateAccessibility(&event);
}

/// Each line says what of it is selected. Those at both ends of the selection are told when it changes.
void PageReading::tell_selection() {
  const editing::Selection& selection = document_->editor().selection();
  if (selection.type() != editing::SelectionType::Text) return;
  const editing::AccessibleTree::Place from = tree_->place_of(selection.anchor()), to = caret();
  if (!from.element || !to.element) return;
  const bool collapsed = from.element == to.element && from.offset == to.offset;
  const bool was_collapsed = !told_selection_;
  const bool same =
      told_selection_.get() == from.element && told_from_ == from.offset && told_to_ == to.offset;
  const dom::Ref<dom::Element> before = std::exchange(told_selection_, collapsed ? nullptr : from.element);
  told_from_ = from.offset;
  told_to_ = to.offset;
  if ((collapsed && was_collapsed) || same) return;
  for (dom::Element* element : {before.get(), from.element, to.element}) {
    if (!element || !dom::is_connected(*element)) continue;
    if ((element == from.element && element == before.get()) && element != to.element) continue;
    QAccessibleInterface* const interface = interface_of(*element);
    if (!interface || !interface->textInterface()) continue;
    QAccessibleTextSelectionEvent event(interface, static_cast<int>(from.offset),
                                        static_cast<int>(to.offset));
    QAccessible::updateAccessibility(&event);
    if (from.element == to.element) break;
  }
}

// --- what a reading program does ---

void PageReading::select(const dom::Range& range) {
  document_->select([&](editing::Selection& selection) { selection.set(range); });
}

void PageReading::write(dom::Element& element, Offset from, Offset to, const QString& text) {
  around_.loop.post([page = QPointer<PageReading>(this), line = dom::Ref<dom::Element>(&element), from, to,
                     text = text.toStdU16String(), document = document_] {
    if (!page || !page->tree_ || document != page->document_ || !dom::is_connected(*line)) return;
    const editing::AccessibleContent& content = page->tree_->content(*line);
    const Offset end = std::min(to, content.text().size()), start = std::min(from, end);
    if (start == end && text.empty()) return;
    const dom::Range range = start == end ? dom::Range{content.position(start), content.position(start)}
                                          : content.range_of(start, end);
    const std::uint64_t edits = page->tree_->edits();
    page->select(range);
    if (text.empty())
      document->key_down(delete_key());
    else
      document->input_text(text);
    if (page && page->tree_ && document == page->document_ && page->tree_->edits() != edits)
      document->tell_user_change();
  });
}

}  // namespace tvx::qt
