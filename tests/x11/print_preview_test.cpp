#include <gtest/gtest.h>

#include <QGroupBox>
#include <QProcess>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QStatusBar>
#include <QToolBar>

#include "htmled/languages.h"
#include "htmled/print/kept_page_setup.h"
#include "htmled/print/preview_dialog.h"
#include "htmled/print/sheets_view.h"
#include "x11/editor_fixture.h"
#include "x11/hands.h"

/// The page as it will be printed, and how it stands on paper.
namespace tvx::x11 {
namespace {

class PreviewOnScreen : public EditorOnScreen {
 protected:
  void TearDown() override {
    EditorOnScreen::TearDown();
    htmled::program_settings().remove(QStringLiteral("print"));
  }
  static QByteArray long_page() {
    QByteArray page = "<!DOCTYPE html><html lang=en><title>The report</title><body><h1>First</h1>";
    for (int i = 0; i < 150; ++i) page += "<p>Paragraph " + QByteArray::number(i) + "</p>";
    return page;
  }
  static QPoint button(const QDialog& preview, const char* name) {
    auto* bar = preview.findChild<QToolBar*>();
    auto* action = preview.findChild<QAction*>(QString::fromLatin1(name));
    return middle_of(*bar->widgetForAction(action));
  }
  /// Once the sheets are there.
  void in_preview(const std::function<void(QDialog&, htmled::SheetsView&)>& act) {
    answer_dialog([act](QDialog& dialog) {
      auto* sheets = dialog.findChild<htmled::SheetsView*>();
      ASSERT_NE(sheets, nullptr);
      EXPECT_TRUE(wait_for([&] { return sheets->count() > 0; }));
      act(dialog, *sheets);
      hands::press(QStringLiteral("Escape"));
    });
    hands::press(QStringLiteral("ctrl+shift+p"));
    ASSERT_TRUE(wait_for([&] { return answered() && !QApplication::activeModalWidget(); }));
  }
};

TEST_F(PreviewOnScreen, ShowsTheSheetsAndTurnsThem) {
  start(long_page());
  in_preview([](QDialog& preview, htmled::SheetsView& sheets) {
    ASSERT_GE(sheets.count(), 4);
    EXPECT_EQ(sheets.sheet(), 0);
    hands::click(button(preview, "next"));
    EXPECT_TRUE(wait_for([&] { return sheets.sheet() == 1; }));
    hands::press(QStringLiteral("Next"));
    EXPECT_TRUE(wait_for([&] { return sheets.sheet() == 2; }));
    EXPECT_EQ(preview.findChild<QSpinBox*>(QStringLiteral("number"))->value(), 3);
    hands::press(QStringLiteral("End"));
    EXPECT_TRUE(wait_for([&] { return sheets.sheet() == sheets.count() - 1; }));
    EXPECT_FALSE(preview.findChild<QAction*>(QStringLiteral("next"))->isEnabled());
    const double before = sheets.zoom();
    hands::click(button(preview, "larger"));
    EXPECT_TRUE(wait_for([&] { return sheets.zoom() > before; }));
    hands::click(button(preview, "width"));
    EXPECT_TRUE(wait_for([&] { return sheets.fit() == htmled::SheetsView::Fit::Width; }));
    EXPECT_EQ(sheets.sheet(), sheets.count() - 1) << "it stays in sight";
  });
}

TEST_F(PreviewOnScreen, PageSetupIsKeptAndHoldsForPreviewAndPdf) {
  start(long_page());
  in_preview([&](QDialog& preview, htmled::SheetsView& sheets) {
    const int upright = sheets.count();
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, &answer, [&] {
      QWidget* front = QApplication::activeModalWidget();
      if (!front || front->objectName() != QStringLiteral("page_setup") || !front->isVisible()) return;
      answer.stop();
      hands::give_focus(*front);
      auto* landscape = front->findChild<QRadioButton*>(QStringLiteral("landscape"));
      auto* header = front->findChild<QGroupBox*>(QStringLiteral("header"));
      auto* footer = front->findChild<QGroupBox*>(QStringLiteral("footer"));
      hands::click(landscape->mapToGlobal(QPoint(10, landscape->height() / 2)));
      EXPECT_TRUE(wait_for([&] { return landscape->isChecked(); }));
      hands::press(QStringLiteral("alt+h"));
      EXPECT_TRUE(wait_for([&] { return header->isChecked(); }));
      hands::press(QStringLiteral("alt+f"));
      EXPECT_TRUE(wait_for([&] { return footer->isChecked(); }));
      hands::press(QStringLiteral("Return"));
    });
    answer.start(50);
    hands::click(button(preview, "setup"));
    EXPECT_TRUE(wait_for([&] { return sheets.count() > upright; })) << "landscape takes more sheets";
    hands::give_focus(preview);
  });
  EXPECT_TRUE(htmled::kept_page_setup().header.is_shown);
  EXPECT_EQ(htmled::kept_page_setup().layout.orientation(), QPageLayout::Landscape);
  EXPECT_EQ(window_->editor().page_setup().file_name, QStringLiteral("page.html"));

  const QString path = path_of(QStringLiteral("page.pdf"));
  window_->editor().set_print_file(path);
  window_->editor().print_Document(true);
  ASSERT_TRUE(wait_for([&] { return QFile::exists(path); }));
  QProcess reader;
  reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
  ASSERT_TRUE(reader.waitForFinished());
  const QByteArray first = reader.readAllStandardOutput().split('\f').first().trimmed().replace(" / ", "/");
  EXPECT_TRUE(first.startsWith("The report")) << first.constData();
  EXPECT_TRUE(first.split('\n').last().contains("page.html")) << first.constData();
  EXPECT_TRUE(first.split('\n').last().contains("1/")) << first.constData();
}

TEST_F(PreviewOnScreen, PrintingFromItAsksOverIt) {
  start("<body><p>words</p>");
  in_preview([](QDialog& preview, htmled::SheetsView&) {
    bool asked = false;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, &answer, [&] {
      QWidget* front = QApplication::activeModalWidget();
      if (!front || front == &preview || !front->isVisible()) return;
      answer.stop();
      asked = front->parentWidget() == &preview;
      hands::give_focus(*front);
      hands::press(QStringLiteral("Escape"));
    });
    answer.start(50);
    hands::press(QStringLiteral("ctrl+p"));
    EXPECT_TRUE(wait_for([&] { return asked && QApplication::activeModalWidget() == &preview; }));
    hands::give_focus(preview);
  });
}

}  // namespace
}  // namespace tvx::x11
