#pragma once

namespace tvx::qt {
class HTMLedWidget;
}

/// What the Tools menu switches for all documents, kept from one start to the next.
namespace tvx::htmled::writing_choices {

enum class Writing { Waves, AutoFormat };

bool is_on(Writing choice);
void turn(Writing choice);
void apply(qt::HTMLedWidget& editor);

/// Why spelling can't be checked: without a dictionary every word would be a wrong one. Null: it can.
const char* obstacle_to_spelling(bool has_dictionaries);
const char* obstacle_to_spelling();
/// The editor's button says it, too.
void show_obstacle_to_spelling(qt::HTMLedWidget& editor, const char* obstacle);

}  // namespace tvx::htmled::writing_choices
