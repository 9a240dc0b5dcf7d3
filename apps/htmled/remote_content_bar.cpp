#include "htmled/remote_content_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSettings>

#include "htmled/languages.h"

namespace tvx::htmled {
namespace remote_content {
namespace {

constexpr qsizetype most_files = 500;  // those that were answered for last

QString key(bool load) {
  return load ? QStringLiteral("remoteContent/loaded") : QStringLiteral("remoteContent/left");
}

}  // namespace

std::optional<bool> remembered(const QString& file) {
  if (file.isEmpty()) return std::nullopt;
  const QSettings settings = program_settings();
  for (const bool load : {false, true})
    if (settings.value(key(load)).toStringList().contains(file)) return load;
  return std::nullopt;
}

void remember(const QString& file, bool load) {
  if (file.isEmpty()) return;
  QSettings settings = program_settings();
  for (const bool answer : {false, true}) {
    QStringList files = settings.value(key(answer)).toStringList();
    files.removeAll(file);
    if (answer == load) files.append(file);
    settings.setValue(key(answer), files.mid(std::max<qsizetype>(0, files.size() - most_files)));
  }
}

}  // namespace remote_content

RemoteContentBar::RemoteContentBar(QWidget* parent)
    : QFrame(parent),
      question_(new QLabel(this)),
      load_(new QPushButton(this)),
      leave_(new QPushButton(this)) {
  setObjectName(QStringLiteral("remoteContent"));
  load_->setObjectName(QStringLiteral("load"));
  leave_->setObjectName(QStringLiteral("leave"));
  setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
  setAutoFillBackground(true);
  question_->setWordWrap(true);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(question_, 1);
  layout->addWidget(load_);
  layout->addWidget(leave_);
  // The page keeps the keyboard.
  load_->setFocusPolicy(Qt::TabFocus);
  leave_->setFocusPolicy(Qt::TabFocus);
  connect(load_, &QPushButton::clicked, this, [this] { emit answered(true); });
  connect(leave_, &QPushButton::clicked, this, [this] { emit answered(false); });
  show_words();
}

void RemoteContentBar::show_words() {
  question_->setText(
      tr("This page wants pictures or styles from the web. Loading them tells their servers that you look at "
         "it."));
  load_->setText(tr("&Load them"));
  leave_->setText(tr("&Don't load"));
}

}  // namespace tvx::htmled
