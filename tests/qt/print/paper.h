#pragma once

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <string>

#include "qt/shown_widget.h"

namespace tvx::qt {

/// A widget whose document is put on paper, and what the tools of the desktop see of that.
class Paper : public ShownWidget {
 protected:
  /// The document's PDF as a file.
  QString pdf() {
    static int number = 0;
    const QString path = folder_.filePath(QStringLiteral("paper%1.pdf").arg(++number));
    bool done = false;
    widget_->make_pdf([&](const QByteArray& bytes) {
      QFile out(path);
      done = out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size();
    });
    EXPECT_TRUE(wait_for([&] { return done; }));
    return path;
  }
  /// What a program says of a PDF.
  static QByteArray ask(const char* program, const QStringList& arguments) {
    QProcess process;
    process.start(QString::fromLatin1(program), arguments);
    EXPECT_TRUE(process.waitForFinished(20'000) && process.exitCode() == 0)
        << program << process.readAllStandardError().constData();
    return process.readAllStandardOutput();
  }
  static std::string text_of(const QString& pdf) {
    return ask("pdftotext", {QStringLiteral("-layout"), pdf, QStringLiteral("-")}).toStdString();
  }
  static int sheets_of(const QString& pdf) { return text_of(pdf).empty() ? 0 : fact(pdf, "Pages:").toInt(); }
  static QByteArray fact(const QString& pdf, const char* name) {
    for (const QByteArray& line : ask("pdfinfo", {pdf}).split('\n'))
      if (line.startsWith(name)) return line.mid(qstrlen(name)).trimmed();
    return {};
  }
  /// How all sheets are drawn.
  static QByteArray picture_of(const QString& pdf) {
    return ask("pdftoppm", {QStringLiteral("-r"), QStringLiteral("60"), pdf});
  }

  QTemporaryDir folder_;
};

}  // namespace tvx::qt
