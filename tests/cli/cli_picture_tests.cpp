// lumidot-cli store with image files: the real binary, without a display, on pictures made
// here; the same page as the window's import, and one line for each kind of bad picture.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "cli/cli_run.h"
#include "codec/graphic_page.h"
#include "support/picture_files.h"

namespace lumidot::testing {
namespace {

// Page 3 with only the dot in row 2, column 7, as the # and . picture test stores it.
Page Dot() {
    Page page{};
    page[2 * 16 + 7] = true;
    return page;
}

QByteArray Stored(const Page& page) {
    return QByteArray::fromStdString(MakeGraphicStoreSysEx(page, 3)) + '\n';
}

const QImage kDotImage = BlackOnWhite(16, 16, [](int x, int y) { return x == 7 && y == 2; });

struct PictureRow {
    const char* name;
    QStringList options;
    const char* file;
    std::function<QByteArray()> bytes;
    bool fromStandardInput;
    std::function<QByteArray()> out;
    const char* err;
    int status;
};

void PrintTo(const PictureRow& row, std::ostream* out) {
    *out << row.name;
}

class CliPictureTest : public ::testing::TestWithParam<PictureRow> {};

TEST_P(CliPictureTest, StoresThePageOrSaysWhatIsWrong) {
    const PictureRow& row = GetParam();
    QTemporaryDir folder;
    const QString name = QString::fromLatin1(row.file);
    ASSERT_TRUE(WriteFile(folder.filePath(name), row.bytes()));
    QStringList args = row.options;
    args << QStringLiteral("store") << QStringLiteral("3")
         << (row.fromStandardInput ? QStringLiteral("-") : name);
    // No display at all: the command line converts pictures without a window system.
    qunsetenv("DISPLAY");
    const CliRun run = RunCli(folder.path(), args, row.fromStandardInput ? row.bytes() : "");
    EXPECT_EQ(run.out, QString::fromLatin1(row.out()));
    EXPECT_EQ(run.err, QString::fromUtf8(row.err));
    EXPECT_EQ(run.status, row.status);
}

const auto kNothing = [] { return QByteArray(); };
const auto kPng = [] { return Encoded(kDotImage, "png"); };
const auto kDotStored = [] { return Stored(Dot()); };

// clang-format off
const PictureRow kPictureRows[] = {
    {"Png", {}, "dot.png", kPng, false, kDotStored, "", 0},
    {"PngFromStandardInput", {}, "dot.png", kPng, true, kDotStored, "", 0},
    {"JpegWithoutSuffix", {}, "dot", [] { return Encoded(kDotImage.scaled(64, 64), "jpeg"); },
     false, kDotStored, "", 0},
    {"FirstFrameOfAnAnimation", {}, "dots.gif",
     [] { return AnimatedGif({kDotImage, QImage(16, 16, QImage::Format_RGB32)}); }, false,
     kDotStored, "", 0},
    {"InvertedWhiteOnBlack", {"--invert"}, "dot.bmp",
     [] { QImage image = kDotImage; image.invertPixels(); return Encoded(image, "bmp"); }, false,
     kDotStored, "", 0},
    {"DitheringBlackAndWhiteChangesNothing", {"--dither"}, "dot.png", kPng, false, kDotStored, "", 0},
    {"ThresholdZeroEveryDotOff", {"--threshold", "0"}, "dot.png", kPng, false,
     [] { return Stored(Page{}); }, "", 0},
    {"Threshold255EveryDotOn", {"--threshold=255"}, "dot.png", kPng, false,
     [] { Page full; full.fill(true); return Stored(full); }, "", 0},
    {"EmptyFileNamedPng", {}, "empty.png", kNothing, false, kNothing,
     "lumidot-cli: empty.png: the file is empty\n", 1},
    {"TextNamedPng", {}, "notes.png", [] { return QByteArray("my notes\n"); }, false, kNothing,
     "lumidot-cli: notes.png: it is not a picture in a format Lumidot can read (PNG, BMP, GIF, "
     "JPEG, TIFF, PBM, PGM, PPM, XPM, ICO and others)\n", 1},
    {"TruncatedPng", {}, "cut.png", [] { return kPng().left(60); }, false, kNothing,
     "lumidot-cli: cut.png: the picture is damaged or too large to decode (Unable to read image "
     "data)\n", 1},
    {"HugePicture", {}, "huge.png", [] { return PngAnnouncing(30000, 30000); }, true, kNothing,
     "lumidot-cli: standard input: the picture is 30000 x 30000 pixels; pictures of up to 100 "
     "megapixels can be imported\n", 1},
    {"OptionsForADotPicture", {"--invert"}, "dot.txt",
     [] { return QByteArray("................\n").repeated(16); }, false, kNothing,
     "lumidot-cli: dot.txt: --threshold, --dither and --invert are for image files, not for a "
     "picture of # and .\n", 1},
    {"ThresholdOutOfRange", {"--threshold", "256"}, "dot.png", kPng, false, kNothing,
     "lumidot-cli: --threshold takes a number from 0 to 255, not \"256\" (see lumidot-cli "
     "--help)\n", 2},
    {"ThresholdAndDither", {"--threshold", "9", "--dither"}, "dot.png", kPng, false, kNothing,
     "lumidot-cli: --threshold and --dither exclude each other (see lumidot-cli --help)\n", 2},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Images, CliPictureTest, ::testing::ValuesIn(kPictureRows),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lumidot::testing
