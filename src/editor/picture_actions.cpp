#include "editor/picture_actions.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageWriter>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QSaveFile>
#include <QTimer>

#include "editor/edit_history.h"
#include "editor/page_export_dialog.h"
#include "editor/picture_import_dialog.h"
#include "editor/pixel_grid.h"
#include "mainwindow/main_form.h"
#include "pictures/page_image.h"
#include "ui_main_form.h"

namespace lumidot {
namespace {

const QKeySequence kImportKeys(Qt::CTRL | Qt::Key_I);

// The frames an import offers: one page each, at most all ten pages.
constexpr int kMostFrames = kLastPage - kFirstPage + 1;

QString LocalFile(const QMimeData& data) {
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) return url.toLocalFile();
    }
    return {};
}

bool HoldsPicture(const QMimeData& data) {
    // Other files dropped on the window (a song, a .syx bank) are the File menu's to open.
    const QString file = LocalFile(data);
    if (!file.isEmpty()) return HasPictureSuffix(file) || IsPictureFile(file);
    if (data.hasImage()) return true;
    for (const QString& format : data.formats()) {
        if (format.startsWith(QLatin1String("image/"))) return true;
    }
    return false;
}

}  // namespace

PictureActions::PictureActions(MainForm& window) : QObject(&window), window_(window) {
    addMenus();
    window_.form().lblFDPixelBase->setAcceptDrops(true);
    // Before the window's own filter for dropped files, which was installed earlier and so
    // is asked later: a picture dropped on the grid is imported rather than opened.
    qApp->installEventFilter(this);
    window_.history().addShortcutKeys(kImportKeys);
}

PictureActions::~PictureActions() {
    qApp->removeEventFilter(this);
}

void PictureActions::addMenus() {
    const ProgramMenus& menus = window_.menus();
    auto* import = new QAction(tr("Import pic&ture..."), this);
    import->setObjectName(QStringLiteral("actionImportPicture"));
    import->setShortcut(kImportKeys);
    connect(import, &QAction::triggered, this, &PictureActions::importFromFile);
    auto* exportPage = new QAction(tr("&Export page as image..."), this);
    exportPage->setObjectName(QStringLiteral("actionExportPage"));
    connect(exportPage, &QAction::triggered, this, &PictureActions::exportPage);
    menus.file->insertActions(menus.fileEnd, {import, exportPage});

    // Edit comes right after File, as everywhere.
    QMenuBar* bar = window_.menuBar();
    editMenu_ = new QMenu(tr("&Edit"), bar);
    editMenu_->setObjectName(QStringLiteral("menuEdit"));
    const QList<QAction*> onBar = bar->actions();
    const qsizetype file = onBar.indexOf(menus.file->menuAction());
    bar->insertMenu(file + 1 < onBar.size() ? onBar[file + 1] : nullptr, editMenu_);
    EditHistory& history = window_.history();
    editMenu_->addAction(history.undoAction());
    editMenu_->addAction(history.redoAction());
    editMenu_->addSeparator();
    QAction* copy =
        editMenu_->addAction(tr("&Copy page as image"), this, &PictureActions::copyPage);
    copy->setObjectName(QStringLiteral("actionCopyPageImage"));
    QAction* paste =
        editMenu_->addAction(tr("&Paste image into page"), this, &PictureActions::pastePage);
    paste->setObjectName(QStringLiteral("actionPasteImage"));
}

// --- import ------------------------------------------------------------------------------

void PictureActions::importFromFile() {
    const QString path = window_.platform().files.askPath(
        &window_, {FileQuestion::Kind::Open, tr("Import Picture"), lastFolder_,
                   PictureFileFilter().split(QStringLiteral(";;")), QString()});
    if (!path.isEmpty()) lastFolder_ = QFileInfo(path).absolutePath();
    if (!path.isEmpty()) importFile(path);
}

void PictureActions::importFile(const QString& path) {
    const QString shown = QDir::toNativeSeparators(path);
    const PictureFrames read = ReadPictureFile(path, kMostFrames);
    if (!read.ok()) {
        refuse(tr("Import Picture"), shown, read.problem);
        return;
    }
    runImport(read, QFileInfo(path).fileName(), tr("Import picture"));
}

void PictureActions::importData(const QMimeData& data, Origin origin) {
    const QString file = LocalFile(data);
    if (!file.isEmpty()) {
        importFile(file);
        return;
    }
    const bool pasted = origin == Origin::Paste;
    const QString source = pasted ? tr("the clipboard") : tr("the picture dropped");
    // Picture bytes go through the same checks as a file; an image that another window of
    // this program put there whole is taken as it is.
    PictureFrames read;
    read.problem = tr("There is no picture in it.");
    for (const QString& format : data.formats()) {
        if (!format.startsWith(QLatin1String("image/"))) continue;
        read = ReadPictureData(data.data(format), kMostFrames);
        if (read.ok()) break;
    }
    if (!read.ok() && data.hasImage()) {
        const QImage image = qvariant_cast<QImage>(data.imageData());
        if (!image.isNull()) read = PictureFrames{{image}, 1, {}};
    }
    if (!read.ok()) {
        refuse(pasted ? tr("Paste Image") : tr("Import Picture"), source, read.problem);
        return;
    }
    runImport(read, pasted ? tr("Pasted picture") : tr("Dropped picture"),
              pasted ? tr("Paste image") : tr("Import picture"));
}

