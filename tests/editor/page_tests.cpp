// Pages and whole-page buttons through the real window: switching, the output modes that
// follow, clear, copy, display none.
#include <QLabel>

#include "editor/editor_fixture.h"
#include "editor/up_down.h"

namespace lumidot::testing {
namespace {

class PageTest : public EditorTest {
protected:
    // A click on the spinner's upper or lower arrow.
    void stepPage(int direction) {
        UpDown* spinner = ui().udPageNum;
        click(spinner, QPointF(spinner->width() / 2.0, direction > 0 ? 2 : spinner->height() - 2),
              Qt::LeftButton);
    }
    void openPage(int page) {
        while (window->FDPageNum != page) stepPage(page > window->FDPageNum ? 1 : -1);
    }
};

TEST_F(PageTest, SwitchingPagesKeepsEachPagesEdits) {
    openPage(2);
    click(grid(), cellCentre(5), Qt::LeftButton);
    openPage(3);
    EXPECT_EQ(ui().lblPageNum->text(), QStringLiteral("3"));
    expectGridShows(Page{});
    click(grid(), cellCentre(9), Qt::LeftButton);
    openPage(2);
    EXPECT_EQ(window->FDPixels, pixelsOn({5}));
    expectGridShows(pixelsOn({5}));
    openPage(3);
    EXPECT_EQ(window->FDPixels, pixelsOn({9}));
}

TEST_F(PageTest, SetPageNumWithTheOpenPageReloadsNothing) {
    window->SetPageNum(4);
    const quint64 before = regenerations();
    window->SetPageNum(4);
    showPage(pixelsOn({7, 8}));
    window->SetPageNum(4);
    EXPECT_EQ(window->FDPixels, pixelsOn({7, 8}));
    EXPECT_EQ(regenerations(), before);
    window->SetPageNum(5);
    window->SetPageNum(4);
    EXPECT_EQ(window->FDPixels, pixelsOn({7, 8})) << "kept when another page was opened";
}

struct ModeRow {
    const char* before;
    const char* after;
};

class PageChangeModeTest : public PageTest, public ::testing::WithParamInterface<ModeRow> {};

TEST_P(PageChangeModeTest, ShowsTheMessageOfTheNewPage) {
    showPage(pixelsOn({1}));
    window->SetPageNum(2);
    showPage(pixelsOn({2}));
    window->selectMode(window->findChild<QPushButton*>(GetParam().before));
    stepPage(-1);
    EXPECT_TRUE(window->findChild<QPushButton*>(GetParam().after)->isChecked());
    const bool store = QString::fromLatin1(GetParam().after) == QStringLiteral("optSEGStore");
    EXPECT_EQ(pane(), store ? storeMessage(pixelsOn({1}), 1) : displayMessage(1));
}

INSTANTIATE_TEST_SUITE_P(Modes, PageChangeModeTest,
                         ::testing::Values(ModeRow{"optSEGStore", "optSEGStore"},
                                           ModeRow{"optSEGDisplay", "optSEGDisplay"},
                                           ModeRow{"optSEText", "optSEGStore"}));

// An edit by a button, or by a left click on a cell when there is no button.
struct EditRow {
    const char* name;
    const char* button;
};

class EditModeTest : public PageTest,
                     public ::testing::WithParamInterface<std::tuple<EditRow, const char*>> {};

TEST_P(EditModeTest, AnyEditShowsTheStoreMessage) {
    const auto& [edit, mode] = GetParam();
    window->SetPageNum(3);
    showPage(pixelsOn({0, 200}));
    window->selectMode(window->findChild<QPushButton*>(mode));
    if (edit.button) {
        QTest::mouseClick(window->findChild<QPushButton*>(edit.button), Qt::LeftButton);
    } else {
        click(grid(), cellCentre(9), Qt::LeftButton);
    }
    EXPECT_TRUE(ui().optSEGStore->isChecked());
    EXPECT_EQ(pane(), storeMessage(window->FDPixels, 3));
    expectGridShows(window->FDPixels);
}

INSTANTIATE_TEST_SUITE_P(Edits, EditModeTest,
                         ::testing::Combine(::testing::Values(EditRow{"Clear", "cmdFDClear"},
                                                              EditRow{"Invert", "cmdFDInvert"},
                                                              EditRow{"ShiftUp", "cmdFDShiftUp"},
                                                              EditRow{"Click", nullptr}),
                                            ::testing::Values("optSEGDisplay", "optSEText")),
                         [](const auto& info) {
                             return std::string(std::get<0>(info.param).name) + "_" +
                                    std::get<1>(info.param);
                         });

struct ShiftButtonRow {
    const char* button;
    int firstLandsAt;  // where the pixel at row 0, column 0 goes
    int lastLandsAt;   // and the one at row 15, column 15
};

class ShiftButtonTest : public PageTest, public ::testing::WithParamInterface<ShiftButtonRow> {};

TEST_P(ShiftButtonTest, MovesTheCornerPixelsAroundTheEdges) {
    showPage(pixelsOn({0, 255}));
    QTest::mouseClick(window->findChild<QPushButton*>(GetParam().button), Qt::LeftButton);
    const Page expected = pixelsOn({GetParam().firstLandsAt, GetParam().lastLandsAt});
    EXPECT_EQ(window->FDPixels, expected);
    expectGridShows(expected);
}

INSTANTIATE_TEST_SUITE_P(Buttons, ShiftButtonTest,
                         ::testing::Values(ShiftButtonRow{"cmdFDShiftRight", 1, 240},
                                           ShiftButtonRow{"cmdFDShiftLeft", 15, 254},
                                           ShiftButtonRow{"cmdFDShiftUp", 240, 239},
                                           ShiftButtonRow{"cmdFDShiftDown", 16, 15}));

TEST_F(PageTest, ClearAsksAndAnswerNoChangesNothing) {
    window->SetPageNum(4);
    showPage(pixelsOn({3, 4}));
    window->selectMode(ui().optSEGDisplay);
    const QString paneBefore = pane();
    const quint64 before = regenerations();
    fake.prompts.answers = {Prompts::Answer::No};
    QTest::mouseClick(ui().cmdFDClear, Qt::LeftButton);

    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    const ShownMessage& asked = fake.prompts.shown[0];
    EXPECT_EQ(asked.title, QStringLiteral("Clear page 4?"));
    EXPECT_EQ(asked.prompt, QStringLiteral("Really erase this page?"));
    EXPECT_EQ(asked.icon, Prompts::Icon::Question);
    EXPECT_EQ(asked.buttons, Prompts::Buttons::YesNo);
    EXPECT_EQ(asked.defaultAnswer, Prompts::Answer::Yes);
    EXPECT_EQ(window->FDPixels, pixelsOn({3, 4}));
    EXPECT_TRUE(ui().optSEGDisplay->isChecked());
    EXPECT_EQ(pane(), paneBefore);
    EXPECT_EQ(regenerations(), before);
}

TEST_F(PageTest, CopiedPageIsTheSourceAsItWasAtTheCopy) {
    showPage(pixelsOn({0, 17}));
    const QString paneBefore = pane();
    fake.prompts.onModal = [](QDialog& dialog) {
        QTest::mouseClick(dialog.findChild<QPushButton*>("cmdOK"), Qt::LeftButton);
    };
    QTest::mouseClick(ui().cmdFDCopy, Qt::LeftButton);

    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_EQ(fake.prompts.shown[0].title, QStringLiteral("Copied"));
    EXPECT_EQ(fake.prompts.shown[0].prompt,
              QStringLiteral("Copied to page 2\r\nYou are still editing page 1."));
    EXPECT_EQ(fake.prompts.shown[0].icon, Prompts::Icon::Information);
    EXPECT_EQ(window->FDPageNum, 1);
    EXPECT_EQ(pane(), paneBefore);

    click(grid(), cellCentre(33), Qt::LeftButton);
    openPage(2);
    EXPECT_EQ(window->FDPixels, pixelsOn({0, 17}));
    openPage(1);
    EXPECT_EQ(window->FDPixels, pixelsOn({0, 17, 33}));
}

TEST_F(PageTest, DisplayNoneLastsUntilTheNextEdit) {
    window->SetPageNum(6);
    QTest::mouseClick(ui().cmdFDPageDisplay, Qt::LeftButton);
    EXPECT_TRUE(ui().optSEGDisplay->isChecked());
    EXPECT_EQ(pane(), displayMessage(0));
    click(grid(), cellCentre(40), Qt::LeftButton);
    EXPECT_TRUE(ui().optSEGStore->isChecked());
    EXPECT_EQ(pane(), storeMessage(pixelsOn({40}), 6));
}

}  // namespace
}  // namespace lumidot::testing
