#include "htmled/help/handbook.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QListWidget>
#include <QRegularExpression>
#include <QSettings>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStyle>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

#include "htmled/first_size.h"
#include "htmled/help/pictures_in_text.h"
#include "htmled/languages.h"

namespace tvx::htmled {
namespace {

const QString first_page = QStringLiteral("index.md"), geometry_key = QStringLiteral("handbook/geometry"),
              parts_key = QStringLiteral("handbook/parts"), zoom_key = QStringLiteral("handbook/zoom");
constexpr int most_zoom = 12, least_zoom = -4, file_name = Qt::UserRole;

/// Qt's blue for links is too dark to be read on a dark page.
QPalette with_legible_links(QPalette colours) {
  if (colours.color(QPalette::Base).lightness() < 128) colours.setColor(QPalette::Link, QColor(0x8AB4F8));
  return colours;
}

/// Markdown's links come with the colour that the program's palette had.
void colour_links(QTextDocument& document, const QColor& colour) {
  QTextCharFormat link;
  link.setForeground(colour);
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
    for (auto piece = block.begin(); !piece.atEnd(); ++piece) {
      const QTextFragment text = piece.fragment();
      if (!text.charFormat().isAnchor()) continue;
      QTextCursor words(&document);
      words.setPosition(text.position());
      words.setPosition(text.position() + text.length(), QTextCursor::KeepAnchor);
      words.mergeCharFormat(link);
    }
}

}  // namespace

QString Handbook::folder() {
  const QDir program(QCoreApplication::applicationDirPath());
  const QString beside = program.filePath(QStringLiteral("handbook")),
                installed = program.filePath(QStringLiteral("../share/tvxhtml/handbook"));
  // The way to the pages may be a link: pictures beside them are found from where they really are.
  if (const QString path = QFileInfo(beside).canonicalFilePath(); !path.isEmpty()) return path;
  return QDir::cleanPath(installed);
}

Handbook::Handbook(const QString& folder, QWidget* parent)
    : QDialog(parent),
      folder_(folder),
      parts_(new QSplitter),
      contents_(new QListWidget),
      page_(new QTextBrowser) {
  setObjectName(QStringLiteral("handbook"));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  page_->setOpenExternalLinks(true);
  page_->setPalette(with_legible_links(palette()));
  page_->document()->setDocumentMargin(16);
  new PicturesInText(*page_->document());
  parts_->addWidget(contents_);
  parts_->addWidget(page_);
  parts_->setStretchFactor(1, 1);
  parts_->setChildrenCollapsible(false);
  make_actions();
  layout()->addWidget(parts_);
  make_contents();
  connect(page_, &QTextBrowser::sourceChanged, this, &Handbook::show_position);
  connect(contents_, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* item) {
    if (item) open(item->data(file_name).toString());
  });
  show_words();
  const QSettings settings = program_settings();
  if (!restoreGeometry(settings.value(geometry_key).toByteArray())) set_first_size(*this, {940, 680});
  if (!parts_->restoreState(settings.value(parts_key).toByteArray())) parts_->setSizes({220, 720});
  zoom(settings.value(zoom_key).toInt());
  contents_->count() > 0 ? open(first_page) : say_missing();
  page_->setFocus();
}

// --- what it is made of ---

void Handbook::make_actions() {
  auto* bar = new QToolBar;
  bar->setIconSize({20, 20});
  back_ = bar->addAction(style()->standardIcon(QStyle::SP_ArrowBack), {}, page_, &QTextBrowser::backward);
  forward_ =
      bar->addAction(style()->standardIcon(QStyle::SP_ArrowForward), {}, page_, &QTextBrowser::forward);
  home_ = bar->addAction(QString(), this, [this] { open(first_page); });
  back_->setShortcut(QKeySequence::Back);
  forward_->setShortcut(QKeySequence::Forward);
  home_->setShortcut(Qt::ALT | Qt::Key_Home);
  back_->setEnabled(false);
  forward_->setEnabled(false);
  connect(page_, &QTextBrowser::backwardAvailable, back_, &QAction::setEnabled);
  connect(page_, &QTextBrowser::forwardAvailable, forward_, &QAction::setEnabled);
  const auto key = [this](const QKeySequence& keys, auto act) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
  };
  key(Qt::CTRL | Qt::Key_Plus, [this] { zoom(1); });
  key(Qt::CTRL | Qt::Key_Equal, [this] { zoom(1); });
  key(Qt::CTRL | Qt::Key_Minus, [this] { zoom(-1); });
  key(Qt::CTRL | Qt::Key_0, [this] { zoom(-zoomed_); });
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(6, 2, 6, 6);
  column->setSpacing(2);
  column->addWidget(bar);
}

