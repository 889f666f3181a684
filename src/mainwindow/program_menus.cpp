#include "mainwindow/program_menus.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QShortcutEvent>

#include "mainwindow/main_form.h"

namespace lumidot {

namespace {

// The window's buttons keep their access keys when a menu's title underlines the same
// letter: Alt+F reads from the clipboard and Alt+E clears the page, as before there was a
// menu bar, and those menus open with Alt and then the letter. Qt hands a key
// that two owners share to each in turn as "ambiguous", which only focuses a button; this
// filter on both owners turns every such press into the button's click.
class WindowKeysFirst : public QObject {
public:
    WindowKeysFirst(QWidget* client, QMenuBar* bar) : QObject(bar), client_(client) {
        bar->installEventFilter(this);
        for (QAbstractButton* button : client->findChildren<QAbstractButton*>()) {
            button->installEventFilter(this);
        }
    }

    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::Shortcut) return false;
        const auto* shortcut = static_cast<QShortcutEvent*>(event);
        if (!shortcut->isAmbiguous()) return false;
        for (QAbstractButton* button : client_->findChildren<QAbstractButton*>()) {
            if (button->isVisible() && button->isEnabled() &&
                QKeySequence::mnemonic(button->text()) == shortcut->key()) {
                button->setFocus(Qt::ShortcutFocusReason);
                button->animateClick();
                return true;
            }
        }
        return false;
    }

private:
    QWidget* client_;
};

}  // namespace

ProgramMenus AddProgramMenus(MainForm& window) {
    QMenuBar* bar = window.menuBar();
    new WindowKeysFirst(window.clientArea(), bar);
    QMenu* file = bar->addMenu(QObject::tr("&File"));
    file->setObjectName(QStringLiteral("menuFile"));
    QAction* fileEnd = file->addSeparator();
    QAction* quit = file->addAction(QObject::tr("&Quit"), &window, &QWidget::close);
    quit->setObjectName(QStringLiteral("actionQuit"));
    quit->setShortcut(QKeySequence::Quit);
    // The desktop's own Quit shortcut may be missing; Ctrl+Q is what users expect here.
    if (quit->shortcut().isEmpty()) quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

    QMenu* help = bar->addMenu(QObject::tr("&Help"));
    help->setObjectName(QStringLiteral("menuHelp"));
    QAction* about = help->addAction(QObject::tr("&About Lumidot"), &window, [&window] {
        window.platform().prompts.showMessage(
            &window, QObject::tr("About Lumidot"),
            QObject::tr("Lumidot by Tarrowen, version %1.%2.%3\r\n\r\n"
                        "Composes the GS messages that put a line of text and 16 x 16 dot "
                        "pictures on the LCD of a Roland SC-88Pro (Sound Canvas), and reads "
                        "them back.")
                .arg(LUMIDOT_VERSION_MAJOR)
                .arg(LUMIDOT_VERSION_MINOR)
                .arg(LUMIDOT_VERSION_PATCH),
            Prompts::Icon::Information, Prompts::Buttons::Ok, Prompts::Answer::Ok);
    });
    about->setObjectName(QStringLiteral("actionAbout"));
    QAction* aboutQt = help->addAction(QObject::tr("About &Qt"), qApp, &QApplication::aboutQt);
    aboutQt->setObjectName(QStringLiteral("actionAboutQt"));
    return {file, fileEnd, help};
}

}  // namespace lumidot
