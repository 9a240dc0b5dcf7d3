#include "automation/conversation.h"

namespace tvx::automation::test {
namespace {

/// The object models of elements, reached by paths as a script writes them.
class ElementObjects : public Conversation {
 protected:
  void content(std::string_view html) { set("DocumentHTML", html); }
  void write(std::string_view path, const Json& value) { result("object", {{"path", path}, {"set", value}}); }
  int refused(std::string_view path, const Json& value) {
    return failure("object", {{"path", path}, {"set", value}});
  }
  int failed(std::string_view path) { return failure("object", {{"path", path}}); }
  std::string body() { return object("docHTML.body.innerHTML"); }
};

TEST_F(ElementObjects, AreReachedThroughTables) {
  content("<table><caption>c</caption><tr><td>a<td id=b>two words<tr><th>d</table>");
  EXPECT_EQ(object("docHTML.all.tags(\"TABLE\").item(0).rows(0).cells(1).innerText"), "two words");
  EXPECT_EQ(object("docHTML.all.tags('table').item(0).rows.length"), 2);
  EXPECT_EQ(object("docHTML.all.tags('table')(0).rows.item(1).cells.item(0).tagName"), "TH");
  EXPECT_EQ(object("docHTML.all.tags('table')(0).rows(0).cells('b').cellIndex"), 1);
  EXPECT_EQ(object("docHTML.all.tags('table')(0).rows(7)"), nullptr);
  EXPECT_EQ(failed("docHTML.all.tags('table')(0).rows(7).cells(0)"), 91);
  EXPECT_EQ(object("docHTML.all.tags('table')(0).cells.length"), 3);
  EXPECT_EQ(object("docHTML.all.tags('table')(0).cells.tags('th').length"), 1);
  EXPECT_EQ(object("docHTML.all.tags('table')(0).tBodies(0).rows(1).sectionRowIndex"), 1);
  EXPECT_EQ(object("docHTML.all.tags('table')(0).caption.innerText"), "c");
  EXPECT_EQ(object("docHTML.all.tags('table')(0).tHead"), nullptr);
  EXPECT_EQ(failed("docHTML.body.rows"), 438) << "only tables have rows";
}

TEST_F(ElementObjects, TablesChangeTheirShape) {
  content("<table><tr><td>a</table>");
  EXPECT_EQ(object("docHTML.all.tags('table')(0).insertRow().rowIndex"), 1);
  EXPECT_EQ(object("docHTML.all.tags('table')(0).rows(1).insertCell(0).tagName"), "TD");
  EXPECT_EQ(object("docHTML.all.tags('table')(0).insertRow(0).sectionRowIndex"), 0);
  EXPECT_EQ(body(), "<TABLE><TBODY><TR></TR><TR><TD>a</TD></TR><TR><TD></TD></TR></TBODY></TABLE>");
  object("docHTML.all.tags('table')(0).rows(1).deleteCell(-1)");
  object("docHTML.all.tags('table')(0).tBodies(0).deleteRow(0)");
  object("docHTML.all.tags('table')(0).deleteRow()");
  EXPECT_EQ(body(), "<TABLE><TBODY><TR></TR></TBODY></TABLE>");
  EXPECT_EQ(failed("docHTML.all.tags('table')(0).deleteRow(5)"), 5);
  EXPECT_EQ(failed("docHTML.all.tags('table')(0).insertRow(5)"), 5);
  EXPECT_EQ(failed("docHTML.all.tags('tr')(0).deleteCell(3)"), 5);
  EXPECT_EQ(failed("docHTML.all.tags('tr')(0).insertCell(1, 2)"), 450);
  object("docHTML.all.tags('table')(0).createTHead()");
  object("docHTML.all.tags('table')(0).createCaption()");
  EXPECT_EQ(body(), "<TABLE><CAPTION></CAPTION><THEAD></THEAD><TBODY><TR></TR></TBODY></TABLE>");
  object("docHTML.all.tags('table')(0).deleteTHead()");
  object("docHTML.all.tags('table')(0).deleteCaption()");
  EXPECT_EQ(body(), "<TABLE><TBODY><TR></TR></TBODY></TABLE>");
}

TEST_F(ElementObjects, TablesAndCellsReadAndWriteTheirLooks) {
  content("<table border='1%' cellspacing=0><tr><td></table>");
  EXPECT_EQ(object("docHTML.all.tags('table')(0).border"), "1%");
  EXPECT_EQ(object("docHTML.all.tags('table')(0).cellSpacing"), "0");
  EXPECT_EQ(object("docHTML.all.tags('table')(0).cellPadding"), "");
  write("docHTML.all.tags('table')(0).border", nullptr);
  write("docHTML.all.tags('table')(0).width", "50%");
  write("docHTML.all.tags('table')(0).borderColor", "red");
  for (const char* name : {"bgColor", "borderColor", "borderColorDark", "borderColorLight"})
    write(std::string("docHTML.all.tags('td')(0).") + name, "blue");
  EXPECT_EQ(body(),
            "<TABLE cellspacing=\"0\" width=\"50%\" bordercolor=\"red\"><TBODY><TR>"
            "<TD bgcolor=\"blue\" bordercolor=\"blue\" bordercolordark=\"blue\" bordercolorlight=\"blue\">"
            "</TD></TR></TBODY></TABLE>");
  for (const char* name : {"bgColor", "borderColor", "borderColorDark", "borderColorLight"})
    write(std::string("docHTML.all.tags('td')(0).") + name, "");
  EXPECT_EQ(object("docHTML.all.tags('td')(0).rowSpan"), 1);
  write("docHTML.all.tags('td')(0).colSpan", "2");
  EXPECT_EQ(object("docHTML.all.tags('td')(0).outerHTML"), "<TD colspan=\"2\"></TD>");
  EXPECT_EQ(refused("docHTML.all.tags('td')(0).colSpan", 0), 380);
  EXPECT_EQ(refused("docHTML.all.tags('td')(0).colSpan", ""), 13);
  EXPECT_EQ(refused("docHTML.all.tags('td')(0).align", "sideways"), 380);
  EXPECT_EQ(refused("docHTML.all.tags('tr')(0).vAlign", "sideways"), 380);
  EXPECT_EQ(refused("docHTML.all.tags('tr')(0).rowIndex", 2), 383);
  EXPECT_EQ(object("docHTML.all.tags('td')(0).outerHTML"), "<TD colspan=\"2\"></TD>");
}

TEST_F(ElementObjects, ListsOfATableAreLive) {
  content("<table><tr><td>a</table>");
  write("docHTML.body.children(0).id", "t");
  EXPECT_EQ(object("docHTML.all('t').rows.length"), 1);
  object("docHTML.all('t').insertRow()");
  EXPECT_EQ(object("docHTML.all('t').rows.length"), 2);
  write("docHTML.body.innerHTML", "");
  EXPECT_EQ(object("docHTML.all.tags('table').length"), 0);
  EXPECT_EQ(object("docHTML.all.tags('table').item(0)"), nullptr);
}

TEST_F(ElementObjects, Images) {
  set("BaseURL", "http://base.example/folder/");
  content("<img src='a.png' width=20 height='50%' alt=x>");
  EXPECT_EQ(object("docHTML.images(0).src"), "http://base.example/folder/a.png");
  EXPECT_EQ(object("docHTML.images(0).getAttribute('src')"), "a.png") << "as written";
  EXPECT_EQ(object("docHTML.images(0).protocol"), "http:");
  EXPECT_EQ(object("docHTML.images(0).width"), 20) << "a number";
  EXPECT_EQ(object("docHTML.images(0).height"), 0) << "a share of what only a view knows";
  write("docHTML.images(0).src", "file:///b.png");
  EXPECT_EQ(object("docHTML.images(0).protocol"), "File Protocol");
  write("docHTML.images(0).width", "200");
  write("docHTML.images(0).align", "absmiddle");
  EXPECT_EQ(refused("docHTML.images(0).align", "nowhere"), 380);
  EXPECT_EQ(refused("docHTML.images(0).width", "wide"), 13);
  object("docHTML.images(0).removeAttribute('height')");
  EXPECT_EQ(body(), "<IMG src=\"file:///b.png\" width=\"200\" alt=\"x\" align=\"absmiddle\">");
}

TEST_F(ElementObjects, Forms) {
  content(
      "<form name=f action=send.php><input name=i value=v><input type=radio name=r id=r1 checked>"
      "<input type=radio name=r id=r2><textarea>t</textarea><button>b</button>"
      "<select id=s><option value=1>one<option>two  words</select><label for=s>l</label></form>");
  EXPECT_EQ(object("docHTML.forms.length"), 1);
  EXPECT_EQ(object("docHTML.forms(0).name"), "f");
  EXPECT_EQ(object("docHTML.forms('f').method"), "get");
  EXPECT_EQ(object("docHTML.forms(0).elements.length"), 6);
  EXPECT_EQ(object("docHTML.forms(0).elements('i').value"), "v");
  EXPECT_EQ(object("docHTML.forms(0).action"), "send.php");
  write("docHTML.forms(0).method", "Post");
  write("docHTML.forms(0).encoding", "multipart/form-data");
  write("docHTML.forms(0).target", "<- type frame name ->");
  EXPECT_EQ(refused("docHTML.forms(0).method", "delete"), 380);
  EXPECT_EQ(object("docHTML.forms(0).method"), "post");
  EXPECT_EQ(object("docHTML.forms(0).target"), "<- type frame name ->");
  EXPECT_EQ(object("docHTML.all('i').type"), "text");
  EXPECT_EQ(object("docHTML.all('i').form.name"), "f");
  write("docHTML.all('r2').checked", true);
  EXPECT_EQ(object("docHTML.all('r1').checked"), false) << "one of a group";
  EXPECT_EQ(object("docHTML.all.tags('textarea')(0).value"), "t");
  EXPECT_EQ(object("docHTML.all.tags('button')(0).type"), "submit");
  EXPECT_EQ(refused("docHTML.all.tags('textarea')(0).type", "text"), 383);
  EXPECT_EQ(object("docHTML.all.tags('label')(0).htmlFor"), "s");
}

TEST_F(ElementObjects, ListsToChooseFrom) {
  content(
      "<select id=s><option value=1>one<option>two  words</select><select id=m multiple><option>x</select>");
  EXPECT_EQ(object("docHTML.all('s').type"), "select-one");
  EXPECT_EQ(object("docHTML.all('s').options.length"), 2);
  EXPECT_EQ(object("docHTML.all('s').length"), 2);
  EXPECT_EQ(object("docHTML.all('s').options(1).text"), "two words");
  EXPECT_EQ(object("docHTML.all('s').selectedIndex"), 0);
  write("docHTML.all('s').options(1).selected", true);
  EXPECT_EQ(object("docHTML.all('s').value"), "two words");
  EXPECT_EQ(object("docHTML.all('s').options(0).selected"), false);
  write("docHTML.all('s').selectedIndex", 0);
  EXPECT_EQ(object("docHTML.all('s').value"), "1");
  write("docHTML.all('s').value", "nobody");
  EXPECT_EQ(object("docHTML.all('s').value"), "1") << "a text that is no option is ignored";
  EXPECT_EQ(object("docHTML.all('m').selectedIndex"), -1);
  write("docHTML.all('m').options(0).text", "<y>");
  EXPECT_EQ(object("docHTML.all('m').innerHTML"), "<OPTION>&lt;y&gt;</OPTION>");
}

TEST_F(ElementObjects, LinksAndTheBase) {
  set("BaseURL", "http://base.example/");
  content("<a href='p.html#part' target=_top>l</a>");
  EXPECT_EQ(object("docHTML.links(0).href"), "http://base.example/p.html#part");
  EXPECT_EQ(object("docHTML.links(0).hash"), "#part");
  EXPECT_EQ(object("docHTML.links(0).protocol"), "http:");
  EXPECT_EQ(object("docHTML.links(0).target"), "_top");
  write("docHTML.links(0).href", "#x");
  EXPECT_EQ(object("docHTML.links(0).outerHTML"), "<A href=\"#x\" target=\"_top\">l</A>");
  EXPECT_EQ(object("docHTML.all.tags('base').item(0).href"), "http://base.example/");
  write("docHTML.all.tags('base').item(0).href", "http://other.example/");
  EXPECT_EQ(object("docHTML.links(0).href"), "http://other.example/#x");
}

TEST_F(ElementObjects, AttributesCountNoLetters) {
  content("<p CLASS=a>x</p><svg viewBox='0 0 1 1'></svg>");
  EXPECT_EQ(object("docHTML.body.children(0).className"), "a");
  EXPECT_EQ(object("docHTML.body.children(0).getAttribute('CLASSNAME', 0)"), "a");
  EXPECT_EQ(object("docHTML.body.children(0).getAttribute('Class')"), "a");
  EXPECT_EQ(object("docHTML.body.children(0).getAttribute('title')"), nullptr);
  EXPECT_EQ(object("docHTML.body.children(1).getAttribute('VIEWBOX')"), "0 0 1 1");
  object("docHTML.body.children(0).setAttribute('TITLE', 't', 1)");
  EXPECT_EQ(object("docHTML.body.children(0).title"), "t");
  EXPECT_EQ(object("docHTML.body.children(0).removeAttribute('className', 1)"), true);
  EXPECT_EQ(object("docHTML.body.children(0).removeAttribute('className')"), false);
  EXPECT_EQ(object("docHTML.body.children(0).outerHTML"), "<P title=\"t\">x</P>");
  write("docHTML.body.children(0).className", "");
  EXPECT_EQ(object("docHTML.body.children(0).outerHTML"), "<P title=\"t\">x</P>") << "nothing is born empty";
  EXPECT_EQ(object("docHTML.body.children(0).getAttribute('style', 0).cssText"), "");
}

TEST_F(ElementObjects, PlacesInTheTree) {
  content("<div id=d><p>a</p><p id=p>b</p></div>");
  const int place = object("docHTML.all('p').sourceIndex");
  EXPECT_EQ(object("docHTML.all(" + std::to_string(place) + ").id"), "p") << "the element for an index";
  EXPECT_EQ(object("docHTML.all.item(" + std::to_string(place - 2) + ").id"), "d");
  EXPECT_EQ(object("docHTML.all.item(1000)"), nullptr);
  EXPECT_EQ(failed("docHTML.all.item(-1)"), 5);
  EXPECT_EQ(object("docHTML.all('p').parentElement.id"), "d");
  EXPECT_EQ(object("docHTML.documentElement.parentElement"), nullptr);
  EXPECT_EQ(object("docHTML.documentElement.sourceIndex"), 0);
  EXPECT_EQ(object("docHTML.all('d').all.length"), 2);
  EXPECT_EQ(object("docHTML.all('d').children.length"), 2);
  EXPECT_EQ(object("docHTML.all('d').getElementsByTagName('P').length"), 2);
  EXPECT_EQ(object("docHTML.getElementsByTagName('p')(1).id"), "p");
  EXPECT_EQ(object("docHTML.all('d').document.readyState"), "complete");
}

TEST_F(ElementObjects, ContentIsRefusedWhereItCannotStand) {
  content("<table><tr><td>a</table><img>");
  for (const char* path :
       {"docHTML.all.tags('table')(0).innerHTML", "docHTML.all.tags('tr')(0).innerHTML",
        "docHTML.all.tags('table')(0).innerText", "docHTML.images(0).innerHTML", "docHTML.body.outerHTML",
        "docHTML.all.tags('td')(0).outerHTML", "docHTML.documentElement.innerHTML",
        "docHTML.documentElement.outerHTML", "docHTML.body.outerText"})
    EXPECT_EQ(refused(path, "x"), 445) << path;
  EXPECT_EQ(body(), "<TABLE><TBODY><TR><TD>a</TD></TR></TBODY></TABLE><IMG>");
}

TEST_F(ElementObjects, EveryMemberThatHostsCountOnIsThere) {
  content(
      "<style>p { color: red }</style><table><tr><td>a</table><img "
      "src=x><form><input><select><option>x</select>"
      "</form><a href=x>l</a>");
  const std::vector<std::pair<std::string, std::vector<std::string>>> objects = {
      {"docHTML",
       {"readyState", "designMode", "title", "all", "links", "images", "scripts", "forms", "styleSheets",
        "body", "documentElement", "selection", "parentWindow", "getElementsByTagName", "elementFromPoint",
        "execCommand", "queryCommandEnabled", "queryCommandValue"}},
      {"docHTML.parentWindow", {"event", "document", "scrollTo"}},
      {"docHTML.body",
       {"tagName", "innerHTML", "outerHTML", "innerText", "parentElement", "children", "all", "sourceIndex",
        "className", "getAttribute", "setAttribute", "removeAttribute", "style", "document", "currentStyle",
        "scrollIntoView"}},
      {"docHTML.body.style", {"cssText", "borderStyle", "borderWidth", "borderColor"}},
      {"docHTML.body.all", {"length", "item", "tags"}},
      {"docHTML.selection", {"type", "createRange", "empty", "clear"}},
      {"docHTML.selection.createRange()",
       {"htmlText", "text", "parentElement", "collapse", "expand", "pasteHTML", "select", "duplicate", "move",
        "moveStart", "moveEnd", "setEndPoint", "compareEndPoints", "inRange", "isEqual"}},
      {"docHTML.styleSheets(0)", {"href", "cssText", "rules"}},
      {"docHTML.all.tags('style')(0).styleSheet.rules(0)", {"selectorText"}},
      {"docHTML.all.tags('table')(0)",
       {"rows", "insertRow", "deleteRow", "bgColor", "borderColor", "borderColorLight", "borderColorDark",
        "border", "width", "cellSpacing", "cellPadding"}},
      {"docHTML.all.tags('tbody')(0)", {"rows", "insertRow", "deleteRow"}},
      {"docHTML.all.tags('tr')(0)",
       {"rowIndex", "sectionRowIndex", "cells", "insertCell", "deleteCell", "align", "vAlign", "bgColor",
        "borderColor", "borderColorDark", "borderColorLight"}},
      {"docHTML.all.tags('td')(0)",
       {"cellIndex", "colSpan", "rowSpan", "align", "vAlign", "bgColor", "borderColor", "borderColorDark",
        "borderColorLight", "background", "height", "width"}},
      {"docHTML.images(0)", {"width", "height", "alt", "border", "src", "align", "protocol"}},
      {"docHTML.forms(0)", {"name", "method", "action", "encoding", "target", "elements"}},
      {"docHTML.links(0)", {"href", "protocol", "hash", "target"}},
      {"docHTML.all.tags('base')(0)", {"href", "target"}},
      {"docHTML.all.tags('input')(0)", {"type", "name", "value", "checked", "form", "src"}},
      {"docHTML.all.tags('select')(0)", {"options", "selectedIndex", "value", "type"}},
  };
  for (const auto& [path, members] : objects)
    for (const std::string& member : members)
      // Without its arguments a call is refused for their number, never for its name.
      EXPECT_NE(failed(path + "." + member), 438) << path << "." << member;
  EXPECT_EQ(failed("docHTML.body.nothing"), 438);
}

}  // namespace
}  // namespace tvx::automation::test
