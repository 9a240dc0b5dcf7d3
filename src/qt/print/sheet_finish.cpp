#include "tvx/qt/print/sheet_finish.h"

// The library's own pointers are standard ones.
#define POINTERHOLDER_TRANSITION 4
#include <iostream>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>
#include <qpdf/QPDFWriter.hh>
#include <vector>

#include "tvx/qt/print/running_lines.h"

namespace tvx::qt {
namespace {

using Object = QPDFObjectHandle;

Object text_object(const QString& text) { return Object::newUnicodeString(text.toStdString()); }

void read(QPDF& pdf, const QByteArray& bytes) {
  pdf.setSuppressWarnings(true);
  pdf.processMemoryFile("sheets", bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

QByteArray written(QPDF& pdf) {
  QPDFWriter writer(pdf);
  writer.setOutputMemory();
  writer.setObjectStreamMode(qpdf_o_generate);
  writer.write();
  const auto buffer = writer.getBufferSharedPointer();
  return {reinterpret_cast<const char*>(buffer->getBuffer()), static_cast<qsizetype>(buffer->getSize())};
}

// --- header and footer ---

// The coordinates that the engine has drawn with end with it.
void lay_over(QPDF& pdf, QPDFPageObjectHelper& page, QPDFPageObjectHelper lines) {
  Object form = pdf.copyForeignObject(lines.getFormXObjectForPage());
  Object resources = page.getAttribute("/Resources", true);
  const std::string name = "/TvxLines";
  Object drawings = resources.getKey("/XObject");  // other sheets may have the same one
  drawings = drawings.isDictionary() ? drawings.shallowCopy() : Object::newDictionary();
  drawings.replaceKey(name, form);
  resources.replaceKey("/XObject", drawings);
  const std::string drawn =
      page.placeFormXObject(form, name, page.getTrimBox().getArrayAsRectangle(), true, false, false);
  page.addPageContents(pdf.newStream("q\n"), true);
  page.addPageContents(pdf.newStream("\nQ\n" + drawn), false);
}

// What is taken from `lines` is read when the PDF is written: it lives as long.
void add_lines(QPDF& pdf, QPDF& lines, const QByteArray& bytes) {
  read(lines, bytes);
  std::vector<QPDFPageObjectHelper> pages = QPDFPageDocumentHelper(pdf).getAllPages();
  const std::vector<QPDFPageObjectHelper> over = QPDFPageDocumentHelper(lines).getAllPages();
  for (std::size_t i = 0; i < std::min(pages.size(), over.size()); ++i) lay_over(pdf, pages[i], over[i]);
}

// --- bookmarks ---

/// Those that a further heading may belong to: the outline itself, and the headings above.
struct Branch {
  int level;
  Object item;
  Object last;  // of those below it
};

void hang(std::vector<Branch>& open, const SheetHeading& heading, Object item) {
  while (open.size() > 1 && open.back().level >= heading.level) open.pop_back();
  Branch& above = open.back();
  item.replaceKey("/Parent", above.item);
  if (above.last.isInitialized() && !above.last.isNull()) {
    item.replaceKey("/Prev", above.last);
    above.last.replaceKey("/Next", item);
  } else {
    above.item.replaceKey("/First", item);
  }
  above.item.replaceKey("/Last", item);
  above.last = item;
  for (Branch& each : open) {
    Object count = each.item.getKey("/Count");
    each.item.replaceKey("/Count", Object::newInteger((count.isInteger() ? count.getIntValue() : 0) + 1));
  }
  open.push_back({heading.level, item, Object::newNull()});
}

// The engine has named the positions; the names themselves are taken out again.
void add_bookmarks(QPDF& pdf, const Sheets& sheets) {
  Object places = pdf.getRoot().getKey("/Dests");
  if (!places.isDictionary()) return;
  Object outline = pdf.makeIndirectObject(Object::newDictionary());
  outline.replaceKey("/Type", Object::newName("/Outlines"));
  std::vector<Branch> open{{0, outline, Object::newNull()}};
  for (const SheetHeading& heading : sheets.headings) {
    const std::string name = "/" + heading.name.toStdString();
    Object place = places.getKey(name);
    if (place.isNull()) continue;  // it stands on no sheet
    Object item = pdf.makeIndirectObject(Object::newDictionary());
    item.replaceKey("/Title", text_object(heading.text));
    item.replaceKey("/Dest", place);
    hang(open, heading, item);
    if (heading.name.startsWith(QLatin1String(heading_mark))) places.removeKey(name);
  }
  if (!outline.hasKey("/First")) return;
  pdf.getRoot().replaceKey("/Outlines", outline);
}

// --- what it says of itself ---

void describe(QPDF& pdf, const Sheets& sheets, const PageSetup& setup) {
  Object facts = pdf.getTrailer().getKey("/Info");
  if (!facts.isDictionary()) {
    facts = pdf.makeIndirectObject(Object::newDictionary());
    pdf.getTrailer().replaceKey("/Info", facts);
  }
  const QString title = sheets.title.isEmpty() ? setup.file_name : sheets.title;
  if (!title.isEmpty()) facts.replaceKey("/Title", text_object(title));
  if (!sheets.language.isEmpty()) pdf.getRoot().replaceKey("/Lang", text_object(sheets.language));
}

}  // namespace

QByteArray finished_pdf(const Sheets& sheets, const PageSetup& setup) {
  if (sheets.pdf.isEmpty()) return {};
  try {
    QPDF lines, pdf;
    read(pdf, sheets.pdf);
    const std::size_t count = QPDFPageDocumentHelper(pdf).getAllPages().size();
    const QByteArray over = running_lines(setup, sheets.title, static_cast<int>(count));
    if (!over.isEmpty()) add_lines(pdf, lines, over);
    add_bookmarks(pdf, sheets);
    describe(pdf, sheets, setup);
    return written(pdf);
  } catch (const std::exception& error) {
    std::clog << "htmled: the PDF can't be finished: " << error.what() << '\n';
    return {};
  }
}

QByteArray chosen_sheets(const QByteArray& bytes, const QPageRanges& ranges) {
  if (ranges.isEmpty() || bytes.isEmpty()) return bytes;
  try {
    QPDF pdf;
    read(pdf, bytes);
    QPDFPageDocumentHelper helper(pdf);
    int number = 0;
    for (const QPDFPageObjectHelper& page : helper.getAllPages())
      if (!ranges.contains(++number)) helper.removePage(page);
    pdf.getRoot().removeKey("/Outlines");  // they would lead to sheets that aren't there
    return helper.getAllPages().empty() ? QByteArray() : written(pdf);
  } catch (const std::exception& error) {
    std::clog << "htmled: the sheets can't be chosen: " << error.what() << '\n';
    return {};
  }
}

}  // namespace tvx::qt
