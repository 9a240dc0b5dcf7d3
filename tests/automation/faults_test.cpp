#include "conversation.h"

/// Operations that fail because a script wants it.
namespace tvx::automation::test {
namespace {

class Faults : public Conversation {};

TEST_F(Faults, ComeOnOrder) {
  const auto call = [&](const char* path, Json arguments) {
    return result("object", {{"path", path}, {"args", std::move(arguments)}});
  };
  const auto order = [&](const char* operation, Json more = {{"result", 0}}) {
    more["operation"] = operation;
    return failure("fault", more);
  };
  EXPECT_EQ(order("Nonsense"), 438);
  EXPECT_EQ(order("UrlEscape"), 0);
  EXPECT_EQ(call("EncodeURL", {"a b"})["value"], "");
  EXPECT_EQ(call("EncodeURL", {"a b"})["value"], "a%20b");
  EXPECT_EQ(order("urlunescape", {{"error", {5, "x"}}}), 0);
  EXPECT_EQ(call("DecodeURL", {"a%20b"})["value"], "");
  EXPECT_EQ(order("UrlCanonicalize"), 0);
  EXPECT_EQ(call("CanonicalURL", {"http://h/", 0})["value"], "");
  // A save dialog that fails ends the saving; one that is cancelled counts as saved.
  set("DocumentHTML", "<p>x</p>");
  result("document.key", {{"key", "ArrowLeft"}});
  EXPECT_EQ(order("ShowSave", {{"error", {5, "x"}}}), 0);
  result("call", {{"name", "Save_document"}, {"args", {"", false}}});
  EXPECT_TRUE(told_of("modal").empty());
  EXPECT_EQ(get("IsDirty"), true);
  result("call", {{"name", "Save_document"}, {"args", {"", false}}});
  EXPECT_EQ(get("IsDirty"), false);
  EXPECT_EQ(order("EXECCOMMAND paste"), 0);
  result("clipboard", {{"set", {{"1", "<b>t</b>"}}}});
  result("call", {{"name", "paste_document"}});
  EXPECT_NE(get("DocumentHTML").get<std::string>().find("<B>t</B>"), std::string::npos) << "by hand";
}

}  // namespace
}  // namespace tvx::automation::test
