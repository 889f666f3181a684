// "SysEx Decoding Results": how many messages were decoded and one line about each.
#pragma once

#include <QDialog>
#include <memory>

#include "mainwindow/platform.h"

namespace Ui {
class frmDecoded;
}

namespace lumidot {

class frmDecoded : public QDialog {
    Q_OBJECT
public:
    frmDecoded(QWidget* owner, Platform& platform);
    ~frmDecoded() override;

    // Fills the count label, the explanation lines and the note about cleaned messages.
    void SetAllText(qint32 NumDecoded, const QString& MainText);

    Ui::frmDecoded& form() { return *ui; }

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void cmdOK_Click();

    std::unique_ptr<Ui::frmDecoded> ui;
    Platform& platform_;
};

// "1,234" in the user's locale (group separators every three digits, 0 shows as 0).
QString FormatCount(qint32 count);

}  // namespace lumidot
