#include "mainwindow/midi_menu.h"

#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

#include "device/pacing_queue.h"
#include "device/program_port.h"
#include "mainwindow/main_form.h"
#include "mainwindow/outgoing_messages.h"

namespace lumidot {
namespace {

using device::SenderStatus;

// The pauses offered, in milliseconds; 40 suits the module.
constexpr int kPauses[] = {20, 40, 60, 80, 100, 150, 200, 300, 500};
// Ports 1 to 9 get their number as access key.
constexpr int kNumberedPorts = 9;

QString Title(const MidiDevice& device) {
    QString title = QObject::tr("&MIDI");
    if (device.status() == SenderStatus::PortLost) {
        title += QStringLiteral(" (") + QLatin1String(StatusText(SenderStatus::PortLost)) +
                 QLatin1Char(')');
    } else if (device.portOpen() && device.status() == SenderStatus::Sending) {
        title += QStringLiteral(" (") + QLatin1String(StatusText(SenderStatus::Sending)) +
                 QLatin1Char(')');
    }
    return title;
}

// A port's name as menu text: an ampersand in it is no access key.
QString Shown(const QString& name) {
    QString shown = name;
    return shown.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString StatusLine(const MidiDevice& device) {
    const QString port = Shown(device.chosenPort());
    if (device.portOpen()) {
        return port + QStringLiteral(": ") + QLatin1String(StatusText(device.status()));
    }
    if (device.ports() && device.ports()->problem) {
        return QObject::tr("No MIDI system: nothing can be sent");
    }
    if (port.isEmpty()) return QObject::tr("No MIDI port chosen");
    if (device.status() == SenderStatus::PortLost) {
        return port + QStringLiteral(": ") + QLatin1String(StatusText(SenderStatus::PortLost));
    }
    return port + QObject::tr(": missing");
}

}  // namespace

MidiMenu::MidiMenu(MainForm& window)
    : window_(window), device_(window.platform().midiPort ? window.platform().midiPort : [] {
          return device::MakeProgramPort();
      }) {
    build();
    connect(&device_, &MidiDevice::changed, this, &MidiMenu::showState);
    connect(&device_, &MidiDevice::failed, this, &MidiMenu::report);
    // Once the window has loaded: its start-up regenerations are no changes of the user's,
    // and the module is left as it is until the user changes something.
    QTimer::singleShot(0, &device_, &MidiDevice::start);
    showState();
}

MidiMenu::~MidiMenu() {
    window_.model().setMessageListener(nullptr);
}

void MidiMenu::build() {
    QMenuBar* bar = window_.menuBar();
    menu_ = new QMenu(tr("&MIDI"), bar);
    menu_->setObjectName(QStringLiteral("menuMidi"));
    bar->insertMenu(window_.menus().help->menuAction(), menu_);

    status_ = menu_->addAction(QString());
    status_->setObjectName(QStringLiteral("actionMidiStatus"));
    status_->setEnabled(false);
    menu_->addSeparator();
    portGroup_ = new QActionGroup(menu_);
    portsEnd_ = menu_->addSeparator();

    send_ = menu_->addAction(tr("&Send message"), this, &MidiMenu::sendMessage);
    send_->setObjectName(QStringLiteral("actionSendMessage"));
    send_->setShortcut(QKeySequence(Qt::Key_F5));
    sendAll_ = menu_->addAction(tr("Send &all pages"), this, &MidiMenu::sendAllPages);
    sendAll_->setObjectName(QStringLiteral("actionSendAllPages"));
    live_ = menu_->addAction(tr("Send &live"));
    live_->setObjectName(QStringLiteral("actionSendLive"));
    live_->setCheckable(true);
    connect(live_, &QAction::triggered, &device_, &MidiDevice::setLive);
    menu_->addSeparator();

    pauses_ = menu_->addMenu(tr("&Pause between messages"));
    pauses_->setObjectName(QStringLiteral("menuMidiPause"));
    pauseGroup_ = new QActionGroup(pauses_);

    connect(menu_, &QMenu::aboutToShow, this, [this] {
        menuOpen_ = true;
        device_.refreshPorts();
    });
    connect(menu_, &QMenu::aboutToHide, this, [this] {
        menuOpen_ = false;
        showState();
        // A message box waits until the menu is out of the way.
        QTimer::singleShot(0, this, &MidiMenu::showReports);
    });
}

void MidiMenu::showState() {
    // The menu bar closes a menu whose title changes; the status line says it meanwhile.
    if (!menuOpen_) menu_->setTitle(Title(device_));
    status_->setText(StatusLine(device_));
    const bool open = device_.portOpen();
    for (QAction* action : {send_, sendAll_, live_}) action->setEnabled(open);
    live_->setChecked(device_.live());
    showPorts();
    showPauses();
    followLive();
}

std::vector<MidiMenu::PortItem> MidiMenu::portItems() const {
    std::vector<PortItem> items;
    const QString chosen = device_.chosenPort();
    items.push_back({PortItem::NoPort, tr("&No port"), {}, chosen.isEmpty(), true});
    bool chosenListed = false;
    const auto& ports = device_.ports();
    // Without a MIDI system the status line says so; there is nothing to list.
    const bool answered = ports && !ports->problem;
    if (answered && ports->names.empty()) {
        items.push_back({PortItem::Note, tr("No MIDI output ports"), {}, false, false});
    } else if (answered) {
        int number = 0;
        for (const std::string& listed : ports->names) {
            const QString name = QString::fromStdString(listed);
            const bool isChosen =
                !chosen.isEmpty() && device::SamePort(listed, chosen.toStdString());
            chosenListed = chosenListed || isChosen;
            ++number;
            const QString key =
                number <= kNumberedPorts ? QStringLiteral("&%1 ").arg(number) : QString();
            items.push_back({PortItem::Port, key + Shown(name), name, isChosen, true});
        }
    }
    if (!chosen.isEmpty() && !chosenListed) {
        // Before the first listing, or while it lags behind an open port, nothing is known
        // to be missing.
        const bool missing = ports && !device_.portOpen();
        items.push_back({PortItem::Note, Shown(chosen) + (missing ? tr(" (missing)") : QString()),
                         chosen, true, false});
    }
    return items;
}

void MidiMenu::showPorts() {
    std::vector<PortItem> items = portItems();
    // Status reports come many times a second while sending; the items stay as they are
    // unless they change, so an open menu does not flicker under the pointer.
    if (items == shownPorts_) return;
    shownPorts_ = std::move(items);
    qDeleteAll(portItems_);
    portItems_.clear();
    for (const PortItem& shown : shownPorts_) {
        auto* item = new QAction(shown.text, portGroup_);
        item->setCheckable(true);
        item->setChecked(shown.checked);
        item->setEnabled(shown.enabled);
        menu_->insertAction(portsEnd_, item);
        portItems_ << item;
        if (shown.kind == PortItem::NoPort) {
            item->setObjectName(QStringLiteral("actionNoMidiPort"));
            connect(item, &QAction::triggered, &device_, &MidiDevice::forgetPort);
        } else if (shown.kind == PortItem::Port) {
            item->setObjectName(QStringLiteral("actionMidiPort"));
            item->setData(shown.name);
            connect(item, &QAction::triggered, &device_,
                    [this, name = shown.name] { device_.choosePort(name); });
        }
    }
}

void MidiMenu::showPauses() {
    QList<int> pauses(std::begin(kPauses), std::end(kPauses));
    // A pause set by hand in the preferences is offered too.
    if (!pauses.contains(device_.gapMs())) {
        pauses << device_.gapMs();
        std::sort(pauses.begin(), pauses.end());
    }
    if (pauses_->actions().size() != pauses.size()) {
        pauses_->clear();
        for (int milliseconds : pauses) {
            QAction* item = pauses_->addAction(tr("%1 ms").arg(milliseconds));
            item->setCheckable(true);
            item->setData(milliseconds);
            item->setActionGroup(pauseGroup_);
            connect(item, &QAction::triggered, &device_,
                    [this, milliseconds] { device_.setGapMs(milliseconds); });
        }
    }
    for (QAction* item : pauses_->actions()) {
        item->setChecked(item->data().toInt() == device_.gapMs());
    }
}

void MidiMenu::followLive() {
    const bool wanted = device_.live() && device_.portOpen();
    if (wanted == listening_) return;
    listening_ = wanted;
    if (wanted) {
        window_.model().setMessageListener(
            [this](ByteArray message) { device_.sendLatest(std::move(message)); });
    } else {
        window_.model().setMessageListener(nullptr);
    }
}

void MidiMenu::sendMessage() {
    if (!device_.portOpen()) return;
    const HexMessages pane = PaneMessages(window_.model());
    if (pane.messages.empty()) {
        window_.platform().prompts.showMessage(
            &window_, tr("Send message"),
            tr("The output pane holds no complete SysEx message (F0 ... F7) to send."),
            Prompts::Icon::Exclamation, Prompts::Buttons::Ok, Prompts::Answer::Ok);
        return;
    }
    device_.sendEach(pane.messages);
}

void MidiMenu::sendAllPages() {
    if (!device_.portOpen()) return;
    device_.sendEach(AllPagesMessages(window_.model().pages()));
}

void MidiMenu::report(const QString& text) {
    reports_ << text;
    QTimer::singleShot(0, this, &MidiMenu::showReports);
}

void MidiMenu::showReports() {
    // One box at a time, and none over the open menu: the rest follow when it closes.
    if (showingReports_ || menuOpen_) return;
    showingReports_ = true;
    while (!reports_.isEmpty()) {
        window_.platform().prompts.showMessage(&window_, tr("MIDI"), reports_.takeFirst(),
                                               Prompts::Icon::Exclamation, Prompts::Buttons::Ok,
                                               Prompts::Answer::Ok);
    }
    showingReports_ = false;
}

}  // namespace lumidot
