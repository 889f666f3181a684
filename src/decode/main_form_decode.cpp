// A decoding run: the clipboard's text, read in the user's layout, cut into messages,
// each described and taken over into the window, the cleaned messages left in the pane.
#include "codec/describer.h"
#include "decode/decode_text.h"
#include "decode/frm_decoded.h"
#include "mainwindow/clipboard_access.h"
#include "mainwindow/main_form.h"
#include "mainwindow/read_only_text_box.h"
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
    const QString clipboardText = GetClipboardText(platform_, this);
    const QString savedPane = sysExOutText();
    writePane(clipboardText);

    const QString digits = ReadHexDigits(clipboardText, ui->txtHexPrefix->text(),
                                         ui->txtHexSuffix->text(), ui->txtHexSep->text());
    const HexCheck check = CheckHexDigits(digits);
    if (check != HexCheck::Ok) {
        const CheckFailure failure = FailureFor(check);
        platform_.prompts.showMessage(this, QString::fromLatin1(failure.title),
                                      QString::fromLatin1(failure.prompt),
                                      Prompts::Icon::Exclamation, Prompts::Buttons::Ok,
                                      Prompts::Answer::Ok);
        writePane(savedPane);
        return;
    }

    // The pane is written several times per message; only the final text is ever seen.
    struct DeferPane {
        ReadOnlyTextBox* pane;
        explicit DeferPane(ReadOnlyTextBox* box) : pane(box) { pane->setDisplayDeferred(true); }
        ~DeferPane() { pane->setDisplayDeferred(false); }
    } deferPane(ui->txtSysExOut);

    const QStringList messages = SplitMessages(SpaceHexPairs(digits));
    QString results;
    QStringList cleaned;
    cleaned.reserve(messages.size());
    for (qsizetype k = 0; k < messages.size(); ++k) {
        const quint64 writesBefore = sysExOutWrites_;
        const std::string line = DescribeSysEx(messages[k].toStdString(), *this);
        results += NumberedLine(static_cast<int>(k + 1), QString::fromStdString(line));
        if (sysExOutWrites_ != writesBefore) {
            cleaned.append(sysExOutText());
        } else {
            // The message changed nothing in the pane (an invalid page, a duration): it
            // stands in the result as it came, so every message keeps its own line.
            const QString bytes = messages[k].trimmed();
            cleaned.append(bytes.isEmpty() ? QStringLiteral("F0") : QStringLiteral("F0 ") + bytes);
        }
    }

    SkipOutputLayout = true;
    SetSysExOutText(cleaned.join(QStringLiteral("\r\n")));
    SkipOutputLayout = false;
    ui->txtSysExOut->setDisplayDeferred(false);

    if (!decoded_) decoded_ = std::make_unique<frmDecoded>(this, platform_);
    decoded_->SetAllText(static_cast<qint32>(messages.size()), results);
    platform_.prompts.runModal(*decoded_);
}

void MainForm::txtSysExOut_KeyDown(int keyCode, int shift) {
    HandleTextBoxKeys(platform_, ui->txtSysExOut, keyCode, shift);
    if (shift == kCtrlMask && keyCode == Qt::Key_V) cmdSysExDecode_Click();
}

}  // namespace lumidot
