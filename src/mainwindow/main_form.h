// The program's one main window: the graphic editor, the LCD text and the generated
// output. Its members are defined next to the subsystem they belong to:
//   mainwindow/main_form.cpp          opening and closing, the text-entry handlers
//   mainwindow/main_form_output.cpp   output modes, layout, copy
//   editor/main_form_graphics.cpp     pages, pixel grid, drag handle, copy to page
//   decode/main_form_decode.cpp       reading messages back from the clipboard
//   storage/main_form_storage.cpp     memory.txt and settings.bin
#pragma once

#include <QString>
#include <QWidget>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>

#include "codec/describer.h"
#include "codec/graphic_page.h"
#include "editor/frm_page_copy.h"
#include "mainwindow/platform.h"

class QButtonGroup;
class QPushButton;
class QLineEdit;

namespace Ui {
class MainForm;
}

namespace lumidot {

class frmDecoded;
class StorageSession;

class MainForm : public QWidget, public SysExTarget {
    Q_OBJECT
public:
    // programFolder: where memory.txt and settings.bin are kept.
    MainForm(Platform& platform, QString programFolder, QWidget* parent = nullptr);
    ~MainForm() override;

    // Shows the window and fills it: grid, counters, output, stored pages and layout.
    void Form_Load();

    Ui::MainForm& form() { return *ui; }
    Platform& platform() { return platform_; }

    // --- graphic pages (editor/main_form_graphics.cpp) ---
    Page FDPixels{};                           // the page being edited
    std::array<Page, kLastPage> FDPageMem{};   // pages 1 to 10 at indexes 0 to 9
    int FDPageNum = 1;                         // the page open in FDPixels
    std::int16_t FDPixelUnderMouse = -1;       // cell the pointer last moved over, or -1
    float FDDragX = 0;                         // drag anchor on picMove, in pixels
    float FDDragY = 0;

    // --- output (mainwindow/main_form_output.cpp) ---
    bool SysExCopyAuto = false;
    bool SkipOutputLayout = false;  // true only while a decoding run writes its result

    // --- files (storage/main_form_storage.cpp) ---
    QString MemoryFilePath;
    QString SettingsFilePath;
    // Runs before each saved file replaces the old one; false abandons the save. Tests use
    // it to interrupt a save at the worst moment.
    std::function<bool(const QString& path)> beforeCommit;

    // How many times the output pane has been written; lets the decoder tell whether a
    // message left the pane alone.
    quint64 sysExOutWrites() const { return sysExOutWrites_; }
    QString sysExOutText() const;

    // SysExTarget: what the message describer uses.
    void setSysExOutText(const std::string& text) override;
    void setLcdText(const std::string& text) override;
    std::string lcdText() const override;
    void txtTextIn_Change() override;
    void SetPageNum(std::uint8_t page) override;
    void SetFDPixelColAll(const Page& pixels) override;
    void selectStoreMode() override;
    void selectDisplayMode() override;
    void AutoSetSysExText() override;
    void cmdFDPageDisplay_Click() override;

    // --- output ---
    void SetSysExOutText(const QString& text);
    void cmdSysExCopy_Click();
    void chkSysExCopyAuto_Click();
    void optSEGStore_Click();
    void optSEGDisplay_Click();
    void optSEText_Click();
    void txtHexPrefix_Change();
    void txtHexSuffix_Change();
    void txtHexSep_Change();
    // Selects a mode button from program code and runs its click handler.
    void selectMode(QPushButton* button);
    // Leaves no mode selected, so that regeneration does nothing.
    void clearModes();

    // --- graphic editor ---
    void FDGraphicChanged(bool selectStore);
    void udPageNum_Change();
    void cmdFDClear_Click();
    void cmdFDInvert_Click();
    void cmdFDShiftUp_Click();
    void cmdFDShiftDown_Click();
    void cmdFDShiftLeft_Click();
    void cmdFDShiftRight_Click();
    void cmdFDCopy_Click();
    void SetFDPixelCol(int pixelIndex);
    void RedrawFDPixels();
    // Pointer over cell index with the buttons held and shift state (1 Shift, 2 Ctrl, 4 Alt).
    void FDPixelMouseMove(int index, int buttons, int shift);
    // One mouse button (1 left, 2 right, 4 middle) went down on cell index.
    void FDPixelMouseDown(int index, int button);
    // A key went down anywhere in the window (key preview).
    void Form_KeyDown(int keyCode, int shift);
    // The pointer moved over the bare window, the bare frame or a gap between cells.
    void FDSurfaceMouseMove();
    void picMove_MouseDown(double x, double y);
    void picMove_MouseMove(int buttons, double x, double y);

    // --- decoding (decode/main_form_decode.cpp) ---
    void cmdSysExDecode_Click();
    void txtSysExOut_KeyDown(int keyCode, int shift);
    frmDecoded* decodedWindow() const { return decoded_.get(); }
    frmPageCopy* pageCopyDialog() const { return pageCopy_.get(); }

    // --- files ---
    void LoadMemoryAndSettings();
    void SaveMemoryAndSettings();

protected:
    void closeEvent(QCloseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Unload();
    void buildPixelGrid();
    void setStorageFolder(const QString& folder);
    // Every write of the output pane goes through here, so that it can be counted.
    void writePane(const QString& text);
    void connectGraphicEditor();
    void connectOutput();
    void setUpKeyboardAndMouse();

    std::unique_ptr<Ui::MainForm> ui;
    Platform& platform_;
    QString programFolder_;
    QButtonGroup* modeGroup_ = nullptr;
    std::unique_ptr<frmPageCopy> pageCopy_;
    frmPageCopy::Memory pageCopyMemory_;
    std::unique_ptr<frmDecoded> decoded_;
    std::unique_ptr<StorageSession> storage_;  // from the load on: where the files go
    quint64 sysExOutWrites_ = 0;
    bool closing_ = false;
};

}  // namespace lumidot
