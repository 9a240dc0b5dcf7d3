#include "htmled/preferences/preferences.h"

#include <QSettings>
#include <algorithm>

#include "htmled/languages.h"

namespace tvx::htmled::preferences {
namespace {

const QString web_content_key = QStringLiteral("remoteContent/usual"),
              new_language_key = QStringLiteral("new/language"), keeps_key = QStringLiteral("unsaved/kept"),
              seconds_key = QStringLiteral("unsaved/seconds"), family_key = QStringLiteral("source/font"),
              size_key = QStringLiteral("source/size"), tab_key = QStringLiteral("source/tab");

}  // namespace

WebContent web_content() {
  return WebContent(std::clamp(program_settings().value(web_content_key, 0).toInt(), 0, 2));
}
void set_web_content(WebContent choice) { program_settings().setValue(web_content_key, int(choice)); }

QString new_page_language() { return program_settings().value(new_language_key).toString(); }
void set_new_page_language(const QString& tag) { program_settings().setValue(new_language_key, tag); }

bool keeps_unsaved() { return program_settings().value(keeps_key, true).toBool(); }
void set_keeps_unsaved(bool keeps) { program_settings().setValue(keeps_key, keeps); }

int keep_seconds() {
  return std::clamp(program_settings().value(seconds_key, usual_seconds).toInt(), fewest_seconds,
                    most_seconds);
}
void set_keep_seconds(int seconds) { program_settings().setValue(seconds_key, seconds); }

std::optional<QFont> code_font() {
  const QSettings settings = program_settings();
  if (!settings.contains(family_key)) return {};
  QFont font(settings.value(family_key).toString());
  font.setPointSizeF(std::clamp(settings.value(size_key, 10).toDouble(), 5.0, 48.0));
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  return font;
}

void set_code_font(const QFont& font) {
  QSettings settings = program_settings();
  settings.setValue(family_key, font.family());
  settings.setValue(size_key, font.pointSizeF());
}

int tab_width() { return std::clamp(program_settings().value(tab_key, usual_tab_width).toInt(), 1, 16); }
void set_tab_width(int letters) { program_settings().setValue(tab_key, letters); }

}  // namespace tvx::htmled::preferences
