// The real X11 clipboard under a private X server: other programs own it (our test owner in
// its modes, and xclip) and the program reads it through its production clipboard.
#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>
#include <QThread>
#include <cstdlib>
#include <functional>
#include <memory>
#include <ostream>

#include "mainwindow/clipboard_access.h"
#include "mainwindow/main_form.h"
#include "support/fakes.h"
#include "support/qt_printers.h"
#include "ui_main_form.h"

namespace lumidot::testing {
namespace {

// Who owns the CLIPBOARD selection right now, asked on a connection of the test's own.
xcb_window_t ClipboardOwner() {
    static xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    static const xcb_atom_t clipboard = [] {
        auto* reply = xcb_intern_atom_reply(
            connection, xcb_intern_atom(connection, 0, 9, "CLIPBOARD"), nullptr);
        const xcb_atom_t atom = reply != nullptr ? reply->atom : XCB_NONE;
        std::free(reply);
        return atom;
    }();
    auto* reply = xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, clipboard), nullptr);
    const xcb_window_t owner = reply != nullptr ? reply->owner : XCB_NONE;
    std::free(reply);
    return owner;
}

bool WaitUntil(const std::function<bool()>& done) {
    for (int i = 0; i < 1000; ++i) {
        if (done()) return true;
        QThread::msleep(10);
    }
    return done();
}

// Another program that owns the clipboard for as long as this object lives.
class OtherOwner {
public:
    // Our test owner in one of its modes, serving `text` where the mode serves any.
    static std::unique_ptr<OtherOwner> ours(const char* mode, const QByteArray& text) {
        auto owner = std::unique_ptr<OtherOwner>(new OtherOwner(text));
        owner->process_.start(QStringLiteral(CLIPBOARD_OWNER_PATH),
                              {QString::fromLatin1(mode), owner->file_.fileName()});
        const bool ready = owner->process_.waitForReadyRead(10000) &&
                           owner->process_.readLine().trimmed() == "ready";
        EXPECT_TRUE(ready) << "the test owner did not take the clipboard: "
                           << owner->process_.readAllStandardError().toStdString();
        owner->window_ = ClipboardOwner();
        return owner;
    }
    // xclip, which hands large texts over in pieces (INCR).
    static std::unique_ptr<OtherOwner> xclip(const QByteArray& text) {
        auto owner = std::unique_ptr<OtherOwner>(new OtherOwner(text));
        owner->process_.start(QStringLiteral("xclip"),
                              {QStringLiteral("-quiet"), QStringLiteral("-selection"),
                               QStringLiteral("clipboard"), owner->file_.fileName()});
        EXPECT_TRUE(WaitUntil([] { return ClipboardOwner() != XCB_NONE; }))
            << "xclip did not take the clipboard: "
            << owner->process_.readAllStandardError().toStdString();
        owner->window_ = ClipboardOwner();
        return owner;
    }
    ~OtherOwner() {
        process_.kill();
        process_.waitForFinished();
        EXPECT_TRUE(WaitUntil([this] { return ClipboardOwner() != window_; }))
            << "the clipboard kept its owner after it ended";
    }

private:
    explicit OtherOwner(const QByteArray& text) {
        file_.open();
        file_.write(text);
        file_.flush();
    }
    QProcess process_;
    QTemporaryFile file_;
    xcb_window_t window_ = XCB_NONE;
};

const QByteArray kTextMessage = "F0 41 10 45 12 10 00 00 61 62 63 4A F7";

// About 10 MB of hex lines, each message different, joined by CR LF.
QByteArray TenMegabytes() {
    QByteArray text;
    text.reserve(10 * 1024 * 1024 + 64);
    for (int i = 0; text.size() < 10 * 1024 * 1024; ++i) {
        text += "F0 41 10 45 12 10 00 00 " +
                QByteArray::number(i % 256, 16).rightJustified(2, '0').toUpper() + " 4A F7\r\n";
    }
    return text;
}

