// Reaching the File menu's files without it: drops of files on the window, Ctrl+O from any
// control, access keys; and a big file, whose taking over keeps the window alive.
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

}  // namespace
}  // namespace lumidot::testing
