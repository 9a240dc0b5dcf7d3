#include "htmled/status/status_bar.h"

#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QToolButton>
#include <cmath>

#include "htmled/counted.h"
#include "htmled/language_names.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/strings.h"
#include "tvx/spelling/dictionary_files.h"

namespace tvx::htmled {
namespace {

/// Those that pages are written in; a file's own is offered besides.
constexpr const char* charsets[] = {"utf-8",       "windows-1252", "iso-8859-2",
                                    "iso-8859-15", "windows-1251", "windows-1256",
                                    "shift_jis",   "euc-jp",       "gb18030"};
constexpr files::LineEnd line_ends[] = {files::LineEnd::Lf, files::LineEnd::CrLf, files::LineEnd::Cr};
constexpr int zooms[] = {50, 75, 90, 100, 110, 125, 150, 200, 300};

QString name_of(files::LineEnd end) {
  return end == files::LineEnd::Lf     ? QStringLiteral("LF")
         : end == files::LineEnd::CrLf ? QStringLiteral("CR LF")
                                       : QStringLiteral("CR");
}

QString name_of(const std::string& charset) { return QString::fromStdString(charset).toUpper(); }

QString percent(double factor) {
  return QLocale().toString(std::lround(factor * 100)) + QStringLiteral(" %");
}

void add_choice(QMenu& menu, const QString& text, bool chosen, const std::function<void()>& act) {
  QAction* item = menu.addAction(text);
  item->setCheckable(true);
  item->setChecked(chosen);
  QObject::connect(item, &QAction::triggered, &menu, act);
}

}  // namespace

StatusBar::StatusBar(QWidget* parent) : QStatusBar(parent), text_(new QLabel(this)) {
  local_images_ = add_button("local_images");
  local_images_->setPopupMode(QToolButton::DelayedPopup);
  local_images_->hide();
  connect(local_images_, &QToolButton::clicked, this, &StatusBar::upload_asked);
  text_->setObjectName(QStringLiteral("counts"));
  addPermanentWidget(text_);
  language_ = add_button("language");
  charset_ = add_button("charset");
  line_end_ = add_button("line_end");
  zoom_ = add_button("zoom");
  const auto fill = [this](QToolButton* button, void (StatusBar::*fill)(QMenu&)) {
    auto* menu = new QMenu(button);
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    connect(menu, &QMenu::aboutToShow, this, [this, menu, fill] {
      menu->clear();
      (this->*fill)(*menu);
    });
  };
  fill(language_, &StatusBar::fill_languages);
  fill(charset_, &StatusBar::fill_charsets);
  fill(line_end_, &StatusBar::fill_line_ends);
  fill(zoom_, &StatusBar::fill_zooms);
  connect(&counts_, &TextCounts::counted, this, &StatusBar::show_counts);
  connect(&counts_, &TextCounts::paused, this, &StatusBar::outdated);
}

QToolButton* StatusBar::add_button(const char* name) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoRaise(true);
  addPermanentWidget(button);
  return button;
}

void StatusBar::set_editor(qt::HTMLedWidget* editor) {
  counts_.set_editor(editor);
  if (!editor) return;
  disconnect(editor, &qt::HTMLedWidget::zoomChanged, this, nullptr);
  connect(editor, &qt::HTMLedWidget::zoomChanged, this, &StatusBar::show_zoom);
  show_zoom(editor->zoom());
}

void StatusBar::show_form(const files::FileForm& form, const QString& language, const QString& spelling) {
  form_ = form;
  language_tag_ = language;
  spelling_tag_ = spelling;
  charset_->setText(name_of(form.charset));
  line_end_->setText(name_of(form.line_end));
  language_->setText(own_language_name(language.isEmpty() ? spelling : language));
}

void StatusBar::show_local_images(int count) {
  local_images_count_ = count;
  local_images_->setVisible(count > 0);
  local_images_->setText(tr("Local images: %1").arg(count));
  local_images_->setToolTip(tr("These images are on this computer only. Press to upload them."));
}

void StatusBar::show_words() {
  show_local_images(local_images_count_);
  show_counts();
  text_->setToolTip(tr("Of the selection and of the document; line ends don't count"));
  language_->setToolTip(tr("The language of the page, in which its spelling is checked"));
  charset_->setToolTip(tr("The character set of the file"));
  line_end_->setToolTip(tr("How the lines of the file end"));
  zoom_->setToolTip(tr("How large the page is shown"));
}

void StatusBar::show_counts() {
  const editing::TextCount& all = counts_.of_document();
  QString words, characters;
  if (const auto& some = counts_.of_selection()) {
    words = counted_of(tr("%1 of %2 word|%1 of %2 words"), some->words, all.words);
    characters = counted_of(tr("%1 of %2 character|%1 of %2 characters"), some->characters, all.characters);
  } else {
    words = counted(tr("%1 word|%1 words"), all.words);
    characters = counted(tr("%1 character|%1 characters"), all.characters);
  }
  text_->setText(tr("%1, %2").arg(words, characters));
}

void StatusBar::show_zoom(double factor) {
  zoom_factor_ = factor;
  zoom_->setText(percent(factor));
}

// --- what is offered ---

void StatusBar::fill_languages(QMenu& menu) {
  add_choice(menu, tr("The page names none"), language_tag_.isEmpty(),
             [this] { emit language_chosen(QString()); });
  menu.addSeparator();
  bool listed = language_tag_.isEmpty();
  for (const spelling::DictionaryFiles& files : spelling::installed_dictionaries()) {
    const QString tag = qt::to_qt(files.language);
    listed = listed || tag == language_tag_;
    add_choice(menu, own_language_name(tag), tag == language_tag_,
               [this, tag] { emit language_chosen(tag); });
  }
  if (!listed)
    add_choice(menu, own_language_name(language_tag_), true, [this] { emit language_chosen(language_tag_); });
}

void StatusBar::fill_charsets(QMenu& menu) {
  bool listed = false;
  const auto add = [&](const std::string& name) {
    listed = listed || name == form_.charset;
    add_choice(menu, name_of(name), name == form_.charset,
               [this, name] { emit charset_chosen(QString::fromStdString(name)); });
  };
  for (const char* name : charsets) add(name);
  if (!listed) add(std::string(form_.charset));
}

void StatusBar::fill_line_ends(QMenu& menu) {
  for (const files::LineEnd end : line_ends)
    add_choice(menu, name_of(end), end == form_.line_end, [this, end] { emit line_end_chosen(end); });
}

void StatusBar::fill_zooms(QMenu& menu) {
  for (const int zoom : zooms)
    add_choice(menu, percent(zoom / 100.0), zoom == std::lround(zoom_factor_ * 100),
               [this, zoom] { emit zoom_chosen(zoom / 100.0); });
}

}  // namespace tvx::htmled
