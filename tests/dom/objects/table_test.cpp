#include "tvx/dom/objects/table.h"

#include "document_with_html.h"

namespace tvx::dom::test {

class Tables : public Objects {
 protected:
  TableObject table() const { return TableObject(the(Tag::Table)); }
  std::string ids(const std::vector<Element*>& elements) const {
    std::string result;
    for (const Element* element : elements) result += to_utf8(element->attribute_or_empty(names::id)) + " ";
    return result;
  }
};

TEST_F(Tables, RowsComeHeadsFirstAndFeetLast) {
  load("<table><tfoot><tr id=f><tbody><tr id=a><tr id=b><thead><tr id=h><tbody><tr id=c></table>");
  EXPECT_EQ(ids(table().rows()), "h a b c f ");
  EXPECT_EQ(TableRowObject(the(Tag::Tr, 2)).rowIndex(), 2) << "b";
  EXPECT_EQ(TableRowObject(the(Tag::Tr, 2)).sectionRowIndex(), 1);
  EXPECT_EQ(TableRowObject(the(Tag::Tr, 4)).rowIndex(), 3) << "c";
  EXPECT_EQ(TableRowObject(the(Tag::Tr, 4)).sectionRowIndex(), 0);
  EXPECT_EQ(TableSectionObject(the(Tag::Tbody)).rows().size(), 2u);
  EXPECT_EQ(table().tBodies().size(), 2u);
}

TEST_F(Tables, InnerTablesAreTheirOwn) {
  load("<table><tr id=a><td><table><tr id=x></table><tr id=b></table>");
  EXPECT_EQ(ids(table().rows()), "a b ");
}

TEST_F(Tables, InsertRow) {
  load("<table><thead><tr id=h><tbody><tr id=a></table>");
  EXPECT_EQ(table().insertRow()->parent(), &the(Tag::Tbody)) << "behind the last, in its section";
  EXPECT_EQ(table().insertRow(0)->parent(), &the(Tag::Thead));
  EXPECT_EQ(ids(table().rows()), " h a  ");
  EXPECT_EQ(failure([&] { table().insertRow(5); }), errors::invalid_call);
  EXPECT_EQ(failure([&] { table().insertRow(-2); }), errors::invalid_call);
  EXPECT_EQ(table().insertRow(4)->parent(), &the(Tag::Tbody));
}

TEST_F(Tables, ATableWithoutRowsGetsABodyInTheSameStep) {
  load("<table></table>");
  const auto row = table().insertRow();
  TableRowObject(*row).insertCell();
  EXPECT_EQ(html(), "<TABLE><TBODY><TR><TD></TD></TR></TBODY></TABLE>");
  EXPECT_EQ(steps(), 2u);
  document->journal().undo();
  document->journal().undo();
  EXPECT_EQ(html(), "<TABLE></TABLE>");
}

TEST_F(Tables, DeleteRow) {
  load("<table><tr id=a><tr id=b><tr id=c></table>");
  table().deleteRow();
  EXPECT_EQ(ids(table().rows()), "a b ");
  table().deleteRow(0);
  EXPECT_EQ(ids(table().rows()), "b ");
  EXPECT_EQ(failure([&] { table().deleteRow(1); }), errors::invalid_call);
  EXPECT_EQ(failure([&] { table().deleteRow(-2); }), errors::invalid_call);
  EXPECT_EQ(ids(table().rows()), "b ");
  table().deleteRow(-1);
  EXPECT_EQ(failure([&] { table().deleteRow(-1); }), 0) << "nothing to lose is no failure";
}

TEST_F(Tables, SectionsCountTheirOwnRows) {
  load("<table><thead><tr id=h><tbody><tr id=a><tr id=b></table>");
  TableSectionObject body(the(Tag::Tbody));
  body.insertRow(1);
  EXPECT_EQ(ids(body.rows()), "a  b ");
  body.deleteRow(2);
  EXPECT_EQ(ids(body.rows()), "a  ");
  EXPECT_EQ(failure([&] { body.deleteRow(2); }), errors::invalid_call);
  EXPECT_EQ(failure([&] { body.insertRow(3); }), errors::invalid_call);
}

TEST_F(Tables, Cells) {
  load("<table><tr><th id=a><td id=b></table>");
  TableRowObject row(the(Tag::Tr));
  row.insertCell(1);
  row.insertCell();
  EXPECT_EQ(ids(row.cells()), "a  b  ");
  EXPECT_TRUE(row.cells()[1]->is(Tag::Td));
  EXPECT_TRUE(row.cells()[1]->attributes().empty());
  EXPECT_EQ(TableCellObject(the(Tag::Td, 1)).cellIndex(), 2);
  row.deleteCell(-1);
  row.deleteCell(0);
  EXPECT_EQ(ids(row.cells()), " b ");
  EXPECT_EQ(failure([&] { row.deleteCell(2); }), errors::invalid_call);
  EXPECT_EQ(failure([&] { row.insertCell(3); }), errors::invalid_call);
}

TEST_F(Tables, PartsAreMadeInTheirPlaces) {
  load("<table><colgroup></colgroup><tbody><tr></table>");
  table().createTFoot();
  table().createTHead();
  table().createCaption();
  table().createTBody();
  EXPECT_EQ(
      html(),
      "<TABLE><CAPTION></CAPTION><COLGROUP></COLGROUP><THEAD></THEAD><TBODY><TR></TR></TBODY><TBODY></TBODY>"
      "<TFOOT></TFOOT></TABLE>");
  EXPECT_EQ(table().createTHead().get(), table().tHead()) << "one of a kind";
  table().deleteCaption();
  table().deleteTHead();
  table().deleteTFoot();
  EXPECT_EQ(table().caption(), nullptr);
  EXPECT_EQ(html(), "<TABLE><COLGROUP></COLGROUP><TBODY><TR></TR></TBODY><TBODY></TBODY></TABLE>");
}

TEST_F(Tables, SizesAndBorderReadAsTheirText) {
  load("<table border='1%' width='50%' cellspacing=0% cellpadding=3><tr></table>");
  EXPECT_EQ(table().border(), u"1%");
  EXPECT_EQ(table().width(), u"50%");
  EXPECT_EQ(table().cellSpacing(), u"0%");
  EXPECT_EQ(table().cellPadding(), u"3");
  table().set_border(u"");
  table().set_width(u"");
  EXPECT_EQ(html(), "<TABLE cellspacing=\"0%\" cellpadding=\"3\"><TBODY><TR></TR></TBODY></TABLE>");
}

TEST_F(Tables, ColoursSetToNothingAreGone) {
  load("<table><tr><td></table>");
  TableCellObject cell(the(Tag::Td));
  cell.set_bgColor(u"#ff0000");
  cell.set_borderColor(u"red");
  cell.set_borderColorLight(u"white");
  cell.set_borderColorDark(u"black");
  EXPECT_EQ(to_utf8(outer_html(cell.element())),
            "<TD bgcolor=\"#ff0000\" bordercolor=\"red\" bordercolorlight=\"white\" "
            "bordercolordark=\"black\"></TD>");
  cell.set_bgColor(u"");
  cell.set_borderColor(u"");
  cell.set_borderColorLight(u"");
  cell.set_borderColorDark(u"");
  EXPECT_EQ(to_utf8(outer_html(cell.element())), "<TD></TD>");
}

TEST_F(Tables, AlignmentsRefuseOtherWords) {
  load("<table><tr><td></table>");
  TableCellObject cell(the(Tag::Td));
  for (const auto word : {u"left", u"center", u"right", u"justify"}) {
    cell.set_align(word);
    EXPECT_EQ(cell.align(), word);
  }
  for (const auto word : {u"top", u"middle", u"bottom", u"baseline"}) {
    cell.set_vAlign(word);
    EXPECT_EQ(cell.vAlign(), word);
  }
  EXPECT_EQ(failure([&] { cell.set_align(u"middle"); }), errors::invalid_property_value);
  EXPECT_EQ(failure([&] { cell.set_vAlign(u"left"); }), errors::invalid_property_value);
  EXPECT_EQ(cell.align(), u"justify");
  cell.set_align(u"");
  cell.set_vAlign(u"");
  EXPECT_EQ(to_utf8(outer_html(cell.element())), "<TD></TD>");
}

TEST_F(Tables, SpansAreAtLeastOne) {
  load("<table><tr><td colspan=3 rowspan=0><td colspan=x></table>");
  TableCellObject cell(the(Tag::Td));
  EXPECT_EQ(cell.colSpan(), 3);
  EXPECT_EQ(cell.rowSpan(), 1);
  EXPECT_EQ(TableCellObject(the(Tag::Td, 1)).colSpan(), 1);
  cell.set_colSpan(2);
  EXPECT_EQ(cell.colSpan(), 2);
  EXPECT_EQ(failure([&] { cell.set_colSpan(0); }), errors::invalid_property_value);
  EXPECT_EQ(failure([&] { cell.set_rowSpan(-1); }), errors::invalid_property_value);
  EXPECT_EQ(cell.colSpan(), 2);
}

TEST_F(Tables, OtherElementsAreNoTables) {
  load("<p>");
  EXPECT_EQ(failure([&] { TableObject{the(Tag::P)}; }), errors::type_mismatch);
  EXPECT_EQ(failure([&] { TableCellObject{the(Tag::P)}; }), errors::type_mismatch);
}

TEST_F(Tables, ElementsOfADocumentThatIsGoneFail) {
  load("<table><tr><td></table>");
  const TableObject gone = table();
  document = nullptr;
  EXPECT_EQ(failure([&] { TableObject(gone).insertRow(); }), errors::object_not_set);
}

}  // namespace tvx::dom::test
