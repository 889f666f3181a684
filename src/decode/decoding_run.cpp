#include "decode/decoding_run.h"

#include "decode/message_list.h"
#include "mainwindow/window_model.h"

namespace lumidot {
namespace {

// How many messages are described between two questions to keepGoing.
constexpr int kMessagesPerSlice = 256;

}  // namespace

void DecodingRun::start(const QString& clipboardText) {
    clipboardText_ = clipboardText;
    savedPane_ = model_.pane();
    model_.writePane(clipboardText);
}

HexCheck DecodingRun::check() {
    const ByteLayout& layout = model_.layout();
    digits_ = ReadHexDigits(clipboardText_, layout.prefix, layout.suffix, layout.separator);
    clipboardText_.clear();
    return CheckHexDigits(digits_);
}

void DecodingRun::restorePane() { model_.writePane(savedPane_); }

bool DecodingRun::describeAll(const std::function<bool()>& keepGoing) {
    results_.clear();
    count_ = 0;
    QString cleaned;
    MessageCutter messages(digits_);
    for (QStringView message; messages.next(message);) {
        ++count_;
        const DescribedMessage described =
            DescribeMessage(model_, message.toLatin1().toStdString());
        results_ += NumberedLine(count_, described.description);
        cleaned += described.cleaned;
        cleaned += QStringLiteral("\r\n");
        if (count_ % kMessagesPerSlice == 0 && !keepGoing()) return false;
    }
    cleaned.chop(2);

    model_.setSkipOutputLayout(true);
    model_.writeOutput(cleaned);
    model_.setSkipOutputLayout(false);
    return true;
}

}  // namespace lumidot
