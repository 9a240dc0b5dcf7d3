#include "htmled/menus/special_characters.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

#include "htmled/window.h"
#include "tvx/htmled_widget.h"

namespace tvx::htmled {
namespace {

constexpr int columns = 12, side = 32;

struct Group {
  const char* name;
  const char16_t* characters;
};
constexpr Group groups[] = {
    {QT_TRANSLATE_NOOP("SpecialCharacters", "Punctuation"), u"–—…•·‚„‘’“”‹›«»¡¿§¶†‡‰′″©®™ªº№¦¨´¸¯"},
    {QT_TRANSLATE_NOOP("SpecialCharacters", "Letters"),
     u"ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØŒŠÙÚÛÜÝŽÞẞàáâãäåæçèéêëìíîïðñòóôõöøœšùúûüýÿžþßĀāĂăĄąĆćČčĎďĐđĒēĘęĚěĞğĪīİıŁłŃńŇňŌ"
     u"ōŐőŘřŚśŞşŢţŤťŪūŮůŰűŹźŻż"},
    {QT_TRANSLATE_NOOP("SpecialCharacters", "Currencies"),
     u"€£¥¢¤₣₤₧₨₩₪₫₭₮₱₲₴₹₺₽₿ƒ"},
    {QT_TRANSLATE_NOOP("SpecialCharacters", "Mathematics"),
     u"±×÷−≈≠≤≥≡∞√∛∑∏∫∂∇∆∈∉∋∅∩∪⊂⊃⊆⊇∧∨¬∀∃∄∝∠⊥∥¼½¾⅓⅔⅛⅜⅝⅞⁰¹²³⁴⁵⁶⁷⁸⁹₀₁₂₃₄₅₆₇₈₉µ°"},
    {QT_TRANSLATE_NOOP("SpecialCharacters", "Greek"), u"ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩαβγδεζηθικλμνξοπρσςτυφχψω"},
    {QT_TRANSLATE_NOOP("SpecialCharacters", "Arrows and symbols"),
     u"←↑→↓↔↕↖↗↘↙⇐⇑⇒⇓⇔↩↪■□▪▫▲△▶▷▼▽◀◁◆◇○●★☆☎☐☑☒✓✗♀♂♠♣♥♦♪♫"},
};

}  // namespace

SpecialCharacters::SpecialCharacters(std::function<void(const QString&)> type, QWidget* parent)
    : QDialog(parent), type_(std::move(type)), groups_(new QComboBox), field_(new QWidget), grid_(nullptr) {
  setWindowTitle(tr("Special characters"));
  setAttribute(Qt::WA_DeleteOnClose);
  for (const Group& group : groups) groups_->addItem(tr(group.name));
  sample_ = new QLabel;
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 2.4);
  sample_->setFont(large);
  sample_->setMinimumSize(64, 56);
  sample_->setAlignment(Qt::AlignCenter);
  auto* top = new QHBoxLayout;
  top->addWidget(groups_, 1);
  top->addWidget(sample_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
  auto* column = new QVBoxLayout(this);
  column->addLayout(top);
  column->addWidget(field_, 1);
  column->addWidget(buttons);
  connect(groups_, &QComboBox::currentIndexChanged, this, &SpecialCharacters::show_group);
  show_group(0);
}

void SpecialCharacters::show_group(int index) {
  qDeleteAll(field_->findChildren<QToolButton*>());
  delete grid_;
  grid_ = new QGridLayout(field_);
  grid_->setContentsMargins({});
  grid_->setSpacing(1);
  const QString characters = QString::fromUtf16(groups[index].characters);
  for (int i = 0; i < characters.size(); ++i) {
    auto* button = new QToolButton;
    const QString character = characters.mid(i, 1);
    button->setText(character);
    button->setAutoRaise(true);
    button->setFixedSize(side, side);
    connect(button, &QToolButton::clicked, this, [this, character] {
      sample_->setText(character);
      type_(character);
    });
    grid_->addWidget(button, i / columns, i % columns);
  }
  grid_->setRowStretch(int(characters.size()) / columns + 1, 1);
  grid_->setColumnStretch(columns, 1);
}

void open_special_characters(Window& window) {
  if (auto* open = window.findChild<SpecialCharacters*>()) {
    open->raise();
    return open->activateWindow();
  }
  const auto type = [&window](const QString& character) {
    qt::HTMLedWidget& editor = window.editor();
    editor.finish_input();
    if (editor.InCodeView()) return;
    editor.InsertAtCursor(character);
  };
  (new SpecialCharacters(type, &window))->show();
}

}  // namespace tvx::htmled
