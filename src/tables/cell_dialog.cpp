#include "tvx/tables/cell_dialog.h"

#include "tvx/base/error.h"
#include "tvx/base/numbers.h"
#include "tvx/base/strings.h"
#include "tvx/dialogs/colour_choice.h"
#include "tvx/dialogs/field_checks.h"
#include "tvx/dom/journal.h"
#include "tvx/dom/objects/table.h"

namespace tvx::tables {

using platform::FormControl;
using Cell = dom::TableCellObject;
using Row = dom::TableRowObject;

namespace {

constexpr int number_columns = 6;
constexpr std::u16string_view size_help = u"In pixels, or with % of the room that there is";

// --- fields and the members that they show ---

template <class Part>
struct Field {
  std::u16string_view control;
  std::u16string (*read)(const Part& part);
  void (*write)(Part& part, std::u16string_view text);
};

// --- those of both ---

template <class Part>
constexpr Field<Part> alignment{u"cboAlign", [](const Part& part) { return part.align(); },
                                [](Part& part, std::u16string_view text) { part.set_align(text); }};
template <class Part>
constexpr Field<Part> vertical_alignment{u"cboVAlign", [](const Part& part) { return part.vAlign(); },
                                         [](Part& part, std::u16string_view text) { part.set_vAlign(text); }};
template <class Part>
constexpr Field<Part> background_colour{u"txtBgcolor", [](const Part& part) { return part.bgColor(); },
                                        [](Part& part, std::u16string_view text) { part.set_bgColor(text); }};
template <class Part>
constexpr Field<Part> border_colour{u"txtborderColor", [](const Part& part) { return part.borderColor(); },
                                    [](Part& part, std::u16string_view text) { part.set_borderColor(text); }};
template <class Part>
constexpr Field<Part> dark_border_colour{
    u"txtBorderColorDark", [](const Part& part) { return part.borderColorDark(); },
    [](Part& part, std::u16string_view text) { part.set_borderColorDark(text); }};
template <class Part>
constexpr Field<Part> light_border_colour{
    u"txtBorderColorLight", [](const Part& part) { return part.borderColorLight(); },
    [](Part& part, std::u16string_view text) { part.set_borderColorLight(text); }};

// --- those of cells ---

std::int32_t whole_number(std::u16string_view text) { return rounded_to_32_bits(number_of(text)); }

constexpr Field<Cell> background{u"txtBackground", [](const Cell& cell) { return cell.background(); },
                                 [](Cell& cell, std::u16string_view text) { cell.set_background(text); }};
// A span of 1 that no attribute names gets none.
constexpr Field<Cell> column_span{u"txtColSpan", [](const Cell& cell) { return to_text(cell.colSpan()); },
                                  [](Cell& cell, std::u16string_view text) {
                                    if (whole_number(text) != cell.colSpan())
                                      cell.set_colSpan(whole_number(text));
                                  }};
constexpr Field<Cell> row_span{u"txtRowSpan", [](const Cell& cell) { return to_text(cell.rowSpan()); },
                               [](Cell& cell, std::u16string_view text) {
                                 if (whole_number(text) != cell.rowSpan())
                                   cell.set_rowSpan(whole_number(text));
                               }};
constexpr Field<Cell> height{u"txtHeight", [](const Cell& cell) { return cell.height(); },
                             [](Cell& cell, std::u16string_view text) { cell.set_height(text); }};
constexpr Field<Cell> width{u"txtWidth", [](const Cell& cell) { return cell.width(); },
                            [](Cell& cell, std::u16string_view text) { cell.set_width(text); }};

// In the order in which attributes that aren't there yet come into the element.
constexpr Field<Cell> cell_fields[] = {alignment<Cell>,
                                       vertical_alignment<Cell>,
                                       background,
                                       column_span,
                                       height,
                                       row_span,
                                       width,
                                       background_colour<Cell>,
                                       border_colour<Cell>,
                                       dark_border_colour<Cell>,
                                       light_border_colour<Cell>};
constexpr Field<Row> row_fields[] = {alignment<Row>,     vertical_alignment<Row>, background_colour<Row>,
                                     border_colour<Row>, dark_border_colour<Row>, light_border_colour<Row>};

/// Documents write "LEFT" as well as "left".
void choose(FormControl& list, std::u16string_view text) {
  for (int i = 0; i < list.ListCount(); ++i)
    if (equals_ignoring_ascii_case(list.List(i), text)) list.set_ListIndex(i);
}

template <class Part>
void fill(platform::Form& form, const Field<Part>& field, const Part& part) {
  FormControl& control = form.Controls(field.control);
  if (control.kind() == platform::ControlKind::ComboBox)
    choose(control, field.read(part));
  else
    control.set_Text(field.read(part));
}

/// A value that the list doesn't offer leaves it with nothing chosen: that is no wish to lose the value.
template <class Part>
void apply(const platform::Form& form, const Field<Part>& field, Part& part) {
  const FormControl& control = form.Controls(field.control);
  if (control.kind() == platform::ControlKind::ComboBox &&
      (control.Text().empty() || equals_ignoring_ascii_case(control.Text(), field.read(part))))
    return;
  field.write(part, control.Text());
}

template <class Part, std::size_t count>
void fill_all(platform::Form& form, const Field<Part> (&fields)[count], dom::Element& element) {
  attempt([&] {
    const Part part(element);
    for (const Field<Part>& each : fields) attempt([&] { fill(form, each, part); });
  });
}

template <class Part, std::size_t count>
void apply_all(const platform::Form& form, const Field<Part> (&fields)[count], dom::Element& element,
               std::u16string_view label) {
  attempt([&] {
    Part part(element);
    const dom::UndoStep step(dom::document_of(element).journal(), label);
    for (const Field<Part>& each : fields) attempt([&] { apply(form, each, part); });
  });
}

}  // namespace

// --- layout ---

CellDialog::CellDialog(platform::CommonDialogs& dialogs) : dialogs_(dialogs) {
  form_.begin_row();
  add_list(u"lblHAlign", u"H. Align", u"cboAlign", {u"left", u"center", u"right"});
  add_list(u"lblVAlign", u"V. Align", u"cboVAlign", {u"top", u"middle", u"bottom", u"baseline"});
  form_.begin_row();
  add_pair(u"lblHeight", u"Height", u"txtHeight", {}).set_ToolTipText(size_help);
  add_pair(u"lblWidth", u"Width", u"txtWidth", {}).set_ToolTipText(size_help);
  form_.begin_row();
  add_pair(u"lblColSpan", u"Column Span", u"txtColSpan", {.least = 1, .most = 1000});
  add_pair(u"lblRowSpan", u"Row Span", u"txtRowSpan", {.least = 0, .most = 65534});
  form_.begin_row();
  form_.add_label(u"lblBackground", u"Background");
  form_.add_text_box(u"txtBackground");
  form_.begin_row();
  form_.add_label(u"lblStyle", u"Style");
  form_.add_text_box(u"txtStyle");
  dialogs::add_colour_row(form_, nullptr, u"lblBGColor", u"bgColor", u"txtBgcolor", u"Command1");
  dialogs::add_colour_row(form_, nullptr, u"lblBorderColor", u"border Color", u"txtborderColor", u"Command2");
  dialogs::add_colour_row(form_, nullptr, u"lblBorderColorDark", u"border Color dark", u"txtBorderColorDark",
                          u"Command3");
  dialogs::add_colour_row(form_, nullptr, u"lblBorderColorLight", u"border Color light",
                          u"txtBorderColorLight", u"Command4");
  form_.set_default_button(form_.add_closing_button(u"OKButton", u"OK"));
  form_.set_cancel_button(form_.add_closing_button(u"CancelButton", u"Cancel"));
  form_.set_handler(this);
}

void CellDialog::add_list(std::u16string label, std::u16string caption, std::u16string list,
                          std::initializer_list<std::u16string_view> items) {
  form_.add_label(std::move(label), std::move(caption));
  form_.add_list(std::move(list), items);
}

FormControl& CellDialog::add_pair(std::u16string label, std::u16string caption, std::u16string box,
                                  platform::NumberRange range) {
  form_.add_label(std::move(label), std::move(caption));
  FormControl& number = form_.add_text_box(std::move(box));
  number.set_columns(number_columns);
  number.set_number(range);
  return number;
}

// --- what it does ---

// Wrong spans and sizes are marked, and may be confirmed all the same: each is left as it was by itself.
void CellDialog::Change(FormControl&) {
  dialogs::check_colours(form_);
  for (const std::u16string_view name : {u"txtColSpan", u"txtRowSpan"})
    if (FormControl& span = form_.Controls(name); span.reachable())
      dialogs::check_number(span, dialogs::Emptiness::allowed);
  for (const std::u16string_view name : {u"txtHeight", u"txtWidth"})
    if (FormControl& size = form_.Controls(name); size.reachable()) dialogs::check_length(size);
}

// Other than in the table's dialog the field itself keeps its colour.
void CellDialog::Click(FormControl& button) {
  if (FormControl* field = button.colour_field()) {
    const dialogs::ChosenColour chosen = dialogs::colour_choose2(dialogs_, form_);
    if (!chosen.text.empty()) field->set_Text(chosen.text);
    return;
  }
  if (&button == form_.cancel_button()) booCancel_ = true;
  if (&button == form_.cancel_button() || &button == form_.default_button()) form_.Hide();
}

void CellDialog::set_oCell(dom::Ref<dom::Element> cell) {
  cell_ = std::move(cell);
  if (cell_) fill_all(form_, cell_fields, *cell_);
}

dom::Ref<dom::Element> CellDialog::oCell() {
  if (cell_) apply_all(form_, cell_fields, *cell_, u"Cell Properties");
  return cell_;
}

void CellDialog::set_oRow(dom::Ref<dom::Element> row) {
  row_ = std::move(row);
  form_.set_Caption(u"Row Properties");
  if (row_) fill_all(form_, row_fields, *row_);
  for (const std::u16string_view name :
       {u"txtBackground", u"txtColSpan", u"txtRowSpan", u"txtHeight", u"txtWidth"}) {
    FormControl& box = form_.Controls(name);
    box.set_Enabled(false);
    box.set_BackColor(platform::button_face);
  }
}

dom::Ref<dom::Element> CellDialog::oRow() {
  if (row_) apply_all(form_, row_fields, *row_, u"Row Properties");
  return row_;
}

}  // namespace tvx::tables
