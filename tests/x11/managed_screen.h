#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>
#include <optional>

#include "x11/x_display.h"

namespace tvx::x11 {

/// A screen of its own with a window manager, as on a desktop: it gives the keys to the windows, and takes
/// them. Programs are started on it and seen from without.
class ManagedScreen : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  void start(const QString& program, const QStringList& arguments = {});
  QString ask(const QStringList& question);
  /// Keys go to whichever window the manager has given them to.
  void type(const QString& text) { ask({QStringLiteral("type"), QStringLiteral("--"), text}); }
  void press(const QString& keys) { ask({QStringLiteral("key"), keys}); }
  /// The title of the window that has the keys; empty where none has.
  QString active_title();
  /// Until the window with the keys has the words in its title.
  bool comes_to_front(const QString& words);
  const QProcess& program() const { return program_; }
  /// Ends the program as nothing in it can prevent.
  void kill_program();
  const QProcessEnvironment& surroundings() const { return surroundings_; }
  /// Of programs that are started from now on.
  void set_surroundings(const QString& name, const QString& value) { surroundings_.insert(name, value); }
  QString path_of(const QString& name) const { return folder_.filePath(name); }
  void write(const QString& name, const QByteArray& bytes);
  QByteArray file(const QString& name) const;

 private:
  QTemporaryDir folder_;
  std::optional<XDisplay> display_;
  QProcess manager_, program_;
  QProcessEnvironment surroundings_;
};

}  // namespace tvx::x11
