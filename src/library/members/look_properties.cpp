#include "tvx/library/members/bindings.h"

namespace tvx::library {

namespace {

using core::HTMLed;

constexpr Member rows[] = {
    property<&HTMLed::BorderStyle, &HTMLed::set_BorderStyle>(
        18, u"BorderStyle", Type::EdBorderStyle, 1, u"The control's own frame: None (0) or Solid (1)."),
    property<&HTMLed::showFormToolbar, &HTMLed::set_showFormToolbar>(
        19, u"showFormToolbar", Type::Boolean, false, u"Whether the toolbar of form fields shows."),
    property<&HTMLed::showFormattingToolbar1, &HTMLed::set_showFormattingToolbar1>(
        20, u"showFormattingToolbar1", Type::Boolean, true,
        u"Whether the first group of formatting buttons shows."),
    property<&HTMLed::showFormattingToolbar2, &HTMLed::set_showFormattingToolbar2>(
        21, u"showFormattingToolbar2", Type::Boolean, true,
        u"Whether the second group of formatting buttons shows."),
    property<&HTMLed::showDOMToolbar, &HTMLed::set_showDOMToolbar>(
        22, u"showDOMToolbar", Type::Boolean, true,
        u"Whether the bar with the path to the current element shows."),
    property<&HTMLed::showCSSDropDown, &HTMLed::set_showCSSDropDown>(
        23, u"showCSSDropDown", Type::Boolean, false, u"Stored for hosts that know it; nothing reads it."),
    property<&HTMLed::HiddenButtons, &HTMLed::set_HiddenButtons>(
        24, u"HiddenButtons", Type::String, u"", u"The keys of the toolbar buttons that don't show."),
    property<&HTMLed::HiddenContextMenus, &HTMLed::set_HiddenContextMenus>(
        25, u"HiddenContextMenus", Type::String, u"", u"The keys of the context menu items that don't show."),
    property<&HTMLed::LocalizationFile, &HTMLed::set_LocalizationFile>(
        26, u"LocalizationFile", Type::String, u"", u"The file that translates the control's texts."),
    // A new control keeps the text "Dashed", which the getter's table doesn't know: it reads 0.
    property<&HTMLed::SelectionBorderStyle, &HTMLed::set_SelectionBorderStyle>(
        27, u"SelectionBorderStyle", Type::EdHighLightStyle, 0,
        u"The border's style around the current element."),
    property<&HTMLed::SelectionBorderColor, &HTMLed::set_SelectionBorderColor>(
        28, u"SelectionBorderColor", Type::String, u"RED",
        u"The border's colour around the current element."),
    property<&HTMLed::SelectionBorderWidth, &HTMLed::set_SelectionBorderWidth>(
        29, u"SelectionBorderWidth", Type::String, u"1", u"The border's width around the current element."),
    property<&HTMLed::HighlightDOMSelection, &HTMLed::set_HighlightDOMSelection>(
        30, u"HighlightDOMSelection", Type::Boolean, true,
        u"Whether the current element is framed; can be set at design time only.", Access::DesignTime),
    property<&HTMLed::HighlightDOMSelectionOnClick, &HTMLed::set_HighlightDOMSelectionOnClick>(
        31, u"HighlightDOMSelectionOnClick", Type::Boolean, false,
        u"Whether a click in the document frames the element under it."),
};

}  // namespace

std::span<const Member> look_properties() { return rows; }

}  // namespace tvx::library
