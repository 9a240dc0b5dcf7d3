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

}  // namespace tvx::htmled::writing_choices
