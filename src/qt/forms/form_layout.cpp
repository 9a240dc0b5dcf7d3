#include "tvx/qt/forms/form_layout.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <algorithm>

#include "tvx/qt/forms/form_widgets.h"
#include "tvx/qt/forms/mnemonics.h"
#include "tvx/qt/support/caption_label.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/words.h"

namespace tvx::qt {
namespace {

using platform::ControlKind;
using platform::FormControl;

constexpr int letters_of_a_paragraph = 60, letters_of_a_long_box = 80;
/// A label, its field, and what keeps the next one apart.
constexpr int grid_columns = 3, gap = 10;

bool is_label(const FormControl* control) { return control->kind() == ControlKind::Label; }

/// What a label can lead to, and what must not become wider than it wants.
bool is_pressed(const FormControl* control) {
  return control->kind() == ControlKind::CheckBox || control->kind() == ControlKind::CommandButton;
}

/// A box that nothing stands beside is for long texts.
bool is_wide_box(const FormControl* control) {
  return control->kind() == ControlKind::TextBox && !control->columns();
}

bool fills_its_row(const QWidget& widget) {
  return widget.sizePolicy().expandingDirections() & Qt::Horizontal;
}

// What is no letter names nothing: "…".
bool has_words(const FormControl* control) {
  const QString caption = to_qt(control->Caption());
  return std::ranges::any_of(caption, [](QChar letter) { return letter.isLetterOrNumber(); });
}

}  // namespace

FormLayout::FormLayout(const platform::Form& form, const Widgets& widgets, QWidget& form_widget)
    : form_(form), widgets_(widgets), form_widget_(form_widget) {
  grid_of(nullptr).layout->setContentsMargins({});
  for (const platform::FormRow& row : form.rows()) {
    if (row.controls.empty()) continue;
    Grid& grid = grid_of(row.frame);
    grid.rows.push_back(fields_of(row));
    grid.columns = std::max(grid.columns, grid.rows.back().size());
    grid.has_labels |=
        std::ranges::any_of(grid.rows.back(), [](const Field& field) { return field.label != nullptr; });
  }
  for (Grid& grid : grids_) fill(grid);
  captions_changed();
  reach_changed();
}

// A label begins a field, if something follows that it can name. Else it is a unit, which belongs to what
// stands before it, or text of its own.
std::vector<FormLayout::Field> FormLayout::fields_of(const platform::FormRow& row) {
  std::vector<Field> fields;
  for (std::size_t i = 0; i < row.controls.size(); ++i) {
    const FormControl* control = row.controls[i];
    const bool names = is_label(control) && i + 1 < row.controls.size() && !is_label(row.controls[i + 1]);
    if (names)
      fields.push_back({control});
    else if (fields.empty())
      fields.push_back({nullptr, {control}});
    else
      fields.back().controls.push_back(control);
  }
  return fields;
}

FormLayout::Grid& FormLayout::grid_of(const FormControl* frame) {
  const auto known = std::ranges::find(grids_, frame, &Grid::frame);
  if (known != grids_.end()) return *known;
  QWidget* parent = frame ? widget_of(frame) : &form_widget_;
  return grids_.emplace_back(Grid{frame, new QGridLayout(parent)});
}

void FormLayout::fill(Grid& grid) {
  int row = 0;
  for (const std::vector<Field>& fields : grid.rows) {
    for (std::size_t place = 0; place < fields.size(); ++place)
      add_field(fields[place], grid, row, int(place), place + 1 == fields.size());
    row += 2;  // the second is for what is wrong with the first
  }
  for (std::size_t place = 0; place < grid.columns; ++place)
    grid.layout->setColumnStretch(grid_columns * int(place) + 1, 1);
  for (std::size_t place = 1; place < grid.columns; ++place)
    grid.layout->setColumnMinimumWidth(grid_columns * int(place) - 1, gap);
  // What the user makes it higher by goes to a list with columns, else it stays below.
  const auto has_list = [](const std::vector<Field>& fields) {
    return fields.front().controls.front()->kind() == ControlKind::ListView;
  };
  const auto list = std::ranges::find_if(grid.rows, has_list);
  grid.layout->setRowStretch(2 * int(list - grid.rows.begin()), 1);
}

void FormLayout::add_field(const Field& field, Grid& grid, int row, int place, bool last) {
  const int label = grid_columns * place,
            end = (last ? grid_columns * int(grid.columns) : label + grid_columns) - 1;
  const bool below_fields = grid.has_labels && std::ranges::all_of(field.controls, is_pressed);
  const int from = field.label || below_fields ? label + 1 : label;
  add_controls(field, grid, row, from, end - from);
  for (const FormControl* control : field.controls)
    if (control->has_text()) add_fault_line(*control, grid, row + 1, from, end - from);
  if (!field.label) return;
  auto* widget = static_cast<CaptionLabel*>(widget_of(field.label));
  const int side = widget->style()->styleHint(QStyle::SH_FormLayoutLabelAlignment);
  widget->setAlignment(Qt::Alignment(side & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter);
  widget->name_field(widget_of(field.controls.front()));
  grid.layout->addWidget(widget, row, label);
}

void FormLayout::add_controls(const Field& field, Grid& grid, int row, int column, int span) {
  QWidget* first = widget_of(field.controls.front());
  const bool alone = field.controls.size() == 1;
  if (alone && is_label(field.controls.front()))
    static_cast<CaptionLabel*>(first)->set_line(letters_of_a_paragraph);
  if (alone && !field.label && is_wide_box(field.controls.front()))
    first->setMinimumWidth(letters_of_a_long_box * first->fontMetrics().averageCharWidth());
  const bool fills = std::ranges::any_of(
      field.controls, [this](const FormControl* control) { return fills_its_row(*widget_of(control)); });
  if (alone && (fills || !is_pressed(field.controls.front())) && !field.controls.front()->columns())
    return grid.layout->addWidget(first, row, column, 1, span);
  auto* line = new QHBoxLayout;
  for (const FormControl* control : field.controls) line->addWidget(widget_of(control));
  if (!fills) line->addStretch();
  grid.layout->addLayout(line, row, column, 1, span);
}

// --- faults ---

void FormLayout::add_fault_line(const FormControl& control, Grid& grid, int row, int column, int span) {
  auto* line = new QLabel(widget_of(&control)->parentWidget());
  line->setObjectName(to_qt(control.Name()) + QStringLiteral(" fault"));
  line->setTextFormat(Qt::PlainText);
  line->setWordWrap(true);
  line->hide();
  grid.layout->addWidget(line, row, column, 1, span);
  fault_lines_.insert(&control, line);
  fault_changed(control);
}

void FormLayout::fault_changed(const FormControl& control) {
  QLabel* line = fault_lines_.value(&control);
  if (!line || (control.fault().empty() && line->isHidden())) return;
  const bool dark = line->palette().color(QPalette::Window).lightness() < 128;
  QPalette palette = line->palette();
  palette.setColor(QPalette::WindowText, dark ? QColor(0xff, 0x9a, 0x90) : QColor(0xb3, 0x26, 0x1e));
  line->setPalette(palette);
  line->setText(QStringLiteral("\u26A0 ") + translated(control.fault()));
  line->setVisible(!control.fault().empty());
}

void FormLayout::reach_changed() {
  for (const Grid& grid : grids_)
    for (const std::vector<Field>& row : grid.rows)
      for (const Field& field : row)
        if (field.label)
          widget_of(field.label)
              ->setEnabled(field.label->Enabled() &&
                           std::ranges::any_of(field.controls, &FormControl::Enabled));
}

// --- captions ---

void FormLayout::captions_changed() {
  const auto captions = captions_with_mnemonics(form_);
  for (auto caption = captions.cbegin(); caption != captions.cend(); ++caption)
    show_caption(*caption.key(), caption.value(), *widget_of(caption.key()));
  for (Grid& grid : grids_) {
    for (std::size_t place = 0; place < grid.columns; ++place)
      grid.layout->setColumnMinimumWidth(grid_columns * int(place),
                                         grid.has_labels ? widest_label(place) : 0);
    for (const std::vector<Field>& row : grid.rows)
      for (const Field& field : row) name_controls(field);
  }
}

int FormLayout::widest_label(std::size_t place) const {
  int widest = 0;
  for (const Grid& grid : grids_)
    for (const std::vector<Field>& row : grid.rows) {
      if (place >= row.size() || !row[place].label || !row[place].label->Visible()) continue;
      widest = std::max(widest, widget_of(row[place].label)->sizeHint().width());
    }
  return widest;
}

// A box is named by the label to which it is the buddy; without one it is what the dialog is about.
void FormLayout::name_controls(const Field& field) const {
  if (!field.label) {
    if (field.controls.front()->has_text())
      widget_of(field.controls.front())->setAccessibleName(to_qt(form_.Caption()));
    return;
  }
  const QString name = without_marks(to_qt(field.label->Caption()));
  for (const FormControl* control : field.controls)
    if (control != field.controls.front() && control->has_text())
      widget_of(control)->setAccessibleName(name);  // the unit of what stands before it
    else if (control->kind() == ControlKind::CommandButton &&
             (control->colour_field() || !has_words(control)))
      widget_of(control)->setAccessibleName(name);
}

}  // namespace tvx::qt
