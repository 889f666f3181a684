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

Page Full() {
    Page page;
    page.fill(true);
    return page;
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

INSTANTIATE_TEST_SUITE_P(
    Images, CliPictureTest,
    ::testing::Values(
        PictureRow{"Png", {}, "dot.png", kPng, false, [] { return Stored(Dot()); }, "", 0},
        PictureRow{"PngFromStandardInput", {}, "dot.png", kPng, true,
                   [] { return Stored(Dot()); }, "", 0},
        PictureRow{"JpegWithoutSuffix", {}, "dot", [] { return Encoded(kDotImage.scaled(64, 64), "jpeg"); },
                   false, [] { return Stored(Dot()); }, "", 0},
        PictureRow{"FirstFrameOfAnAnimation", {}, "dots.gif",
                   [] { return AnimatedGif({kDotImage, QImage(16, 16, QImage::Format_RGB32)}); },
                   false, [] { return Stored(Dot()); }, "", 0},
        PictureRow{"InvertedWhiteOnBlack", {"--invert"}, "dot.bmp",
                   [] {
                       QImage image = kDotImage;
                       image.invertPixels();
                       return Encoded(image, "bmp");
                   },
                   false, [] { return Stored(Dot()); }, "", 0},
        PictureRow{"DitheringBlackAndWhiteChangesNothing", {"--dither"}, "dot.png", kPng, false,
                   [] { return Stored(Dot()); }, "", 0},
        PictureRow{"ThresholdZeroEveryDotOff", {"--threshold", "0"}, "dot.png", kPng, false,
                   [] { return Stored(Page{}); }, "", 0},
        PictureRow{"Threshold255EveryDotOn", {"--threshold=255"}, "dot.png", kPng, false,
                   [] { return Stored(Full()); }, "", 0},
        PictureRow{"EmptyFileNamedPng", {}, "empty.png", kNothing, false, kNothing,
                   "lumidot-cli: empty.png: the file is empty\n", 1},
        PictureRow{"TextNamedPng", {}, "notes.png", [] { return QByteArray("my notes\n"); }, false,
                   kNothing,
                   "lumidot-cli: notes.png: it is not a picture in a format Lumidot can read (PNG, "
                   "BMP, GIF, JPEG, TIFF, PBM, PGM, PPM, XPM, ICO and others)\n",
                   1},
        PictureRow{"TruncatedPng", {}, "cut.png", [] { return kPng().left(60); }, false, kNothing,
                   "lumidot-cli: cut.png: the picture is damaged or too large to decode (Unable to "
                   "read image data)\n",
                   1},
        PictureRow{"HugePicture", {}, "huge.png", [] { return PngAnnouncing(30000, 30000); }, true,
                   kNothing,
                   "lumidot-cli: standard input: the picture is 30000 x 30000 pixels; pictures of "
                   "up to 100 megapixels can be imported\n",
                   1},
        PictureRow{"OptionsForADotPicture", {"--invert"}, "dot.txt",
                   [] { return QByteArray("................\n").repeated(16); }, false, kNothing,
                   "lumidot-cli: dot.txt: --threshold, --dither and --invert are for image files, "
                   "not for a picture of # and .\n",
                   1},
        PictureRow{"ThresholdOutOfRange", {"--threshold", "256"}, "dot.png", kPng, false, kNothing,
                   "lumidot-cli: --threshold takes a number from 0 to 255, not \"256\" (see "
                   "lumidot-cli --help)\n",
                   2},
        PictureRow{"ThresholdAndDither", {"--threshold", "9", "--dither"}, "dot.png", kPng, false,
                   kNothing,
                   "lumidot-cli: --threshold and --dither exclude each other (see lumidot-cli "
                   "--help)\n",
                   2}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(CliPictureUsageTest, PictureOptionsGoWithStoreOnly) {
    QTemporaryDir folder;
    const CliRun run = RunCli(folder.path(), {"--dither", "text", "Hi"});
    EXPECT_EQ(run.err, QStringLiteral("lumidot-cli: --threshold, --dither and --invert go with "
                                      "store (see lumidot-cli --help)\n"));
    EXPECT_EQ(run.status, 2);
}

}  // namespace
}  // namespace lumidot::testing
