#include "tvx/library/members/bindings.h"

namespace tvx::library {

namespace {

using core::HTMLed;

constexpr Parameter format_parameters[] = {{u"OpeningTag", Type::String}, {u"ClosingTag", Type::String}};

Value format_selection(HTMLed& control, Values& arguments) {
  control.FormatSelection(arguments[0].to_text(), arguments[1].to_text());
  return {};
}

constexpr Member rows[] = {
    operation<&HTMLed::bold_document>(121, u"bold_document", u"Bold, on or off."),
    operation<&HTMLed::italic_document>(122, u"italic_document", u"Italic, on or off."),
    operation<&HTMLed::underline_document>(123, u"underline_document", u"Underlined, on or off."),
    operation<&HTMLed::strike_document>(124, u"strike_document", u"Struck through, on or off."),
    operation<&HTMLed::indent_document>(125, u"indent_document", u"Indents by one level."),
    operation<&HTMLed::unindent_document>(126, u"unindent_document", u"Takes one level of indentation off."),
    operation<&HTMLed::Left_Justify>(127, u"Left_Justify", u"Aligns to the left."),
    operation<&HTMLed::Center_justify>(128, u"Center_justify", u"Centres."),
    operation<&HTMLed::Right_justify>(129, u"Right_justify", u"Aligns to the right."),
    operation<&HTMLed::numbered_list>(130, u"numbered_list", u"A numbered list, on or off."),
    operation<&HTMLed::unnumbered_list>(131, u"unnumbered_list", u"A bulleted list, on or off."),
    operation<&HTMLed::undo_document>(132, u"undo_document",
                                      u"Takes back the last step, of the view in front."),
    operation<&HTMLed::redo_document>(133, u"redo_document", u"Does again what was taken back."),
    operation<&HTMLed::insert_HR>(134, u"insert_HR", u"Inserts a horizontal rule."),
    operation<&HTMLed::insert_Link>(135, u"insert_Link",
                                    u"Makes the selection a link; asks for its address."),
    operation(136, u"FormatSelection", Type::None, format_parameters,
              u"Puts the selection, or the word at the caret, between two pieces of HTML.", format_selection),
    operation<&HTMLed::change_Font>(137, u"change_Font",
                                    u"Asks for font, size and colours of the selection."),
    operation<&HTMLed::Table_Document>(138, u"Table_Document",
                                       u"Asks for a table's measures and inserts it."),
    operation<&HTMLed::insert_Form>(139, u"insert_Form", u"Asks for a form's settings and inserts it."),
    operation<&HTMLed::cut_document>(140, u"cut_document", u"Moves the selection to the clipboard."),
    operation<&HTMLed::copy_document>(141, u"copy_document", u"Copies the selection to the clipboard."),
    operation<&HTMLed::paste_document>(142, u"paste_document", u"Inserts what is on the clipboard."),
};

}  // namespace

std::span<const Member> formatting_operations() { return rows; }

}  // namespace tvx::library
