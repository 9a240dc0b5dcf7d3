#pragma once

#include <string_view>

/// Why a button or an item that is there can't act: the tips of those that are grey. Each is a word of the
/// language files.
namespace tvx::core::obstacles {

inline constexpr std::u16string_view none;
inline constexpr std::u16string_view no_selection = u"Nothing is selected";
inline constexpr std::u16string_view no_undo = u"There is nothing to undo";
inline constexpr std::u16string_view no_redo = u"There is nothing to redo";
inline constexpr std::u16string_view no_paste = u"There is nothing to paste";
inline constexpr std::u16string_view no_properties = u"This element has no properties to set";
inline constexpr std::u16string_view no_tag_edit = u"The tag of this element can't be edited";
inline constexpr std::u16string_view no_cell = u"There is no cell on this side";
inline constexpr std::u16string_view no_table = u"The caret is in no table";
inline constexpr std::u16string_view no_cells = u"Select the cells that are to be one";
inline constexpr std::u16string_view no_cell_below = u"There is no cell below";
inline constexpr std::u16string_view several_cells = u"Several cells are selected";
inline constexpr std::u16string_view no_source = u"The code view is switched off";
inline constexpr std::u16string_view read_only = u"This page can only be read";
inline constexpr std::u16string_view in_code = u"This works on the page, not on its code";
inline constexpr std::u16string_view no_link = u"There is no link";
inline constexpr std::u16string_view frames = u"This page consists of frames. Its source can be edited.";
inline constexpr std::u16string_view in_list = u"A list can't be a quotation";

}  // namespace tvx::core::obstacles
