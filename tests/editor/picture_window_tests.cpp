// Pictures in and out through the real window: File > Import picture... with the preview
// dialog, files that are not pictures, animations filling pages, drops on the grid, the
// clipboard's images and File > Export page as image....
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QUndoStack>
#include <QUrl>
#include <functional>

#include "editor/edit_history.h"
#include "editor/editor_fixture.h"
#include "editor/page_preview.h"
#include "pictures/page_image.h"
#include "pictures/sample_picture.h"

namespace lumidot::testing {
namespace {

class PictureWindowTest : public EditorTest {
protected:
    QString write(const QString& name, const QByteArray& bytes) {
        const QString path = folder.filePath(name);
        EXPECT_TRUE(WriteFile(path, bytes));
        return path;
    }
    QString samplePng() {
        return write(QStringLiteral("sample.png"), Encoded(SampleImage(), "png"));
    }
    void import(const QString& path) {
        fake.files.paths.push_back(path);
        window->findChild<QAction*>("actionImportPicture")->trigger();
    }
    Pages pages() const { return window->model().pages().all(); }
    int steps() { return window->history().stack().count(); }
};

// The dialog opens on the open page; OK imports what the preview shows, as one step.
TEST_F(PictureWindowTest, PreviewFollowsTheControlsAndOkTakesWhatItShows) {
    window->SetPageNum(3);
    press("optSEGDisplay");
    struct Move {
        const char* what;
        std::function<void(QDialog&)> act;
        std::function<bool(int, int)> on;  // the preview afterwards, by row and column
    };
    const std::vector<Move> moves = {
        {"as opened", [](QDialog&) {}, SampleAt},
        {"invert", [](QDialog& d) { d.findChild<QCheckBox*>("invertBox")->click(); },
         [](int r, int c) { return !SampleAt(r, c); }},
        {"threshold 0: every pixel off",
         [](QDialog& d) { d.findChild<QSlider*>("thresholdSlider")->setValue(0); },
         [](int, int) { return false; }},
        {"threshold 255: every pixel on",
         [](QDialog& d) { d.findChild<QSlider*>("thresholdSlider")->setValue(255); },
         [](int, int) { return true; }},
        {"back to the middle, not inverted",
         [](QDialog& d) {
             d.findChild<QSlider*>("thresholdSlider")->setValue(128);
             d.findChild<QCheckBox*>("invertBox")->click();
         },
         SampleAt},
        {"into page 7", [](QDialog& d) { d.findChild<QSpinBox*>("pageSpin")->setValue(7); },
         SampleAt},
    };
    fake.prompts.onModal = [&](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Import Picture"));
        EXPECT_EQ(dialog.findChild<QSpinBox*>("pageSpin")->value(), 3) << "the open page";
        auto* preview = dialog.findChild<PagePreview*>("resultView");
        for (const Move& move : moves) {
            SCOPED_TRACE(move.what);
            move.act(dialog);
            for (int i = 0; i < kPagePixels; ++i) {
                ASSERT_EQ(preview->page()[i], move.on(i / kPageSide, i % kPageSide)) << i;
            }
        }
        EXPECT_EQ(dialog.findChild<QLabel*>("resultCaption")->text(), QStringLiteral("Page 7"));
        QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    };
    import(samplePng());
    EXPECT_EQ(fake.files.asked.at(0).title, QStringLiteral("Import Picture"));
    EXPECT_EQ(window->FDPageNum(), 7) << "the page that received it opens";
    expectStored(SamplePage());
    EXPECT_EQ(pages()[2], Page{}) << "the page open before is untouched";
    EXPECT_EQ(steps(), 1);
}

TEST_F(PictureWindowTest, CancelChangesNothing) {
    showPage(pixelsOn({9}));
    const quint64 pane = window->model().paneVersion();
    fake.prompts.onModal = [](QDialog& dialog) {
        dialog.findChild<QCheckBox*>("invertBox")->click();
        dialog.reject();
    };
    import(samplePng());
    EXPECT_EQ(fake.prompts.modalRuns, 1);
    EXPECT_EQ(window->FDPixels(), pixelsOn({9}));
    EXPECT_EQ(window->model().paneVersion(), pane);
    EXPECT_EQ(steps(), 0);
}

TEST_F(PictureWindowTest, TwelveFrameGifFillsPagesOneToTenAndSaysTwoAreLeftOut) {
    std::vector<QImage> frames;
    // Frame k has one black column, at column k: each page shows which frame it got.
    for (int k = 0; k < 12; ++k) {
        frames.push_back(BlackOnWhite(16, 16, [k](int x, int) { return x == k; }));
    }
    QString note;
    fake.prompts.onModal = [&](QDialog& dialog) {
        auto* all = dialog.findChild<QCheckBox*>("allFramesBox");
        EXPECT_TRUE(all->isVisible() && all->isChecked());
        EXPECT_EQ(all->text().remove(QLatin1Char('&')),
                  QStringLiteral("One frame per page from page 1"));
        note = dialog.findChild<QLabel*>("framesNote")->text();
        dialog.accept();
    };
    const Pages before = pages();
    import(write(QStringLiteral("count.gif"), AnimatedGif(frames)));
    EXPECT_EQ(note, QStringLiteral("Frames 1 to 10 go to pages 1 to 10; 2 frames are left out."));
    for (int number = 1; number <= 10; ++number) {
        Page expected{};
        for (int y = 0; y < kPageSide; ++y) expected[y * kPageSide + number - 1] = true;
        EXPECT_EQ(pages()[std::size_t(number - 1)], expected) << "page " << number;
    }
    EXPECT_EQ(window->FDPageNum(), 1);
    EXPECT_EQ(steps(), 1) << "ten pages, one step";
    window->history().undo();
    EXPECT_EQ(pages(), before);
}

// --- files that are not pictures ---------------------------------------------------------------

struct RefusedRow {
    const char* name;
    const char* file;
    QByteArray (*bytes)();  // nullptr: no file is written
    const char* reason;     // in the box, after the file's path
};

class RefusedFileTest : public PictureWindowTest,
                        public ::testing::WithParamInterface<RefusedRow> {};

TEST_P(RefusedFileTest, GivesABoxNamingTheFileAndTheReasonAndChangesNothing) {
    const RefusedRow& row = GetParam();
    window->SetPageNum(2);
    showPage(pixelsOn({3, 4, 5}));
    const Pages before = pages();
    const quint64 pane = window->model().paneVersion();
    QString path = folder.filePath(QLatin1String(row.file));
    if (row.bytes) path = write(QLatin1String(row.file), row.bytes());
    if (QLatin1String(row.file) == QLatin1String("folder.png")) QDir(folder.path()).mkdir(row.file);
    import(path);
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    const ShownMessage& box = fake.prompts.shown[0];
    EXPECT_EQ(box.title, QStringLiteral("Import Picture"));
    EXPECT_EQ(box.icon, Prompts::Icon::Exclamation);
    EXPECT_TRUE(box.prompt.contains(QDir::toNativeSeparators(path))) << box.prompt.toStdString();
    EXPECT_TRUE(box.prompt.contains(QString::fromUtf8(row.reason))) << box.prompt.toStdString();
    EXPECT_EQ(fake.prompts.modalRuns, 0) << "no preview of what is not a picture";
    EXPECT_EQ(pages(), before);
    EXPECT_EQ(window->FDPageNum(), 2);
    EXPECT_EQ(window->model().paneVersion(), pane);
    EXPECT_EQ(steps(), 0);
}

QByteArray TruncatedPng() {
    const QByteArray png =
        Encoded(BlackOnWhite(64, 64, [](int x, int y) { return (x * y + x / 3) % 7 < 3; }), "png");
    return png.left(png.size() / 2);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Files, RefusedFileTest,
    ::testing::Values(
        RefusedRow{"Missing", "missing.png", nullptr, "The file does not exist."},
        RefusedRow{"Folder", "folder.png", nullptr, "It is a folder, not a file."},
        RefusedRow{"EmptyFile", "empty.png", [] { return QByteArray(); }, "The file is empty."},
        RefusedRow{"TextNamedPng", "notes.png", [] { return QByteArray("shopping list\n"); },
                   "It is not a picture in a format Lumidot can read (PNG, BMP, GIF, JPEG, TIFF, "
                   "PBM, PGM, PPM, XPM, ICO and others)."},
        RefusedRow{"TruncatedPng", "cut.png", TruncatedPng,
                   "The picture is damaged or too large to decode (Unable to read image data)."},
        RefusedRow{"HugeHeader", "huge.png", [] { return PngAnnouncing(30000, 30000); },
                   "The picture is 30000 x 30000 pixels; pictures of up to 100 megapixels can be "
                   "imported."}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

// --- drops and the clipboard -------------------------------------------------------------------

TEST_F(PictureWindowTest, PictureFileDroppedOnTheGridIsImported) {
    fake.prompts.onModal = [](QDialog& dialog) { dialog.accept(); };
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(samplePng())});
    const QPoint at = cellCentre(20).toPoint();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(grid(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(grid(), &drop);
    EXPECT_TRUE(drop.isAccepted());
    QApplication::processEvents();  // the dialog opens once the drop has been answered
    expectStored(SamplePage());
}

TEST_F(PictureWindowTest, CopiedPageImagePastesBackAsTheSamePageAsOneStep) {
    showPage(SamplePage());
    window->findChild<QAction*>("actionCopyPageImage")->trigger();
    const QImage copied = QGuiApplication::clipboard()->image();
    ASSERT_EQ(copied.size(), QSize(16, 16));
    EXPECT_EQ(copied.pixel(0, 0), qRgb(0, 0, 0)) << "on is black";
    EXPECT_EQ(copied.pixel(1, 0), qRgb(255, 255, 255));

    window->SetPageNum(6);
    fake.prompts.onModal = [](QDialog& dialog) { dialog.accept(); };
    window->findChild<QAction*>("actionPasteImage")->trigger();
    EXPECT_EQ(window->FDPageNum(), 6);
    expectStored(SamplePage());
    EXPECT_EQ(window->history().undoAction()->text().remove(QLatin1Char('&')),
              QStringLiteral("Undo Paste image"));
}

TEST_F(PictureWindowTest, PasteWithoutAPictureSaysSoAndChangesNothing) {
    QGuiApplication::clipboard()->setText(QStringLiteral("just words"));
    const Pages before = pages();
    window->findChild<QAction*>("actionPasteImage")->trigger();
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_EQ(fake.prompts.shown[0].title, QStringLiteral("Paste Image"));
    EXPECT_EQ(pages(), before);
    EXPECT_EQ(fake.prompts.modalRuns, 0);
}

// --- export ------------------------------------------------------------------------------------

TEST_F(PictureWindowTest, ExportWritesThePageScaledInTheChosenColours) {
    showPage(SamplePage());
    const QString path = folder.filePath(QStringLiteral("page"));
    fake.files.paths.push_back(path);
    fake.prompts.onModal = [](QDialog& dialog) {
        dialog.findChild<QSpinBox*>("scaleSpin")->setValue(3);
        dialog.findChild<QRadioButton*>("lcdColours")->click();
        EXPECT_EQ(dialog.findChild<QLabel*>("sizeLabel")->text(),
                  QStringLiteral("48 x 48 pixels, PNG"));
        dialog.accept();
    };
    window->findChild<QAction*>("actionExportPage")->trigger();
    const QImage written(path + QStringLiteral(".png"));  // the suffix is added
    ASSERT_EQ(written.size(), QSize(48, 48));
    for (int i = 0; i < kPagePixels; ++i) {
        const int x = i % kPageSide, y = i / kPageSide;
        const QColor colour = SampleAt(y, x) ? kLcdOnColour : kLcdOffColour;
        ASSERT_EQ(written.pixel(x * 3 + 2, y * 3 + 1), colour.rgb()) << x << ", " << y;
    }
    EXPECT_TRUE(fake.prompts.shown.empty());
}

}  // namespace
}  // namespace lumidot::testing
