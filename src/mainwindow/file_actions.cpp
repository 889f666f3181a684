#include "mainwindow/file_actions.h"

#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QProgressDialog>
#include <QTimer>
#include <QUrl>
#include <climits>
#include <memory>

#include "decode/file_messages.h"
#include "mainwindow/file_texts.h"
#include "mainwindow/main_form.h"

namespace lumidot {
namespace {

// Messages described between two looks at the window's events.
constexpr std::size_t kMessagesPerSlice = 256;

// The first local file among the dropped URLs; empty when there is none.
QString DroppedFile(const QMimeData* data) {
    if (data == nullptr || !data->hasUrls()) return {};
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile()) return url.toLocalFile();
    }
    return {};
}

}  // namespace

FileActions::FileActions(MainForm& window) : QObject(&window), window_(window) {
    addMenuItems();
    window.setAcceptDrops(true);
    qApp->installEventFilter(this);
}

FileActions::~FileActions() {
    qApp->removeEventFilter(this);
}

void FileActions::addMenuItems() {
    QMenu* file = window_.menus().file;
    QAction* end = window_.menus().fileEnd;
    const auto add = [&](const QString& text, const char* name, void (FileActions::*slot)()) {
        auto* action = new QAction(text, file);
        action->setObjectName(QLatin1String(name));
        connect(action, &QAction::triggered, this, slot);
        file->insertAction(end, action);
        return action;
    };
    QAction* open = add(file_texts::kOpen, "actionOpen", &FileActions::open);
    open->setShortcut(QKeySequence::Open);
    // The desktop's own Open shortcut may be missing; Ctrl+O is what users expect here.
    if (open->shortcut().isEmpty()) open->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));

    recentMenu_ = new QMenu(file_texts::kOpenRecent, file);
    recentMenu_->setObjectName(QStringLiteral("menuOpenRecent"));
    file->insertMenu(end, recentMenu_);
    connect(recentMenu_, &QMenu::aboutToShow, this, &FileActions::fillRecentMenu);
    // The submenu is greyed out while the list is empty, so it is filled with the menu.
    connect(file, &QMenu::aboutToShow, this, &FileActions::fillRecentMenu);

    file->insertSeparator(end);
    add(file_texts::kExportMessage, "actionExportMessage", &FileActions::exportMessage);
    add(file_texts::kExportPages, "actionExportPages", &FileActions::exportPages);
    add(file_texts::kExportMidi, "actionExportMidi", &FileActions::exportPagesAsMidi);
    file->insertSeparator(end);
    add(file_texts::kRepair, "actionRepair", &FileActions::repairFile);
    fillRecentMenu();
}

void FileActions::fillRecentMenu() {
    // An item may be the one being chosen right now: it goes once its signal is over.
    for (QAction* old : recentMenu_->actions()) {
        recentMenu_->removeAction(old);
        old->deleteLater();
    }
    const QStringList paths = recent_.paths();
    for (int i = 0; i < paths.size(); ++i) {
        QString shown = QDir::toNativeSeparators(paths[i]);
        shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
        // Access keys 1 to 9; the list holds fewer files than that.
        QAction* item = recentMenu_->addAction(QStringLiteral("&%1 %2").arg(i + 1).arg(shown));
        const QString path = paths[i];
        connect(item, &QAction::triggered, this, [this, path] { openFile(path); });
    }
    if (!paths.isEmpty()) {
        recentMenu_->addSeparator();
        recentMenu_->addAction(file_texts::kClearRecent, this, [this] {
            recent_.clear();
            fillRecentMenu();
        });
    }
    recentMenu_->menuAction()->setEnabled(!paths.isEmpty());
}

QString FileActions::askPath(const FileQuestion& question) {
    return window_.platform().files.askPath(&window_, question);
}

void FileActions::tell(const file_texts::Box& box, bool exclamation) {
    window_.platform().prompts.showMessage(
        &window_, box.title, box.prompt,
        exclamation ? Prompts::Icon::Exclamation : Prompts::Icon::Information, Prompts::Buttons::Ok,
        Prompts::Answer::Ok);
}

bool FileActions::ask(const file_texts::Box& box, bool exclamation) {
    return window_.platform().prompts.showMessage(
               &window_, box.title, box.prompt,
               exclamation ? Prompts::Icon::Exclamation : Prompts::Icon::Question,
               Prompts::Buttons::YesNo, Prompts::Answer::No) == Prompts::Answer::Yes;
}