void Handbook::make_contents() {
  QFile file(path_of(first_page));
  if (!file.open(QIODevice::ReadOnly)) return;
  const QString text = QString::fromUtf8(file.readAll());
  static const QRegularExpression heading(QStringLiteral("^# (.+)$"), QRegularExpression::MultilineOption),
      link(QStringLiteral(R"(\[([^\]]+)\]\(([-\w]+\.md)\))"));
  const auto add = [this](const QString& title, const QString& name) {
    auto* item = new QListWidgetItem(title, contents_);
    item->setData(file_name, name);
  };
  add(heading.match(text).captured(1), first_page);
  for (auto found = link.globalMatch(text); found.hasNext();) {
    const QRegularExpressionMatch match = found.next();
    add(match.captured(1), match.captured(2));
  }
}

void Handbook::show_words() {
  setWindowTitle(tr("Handbook"));
  contents_->setAccessibleName(tr("Contents"));
  const auto name = [](QAction& action, const QString& words) {
    action.setText(words);
    action.setToolTip(
        QStringLiteral("%1 (%2)").arg(words, action.shortcut().toString(QKeySequence::NativeText)));
  };
  name(*back_, tr("Back"));
  name(*forward_, tr("Forward"));
  name(*home_, tr("Start of the handbook"));
}

void Handbook::say_missing() {
  contents_->hide();
  home_->setEnabled(false);
  page_->setPlainText(tr("The handbook isn't installed: its pages should be in the folder %1.").arg(folder_));
}

// --- pages ---

QString Handbook::path_of(const QString& name) const { return QDir(folder_).filePath(name); }

void Handbook::open(const QString& name) {
  const QUrl url = QUrl::fromLocalFile(path_of(name));
  if (page_->source() != url) page_->setSource(url);
}

// The browser's own source() is still the page before.
void Handbook::show_position(const QUrl& url) {
  colour_links(*page_->document(), page_->palette().color(QPalette::Link));
  const QSignalBlocker blocker(contents_);
  for (int i = 0; i < contents_->count(); ++i)
    if (contents_->item(i)->data(file_name).toString() == url.fileName()) contents_->setCurrentRow(i);
}

void Handbook::zoom(int steps) {
  steps = std::clamp(zoomed_ + steps, least_zoom, most_zoom) - zoomed_;
  zoomed_ += steps;
  page_->zoomIn(steps);
}

// --- how it stands ---

void Handbook::hideEvent(QHideEvent* event) {
  QSettings settings = program_settings();
  settings.setValue(geometry_key, saveGeometry());
  settings.setValue(parts_key, parts_->saveState());
  settings.setValue(zoom_key, zoomed_);
  QDialog::hideEvent(event);
}

void Handbook::changeEvent(QEvent* event) {
  if (event->type() == QEvent::LanguageChange) show_words();
  if (event->type() == QEvent::PaletteChange) {
    page_->setPalette(with_legible_links(palette()));
    colour_links(*page_->document(), page_->palette().color(QPalette::Link));
  }
  QDialog::changeEvent(event);
}

void open_handbook(QWidget& window) {
  auto* handbook = window.findChild<Handbook*>();
  if (!handbook) handbook = new Handbook(Handbook::folder(), &window);
  handbook->show();
  handbook->raise();
  handbook->activateWindow();
}

}  // namespace tvx::htmled
