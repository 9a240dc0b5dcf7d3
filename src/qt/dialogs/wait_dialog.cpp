#include "tvx/qt/dialogs/wait_dialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "tvx/base/error.h"
#include "tvx/qt/support/strings.h"

namespace tvx::qt {
namespace {

constexpr int letters_wide = 48;

constexpr struct {
  const char16_t *title, *figure;
} figure_controls[] = {
    {u"lblBytesTitle", u"lblBytes"}, {u"lblSpeedTitle", u"lblSpeed"}, {u"lblTimeTitle", u"lblTime"}};

}  // namespace

WaitDialog::WaitDialog(platform::Form& form, QWidget* owner)
    : QDialog(owner), form_(&form), what_(new QLabel(this)), bar_(new QProgressBar(this)) {
  setObjectName(to_qt(form.Name()));
  if (form.takes_input())
    setWindowModality(Qt::WindowModal);
  else
    setAttribute(Qt::WA_ShowWithoutActivating);  // who types into the document goes on typing
  what_->setObjectName(QStringLiteral("what"));
  what_->setTextFormat(Qt::PlainText);
  bar_->setObjectName(QStringLiteral("progress"));
  bar_->setTextVisible(false);
  auto* grid = new QGridLayout;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 2; ++column) {
      QLabel*& label = figures_[row][column];
      label = new QLabel(this);
      label->setTextFormat(Qt::PlainText);
      grid->addWidget(label, row, column);
    }
    figures_[row][1]->setObjectName(QString::fromUtf16(figure_controls[row].figure));
  }
  grid->setColumnStretch(1, 1);
  auto* buttons = new QDialogButtonBox(this);
  cancel_ = buttons->addButton(QString(), QDialogButtonBox::RejectRole);
  cancel_->setObjectName(QStringLiteral("cmdCancel"));
  cancel_->setAutoDefault(false);
  connect(cancel_, &QPushButton::clicked, this, [this] { reject(); });
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(what_);
  layout->addWidget(bar_);
  layout->addLayout(grid);
  layout->addWidget(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  setMinimumWidth(fontMetrics().averageCharWidth() * letters_wide);
  bar_->setMinimumWidth(fontMetrics().averageCharWidth() * letters_wide);
  form.add_observer(*this);
  // Where the window takes no input, the user sees at once why.
  QTimer::singleShot(form.takes_input() ? 0 : appears_after, this, [this] { appear(); });
}

WaitDialog::~WaitDialog() {
  if (form_) form_->remove_observer(*this);
}

void WaitDialog::appear() {
  if (!form_) return;
  show_all();
  seen_.start();
  show();
  raise();
}

void WaitDialog::reject() {
  if (!form_) return;
  cancel_->setEnabled(false);
  form_->cancel();
}

void WaitDialog::form_hidden(platform::Form& form) {
  form.remove_observer(*this);
  form_ = nullptr;
  cancel_->setEnabled(false);
  if (!seen_.isValid() || isModal()) return deleteLater();
  const auto left = std::max<qint64>(stays_for - seen_.elapsed(), 0);
  // Not close(): that asks reject() first, which has nothing left to cancel.
  QTimer::singleShot(static_cast<int>(left), this, [this] { deleteLater(); });
}

// --- what it shows ---

QString WaitDialog::caption(const char16_t* name) const {
  const platform::FormControl* control = form_->find(name);
  return control && control->has_caption() ? to_qt(control->Caption()) : QString();
}

bool WaitDialog::is_visible(const char16_t* name) const {
  const platform::FormControl* control = form_->find(name);
  return control && control->Visible();
}

/// "Uploading  photo.jpg  2 / 5"; a long name keeps its ends.
void WaitDialog::show_what() {
  QStringList parts;
  for (const char16_t* action : {u"lblConnecting", u"lblUploading", u"lblDownloading"})
    if (is_visible(action)) parts << caption(action);
  const int room = fontMetrics().averageCharWidth() * letters_wide * 2 / 3;
  for (const QString& part :
       {fontMetrics().elidedText(caption(u"lblFile"), Qt::ElideMiddle, room), caption(u"lblCount")})
    if (!part.isEmpty()) parts << part;
  what_->setText(parts.join(QStringLiteral("  ")));
}

void WaitDialog::show_all() {
  if (!form_) return;
  setWindowTitle(form_->find(u"lblTitle") ? caption(u"lblTitle") : to_qt(form_->Caption()));
  show_what();
  const QString percent = caption(u"lblPercent");
  // Before the first byte nobody knows how long it takes.
  bar_->setRange(0, percent.isEmpty() ? 0 : 100);
  bar_->setValue(percent.section(QLatin1Char(' '), 0, 0).toInt());
  for (int row = 0; row < 3; ++row) {
    const QString figure = caption(figure_controls[row].figure);
    figures_[row][0]->setText(caption(figure_controls[row].title));
    figures_[row][1]->setText(figure);
  }
  if (const platform::FormControl* button = form_->cancel_button())
    cancel_->setText(to_qt(button->Caption()));
}

void WaitDialog::control_changed(platform::FormControl&) {
  if (isVisible()) show_all();
}

}  // namespace tvx::qt
