#include "tvx/library/members/bindings.h"

namespace tvx::library {

namespace {

using core::HTMLed;

constexpr Parameter open_parameters[] = {{u"strURL", Type::String, ByReference::Yes},
                                         {u"openEntireDoc", Type::Boolean, ByReference::Yes}};
constexpr Parameter save_parameters[] = {{u"strFilename", Type::String, ByReference::Yes},
                                         {u"bEntireDocument", Type::Boolean, ByReference::Yes}};
constexpr Parameter print_parameters[] = {{u"DontShowDialog", Type::Boolean, ByReference::Yes}};
constexpr Parameter return_parameters[] = {{u"bBR", Type::Boolean, ByReference::Yes}};
constexpr Parameter in_code_view_parameters[] = {{u"result", Type::Boolean, ByReference::Yes}};
constexpr Parameter insert_parameters[] = {{u"HTMLText", Type::String},
                                           {u"insertWhere", Type::ed_InsertType}};
constexpr Parameter selection_parameters[] = {{u"HTMLText", Type::Boolean}};
constexpr Parameter select_parameters[] = {{u"SelStartPos", Type::Integer32},
                                           {u"SelLength", Type::Integer32}};

Value open_document(HTMLed& control, Values& arguments) {
  std::u16string url = arguments[0].to_text();
  control.Open_document(url, arguments[1].to_boolean());
  arguments[0] = url;
  return {};
}

Value save_document(HTMLed& control, Values& arguments) {
  control.Save_document(arguments[0].to_text(), arguments[1].to_boolean());
  return {};
}

Value print_document(HTMLed& control, Values& arguments) {
  control.print_Document(arguments[0].to_boolean());
  return {};
}

Value send_return(HTMLed& control, Values& arguments) {
  control.sendCR(arguments[0].to_boolean());
  return {};
}

Value in_code_view(HTMLed& control, Values& arguments) {
  arguments[0] = control.InCodeView();
  return {};
}

Value insert_at_cursor(HTMLed& control, Values& arguments) {
  control.InsertAtCursor(arguments[0].to_text(), from_value<core::ed_InsertType>(arguments[1]));
  return {};
}

Value current_selection(HTMLed& control, Values& arguments) {
  const auto content = control.GetCurrentSelection(arguments[0].to_boolean());
  return content ? Value(*content) : Value();
}

Value select_text(HTMLed& control, Values& arguments) {
  return control.selectText(arguments[0].to_integer32(), arguments[1].to_integer32());
}

constexpr Member rows[] = {
    operation(101, u"Open_document", Type::None, open_parameters,
              u"Opens a file, or the one that the user chooses if the name is empty; whole or its body only.",
              open_document),
    operation(
        102, u"Save_document", Type::None, save_parameters,
        u"Saves to a file, or to the one that the user chooses if the name is empty; whole or body only.",
        save_document),
    operation(103, u"print_Document", Type::None, print_parameters,
              u"Prints, after asking the user or at once.", print_document),
    operation<&HTMLed::RevertToOriginal>(104, u"RevertToOriginal",
                                         u"Goes back to the HTML that was last set, without a question."),
    operation<&HTMLed::CleanUp>(105, u"CleanUp", u"Does nothing; hosts may call it."),
    operation(106, u"sendCR", Type::Variant, return_parameters,
              u"Types a line break (true) or the Return key (false) into the document.", send_return),
    operation<&HTMLed::scrollToTop>(107, u"scrollToTop", u"Scrolls to the document's beginning."),
    operation<&HTMLed::scrollToBottom>(108, u"scrollToBottom", u"Scrolls to the document's end."),
    operation<&HTMLed::show_Code>(109, u"show_Code", u"Switches between the document and its source."),
    operation(110, u"InCodeView", Type::None, in_code_view_parameters,
              u"Tells whether the source is in front.", in_code_view),
    operation(111, u"InsertAtCursor", Type::None, insert_parameters,
              u"Inserts HTML in place of the selection (0), before it (1) or after it (2).",
              insert_at_cursor),
    operation(112, u"GetCurrentSelection", Type::Variant, selection_parameters,
              u"Gives what is selected, or the word at the caret, as HTML or as text.", current_selection),
    operation(113, u"selectText", Type::String, select_parameters,
              u"Selects by character position and gives the HTML of what it selected.", select_text),
    operation<&HTMLed::ShowRemoteContent>(
        181, u"ShowRemoteContent",
        u"Lets the present document have the images and style sheets that it wants from elsewhere."),
};

}  // namespace

std::span<const Member> document_operations() { return rows; }

}  // namespace tvx::library
