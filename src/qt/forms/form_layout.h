#pragma once

#include <QHash>
#include <deque>
#include <vector>

#include "tvx/platform/form.h"

class QGridLayout;
class QLabel;
class QWidget;

namespace tvx::qt {

/// Where a form's controls stand: labels beside their fields, in columns that go through the whole form,
/// frames included. A row may hold several fields; what stands after a box, a button or a unit, stays with
/// it. What has no label stands under the fields, or takes the whole row where there are none.
class FormLayout {
 public:
  using Widgets = QHash<const platform::FormControl*, QWidget*>;

  /// Lays the widgets out on `form_widget`, and those of frames on the frame's widget. All outlive this.
  FormLayout(const platform::Form& form, const Widgets& widgets, QWidget& form_widget);

  /// For when captions, the font or the style have changed: the columns of labels become as wide in every
  /// frame as the widest one wants, and what has no words of its own is called what its label says.
  void captions_changed();
  /// A label is grey where all that it names is, whatever it says itself.
  void reach_changed();
  /// What is wrong with a field is told below it.
  void fault_changed(const platform::FormControl& control);

 private:
  /// A label, which may be missing, and what it names.
  struct Field {
    const platform::FormControl* label = nullptr;
    std::vector<const platform::FormControl*> controls = {};
  };
  /// A frame's grid, or the form's.
  struct Grid {
    const platform::FormControl* frame;
    QGridLayout* layout;
    std::vector<std::vector<Field>> rows = {};
    std::size_t columns = 1;  // fields in the row that has most
    bool has_labels = false;
  };

  static std::vector<Field> fields_of(const platform::FormRow& row);
  Grid& grid_of(const platform::FormControl* frame);
  void fill(Grid& grid);
  void add_field(const Field& field, Grid& grid, int row, int place, bool last);
  void add_controls(const Field& field, Grid& grid, int row, int column, int span);
  void name_controls(const Field& field) const;
  void add_fault_line(const platform::FormControl& control, Grid& grid, int row, int column, int span);
  int widest_label(std::size_t place) const;
  QWidget* widget_of(const platform::FormControl* control) const { return widgets_.value(control); }

  const platform::Form& form_;
  const Widgets& widgets_;
  QWidget& form_widget_;
  QHash<const platform::FormControl*, QLabel*> fault_lines_;
  std::deque<Grid> grids_;  // references to them stay
};

}  // namespace tvx::qt
