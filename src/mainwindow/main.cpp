// Lumidot: composes and reads back the GS messages that set the SC-88Pro's LCD.
#include <QApplication>

#include "mainwindow/main_form.h"
#include "mainwindow/platform.h"
#include "mainwindow/signal_closer.h"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    // Names the user's data folder (~/.local/share/Lumidot) used when the program's own
    // folder cannot be written.
    QApplication::setApplicationName(QStringLiteral("Lumidot"));
    lumidot::QtPrompts prompts;
    lumidot::SystemClipboard clipboard;
    lumidot::ThreadSleeper sleeper;
    lumidot::QtFileDialogs fileDialogs;
    lumidot::Platform platform{prompts, clipboard, sleeper, fileDialogs};

    lumidot::MainForm window(platform, QCoreApplication::applicationDirPath());
    lumidot::SignalCloser closeOnSignal(&window);
    window.Form_Load();
    return QApplication::exec();
}
