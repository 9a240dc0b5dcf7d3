#pragma once

#include <QDialog>
#include <vector>

#include "tvx/files/kept_page.h"

class QListWidget;

namespace tvx::htmled {

class DifferencesView;

/// Offers the pages that a program which ended otherwise than by its user had not saved, with what differs
/// from their files.
class UnsavedDialog final : public QDialog {
  Q_OBJECT
 public:
  enum class Answer { Later, Restore, Discard };

  /// The pages outlive the dialog.
  UnsavedDialog(const std::vector<files::KeptPage>& pages, QWidget* parent);

  Answer answer() const { return answer_; }
  /// Those that the answer is for; the others stay for later.
  std::vector<std::size_t> chosen() const;

 private:
  void add_buttons();
  void show_differences(int row);

  const std::vector<files::KeptPage>& pages_;
  QListWidget* list_;
  DifferencesView* differences_;
  Answer answer_ = Answer::Later;
};

}  // namespace tvx::htmled
