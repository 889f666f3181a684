// The results window through its real widgets, shown the way a decoding run shows it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLocale>
#include <QPixmap>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>

#include "decode/frm_decoded.h"
#include "mainwindow/read_only_text_box.h"
#include "support/fakes.h"
#include "support/qt_printers.h"
#include "ui_frm_decoded.h"

namespace lumidot::testing {
namespace {

const QString kThreeLines =
    QStringLiteral(" #1. Display text: abc\r\n #2. Graphic: Display page 5\r\n #3. (No SysEx)\r\n");

class FrmDecodedTest : public ::testing::Test {
protected:
    void SetUp() override {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        QPixmap picture(16, 16);
        picture.fill(Qt::darkYellow);
        owner.setWindowIcon(QIcon(picture));
        window = std::make_unique<frmDecoded>(&owner, fake.platform);
    }
    void TearDown() override {
        window.reset();
        QLocale::setDefault(QLocale::system());
    }

    // Shows the window modally as a decoding run does; act runs while it is up.
    void showModally(const std::function<void()>& act) {
        fake.prompts.onModal = [&](QDialog&) {
            QApplication::setActiveWindow(window.get());
            act();
        };
        fake.prompts.runModal(*window);
    }

    Ui::frmDecoded& ui() { return window->form(); }
    ReadOnlyTextBox& box() { return *ui().txtDecodedOut; }
    int caret() { return box().textCursor().position(); }
    bool hasSelection() { return box().textCursor().hasSelection(); }

