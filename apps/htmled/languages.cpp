#include "htmled/languages.h"

#include <QApplication>
#include <QCollator>
#include <QDir>
#include <QLibraryInfo>
#include <QProxyStyle>
#include <algorithm>

#include "tvx/localise/xml_document.h"
#include "tvx/qt/support/strings.h"

namespace tvx::htmled {
namespace {

using localise::XmlDocument;
using localise::XmlElement;
using qt::from_qt;
using qt::to_qt;

const QString settings_key = QStringLiteral("language");

/// What the language calls itself; the code, where its file doesn't tell.
QString own_name(const XmlElement& root, const QString& code) {
  for (const localise::XmlAttribute& attribute : root.attributes())
    if (attribute.name == u"name") return to_qt(attribute.value);
  return code;
}

/// Words from right to left. An underlined letter is drawn by itself: the letters of Arabic that meet it
/// don't any more, and the word grows out of its room. Beside a picture the words of a button stand on its
/// edge.
class LeftwardStyle final : public QProxyStyle {
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* more) const override {
    if (QGuiApplication::isRightToLeft() &&
        (hint == SH_UnderlineShortcut || hint == SH_DialogButtonBox_ButtonsHaveIcons))
      return 0;
    return QProxyStyle::styleHint(hint, option, widget, more);
  }
};

void use_leftward_style() {
  if (!qobject_cast<QApplication*>(qApp)) return;
  static const bool once = [] {
    QApplication::setStyle(new LeftwardStyle);
    return true;
  }();
  static_cast<void>(once);
}

}  // namespace

QSettings program_settings() {
  return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("tvxHTML"),
                   QStringLiteral("htmled"));
}

// --- words ---

bool Words::read(const QString& file) {
  words_.clear();
  XmlDocument document;
  if (!document.load(from_qt(file))) return false;
  const XmlElement* section = document.documentElement()->child_named(u"Application");
  if (!section) return true;
  for (const XmlElement* entry : section->children())
    if (entry->children().size() == 2)
      words_.insert(to_qt(entry->child(0)->text()), to_qt(entry->child(1)->text()));
  return true;
}

QString Words::translate(const char*, const char* english, const char*, int) const {
  return words_.value(QString::fromUtf8(english));
}

// --- languages ---

QString Languages::folder() {
  const QDir program(QCoreApplication::applicationDirPath());
  for (const char* place : {"languages", "../share/tvxhtml/languages"})
    if (const QString path = program.filePath(QString::fromLatin1(place)); QDir(path).exists()) return path;
  return {};
}

Languages::Languages(const QString& folder) {
  if (folder.isEmpty()) return;
  for (const QFileInfo& file : QDir(folder).entryInfoList({QStringLiteral("*.xml")}, QDir::Files)) {
    XmlDocument document;
    if (!document.load(from_qt(file.absoluteFilePath()))) continue;
    const QString code = file.completeBaseName();
    all_.push_back({code, own_name(*document.documentElement(), code), file.absoluteFilePath()});
  }
  const QCollator collator;
  std::ranges::sort(
      all_, [&](const Language& a, const Language& b) { return collator.compare(a.name, b.name) < 0; });
}

Languages::~Languages() { fall_silent(); }

const Language* Languages::find(const QString& code) const {
  QString wanted = code.toLower().replace(u'_', u'-');
  for (;;) {
    const auto found = std::ranges::find_if(
        all_, [&](const Language& each) { return each.code.toLower().replace(u'_', u'-') == wanted; });
    if (found != all_.end()) return &*found;
    const qsizetype end = wanted.lastIndexOf(u'-');
    if (end <= 0) return nullptr;
    wanted.truncate(end);
  }
}

const Language* Languages::preferred(const QStringList& of_system) const {
  if (const Language* chosen = find(program_settings().value(settings_key).toString())) return chosen;
  for (const QString& code : of_system)
    if (const Language* language = find(code)) return language;
  return nullptr;
}

void Languages::remember(const Language& language) {
  program_settings().setValue(settings_key, language.code);
}

void Languages::speak(const Language& language) {
  fall_silent();
  spoken_ = language.code;
  const QLocale locale(language.code);
  // What is installed last is asked first: where both have a word, the program's own counts.
  if (qt_words_.load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                     QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(&qt_words_);
  if (words_.read(language.file)) QCoreApplication::installTranslator(&words_);
  if (locale.textDirection() == Qt::RightToLeft) use_leftward_style();
  QGuiApplication::setLayoutDirection(locale.textDirection());
}

void Languages::fall_silent() {
  if (spoken_.isEmpty()) return;
  spoken_.clear();
  QCoreApplication::removeTranslator(&words_);
  QCoreApplication::removeTranslator(&qt_words_);
  QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

}  // namespace tvx::htmled
