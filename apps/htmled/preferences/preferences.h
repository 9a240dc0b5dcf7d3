#pragma once

#include <QFont>
#include <QString>
#include <optional>

/// What the user has chosen in the Preferences dialog and nowhere else, kept from one start to the next.
namespace tvx::htmled::preferences {

/// What becomes of pictures and styles from the web where the user hasn't answered for the page.
enum class WebContent { Ask, Load, Leave };
WebContent web_content();
void set_web_content(WebContent choice);

/// The language that new pages name; empty: that of spelling.
QString new_page_language();
void set_new_page_language(const QString& tag);

/// Whether changed documents are kept for the case of a crash, and how many seconds after a change at most.
constexpr int fewest_seconds = 2, most_seconds = 300, usual_seconds = 8;
bool keeps_unsaved();
void set_keeps_unsaved(bool keeps);
int keep_seconds();
void set_keep_seconds(int seconds);

/// Of the source; nothing: the editor's own.
std::optional<QFont> code_font();
void set_code_font(const QFont& font);
/// In letters.
constexpr int usual_tab_width = 4;
int tab_width();
void set_tab_width(int letters);

}  // namespace tvx::htmled::preferences
