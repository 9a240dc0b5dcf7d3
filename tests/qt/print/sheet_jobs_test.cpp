#include <gtest/gtest.h>

#include <signal.h>

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWebEnginePage>
#include <optional>

#include "qt/modal_user.h"
#include "qt/print/paper.h"
#include "tvx/qt/web/web_view.h"

namespace tvx::qt {
namespace {

using Printing = Paper;

TEST_F(Printing, PrintsIntoAPdfOfSeveralPagesWithoutTheBorder) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("out.pdf"));
  QString html;
  for (int i = 0; i < 200; ++i) html += QStringLiteral("<P>Paragraph %1</P>").arg(i);
  show(html);
  widget_->set_HighlightDOMSelectionOnClick(true);
  widget_->selectText(0, 3);
  ASSERT_TRUE(settle());
  ASSERT_TRUE(widget_->control().allHTML().find(u"border") != std::u16string::npos);

  widget_->set_print_file(path);
  QSignalSpy printed(widget_.get(), &HTMLedWidget::print_finished);
  QSignalSpy failed(widget_.get(), &HTMLedWidget::Error);
  widget_->show_Code();  // what is printed is the document all the same
  widget_->print_Document(true);
  EXPECT_EQ(failed.count(), 0);
  ASSERT_TRUE(wait_for([&] { return printed.count() > 0; }));
  EXPECT_TRUE(printed.at(0).at(0).toBool());
  EXPECT_EQ(widget_->control().allHTML().find(u"border"), std::u16string::npos);

  EXPECT_GE(sheets_of(path), 3) << "200 paragraphs fill more than two sheets";
}

// The engine would take the program with it.
TEST_F(Printing, APdfIsFinishedThoughTheWidgetIsDeletedMeanwhile) {
  const QTemporaryDir folder;
  QString html;
  for (int i = 0; i < 3000; ++i) html += QStringLiteral("<P>Paragraph %1</P>").arg(i);
  for (const int delay : {-1, 0, 1, 20}) {
    SCOPED_TRACE(delay);
    const QString path = folder.filePath(QStringLiteral("out%1.pdf").arg(delay));
    if (!widget_) widget_ = std::make_unique<HTMLedWidget>(loop_);
    show(html);
    ASSERT_TRUE(settle());
    widget_->set_print_file(path);
    widget_->print_Document(true);
    if (delay >= 0) QTest::qWait(delay);
    EXPECT_FALSE(QFile::exists(path)) << "it is still being written";
    widget_.reset();
    ASSERT_TRUE(wait_for([&] { return QFile::exists(path); }));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().trimmed().endsWith("%%EOF"));
  }
}

TEST_F(Printing, APdfWhoseProcessDiesHasFailedAndTheNextIsWritten) {
  const QTemporaryDir folder;
  QString html;
  for (int i = 0; i < 3000; ++i) html += QStringLiteral("<P>Paragraph %1</P>").arg(i);
  show(html);
  ASSERT_TRUE(settle());
  QSignalSpy printed(widget_.get(), &HTMLedWidget::print_finished);
  widget_->set_print_file(folder.filePath(QStringLiteral("first.pdf")));
  widget_->print_Document(true);
  QTest::qWait(50);
  ASSERT_EQ(::kill(pid_t(widget_->view().page()->renderProcessPid()), SIGKILL), 0);
  ASSERT_TRUE(wait_for([&] { return printed.count() == 1; }));
  EXPECT_FALSE(printed.at(0).at(0).toBool());
  EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("first.pdf"))));
  ASSERT_TRUE(settle());
  widget_->set_print_file(folder.filePath(QStringLiteral("second.pdf")));
  widget_->print_Document(true);
  ASSERT_TRUE(wait_for([&] { return printed.count() == 2; }));
  EXPECT_TRUE(printed.at(1).at(0).toBool());
}

