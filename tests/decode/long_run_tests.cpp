// A decoding run of a big clipboard must leave the window alive: it repaints while the
// messages are taken over, and a signal to close ends the run with the pages saved.
#include <QFile>
#include <QTimer>
#include <csignal>

#include "codec/graphic_page.h"
#include "mainwindow/signal_closer.h"
#include "support/main_form_fixture.h"

namespace lumidot::testing {
namespace {

// Counts the window's paint events for as long as a condition holds.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(std::function<bool()> counting) : counting_(std::move(counting)) {}
    int paints = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint && counting_()) ++paints;
        return false;
    }

private:
    std::function<bool()> counting_;
};

class LongRunTest : public MainFormTest {
protected:
    // Enough store messages, with a picture each, that the run looks at the window's events
    // many times: at every slice of messages, however fast the machine.
    void putManyMessagesOnTheClipboard() {
        window->setLongestEventPause(0);
        Page page{};
        QStringList messages;
        for (int i = 0; i < 40000; ++i) {
            page[i % kPagePixels] = !page[i % kPagePixels];
            messages << QString::fromStdString(
                MakeGraphicStoreSysEx(page, static_cast<std::uint8_t>(1 + i % 10)));
        }
        fake.clipboard.text = messages.join(QStringLiteral("\r\n"));
    }
    // Runs action at the first look at the events once the run is under way.
    void duringTheRun(std::function<void()> action) {
        QTimer::singleShot(0, window.get(), std::move(action));
    }
};

TEST_F(LongRunTest, TheWindowRepaintsWhileTheMessagesAreTakenOver) {
    putManyMessagesOnTheClipboard();
    // Painting counts only before the results window opens, so only during the run.
    PaintCounter counter([this] { return fake.prompts.modalRuns == 0; });
    window->installEventFilter(&counter);
    duringTheRun([this] { window->update(); });
    QTest::mouseClick(ui().cmdSysExDecode, Qt::LeftButton);
    EXPECT_GT(counter.paints, 0) << "the window was painted while the run went on";
    EXPECT_EQ(fake.prompts.modalRuns, 1);
}

TEST_F(LongRunTest, SigtermDuringTheRunSavesThePagesAndEndsIt) {
    putManyMessagesOnTheClipboard();
    SignalCloser closeOnSignal(window.get());
    duringTheRun([] { std::raise(SIGTERM); });
    QTest::mouseClick(ui().cmdSysExDecode, Qt::LeftButton);

    EXPECT_EQ(fake.prompts.modalRuns, 0) << "no results window after the signal";
    EXPECT_FALSE(window->isVisible());
    QFile memory(folder.path() + QStringLiteral("/memory.txt"));
    ASSERT_TRUE(memory.open(QIODevice::ReadOnly)) << "the pages were saved";
    QByteArray blank;
    for (int page = 1; page <= 10; ++page) {
        blank += MakeGraphicStoreSysEx(Page{}, static_cast<std::uint8_t>(page)) + "\r\n";
    }
    const QByteArray saved = memory.readAll();
    EXPECT_EQ(saved.count("\r\n"), 10);
    EXPECT_NE(saved, blank) << "the pages as far as the run had taken them over";
}

}  // namespace
}  // namespace lumidot::testing
