#include "tvx/platform/pictures/picture_size.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "tvx/base/strings.h"

namespace tvx::platform {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

using Size = std::optional<PictureSize>;
Size size(std::int32_t width, std::int32_t height) { return PictureSize{width, height}; }

std::string big16(unsigned number) { return {char(number >> 8), char(number)}; }
std::string big32(unsigned number) { return big16(number >> 16) + big16(number & 0xFFFF); }
std::string little16(unsigned number) { return {char(number), char(number >> 8)}; }
std::string little24(unsigned number) { return little16(number & 0xFFFF) + char(number >> 16); }
std::string little32(unsigned number) { return little16(number & 0xFFFF) + little16(number >> 16); }

std::string png(unsigned width, unsigned height) {
  return "\x89PNG\r\n\x1A\n"s + big32(13) + "IHDR" + big32(width) + big32(height) + "\x08\x06\0\0\0"s;
}
std::string gif(unsigned width, unsigned height) {
  return "GIF89a" + little16(width) + little16(height) + "\0\0\0"s;
}

std::string segment(unsigned marker, const std::string& content) {
  return "\xFF"s + char(marker) + big16(unsigned(content.size()) + 2) + content;
}
std::string frame(unsigned marker, unsigned width, unsigned height) {
  return segment(marker, "\x08" + big16(height) + big16(width) + "\x01\x01\x11\0"s);
}
std::string jpeg(const std::string& segments) { return "\xFF\xD8" + segments; }
std::string exif(const std::string& note) { return segment(0xE1, "Exif\0\0"s + note); }
/// A note with an entry that says nothing here before the one that does.
std::string turned(unsigned orientation, bool little) {
  const auto number16 = [&](unsigned n) { return little ? little16(n) : big16(n); };
  const auto number32 = [&](unsigned n) { return little ? little32(n) : big32(n); };
  return exif((little ? "II" : "MM") + number16(42) + number32(8) + number16(2) + number16(0x0110) +
              number16(2) + number32(1) + number32(0) + number16(0x0112) + number16(3) + number32(1) +
              number16(orientation) + number16(0) + number32(0));
}

std::string webp(const std::string& chunk, const std::string& content) {
  return "RIFF" + little32(unsigned(content.size()) + 12) + "WEBP" + chunk +
         little32(unsigned(content.size())) + content;
}

TEST(PictureSize, OfAPngIsInItsHead) {
  EXPECT_EQ(picture_size(png(640, 480)), size(640, 480));
  EXPECT_EQ(picture_size(png(0, 480)), Size());
  EXPECT_EQ(picture_size(png(0x80000000, 1)), Size());
}

TEST(PictureSize, OfAGifIsThatOfItsScreen) {
  EXPECT_EQ(picture_size(gif(1, 65535)), size(1, 65535));
  EXPECT_EQ(picture_size("GIF87a" + little16(3) + little16(4)), size(3, 4));
  EXPECT_EQ(picture_size("GIF80a" + little16(3) + little16(4)), Size());
}

TEST(PictureSize, OfAJpegComesAfterWhatElseItSays) {
  EXPECT_EQ(picture_size(jpeg(segment(0xE0, "JFIF\0"s + std::string(9, '\0')) + frame(0xC0, 800, 600))),
            size(800, 600));
  // Progressive, after a long profile, with fill bytes between the segments.
  EXPECT_EQ(picture_size(jpeg(segment(0xE2, std::string(65000, 'p')) + "\xFF\xFF" + frame(0xC2, 20, 10))),
            size(20, 10));
  // A table of codes has a marker in the middle of those of frames.
  EXPECT_EQ(picture_size(jpeg(segment(0xC4, std::string(20, 'x')) + frame(0xC1, 5, 6))), size(5, 6));
}

TEST(PictureSize, OfAJpegIsTurnedAsTheCameraWasHeld) {
  for (const bool little : {true, false}) {
    for (unsigned orientation = 1; orientation <= 4; ++orientation)
      EXPECT_EQ(picture_size(jpeg(turned(orientation, little) + frame(0xC0, 40, 30))), size(40, 30))
          << orientation;
    for (unsigned orientation = 5; orientation <= 8; ++orientation)
      EXPECT_EQ(picture_size(jpeg(turned(orientation, little) + frame(0xC0, 40, 30))), size(30, 40))
          << orientation;
    EXPECT_EQ(picture_size(jpeg(turned(9, little) + frame(0xC0, 40, 30))), size(40, 30));
  }
}

TEST(PictureSize, ACamerasNoteThatIsBrokenTurnsNothing) {
  const std::string notes[] = {"",
                               "II*",
                               "II*\0"s + little32(0xFFFFFFFF),
                               "II*\0"s + little32(8) + little16(0xFFFF),
                               "XX*\0"s + little32(8),
                               "MM\0*"s + big32(8) + big16(1) + big16(0x0112)};
  for (const std::string& note : notes)
    EXPECT_EQ(picture_size(jpeg(exif(note) + frame(0xC0, 40, 30))), size(40, 30));
}

TEST(PictureSize, OfAJpegWithoutAFrameIsUnknown) {
  EXPECT_EQ(picture_size(jpeg(segment(0xDA, "data"))), Size());
  EXPECT_EQ(picture_size(jpeg("\xFF\xE0"s + big16(1))), Size());
  EXPECT_EQ(picture_size(jpeg("no segment")), Size());
  EXPECT_EQ(picture_size(jpeg(std::string(1 << 20, '\xFF'))), Size());
  std::string many;
  for (int i = 0; i < 100000; ++i) many += segment(0xE0, "");
  EXPECT_EQ(picture_size(jpeg(many + frame(0xC0, 1, 1))), Size());
}

TEST(PictureSize, OfWebPIsInAnyOfItsThreeForms) {
  EXPECT_EQ(picture_size(webp("VP8 ", "\0\0\0\x9D\x01\x2A"s + little16(320 | 0x4000) + little16(200))),
            size(320, 200));
  EXPECT_EQ(picture_size(webp("VP8L", "\x2F" + little32((99 << 14) | 49) + "\0\0\0\0\0"s)), size(50, 100));
  EXPECT_EQ(picture_size(webp("VP8X", std::string(4, '\0') + little24(0xFFFFFF) + little24(0))),
            size(0x1000000, 1));
  EXPECT_EQ(picture_size(webp("VP8 ", "\0\0\0\x9D\x01\x2B"s + little16(320) + little16(200))), Size());
  EXPECT_EQ(picture_size(webp("ICCP", std::string(40, 'x'))), Size());
}

TEST(PictureSize, OfADrawingIsItsFirstElements) {
  EXPECT_EQ(picture_size("<svg width='120' height=\"80px\">"), size(120, 80));
  EXPECT_EQ(picture_size("\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- > <svg width='1' height='1'> -->\n"
                         "<!DOCTYPE svg [<!ENTITY a '>'> <!ELEMENT svg ANY>]>\n"
                         "<s:svg xmlns:s='x' width='1in' height='0.5in'/>"),
            size(96, 48));
  EXPECT_EQ(picture_size("<svg width='30mm' height='3cm'>"), size(113, 113));
  EXPECT_EQ(picture_size("<svg width='2em' height='1e2'>"), size(32, 100));
  EXPECT_EQ(picture_size("\xFF\xFE<\0s\0v\0g\0 \0w\0i\0d\0t\0h\0=\0'\0"
                         "7\0'\0 \0h\0e\0i\0g\0h\0t\0=\0'\0"
                         "8\0'\0>\0"s),
            size(7, 8));
}

TEST(PictureSize, OfADrawingWithoutLengthsGoesByItsArea) {
  EXPECT_EQ(picture_size("<svg viewBox='0 0 100 100'>"), size(150, 150));
  EXPECT_EQ(picture_size("<svg viewBox='0,0,600,100' width='100%'>"), size(300, 50));
  EXPECT_EQ(picture_size("<svg viewBox='0 0 20 10' width='50'>"), size(50, 25));
  EXPECT_EQ(picture_size("<svg viewBox='0 0 20 10' height='50'>"), size(100, 50));
  EXPECT_EQ(picture_size("<svg width='50'>"), size(50, 150));
  EXPECT_EQ(picture_size("<svg>"), size(300, 150));
  EXPECT_EQ(picture_size("<svg viewBox='0 0 0 0' width='-3'>"), size(300, 150));
  EXPECT_EQ(picture_size("<svg width='1e300' height='1'>"), Size());
}

TEST(PictureSize, WhatIsNoPictureHasNone) {
  const std::string others[] = {"",
                                "text",
                                "<html><svg width='1' height='1'>",
                                "<svg width='1",
                                "<svg a>",
                                "<!-- <svg>",
                                "<!DOCTYPE svg [",
                                "<?xml",
                                "<",
                                "\0\0\0\0"s,
                                "RIFF0000WAVEfmt ",
                                "BM",
                                "<svg width=1 height=1>",
                                "  ",
                                "\xFF\xFE"};
  for (const std::string& bytes : others) EXPECT_EQ(picture_size(bytes), Size()) << bytes;
}

// Each picture, cut off anywhere and with any one byte another, is read without harm.
TEST(PictureSize, BrokenFilesDoNoHarm) {
  const std::string pictures[] = {
      png(640, 480),
      gif(10, 10),
      jpeg(turned(6, true) + frame(0xC0, 40, 30)),
      webp("VP8X", std::string(4, '\0') + little24(9) + little24(9)),
      webp("VP8L", "\x2F" + little32(0) + "\0\0\0\0\0"s),
      "<?xml version='1.0'?><!DOCTYPE svg []><svg viewBox='0 0 1 1' width='2' height='3'>"};
  int known = 0;
  for (const std::string& whole : pictures) {
    ASSERT_TRUE(picture_size(whole));
    for (std::size_t end = 0; end < whole.size(); ++end)
      known += picture_size(whole.substr(0, end)).has_value();
    for (std::size_t at = 0; at < whole.size(); ++at)
      for (const char other : {'\0', '\x01', '\x7F', '\xFF', '<', '\''}) {
        std::string changed = whole;
        changed[at] = other;
        if (const auto size = picture_size(changed)) {
          EXPECT_GE(size->width, 1);
          EXPECT_GE(size->height, 1);
          ++known;
        }
      }
  }
  EXPECT_GT(known, 0);
}

class PictureFile : public testing::Test {
 protected:
  PictureFile() {
    std::string name = (fs::temp_directory_path() / "tvx-picture-XXXXXX").string();
    folder_ = mkdtemp(name.data());
  }
  ~PictureFile() override { fs::remove_all(folder_); }
  std::u16string path(const std::string& name) { return from_utf8((folder_ / name).string()); }
  std::u16string file(const std::string& name, const std::string& bytes) {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
    return path(name);
  }

  fs::path folder_;
};

TEST_F(PictureFile, IsReadAsItsBytesAre) {
  EXPECT_EQ(picture_size_of_file(file("a b.gif", png(3, 4))), size(3, 4));
  EXPECT_EQ(picture_size_of_file(path("none.png")), Size());
  EXPECT_EQ(picture_size_of_file(from_utf8(folder_.string())), Size());
  EXPECT_EQ(picture_size_of_file(u""), Size());
}

TEST_F(PictureFile, AFarFrameOfAJpegIsFoundWithoutReadingAllBeforeIt) {
  std::string long_notes;
  for (int i = 0; i < 300; ++i) long_notes += segment(0xE2, std::string(65000, 'p'));
  EXPECT_EQ(picture_size_of_file(file("far.jpg", jpeg(long_notes + frame(0xC0, 9, 8)))), size(9, 8));
}

// A pipe without a writer would be waited for.
TEST_F(PictureFile, APipeIsNotWaitedFor) {
  ASSERT_EQ(mkfifo((folder_ / "pipe.png").c_str(), 0600), 0);
  EXPECT_EQ(picture_size_of_file(path("pipe.png")), Size());
}

}  // namespace
}  // namespace tvx::platform
