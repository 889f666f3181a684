// Pictures into pages: fits, threshold, dithering, inversion and transparency, on pictures
// drawn here pixel by pixel.
#include <gtest/gtest.h>

#include <QPainter>
#include <functional>

#include "pictures/page_image.h"
#include "pictures/picture_conversion.h"
#include "pictures/sample_picture.h"

namespace lumidot::testing {
namespace {

// A page from a rule on row and column.
Page PageWhere(const std::function<bool(int row, int column)>& on) {
    Page page{};
    for (int i = 0; i < kPagePixels; ++i) page[i] = on(i / kPageSide, i % kPageSide);
    return page;
}

QImage Grey(int width, int height, const std::function<int(int x, int y)>& level) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int v = level(x, y);
            image.setPixel(x, y, qRgb(v, v, v));
        }
    }
    return image;
}

// Lightness 0 to 255 over the page, pixel i of the page having lightness i.
QImage Ramp() {
    return Grey(16, 16, [](int x, int y) { return y * 16 + x; });
}

PictureOptions With(PictureFit fit, int threshold = kDefaultThreshold, bool invert = false) {
    return {fit, PictureTone::Threshold, threshold, invert};
}

struct ConversionRow {
    const char* name;
    std::function<QImage()> source;
    PictureOptions options;
    std::function<bool(int row, int column)> expected;
};

void PrintTo(const ConversionRow& row, std::ostream* out) {
    *out << row.name;
}

class ConversionTest : public ::testing::TestWithParam<ConversionRow> {};

TEST_P(ConversionTest, GivesThePage) {
    const ConversionRow& row = GetParam();
    const Page page = ConvertPicture(row.source(), row.options);
    const Page expected = PageWhere(row.expected);
    for (int i = 0; i < kPagePixels; ++i) {
        EXPECT_EQ(page[i], expected[i]) << "row " << i / 16 << ", column " << i % 16;
    }
}

constexpr auto kMargins = PictureFit::Margins;
constexpr auto kCrop = PictureFit::Crop;
constexpr auto kStretch = PictureFit::Stretch;

