#include "tvx/qt/bars/menu_face.h"

#include <QAction>
#include <QCursor>
#include <QGuiApplication>
#include <QHash>
#include <QMenu>
#include <QProxyStyle>
#include <QScreen>
#include <algorithm>

#include "tvx/qt/bars/icon_set.h"
#include "tvx/qt/support/strings.h"
#include "tvx/qt/support/twips.h"
#include "tvx/qt/support/words.h"

namespace tvx::qt {
namespace {

using platform::Menu;

struct Picture {
  const char16_t* item;
  const char16_t* image;
};

/// Items that do what a button does show its picture.
constexpr Picture pictures[] = {
    {u"mnuImgCut", u"cut"},          {u"mnuImgCopy", u"copy"},      {u"mnuImgPaste", u"paste"},
    {u"mnuLinkCut", u"cut"},         {u"mnuLinkCopy", u"copy"},     {u"mnuLinkPaste", u"paste"},
    {u"mnuMiscCut", u"cut"},         {u"mnuMiscCopy", u"copy"},     {u"mnuMiscPaste", u"paste"},
    {u"mnuInsertLink", u"link"},     {u"mnuImgNewLink", u"link"},   {u"mnuImgLink", u"link"},
    {u"mnuLinkEdit", u"link"},       {u"mnuMiscSource", u"toggle"}, {u"mnuMiscRevert", u"undo"},
    {u"mnuImgProperties", u"image"}, {u"mnuTProp", u"table"},
};

QIcon picture_of(const Menu& item) {
  const auto found =
      std::ranges::find_if(pictures, [&](const Picture& picture) { return item.Name() == picture.item; });
  return found == std::end(pictures) ? QIcon() : icon(found->image);
}

/// The desktop's style, in which a menu that is higher than the screen is scrolled. In columns those of a
/// style sheet's thousand classes that come last would be beside the screen.
class ScrolledMenuStyle final : public QProxyStyle {
 public:
  explicit ScrolledMenuStyle(QMenu& menu) {
    setParent(&menu);
    menu.setStyle(this);
  }
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* more) const override {
    return hint == SH_Menu_Scrollable ? 1 : QProxyStyle::styleHint(hint, option, widget, more);
  }
};

/// A menu of the model as a QMenu, for as long as that is open. Actions know their items by name and index:
/// an item may be gone when its action is chosen.
class MenuFace final : private platform::MenuObserver {
 public:
  // On the heap: the control's window, to which it belongs, may be closed while it is open.
  MenuFace(Menu& model, QWidget* owner) : model_(model), name_(model.Name()), widget_(new QMenu(owner)) {
    widget_->setObjectName(to_qt(name_));
    widget_->setToolTipsVisible(true);
    new ScrolledMenuStyle(*widget_);
    model_.add_observer(*this);
    fill();
  }
  ~MenuFace() {
    model_.remove_observer(*this);
    delete widget_;
  }
  MenuFace(const MenuFace&) = delete;
  MenuFace& operator=(const MenuFace&) = delete;

  QMenu* widget() const { return widget_; }
  Menu* item_of(const QAction* action) { return action ? item_called(action->objectName()) : nullptr; }

 private:
  void items_replaced(Menu&) override {
    if (widget_) fill();
  }
  void item_changed(Menu& item) override {
    if (QAction* action = actions_.value(to_qt(platform::name_with_index(item)))) show_state(*action, item);
  }

  void fill() {
    actions_.clear();
    widget_->clear();
    fill(*widget_, model_);
  }

  // Menus are as deep as the control's own tables make them: two levels.
  void fill(QMenu& widget, const Menu& menu) {
    for (const auto& item : menu.items()) {
      QMenu* const below = item->items().empty() ? nullptr : new QMenu(&widget);
      QAction* action = below ? widget.addMenu(below) : widget.addAction(QString());
      if (below) {
        new ScrolledMenuStyle(*below);
        fill(*below, *item);
      }
      action->setObjectName(to_qt(platform::name_with_index(*item)));
      action->setIcon(picture_of(*item));
      actions_.insert(action->objectName(), action);
      show_state(*action, *item);
    }
  }

  static void show_state(QAction& action, const Menu& item) {
    action.setSeparator(item.is_separator());
    // Captions may be a style sheet's class names: "&" in them is a letter.
    action.setText(item.is_separator() ? QString()
                                       : to_qt(item.Caption()).replace(u'&', QStringLiteral("&&")));
    const QString obstacle = translated(item.Obstacle());
    action.setEnabled(item.Enabled() && obstacle.isEmpty());
    action.setToolTip(obstacle);
    action.setVisible(item.Visible());
    action.setCheckable(item.Checked());
    action.setChecked(item.Checked());
  }

  Menu* item_called(const QString& name) {
    for (Menu* item : platform::all_items(model_))
      if (to_qt(platform::name_with_index(*item)) == name) return item;
    return nullptr;
  }

  Menu& model_;
  std::u16string name_;
  QPointer<QMenu> widget_;
  QHash<QString, QAction*> actions_;
};

}  // namespace

Menu* PopupMenus::show(Menu& menu, platform::WindowHandle, const std::optional<platform::PopupPlace>& place) {
  MenuFace face(menu, owner_);
  const QAction* chosen = face.widget()->exec(point_of(place, face.widget()->sizeHint()));
  return face.item_of(chosen);
}

QPoint PopupMenus::point_of(const std::optional<platform::PopupPlace>& place, const QSize& size) const {
  if (!owner_ || !place) return default_place_ ? default_place_() : QCursor::pos();
  QPoint point(to_pixels(place->x), to_pixels(place->y));
  // The model's allowance is a guess at the menu's height; what it is for is known better here.
  if (place->stay_above) point.setY(to_pixels(*place->stay_above) - size.height());
  return owner_->mapToGlobal(point);
}

}  // namespace tvx::qt
