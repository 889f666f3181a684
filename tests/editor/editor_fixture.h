// The graphic editor's tests drive the real window as a user does: the pointer as the window
// system delivers it, the buttons and the page spinner.
#pragma once

#include <QApplication>
#include <initializer_list>

#include "codec/graphic_page.h"
#include "editor/pixel_grid.h"
#include "support/main_form_fixture.h"

namespace lumidot::testing {

class EditorTest : public MainFormTest {
protected:
    void SetUp() override {
        MainFormTest::SetUp();
        // Qt drops a movement to where the pointer already is, and the last test may have
        // left it on the very cell this one uses: start on the bare window.
        move(window.get(), QPointF(1, 1));
    }

    // One mouse event as the window system delivers it: into the window at the place where
    // target's local point lies, so grabs, hit-testing and propagation all take part.
    void mouse(QWidget* target, QPointF local, QEvent::Type type, Qt::MouseButton button,
               Qt::MouseButtons held, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QPointF inWindow = target->mapTo(window.get(), local);
        QTest::lastMouseTimestamp += 500;  // far apart: never a double click
        qt_handleMouseEvent(window->windowHandle(), inWindow, window->mapToGlobal(inWindow), held,
                            button, type, modifiers, QTest::lastMouseTimestamp);
        QApplication::processEvents();
    }
    void move(QWidget* target, QPointF local, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        mouse(target, local, QEvent::MouseMove, Qt::NoButton, Qt::NoButton, modifiers);
    }
    void click(QWidget* target, QPointF local, Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        mouse(target, local, QEvent::MouseButtonPress, button, button, modifiers);
        mouse(target, local, QEvent::MouseButtonRelease, button, Qt::NoButton, modifiers);
    }
    void press(const char* button) {
        QTest::mouseClick(window->findChild<QPushButton*>(button), Qt::LeftButton);
    }
    // The arrow keys on the page spinner (the copy dialog's spinner is clicked instead).
    void stepPage(int direction) {
        QTest::keyClick(ui().udPageNum, direction > 0 ? Qt::Key_Up : Qt::Key_Down);
    }

    PixelGrid* grid() { return ui().lblFDPixelBase; }
    static QPointF cellCentre(int index) { return QRectF(PixelGrid::cellRect(index)).center(); }
    static Page pixelsOn(std::initializer_list<int> indexes) {
        Page page{};
        for (int i : indexes) page[i] = true;
        return page;
    }
    // Opens a page with these pixels through the describer's route.
    void showPage(const Page& page) { window->SetFDPixelColAll(page); }
    // The pane holds the store message of the open page, and the cells show its pixels.
    void expectStored(const Page& page) {
        EXPECT_TRUE(ui().optSEGStore->isChecked());
        EXPECT_EQ(pane(), QString::fromStdString(MakeGraphicStoreSysEx(page, window->FDPageNum())));
        for (int i = 0; i < kPagePixels; ++i) ASSERT_EQ(grid()->cell(i), page[i]) << "cell " << i;
    }
    void expectDisplayed(int pageNum) {
        EXPECT_TRUE(ui().optSEGDisplay->isChecked());
        EXPECT_EQ(pane(), QString::fromStdString(MakeGraphicDisplaySysEx(pageNum)));
    }
};

}  // namespace lumidot::testing
