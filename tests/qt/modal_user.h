#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTimer>
#include <functional>

namespace tvx::qt {

/// Lets the user act on the dialog that comes in front of `behind`, once it has the keyboard: what is sent
/// before that goes elsewhere.
inline void when_dialog_opens(QWidget* behind, const std::function<void(QWidget&)>& user) {
  auto* watch = new QTimer(qApp);
  QObject::connect(watch, &QTimer::timeout, watch, [=, waits = 0]() mutable {
    QWidget* front = QApplication::activeModalWidget();
    const bool ready = front && front != behind && front->isActiveWindow();
    if (!ready && ++waits < 2000) return;
    watch->deleteLater();
    watch->stop();
    EXPECT_TRUE(ready) << "no dialog came";
    if (ready) user(*front);
  });
  watch->start(5);
}

}  // namespace tvx::qt
