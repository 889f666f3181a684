// Reaching files besides the Open item: drops of files on the window, Ctrl+O from any
// control, access keys, the recent list; and a big file, whose taking over keeps the window
// alive.
#include <QLineEdit>
#include <QMimeData>
#include <QProgressDialog>
#include <QTimer>
#include <QUrl>
#include <csignal>

#include "codec/graphic_page.h"
#include "files/file_bytes.h"
#include "files/midi_file.h"
#include "mainwindow/files/file_menu_fixture.h"
#include "mainwindow/signal_closer.h"

namespace lumidot::testing {
namespace {

const ByteArray kDisplay5 = Hex("F0 41 10 45 12 10 20 00 05 4B F7");

class DropTest : public FileMenuTest {
protected:
    // Drags data over the widget and drops it there, as the window system delivers it;
    // whether the drag was accepted on entering.
    bool drop(QWidget* target, QMimeData& data) {
        const QPointF at(target->width() / 2.0, target->height() / 2.0);
        QDragEnterEvent enter(at.toPoint(), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(target, &enter);
        if (!enter.isAccepted()) return false;
        QDropEvent dropped(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                           Qt::NoModifier);
        QApplication::sendEvent(target, &dropped);
        QApplication::processEvents();
        return dropped.isAccepted();
    }
    QMimeData& filesData(const QList<QUrl>& urls) {
        data.setUrls(urls);
        return data;
    }
    QMimeData data;
};

struct DropRow {
    const char* name;
    const char* target;  // the control's objectName; empty: the window itself
};

class DropOnControlTest : public DropTest, public ::testing::WithParamInterface<DropRow> {};

// Text boxes take dropped text themselves; a dropped file is opened all the same, and its
// name does not end up in the box.
TEST_P(DropOnControlTest, ADroppedFileIsOpened) {
    const QString file = write(QStringLiteral("five.syx"), kDisplay5);
    QWidget* target = *GetParam().target == '\0'
                          ? static_cast<QWidget*>(window.get())
                          : window->findChild<QWidget*>(QLatin1String(GetParam().target));
    ASSERT_NE(target, nullptr);
    const QString lcdText = ui().txtTextIn->text();

    // A text file's URL, as file managers offer it, with its path as text besides.
    QMimeData& dragged = filesData({QUrl::fromLocalFile(file)});
    dragged.setText(file);
    EXPECT_TRUE(drop(target, dragged));

    EXPECT_EQ(fake.prompts.modalRuns, 1);
    EXPECT_EQ(results, QStringLiteral(" #1. [offset 0] Graphic: Display page 5\r\n"));
    EXPECT_EQ(window->FDPageNum(), 5);
    EXPECT_EQ(ui().txtTextIn->text(), lcdText);
    EXPECT_EQ(recentShown(), QStringList{QDir::toNativeSeparators(file)});
}

INSTANTIATE_TEST_SUITE_P(Window, DropOnControlTest,
                         ::testing::Values(DropRow{"Window", ""},
                                           DropRow{"LcdTextBox", "txtTextIn"},
                                           DropRow{"OutputPane", "txtSysExOut"},
                                           DropRow{"PixelGrid", "lblFDPixelBase"},
                                           DropRow{"Separator", "txtHexSep"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(DropTest, OnlyLocalFilesAreTaken) {
    QMimeData text;
    text.setText(QStringLiteral("F0 41 10 45 12 10 20 00 05 4B F7"));
    EXPECT_FALSE(drop(window.get(), text));
    EXPECT_FALSE(
        drop(window.get(), filesData({QUrl(QStringLiteral("https://example.org/a.syx"))})));
    EXPECT_EQ(fake.prompts.modalRuns, 0);
    EXPECT_TRUE(fake.prompts.shown.empty());
}

TEST_F(DropTest, ADroppedFileThatCannotBeReadIsReported) {
    EXPECT_TRUE(
        drop(ui().txtSysExOut, filesData({QUrl::fromLocalFile(path(QStringLiteral("gone.mid")))})));
    EXPECT_EQ(lastBoxTitle(), QStringLiteral("Cannot open file"));
    EXPECT_EQ(fake.prompts.modalRuns, 0);
}

// Ctrl+O reaches the menu item whichever control has the focus.
TEST_F(FileMenuTest, CtrlOFromEveryControl) {
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    int asked = 0;
    for (QWidget* control : std::initializer_list<QWidget*>{
             ui().txtTextIn, ui().txtHexPrefix, ui().txtSysExOut, ui().optSEGStore,
             ui().cmdSysExDecode, ui().chkSysExCopyAuto}) {
        control->setFocus();
        QTest::keyClick(control, Qt::Key_O, Qt::ControlModifier);
        EXPECT_EQ(fake.files.asked.size(), std::size_t(++asked))
            << control->objectName().toStdString();
    }
    EXPECT_EQ(ui().txtTextIn->text(), QString()) << "the key typed nothing";
}

// Every item has an access key of its own, and the File menu holds the items in order.
TEST_F(FileMenuTest, EveryItemHasItsOwnAccessKey) {
    QStringList texts;
    QString keys;
    for (QAction* item : window->menus().file->actions()) {
        if (item->isSeparator()) continue;
        texts << item->text();
        const qsizetype amp = item->text().indexOf(QLatin1Char('&'));
        ASSERT_GE(amp, 0) << item->text().toStdString();
        const QChar key = item->text().at(amp + 1).toLower();
        EXPECT_FALSE(keys.contains(key)) << item->text().toStdString();
        keys += key;
    }
    EXPECT_EQ(texts,
              (QStringList{"&Open...", "Open &Recent", "Export &message as .syx...",
                           "Export all &pages as .syx...", "Export all pages as M&IDI file...",
                           "Repair &checksums in file...", "Import pic&ture...",
                           "&Export page as image...", "&Quit"}));
    EXPECT_EQ(action("actionOpen")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_O));
}

class BigFileTest : public FileMenuTest {
protected:
    // A MIDI file of many store messages, enough that the taking over looks at the window's
    // events many times however fast the machine.
    QString writeBigFile() {
        window->setLongestEventPause(0);
        std::vector<TimedMessage> messages;
        Page page{};
        for (int i = 0; i < 40000; ++i) {
            page[i % kPagePixels] = !page[i % kPagePixels];
            messages.push_back({i * 0.05, Hex(MakeGraphicStoreSysEx(
                                              page, static_cast<std::uint8_t>(1 + i % 10)))});
        }
        return write(QStringLiteral("big.mid"), WriteMidi(messages));
    }
    void duringTheRun(std::function<void()> action) {
        QTimer::singleShot(0, window.get(), std::move(action));
    }
};

TEST_F(BigFileTest, ProgressIsShownAndTheWindowRepaints) {
    const QString file = writeBigFile();
    actions().setProgressDelay(0);
    QString label;
    int paints = 0;
    duringTheRun([&] {
        auto* progress = window->findChild<QProgressDialog*>(QStringLiteral("openingProgress"));
        if (progress != nullptr && progress->isVisible()) label = progress->labelText();
        window->update();
    });
    struct PaintCounter : QObject {
        int& paints;
        explicit PaintCounter(int& p) : paints(p) {}
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint) ++paints;
            return false;
        }
    } counter(paints);
    window->installEventFilter(&counter);
    bool progressAtResults = true;
    fake.prompts.onModal = [&](QDialog& dialog) {
        progressAtResults = window->findChild<QProgressDialog*>() != nullptr;
        dialog.accept();
    };
    choose("actionOpen", {file});
    window->removeEventFilter(&counter);

    EXPECT_EQ(label, QStringLiteral("Reading the messages of big.mid..."));
    EXPECT_GT(paints, 0);
    EXPECT_EQ(fake.prompts.modalRuns, 1);
    EXPECT_FALSE(progressAtResults) << "the progress, its timer with it, is gone by then";
}

TEST_F(BigFileTest, SigtermWhileTakingOverSavesThePagesAndEndsIt) {
    const QString file = writeBigFile();
    SignalCloser closeOnSignal(window.get());
    duringTheRun([] { std::raise(SIGTERM); });
    choose("actionOpen", {file});

    EXPECT_EQ(fake.prompts.modalRuns, 0) << "no results window after the signal";
    EXPECT_FALSE(window->isVisible());
    QFile memory(folder.path() + QStringLiteral("/memory.txt"));
    ASSERT_TRUE(memory.open(QIODevice::ReadOnly)) << "the pages were saved";
    EXPECT_EQ(memory.readAll().count("\r\n"), 10);
}

// "Open Recent": the files opened last, newest first, at most eight, without those that
// have vanished; kept in the user's settings, so a new window shows the same list.
struct RecentRow {
    const char* name;
    std::vector<int> opened;   // files 1, 2, ... opened in this order
    std::vector<int> deleted;  // then deleted
    std::vector<int> shown;    // the list, from the top
};

class RecentTest : public FileMenuTest, public ::testing::WithParamInterface<RecentRow> {
protected:
    QString file(int number) { return path(QStringLiteral("file%1.syx").arg(number)); }
    QStringList shown(const std::vector<int>& numbers) {
        QStringList paths;
        for (int number : numbers) paths << QDir::toNativeSeparators(file(number));
        return paths;
    }
};

TEST_P(RecentTest, NewestFirstAtMostEightNoneVanished) {
    const RecentRow& row = GetParam();
    for (int number = 1; number <= 10; ++number) {
        write(QStringLiteral("file%1.syx").arg(number), kDisplay5);
    }
    for (int number : row.opened) ASSERT_TRUE(actions().openFile(file(number)));
    for (int number : row.deleted) QFile::remove(file(number));
    EXPECT_EQ(recentShown(), shown(row.shown));
    EXPECT_EQ(actions().recentMenu()->menuAction()->isEnabled(), !row.shown.empty());

    // Another window on the same settings shows the same list.
    MainForm other(fake.platform, folder.path());
    other.findChild<FileActions*>()->recentFiles().useSettingsFile(path("recent.ini"));
    EXPECT_EQ(other.findChild<FileActions*>()->recentFiles().paths(), shown(row.shown));
}

INSTANTIATE_TEST_SUITE_P(
    Files, RecentTest,
    ::testing::Values(
        RecentRow{"None", {}, {}, {}}, RecentRow{"NewestFirst", {1, 2, 3}, {}, {3, 2, 1}},
        RecentRow{"OpenedAgainComesFirst", {1, 2, 3, 1}, {}, {1, 3, 2}},
        RecentRow{"AtMostEight", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {}, {10, 9, 8, 7, 6, 5, 4, 3}},
        RecentRow{"VanishedFilesLeave", {1, 2, 3}, {2}, {3, 1}},
        RecentRow{"AllVanished", {1, 2}, {1, 2}, {}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(FileMenuTest, ChoosingARecentFileOpensItAndClearListEmptiesTheList) {
    const QString first = write(QStringLiteral("five.syx"), kDisplay5);
    const QString second =
        write(QStringLiteral("hi.syx"), Hex("F0 41 10 45 12 10 00 00 48 69 3F F7"));
    actions().openFile(first);
    actions().openFile(second);
    recentShown();
    QList<QAction*> items = actions().recentMenu()->actions();
    ASSERT_GE(items.size(), 2);
    EXPECT_EQ(items[1]->text(), QStringLiteral("&2 ") + QDir::toNativeSeparators(first));
    items[1]->trigger();
    EXPECT_EQ(fake.prompts.modalRuns, 3);
    EXPECT_EQ(results, QStringLiteral(" #1. [offset 0] Graphic: Display page 5\r\n"));
    EXPECT_EQ(recentShown().value(0), QDir::toNativeSeparators(first));

    QAction* clear = actions().recentMenu()->actions().value(3);
    ASSERT_NE(clear, nullptr);
    EXPECT_EQ(clear->text(), QStringLiteral("&Clear List"));
    clear->trigger();
    EXPECT_TRUE(recentShown().isEmpty());
    EXPECT_FALSE(actions().recentMenu()->menuAction()->isEnabled());
}

// Gone between the menu's filling and the choice: said so, and off the list.
TEST_F(FileMenuTest, ARecentFileGoneMeanwhileIsReportedAndDropped) {
    const QString gone = write(QStringLiteral("gone.syx"), kDisplay5);
    actions().openFile(gone);
    recentShown();
    QFile::remove(gone);
    actions().recentMenu()->actions().value(0)->trigger();
    EXPECT_EQ(lastBoxTitle(), QStringLiteral("Cannot open file"));
    EXPECT_TRUE(
        fake.prompts.shown.back().prompt.endsWith(QStringLiteral("The file was not found.")));
    EXPECT_TRUE(actions().recentFiles().paths().isEmpty());
}

// The dialogs start in the folder of the file opened last.
TEST_F(FileMenuTest, DialogsStartWhereTheLastFileWas) {
    QDir(files.path()).mkdir(QStringLiteral("songs"));
    actions().openFile(write(QStringLiteral("songs/five.syx"), kDisplay5));
    choose("actionOpen");
    choose("actionExportPages");
    ASSERT_EQ(fake.files.asked.size(), 2u);
    EXPECT_EQ(fake.files.asked[0].start, path(QStringLiteral("songs")));
    EXPECT_EQ(fake.files.asked[1].start, path(QStringLiteral("songs/pages.syx")));
}

}  // namespace
}  // namespace lumidot::testing
