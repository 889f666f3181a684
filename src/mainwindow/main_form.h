// The program's one main window: the graphic editor, the LCD text and the generated
// output. It is a view of a WindowModel: every handler changes the model and then brings the
// widgets up to date once. Its members are defined next to the subsystem they belong to:
//   mainwindow/main_form.cpp          opening and closing, keys, the view, LCD text entry
//   mainwindow/main_form_output.cpp   output modes, layout, copy
//   editor/main_form_graphics.cpp     pages, pixel grid, drag handle, copy to page
//   decode/main_form_decode.cpp       reading messages back from the clipboard
//   mainwindow/file_actions.cpp       the File menu's files (an object of its own)
//   mainwindow/main_form_storage.cpp memory.txt and settings.bin
#pragma once

#include <QPointF>
#include <QSize>
#include <QString>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "codec/graphic_page.h"
#include "editor/frm_page_copy.h"
#include "mainwindow/platform.h"
#include "mainwindow/program_menus.h"
#include "mainwindow/window_model.h"

class QMenuBar;
class QPushButton;

namespace Ui {
class MainForm;
}

namespace lumidot {

class EditHistory;
class FileActions;
class GridInput;
class PictureActions;
class frmDecoded;
class MidiMenu;
class StorageSession;

class MainForm : public QWidget {
    Q_OBJECT
public:
    // programFolder: where memory.txt and settings.bin are kept. codePage: the 8-bit
    // character set of the LCD text, chosen once from the locale.
    MainForm(Platform& platform, QString programFolder, QWidget* parent = nullptr,
             std::string codePage = {});
    ~MainForm() override;

    // Shows the window and fills it: grid, counters, output, stored pages and layout.
    void Form_Load();

    // The client area's size, as designed; the menu bar adds to the window's height.
    static constexpr QSize kClientSize{600, 528};

    Ui::MainForm& form() { return *ui; }
    QWidget* clientArea() const { return client_; }
    QMenuBar* menuBar() const { return menuBar_; }
    const ProgramMenus& menus() const { return menus_; }
    Platform& platform() { return platform_; }
    WindowModel& model() { return model_; }
    const WindowModel& model() const { return model_; }
    MidiMenu& midi() { return *midi_; }
    // Undo and redo of the pages; an action that changes pages wraps itself in an EditGroup.
    EditHistory& history() { return *history_; }
    // Pictures in and out: import, export, the clipboard's images, drops on the grid.
    PictureActions& pictures() { return *pictures_; }

    // --- graphic pages (editor/main_form_graphics.cpp) ---
    const Page& FDPixels() const { return model_.pages().pixels(); }
    const Page& FDPageMem(int page) const { return model_.pages().stored(page); }
    int FDPageNum() const { return model_.pages().current(); }
    void SetPageNum(std::uint8_t page);
    void SetFDPixelColAll(const Page& pixels);
    void FDGraphicChanged(bool selectStore);
    void cmdFDClear_Click();
    void cmdFDInvert_Click();
    void cmdFDShiftUp_Click();
    void cmdFDShiftDown_Click();
    void cmdFDShiftLeft_Click();
    void cmdFDShiftRight_Click();
    void cmdFDCopy_Click();
    void cmdFDPageDisplay_Click();
    // The grid's painting and the picture's dragging, by pointer and keys.
    GridInput& gridInput() { return *gridInput_; }
    frmPageCopy* pageCopyDialog() const { return pageCopy_.get(); }

    // --- output (mainwindow/main_form_output.cpp) ---
    bool SysExCopyAuto() const { return model_.copyAuto(); }
    QString sysExOutText() const { return model_.pane(); }
    void AutoSetSysExText();
    void SetSysExOutText(const QString& text);
    void cmdSysExCopy_Click();
    void chkSysExCopyAuto_Click();
    void optSEGStore_Click();
    void optSEGDisplay_Click();
    void optSEText_Click();
    void txtTextIn_Change();
    // Selects a mode button from program code and runs its click handler.
    void selectMode(QPushButton* button);
    // Leaves no mode selected, so that regeneration does nothing.
    void clearModes();

    // --- decoding (decode/main_form_decode.cpp) ---
    void cmdSysExDecode_Click();
    void txtSysExOut_KeyDown(int keyCode, int shift);
    frmDecoded* decodedWindow() const { return decoded_.get(); }
    // Longest stretch of a decoding run without a look at the window's events. Tests set 0,
    // so that a run looks at them every few hundred messages however fast it goes.
    void setLongestEventPause(qint64 milliseconds) { longestEventPauseMs_ = milliseconds; }
    // Runs work on the model alone, with the view held until it ends. work calls keepGoing
    // every so often: the window repaints there, user input waits, and false means the
    // window is closing and work should stop (and return false). The view follows once at
    // the end of work that finished. Returns what work returned. Whatever work changes in the
    // pages is one step of the undo history, named step ("Undo Decoded message").
    bool workOnModel(const std::function<bool(const std::function<bool()>& keepGoing)>& work,
                     const QString& step = QStringLiteral("Decoded message"));
    // Lets the memory of the last results go, before new ones are made.
    void forgetDecodingResults();
    // Shows these results in the results window, modally.
    void showDecodingResults(qint32 count, const QString& results);

    // --- files (storage/main_form_storage.cpp) ---
    void LoadMemoryAndSettings();
    void SaveMemoryAndSettings();
    const QString& MemoryFilePath() const { return memoryFilePath_; }
    const QString& SettingsFilePath() const { return settingsFilePath_; }
    // Runs before each saved file replaces the old one; false abandons the save. Tests use
    // it to interrupt a save at the worst moment.
    void setBeforeCommit(std::function<bool(const QString& path)> check) {
        beforeCommit_ = std::move(check);
    }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    friend class GridInput;  // paints through the model and brings the view up to date

    // Brings every widget up to date with the model; widgets that already show the right
    // thing are left alone. Does nothing while the view is held.
    void refreshView();
    void showMode();
    void showLcdCounters();
    void Form_Unload();
    void buildPixelGrid();
    void setStorageFolder(const QString& folder);
    void connectGraphicEditor();
    void connectOutput();
    void setUpKeyboardAndMouse();

    std::unique_ptr<Ui::MainForm> ui;
    QWidget* client_ = nullptr;
    QMenuBar* menuBar_ = nullptr;
    ProgramMenus menus_{};
    Platform& platform_;
    WindowModel model_;
    QString programFolder_;
    QString memoryFilePath_;
    QString settingsFilePath_;
    std::function<bool(const QString& path)> beforeCommit_;
    std::unique_ptr<frmPageCopy> pageCopy_;
    frmPageCopy::Memory pageCopyMemory_;
    std::unique_ptr<frmDecoded> decoded_;
    std::unique_ptr<EditHistory> history_;
    PictureActions* pictures_ = nullptr;  // a child of the window
    FileActions* files_ = nullptr;        // a child of the window
    std::unique_ptr<GridInput> gridInput_;
    bool viewHeld_ = false;  // true while a decoding run works on the model alone
    quint64 shownPaneVersion_ = ~quint64(0);
    int shownLcdLength_ = -1;
    std::unique_ptr<StorageSession> storage_;  // from the load on: where the files go
    bool closing_ = false;
    qint64 longestEventPauseMs_ = 40;
    std::unique_ptr<MidiMenu> midi_;  // last: it stops listening to the model as it goes
};

}  // namespace lumidot