// After several deaths a notice stands in the page's place, and nobody was ever told that nothing is printed.
TEST_F(Printing, WhatHasNoProcessAnyMoreFails) {
  show(QStringLiteral("<P>words</P>"));
  ASSERT_TRUE(settle());
  QSignalSpy printed(widget_.get(), &HTMLedWidget::print_finished);
  const QTemporaryDir folder;
  widget_->set_print_file(folder.filePath(QStringLiteral("none.pdf")));
  for (int deaths = 0; deaths < 2; ++deaths) {
    ASSERT_TRUE(wait_for([&] { return widget_->view().page()->renderProcessPid() > 0; }));
    const auto process = pid_t(widget_->view().page()->renderProcessPid());
    ASSERT_EQ(::kill(process, SIGKILL), 0);
    ASSERT_TRUE(wait_for([&] { return widget_->view().page()->renderProcessPid() != process; }));
  }
  ASSERT_EQ(widget_->view().page()->renderProcessPid(), 0);
  widget_->print_Document(true);
  ASSERT_TRUE(wait_for([&] { return printed.count() == 1; }));
  EXPECT_FALSE(printed.at(0).at(0).toBool());
}

// Nobody was told: the signal that tells it went with the widget.
TEST_F(Printing, APdfThatFailsIsToldThoughTheWidgetIsDeletedMeanwhile) {
  show(QStringLiteral("<P>words</P>"));
  std::optional<bool> told;
  widget_->write_pdf(QStringLiteral("/nowhere/at/all.pdf"), [&](bool written) { told = written; });
  widget_.reset();
  ASSERT_TRUE(wait_for([&] { return told.has_value(); }));
  EXPECT_FALSE(*told);
}

TEST_F(Printing, PdfsThatAreAskedForTogetherAreWrittenOneAfterTheOther) {
  const QTemporaryDir folder;
  show(QStringLiteral("<P>words</P>"));
  QSignalSpy printed(widget_.get(), &HTMLedWidget::print_finished);
  for (const char* name : {"one.pdf", "two.pdf", "three.pdf"}) {
    widget_->set_print_file(folder.filePath(QString::fromLatin1(name)));
    widget_->print_Document(true);
  }
  ASSERT_TRUE(wait_for([&] { return printed.count() == 3; }));
  for (const QList<QVariant>& each : printed) EXPECT_TRUE(each.at(0).toBool());
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 3);
}

TEST_F(Printing, APdfThatCantBeWrittenIsToldAndLeavesWhatWasThere) {
  show(QStringLiteral("<P>words</P>"));
  QSignalSpy printed(widget_.get(), &HTMLedWidget::print_finished);
  widget_->set_print_file(QStringLiteral("/nowhere/at/all.pdf"));
  widget_->print_Document(true);
  ASSERT_TRUE(wait_for([&] { return printed.count() == 1; }));
  EXPECT_FALSE(printed.at(0).at(0).toBool());
}

// A print dialog off screen has one printer: a file.
TEST_F(Printing, ThePrintDialogPrintsIntoAFile) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("chosen.pdf"));
  show(QStringLiteral("<P>words</P>"));
  widget_->set_print_file(folder.filePath(QStringLiteral("not asked for")));
  QSignalSpy printed(widget_.get(), &HTMLedWidget::print_finished);
  when_dialog_opens(nullptr, [&](QWidget& dialog) {
    auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("filename"));
    ASSERT_NE(field, nullptr);
    field->setText(path);
    QTest::keyClick(field, Qt::Key_Return);
  });
  widget_->print_Document(false);
  ASSERT_TRUE(wait_for([&] { return printed.count() > 0; }));
  EXPECT_TRUE(printed.at(0).at(0).toBool());
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(file.readAll().startsWith("%PDF-"));
}

TEST_F(Printing, ACancelledPrintDialogPrintsNothing) {
  show(QStringLiteral("<P>words</P>"));
  widget_->set_print_file(QStringLiteral("/nowhere.pdf"));
  QSignalSpy printed(widget_.get(), &HTMLedWidget::print_finished);
  when_dialog_opens(nullptr, [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  widget_->print_Document(false);
  ASSERT_EQ(printed.count(), 1);
  EXPECT_FALSE(printed.at(0).at(0).toBool());
}

TEST_F(Printing, WithoutAPrinterPrintingIsRefusedByItsNumber) {
  show(QStringLiteral("<P>x</P>"));
  QSignalSpy failed(widget_.get(), &HTMLedWidget::Error);
  widget_->print_Document(true);
  if (failed.isEmpty()) GTEST_SKIP() << "SKIPPED: this machine has a printer";
  EXPECT_EQ(failed.at(0).at(0).toInt(), 16384);
  EXPECT_EQ(failed.at(0).at(1).toString(), QStringLiteral("Printing is disabled by the control"));
}

}  // namespace
}  // namespace tvx::qt
