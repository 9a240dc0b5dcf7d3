#include "tvx/dialogs/form_dialog.h"

#include "tvx/base/error.h"
#include "tvx/base/strings.h"
#include "tvx/dialogs/field_checks.h"
#include "tvx/dom/objects/reflection.h"

namespace tvx::dialogs {

using dom::FormObject;
using platform::FormControl;

namespace {

constexpr std::u16string_view urlencoded = u"application/x-www-form-urlencoded",
                              multipart = u"multipart/form-data";

struct Field {
  std::u16string_view control;
  std::u16string (FormObject::*read)() const;
  void (FormObject::*write)(std::u16string_view);
};

// In the order in which they are written.
constexpr Field fields[] = {{u"txtName", &FormObject::name, &FormObject::set_name},
                            {u"cboMethod", &FormObject::method, &FormObject::set_method},
                            {u"txtAction", &FormObject::action, &FormObject::set_action},
                            {u"cboEncType", &FormObject::encoding, &FormObject::set_encoding},
                            {u"cboTarget", &FormObject::target, &FormObject::set_target}};

}  // namespace

FormDialog::FormDialog(dom::Element& form_element) : element_(form_element) {
  form_.begin_row();
  form_.add_label(u"lblFormName", u"Name");
  form_.add_text_box(u"txtName");
  form_.begin_row();
  form_.add_label(u"lblId", u"Id");
  form_.add_text_box(u"txtId");
  form_.begin_row();
  form_.add_label(u"lblAction", u"Action");
  form_.add_text_box(u"txtAction");
  form_.begin_row();
  form_.add_label(u"lblMethod", u"Method");
  form_.add_combo_box(u"cboMethod", {u"Post", u"Get"});
  form_.begin_row();
  form_.add_label(u"lblEncoding", u"Enc Type");
  form_.add_combo_box(u"cboEncType", {urlencoded, multipart});
  form_.begin_row();
  form_.add_label(u"lblTarget", u"Target");
  form_.add_combo_box(u"cboTarget", {u"_Self", u"_Blank", u"_Parent", u"_Top", u"<- type frame name ->"});
  form_.set_default_button(form_.add_closing_button(u"OKButton", u"OK"));
  form_.set_cancel_button(form_.add_closing_button(u"CancelButton", u"Cancel"));
  form_.add_closing_button(u"cmdRemove", u"Remove Form");
  form_.set_handler(this);
}

// Painting shows what the form has, also in the middle of editing: what has been typed is gone then.
void FormDialog::Paint(platform::Form&) {
  attempt([&] {
    const FormObject object(*element_);
    for (const Field& field : fields) form_.Controls(field.control).set_Text((object.*field.read)());
    form_.Controls(u"txtId").set_Text(element_->attribute_or_empty(dom::names::id));
  });
  offer_encodings();
}

void FormDialog::Change(FormControl& control) {
  if (control.Name() == u"cboMethod") offer_encodings();
  if (control.Name() == u"txtId") form_.default_button()->set_Enabled(check_id(control));
}

// A file can't be sent with GET. Letters count: a form that says nothing reads "get".
void FormDialog::offer_encodings() {
  FormControl& encodings = form_.Controls(u"cboEncType");
  const bool get = form_.Controls(u"cboMethod").Text() == u"Get";
  const std::u16string kept = encodings.Text();
  encodings.Clear();
  encodings.AddItem(urlencoded);
  if (!get) encodings.AddItem(multipart);
  encodings.set_Text(get ? urlencoded : std::u16string_view(kept));
}

void FormDialog::Click(FormControl& button) {
  if (&button == form_.cancel_button()) cancelled_ = true;
  if (button.Name() == u"cmdRemove") removes_ = true;
  form_.Hide();
}

void FormDialog::write() const {
  FormObject object(*element_);
  for (const Field& field : fields)
    attempt([&] {
      const std::u16string& text = form_.Controls(field.control).Text();
      const bool keyword = field.control == u"cboMethod" || field.control == u"cboEncType";
      if (keyword && equals_ignoring_ascii_case(text, (object.*field.read)())) return;
      (object.*field.write)(keyword ? ascii_lower(text) : text);
    });
  attempt([&] {
    const std::u16string_view id = trimmed(form_.Controls(u"txtId").Text());
    if (id != element_->attribute_or_empty(dom::names::id)) dom::set_or_remove(*element_, dom::names::id, id);
  });
}

}  // namespace tvx::dialogs
