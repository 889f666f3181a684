// "Export Page as Image": how large the picture of the page is and in which colours. The
// choices stay from one export to the next while the program runs.
#pragma once

#include <QDialog>

#include "pictures/page_image.h"

class QLabel;
class QRadioButton;
class QSpinBox;

namespace lumidot {

class PageExportDialog : public QDialog {
    Q_OBJECT
public:
    static constexpr int kLargestScale = 64;

    explicit PageExportDialog(QWidget* owner);

    int scale() const;
    PageColours colours() const;

private:
    void showSize();

    QSpinBox* scaleSpin_;
    QLabel* sizeLabel_;
    QRadioButton* lcdColours_;
    QRadioButton* blackWhite_;
};

}  // namespace lumidot
