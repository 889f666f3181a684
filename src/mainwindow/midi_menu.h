// The MIDI menu of the main window: the output ports (listed afresh each time the menu
// opens, the chosen one checked), sending the output pane's messages or all pages, live
// sending of every regenerated message, and the pause between messages. The device's status
// shows in the menu's title and first line, never in the window's caption or client area.
// Problems are shown once each, in a message box, once the menu has closed.
#pragma once

#include <QObject>
#include <QStringList>
#include <vector>

#include "mainwindow/midi_device.h"

class QAction;
class QActionGroup;
class QMenu;

namespace lumidot {

class MainForm;

class MidiMenu : public QObject {
    Q_OBJECT
public:
    // Puts the menu on window's menu bar, before Help, and opens the port chosen in an
    // earlier run.
    explicit MidiMenu(MainForm& window);
    ~MidiMenu() override;

    QMenu* menu() const { return menu_; }
    MidiDevice& device() { return device_; }

    // Sends the message, or every message, the output pane shows (F5).
    void sendMessage();
    // Sends the ten pages' store messages, then the display of page 1.
    void sendAllPages();

private:
    // One item of the port list, as shown.
    struct PortItem {
        enum Kind { NoPort, Port, Note } kind;
        QString text;
        QString name;  // the port's, for Port
        bool checked;
        bool enabled;
        bool operator==(const PortItem&) const = default;
    };

    std::vector<PortItem> portItems() const;
    void build();
    void showState();
    void showPorts();
    void showPauses();
    void followLive();
    void report(const QString& text);
    void showReports();

    MainForm& window_;
    MidiDevice device_;
    QMenu* menu_ = nullptr;
    QAction* status_ = nullptr;
    QAction* portsEnd_ = nullptr;  // the port items stand before it
    QActionGroup* portGroup_ = nullptr;
    QList<QAction*> portItems_;
    std::vector<PortItem> shownPorts_;
    QAction* send_ = nullptr;
    QAction* sendAll_ = nullptr;
    QAction* live_ = nullptr;
    QMenu* pauses_ = nullptr;
    QActionGroup* pauseGroup_ = nullptr;
    QStringList reports_;     // waiting for the menu to close
    bool listening_ = false;  // the model hands this its regenerated messages
    bool showingReports_ = false;
    bool menuOpen_ = false;  // from the moment it is about to show until it hides
};

}  // namespace lumidot
