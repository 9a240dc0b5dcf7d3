#pragma once

#include <QAction>
#include <QObject>
#include <QTimer>
#include <array>
#include <optional>

#include "tvx/core/observer.h"
#include "tvx/htmled_widget.h"

namespace tvx::qt {

/// What programs that draw their own bars need of a widget: operations as actions, and news of the selection
/// and its format. All of it is looked up once a turn of the loop, when nothing typed waits any more, and
/// only while there is an action or somebody listens.
class HostBars final : public QObject, public core::HTMLedObserver {
 public:
  explicit HostBars(HTMLedWidget& widget);
  ~HostBars() override;

  QAction* action(HTMLedWidget::Action which);
  HTMLedWidget::Format format() const;

  // core::HTMLedObserver
  void document_replaced(const std::shared_ptr<browser::HTMLDocument>&) override { look_later(); }
  void editor_enabled_changed(bool) override { look_later(); }
  void view_switched(bool) override { look_later(); }
  void document_loaded() override;
  void state_changed() override { look_later(); }
  void look_later();

 private:
  /// Where the selection stands, to see whether it has moved.
  struct Position {
    const void *document = nullptr, *anchor = nullptr, *focus = nullptr, *control = nullptr;
    std::size_t anchor_offset = 0, focus_offset = 0;
    friend bool operator==(const Position&, const Position&) = default;
  };

  bool eventFilter(QObject* watched, QEvent* event) override;
  bool listened_to() const;
  bool is_heard(void (HTMLedWidget::*signal)()) const;
  void look();
  void tell_selection();
  void tell_format();
  void tell_modification();
  Position position() const;
  void show_words(HTMLedWidget::Action which);
  void show_state(HTMLedWidget::Action which);
  void act(HTMLedWidget::Action which);

  static constexpr std::size_t count = std::size_t(HTMLedWidget::Action::ZoomReset) + 1;
  HTMLedWidget& widget_;
  std::array<QAction*, count> actions_{};
  QTimer timer_;
  Position position_;
  std::optional<HTMLedWidget::Format> format_;
  std::optional<bool> modified_;
  bool loaded_ = false;
};

}  // namespace tvx::qt