QImage Black(int width, int height) {
    return BlackOnWhite(width, height, [](int, int) { return true; });
}
// A 16 x 16 picture of one colour at one opacity, with opaque rectangles painted on it.
QImage Transparent(QRgb ground, QRect painted = {}, Qt::GlobalColor paint = Qt::black) {
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(ground);
    QPainter(&image).fillRect(painted, paint);
    return image;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Pictures, ConversionTest,
    ::testing::Values(
        ConversionRow{"SixteenSquareBlackOnWhiteImportsAsDrawn", [] { return SampleImage(); },
                      With(kMargins), SampleAt},
        ConversionRow{"TheSameThroughAPngFile",
                      [] { return QImage::fromData(Encoded(SampleImage(), "png")); },
                      With(kStretch), SampleAt},
        ConversionRow{"CheckerboardOfTwoByTwoBlocksBecomesTheSixteenSquareOne",
                      [] { return BlackOnWhite(32, 32, [](int x, int y) { return (x / 2 + y / 2) % 2 == 0; }); },
                      With(kMargins), [](int r, int c) { return (r + c) % 2 == 0; }},
        ConversionRow{"LargePictureIsAveragedDownToTheSameCheckerboard",
                      [] { return BlackOnWhite(2048, 2048, [](int x, int y) { return (x / 128 + y / 128) % 2 == 1; }); },
                      With(kMargins), [](int r, int c) { return (r + c) % 2 == 1; }},
        ConversionRow{"SmallIconIsEnlargedWithHardEdges",
                      [] { return BlackOnWhite(8, 8, [](int x, int y) { return (x + y) % 2 == 0; }); },
                      With(kMargins), [](int r, int c) { return (r / 2 + c / 2) % 2 == 0; }},
        ConversionRow{"TallPictureFitsBetweenMarginsLeftAndRight", [] { return Black(20, 40); },
                      With(kMargins), [](int, int c) { return c >= 4 && c < 12; }},
        ConversionRow{"OddMarginLeavesTheExtraPixelAtTheBottom", [] { return Black(48, 15); },
                      With(kMargins), [](int r, int) { return r >= 5 && r < 10; }},
        ConversionRow{"ThinLineStillCoversARow", [] { return Black(1000, 2); }, With(kMargins),
                      [](int r, int) { return r == 7; }},
        ConversionRow{"WidePictureCroppedKeepsItsMiddle",
                      [] { return BlackOnWhite(48, 16, [](int x, int y) { return x < 16 || x >= 32 || SampleAt(y, x - 16); }); },
                      With(kCrop), SampleAt},
        ConversionRow{"StretchSquashesAWidePictureIntoTheSquare",
                      [] { return BlackOnWhite(32, 16, [](int x, int) { return x < 16; }); },
                      With(kStretch), [](int, int c) { return c < 8; }},
        ConversionRow{"ThresholdZeroLeavesEveryPixelOffEvenBlack", Ramp, With(kStretch, 0),
                      [](int, int) { return false; }},
        ConversionRow{"ThresholdOneTurnsOnlyBlackOn", Ramp, With(kStretch, 1),
                      [](int r, int c) { return r == 0 && c == 0; }},
        ConversionRow{"ThresholdCutsBelowItsValue", Ramp, With(kStretch, 100),
                      [](int r, int c) { return r * 16 + c < 100; }},
        ConversionRow{"ThresholdTwoFiftyFourLeavesWhiteAndNearWhiteOff", Ramp, With(kStretch, 254),
                      [](int r, int c) { return r * 16 + c < 254; }},
        ConversionRow{"ThresholdTwoFiftyFiveTurnsEveryPixelOnEvenWhite", Ramp, With(kStretch, 255),
                      [](int, int) { return true; }},
        ConversionRow{"InvertedLightnessCutsAtTheSameThreshold", Ramp, With(kStretch, 100, true),
                      [](int r, int c) { return 255 - (r * 16 + c) < 100; }},
        ConversionRow{"InvertImportsWhiteOnBlackAsDrawn",
                      [] { return BlackOnWhite(16, 16, [](int x, int y) { return !SampleAt(y, x); }); },
                      With(kMargins, kDefaultThreshold, true), SampleAt},
        ConversionRow{"TransparentBlackIsOff", [] { return Transparent(qRgba(0, 0, 0, 0), {4, 4, 3, 2}); },
                      With(kMargins), [](int r, int c) { return r >= 4 && r < 6 && c >= 4 && c < 7; }},
        ConversionRow{"TransparentWhiteStaysOffInverted",
                      [] { return Transparent(qRgba(255, 255, 255, 0), {0, 0, 16, 1}, Qt::white); },
                      With(kMargins, kDefaultThreshold, true), [](int r, int) { return r == 0; }},
        ConversionRow{"HalfTransparentBlackIsMidGreyAndPassesTheDefaultThreshold",
                      [] {
                          QImage image = Transparent(qRgba(0, 0, 0, 0));
                          for (int x = 0; x < 16; ++x) image.setPixel(x, 3, qRgba(0, 0, 0, 130));
                          return image;
                      },
                      With(kMargins), [](int r, int) { return r == 3; }},
        ConversionRow{"ThresholdTwoFiftyFiveTurnsOnTheMarginsToo", [] { return Black(8, 16); },
                      With(kMargins, 255), [](int, int) { return true; }}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

int PixelsOn(const Page& page) {
    return int(std::count(page.begin(), page.end(), true));
}

TEST(DitherTest, TurnsGreyIntoAnEvenPatternAndKeepsBlackAndWhitePure) {
    const PictureOptions dither{PictureFit::Stretch, PictureTone::Dither, kDefaultThreshold, false};
    const struct {
        int level;
        int least, most;  // pixels on
    } rows[] = {{0, 256, 256}, {255, 0, 0}, {128, 112, 144}, {64, 176, 208}, {192, 48, 80}};
    for (const auto& row : rows) {
        const Page page = ConvertPicture(Grey(64, 64, [&](int, int) { return row.level; }), dither);
        EXPECT_GE(PixelsOn(page), row.least) << "grey " << row.level;
        EXPECT_LE(PixelsOn(page), row.most) << "grey " << row.level;
        // Every row of the page shares the grey: none is left all on or all off.
        if (row.level == 128) {
            for (int r = 0; r < 16; ++r) {
                const int inRow =
                    int(std::count(page.begin() + r * 16, page.begin() + r * 16 + 16, true));
                EXPECT_GT(inRow, 2) << "row " << r;
                EXPECT_LT(inRow, 14) << "row " << r;
            }
        }
    }
    // The threshold on the same grey is all or nothing.
    EXPECT_EQ(PixelsOn(ConvertPicture(Grey(64, 64, [](int, int) { return 128; }), With(kStretch))),
              0);
}

TEST(PreparedPictureTest, ConvertsWithEveryOptionAsAFreshConversionDoes) {
    const QImage photo = Grey(301, 199, [](int x, int y) { return (x * 5 + y * 3) % 256; });
    const PreparedPicture prepared(photo);
    for (PictureFit fit : {kMargins, kCrop, kStretch}) {
        for (int threshold : {0, 60, 128, 200, 255}) {
            for (bool invert : {false, true}) {
                const PictureOptions options = With(fit, threshold, invert);
                ASSERT_EQ(prepared.convert(options), ConvertPicture(photo, options))
                    << int(fit) << " " << threshold << " " << invert;
            }
        }
    }
    EXPECT_EQ(PreparedPicture().convert(With(kMargins, 255)), Page{}) << "no picture, no pixels";
}

// Export and import are each other's inverse, in both colour schemes and at every scale.
TEST(PageImageTest, ExportedPageImportsAsTheSamePage) {
    const Page page = SamplePage();
    for (PageColours colours : {PageColours::Lcd, PageColours::BlackWhite}) {
        for (int scale : {1, 2, 7, 10}) {
            const QImage image = PageImage(page, scale, colours);
            ASSERT_EQ(image.size(), QSize(16 * scale, 16 * scale));
            EXPECT_EQ(ConvertPicture(image, PictureOptions{}), page) << scale;
        }
    }
    const QImage lcd =
        PageImage(PageWhere([](int r, int c) { return r == 0 && c == 0; }), 3, PageColours::Lcd);
    EXPECT_EQ(lcd.pixel(2, 2), qRgb(50, 50, 50));
    EXPECT_EQ(lcd.pixel(3, 2), qRgb(255, 200, 80));
    const QImage plain =
        PageImage(PageWhere([](int r, int) { return r == 15; }), 1, PageColours::BlackWhite);
    EXPECT_EQ(plain.pixel(0, 15), qRgb(0, 0, 0));
    EXPECT_EQ(plain.pixel(0, 14), qRgb(255, 255, 255));
}

}  // namespace
}  // namespace lumidot::testing
