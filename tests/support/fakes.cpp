#include "support/fakes.h"

#include <QApplication>

namespace lumidot::testing {

int FakePrompts::runModal(QDialog& dialog) {
    ++modalRuns;
    // Show it for real so that its show and focus handling run, let the test act on it,
    // and close it the way the test chose (a test that does nothing cancels).
    dialog.setModal(true);
    dialog.show();
    QApplication::processEvents();
    if (onModal) {
        onModal(dialog);
    } else {
        dialog.reject();
    }
    QApplication::processEvents();
    if (dialog.isVisible()) dialog.hide();
    return dialog.result();
}

}  // namespace lumidot::testing
