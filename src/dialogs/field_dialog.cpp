#include "tvx/dialogs/field_dialog.h"

#include <algorithm>

#include "tvx/base/error.h"
#include "tvx/base/numbers.h"
#include "tvx/base/strings.h"
#include "tvx/dialogs/field_checks.h"
#include "tvx/dialogs/field_members.h"
#include "tvx/dom/journal.h"

namespace tvx::dialogs {

using platform::ControlKind;
using platform::FormControl;

bool is_field(const dom::Element& element) {
  return element.is(dom::Tag::Input) || element.is(dom::Tag::Select) || element.is(dom::Tag::Textarea) ||
         element.is(dom::Tag::Button);
}

FieldDialog::FieldDialog(dom::Element& field) : field_(field) {
  add_rows();
  hide_rows_of_others();
  form_.set_default_button(form_.add_closing_button(u"OKButton", u"OK"));
  form_.set_cancel_button(form_.add_closing_button(u"CancelButton", u"Cancel"));
  fill();
  form_.set_handler(this);
}

// --- rows ---

FormControl& FieldDialog::add_box(std::u16string label, std::u16string caption, std::u16string box) {
  form_.begin_row();
  form_.add_label(std::move(label), std::move(caption));
  return form_.add_text_box(std::move(box));
}

FormControl& FieldDialog::add_number(std::u16string label, std::u16string caption, std::u16string box) {
  FormControl& number = add_box(std::move(label), std::move(caption), std::move(box));
  number.set_columns(6);
  number.set_number({.least = 1, .most = 9999});
  return number;
}

// All kinds of fields have the same rows, of which each shows its own: a language file names them all.
void FieldDialog::add_rows() {
  add_box(u"lblFieldName", u"Name", u"txtName")
      .set_ToolTipText(u"What the value is sent under. Option buttons with the same name are one choice.");
  add_box(u"lblId", u"Id", u"txtId");
  form_.begin_row();
  form_.add_label(u"lblType", u"Type");
  add_types(form_.add_list(u"cboType"));
  add_box(u"lblValue", u"Value", u"txtValue");
  add_number(u"lblSize", u"Size", u"txtSize");
  form_.add_label(u"lblSizeUnit", u"characters");
  form_.add_label(u"lblRowsUnit", u"rows");
  add_number(u"lblColumns", u"Columns", u"txtCols");
  add_number(u"lblRows", u"Rows", u"txtRows");
  form_.begin_row();
  form_.add_check_box(u"chkChecked", u"Checked");
  form_.begin_row();
  form_.add_check_box(u"chkMultiple", u"More than one can be chosen");
  add_option_rows();
  form_.begin_row();
  form_.add_check_box(u"chkDisabled", u"Disabled");
}

void FieldDialog::add_types(FormControl& types) const {
  if (field_->is(dom::Tag::Input))
    for (const std::u16string_view type :
         {u"text", u"password", u"email", u"tel", u"url", u"search", u"number", u"range", u"date", u"time",
          u"color", u"checkbox", u"radio", u"file", u"hidden", u"image"})
      types.AddItem(type);
  for (const std::u16string_view type : {u"submit", u"reset", u"button"}) types.AddItem(type);
}

void FieldDialog::hide_rows_of_others() {
  const bool input = field_->is(dom::Tag::Input), list = field_->is(dom::Tag::Select),
             area = field_->is(dom::Tag::Textarea), button = field_->is(dom::Tag::Button);
  const auto show = [this](bool shown, std::initializer_list<std::u16string_view> names) {
    for (const std::u16string_view name : names) form_.Controls(name).set_Visible(shown);
  };
  show(input || button, {u"lblType", u"cboType"});
  show(!list, {u"lblValue", u"txtValue"});
  show(input || list, {u"lblSize", u"txtSize"});
  show(input, {u"lblSizeUnit", u"chkChecked"});
  show(list, {u"lblRowsUnit", u"chkMultiple", u"fraOptions"});
  show(area, {u"lblColumns", u"txtCols", u"lblRows", u"txtRows"});
}

void FieldDialog::add_option_rows() {
  FormControl& frame = form_.add_frame(u"fraOptions", u"Options");
  form_.begin_row(&frame);
  form_.add_list_box(u"lstOptions");
  form_.begin_row(&frame);
  form_.add_button(u"cmdAddOption", u"Add");
  form_.add_button(u"cmdRemoveOption", u"Remove");
  form_.add_button(u"cmdOptionUp", u"Up");
  form_.add_button(u"cmdOptionDown", u"Down");
  form_.begin_row(&frame);
  form_.add_label(u"lblOptionText", u"Text");
  form_.add_text_box(u"txtOptionText");
  form_.begin_row(&frame);
  form_.add_label(u"lblOptionValue", u"Value");
  form_.add_text_box(u"txtOptionValue").set_ToolTipText(u"What is sent. Empty: the text.");
  form_.begin_row(&frame);
  form_.add_check_box(u"chkOptionSelected", u"Chosen at first");
}

// --- what stands in them ---

void FieldDialog::fill() {
  fill_from(*field_, form_);
  if (field_->is(dom::Tag::Select)) {
    options_ = options_of(*field_);
    show_options(options_.empty() ? -1 : 0);
  }
  show_rows_of_type();
  check();
}

void FieldDialog::write() const {
  const dom::UndoStep step(dom::document_of(*field_).journal(), u"Field Settings");
  write_to(*field_, form_);
  if (field_->is(dom::Tag::Select)) write_options(*field_, options_);
}

void FieldDialog::Click(FormControl& control) {
  if (act_on_options(control) || control.kind() != ControlKind::CommandButton) return;
  if (&control == form_.default_button()) confirmed_ = true;
  form_.Hide();
}

void FieldDialog::Change(FormControl& control) {
  if (filling_) return;
  edit_option(control);
  if (control.Name() == u"cboType") show_rows_of_type();
  check();
}

// Wrong input can't be written: nobody would know what became of it.
void FieldDialog::check() {
  bool right = true;
  for (const auto& control : form_.controls())
    if (control->number() && control->reachable()) right &= check_number(*control, Emptiness::allowed);
  right &= check_id(form_.Controls(u"txtId"));
  form_.default_button()->set_Enabled(right);
}

void FieldDialog::show_rows_of_type() {
  if (!field_->is(dom::Tag::Input)) return;
  const std::u16string& type = form_.Controls(u"cboType").Text();
  const bool ticked = type == u"checkbox" || type == u"radio";
  const bool written = std::ranges::find(text_types, type) != std::end(text_types);
  form_.Controls(u"chkChecked").set_Enabled(ticked);
  for (const std::u16string_view name : {u"lblSize", u"txtSize", u"lblSizeUnit"})
    form_.Controls(name).set_Enabled(written);
}

// --- options ---

EditedOption* FieldDialog::chosen_option() {
  const int index = form_.Controls(u"lstOptions").ListIndex();
  return index < 0 ? nullptr : &options_[static_cast<std::size_t>(index)];
}

void FieldDialog::show_options(int chosen) {
  FormControl& list = form_.Controls(u"lstOptions");
  filling_ = true;
  while (list.ListCount() > static_cast<int>(options_.size())) list.RemoveItem(list.ListCount() - 1);
  for (std::size_t i = 0; i < options_.size(); ++i) {
    const int index = static_cast<int>(i);
    index < list.ListCount() ? list.set_List(index, options_[i].text) : list.AddItem(options_[i].text);
  }
  list.set_ListIndex(chosen);
  filling_ = false;
  show_chosen_option();
}

void FieldDialog::show_chosen_option() {
  const EditedOption* option = chosen_option();
  const int index = form_.Controls(u"lstOptions").ListIndex();
  filling_ = true;
  form_.Controls(u"txtOptionText").set_Text(option ? option->text : u"");
  form_.Controls(u"txtOptionValue").set_Text(option ? option->value : u"");
  form_.Controls(u"chkOptionSelected").set_Value(option && option->selected);
  filling_ = false;
  for (const std::u16string_view name :
       {u"txtOptionText", u"txtOptionValue", u"chkOptionSelected", u"cmdRemoveOption"})
    form_.Controls(name).set_Enabled(option);
  form_.Controls(u"cmdOptionUp").set_Enabled(index > 0);
  form_.Controls(u"cmdOptionDown").set_Enabled(option && index + 1 < static_cast<int>(options_.size()));
}

void FieldDialog::edit_option(const FormControl& control) {
  if (control.Name() == u"lstOptions") return show_chosen_option();
  EditedOption* option = chosen_option();
  if (!option) return;
  if (control.Name() == u"txtOptionValue") option->value = control.Text();
  if (control.Name() == u"chkOptionSelected") {
    if (control.Value() && !form_.Controls(u"chkMultiple").Value())
      for (EditedOption& other : options_) other.selected = false;
    option->selected = control.Value();
  }
  if (control.Name() != u"txtOptionText") return;
  option->text = control.Text();
  filling_ = true;
  FormControl& list = form_.Controls(u"lstOptions");
  list.set_List(list.ListIndex(), option->text);
  filling_ = false;
}

bool FieldDialog::act_on_options(const FormControl& button) {
  if (button.Name() == u"cmdAddOption") {
    add_option();
  } else if (button.Name() == u"cmdRemoveOption") {
    const int index = form_.Controls(u"lstOptions").ListIndex();
    if (index >= 0) options_.erase(options_.begin() + index);
    show_options(std::min(index, static_cast<int>(options_.size()) - 1));
  } else if (button.Name() == u"cmdOptionUp") {
    move_option(-1);
  } else if (button.Name() == u"cmdOptionDown") {
    move_option(1);
  } else {
    return false;
  }
  return true;
}

// The new one's text is typed over at once.
void FieldDialog::add_option() {
  const int index = form_.Controls(u"lstOptions").ListIndex() + 1;
  const int place = index > 0 ? index : static_cast<int>(options_.size());
  options_.insert(options_.begin() + place, EditedOption{});
  show_options(place);
  FormControl& text = form_.Controls(u"txtOptionText");
  form_.SetFocus(text);
}

void FieldDialog::move_option(int by) {
  const int index = form_.Controls(u"lstOptions").ListIndex(), other = index + by;
  if (index < 0 || other < 0 || other >= static_cast<int>(options_.size())) return;
  std::swap(options_[static_cast<std::size_t>(index)], options_[static_cast<std::size_t>(other)]);
  show_options(other);
}

}  // namespace tvx::dialogs
