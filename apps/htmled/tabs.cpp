#include "htmled/tabs.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QTabBar>
#include <algorithm>

#include "htmled/document/document_page.h"

namespace tvx::htmled {

Tabs::Tabs(QWidget* parent) : QTabWidget(parent) {
  setDocumentMode(true);
  setMovable(true);
  setTabsClosable(true);
  setTabBarAutoHide(true);
  setElideMode(Qt::ElideMiddle);
  tabBar()->setObjectName(QStringLiteral("documents"));
  tabBar()->setExpanding(false);
  // The page keeps the keyboard.
  setFocusPolicy(Qt::NoFocus);
  tabBar()->setFocusPolicy(Qt::NoFocus);
  tabBar()->installEventFilter(this);
  qApp->installEventFilter(this);
  connect(this, &QTabWidget::currentChanged, this, &Tabs::front_changed);
  connect(this, &QTabWidget::tabCloseRequested, this,
          [this](int index) { emit close_asked(qobject_cast<DocumentPage*>(widget(index))); });
}

DocumentPage* Tabs::front() const { return qobject_cast<DocumentPage*>(currentWidget()); }

std::vector<DocumentPage*> Tabs::pages() const {
  std::vector<DocumentPage*> all;
  for (int i = 0; i < count(); ++i) all.push_back(qobject_cast<DocumentPage*>(widget(i)));
  return all;
}

void Tabs::add(DocumentPage& page, int index) {
  insertTab(index, &page, QString());
  connect(&page, &DocumentPage::title_changed, this, &Tabs::show_names);
  show_names();
}

void Tabs::bring_to_front(DocumentPage& page) { setCurrentWidget(&page); }

void Tabs::step(int direction) {
  if (count() < 2) return;
  setCurrentIndex((currentIndex() + direction + count()) % count());
  front()->begin();  // at once: the keys that follow are for this page
}

void Tabs::show_names() {
  const std::vector<DocumentPage*> all = pages();
  for (int i = 0; i < count(); ++i) {
    const DocumentPage& page = *all[std::size_t(i)];
    QString name = page.name();
    const auto same = std::ranges::count_if(all, [&](const DocumentPage* each) {
      return !each->path().isEmpty() && each->name() == page.name();
    });
    if (same > 1 && !page.path().isEmpty())
      name += QStringLiteral(" – ") + QFileInfo(page.path()).dir().dirName();
    if (page.is_modified()) name += u'*';
    setTabText(i, name.replace(u'&', QStringLiteral("&&")));
    setTabToolTip(i, QDir::toNativeSeparators(page.path()));
  }
}

void Tabs::tabInserted(int) { show_names(); }
void Tabs::tabRemoved(int) { show_names(); }

void Tabs::close_others(DocumentPage& page) {
  for (DocumentPage* each : pages()) {
    if (each == &page) continue;
    emit close_asked(each);
    // The user wants that one to stay, and has seen enough questions.
    if (indexOf(each) >= 0) return;
  }
}

void Tabs::offer_closing(int index, const QPoint& at) {
  auto* page = qobject_cast<DocumentPage*>(widget(index));
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  connect(menu->addAction(tr("&Close")), &QAction::triggered, page, [this, page] { emit close_asked(page); });
  QAction* others = menu->addAction(tr("Close the &others"));
  others->setEnabled(count() > 1);
  connect(others, &QAction::triggered, page, [this, page] { close_others(*page); });
  menu->popup(at);
}

// In a document Ctrl+Tab leads on to the editor's next part. Where there are several documents it leads to
// the next of them, as it does everywhere, and F6 goes round the parts.
bool Tabs::eventFilter(QObject* watched, QEvent* event) {
  if (watched == tabBar() && event->type() == QEvent::ContextMenu) {
    const auto& press = static_cast<const QContextMenuEvent&>(*event);
    const int index = tabBar()->tabAt(press.pos());
    if (index >= 0) offer_closing(index, press.globalPos());
    return true;
  }
  if (watched == tabBar() && event->type() == QEvent::MouseButtonRelease) {
    const auto& mouse = static_cast<const QMouseEvent&>(*event);
    const int index = tabBar()->tabAt(mouse.position().toPoint());
    if (mouse.button() != Qt::MiddleButton || index < 0) return false;
    emit tabCloseRequested(index);
    return true;
  }
  if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress) return false;
  const auto* target = qobject_cast<QWidget*>(watched);
  if (!target || count() < 2 || target->window() != window()) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  const bool forth = key.key() == Qt::Key_Tab, back = key.key() == Qt::Key_Backtab;
  if (!(key.modifiers() & Qt::ControlModifier) || !(forth || back)) return false;
  if (event->type() == QEvent::ShortcutOverride)
    event->accept();
  else
    step(back || (key.modifiers() & Qt::ShiftModifier) ? -1 : 1);
  return true;
}

}  // namespace tvx::htmled
