#include <QInputDialog>
#include <QRegularExpression>

#include "htmled/document/document_page.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/dom/tree.h"
#include "tvx/editing/editor.h"
#include "tvx/editing/facts/predicates.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/strings.h"

/// The name by which links lead to a part of a page.
namespace tvx::htmled {
namespace {

const dom::Name identifier(u"id");

/// The paragraph, heading, item or the like that the caret is in.
dom::Element* block_at_caret(const browser::HTMLDocument& document, const editing::Selection& selection) {
  dom::Element* body = document.body();
  dom::Node* node = selection.control() ? selection.control() : selection.focus().node;
  for (; node && node != body; node = node->parent())
    if (auto* element = dom::as<dom::Element>(node);
        element && (selection.control() || editing::is_block_node(*node)))
      return element;
  return nullptr;
}

bool is_taken(const dom::Document& document, const std::u16string& name, const dom::Element& by_others_than) {
  for (const dom::Node* node = &document; node; node = dom::next_in_order(*node)) {
    const auto* element = dom::as<dom::Element>(node);
    if (!element || element == &by_others_than) continue;
    const std::u16string* own = element->attribute(identifier);
    if (own && *own == name) return true;
  }
  return false;
}

/// White space would end the name in an address.
QString as_bookmark(const QString& text) {
  static const QRegularExpression gaps(QStringLiteral(R"([\s#]+)"));
  return QString(text.trimmed()).replace(gaps, QStringLiteral("-"));
}

/// What a reader of the address understands.
QString proposed_bookmark(const dom::Element& block) {
  constexpr int longest = 40;
  static const QRegularExpression foreign(QStringLiteral(R"([^\w]+)"),
                                          QRegularExpression::UseUnicodePropertiesOption);
  static const QRegularExpression ends(QStringLiteral("^-+|-+$"));
  if (!editing::is_heading(block)) return {};
  QString text = qt::to_qt(dom::text_content(block)).toLower().replace(foreign, QStringLiteral("-"));
  return text.left(longest).remove(ends);
}

}  // namespace

void DocumentPage::ask_bookmark() {
  finish_typing();
  const auto document = editor_->control().DOM();
  if (!document || editor_->InCodeView()) return;
  const dom::Ref<dom::Element> block = block_at_caret(*document, document->editor().selection());
  if (!block) return emit told(tr("A bookmark stands in a paragraph, a heading or a cell"));
  const std::u16string* present = block->attribute(identifier);
  const QString before = present ? qt::to_qt(*present) : QString();
  QString name = before.isEmpty() ? proposed_bookmark(*block) : before;
  QString question = tr("Links lead here by this name, with # before it:");
  for (;;) {
    bool accepted = false;
    name = as_bookmark(
        QInputDialog::getText(this, tr("Bookmark"), question, QLineEdit::Normal, name, &accepted));
    if (!accepted || name == before) return;
    if (name.isEmpty() || !is_taken(document->tree(), qt::from_qt(name), *block)) break;
    question = tr("The page has this name already. Another one:");
  }
  change_page([&](dom::Document& page) {
    const dom::UndoStep step(page.journal(), u"Bookmark");
    if (name.isEmpty())
      dom::remove_attribute(*block, identifier);
    else
      dom::set_attribute(*block, identifier, qt::from_qt(name));
  });
}

}  // namespace tvx::htmled
