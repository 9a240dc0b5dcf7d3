#include "htmled/languages.h"

#include <QApplication>
#include <QCollator>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QProxyStyle>
#include <QXmlStreamReader>
#include <algorithm>

#include "tvx/localise/xml_document.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/words.h"

namespace tvx::htmled {
namespace {

using localise::XmlDocument;
using localise::XmlElement;
using qt::from_qt;
using qt::to_qt;

const QString settings_key = QStringLiteral("language");

QString damage_of(const QString& file, const localise::ParseError& error) {
  const QString reason = to_qt(error.reason);
  return error.line > 0 ? qt::translated(u"The language file %1 is damaged in line %2: %3")
                              .arg(file, QString::number(error.line), reason)
                        : qt::translated(u"The language file %1 can't be read: %2").arg(file, reason);
}

/// What the language calls itself; its code, where its file doesn't tell. Nothing where the file isn't whole.
/// No more than its start and its end are looked at: of all words a start needs those of one language.
QString own_name(const QString& path, const QString& code) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray text = file.readAll();
  QXmlStreamReader reader(text);
  if (!reader.readNextStartElement()) return {};
  const QByteArray end = "</" + reader.qualifiedName().toUtf8() + '>';
  if (!text.trimmed().endsWith(end)) return {};
  const QString name = reader.attributes().value(QLatin1String("name")).toString();
  return name.isEmpty() ? code : name;
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
  XmlDocument document;
  if (!document.load(from_qt(file))) {
    damage_ = damage_of(QDir::toNativeSeparators(file), document.parseError());
    return false;
  }
  words_.clear();
  damage_.clear();
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
    const QString path = file.absoluteFilePath(), code = file.completeBaseName();
    const QString name = own_name(path, code);
    name.isEmpty() ? damaged_.push_back({code, code, path}) : all_.push_back({code, name, path});
  }
  const QCollator collator;
  std::ranges::sort(
      all_, [&](const Language& a, const Language& b) { return collator.compare(a.name, b.name) < 0; });
}

Languages::~Languages() { fall_silent(); }

const Language* Languages::of_code(const QString& code) const {
  for (const std::vector<Language>* some : {&all_, &damaged_})
    for (const Language& each : *some)
      if (each.code.toLower().replace(u'_', u'-') == code) return &each;
  return nullptr;
}

const Language* Languages::find(const QString& code) const {
  QString wanted = code.toLower().replace(u'_', u'-');
  for (;;) {
    if (const Language* found = of_code(wanted)) return found;
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

bool Languages::speak(const Language& language) {
  if (!words_.read(language.file)) return false;
  fall_silent();
  spoken_ = language.code;
  const QLocale locale(language.code);
  // What is installed last is asked first: where both have a word, the program's own counts.
  if (qt_words_.load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                     QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(&qt_words_);
  QCoreApplication::installTranslator(&words_);
  if (locale.textDirection() == Qt::RightToLeft) use_leftward_style();
  QGuiApplication::setLayoutDirection(locale.textDirection());
  return true;
}

void Languages::fall_silent() {
  if (spoken_.isEmpty()) return;
  spoken_.clear();
  QCoreApplication::removeTranslator(&words_);
  QCoreApplication::removeTranslator(&qt_words_);
  QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

}  // namespace tvx::htmled