// The program's production clipboard and the window's decoding run, with message boxes
// recorded and the pauses only counted.
class X11ClipboardTest : public ::testing::Test {
protected:
    void TearDown() override {
        window_.reset();
        // Whatever we copied ourselves goes, so the next test starts with no owner.
        QGuiApplication::clipboard()->clear();
        QCoreApplication::processEvents();
        EXPECT_TRUE(WaitUntil([] { return ClipboardOwner() == XCB_NONE; }));
    }
    MainForm& window() {
        if (!window_) {
            window_ = std::make_unique<MainForm>(platform, folder.path());
            window_->Form_Load();
        }
        return *window_;
    }
    std::vector<QString> titles() const {
        std::vector<QString> result;
        for (const ShownMessage& box : prompts.shown) result.push_back(box.title);
        return result;
    }

    FakePrompts prompts;
    SystemClipboard clipboard;
    CountingSleeper sleeper;
    FakeFileDialogs fileDialogs;
    Platform platform{prompts, clipboard, sleeper, fileDialogs};
    QTemporaryDir folder;
    std::unique_ptr<MainForm> window_;
};

struct UnreadableRow {
    const char* name;
    const char* mode;  // of our test owner; empty for a clipboard nobody owns
    QByteArray text;
    bool readFails;  // else the clipboard simply holds no text
};
void PrintTo(const UnreadableRow& row, std::ostream* out) {
    *out << row.name;
}

class UnreadableClipboardTest : public X11ClipboardTest,
                                public ::testing::WithParamInterface<UnreadableRow> {};

