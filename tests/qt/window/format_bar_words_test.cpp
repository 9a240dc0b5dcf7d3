#include <gtest/gtest.h>

#include <QComboBox>
#include <QFile>
#include <QTemporaryDir>

#include "htmled/window.h"
#include "tvx/qt/support/message_loop.h"

namespace tvx::htmled {
namespace {

// "Heading 1" stood there in English: the list was filled when the first of its words had become German.
TEST(FormatBarWords, AreAllInTheLanguageThatIsSpokenFromTheStart) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("page.html"));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("<h1>One</h1>") > 0);
  file.close();
  qt::MessageLoop loop;
  Window window(loop);
  window.speak(*window.languages().find(QStringLiteral("de")));
  window.show();
  window.start_with({path});
  const auto* styles = window.findChild<QComboBox*>(QStringLiteral("styles"));
  ASSERT_TRUE(styles);
  const std::int64_t end = loop.now() + 20'000;
  while (styles->currentText() != QStringLiteral("Überschrift 1") && loop.now() < end) loop.pump(20);
  EXPECT_EQ(styles->currentText().toStdString(), "Überschrift 1");
  for (int i = 1; i <= 6; ++i)
    EXPECT_EQ(styles->itemText(i), QStringLiteral("Überschrift %1").arg(i))
        << styles->itemText(i).toStdString();
  EXPECT_EQ(styles->itemText(0).toStdString(), "Absatz");
}

}  // namespace
}  // namespace tvx::htmled
