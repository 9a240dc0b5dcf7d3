#include "htmled/counted.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <map>

#include "htmled/languages.h"

namespace tvx::htmled {
namespace {

std::string text(const QString& words) { return words.toStdString(); }

TEST(Counted, OneIsNoPlural) {
  const QString forms = QStringLiteral("%1 word|%1 words");
  EXPECT_EQ(text(counted(forms, 0)), "0 words");
  EXPECT_EQ(text(counted(forms, 1)), "1 word");
  EXPECT_EQ(text(counted(forms, 2)), "2 words");
  EXPECT_EQ(text(counted(forms, 21)), "21 words");
}

TEST(Counted, NumbersAreWrittenAsTheSystemWritesThem) {
  EXPECT_EQ(text(counted(QStringLiteral("%1 word|%1 words"), 12345)),
            text(QLocale().toString(12345)) + " words");
}

TEST(Counted, OneFormIsForAll) { EXPECT_EQ(text(counted(QStringLiteral("%1 Zeichen"), 1)), "1 Zeichen"); }

/// What the language files make of the words.
TEST(Counted, EveryLanguageHasItsForms) {
  const std::map<std::string, std::map<qulonglong, std::string>> expected = {
      {"en", {{0, "0 words"}, {1, "1 word"}, {2, "2 words"}}},
      {"de", {{0, "0 Wörter"}, {1, "1 Wort"}, {2, "2 Wörter"}}},
      {"es", {{0, "0 palabras"}, {1, "1 palabra"}, {2, "2 palabras"}}},
      {"fr", {{0, "0 mot"}, {1, "1 mot"}, {2, "2 mots"}}},
      {"ja", {{0, "0 語"}, {1, "1 語"}, {2, "2 語"}}},
      {"ar",
       {{0, "لا كلمات"},
        {1, "كلمة واحدة"},
        {2, "كلمتان"},
        {3, "3 كلمات"},
        {10, "10 كلمات"},
        {11, "11 كلمة"},
        {100, "100 كلمة"},
        {103, "103 كلمات"}}},
  };
  for (const auto& [language, of_numbers] : expected) {
    Words words;
    ASSERT_TRUE(words.read(QString::fromStdString(TVX_SOURCE_DIR "/languages/" + language + ".xml")));
    const QString forms = words.translate("", "%1 word|%1 words", nullptr, -1);
    for (const auto& [number, sentence] : of_numbers)
      EXPECT_EQ(text(counted(forms, number)), sentence) << language;
  }
}

TEST(Counted, OfSeveralTheFormIsThatOfAll) {
  const QString forms = QStringLiteral("Uploaded %1 of %2 image|Uploaded %1 of %2 images");
  EXPECT_EQ(text(counted_of(forms, 1, 1)), "Uploaded 1 of 1 image");
  EXPECT_EQ(text(counted_of(forms, 0, 1)), "Uploaded 0 of 1 image");
  EXPECT_EQ(text(counted_of(forms, 1, 3)), "Uploaded 1 of 3 images");
  for (const auto& [language, one] : std::map<std::string, std::string>{{"en", "Uploaded 1 of 1 image"},
                                                                        {"de", "1 von 1 Bild hochgeladen"},
                                                                        {"fr", "1 sur 1 image envoyée"},
                                                                        {"ar", "رُفعت 1 من صورة واحدة"}}) {
    Words words;
    ASSERT_TRUE(words.read(QString::fromStdString(TVX_SOURCE_DIR "/languages/" + language + ".xml")));
    const QByteArray english = forms.toUtf8();
    EXPECT_EQ(text(counted_of(words.translate("", english.constData(), nullptr, -1), 1, 1)), one);
  }
}

}  // namespace
}  // namespace tvx::htmled
