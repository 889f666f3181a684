// "Copy To Page" as the user meets it: opened by the window's button, answered with the
// mouse and keys, remembered from one use to the next.
#include <QLabel>
#include <functional>
#include <vector>

#include "editor/editor_fixture.h"
#include "editor/frm_page_copy.h"
#include "editor/up_down.h"

namespace lumidot::testing {
namespace {

UpDown* Spinner(QDialog& dialog) {
    return dialog.findChild<UpDown*>("udPageNumDest");
}
QPushButton* OkButton(QDialog& dialog) {
    return dialog.findChild<QPushButton*>("cmdOK");
}

void StepTo(QDialog& dialog, int page) {
    UpDown* spinner = Spinner(dialog);
    while (spinner->value() != page) {
        const int y = page > spinner->value() ? 2 : spinner->height() - 2;
        QTest::mouseClick(spinner, Qt::LeftButton, {}, QPoint(spinner->width() / 2, y));
    }
}

void Key(QDialog& dialog, Qt::Key key) {
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus && focus->window() == &dialog ? focus : &dialog, key);
}

// One earlier use of the dialog: from a page, the spinner set to a page, then OK or Esc.
struct Use {
    int from;
    int spinnerTo;
    bool confirm;
};

class CopyDialogTest : public EditorTest {
protected:
    void copyFrom(int page, std::function<void(QDialog&)> whileOpen) {
        window->SetPageNum(page);
        fake.prompts.onModal = std::move(whileOpen);
        QTest::mouseClick(ui().cmdFDCopy, Qt::LeftButton);
    }
    void use(const Use& use) {
        copyFrom(use.from, [use](QDialog& dialog) {
            StepTo(dialog, use.spinnerTo);
            Key(dialog, use.confirm ? Qt::Key_Return : Qt::Key_Escape);
        });
    }
    int dest() const { return window->pageCopyDialog()->GetPageNumDest(); }
};

struct PresetRow {
    const char* name;
    std::vector<Use> before;
    int from;
    int preset;
};

class PresetTest : public CopyDialogTest, public ::testing::WithParamInterface<PresetRow> {};

TEST_P(PresetTest, OpensOnAPageThatCanBeConfirmed) {
    for (const Use& earlier : GetParam().before) use(earlier);
    int shown = 0;
    bool okEnabled = false, okFocused = false;
    copyFrom(GetParam().from, [&](QDialog& dialog) {
        shown = Spinner(dialog)->value();
        okEnabled = OkButton(dialog)->isEnabled();
        okFocused = dialog.focusWidget() == OkButton(dialog);
        Key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(shown, GetParam().preset);
    EXPECT_TRUE(okEnabled);
    EXPECT_TRUE(okFocused);
    EXPECT_EQ(dest(), GetParam().preset) << "Enter confirms the page shown";
}

INSTANTIATE_TEST_SUITE_P(
    Uses, PresetTest,
    ::testing::Values(PresetRow{"FirstFromPage1", {}, 1, 2},
                      PresetRow{"FirstFromPage10", {}, 10, 9},
                      PresetRow{"KeepsTheLastChoice", {{3, 7, true}}, 3, 7},
                      PresetRow{"LastChoiceIsTheNewSource", {{3, 4, true}}, 4, 5},
                      PresetRow{"CancelledOnTheSourceThenAnotherPage", {{3, 3, false}}, 6, 3}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(CopyDialogTest, ShowsTheSourceInItsSentence) {
    QString title, sentence;
    copyFrom(4, [&](QDialog& dialog) {
        title = dialog.windowTitle();
        sentence = dialog.findChild<QLabel*>("lblPageNumSource")->text() +
                   dialog.findChild<QLabel*>("lblPageNumDest")->text();
    });
    EXPECT_EQ(title, QStringLiteral("Copy To Page"));
    EXPECT_EQ(sentence, QStringLiteral("Copy page 4 to page 5"));
}

TEST_F(CopyDialogTest, SourcePageCannotBeConfirmed) {
    showPage(pixelsOn({12}));
    bool okEnabled = true, stillOpen = false;
    copyFrom(1, [&](QDialog& dialog) {
        StepTo(dialog, 1);
        okEnabled = OkButton(dialog)->isEnabled();
        Key(dialog, Qt::Key_Return);
        stillOpen = dialog.isVisible();
        Key(dialog, Qt::Key_Escape);
    });
    EXPECT_FALSE(okEnabled);
    EXPECT_TRUE(stillOpen) << "Enter does nothing while OK is disabled";
    EXPECT_EQ(dest(), frmPageCopy::kCancelled);
    EXPECT_TRUE(fake.prompts.shown.empty()) << "a cancelled copy says nothing";
    EXPECT_EQ(window->FDPageMem[1], Page{});
}

TEST_F(CopyDialogTest, CloseButtonCancelsAndTheNextDialogStartsAfresh) {
    copyFrom(3, [](QDialog& dialog) {
        StepTo(dialog, 5);
        dialog.close();
    });
    EXPECT_EQ(dest(), frmPageCopy::kCancelled);
    EXPECT_TRUE(fake.prompts.shown.empty());

    int shown = 0;
    bool okEnabled = false;
    copyFrom(3, [&](QDialog& dialog) {
        shown = Spinner(dialog)->value();
        okEnabled = OkButton(dialog)->isEnabled();
        Key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(shown, 1) << "a new dialog, not the one that remembered 5";
    EXPECT_TRUE(okEnabled);
    EXPECT_EQ(dest(), 1);
}

TEST(CopyDialogCaptionTest, EveryMarkerInTheTemplateIsReplaced) {
    frmPageCopy::Memory memory;
    frmPageCopy dialog(nullptr, memory);
    auto* source = dialog.findChild<QLabel*>("lblPageNumSource");
    source->setProperty("tag", QStringLiteral("%a, %A and %a%a"));
    dialog.SetPageNumSource(7);
    EXPECT_EQ(source->text(), QStringLiteral("7, %A and 77"));
}

}  // namespace
}  // namespace lumidot::testing
