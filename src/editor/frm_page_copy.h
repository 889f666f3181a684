// "Copy To Page": asks which page receives a copy of the page being edited.
#pragma once

#include <QDialog>
#include <cstdint>
#include <memory>

namespace Ui {
class frmPageCopy;
}

namespace lumidot {

class frmPageCopy : public QDialog {
    Q_OBJECT
public:
    static constexpr std::uint8_t kCancelled = 255;

    // The two page numbers outlive the dialog: they are kept from one use to the next while
    // the program runs, even when the dialog is closed and created afresh.
    struct Memory {
        std::uint8_t SourcePageNum = 0;
        std::uint8_t DestPageNum = 0;  // 0 until the dialog has been closed once
    };

    frmPageCopy(QWidget* owner, Memory& memory);
    ~frmPageCopy() override;

    // Prepares one use for copying from page sourcePage (1 to 10).
    void SetPageNumSource(std::uint8_t sourcePage);
    // 1 to 10 for the chosen page, 255 after a cancel, 0 before the first use ended.
    std::uint8_t GetPageNumDest() const { return memory_.DestPageNum; }

    Ui::frmPageCopy& form() { return *ui; }
    // True once the dialog was closed with its close button: the owner creates it afresh.
    bool closedByCloseButton() const { return closedByCloseButton_; }

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void reject() override;  // Esc

private:
    void UpdateOKButton();
    void cmdOK_Click();
    void cmdCancel_Click();

    std::unique_ptr<Ui::frmPageCopy> ui;
    Memory& memory_;
    bool closedByCloseButton_ = false;
};

}  // namespace lumidot
