#include "editing/editing_fixture.h"
#include "tvx/editing/gestures/typing.h"

namespace tvx::editing::test {

class FormFieldCommands : public EditingFixture {};

TEST_F(FormFieldCommands, EachMakesItsElementWithTheIdGiven) {
  const std::vector<std::pair<Command, std::string>> all{
      {{"InsertInputText", "Textbox1"}, "<INPUT type=\"text\" id=\"Textbox1\">"},
      {{"InsertTextArea", "TextArea1"}, "<TEXTAREA id=\"TextArea1\"></TEXTAREA>"},
      {{"InsertInputFileUpload", "Upload1"}, "<INPUT type=\"file\" id=\"Upload1\">"},
      {{"InsertInputHidden", "Hidden1"}, "<INPUT type=\"hidden\" id=\"Hidden1\">"},
      {{"InsertInputImage", "Image1"}, "<INPUT type=\"image\" id=\"Image1\">"},
      {{"InsertInputCheckbox", "Check1"}, "<INPUT type=\"checkbox\" id=\"Check1\">"},
      {{"InsertSelectDropdown", "Select1"}, "<SELECT id=\"Select1\"></SELECT>"},
      {{"InsertInputButton", "Button1"}, "<INPUT type=\"button\" id=\"Button1\">"},
      {{"InsertInputSubmit", "Submit"}, "<INPUT type=\"submit\" id=\"Submit\">"},
      {{"InsertInputReset", "Reset"}, "<INPUT type=\"reset\" id=\"Reset\">"},
      {{"InsertInputRadio", "Radio1"}, "<INPUT type=\"radio\" id=\"Radio1\">"}};
  for (const auto& [command, field] : all) {
    expect_edit("<p>fo[]o</p>", command, "<P>fo" + field + "{}o</P>");
    expect_edit("<p>f[o]o</p>", command, "<P>f" + field + "{}o</P>");
  }
}

TEST_F(FormFieldCommands, NamesHaveNoCaseAndAnEmptyValueGivesNoId) {
  EXPECT_TRUE(editor.supported(u"insertinputTEXT"));
  expect_edit("<p>a[]</p>", {"INSERTSELECTDROPDOWN", ""}, "<P>a<SELECT></SELECT>{}</P>");
}

TEST_F(FormFieldCommands, TakeThePlaceOfAControl) {
  load("<p>a<img src=\"x\">b</p>");
  editor.selection().select_control(*dom::first_child_element(*dom::first_child_element(host)));
  const std::string first = marked();
  run({"InsertInputButton", "b"});
  EXPECT_EQ(html(), "<P>a<INPUT type=\"button\" id=\"b\">b</P>");
  expect_laws(first);
  EXPECT_TRUE(document->journal().undo());
  EXPECT_EQ(editor.selection().type(), SelectionType::Control);
}

TEST_F(FormFieldCommands, AreEnabledWhereTheDocumentCanBeEdited) {
  load("<p>a[]</p>");
  EXPECT_TRUE(editor.enabled(u"InsertInputText"));
  editor.selection().collapse({host.next_sibling(), 0});
  EXPECT_FALSE(editor.enabled(u"InsertInputText"));
  EXPECT_FALSE(run({"InsertInputText", "t"}));
  editor.selection().clear();
  EXPECT_FALSE(editor.enabled(u"InsertInputText"));
}

TEST_F(FormFieldCommands, KeepThePendingLook) {
  load("<p>a[]</p>");
  run({"bold"});
  run({"InsertInputText", "t"});
  type_text(editor, u"x");
  EXPECT_EQ(html(), "<P>a<INPUT type=\"text\" id=\"t\"><B>x</B></P>");
}

}  // namespace tvx::editing::test
