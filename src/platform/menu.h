#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tvx/platform/window.h"

/// Menus as models: what a desktop draws, a script reads and a user chooses from. No widget in sight.
namespace tvx::platform {

class Menu;

/// Who acts when the user chooses an item.
class MenuHandler {
 public:
  virtual ~MenuHandler() = default;
  virtual void MenuItemClick(Menu& item) = 0;
};

/// Hears of a menu that it was added to, and of all menus below that one.
class MenuObserver {
 public:
  virtual ~MenuObserver() = default;
  /// An item has another caption, style or state.
  virtual void item_changed(Menu& item) = 0;
  /// Items came or went below this one.
  virtual void items_replaced(Menu& menu) = 0;
};

/// A menu or an item of one: the same thing, since an item with items below it is a submenu. An item whose
/// caption is "-" is a separator. Items keep their address until they are removed. Setting a value that it
/// has already notifies nobody.
///
/// Several items may share a name and differ by their index: a menu array. Its first item is made with the
/// menu; further ones are loaded after it and unloaded again, and their indexes may have gaps.
class Menu {
 public:
  /// A menu that stands at the top of its tree.
  Menu(std::u16string name, std::u16string caption);
  ~Menu();
  Menu(const Menu&) = delete;
  Menu& operator=(const Menu&) = delete;

  const std::u16string& Name() const { return name_; }
  /// The position in its menu array; none where it is in no array.
  std::optional<int> Index() const { return index_; }
  bool is_separator() const { return caption_ == u"-"; }
  /// The menu that this is an item of; null at the top.
  Menu* parent() const { return parent_; }

  const std::u16string& Caption() const { return caption_; }
  void set_Caption(std::u16string_view caption);
  bool Enabled() const { return enabled_; }
  void set_Enabled(bool enabled);
  /// Why it can't act just now, enabled or not; empty where it can. As with a toolbar's button.
  const std::u16string& Obstacle() const { return obstacle_; }
  void set_Obstacle(std::u16string_view reason);
  /// Of a menu at the top this has no effect on its popup.
  bool Visible() const { return visible_; }
  void set_Visible(bool visible);
  /// An item that is there now and then only, as for a wrong word: while it can't be seen, it is in no list
  /// of the menu's items that a host or a script asks for, and doesn't count.
  void set_occasional() { occasional_ = true; }
  bool is_listed() const { return visible_ || !occasional_; }
  bool Checked() const { return checked_; }
  void set_Checked(bool checked);

  // --- items ---
  const std::vector<std::unique_ptr<Menu>>& items() const { return items_; }
  /// Appends an item. Returns it, so that a submenu can be filled.
  Menu& Add(std::u16string name, std::u16string caption, std::optional<int> index = {});
  void AddSeparator(std::u16string name) { Add(std::move(name), u"-"); }
  /// The item of that name at any depth below this, without regard to case; of an array the one with that
  /// index, or its first where none is asked for. Null if there is none.
  Menu* find(std::u16string_view name, std::optional<int> index = {});

  // --- the menu array of that name among the items of this menu; names compare without regard to case ---
  /// The highest index. Throws RuntimeError(340) where there is no such array.
  int UBound(std::u16string_view array) const;
  /// Throws RuntimeError(340) for an index that is not loaded.
  Menu& Item(std::u16string_view array, int index);
  /// A new item after the array's last: it has the style of the array's first, and is not visible yet. Throws
  /// RuntimeError(360) if the index is loaded already.
  Menu& Load(std::u16string_view array, int index);
  /// Throws RuntimeError(362) for the array's first, which stays, and RuntimeError(340) for one that isn't
  /// loaded.
  void Unload(std::u16string_view array, int index);

  // --- use ---
  /// Whether a popup of this menu would have anything to choose.
  bool has_visible_item() const;
  /// The user's choice. A separator, a submenu, and what can't be seen or is not enabled, itself or a submenu
  /// above it, doesn't answer: false.
  bool choose();
  /// For this menu and all below it.
  void set_handler(MenuHandler* handler) { handler_ = handler; }
  void add_observer(MenuObserver& observer);
  void remove_observer(MenuObserver& observer);

 private:
  Menu(Menu* parent, std::u16string name, std::u16string caption, std::optional<int> index);
  bool has_name(std::u16string_view name) const;
  /// The items of a menu array by their indexes.
  using Array = std::map<int, Menu*>;
  const Array* array_called(std::u16string_view name) const;
  void tell_changed();
  void tell_replaced();

  Menu* parent_ = nullptr;
  std::u16string name_, caption_, obstacle_;
  std::optional<int> index_;
  bool enabled_ = true, visible_ = true, checked_ = false, occasional_ = false;
  bool loaded_ = false;  // by Load: may be unloaded
  std::vector<std::unique_ptr<Menu>> items_;
  std::map<std::u16string, Array>
      arrays_;  // by name, in small letters: a style sheet may have any number of classes
  MenuHandler* handler_ = nullptr;
  std::vector<MenuObserver*> observers_;
};

/// An item's name, with its index in brackets where it is in an array: "mnuClass(2)".
std::u16string name_with_index(const Menu& item);
/// All items below a menu, in the order in which they stand, submenus' items after their head.
std::vector<Menu*> all_items(Menu& menu);

/// Where a popup is to appear, in twips of the control's area.
struct PopupPlace {
  float x = 0, y = 0;
  /// A line that the popup shouldn't cover: a face that knows how high the menu is moves it above.
  std::optional<float> stay_above = {};
};

/// Who shows popup menus.
class PopupMenus {
 public:
  virtual ~PopupMenus() = default;
  /// Shows the menu, at the mouse where no position is given, and returns when it has closed. The handler of
  /// a chosen item has run by then; the message loop runs meanwhile. A menu with nothing to choose from is
  /// not shown.
  void PopupMenu(Menu& menu, WindowHandle owner, const std::optional<PopupPlace>& place = {});

 private:
  /// The item that the user chose, still to be acted on; null if the popup was dismissed. The menu's items
  /// may come and go while it is open.
  virtual Menu* show(Menu& menu, WindowHandle owner, const std::optional<PopupPlace>& place) = 0;
};

}  // namespace tvx::platform