    FakePlatform fake;
    QWidget owner;
    std::unique_ptr<frmDecoded> window;
};

// --- texts ------------------------------------------------------------------------------

struct CountRow {
    const char* name;
    qint32 count;
    QLocale locale;
    const char* number;
    bool singular;
};

class CountTextTest : public FrmDecodedTest, public ::testing::WithParamInterface<CountRow> {};

TEST_P(CountTextTest, LabelsNameTheCountInTheUsersLocale) {
    const CountRow& row = GetParam();
    QLocale::setDefault(row.locale);
    window->SetAllText(row.count, kThreeLines);

    const QString number = QString::fromUtf8(row.number);
    EXPECT_EQ(ui().lblNumDecoded->text(),
              row.singular ? number + " SysEx message has been decoded as follows:"
                           : number + " SysEx messages have been decoded as follows:");
    EXPECT_EQ(ui().lblCleanInfo->text(),
              (row.singular ? QString("Cleaned version of the message is")
                            : QString("Cleaned versions of the messages are")) +
                  " now being displayed at the bottom of the main window.\r\n"
                  "If you have ticked the checkbox to automatically copy text, that text is "
                  "now on the clipboard.");
}

const QLocale kUs(QLocale::English, QLocale::UnitedStates);
const QLocale kGerman(QLocale::German, QLocale::Germany);

INSTANTIATE_TEST_SUITE_P(
    Counts, CountTextTest,
    ::testing::Values(CountRow{"One", 1, kUs, "1", true}, CountRow{"Twelve", 12, kUs, "12", false},
                      CountRow{"Zero", 0, kUs, "0", false},
                      CountRow{"Thousands", 1234, kUs, "1,234", false},
                      CountRow{"Millions", 1234567, kUs, "1,234,567", false},
                      CountRow{"GermanThousands", 1234, kGerman, "1.234", false},
                      CountRow{"GermanOne", 1, kGerman, "1", true},
                      // The C locale leaves separators out unless told otherwise.
                      CountRow{"CLocaleThousands", 1234, QLocale::c(), "1,234", false}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(FrmDecodedTest, KeepsTheExplanationLinesExactlyWithTheEmptyLastLine) {
    window->SetAllText(3, kThreeLines);
    EXPECT_EQ(box().text(), kThreeLines);
    EXPECT_EQ(box().document()->blockCount(), 4);
    EXPECT_EQ(box().document()->lastBlock().text(), "");
    EXPECT_EQ(box().document()->firstBlock().text(), " #1. Display text: abc");
}

// --- the window ---------------------------------------------------------------------------

TEST_F(FrmDecodedTest, IsAFixedDialogWithTheOwnersIcon) {
    EXPECT_EQ(window->windowTitle(), "SysEx Decoding Results");
    EXPECT_EQ(window->size(), QSize(697, 273));
    EXPECT_EQ(window->minimumSize(), window->maximumSize());
    const Qt::WindowFlags flags = window->windowFlags();
    EXPECT_FALSE(flags & Qt::WindowMinimizeButtonHint);
    EXPECT_FALSE(flags & Qt::WindowMaximizeButtonHint);
    EXPECT_TRUE(flags & Qt::WindowCloseButtonHint);
    EXPECT_EQ(window->windowIcon().cacheKey(), owner.windowIcon().cacheKey());
}

TEST_F(FrmDecodedTest, LongLinesScrollInsteadOfWrappingInAFixedPitchFont) {
    window->SetAllText(1, " #1. " + QString(400, 'x') + "\r\n");
    showModally([&] {
        EXPECT_EQ(box().document()->firstBlock().layout()->lineCount(), 1);
        EXPECT_GT(box().horizontalScrollBar()->maximum(), 0);
        EXPECT_TRUE(box().verticalScrollBar()->isVisible());
        EXPECT_TRUE(QFontInfo(box().font()).fixedPitch());
        EXPECT_EQ(QFontInfo(box().font()).pixelSize(), 11);
        window->accept();
    });
}

TEST_F(FrmDecodedTest, OpensCentredOnTheScreen) {
    QRect frame, screen;
    showModally([&] {
        frame = window->frameGeometry();
        screen = window->screen()->availableGeometry();
    });
    EXPECT_LE((frame.center() - screen.center()).manhattanLength(), 1)
        << frame.x() << "," << frame.y() << " on " << screen.width() << "x" << screen.height();
}

TEST_F(FrmDecodedTest, TabGoesFromOkToTheResults) {
    window->SetAllText(3, kThreeLines);
    showModally([&] {
        ui().cmdOK->setFocus();
        QTest::keyClick(ui().cmdOK, Qt::Key_Tab);
        EXPECT_EQ(window->focusWidget(), &box());
        window->accept();
    });
}

// --- showing, closing and keys --------------------------------------------------------------

TEST_F(FrmDecodedTest, EveryShowingPutsTheCaretAtTheStartWithNothingSelected) {
    window->SetAllText(3, kThreeLines);
    for (int showing = 1; showing <= 2; ++showing) {
        showModally([&] {
            EXPECT_EQ(window->focusWidget(), &box()) << "showing " << showing;
            EXPECT_EQ(caret(), 0) << "showing " << showing;
            EXPECT_FALSE(hasSelection()) << "showing " << showing;
            // Leave the caret on the last line with a selection behind it.
            QTest::keyClick(&box(), Qt::Key_End, Qt::ControlModifier);
            QTest::keyClick(&box(), Qt::Key_Up, Qt::ShiftModifier);
            ASSERT_TRUE(hasSelection());
            QTest::keyClick(&box(), Qt::Key_Return);
        });
        EXPECT_FALSE(window->isVisible());
    }
}

TEST_F(FrmDecodedTest, EnterInTheResultsPressesOk) {
    window->SetAllText(3, kThreeLines);
    bool okClicked = false;
    QObject::connect(ui().cmdOK, &QPushButton::clicked, [&] { okClicked = true; });
    showModally([&] { QTest::keyClick(&box(), Qt::Key_Return); });
    EXPECT_TRUE(okClicked);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(window->result(), QDialog::Accepted);
    EXPECT_EQ(box().text(), kThreeLines);
}

TEST_F(FrmDecodedTest, TheCloseBoxActsAsOk) {
    window->SetAllText(3, kThreeLines);
    bool okClicked = false;
    QObject::connect(window.get(), &QDialog::accepted, [&] { okClicked = true; });
    showModally([&] { window->close(); });
    EXPECT_TRUE(okClicked);
    EXPECT_FALSE(window->isVisible());
    // The next run shows it again as new.
    showModally([&] {
        EXPECT_EQ(caret(), 0);
        window->close();
    });
}

TEST_F(FrmDecodedTest, TypingChangesNothing) {
    window->SetAllText(3, kThreeLines);
    QApplication::clipboard()->setText("pasted");
    showModally([&] {
        QTest::keyClicks(&box(), "abc");
        QTest::keyClick(&box(), Qt::Key_Delete);
        QTest::keyClick(&box(), Qt::Key_Backspace);
        QTest::keyClick(&box(), Qt::Key_Tab);
        QTest::keyClick(&box(), Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(&box(), Qt::Key_X, Qt::ControlModifier);
        EXPECT_EQ(box().text(), kThreeLines);
        EXPECT_EQ(box().toPlainText(), QString(kThreeLines).remove('\r'));
        window->accept();
    });
}

struct CopyRow {
    const char* name;
    std::function<void(QWidget&)> select;  // keys that choose what to copy
    Qt::KeyboardModifiers copyModifiers;
    bool copies;
    QString copied;
};

class CopyKeysTest : public FrmDecodedTest, public ::testing::WithParamInterface<CopyRow> {};

TEST_P(CopyKeysTest, CopiesTheSelectionWithCrLfThroughTheRetryingWriter) {
    const CopyRow& row = GetParam();
    window->SetAllText(3, kThreeLines);
    QApplication::clipboard()->setText("untouched");
    fake.clipboard.failuresLeft = 2;
    showModally([&] {
        row.select(box());
        QTest::keyClick(&box(), Qt::Key_C, row.copyModifiers);
        window->accept();
    });
    if (row.copies) {
        ASSERT_EQ(fake.clipboard.written.size(), 1u);
        EXPECT_EQ(fake.clipboard.text, row.copied);
        EXPECT_FALSE(fake.sleeper.sleeps.empty());
    } else {
        EXPECT_TRUE(fake.clipboard.written.empty());
    }
    // Nothing goes around the writer to the system clipboard with bare LFs.
    EXPECT_EQ(QApplication::clipboard()->text(), "untouched");
}

void CtrlA(QWidget& box) {
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, CopyKeysTest,
    ::testing::Values(
        CopyRow{"SelectAllThenCopy", CtrlA, Qt::ControlModifier, true, kThreeLines},
        CopyRow{"FirstLineByShiftDown",
                [](QWidget& box) { QTest::keyClick(&box, Qt::Key_Down, Qt::ShiftModifier); },
                Qt::ControlModifier, true, " #1. Display text: abc\r\n"},
        CopyRow{"NothingSelected", [](QWidget&) {}, Qt::ControlModifier, true, ""},
        CopyRow{"CtrlShiftCIsNotCopy", CtrlA, Qt::ControlModifier | Qt::ShiftModifier, false, ""},
        CopyRow{"CtrlAltCIsNotCopy", CtrlA, Qt::ControlModifier | Qt::AltModifier, false, ""}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lumidot::testing
