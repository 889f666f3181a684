// Pictures in and out of the pages, from the window's menus and its pixel grid: File >
// "Import picture..." and "Export page as image...", dropping a picture file or picture data
// on the grid, and Edit > "Copy page as image" and "Paste image into page" through the
// system clipboard. Every import goes through the preview dialog and is one step of the
// history. The Edit menu also holds Undo and Redo.
#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "pictures/picture_conversion.h"
#include "pictures/picture_file.h"

class QAction;
class QMenu;
class QMimeData;

namespace lumidot {

class MainForm;
class PageExportDialog;

class PictureActions : public QObject {
    Q_OBJECT
public:
    explicit PictureActions(MainForm& window);
    ~PictureActions() override;

    QMenu* editMenu() const { return editMenu_; }

    void importFromFile();
    void importFile(const QString& path);
    // Dropped or pasted data: a picture file named in it, picture bytes, or an image.
    enum class Origin { Drop, Paste };
    void importData(const QMimeData& data, Origin origin);
    void exportPage();
    void copyPage();
    void pastePage();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addMenus();
    // Shows the preview for the frames read from source, and applies what it confirms.
    void runImport(const PictureFrames& read, const QString& source, const QString& action);
    void refuse(const QString& title, const QString& source, const QString& reason);

    MainForm& window_;
    QMenu* editMenu_ = nullptr;
    PictureOptions lastOptions_;
    QString lastFolder_;  // where the last picture came from or went to
    std::unique_ptr<PageExportDialog> exportDialog_;
};

}  // namespace lumidot
