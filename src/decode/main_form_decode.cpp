// A decoding run: the clipboard's text, read in the user's layout, cut into messages,
// each described and taken over into the window, the cleaned messages left in the pane.
// Opening a file goes through the same work on the model and the same results window.
#include <QCoreApplication>
#include <QElapsedTimer>

#include "decode/decode_text.h"
#include "decode/decoding_run.h"
#include "decode/frm_decoded.h"
#include "editor/edit_history.h"
#include "mainwindow/clipboard_access.h"
#include "mainwindow/main_form.h"
#include "mainwindow/text_box_keys.h"
#include "ui_main_form.h"

namespace lumidot {
namespace {

struct CheckFailure {
    const char* title;
    const char* prompt;
};

// What the user is told when a check fails, in the order the checks run.
CheckFailure FailureFor(HexCheck check) {
    switch (check) {
        case HexCheck::TooShort:
            return {"Nothing to decode!",
                    "There is no SysEx message on the clipboard (or it's too short to be a "
                    "valid message)."};
        case HexCheck::NotHex:
            return {"Invalid character!",
                    "SysEx message must only contain these characters:\r\n"
                    "0 1 2 3 4 5 6 7 8 9 A B C D E F\r\n\r\n"
                    "It can also contain spaces, tabs and new-line characters (they will be "
                    "ignored). If you have specified a suffix / prefix / custom separator, the "
                    "message on the clipboard must also follow that format."};
        case HexCheck::NotSysEx:
        case HexCheck::Ok:
            break;
    }
    return {"Is this SysEx?",
            "SysEx message must begin with F0 and end with F7.\r\nSpaces will be ignored."};
}

}  // namespace

void MainForm::cmdSysExDecode_Click() {
    DecodingRun run(model_);
    run.start(GetClipboardText(platform_, this));
    // The user sees the clipboard's text in the pane while it is checked.
    refreshView();
    const HexCheck check = run.check();
    if (check != HexCheck::Ok) {
        const CheckFailure failure = FailureFor(check);
        platform_.prompts.showMessage(
            this, QString::fromLatin1(failure.title), QString::fromLatin1(failure.prompt),
            Prompts::Icon::Exclamation, Prompts::Buttons::Ok, Prompts::Answer::Ok);
        run.restorePane();
        refreshView();
        return;
    }

    forgetDecodingResults();
    const bool finished = workOnModel(
        [&](const std::function<bool()>& keepGoing) { return run.describeAll(keepGoing); });
    if (!finished) return;
    showDecodingResults(run.count(), run.results());
}

bool MainForm::workOnModel(const std::function<bool(const std::function<bool()>&)>& work,
                           const QString& step) {
    // Ended with the work, before any results window shows.
    const EditGroup group(*history_, step);
    // The messages are taken over into the model alone; the widgets follow once at the end.
    // Meanwhile the window keeps repainting and a signal to close is honoured: the work stops
    // there and the pages are saved as far as it got.
    viewHeld_ = true;
    QElapsedTimer sinceEvents;
    sinceEvents.start();
    const bool finished = work([&] {
        if (sinceEvents.elapsed() >= longestEventPauseMs_) {
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
            sinceEvents.restart();
        }
        return !closing_;
    });
    viewHeld_ = false;
    if (finished) refreshView();
    return finished;
}

void MainForm::forgetDecodingResults() {
    // The last results are not needed any more: let their memory go before the next ones'.
    if (decoded_) decoded_->SetAllText(0, QString());
}

void MainForm::showDecodingResults(qint32 count, const QString& results) {
    if (!decoded_) decoded_ = std::make_unique<frmDecoded>(this, platform_);
    decoded_->SetAllText(count, results);
    platform_.prompts.runModal(*decoded_);
}

void MainForm::txtSysExOut_KeyDown(int keyCode, int shift) {
    HandleTextBoxKeys(platform_, ui->txtSysExOut, keyCode, shift);
    if (shift == kCtrlMask && keyCode == kKeyV) cmdSysExDecode_Click();
}

}  // namespace lumidot
