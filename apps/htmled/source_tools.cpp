#include "htmled/source_tools.h"

#include <QInputDialog>
#include <QPlainTextEdit>
#include <QScrollBar>

#include "htmled/languages.h"
#include "htmled/preferences/preferences.h"
#include "tvx/browser/html_document.h"
#include "tvx/core/htmled.h"
#include "tvx/htmled_widget.h"

namespace tvx::htmled {
namespace {

const QString wrapped_key = QStringLiteral("source/wrapped");

/// Positions of a box count a line's end as one.
std::u16string text_of(platform::TextBox& box) {
  std::u16string text = box.Text();
  std::erase(text, u'\r');
  return text;
}

QPlainTextEdit* box_of(const qt::HTMLedWidget& editor) {
  return editor.findChild<QPlainTextEdit*>(QStringLiteral("TextBox1"));
}

}  // namespace

SourceTools::SourceTools(qt::HTMLedWidget& editor)
    : QObject(&editor), editor_(editor), control_(editor.control().weak_from_this()) {
  editor_.control().add_observer(*this);
  editor_.set_code_assistance(true);
  follow_settings();
}

SourceTools::~SourceTools() {
  if (const auto control = control_.lock()) control->remove_observer(*this);
}

bool SourceTools::wraps() { return program_settings().value(wrapped_key, false).toBool(); }
void SourceTools::remember_wrapping(bool wraps) { program_settings().setValue(wrapped_key, wraps); }
void SourceTools::follow_settings() {
  editor_.set_code_wrapped(wraps());
  if (const auto font = preferences::code_font()) editor_.set_code_font(*font);
  editor_.set_code_tab_width(preferences::tab_width());
}

void SourceTools::ask_for_line(QWidget* owner) {
  const int last = editor_.code_line_count();
  if (last == 0) return;
  bool chosen = false;
  const int line = QInputDialog::getInt(owner, tr("Go to line"), tr("Line, of %1:").arg(last),
                                        editor_.code_line(), 1, last, 1, &chosen);
  if (!chosen) return;
  editor_.go_to_code_line(line);
  QPlainTextEdit* edit = editor_.InCodeView()
                             ? box_of(editor_)
                             : editor_.findChild<QPlainTextEdit*>(QStringLiteral("sideTextBox"));
  if (edit) edit->setFocus(Qt::OtherFocusReason);
}

void SourceTools::view_switched(bool in_code) { in_code ? enter_code() : leave_code(); }

void SourceTools::enter_code() {
  const auto document = editor_.control().DOM();
  dom::Element* body = document ? document->body() : nullptr;
  if (!body) return;
  const core::LetterPlace page = core::letter_place(*body, document->editor().selection().focus());
  platform::TextBox& box = editor_.control().txtCode().TextBox1();
  const std::u16string code = text_of(box);
  if (left_ && left_->place == page && left_->text == code) {
    box.select(left_->start, left_->length);
    if (QPlainTextEdit* edit = box_of(editor_)) edit->verticalScrollBar()->setValue(left_->first_line);
    in_page_ = page;
    return;
  }
  const Offset at = core::offset_at(code, page);
  box.select(at, 0);
  if (QPlainTextEdit* edit = box_of(editor_)) edit->centerCursor();
  in_page_ = core::letter_place(code, at);
}

// Where the caret of the code hasn't moved, the page's selection stays what it is.
void SourceTools::leave_code() {
  const auto document = editor_.control().DOM();
  dom::Element* body = document ? document->body() : nullptr;
  if (!body) return;
  platform::TextBox& box = editor_.control().txtCode().TextBox1();
  const std::u16string code = text_of(box);
  const core::LetterPlace place = core::letter_place(code, box.SelStart() + box.SelLength());
  if (in_page_ != place) document->editor().selection().collapse(core::boundary_at(*body, place));
  left_ = Left{core::letter_place(*body, document->editor().selection().focus()), code, box.SelStart(),
               box.SelLength()};
  if (const QPlainTextEdit* edit = box_of(editor_)) left_->first_line = edit->verticalScrollBar()->value();
}

}  // namespace tvx::htmled