void FileActions::open() {
    const QString path = askPath({FileQuestion::Kind::Open,
                                  file_texts::kOpenTitle,
                                  recent_.lastFolder(),
                                  file_texts::OpenFilters(),
                                  {}});
    if (!path.isEmpty()) openFile(path);
}

std::optional<QByteArray> FileActions::readWhole(const QString& path) {
    const QFileInfo info(path);
    QString reason;
    if (!info.exists()) {
        reason = file_texts::NotFound();
    } else if (info.isDir()) {
        reason = file_texts::IsFolder();
    } else if (info.size() > kLargestFile) {
        reason = file_texts::TooBig(info.size(), kLargestFile);
    } else {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly)) {
            QByteArray bytes = file.read(kLargestFile + 1);
            if (file.error() == QFileDevice::NoError && bytes.size() <= kLargestFile) {
                if (!bytes.isEmpty()) return bytes;
                reason = file_texts::IsEmpty();
            } else {
                reason = bytes.size() > kLargestFile
                             ? file_texts::TooBig(bytes.size(), kLargestFile)
                             : file_texts::Unreadable(file.errorString());
            }
        } else {
            reason = file_texts::Unreadable(file.errorString());
        }
    }
    tell(file_texts::CannotOpen(path, reason));
    return std::nullopt;
}

bool FileActions::openFile(const QString& path) {
    if (busy_) return false;
    const std::optional<QByteArray> bytes = readWhole(path);
    if (!bytes) {
        // A file that is gone has no place among the recent ones.
        if (!QFileInfo::exists(path)) recent_.remove(path);
        return false;
    }
    const std::span<const std::uint8_t> span(reinterpret_cast<const std::uint8_t*>(bytes->data()),
                                             static_cast<std::size_t>(bytes->size()));
    FileMessages messages(span, QFileInfo(path).fileName().toStdString(), window_.model().layout());
    if (const auto verdict = file_texts::JudgeReading(path, messages, bytes->startsWith("MThd"))) {
        if (!verdict->question) {
            tell(verdict->box);
            return false;
        }
        if (!ask(verdict->box, true)) return false;
    }
    return takeOver(path, messages);
}

bool FileActions::takeOver(const QString& path, FileMessages& messages) {
    busy_ = true;
    WindowModel& model = window_.model();
    window_.forgetDecodingResults();
    MessageListDescription list(model);

    // Shows itself only once the work has gone on for a moment; it must be gone, its timer
    // with it, before the results window opens.
    auto progress = std::make_unique<QProgressDialog>(
        file_texts::OpeningLabel(path), QString(), 0,
        static_cast<int>(std::min<std::size_t>(messages.count(), INT_MAX)), &window_);
    progress->setWindowTitle(file_texts::kOpeningTitle);
    progress->setObjectName(QStringLiteral("openingProgress"));
    progress->setCancelButton(nullptr);
    progress->setMinimumDuration(progressDelayMs_);
    progress->setAutoClose(false);
    progress->setValue(0);

    const bool finished = window_.workOnModel(
        [&](const std::function<bool()>& keepGoing) {
            while (messages.describeNext(list, kMessagesPerSlice)) {
                progress->setValue(
                    static_cast<int>(std::min<std::size_t>(messages.described(), INT_MAX)));
                if (!keepGoing()) return false;
            }
            // The cleaned messages end in the pane as a run's do, copied if copying is on.
            model.setSkipOutputLayout(true);
            model.writeOutput(list.cleaned());
            model.setSkipOutputLayout(false);
            return true;
        },
        tr("Open file"));
    progress.reset();
    busy_ = false;
    if (!finished) return false;

    recent_.add(path);
    recent_.setLastFolder(QFileInfo(path).absolutePath());
    fillRecentMenu();
    window_.showDecodingResults(list.count(), list.results());
    return true;
}

bool FileActions::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
        return false;
    }
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || widget->window() != &window_) return false;
    auto* drop = static_cast<QDropEvent*>(event);
    const QString path = DroppedFile(drop->mimeData());
    if (path.isEmpty() || busy_) return false;
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (type == QEvent::Drop) {
        // Opened once the drop is over: the program that dragged waits for its answer, and
        // the results window would keep it waiting.
        QTimer::singleShot(0, this, [this, path] { openFile(path); });
    }
    return true;
}

}  // namespace lumidot
