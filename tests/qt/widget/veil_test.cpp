#include "tvx/qt/widget/veil.h"

#include <QImage>
#include <QPainter>

#include "qt/shown_widget.h"

namespace tvx::qt {
namespace {

/// A widget that draws itself in one colour, enabled or not.
class Page : public QWidget {
 public:
  using QWidget::QWidget;
  QColor middle() { return grab().toImage().pixelColor(rect().center()); }

 private:
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), Qt::black); }
};

TEST(Veil, MakesAWidgetPaleWhileItIsDisabled) {
  QWidget window;
  Page page(&window);
  new Veil(page);
  page.resize(100, 80);
  window.show();
  EXPECT_EQ(page.middle(), QColor(Qt::black));
  window.setEnabled(false);
  EXPECT_GT(page.middle().lightness(), 60);
  page.resize(300, 200);
  EXPECT_GT(page.middle().lightness(), 60) << "larger";
  window.setEnabled(true);
  EXPECT_EQ(page.middle(), QColor(Qt::black));
}

TEST(Veil, LiesOverWhatComesLater) {
  QWidget window;
  window.resize(300, 200);
  new Veil(window);
  window.show();
  window.setEnabled(false);
  auto* page = new Page(&window);
  page->setGeometry(window.rect());
  page->show();
  EXPECT_GT(window.grab().toImage().pixelColor(150, 100).lightness(), 60);
}

using VeilOfPage = ShownWidget;

TEST_F(VeilOfPage, IsThereWhileTheEditorIsDisabled) {
  show(QStringLiteral("<p>text</p>"));
  const auto* veil = widget_->findChild<QWidget*>(QStringLiteral("veil"));
  ASSERT_NE(veil, nullptr);
  EXPECT_FALSE(veil->isVisible());
  widget_->setEnabled(false);
  EXPECT_TRUE(veil->isVisible());
  EXPECT_EQ(veil->size(), veil->parentWidget()->size());
  widget_->setEnabled(true);
  EXPECT_FALSE(veil->isVisible());
}

}  // namespace
}  // namespace tvx::qt
