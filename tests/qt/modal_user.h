#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QTimer>
#include <functional>

namespace tvx::qt {

/// Lets the user act on the dialog that covers `covered`, once it has the keyboard: what is sent
/// before that goes elsewhere.
inline void when_dialog_opens(QWidget* covered, const std::function<void(QWidget&)>& user) {
  auto* watch = new QTimer(qApp);
  QObject::connect(watch, &QTimer::timeout, watch, [=, waits = 0]() mutable {
    QWidget* front = QApplication::activeModalWidget();
    const bool ready = front && front != covered && front->isActiveWindow();
    if (!ready && ++waits < 2000) return;
    watch->deleteLater();
    watch->stop();
    EXPECT_TRUE(ready) << "no dialog came";
    if (ready) user(*front);
  });
  watch->start(5);
}

/// Nothing that has words may be smaller than they are.
inline void expect_nothing_clipped(const QWidget& dialog) {
  int seen = 0;
  for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
    const bool has_words = qobject_cast<const QLabel*>(widget) ||
                           qobject_cast<const QAbstractButton*>(widget) ||
                           qobject_cast<const QGroupBox*>(widget) || qobject_cast<const QComboBox*>(widget);
    if (!has_words || !widget->isVisible()) continue;
    ++seen;
    const QSize wanted =
        qobject_cast<const QGroupBox*>(widget) ? widget->minimumSizeHint() : widget->sizeHint();
    EXPECT_GE(widget->width(), wanted.width()) << widget->objectName().toStdString();
    EXPECT_GE(widget->height(), wanted.height()) << widget->objectName().toStdString();
    const QRect within = dialog.rect();
    EXPECT_TRUE(within.contains(QRect(widget->mapTo(&dialog, QPoint()), widget->size())))
        << widget->objectName().toStdString();
  }
  EXPECT_GE(seen, 2);
}

}  // namespace tvx::qt
