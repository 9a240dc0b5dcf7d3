#include "htmled/print/kept_page_setup.h"

#include <QSettings>
#include <QStringList>
#include <array>

#include "htmled/languages.h"

namespace tvx::htmled {
namespace {

using qt::PageSetup;
using Text = PageSetup::Text;

const QString paper_key = QStringLiteral("print/paper"), landscape_key = QStringLiteral("print/landscape"),
              margins_key = QStringLiteral("print/margins"), header_key = QStringLiteral("print/header"),
              footer_key = QStringLiteral("print/footer");

/// By their numbers.
constexpr std::array text_names{"nothing", "title", "file-name", "page", "page-of-pages", "date"};

QString name_of(Text text) { return QString::fromLatin1(text_names[static_cast<std::size_t>(text)]); }

Text text_named(const QString& name) {
  for (std::size_t i = 0; i < text_names.size(); ++i)
    if (name == QLatin1String(text_names[i])) return static_cast<Text>(i);
  return Text::Nothing;
}

QStringList stored(const PageSetup::Line& line) {
  return {line.is_shown ? QStringLiteral("on") : QStringLiteral("off"), name_of(line.left),
          name_of(line.middle), name_of(line.right)};
}

PageSetup::Line line_from(const QStringList& stored, const PageSetup::Line& otherwise) {
  if (stored.size() != 4) return otherwise;
  return {stored[0] == u"on", text_named(stored[1]), text_named(stored[2]), text_named(stored[3])};
}

QPageSize paper_named(const QString& key, const QPageSize& otherwise) {
  for (int id = 0; id <= QPageSize::LastPageSize; ++id)
    if (const QPageSize size{static_cast<QPageSize::PageSizeId>(id)}; !key.isEmpty() && size.key() == key)
      return size;
  return otherwise;
}

}  // namespace

PageSetup kept_page_setup() {
  const QSettings settings = program_settings();
  PageSetup setup;
  QPageLayout& layout = setup.layout;
  layout.setUnits(QPageLayout::Millimeter);
  layout.setPageSize(paper_named(settings.value(paper_key).toString(), layout.pageSize()));
  if (settings.value(landscape_key).toBool()) layout.setOrientation(QPageLayout::Landscape);
  const QStringList sides = settings.value(margins_key).toStringList();
  if (sides.size() == 4)
    layout.setMargins({sides[0].toDouble(), sides[1].toDouble(), sides[2].toDouble(), sides[3].toDouble()});
  setup.header = line_from(settings.value(header_key).toStringList(), setup.header);
  setup.footer = line_from(settings.value(footer_key).toStringList(), setup.footer);
  return setup;
}

void keep_page_setup(const PageSetup& setup) {
  QSettings settings = program_settings();
  const QMarginsF margins = setup.layout.margins(QPageLayout::Millimeter);
  QStringList sides;
  for (const double side : {margins.left(), margins.top(), margins.right(), margins.bottom()})
    sides << QString::number(side, 'f', 2);
  settings.setValue(paper_key, setup.layout.pageSize().key());
  settings.setValue(landscape_key, setup.layout.orientation() == QPageLayout::Landscape);
  settings.setValue(margins_key, sides);
  settings.setValue(header_key, stored(setup.header));
  settings.setValue(footer_key, stored(setup.footer));
}

}  // namespace tvx::htmled
