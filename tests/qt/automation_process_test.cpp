#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace tvx::htmled {
namespace {

/// The editor in a process of its own, off screen, driven from outside.
class AutomationProcess : public testing::Test {
 protected:
  void SetUp() override {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::SeparateChannels);
    process_.start(QStringLiteral(TVX_BIN_DIR "/htmled"), {QStringLiteral("--automation")});
    ASSERT_TRUE(process_.waitForStarted());
  }
  void TearDown() override {
    if (process_.state() == QProcess::NotRunning) return;
    process_.kill();
    process_.waitForFinished();
  }

  /// The answer to a request; what came before it is kept in `told_`.
  QJsonObject ask(const QString& method, const QJsonObject& params) {
    const int id = ++last_id_;
    const QJsonObject request{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}};
    process_.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
    told_.clear();
    while (process_.canReadLine() || process_.waitForReadyRead(60'000)) {
      while (process_.canReadLine()) {
        const QByteArray line = process_.readLine();
        const QJsonObject message = QJsonDocument::fromJson(line).object();
        EXPECT_FALSE(message.isEmpty()) << line.constData();
        if (message.value("id").toInt() == id) return message;
        told_.push_back(message);
      }
    }
    ADD_FAILURE() << "no answer to " << method.toStdString();
    return {};
  }
  QJsonValue result(const QString& method, const QJsonObject& params) {
    const QJsonObject answer = ask(method, params);
    EXPECT_TRUE(answer.contains("result")) << QJsonDocument(answer).toJson().constData();
    return answer.value("result");
  }
  QString html() { return result("get", {{"name", "DocumentHTML"}}).toObject().value("value").toString(); }
  QJsonValue object(const QString& path) {
    return result("object", {{"path", path}}).toObject().value("value");
  }
  bool was_told(const QString& method) const {
    return std::any_of(told_.begin(), told_.end(),
                       [&](const QJsonObject& message) { return message.value("method") == method; });
  }

  QProcess process_;
  std::vector<QJsonObject> told_;
  int last_id_ = 0;
};

TEST_F(AutomationProcess, ContentIsSetSelectedMadeBoldAndRead) {
  result("set", {{"name", "DocumentHTML"}, {"value", "<p>Hello world</p>"}});
  result("select", {{"start", QJsonArray{QJsonArray{0, 0}, 6}}, {"end", QJsonArray{QJsonArray{0, 0}, 11}}});
  result("press", {{"toolbar", "Toolbar1"}, {"key", "Bold"}});
  EXPECT_TRUE(was_told("event"));
  EXPECT_TRUE(was_told("propertyChanged"));
  EXPECT_EQ(html().toStdString(), "<P>Hello <B>world</B></P>");
  EXPECT_EQ(object("Toolbar1.Buttons(10).Value").toInt(), 1);
  result("document.type", {{"text", "all"}});
  EXPECT_EQ(html().toStdString(), "<P>Hello <B>all</B></P>");
  result("document.key", {{"key", "z"}, {"ctrl", true}});
  process_.closeWriteChannel();
  ASSERT_TRUE(process_.waitForFinished(60'000));
  EXPECT_EQ(process_.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(process_.exitCode(), 0);
}

TEST_F(AutomationProcess, APopupIsExpectedAndAnItemOfItChosen) {
  result("set", {{"name", "DocumentHTML"}, {"value", "<p>see <a href='x'>this</a></p>"}});
  const int link = object("docHTML.all.tags(\"A\").item(0).sourceIndex").toInt();
  result("expect", {{"on", "popup:mnuLinks"}, {"choose", "mnuLinkRemove"}});
  const QJsonValue popup =
      result("mouse", {{"kind", "press"}, {"button", "right"}, {"element", link}}).toObject().value("popup");
  EXPECT_EQ(popup.toString(), QStringLiteral("mnuLinks"));
  EXPECT_EQ(html().toStdString(), "<P>see this</P>");
}

// The first one is the program's window with a page in it, as a user has it.
TEST_F(AutomationProcess, AnotherControlIsAsItsContainerMakesIt) {
  const QJsonObject store{{"DocumentHTML", "<p>kept</p>"}, {"BaseURL", "http://e.org/"}};
  const QJsonObject made =
      result("control",
             {{"do", "new"}, {"store", store}, {"size", QJsonArray{9000, 6000}}, {"hwnd", 9876543}})
          .toObject();
  EXPECT_EQ(made.value("hwnd").toInt(), 9876543);
  const auto of = [&](const QJsonObject& whose, const char* path) {
    const QJsonObject params{{"path", QLatin1String(path)}, {"instance", whose.value("instance")}};
    return result("object", params).toObject().value("value");
  };
  EXPECT_EQ(of(made, "DocumentHTML").toString().toStdString(), "<P>kept</P>");
  EXPECT_EQ(of(made, "BaseURL").toString().toStdString(), "http://e.org/");
  EXPECT_NEAR(of(made, "WBrowser.Width").toInt(), 9000, 60) << "without its frame";
  const QJsonObject fresh = result("control", {{"do", "new"}, {"store", QJsonValue::Null}}).toObject();
  EXPECT_TRUE(of(fresh, "docHTML").isNull());
  result("control", {{"do", "show"}, {"instance", fresh.value("instance")}});
  EXPECT_EQ(of(fresh, "docHTML.readyState").toString().toStdString(), "complete");
  EXPECT_EQ(of(fresh, "docHTML.body.children.length").toInt(), 1) << "one empty DIV";
  result("control", {{"do", "terminate"}, {"instance", fresh.value("instance")}});
}

// Nobody is there to close the desktop's dialog.
TEST_F(AutomationProcess, APrintingIsExpected) {
  result("set", {{"name", "DocumentHTML"}, {"value", "<p>x</p>"}});
  for (const bool without_dialog : {false, true}) {
    result("expect", {{"on", "print"}});
    result("call", {{"name", "print_Document"}, {"args", QJsonArray{without_dialog}}});
    const auto seen = std::find_if(told_.begin(), told_.end(), [](const QJsonObject& message) {
      return message.value("method") == QStringLiteral("seen");
    });
    ASSERT_NE(seen, told_.end());
    const QJsonObject what = seen->value("params").toObject().value("seen").toObject();
    EXPECT_EQ(what.value("dialog").toBool(without_dialog), !without_dialog);
  }
}

}  // namespace
}  // namespace tvx::htmled
