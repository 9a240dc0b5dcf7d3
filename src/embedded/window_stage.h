#pragma once

#include <QObject>
#include <QPointer>

#include "tvx/exported/stage.h"
#include "tvx/htmled_widget.h"

namespace tvx::embedded {

/// A control in a window: one of its own, or the host's.
class WindowStage final : public QObject, public exported::Stage {
 public:
  /// Throws RuntimeError where the host's window isn't there.
  WindowStage(exported::StageOwner& owner, const exported::Position& position);
  ~WindowStage() override;

  core::HTMLed& control() override;
  void start(bool user_mode) override;
  void show() override;
  void hide() override;
  void resize(const tvx_box& box) override;
  void take_focus() override;
  void set_title(std::u16string_view title) override;
  std::uint64_t window() override;
  void end() override;

  /// At the end of the process: the windows go, and nobody is told.
  static void abandon_all();

 private:
  bool eventFilter(QObject* object, QEvent* event) override;
  void enter_host_window();
  void follow_press(QObject* pressed);
  void follow_focus(const QWidget* now);

  exported::StageOwner* owner_;
  const std::uint64_t host_window_;  // 0: it has one of its own
  QPointer<qt::HTMLedWidget> widget_;
  bool has_focus_ = false;
};

}  // namespace tvx::embedded
