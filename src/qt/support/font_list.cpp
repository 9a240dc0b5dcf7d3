#include "tvx/qt/support/font_list.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QPainter>
#include <QRawFont>
#include <QStyledItemDelegate>
#include <algorithm>

namespace tvx::qt {
namespace {

constexpr int sample_role = Qt::UserRole + 1;
constexpr int room_beside_names = 12;

/// Signs that such a font draws: many stand where others have letters.
QString sample_of(const QString& family) {
  const QRawFont font = QRawFont::fromFont(QFont(family));
  for (const char32_t* signs : {U"abc", U"☺★♪", U"😀🌲", U"∑√∞", U"♔♕♖"}) {
    const QString text = QString::fromUcs4(signs);
    const QList<uint> codes = text.toUcs4();
    if (std::ranges::all_of(codes, [&](uint code) { return font.supportsCharacter(code); })) return text;
  }
  return {};
}

bool has_letters(const QString& family) {
  const auto systems = QFontDatabase::writingSystems(family);
  return systems.contains(QFontDatabase::Latin) && !systems.contains(QFontDatabase::Symbol);
}

class FontNames final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 private:
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyledItemDelegate::paint(painter, option, index);
    const QString sample = index.data(sample_role).toString();
    if (sample.isEmpty()) return;
    painter->save();
    const bool chosen = option.state & QStyle::State_Selected;
    painter->setPen(option.palette.color(chosen ? QPalette::HighlightedText : QPalette::Text));
    painter->setFont(QFont(index.data().toString(), option.font.pointSize()));
    const int name = option.fontMetrics.horizontalAdvance(index.data().toString()) + room_beside_names;
    const bool leftward = option.direction == Qt::RightToLeft;
    const QRect room = option.rect.adjusted(leftward ? 4 : name, 0, leftward ? -name : -4, 0);
    painter->drawText(room, Qt::AlignVCenter | (leftward ? Qt::AlignLeft : Qt::AlignRight), sample);
    painter->restore();
  }
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    const QString sample = index.data(sample_role).toString();
    if (sample.isEmpty()) return size;
    const QFontMetrics metrics(QFont(index.data().toString(), option.font.pointSize()));
    return size + QSize(metrics.horizontalAdvance(sample) + room_beside_names, 0);
  }
};

}  // namespace

QStringList font_families() {
  QStringList names;
  for (const QString& family : QFontDatabase::families()) {
    if (QFontDatabase::isPrivateFamily(family)) continue;
    const qsizetype foundry = family.endsWith(u']') ? family.lastIndexOf(QStringLiteral(" [")) : -1;
    const QString name = family.left(foundry);
    if (names.isEmpty() || names.back() != name) names << name;
  }
  return names;
}

void show_in_their_fonts(QComboBox& list) { list.setItemDelegate(new FontNames(&list)); }

void show_in_its_font(QComboBox& list, int index) {
  const QString family = list.itemText(index);
  if (family.isEmpty()) return;
  if (!has_letters(family))
    list.setItemData(index, sample_of(family), sample_role);
  else if (QFontDatabase::isSmoothlyScalable(family))
    list.setItemData(index, QFont(family, list.font().pointSize()), Qt::FontRole);
}

}  // namespace tvx::qt
