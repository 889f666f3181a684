// A started main window with ways to reach its graphic editor as a user would: the pointer
// with buttons and modifiers held, and keys going down.
#pragma once

#include <QApplication>
#include <QTest>
#include <initializer_list>
#include <ostream>

#include "codec/graphic_page.h"
#include "editor/pixel_grid.h"
#include "support/main_form_fixture.h"

// Readable failure messages for texts.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace lumidot::testing {

class EditorTest : public MainFormTest {
protected:
    void SetUp() override {
        MainFormTest::SetUp();
        // The pointer starts on the bare window. Qt drops a movement to where the pointer
        // already is, and the last test may have left it on the very cell this one uses.
        move(window.get(), QPointF(1, 1));
    }

    // One mouse event as the window system delivers it: into the window at the place where
    // target's local point lies, so grabs, hit-testing and propagation all take part.
    void mouse(QWidget* target, QPointF local, QEvent::Type type,
               Qt::MouseButton button = Qt::NoButton, Qt::MouseButtons held = Qt::NoButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QPointF inWindow = target->mapTo(window.get(), local);
        QTest::lastMouseTimestamp += 500;  // far apart: never a double click
        qt_handleMouseEvent(window->windowHandle(), inWindow, window->mapToGlobal(inWindow), held,
                            button, type, modifiers, QTest::lastMouseTimestamp);
        QApplication::processEvents();
    }
    void move(QWidget* target, QPointF local, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
              Qt::MouseButtons held = Qt::NoButton) {
        mouse(target, local, QEvent::MouseMove, Qt::NoButton, held, modifiers);
    }
    void click(QWidget* target, QPointF local, Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        mouse(target, local, QEvent::MouseButtonPress, button, button, modifiers);
        mouse(target, local, QEvent::MouseButtonRelease, button, Qt::NoButton, modifiers);
    }

    PixelGrid* grid() { return ui().lblFDPixelBase; }
    static QPointF cellCentre(int index) { return QRectF(PixelGrid::cellRect(index)).center(); }
    void moveOverCell(int index, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        move(grid(), cellCentre(index), modifiers);
    }

    // A key going down where the keyboard focus is, or on the window when nothing has it.
    void keyDown(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyPress(focus ? focus : window.get(), key, modifiers);
    }

    static Page pixelsOn(std::initializer_list<int> indexes) {
        Page page{};
        for (int i : indexes) page[i] = true;
        return page;
    }
    // Opens a page with these pixels through the describer's route.
    void showPage(const Page& page) { window->SetFDPixelColAll(page); }

    quint64 regenerations() const { return window->sysExOutWrites(); }
    static QString storeMessage(const Page& page, int pageNum) {
        return QString::fromStdString(MakeGraphicStoreSysEx(page, pageNum));
    }
    static QString displayMessage(int pageNum) {
        return QString::fromStdString(MakeGraphicDisplaySysEx(pageNum));
    }
    // The cells show exactly these pixels.
    void expectGridShows(const Page& page) {
        for (int i = 0; i < kPagePixels; ++i) ASSERT_EQ(grid()->cell(i), page[i]) << "cell " << i;
    }
};

}  // namespace lumidot::testing
