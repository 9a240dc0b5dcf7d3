#include <utility>

#include "htmled/document/document_page.h"
#include "htmled/document/modified_mark.h"
#include "htmled/unsaved/page_keeper.h"
#include "tvx/browser/html_document.h"
#include "tvx/browser/input/writer_command.h"
#include "tvx/core/htmled.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/mutation.h"
#include "tvx/files/declared_charset.h"
#include "tvx/htmled_widget.h"
#include "tvx/qt/support/strings.h"

/// What the status bar shows of a page, and changes: its language, and how its file spells it.
namespace tvx::htmled {
namespace {

constexpr std::u16string_view language_attribute = u"lang";

}  // namespace

files::FileForm DocumentPage::form() const {
  const auto document = editor_ ? editor_->control().DOM() : nullptr;
  return document ? file_.form_of(document->tree()) : file_.form();
}

QString DocumentPage::language() const {
  const auto document = editor_ ? editor_->control().DOM() : nullptr;
  const dom::Element* root = document ? document->tree().document_element() : nullptr;
  const std::u16string* tag = root ? root->attribute(dom::Name(language_attribute)) : nullptr;
  return tag ? qt::to_qt(*tag) : QString();
}

void DocumentPage::change_page(const std::function<void(dom::Document&)>& change) {
  finish_typing();
  core::HTMLed& control = editor_->control();
  const auto document = control.DOM();
  if (!document) return;
  const bool in_code_view = control.InCodeView();
  if (in_code_view) control.show_Code();
  const std::size_t before = document->tree().journal().depth();
  change(document->tree());
  const bool changed = document->tree().journal().depth() != before;
  if (changed) document->tell_user_change();
  if (in_code_view) control.show_Code();
  if (!changed) return;
  look_later();
  emit form_changed();
}

void DocumentPage::delete_table() {
  finish_typing();
  const auto document = editor_->control().DOM();
  if (!document || !browser::press_command(*document, u"selectTable")) return;
  if (browser::press_command(*document, u"Delete")) document->tell_user_change();
  editor_->setFocus(Qt::OtherFocusReason);
}

void DocumentPage::set_language(const QString& tag) {
  change_page([&](dom::Document& document) {
    dom::Element* root = document.document_element();
    if (!root) return;
    const dom::UndoStep step(document.journal(), u"Language");
    if (tag.isEmpty())
      dom::remove_attribute(*root, dom::Name(language_attribute));
    else
      dom::set_attribute(*root, dom::Name(language_attribute), qt::from_qt(tag));
  });
}

void DocumentPage::set_charset(const QString& name) {
  if (name != QStringLiteral("utf-8")) file_.take_mark_away();
  change_page([&](dom::Document& document) { files::declare_charset(document, name.toStdString()); });
}

void DocumentPage::set_line_end(files::LineEnd end) {
  file_.set_line_end(end);
  mark_->look();
  keeper_->note_change();
  emit form_changed();
}

}  // namespace tvx::htmled
