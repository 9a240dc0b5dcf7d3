#include "tvx/tables/table_dialog.h"

#include "tvx/dialogs/colour_choice.h"
#include "tvx/dialogs/field_checks.h"
#include "tvx/dom/journal.h"
#include "tvx/tables/table_html.h"

namespace tvx::tables {

using platform::FormControl;

namespace {

constexpr int number_columns = 5;

/// Without rows and columns there is no table.
bool is_count(const FormControl& box) {
  return box.Name() == u"txttablerow" || box.Name() == u"txttablecolumns";
}

}  // namespace

// --- layout ---

TableDialog::TableDialog(platform::CommonDialogs& dialogs) : dialogs_(dialogs) {
  add_table_frame();
  add_cell_frame();
  form_.set_default_button(form_.add_closing_button(u"cmdApply", u"OK"));
  form_.set_cancel_button(form_.add_closing_button(u"cmdCancel", u"Cancel"));
  form_.set_handler(this);
}

// Numbers are short: two of them stand side by side.
void TableDialog::add_table_frame() {
  FormControl& frame = form_.add_frame(u"lblTableAttributes", u"Table Settings");
  form_.begin_row(&frame);
  add_number(u"lblrows", u"Number of Rows", u"txttablerow", u"1");
  add_number(u"lblcolumns", u"Number of Columns", u"txttablecolumns", u"4");
  form_.begin_row(&frame);
  add_number(u"lblWidth", u"Width (%)", u"txtWidth", u"");
  add_number(u"lblBorderWidth", u"Border Width", u"txtBorderwidth", u"1");
  form_.add_label(u"lblBorderUnit", u"px");
  form_.begin_row(&frame);
  add_number(u"lblCellSpacing", u"Cell spacing", u"txtCellSpacing", u"0");
  form_.add_label(u"lblSpacingUnit", u"px");
  add_number(u"lblCellPadding", u"Cell padding", u"txtCellPadding", u"0");
  form_.add_label(u"lblPaddingUnit", u"px");
  dialogs::add_colour_row(form_, &frame, u"lblBorderColor", u"Border Colour", u"txtBorderColour",
                          u"cmdBorderColour");
  dialogs::add_colour_row(form_, &frame, u"lblBackgroundColor", u"Background Color", u"txtBackColour",
                          u"cmdBackColour");
  form_.begin_row(&frame);
  form_.add_label(u"lblStyle", u"Style");
  form_.add_text_box(u"txtStyle").set_ToolTipText(u"Enter a vaild CSS string");
}

void TableDialog::add_cell_frame() {
  FormControl& frame = form_.add_frame(u"lblCellAttributes", u"Cell Settings");
  dialogs::add_colour_row(form_, &frame, u"lblCellBorderColor", u"Border Color", u"txtBorderColourCell",
                          u"cmdBorderColourCell");
  dialogs::add_colour_row(form_, &frame, u"lblCellBackgroundColor", u"Background Color",
                          u"txtBackgroundColourCell", u"cmdBackgroundColourCell");
}

void TableDialog::add_number(std::u16string label, std::u16string caption, std::u16string box,
                             std::u16string_view text) {
  form_.add_label(std::move(label), std::move(caption));
  FormControl& number = form_.add_text_box(std::move(box), text);
  number.set_columns(number_columns);
  number.set_number({.least = is_count(number) ? 1 : 0});
}

// --- what it does ---

const std::u16string& TableDialog::text(std::u16string_view box) const { return form_.Controls(box).Text(); }

void TableDialog::Click(FormControl& button) {
  if (FormControl* field = button.colour_field()) {
    const dialogs::ChosenColour chosen = dialogs::colour_choose2(dialogs_, form_);
    if (chosen.text.empty()) return;
    field->set_Text(chosen.text);
    field->set_BackColor(static_cast<platform::FormColour>(chosen.colour));
  } else if (&button == form_.default_button()) {
    apply();
  } else if (&button == form_.cancel_button()) {
    cancelled_ = true;
    form_.Hide();
  }
}

void TableDialog::Change(FormControl&) { check(); }

// Wrong numbers are marked, and may be confirmed all the same: what comes of them is known to hosts, up to
// the press that fails. A percent sign comes by itself into a new table; one that is there has it in its
// fields.
void TableDialog::check() {
  dialogs::check_colours(form_);
  for (const auto& control : form_.controls()) {
    if (!control->number() || !control->reachable()) continue;
    if (of_a_table_)
      dialogs::check_length(*control);
    else
      dialogs::check_number(*control,
                            is_count(*control) ? dialogs::Emptiness::refused : dialogs::Emptiness::allowed);
  }
}

// A number that is too large ends the press here, and the dialog stays open.
void TableDialog::apply() {
  table_html_ = html_of({.rows = text(u"txttablerow"),
                         .columns = text(u"txttablecolumns"),
                         .width = text(u"txtWidth"),
                         .cell_spacing = text(u"txtCellSpacing"),
                         .border = text(u"txtBorderwidth"),
                         .border_colour = text(u"txtBorderColour"),
                         .background = text(u"txtBackColour"),
                         .cell_border_colour = text(u"txtBorderColourCell"),
                         .cell_background = text(u"txtBackgroundColourCell")});
  form_.Hide();
}

// --- a table that is there ---

void TableDialog::show_settings_of(const dom::TableObject& table) {
  of_a_table_ = true;
  const auto fill = [&](std::u16string_view box, const std::u16string& text) {
    form_.Controls(box).set_Text(text);
  };
  fill(u"txtBackColour", table.bgColor());
  fill(u"txtBorderColour", table.borderColor());
  fill(u"txtBorderwidth", table.border());
  fill(u"txtWidth", table.width());
  fill(u"txtCellSpacing", table.cellSpacing());
  fill(u"txtCellPadding", table.cellPadding());
  for (const std::u16string_view name :
       {u"txttablecolumns", u"txttablerow", u"txtBackgroundColourCell", u"txtBorderColourCell",
        u"lblCellAttributes", u"lblCellBackgroundColor", u"lblCellBorderColor", u"lblrows", u"lblcolumns",
        u"cmdBackgroundColourCell", u"cmdBorderColourCell"})
    form_.Controls(name).set_Enabled(false);
  check();
}

void TableDialog::write_settings_to(dom::TableObject& table, ColoursOfCells colours) const {
  const std::u16string &background = text(u"txtBackColour"), &border_colour = text(u"txtBorderColour");
  const dom::UndoStep step(dom::document_of(table.element()).journal(), u"Table Properties");
  const bool to_all = colours == ColoursOfCells::AsTheTable;
  const bool new_background = to_all || background != table.bgColor(),
             new_border = to_all || border_colour != table.borderColor();
  table.set_bgColor(background);
  table.set_borderColor(border_colour);
  table.set_border(text(u"txtBorderwidth"));
  table.set_width(text(u"txtWidth"));
  if (new_border) {
    table.set_borderColorDark(border_colour);
    table.set_borderColorLight(border_colour);
  }
  table.set_cellSpacing(text(u"txtCellSpacing"));
  table.set_cellPadding(text(u"txtCellPadding"));
  if (!new_background && !new_border) return;
  for (dom::Element* row : table.rows())
    for (dom::Element* element : dom::TableRowObject(*row).cells()) {
      dom::TableCellObject cell(*element);
      if (new_border) cell.set_borderColor(border_colour);
      if (new_background) cell.set_bgColor(background);
    }
}

}  // namespace tvx::tables
