#include <gtest/gtest.h>

#include <QSet>
#include <QString>

#include "htmled/menus/commands.h"

namespace tvx::htmled {
namespace {

/// Names, which have capitals wherever they stand.
const QSet<QString> names{QStringLiteral("PDF…"), QStringLiteral("HTMLed")};

TEST(MenuWords, HaveCapitalsAtTheirBeginningOnly) {
  int looked_at = 0;
  for (const Command& command : Commands::table()) {
    if (!command.text) continue;
    ++looked_at;
    const QString text = QString::fromUtf8(command.text).remove(u'&');
    EXPECT_TRUE(text.front().isUpper()) << command.text;
    const QStringList words = text.split(u' ');
    for (const QString& word : words.mid(1))
      EXPECT_TRUE(names.contains(word) || !word.front().isUpper()) << command.text;
  }
  EXPECT_GT(looked_at, 50);
}

}  // namespace
}  // namespace tvx::htmled
