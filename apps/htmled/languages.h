#pragma once

#include <QHash>
#include <QLocale>
#include <QSettings>
#include <QString>
#include <QStringList>
#include <QTranslator>
#include <vector>

namespace tvx::htmled {

/// One language that the program speaks: a file of the folder "languages" (docs/localisation.md).
struct Language {
  QString code;  // "de": the file's name
  QString name;  // "Deutsch"
  QString file;
};

/// What the program remembers of its user from one start to the next.
QSettings program_settings();

/// The program's own words in a language, from the section "Application" of its file: the English word, then
/// the other.
class Words final : public QTranslator {
 public:
  /// False if the file can't be read: damage() says why then, and the words stay as they were.
  bool read(const QString& file);
  /// To be told to the user, with the file and the line.
  const QString& damage() const { return damage_; }
  bool isEmpty() const override { return words_.isEmpty(); }
  /// Where a word stands in the program makes no difference.
  QString translate(const char* context, const char* english, const char* note, int number) const override;

 private:
  QHash<QString, QString> words_;
  QString damage_;
};

/// The languages of the program, and the one that it speaks. There is one at a time; at its end the program
/// speaks English from left to right, as before.
class Languages {
 public:
  /// Beside the program, or where an installation has put them.
  static QString folder();

  explicit Languages(const QString& folder = Languages::folder());
  ~Languages();
  Languages(const Languages&) = delete;
  Languages& operator=(const Languages&) = delete;

  /// By their names, without those whose files end too early.
  const std::vector<Language>& all() const { return all_; }
  /// The one of that code, or of its language alone: "de" for "de_AT". Null if there is none. Whose file is
  /// damaged is found as well: who asks for it is told when it is to be spoken.
  const Language* find(const QString& code) const;
  /// What the user chose last, else the first of the system's languages that there is a file for, else
  /// null.
  const Language* preferred(const QStringList& of_system = QLocale::system().uiLanguages()) const;
  /// The user's choice, for the next start.
  static void remember(const Language& language);

  /// From now on the program's words, Qt's own and the direction of windows are those of that language.
  /// False, with all as before, if its file is damaged: damage() says how.
  bool speak(const Language& language);
  const QString& damage() const { return words_.damage(); }
  /// Its code; empty at first.
  const QString& spoken() const { return spoken_; }

 private:
  void fall_silent();

  const Language* of_code(const QString& code) const;

  std::vector<Language> all_, damaged_;
  QString spoken_;
  Words words_;
  QTranslator qt_words_;
};

}  // namespace tvx::htmled
