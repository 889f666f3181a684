// Turns SIGTERM, SIGINT and SIGHUP (a logout, Ctrl+C in a terminal, a closed terminal)
// into closing the main window the normal way, so that the pages are saved.
#pragma once

#include <QObject>

class QSocketNotifier;
class QWidget;

namespace lumidot {

class SignalCloser : public QObject {
    Q_OBJECT
public:
    explicit SignalCloser(QWidget* window);
    ~SignalCloser() override;

private:
    void onSignal();

    QWidget* window_;
    QSocketNotifier* notifier_ = nullptr;
};

}  // namespace lumidot