// A decoding run through the window's button against an owner that does not hand text over.
TEST_P(UnreadableClipboardTest, DecodingRunReportsAndFindsNothing) {
    const UnreadableRow& row = GetParam();
    std::unique_ptr<OtherOwner> owner;
    if (*row.mode != '\0') owner = OtherOwner::ours(row.mode, row.text);
    QTest::mouseClick(window().form().cmdSysExDecode, Qt::LeftButton);

    if (row.readFails) {
        ASSERT_EQ(titles(), (std::vector<QString>{QStringLiteral("Error reading from clipboard!"),
                                                  QStringLiteral("Nothing to decode!")}));
        EXPECT_EQ(prompts.shown[0].prompt,
                  QStringLiteral("Failed to open clipboard for reading from\r\n(tried 10 times)"));
        EXPECT_EQ(prompts.shown[0].icon, Prompts::Icon::Critical);
        EXPECT_EQ(sleeper.sleeps, std::vector<int>(9, 15));
    } else {
        EXPECT_EQ(titles(), std::vector<QString>{QStringLiteral("Nothing to decode!")});
        EXPECT_TRUE(sleeper.sleeps.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(
    X11, UnreadableClipboardTest,
    ::testing::Values(UnreadableRow{"Deaf", "deaf", {}, true},
                      UnreadableRow{"RefusesEverything", "refuse", {}, true},
                      UnreadableRow{"ListsTextButNeverSendsIt", "half-deaf", {}, true},
                      UnreadableRow{"ListsTextButRefusesIt", "refuse-text", {}, true},
                      UnreadableRow{"StopsInTheMiddleOfALargeText", "stall-incr",
                                    QByteArray(1024 * 1024, 'A'), true},
                      UnreadableRow{"HoldsOnlyAPicture", "image", {}, false},
                      UnreadableRow{"NobodyOwnsIt", "", {}, false}),
    [](const auto& info) { return std::string(info.param.name); });

struct TextRow {
    const char* name;
    const char* mode;  // of our test owner, or "xclip"
    QByteArray served;
    QString expected;
};
void PrintTo(const TextRow& row, std::ostream* out) {
    *out << row.name;
}

class ServedTextTest : public X11ClipboardTest, public ::testing::WithParamInterface<TextRow> {};

TEST_P(ServedTextTest, ReadsExactlyWhatTheOwnerServes) {
    const TextRow& row = GetParam();
    auto owner = QByteArray(row.mode) == "xclip" ? OtherOwner::xclip(row.served)
                                                 : OtherOwner::ours(row.mode, row.served);
    const QString text = GetClipboardText(platform);
    EXPECT_TRUE(prompts.shown.empty());
    EXPECT_TRUE(sleeper.sleeps.empty()) << "the first attempt should succeed";
    ASSERT_EQ(text.size(), row.expected.size());
    // Compared whole, not printed: the large rows would flood the log.
    EXPECT_TRUE(text == row.expected);
}

INSTANTIATE_TEST_SUITE_P(
    X11, ServedTextTest,
    ::testing::Values(
        TextRow{"OneMessage", "serve", kTextMessage, QString::fromLatin1(kTextMessage)},
        TextRow{"CrLfLines", "serve", kTextMessage + "\r\n" + kTextMessage + "\r\n",
                QString::fromLatin1(kTextMessage + "\r\n" + kTextMessage + "\r\n")},
        TextRow{"Utf8", "serve", QStringLiteral("Grüße ♪ 音").toUtf8(),
                QStringLiteral("Grüße ♪ 音")},
        TextRow{"EmptyText", "serve", {}, {}},
        TextRow{"OldOwnerWithLatin1Only", "legacy",
                "Gr\xFC\xDF"
                "e",
                QStringLiteral("Grüße")},
        TextRow{"TenMegabytesInPieces", "serve", TenMegabytes(),
                QString::fromLatin1(TenMegabytes())},
        TextRow{"XclipCrLf", "xclip", kTextMessage + "\r\n",
                QString::fromLatin1(kTextMessage + "\r\n")},
        TextRow{"XclipTenMegabytes", "xclip", TenMegabytes(), QString::fromLatin1(TenMegabytes())}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(X11ClipboardTest, DecodingRunTakesOverWhatAnotherProgramServes) {
    auto owner = OtherOwner::ours("serve", kTextMessage + "\r\n");
    prompts.onModal = [](QDialog& dialog) { dialog.accept(); };
    QTest::mouseClick(window().form().cmdSysExDecode, Qt::LeftButton);
    EXPECT_TRUE(prompts.shown.empty());
    EXPECT_EQ(prompts.modalRuns, 1) << "the results window";
    EXPECT_EQ(window().form().txtTextIn->text(), QStringLiteral("abc"));
    EXPECT_EQ(window().sysExOutText(), QString::fromLatin1(kTextMessage));
}

TEST_F(X11ClipboardTest, OwnCopiesReadBack) {
    for (const QString& text : {QString::fromLatin1(kTextMessage + "\r\n" + kTextMessage),
                                QStringLiteral("Grüße"), QString()}) {
        SetClipboardText(platform, text);
        EXPECT_EQ(GetClipboardText(platform), text);
    }
    EXPECT_TRUE(prompts.shown.empty());
    EXPECT_TRUE(sleeper.sleeps.empty());
}

// Qt learns that it lost the clipboard only when it next handles its events; until then the
// read must go to the new owner, not to our stale copy (and not hang on it either).
TEST_F(X11ClipboardTest, AfterAnotherProgramTakesOurCopyItsOwnerCounts) {
    SetClipboardText(platform, QString::fromLatin1(kTextMessage));
    auto owner = OtherOwner::ours("deaf", {});
    EXPECT_EQ(GetClipboardText(platform), QString());
    ASSERT_EQ(titles(), std::vector<QString>{QStringLiteral("Error reading from clipboard!")});

    // The next user action comes through the event loop, where Qt learns of its loss (and the
    // time of it, which it needs to take the clipboard back). Writing then asks the silent
    // owner nothing.
    EXPECT_TRUE(WaitUntil([] {
        QCoreApplication::processEvents();
        return !QGuiApplication::clipboard()->ownsClipboard();
    }));
    prompts.shown.clear();
    SetClipboardText(platform, QStringLiteral("F0 F7"));
    EXPECT_EQ(GetClipboardText(platform), QStringLiteral("F0 F7"));
    EXPECT_TRUE(prompts.shown.empty());
}

}  // namespace
}  // namespace lumidot::testing
