// Reading picture files: every common format, animations and multi-page files. Files that are
// damaged, hostile or not pictures at all are refused through the window's import.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "pictures/picture_conversion.h"
#include "pictures/picture_file.h"
#include "pictures/sample_picture.h"
#include "support/qt_printers.h"

namespace lumidot::testing {
namespace {

// The picture, big enough for lossy formats to keep its edges, in one format.
QByteArray SampleIn(const char* format) {
    const QImage image = SampleImage(4);
    if (QByteArray(format) == "gif") return AnimatedGif({image});
    if (QByteArray(format) == "tiff") return MultiPageTiff({image});
    return Encoded(image, format);
}

class PictureFileTest : public ::testing::Test {
protected:
    QString write(const QString& name, const QByteArray& bytes) {
        const QString path = folder.filePath(name);
        EXPECT_TRUE(WriteFile(path, bytes));
        return path;
    }
    QTemporaryDir folder;
};

class FormatTest : public PictureFileTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(FormatTest, ReadsThePictureFromTheFileAndFromMemory) {
    const QByteArray bytes = SampleIn(GetParam());
    ASSERT_FALSE(bytes.isEmpty()) << "Qt cannot write " << GetParam();
    // Named for another format: the reader goes by the content.
    const QString path = write(QStringLiteral("sample.dat"), bytes);
    for (const PictureFrames& read : {ReadPictureFile(path, 10), ReadPictureData(bytes, 10)}) {
        ASSERT_TRUE(read.ok()) << read.problem.toStdString();
        ASSERT_EQ(read.frames.size(), 1u);
        EXPECT_EQ(read.total, 1);
        EXPECT_EQ(ConvertPicture(read.frames[0], PictureOptions{}), SamplePage());
    }
    EXPECT_TRUE(LooksLikePicture(bytes));
}

INSTANTIATE_TEST_SUITE_P(Formats, FormatTest,
                         ::testing::Values("png", "bmp", "gif", "jpeg", "pbm", "pgm", "ppm", "xpm",
                                           "ico", "tiff", "webp"),
                         [](const auto& info) { return std::string(info.param); });

// Frame k of an animation has the pixel in row k, column k on.
std::vector<QImage> Frames(int count) {
    std::vector<QImage> frames;
    for (int k = 0; k < count; ++k) {
        frames.push_back(BlackOnWhite(16, 16, [k](int x, int y) { return x == k && y == k; }));
    }
    return frames;
}

struct AnimationRow {
    const char* name;
    QByteArray (*file)(const std::vector<QImage>&);
    int frames;
    int asked;
};

class AnimationTest : public PictureFileTest, public ::testing::WithParamInterface<AnimationRow> {};

TEST_P(AnimationTest, ReadsTheFirstFramesAndCountsThemAll) {
    const auto& [name, file, count, asked] = GetParam();
    const PictureFrames read =
        ReadPictureFile(write(QStringLiteral("frames"), file(Frames(count))), asked);
    ASSERT_TRUE(read.ok()) << read.problem.toStdString();
    EXPECT_EQ(read.total, count);
    ASSERT_EQ(int(read.frames.size()), std::min(count, asked));
    for (int k = 0; k < int(read.frames.size()); ++k) {
        Page expected{};
        expected[k * 17] = true;
        EXPECT_EQ(ConvertPicture(read.frames[k], PictureOptions{}), expected) << "frame " << k;
    }
}

INSTANTIATE_TEST_SUITE_P(Files, AnimationTest,
                         ::testing::Values(AnimationRow{"GifOfTwelve", AnimatedGif, 12, 10},
                                           AnimationRow{"GifOfThree", AnimatedGif, 3, 10},
                                           AnimationRow{"TiffOfFive", MultiPageTiff, 5, 10},
                                           AnimationRow{"TiffOfTwelve", MultiPageTiff, 12, 10}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(PictureSuffixTest, KnowsTheFormatsQtReads) {
    for (const char* name : {"a.png", "b.GIF", "c.jpeg", "d.tif", "/x/e.pbm"}) {
        EXPECT_TRUE(HasPictureSuffix(QString::fromLatin1(name))) << name;
    }
    for (const char* name : {"heart.txt", "picture", "song.mid", ".png.txt"}) {
        EXPECT_FALSE(HasPictureSuffix(QString::fromLatin1(name))) << name;
    }
    EXPECT_TRUE(PictureFileFilter().startsWith(QStringLiteral("Pictures (*.")));
    EXPECT_TRUE(PictureFileFilter().contains(QStringLiteral("*.png")));
}

}  // namespace
}  // namespace lumidot::testing
