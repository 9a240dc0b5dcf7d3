#pragma once

#include <QApplication>
#include <QTimer>
#include <cstdio>
#include <functional>

/// Runs the application. With --self-check it ends by itself: 0 if `look`, called once the window has come
/// up, finds all as it should be.
inline int run(QApplication& application, const std::function<bool()>& look) {
  if (!application.arguments().contains(QStringLiteral("--self-check"))) return application.exec();
  QTimer::singleShot(200, &application, [&] {
    const bool good = look();
    std::fputs(good ? "all is as it should be\n" : "something is not as it should be\n", stderr);
    QApplication::exit(good ? 0 : 1);
  });
  return application.exec();
}
