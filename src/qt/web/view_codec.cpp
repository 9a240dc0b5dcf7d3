#include "tvx/qt/web/view_codec.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QString>

#include "tvx/base/strings.h"

namespace tvx::qt {

using browser::PatchOperation;
using browser::ViewPlace;

CommandWriter::CommandWriter(int page, std::string_view command) {
  out_ += u'[';
  first_ = true;
  add(static_cast<std::int64_t>(page));
  add(from_utf8(command));
}

void CommandWriter::separate() {
  if (!first_) out_ += u',';
  first_ = false;
}

CommandWriter& CommandWriter::add(std::int64_t number) {
  separate();
  out_ += to_text(number);
  return *this;
}

CommandWriter& CommandWriter::add(bool value) {
  separate();
  out_ += value ? u"true" : u"false";
  return *this;
}

CommandWriter& CommandWriter::add(std::u16string_view text) {
  static constexpr char16_t digits[] = u"0123456789abcdef";
  separate();
  out_ += u'"';
  for (const char16_t c : text) {
    if (c == u'"' || c == u'\\') {
      out_ += u'\\';
      out_ += c;
    } else if (c >= u' ' && c < 0xD800) {
      out_ += c;
    } else {
      out_ += u"\\u";
      for (int shift = 12; shift >= 0; shift -= 4) out_ += digits[(c >> shift) & 15];
    }
  }
  out_ += u'"';
  return *this;
}

CommandWriter& CommandWriter::open() {
  separate();
  out_ += u'[';
  first_ = true;
  return *this;
}

CommandWriter& CommandWriter::close() {
  out_ += u']';
  first_ = false;
  return *this;
}

QString CommandWriter::finish() {
  out_ += u']';
  return QString::fromUtf16(out_.data(), static_cast<qsizetype>(out_.size()));
}

namespace {

std::int64_t number(dom::NodeId id) { return static_cast<std::int64_t>(id); }

void write(CommandWriter& out, const PatchOperation& operation) {
  using Type = PatchOperation::Type;
  const auto begin = [&](std::u16string_view kind) -> CommandWriter& {
    return out.open().add(kind).add(number(operation.node));
  };
  switch (operation.type) {
    case Type::Element:
      begin(u"e").add(number(operation.parent)).add(number(operation.before)).add(operation.name);
      out.add(static_cast<std::int64_t>(operation.name_space)).open();
      for (const auto& attribute : operation.attributes) {
        out.add(attribute.name).add(attribute.value).add(static_cast<std::int64_t>(attribute.name_space));
      }
      out.close();
      break;
    case Type::Text:
    case Type::Comment:
      begin(operation.type == Type::Text ? u"t" : u"c").add(number(operation.parent));
      out.add(number(operation.before)).add(operation.text);
      break;
    case Type::Detach: begin(u"d"); break;
    case Type::Place: begin(u"p").add(number(operation.parent)).add(number(operation.before)); break;
    case Type::Forget: begin(u"f"); break;
    case Type::Data:
      begin(u"x").add(std::int64_t(operation.offset)).add(std::int64_t(operation.length)).add(operation.text);
      break;
    case Type::Attribute:
      begin(u"a").add(operation.name).add(operation.text);
      out.add(static_cast<std::int64_t>(operation.attribute_namespace));
      break;
    case Type::NoAttribute: begin(u"n").add(operation.name); break;
  }
  out.close();
}

std::optional<ViewPlace> read_place(const QJsonValue& value) {
  const QJsonArray pair = value.toArray();
  if (pair.size() != 2) return {};
  return ViewPlace{dom::NodeId(pair[0].toInt()), static_cast<std::uint32_t>(pair[1].toInt())};
}

browser::ViewMouse read_mouse(const QJsonArray& part) {
  browser::ViewMouse mouse;
  mouse.type = static_cast<browser::ViewMouse::Type>(part[1].toInt());
  mouse.button = static_cast<browser::MouseButton>(part[2].toInt());
  mouse.x = part[3].toInt();
  mouse.y = part[4].toInt();
  mouse.shift = part[5].toInt() & 1;
  mouse.control = part[5].toInt() & 2;
  mouse.alt = part[5].toInt() & 4;
  mouse.element = dom::NodeId(part[6].toInt());
  mouse.place = read_place(part[7]);
  mouse.anchor = read_place(part[8]);
  mouse.focus = read_place(part[9]);
  mouse.edge = dom::NodeId(part[10].toInt());
  mouse.held = part[11].toBool();
  mouse.number = static_cast<std::uint32_t>(part[12].toInt());
  return mouse;
}

std::optional<browser::ViewDrag::Edge> read_edge(const QJsonValue& value) {
  if (!value.isArray()) return {};
  const QJsonArray part = value.toArray();
  browser::ViewDrag::Edge edge;
  edge.after = dom::NodeId(part[0].toInt());
  edge.width = part[1].toInt();
  edge.after_width = part[2].toInt();
  edge.shift = part[3].toInt();
  edge.table_width = part[4].toInt();
  return edge;
}

browser::ViewDrag read_drag(const QJsonArray& part) {
  const auto pixels = [&part](int index) -> std::optional<int> {
    if (!part[index].isDouble()) return {};
    return part[index].toInt();
  };
  browser::ViewDrag drag;
  drag.phase = static_cast<browser::ViewDrag::Phase>(part[1].toInt());
  drag.type = static_cast<browser::ViewDrag::Type>(part[2].toInt());
  drag.node = dom::NodeId(part[3].toInt());
  drag.x = part[4].toInt();
  drag.y = part[5].toInt();
  drag.shift = part[6].toInt() & 1;
  drag.control = part[6].toInt() & 2;
  drag.alt = part[6].toInt() & 4;
  drag.width = pixels(7);
  drag.height = pixels(8);
  drag.left = pixels(9);
  drag.top = pixels(10);
  drag.place = read_place(part[11]);
  drag.width_was = pixels(12);
  drag.edge = read_edge(part[13]);
  return drag;
}

browser::ViewFacts read_facts(const QJsonArray& part) {
  browser::ViewFacts facts;
  facts.caret_left = part[1].toInt();
  facts.caret_top = part[2].toInt();
  facts.caret_height = part[3].toInt();
  facts.scroll_x = part[4].toInt();
  facts.scroll_y = part[5].toInt();
  facts.width = part[6].toInt();
  facts.height = part[7].toInt();
  return facts;
}

void read_message(const QJsonArray& part, browser::PatchNumber seen, PageReport& report) {
  const QString kind = part[0].toString();
  const auto tell = [&](auto what) { report.messages.push_back({seen, std::move(what)}); };
  if (kind == u"ready") {
    report.ready = true;
  } else if (kind == u"done") {
    tell(browser::PatchDone{browser::PatchNumber(part[1].toInt()), part[2].toDouble()});
  } else if (kind == u"failed") {
    tell(browser::PatchFailed{dom::NodeId(part[1].toInt()), part[2].toString().toStdU16String()});
  } else if (kind == u"answer") {
    browser::ViewAnswer answer;
    answer.id = browser::QuestionId(part[1].toInt());
    answer.place = read_place(part[2]);
    answer.element = dom::NodeId(part[3].toInt());
    tell(answer);
  } else if (kind == u"mouse") {
    tell(read_mouse(part));
  } else if (kind == u"drag") {
    tell(read_drag(part));
  } else if (kind == u"select") {
    const auto anchor = read_place(part[1]), focus = read_place(part[2]);
    if (anchor && focus) tell(browser::ViewSelect{*anchor, *focus, {}});
  } else if (kind == u"facts") {
    tell(read_facts(part));
  } else if (kind == u"bar") {
    tell(browser::ViewScrollBar{part[1].toDouble(), dom::NodeId(part[2].toInt())});
  } else if (kind == u"picture") {
    tell(browser::ViewPicture{dom::NodeId(part[1].toInt()), part[2].toInt(), part[3].toInt()});
  }
}

}  // namespace

QString patch_command(int page, const browser::Patch& patch) {
  CommandWriter out(page, "patch");
  out.add(static_cast<std::int64_t>(patch.number)).open();
  for (const PatchOperation& operation : patch.operations) write(out, operation);
  constexpr double parts = 1'000'000;  // of the document
  out.close().add(static_cast<std::int64_t>(patch.share * parts)).add(patch.has_end);
  return out.finish();
}

QString select_command(int page, const browser::ViewSelection& selection) {
  CommandWriter out(page, "select");
  out.add(static_cast<std::int64_t>(selection.type));
  out.add(number(selection.anchor.node)).add(std::int64_t(selection.anchor.offset));
  out.add(number(selection.focus.node)).add(std::int64_t(selection.focus.offset));
  out.add(number(selection.control)).add(selection.reveal).open();
  if (selection.composing_length > 0) {
    const std::int64_t start = selection.composing.offset;
    out.add(number(selection.composing.node)).add(start).add(start + selection.composing_length);
  }
  out.close().add(std::int64_t(selection.mouse));
  return out.finish();
}

QString ask_command(int page, const browser::ViewQuestion& question) {
  CommandWriter out(page, "ask");
  out.add(static_cast<std::int64_t>(question.id)).add(static_cast<std::int64_t>(question.type));
  out.add(static_cast<std::int64_t>(question.move));
  out.add(number(question.from.node)).add(std::int64_t(question.from.offset)).add(question.extend);
  out.add(std::int64_t(question.x)).add(std::int64_t(question.y));
  return out.finish();
}

std::optional<PageReport> read_report(const QString& text) {
  const QJsonArray all = QJsonDocument::fromJson(text.toUtf8()).array();
  if (all.size() != 3) return {};
  PageReport report;
  report.page = all[0].toInt();
  const auto seen = browser::PatchNumber(all[1].toInt());
  for (const QJsonValue& part : all[2].toArray()) read_message(part.toArray(), seen, report);
  return report;
}

}  // namespace tvx::qt