void PictureActions::runImport(const PictureFrames& read, const QString& source,
                               const QString& action) {
    PictureImportDialog dialog(&window_, read.frames, read.total, source, window_.FDPageNum(),
                               lastOptions_);
    if (window_.platform().prompts.runModal(dialog) != QDialog::Accepted) return;
    lastOptions_ = dialog.options();
    const auto pages = dialog.result();
    if (pages.empty()) return;

    // The pages change, then the first of them opens and shows its store message, as
    // after any edit.
    EditGroup step(window_.history(), action);
    for (const auto& [number, pixels] : pages) window_.model().pages().setPage(number, pixels);
    window_.SetPageNum(static_cast<std::uint8_t>(pages.front().first));
    window_.FDGraphicChanged(true);
}

void PictureActions::refuse(const QString& title, const QString& source, const QString& reason) {
    window_.platform().prompts.showMessage(
        &window_, title, tr("Nothing was imported from\r\n%1\r\n\r\n%2").arg(source, reason),
        Prompts::Icon::Exclamation, Prompts::Buttons::Ok, Prompts::Answer::Ok);
}

bool PictureActions::eventFilter(QObject* watched, QEvent* event) {
    if (watched != window_.form().lblFDPixelBase) return QObject::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove: {
            auto& drag = static_cast<QDragMoveEvent&>(*event);
            if (drag.mimeData() && HoldsPicture(*drag.mimeData())) {
                drag.acceptProposedAction();
                return true;
            }
            break;
        }
        case QEvent::Drop: {
            auto& drop = static_cast<QDropEvent&>(*event);
            if (!drop.mimeData() || !HoldsPicture(*drop.mimeData())) break;
            drop.acceptProposedAction();
            // The program the picture came from waits until the drop is answered; the dialog
            // opens once it has been.
            auto copy = std::make_shared<QMimeData>();
            for (const QString& format : drop.mimeData()->formats()) {
                copy->setData(format, drop.mimeData()->data(format));
            }
            if (drop.mimeData()->hasImage()) copy->setImageData(drop.mimeData()->imageData());
            QTimer::singleShot(0, this, [this, copy] { importData(*copy, Origin::Drop); });
            return true;
        }
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

// --- export and the clipboard -------------------------------------------------------------

void PictureActions::exportPage() {
    if (!exportDialog_) exportDialog_ = std::make_unique<PageExportDialog>(&window_);
    if (window_.platform().prompts.runModal(*exportDialog_) != QDialog::Accepted) return;
    QString path = window_.platform().files.askPath(
        &window_, {FileQuestion::Kind::Save,
                   tr("Export Page as Image"),
                   QDir(lastFolder_).filePath(tr("page%1.png").arg(window_.FDPageNum())),
                   {tr("PNG pictures (*.png)")},
                   QStringLiteral("png")});
    if (path.isEmpty()) return;
    if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".png");
    lastFolder_ = QFileInfo(path).absolutePath();
    // The dialog leaves replacing a file to be confirmed here.
    if (QFileInfo::exists(path) && window_.platform().prompts.showMessage(
                                       &window_, tr("Export Page as Image"),
                                       tr("%1 exists already.\r\nDo you want to replace it?")
                                           .arg(QDir::toNativeSeparators(path)),
                                       Prompts::Icon::Question, Prompts::Buttons::YesNo,
                                       Prompts::Answer::No) != Prompts::Answer::Yes) {
        return;
    }

    const QImage image =
        PageImage(window_.FDPixels(), exportDialog_->scale(), exportDialog_->colours());
    // Written in full beside the old file before it replaces it.
    QSaveFile file(path);
    QImageWriter writer(&file, "png");
    QString problem;
    if (!file.open(QIODevice::WriteOnly)) {
        problem = file.errorString();
    } else if (!writer.write(image)) {
        problem = writer.errorString();
    } else if (!file.commit()) {
        problem = file.errorString();
    }
    if (problem.isEmpty()) return;
    window_.platform().prompts.showMessage(&window_, tr("Export Page as Image"),
                                           tr("The page could not be saved as\r\n%1\r\n\r\n%2.")
                                               .arg(QDir::toNativeSeparators(path), problem),
                                           Prompts::Icon::Exclamation, Prompts::Buttons::Ok,
                                           Prompts::Answer::Ok);
}

void PictureActions::copyPage() {
    // The page itself, a pixel for a dot: pasted anywhere, it is the picture, and pasted
    // back it is the same page.
    QGuiApplication::clipboard()->setImage(
        PageImage(window_.FDPixels(), 1, PageColours::BlackWhite));
}

void PictureActions::pastePage() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr || !HoldsPicture(*data)) {
        window_.platform().prompts.showMessage(
            &window_, tr("Paste Image"),
            tr("There is no picture on the clipboard.\r\n\r\nCopy a picture in another program, "
               "or a picture file in your file manager, and paste again."),
            Prompts::Icon::Exclamation, Prompts::Buttons::Ok, Prompts::Answer::Ok);
        return;
    }
    importData(*data, Origin::Paste);
}

}  // namespace lumidot
