#include "tvx/qt/print/running_lines.h"

#include <QBuffer>
#include <QDate>
#include <QFontDatabase>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>

namespace tvx::qt {
namespace {

using Text = PageSetup::Text;

constexpr int resolution = 600;
constexpr double points_per_inch = 72, letters = 9, least_margin = 34;  // points

struct Sheet {
  const PageSetup& setup;
  QString title;
  int number, count;
};

QString words(Text what, const Sheet& sheet) {
  switch (what) {
    case Text::Title: return sheet.title.isEmpty() ? sheet.setup.file_name : sheet.title;
    case Text::FileName: return sheet.setup.file_name;
    case Text::Page: return QLocale().toString(sheet.number);
    case Text::PageOfPages:
      return QLocale().toString(sheet.number) + QStringLiteral(" / ") + QLocale().toString(sheet.count);
    case Text::Date: return QLocale().toString(QDate::currentDate(), QLocale::ShortFormat);
    case Text::Nothing: break;
  }
  return {};
}

// The middle stays in the middle, whatever stands beside it.
void draw(QPainter& painter, const QRectF& room, const PageSetup::Line& line, const Sheet& sheet) {
  const bool has_middle = line.middle != Text::Nothing;
  const double gap = painter.fontMetrics().averageCharWidth();
  const double part = (has_middle ? room.width() / 3 : room.width() / 2) - gap;
  const auto put = [&](Text what, double left, double width, Qt::Alignment at) {
    const QString all = words(what, sheet);
    if (all.isEmpty()) return;
    const QString text =
        painter.fontMetrics().elidedText(all, what == Text::FileName ? Qt::ElideMiddle : Qt::ElideRight,
                                         static_cast<int>(width), Qt::TextSingleLine);
    painter.drawText(QRectF(left, room.top(), width, room.height()),
                     static_cast<int>(at | Qt::AlignVCenter | Qt::AlignAbsolute), text);
  };
  const bool alone_left = !has_middle && line.right == Text::Nothing;
  const bool alone_right = !has_middle && line.left == Text::Nothing;
  put(line.left, room.left(), alone_left ? room.width() : part, Qt::AlignLeft);
  put(line.middle, room.center().x() - part / 2, part, Qt::AlignHCenter);
  const double right = alone_right ? room.width() : part;
  put(line.right, room.right() - right, right, Qt::AlignRight);
}

}  // namespace

QPageLayout layout_with_lines(const PageSetup& setup) {
  QPageLayout layout = setup.layout;
  layout.setUnits(QPageLayout::Point);
  QMarginsF margins = layout.margins();
  if (setup.header.is_shown) margins.setTop(std::max(margins.top(), least_margin));
  if (setup.footer.is_shown) margins.setBottom(std::max(margins.bottom(), least_margin));
  layout.setMargins(margins);
  return layout;
}

QByteArray running_lines(const PageSetup& setup, const QString& title, int count) {
  if (!setup.header.is_shown && !setup.footer.is_shown) return {};
  const QPageLayout layout = layout_with_lines(setup);
  QBuffer pdf;
  pdf.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&pdf);
    writer.setResolution(resolution);
    writer.setPageLayout(QPageLayout(layout.pageSize(), layout.orientation(), QMarginsF()));
    QPainter painter(&writer);
    painter.setPen(QColor(0x40, 0x40, 0x40));
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPointSizeF(letters);
    painter.setFont(font);
    const double scale = resolution / points_per_inch;
    const QRectF paper = layout.fullRectPoints().toRectF(), inside = layout.paintRect(QPageLayout::Point);
    const auto room = [&](double top, double bottom) {
      return QRectF(inside.left() * scale, top * scale, inside.width() * scale, (bottom - top) * scale);
    };
    for (int number = 1; number <= count; ++number) {
      if (number > 1) writer.newPage();
      const Sheet sheet{setup, title, number, count};
      if (setup.header.is_shown) draw(painter, room(0, inside.top()), setup.header, sheet);
      if (setup.footer.is_shown) draw(painter, room(inside.bottom(), paper.height()), setup.footer, sheet);
    }
  }
  return pdf.data();
}

}  // namespace tvx::qt
